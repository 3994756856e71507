#pragma once
// The conflict window: modal over the station window, it shows the stations whose numbers
// conflict with the new one and takes the operator's Yes, No or Cancel.
#include <QDialog>

#include "editors/ConflictModel.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

namespace r6183::gui {

class frmConflict : public QDialog {
  Q_OBJECT
 public:
  frmConflict(Session& session, ConflictModel& model, QWidget* parent = nullptr);
  ~frmConflict() override;

  ConflictModel& model() { return model_; }

 public slots:
  // Escape and the system box: the reply stays Cancel.
  void reject() override;

 private:
  ConflictModel& model_;
  FormLink form_;
  ControlAdapter adapter_;
};

}  // namespace r6183::gui
