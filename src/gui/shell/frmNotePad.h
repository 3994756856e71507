#pragma once
// A plain viewer of a text file: one read-only box that fills the window.
#include <QPlainTextEdit>
#include <QWidget>

#include "gui/shell/FormLink.h"

namespace r6183::gui {

class frmNotePad : public QWidget {
  Q_OBJECT
 public:
  explicit frmNotePad(Session& session, QWidget* parent = nullptr);

  QPlainTextEdit* Text1() const { return text1_; }

 private:
  FormLink form_;
  QPlainTextEdit* text1_;
};

}  // namespace r6183::gui
