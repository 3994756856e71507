#pragma once
// Page 3 of the communications wizard: the scan, a second after the page shows, with its
// bar and its result.
#include "connectivity/CommResults.h"
#include "gui/connectivity/WizardPage.h"

class QProgressBar;
class QTimer;

namespace r6183::gui {

class frmCommResults : public WizardPage {
  Q_OBJECT
 public:
  frmCommResults(Session& session, ModComm& comm, modModem& modem, QWidget* parent);
  ~frmCommResults() override;
  CommResultsModel& model() { return model_; }

 protected:
  void showEvent(QShowEvent* e) override;

 private:
  CommResultsModel model_;
  ControlAdapter adapter_;
  QProgressBar* bar_ = nullptr;
  QTimer* timer_ = nullptr;
};

}  // namespace r6183::gui
