#include "gui/shell/frmNotePad.h"

#include <QVBoxLayout>

namespace r6183::gui {

frmNotePad::frmNotePad(Session& session, QWidget* parent)
    : QWidget(parent, Qt::Window), form_(session, *this, "frmNotePad"), text1_(new QPlainTextEdit(this)) {
  setObjectName("frmNotePad");
  setWindowTitle("Untitled");
  setAttribute(Qt::WA_DeleteOnClose);
  text1_->setObjectName("Text1");
  text1_->setReadOnly(true);
  text1_->setLineWrapMode(QPlainTextEdit::NoWrap);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(text1_);
  resize(640, 480);
  form_.FollowVisibility();
}

}  // namespace r6183::gui
