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
  // Where a chooser starts: a proposed name without a folder goes in the folder of the
  // last choice, or the operator's documents folder.
  QString StartPath(const std::string& initialName) const;

 private:
  std::optional<std::string> Chosen(const QString& path);

  QPointer<QWidget> parent_;
  QString lastDir_;
};

}  // namespace r6183::gui
