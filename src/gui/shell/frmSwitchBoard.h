#pragma once
// The quick menu, "Programming Windows": a small tool window above the main window that
// lists the programming windows and opens them.
#include <QWidget>

#include <functional>
#include <string>

#include "gui/shell/FormLink.h"
#include "shell/SwitchBoard.h"

class QListWidget;
class QPushButton;
class QTimer;

namespace r6183::gui {

class frmSwitchBoard : public QWidget {
  Q_OBJECT
 public:
  using QuickMenu = std::function<void(const std::string& entry)>;
  frmSwitchBoard(Session& session, QWidget* mainWindow, QuickMenu quickMenu);

  // Places the window and fills the list, as on every load and after a change of
  // configuration.
  void Form_Load();
  // Saves the place, unchecks the menu item and leaves.
  void Form_Unload();

  QListWidget* list() const { return lstMenu_; }

 protected:
  void resizeEvent(QResizeEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  void changeEvent(QEvent* e) override;

 private:
  void OpenSelected();

  Session& session_;
  QWidget* main_;
  QuickMenu quickMenu_;
  FormLink form_;
  QListWidget* lstMenu_;
  QPushButton *cmdOpen_, *cmdAll_;
  QTimer* Timer1_;
  bool resizing_ = false;
  TwipsRect placed_;  // the place Form_Load gave the window
};

}  // namespace r6183::gui
