#include "gui/shell/frmMyMsgBox.h"

#include <QHBoxLayout>
#include <QStyle>
#include <QVBoxLayout>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

#include "gui/shell/Centre.h"
#include "gui/shell/frmNotePad.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183::gui {

namespace {

// The whole file, or nothing when it can't be opened.
std::optional<std::string> ReadWholeFile(const std::string& path) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) return std::nullopt;
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(in), {});
}

// The logs are written with CR LF.
QString TextOfLog(const std::string& bytes) {
  QString text = QString::fromUtf8(bytes);
  text.replace("\r\n", "\n");
  return text;
}

}  // namespace

frmMyMsgBox::frmMyMsgBox(Session& session, QWidget* parent)
    : QDialog(parent), session_(session), form_(session, *this, "frmMyMsgBox"), lbl1_(new QLabel(this)) {
  setObjectName("frmMyMsgBox");
  setWindowTitle("Warning");
  form_.FollowVisibility();

  auto* icon = new QLabel(this);
  icon->setObjectName("imgIcon");
  icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(32, 32));
  icon->setAlignment(Qt::AlignTop);
  lbl1_->setObjectName("lbl1");
  lbl1_->setWordWrap(true);
  lbl1_->setMinimumWidth(280);

  auto* cmdOk = new QPushButton("OK", this);
  cmdOk->setObjectName("cmdOk");
  cmdOk->setDefault(true);
  auto* cmdDisplay = new QPushButton("&View Log", this);
  cmdDisplay->setObjectName("cmdDisplay");
  connect(cmdOk, &QPushButton::clicked, this, &frmMyMsgBox::cmdOk_Click);
  connect(cmdDisplay, &QPushButton::clicked, this, [this] { cmdDisplay_Click(); });

  auto* text = new QHBoxLayout;
  text->addWidget(icon);
  text->addWidget(lbl1_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdOk);
  buttons->addWidget(cmdDisplay);
  buttons->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(text);
  layout->addLayout(buttons);
}

void frmMyMsgBox::SetMsg(const std::string& label, const std::string& logFileName) {
  lbl1_->setText(QString::fromStdString(label));
  logFileName_ = logFileName;
}

frmMyMsgBox* frmMyMsgBox::ShowNotice(Session& session, QWidget* parent, const std::string& label,
                                     const std::string& logFileName) {
  auto* box = new frmMyMsgBox(session, parent);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->SetMsg(label, logFileName);
  box->show();
  box->raise();
  box->activateWindow();
  return box;
}

void frmMyMsgBox::cmdOk_Click() { close(); }

frmNotePad* frmMyMsgBox::cmdDisplay_Click() {
  const std::optional<std::string> text = ReadWholeFile(session_.appDir().PathOf(logFileName_));
  if (!text) {
    session_.Message("Can't open file: " + logFileName_);
    return nullptr;
  }
  // The viewer belongs to the main window, so it stays when the notice goes.
  auto* pad = new frmNotePad(session_, parentWidget());
  pad->setWindowTitle(QString::fromStdString(ToUpper(logFileName_)));
  pad->Text1()->setPlainText(TextOfLog(*text));
  pad->show();
  pad->raise();
  pad->activateWindow();
  return pad;
}

void frmMyMsgBox::showEvent(QShowEvent* event) {
  adjustSize();
  CentreWindow(*this, parentWidget());
  QDialog::showEvent(event);
}

}  // namespace r6183::gui
