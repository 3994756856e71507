#pragma once
// The desktop program's questions and notices: message boxes with the tool's texts,
// buttons, icons and titles, and the file choosers.
#include <QPointer>
#include <QWidget>

#include "shell/Prompter.h"

namespace r6183::gui {

class GuiPrompter : public Prompter {
 public:
  void SetParent(QWidget* parent) { parent_ = parent; }
  Answer Message(const std::string& text, Buttons buttons, Icon icon, const std::string& title) override;
  std::optional<std::string> OpenFile(const FileChoice& choice) override;
  std::optional<std::string> SaveFile(const FileChoice& choice) override;

  // "Database Files (*.mdb)|*.mdb" -> "Database Files (*.mdb)"
  static QString QtFilter(const std::string& filter);

 private:
  QPointer<QWidget> parent_;
};

}  // namespace r6183::gui
