#pragma once
// The window of one master clock schedule, a child of the main window: its events in time
// order with the buttons that add, edit and delete them, and its active days.
#include <QMdiSubWindow>

#include "editors/ScheduleModel.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

class QMdiArea;

namespace r6183::gui {

class frmSched : public QMdiSubWindow {
  Q_OBJECT
 public:
  explicit frmSched(Session& session, QWidget* parent = nullptr);
  ~frmSched() override;

  ScheduleModel& model() { return model_; }
  // Loads the window for ScheduleNumber unless it is loaded, shows it in `area` and
  // brings it to the front.
  void Open(QMdiArea& area);

 protected:
  void closeEvent(QCloseEvent* e) override;
  void changeEvent(QEvent* e) override;

 private:
  QWidget* BuildContent();
  void StateChanged(Qt::WindowStates before, Qt::WindowStates now);

  Session& session_;
  ScheduleModel model_;
  FormLink form_;
  ControlAdapter adapter_;
  bool active_ = false;
};

}  // namespace r6183::gui
