#pragma once
// The notice after a transfer with exceptions: a text, OK, and "View Log", which shows
// the transfer's log file in a viewer.
#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include <string>

#include "gui/shell/FormLink.h"

namespace r6183::gui {

class frmNotePad;

class frmMyMsgBox : public QDialog {
  Q_OBJECT
 public:
  explicit frmMyMsgBox(Session& session, QWidget* parent = nullptr);

  // The text of the notice and the log file (in the application directory) it offers.
  void SetMsg(const std::string& label, const std::string& logFileName);
  const std::string& LogFileName() const { return logFileName_; }

  // Makes, fills and shows a notice over `parent`; it goes away when closed.
  static frmMyMsgBox* ShowNotice(Session& session, QWidget* parent, const std::string& label,
                                 const std::string& logFileName);

  void cmdOk_Click();
  // The log in a new viewer, or "Can't open file: " and null when it can't be read.
  frmNotePad* cmdDisplay_Click();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  Session& session_;
  FormLink form_;
  QLabel* lbl1_;
  std::string logFileName_;
};

}  // namespace r6183::gui
