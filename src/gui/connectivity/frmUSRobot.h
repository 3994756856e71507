#pragma once
// The chart of one modem's eight switches, modal over the remote modem's setup.
#include <QDialog>

#include "connectivity/RemoteSetup.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

namespace r6183::gui {

class frmUSRobot : public QDialog {
  Q_OBJECT
 public:
  frmUSRobot(Session& session, QWidget* parent);
  ~frmUSRobot() override;
  USRobotModel& model() { return model_; }

 private:
  USRobotModel model_;
  FormLink form_;
  ControlAdapter adapter_;
};

}  // namespace r6183::gui
