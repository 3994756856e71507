#pragma once
// The audio connections window, a child of the main window: the page groups of background
// music, time tones and emergency tones, one tab each.
#include <QMdiSubWindow>

#include "editors/BgmModel.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

namespace r6183::gui {

class frmBgm : public QMdiSubWindow {
  Q_OBJECT
 public:
  explicit frmBgm(Session& session, QWidget* parent = nullptr);
  ~frmBgm() override;
  BgmModel& model() { return model_; }

 protected:
  void closeEvent(QCloseEvent* e) override;

 private:
  BgmModel model_;
  FormLink form_;
  ControlAdapter adapter_;
};

}  // namespace r6183::gui
