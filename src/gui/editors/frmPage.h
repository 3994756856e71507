#pragma once
// The custom page groups window, a child of the main window: the page groups of dial
// codes 50 to 53, one tab each.
#include <QMdiSubWindow>

#include "editors/PageModel.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

class QTabWidget;

namespace r6183::gui {

class frmPage : public QMdiSubWindow {
  Q_OBJECT
 public:
  explicit frmPage(Session& session, QWidget* parent = nullptr);
  ~frmPage() override;
  PageModel& model() { return model_; }

 protected:
  void closeEvent(QCloseEvent* e) override;

 private:
  PageModel model_;
  FormLink form_;
  ControlAdapter adapter_;
  QTabWidget* tabs_ = nullptr;
};

}  // namespace r6183::gui
