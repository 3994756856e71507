#pragma once
// The clocks window: the two clock types, the direction of the time signal and the BCD
// type, written to the programming only by OK.
#include <QDialog>

#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"
#include "options/ClockModel.h"

class QComboBox;

namespace r6183::gui {

class frmClock : public QDialog {
  Q_OBJECT
 public:
  explicit frmClock(Session& session, QWidget* parent = nullptr);
  ~frmClock() override;

  ClockModel& model() { return model_; }

 public slots:
  // Escape closes the window as its system box does: as Cancel.
  void reject() override;

 protected:
  void closeEvent(QCloseEvent* e) override;

 private:
  void Build();
  // A drop-down list shows its ListControl.
  static void Mirror(ListControl& list, QComboBox* box);

  ClockModel model_;
  FormLink form_;
  ControlAdapter adapter_;
};

}  // namespace r6183::gui
