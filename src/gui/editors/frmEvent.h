#pragma once
// The event window: modal over a schedule window, it walks through the schedule's events
// and adds, changes and deletes them.
#include <QDialog>

#include "editors/EventModel.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

class QLabel;
class QLineEdit;
class QScrollBar;

namespace r6183::gui {

class frmEvent : public QDialog {
  Q_OBJECT
 public:
  frmEvent(Session& session, EventModel& model, QWidget* parent = nullptr);
  ~frmEvent() override;

  EventModel& model() { return model_; }

 public slots:
  // Escape closes the window as its system box does.
  void reject() override;

 protected:
  void showEvent(QShowEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void Build();
  // The arrow keys of a text box step its spin bar, as a click on the bar would.
  bool Spin(QScrollBar* bar, bool up);

  Session& session_;
  EventModel& model_;
  FormLink form_;
  ControlAdapter adapter_;
  QLineEdit* txtStartTime_ = nullptr;
  QLineEdit* txtDuration_ = nullptr;
  QScrollBar* hours_ = nullptr;
  QScrollBar* minutes_ = nullptr;
  QScrollBar* seconds_ = nullptr;
  QLabel* txtHideScreen_ = nullptr;
  bool activated_ = false;
  bool done_ = false;
};

}  // namespace r6183::gui
