#include "gui/protocol/frmMsgWait.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

#include "gui/shell/Centre.h"
#include "shell/Session.h"

namespace r6183::gui {

namespace {
QLabel* Label(QWidget* parent, const char* name) {
  auto* l = new QLabel(parent);
  l->setObjectName(name);
  l->setAlignment(Qt::AlignCenter);
  l->setWordWrap(true);
  return l;
}
}  // namespace

frmMsgWait::frmMsgWait(Session& session, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowStaysOnTopHint),
      form_(session, *this, "frmMsgWait") {
  setObjectName("frmMsgWait");
  setModal(false);
  auto* layout = new QVBoxLayout(this);
  lbmsg_ = Label(this, "lbmsg");
  lbmsg2_ = Label(this, "lbmsg2");
  ssPanel1_ = new QProgressBar(this);
  ssPanel1_->setObjectName("ssPanel1");
  ssPanel1_->setRange(0, 100);
  ssPanel1_->setTextVisible(false);
  lblPercent_ = Label(this, "lblPercent");
  lbmsg3_ = Label(this, "lbmsg3");
  lbl4_ = Label(this, "lbl4");
  for (QWidget* w : std::initializer_list<QWidget*>{lbmsg_, lbmsg2_, ssPanel1_, lblPercent_, lbmsg3_, lbl4_})
    layout->addWidget(w);
  setMinimumWidth(380);
  AsDesigned();
}

void frmMsgWait::AsDesigned() {
  setWindowTitle(kDesignCaption);
  for (QLabel* l : {lbmsg_, lbmsg2_, lblPercent_, lbmsg3_, lbl4_}) l->clear();
  ssPanel1_->setValue(0);
  for (QWidget* w : std::initializer_list<QWidget*>{lbmsg_, lbmsg2_, ssPanel1_, lblPercent_}) w->show();
  lbmsg3_->hide();
  lbl4_->hide();
}

void frmMsgWait::Show() {
  form_.Load();
  show();
  adjustSize();
  CentreWindow(*this);
  KeepInView();
  Repaint();
}

void frmMsgWait::Unload() {
  // the window is kept, not destroyed: the next use must find it as a fresh load would, with
  // its design caption and the progress face, whatever the last caller made of it
  hide();
  AsDesigned();
  form_.Leave();
}

void frmMsgWait::WhatToDisplay(const std::string& first, const std::string& second, int percent) {
  lbmsg_->setText(QString::fromStdString(first));
  lbmsg2_->setText(QString::fromStdString(second));
  ssPanel1_->setValue(std::clamp(percent, 0, 100));
  lblPercent_->setText(QString::fromStdString(PercentText(percent)));
  lbl4_->hide();
  Repaint();
}

void frmMsgWait::SetModemComm() {
  lbmsg3_->show();
  for (QWidget* w : std::initializer_list<QWidget*>{lbmsg_, lbmsg2_, ssPanel1_, lbl4_}) w->hide();
  Fit();
}

void frmMsgWait::SetModemRelease() {
  lbl4_->show();
  for (QWidget* w : std::initializer_list<QWidget*>{lbmsg_, lbmsg2_, ssPanel1_, lbmsg3_}) w->hide();
  Fit();
}

void frmMsgWait::Fit() {
  // a face changed while the window is up: no empty space where the other face was
  if (!isVisible()) return;
  adjustSize();
  CentreWindow(*this);
}

void frmMsgWait::SetPlainText(const std::string& text) {
  lbmsg3_->setText(QString::fromStdString(text));
  lbl4_->setText(QString::fromStdString(text));
  Repaint();
}

void frmMsgWait::ChangeCaption(const std::string& text) { setWindowTitle(QString::fromStdString(text)); }

void frmMsgWait::KeepInView() {
  if (!isVisible()) return;
  raise();
  activateWindow();
}

void frmMsgWait::Repaint() {
  // the work goes on without the event loop: paint now
  if (isVisible()) repaint();
}

bool frmMsgWait::event(QEvent* e) {
  // back on top when it loses the focus, without taking the focus from a message box
  if (e->type() == QEvent::WindowDeactivate && isVisible())
    QTimer::singleShot(0, this, [this] {
      if (isVisible()) raise();
    });
  return QDialog::event(e);
}

void frmMsgWait::closeEvent(QCloseEvent* e) {
  // no buttons: it goes when its operation is over
  e->ignore();
}

}  // namespace r6183::gui
