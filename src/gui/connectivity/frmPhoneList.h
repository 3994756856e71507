#pragma once
// The list window in its two roles (the phone list that dials, the modem commands of a
// remote setup), and its edit window. The rules are PhoneListModel's; these show its grid
// and controls and hand the operator's clicks back.
#include <QDialog>

#include "connectivity/PhoneList.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

class QTableWidget;

namespace r6183 {
class modModem;
}

namespace r6183::gui {

// The edit window of one row, modal over the list.
class frmPhoneUpdate : public QDialog {
  Q_OBJECT
 public:
  frmPhoneUpdate(Session& session, PhoneUpdateModel& model, QWidget* parent);
  ~frmPhoneUpdate() override;

 protected:
  void reject() override;

 private:
  PhoneUpdateModel& model_;
  FormLink form_;
  ControlAdapter adapter_;
};

class frmPhoneList : public QDialog {
  Q_OBJECT
 public:
  // Sets the list up in the role of `setup`; the caller shows it.
  frmPhoneList(Session& session, modModem& modem, const PhoneListSetup& setup, QWidget* parent);
  ~frmPhoneList() override;
  PhoneListModel& model() { return model_; }
  QTableWidget* grid() const { return grid_; }
  // The edit window while it is up.
  frmPhoneUpdate* updateWindow() const { return update_; }

 protected:
  void closeEvent(QCloseEvent* e) override;
  void reject() override;

 private:
  void MirrorRows();
  void MirrorCell(int row, int col);
  void MirrorCurrent();
  void Unload();

  PhoneListModel model_;
  FormLink form_;
  ControlAdapter adapter_;
  QTableWidget* grid_ = nullptr;
  frmPhoneUpdate* update_ = nullptr;
  bool mirroring_ = false;  // the program moves the grid: no selection event
  bool unloaded_ = false;
};

}  // namespace r6183::gui
