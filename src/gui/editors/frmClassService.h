#pragma once
// The class of service window, a child of the main window: the level of each group of six
// stations, one tab per board.
#include <QMdiSubWindow>

#include "editors/ClassServiceModel.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

namespace r6183::gui {

class frmClassService : public QMdiSubWindow {
  Q_OBJECT
 public:
  explicit frmClassService(Session& session, QWidget* parent = nullptr);
  ~frmClassService() override;
  ClassServiceModel& model() { return model_; }

 protected:
  void closeEvent(QCloseEvent* e) override;

 private:
  ClassServiceModel model_;
  FormLink form_;
  ControlAdapter adapter_;
};

}  // namespace r6183::gui
