#pragma once
// The numbering window, a child of the main window: four tabs, one per board, each with
// the list of its stations and the buttons that edit, delete and auto-number them.
#include <QMdiSubWindow>

#include "editors/ClidModel.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

class QAbstractButton;
class QKeyEvent;
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
  bool event(QEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;

 private:
  QWidget* BuildContent();
  QWidget* BuildBoard(int board);
  // The button of the board shown whose mnemonic is the key, if it can be pressed.
  QAbstractButton* MnemonicButton(const QKeyEvent& k) const;

  Session& session_;
  ClidModel model_;
  FormLink form_;
  ControlAdapter adapter_;
  QTabWidget* tabs_ = nullptr;
};

}  // namespace r6183::gui
