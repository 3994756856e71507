#pragma once
// The main window: the menu of the core menu model, the area for the programming
// windows, the start and the end of the program, and the windows core asks for.
#include <QMainWindow>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "gui/shell/FormLink.h"
#include "shell/StartUp.h"
#include "shell/WindowOpener.h"

class QAction;
class QMdiArea;
class QMenu;

namespace r6183 {
class InstanceLock;
class ModComm;
class modModem;
}  // namespace r6183

namespace r6183::gui {

class frmClid;
class frmMsgWait;
class frmSched;
class frmSwitchBoard;

class frmMenu : public QMainWindow, public MainWindowHost, public WindowOpener {
  Q_OBJECT
 public:
  // `splashMs`: how long the splash window stays (0: not shown, for tests).
  frmMenu(Session& session, ModComm& comm, InstanceLock& instance, int splashMs = 1800);
  ~frmMenu() override;

  // The start-up sequence; false when the process must end.
  bool MDIForm_Load();

  QAction* Action(const std::string& name) const;
  frmMsgWait& progress() const { return *progress_; }
  frmSwitchBoard* switchBoard() const { return switchBoard_; }
  // The window of schedule n (1 to 6), once it has been opened.
  frmSched* schedule(int n) const { return schedules_.at(static_cast<std::size_t>(n - 1)); }
  // The numbering window, once it has been opened.
  frmClid* clid() const { return clid_; }
  QMdiArea* mdiArea() const { return mdi_; }
  // Runs the command of a menu item, as a click does.
  void Click(const std::string& name);
  // A quick-menu entry: "Schedule 1" ... "All".
  void QuickMenu(const std::string& entry);
  int splashesShown() const { return splashes_; }

  // MainWindowHost
  int32_t DesignHeight() const override;
  int32_t DesignWidth() const override;
  int32_t ScreenHeight() const override;
  int32_t ScreenWidth() const override;
  int32_t Height() const override;
  int32_t Width() const override;
  void Maximise() override;
  void Resize(int32_t height, int32_t width) override;
  void CenterScreen() override;
  void SetIcon(const std::string& path) override;
  void SetHourglass(bool on) override;
  void ShowSplash() override;

  // The modem on the port of the link.
  modModem& modem() const { return *modem_; }

  // WindowOpener
  void ShowModal(const std::string& name) override;
  void Show(const std::string& name) override;
  void ShowPhoneList(const PhoneListSetup& setup) override;
  void EnableMain(bool on) override;
  void ShowLogNotice(const std::string& text, const std::string& logFile) override;

 protected:
  void closeEvent(QCloseEvent* e) override;
  void resizeEvent(QResizeEvent* e) override;
  void mouseDoubleClickEvent(QMouseEvent* e) override;

 private:
  void BuildMenus();
  void Mirror(const std::string& name);
  void BindHandlers();
  void KeepProgressInView();
  void mnuSwitchBoard_Click();
  void mnuExit_Click();

  Session& session_;
  ModComm& comm_;
  InstanceLock& instance_;
  int splashMs_;
  FormLink form_;
  QMdiArea* mdi_;
  frmMsgWait* progress_;
  std::unique_ptr<modModem> modem_;
  frmSwitchBoard* switchBoard_;
  std::array<frmSched*, 6> schedules_{};
  frmClid* clid_ = nullptr;
  std::map<std::string, QAction*> actions_;
  std::map<std::string, QMenu*> menus_;
  std::map<std::string, std::function<void()>> handlers_;
  ModemRelease shutdownModem_;  // the release at the end of the program
  int hourglass_ = 0;
  int splashes_ = 0;
  bool unloaded_ = false;
};

}  // namespace r6183::gui
