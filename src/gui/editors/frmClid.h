#pragma once
// The numbering window, a child of the main window: four tabs, one per board, each with
// the list of its stations and the buttons that edit, delete and auto-number them.
#include <QMdiSubWindow>

#include "editors/ClidModel.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

class QMdiArea;
class QTabWidget;

namespace r6183::gui {

class frmClid : public QMdiSubWindow {
  Q_OBJECT
 public:
  explicit frmClid(Session& session, QWidget* parent = nullptr);
  ~frmClid() override;

  ClidModel& model() { return model_; }
  // Loads the window unless it is loaded, shows it in `area` and brings it to the front.
  void Open(QMdiArea& area);

 protected:
  void closeEvent(QCloseEvent* e) override;
  void changeEvent(QEvent* e) override;

 private:
  QWidget* BuildContent();
  QWidget* BuildBoard(int board);

  Session& session_;
  ClidModel model_;
  FormLink form_;
  ControlAdapter adapter_;
  QTabWidget* tabs_ = nullptr;
};

}  // namespace r6183::gui
