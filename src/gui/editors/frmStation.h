#pragma once
// The station window: modal over the numbering window, it edits one station's number and
// description and walks along the board, saving as it goes.
#include <QDialog>

#include "editors/StationModel.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

namespace r6183::gui {

class frmStation : public QDialog {
  Q_OBJECT
 public:
  frmStation(Session& session, StationModel& model, QWidget* parent = nullptr);
  ~frmStation() override;

  StationModel& model() { return model_; }

 public slots:
  // Escape and the system box: Cancel, which forgets the station on screen.
  void reject() override;

 protected:
  void showEvent(QShowEvent* e) override;

 private:
  Session& session_;
  StationModel& model_;
  FormLink form_;
  ControlAdapter adapter_;
  bool done_ = false;
};

}  // namespace r6183::gui
