#pragma once
// The system configuration window, modal over the main window: the number of boards, with
// the wiring chart behind "Details...".
#include <QDialog>

#include "editors/ConfigModel.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

namespace r6183::gui {

class frmConfig : public QDialog {
  Q_OBJECT
 public:
  explicit frmConfig(Session& session, QWidget* parent = nullptr);
  ~frmConfig() override;
  ConfigModel& model() { return model_; }

 private:
  ConfigModel model_;
  FormLink form_;
  ControlAdapter adapter_;
};

// The wiring chart: per board its four page groups, each with its six stations.
class frmDetail : public QDialog {
  Q_OBJECT
 public:
  explicit frmDetail(Session& session, QWidget* parent = nullptr);

 private:
  FormLink form_;
};

}  // namespace r6183::gui
