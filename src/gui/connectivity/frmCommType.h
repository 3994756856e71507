#pragma once
// Page 1 of the communications wizard: the kind of connection.
#include "connectivity/CommWizard.h"
#include "gui/connectivity/WizardPage.h"

namespace r6183::gui {

class frmCommType : public WizardPage {
  Q_OBJECT
 public:
  frmCommType(Session& session, QWidget* parent);
  ~frmCommType() override;
  CommTypeModel& model() { return model_; }

 private:
  CommTypeModel model_;
  ControlAdapter adapter_;
};

}  // namespace r6183::gui
