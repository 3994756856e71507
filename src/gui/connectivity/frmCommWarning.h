#pragma once
// Page 2 of the communications wizard: what to check before the scan.
#include "connectivity/CommWizard.h"
#include "gui/connectivity/WizardPage.h"

namespace r6183::gui {

class frmCommWarning : public WizardPage {
  Q_OBJECT
 public:
  frmCommWarning(Session& session, QWidget* parent);
  ~frmCommWarning() override;
  CommWarningModel& model() { return model_; }

 private:
  CommWarningModel model_;
  ControlAdapter adapter_;
};

}  // namespace r6183::gui
