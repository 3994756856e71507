#pragma once
// The port window: ports 1 to 16, each with the device and description it maps to.
#include <QDialog>

#include "connectivity/Connection.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

class QComboBox;

namespace r6183::gui {

class frmComPort : public QDialog {
  Q_OBJECT
 public:
  frmComPort(Session& session, ModComm& comm, std::vector<PortInfo> ports, QWidget* parent = nullptr);
  ~frmComPort() override;
  ComPortModel& model() { return model_; }

 private:
  ComPortModel model_;
  FormLink form_;
  ControlAdapter adapter_;
  QComboBox* cboPort_ = nullptr;
};

// The manual connect window: the modem takes over a call dialled on the telephone.
class frmManConnect : public QDialog {
  Q_OBJECT
 public:
  frmManConnect(Session& session, modModem& modem, QWidget* parent = nullptr);
  ~frmManConnect() override;
  ManConnectModel& model() { return model_; }

 protected:
  void reject() override {}  // Connect or Cancel ends it

 private:
  ManConnectModel model_;
  FormLink form_;
  ControlAdapter adapter_;
};

}  // namespace r6183::gui
