#pragma once
// The technician's window: the trace switches and the error journal.
#include <QCheckBox>
#include <QTableWidget>
#include <QWidget>

#include "gui/shell/FormLink.h"

namespace r6183::gui {

class frmDebug : public QWidget {
  Q_OBJECT
 public:
  explicit frmDebug(Session& session, QWidget* parent = nullptr);

  // Fills grid1 from the journal, oldest row first.
  void LoadGrid();
  void cmdOk_Click();
  void cmdClear_Click();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  Session& session_;
  FormLink form_;
  QCheckBox* chkComm_;
  QCheckBox* chkAT_;
  QTableWidget* grid1_;
};

}  // namespace r6183::gui
