#pragma once
// The system options window: the unit's option switches as check boxes and option groups,
// written to the programming only by OK.
#include <QDialog>

#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"
#include "options/DipModel.h"

namespace r6183::gui {

class frmDip : public QDialog {
  Q_OBJECT
 public:
  explicit frmDip(Session& session, QWidget* parent = nullptr);
  ~frmDip() override;

  DipModel& model() { return model_; }

 public slots:
  // Escape closes the window as its system box does: as Cancel.
  void reject() override;

 protected:
  void closeEvent(QCloseEvent* e) override;

 private:
  void Build();

  Session& session_;
  DipModel model_;
  FormLink form_;
  ControlAdapter adapter_;
};

}  // namespace r6183::gui
