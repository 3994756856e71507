#pragma once
// The auto-numbering window: modal over the numbering window, it takes the last number of
// a run from the selected station on.
#include <QDialog>

#include "editors/AutoModel.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

namespace r6183::gui {

class frmAuto : public QDialog {
  Q_OBJECT
 public:
  frmAuto(Session& session, AutoModel& model, QWidget* parent = nullptr);
  ~frmAuto() override;

  AutoModel& model() { return model_; }

 public slots:
  // Escape and the system box count as Cancel.
  void reject() override;

 protected:
  void showEvent(QShowEvent* e) override;

 private:
  AutoModel& model_;
  FormLink form_;
  ControlAdapter adapter_;
  bool done_ = false;
};

}  // namespace r6183::gui
