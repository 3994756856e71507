#pragma once
// The dip-switch chart: where the choices of the open options window, saved or not, put
// the sixteen switches of the main board. Read only.
#include <QDialog>

#include <vector>

#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"
#include "options/DipChart.h"

class QFrame;

namespace r6183::gui {

class frmDipSw : public QDialog {
  Q_OBJECT
 public:
  frmDipSw(Session& session, const DipModel& dip, QWidget* parent = nullptr);
  ~frmDipSw() override;

  DipChart& model() { return model_; }

 private:
  void Build();
  void ShowShapes();

  DipChart model_;
  FormLink form_;
  ControlAdapter adapter_;
  std::vector<QFrame*> shpOn_, shpOff_;
};

}  // namespace r6183::gui
