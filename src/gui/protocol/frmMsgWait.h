#pragma once
// The small window that stays in view while a transfer or a modem operation runs: the
// progress face (two lines, bar, percent), the plain face and the release face.
#include <QDialog>

#include "gui/shell/FormLink.h"
#include "protocol/ProgressWindow.h"

class QLabel;
class QProgressBar;

namespace r6183::gui {

class frmMsgWait : public QDialog, public ProgressWindow {
  Q_OBJECT
 public:
  frmMsgWait(Session& session, QWidget* parent);

  void Show() override;
  void Unload() override;
  void WhatToDisplay(const std::string& first, const std::string& second, int percent) override;
  void SetModemComm() override;
  void SetModemRelease() override;
  void SetPlainText(const std::string& text) override;
  void ChangeCaption(const std::string& text) override;

  // Brings the window back in front of the main window.
  void KeepInView();

 protected:
  bool event(QEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  void reject() override {}  // Escape does not take it away either

 private:
  static constexpr const char* kDesignCaption = "R-6183 Programming Tool";
  void Repaint();
  void Fit();
  // The caption, texts and face of a freshly loaded window.
  void AsDesigned();

  FormLink form_;
  QLabel *lbmsg_, *lbmsg2_, *lblPercent_, *lbmsg3_, *lbl4_;
  QProgressBar* ssPanel1_;
};

}  // namespace r6183::gui
