#include "gui/shell/frmMenu.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QIcon>
#include <QKeySequence>
#include <QMdiArea>
#include <QMenuBar>

#include "connectivity/Connection.h"
#include "connectivity/PhoneList.h"
#include "connectivity/modModem.h"
#include "database/DocumentCommands.h"
#include "editors/ClidModel.h"
#include "editors/ConfigModel.h"
#include "editors/ScheduleModel.h"
#include "gui/connectivity/frmCommResults.h"
#include "gui/connectivity/frmCommType.h"
#include "gui/connectivity/frmCommWarning.h"
#include "gui/connectivity/frmComPort.h"
#include "gui/connectivity/frmPhoneList.h"
#include "gui/connectivity/frmRemote.h"
#include "gui/editors/GroupBoxes.h"
#include "gui/editors/frmBgm.h"
#include "gui/editors/frmClassService.h"
#include "gui/editors/frmClid.h"
#include "gui/editors/frmConfig.h"
#include "gui/editors/frmPage.h"
#include "gui/editors/frmSched.h"
#include "gui/options/frmClock.h"
#include "gui/options/frmDip.h"
#include "gui/protocol/frmAbout.h"
#include "gui/protocol/frmDate.h"
#include "gui/protocol/frmMsgWait.h"
#include "gui/reports/frmPrint.h"
#include "gui/shell/Centre.h"
#include "gui/shell/frmDebug.h"
#include "gui/shell/frmHelp.h"
#include "gui/shell/frmMyMsgBox.h"
#include "gui/shell/Twips.h"
#include "gui/shell/frmIntro.h"
#include "gui/shell/frmSwitchBoard.h"
#include "protocol/ModComm.h"
#include "protocol/PortMap.h"
#include "protocol/ReceiveTransfer.h"
#include "options/ClockModel.h"
#include "options/DipModel.h"
#include "protocol/SendTransfer.h"
#include "reports/PrintModel.h"
#include "shell/MainMenu.h"
#include "shell/Session.h"

namespace r6183::gui {

namespace {
constexpr int32_t kDesignHeight = 9000, kDesignWidth = 12000;  // 600 by 800

// The editor of that class in front, opened when it is not: one of each at a time.
template <class W>
void OpenEditor(Session& s, QMdiArea& mdi) {
  if (WindowOpenBlocked(s)) return;
  W* w = nullptr;
  for (QMdiSubWindow* sub : mdi.subWindowList())
    if (auto* found = qobject_cast<W*>(sub); found && found->isVisible()) w = found;
  if (!w) {
    w = new W(s);
    mdi.addSubWindow(w);
    w->adjustSize();
  }
  ShowInFront(*w);
}

}  // namespace

frmMenu::frmMenu(Session& session, ModComm& comm, InstanceLock& instance, int splashMs)
    : session_(session), comm_(comm), instance_(instance), splashMs_(splashMs), form_(session, *this, "frmMenu") {
  setObjectName("frmMenu");
  form_.Load();
  mdi_ = new QMdiArea(this);
  mdi_->setObjectName("MDIArea");
  mdi_->setBackground(QColor(128, 128, 128));
  setCentralWidget(mdi_);
  resize(ToPixels(kDesignWidth), ToPixels(kDesignHeight));
  progress_ = new frmMsgWait(session_, this);
  modem_ = std::make_unique<modModem>(session_, comm_, *progress_);
  shutdownModem_.release = [this] { return modem_->ReleaseModem(); };
  shutdownModem_.releaseCommand = [this] { mnuModemRelease_Click(*modem_); };
  switchBoard_ = new frmSwitchBoard(session_, this, [this](const std::string& e) { QuickMenu(e); });
  BuildMenus();
  BindHandlers();
  session_.menu.onChange = [this](const std::string& name) { Mirror(name); };
  session_.SetWindowOpener(this);
  Mirror({});
}

frmMenu::~frmMenu() {
  session_.menu.onChange = nullptr;
  session_.SetWindowOpener(nullptr);
}

void frmMenu::BuildMenus() {
  const auto& items = session_.menu.Items();
  auto hasChildren = [&](const std::string& name) {
    for (const MenuItem& i : items)
      if (i.parent == name) return true;
    return false;
  };
  for (const MenuItem& item : items) {
    QAction* action = nullptr;
    if (hasChildren(item.name)) {
      QMenu* parent = item.parent.empty() ? nullptr : menus_.at(item.parent);
      QMenu* menu = parent ? parent->addMenu(QString::fromStdString(item.caption))
                           : menuBar()->addMenu(QString::fromStdString(item.caption));
      menu->setObjectName(QString::fromStdString(item.name));
      menus_[item.name] = menu;
      action = menu->menuAction();
    } else if (item.parent.empty()) {
      action = menuBar()->addAction(QString::fromStdString(item.caption));
    } else if (item.IsSeparator()) {
      action = menus_.at(item.parent)->addSeparator();
    } else {
      action = menus_.at(item.parent)->addAction(QString::fromStdString(item.caption));
    }
    action->setObjectName(QString::fromStdString(item.name));
    actions_[item.name] = action;
    if (!hasChildren(item.name) && !item.IsSeparator()) {
      const std::string name = item.name;
      connect(action, &QAction::triggered, this, [this, name] { Click(name); });
    }
    Mirror(item.name);
  }
  actions_.at("mnuSwitchBoard")->setCheckable(true);
  // the shortcuts a desktop program is expected to have
  actions_.at("mnuFileNew")->setShortcut(QKeySequence::New);
  actions_.at("mnuFileOpen")->setShortcut(QKeySequence::Open);
  actions_.at("mnuFileSave")->setShortcut(QKeySequence::Save);
  actions_.at("mnuHelpContents")->setShortcut(QKeySequence::HelpContents);
}

void frmMenu::Mirror(const std::string& name) {
  if (name.empty()) {
    setWindowTitle(QString::fromStdString(session_.menu.WindowCaption()));
    return;
  }
  const auto it = actions_.find(name);
  if (it == actions_.end()) return;
  const MenuItem& item = session_.menu.Item(name);
  QAction* a = it->second;
  if (!item.IsSeparator()) a->setText(QString::fromStdString(item.caption));
  a->setEnabled(item.enabled);
  a->setVisible(item.visible);
  if (a->isCheckable()) a->setChecked(item.checked);
}

QAction* frmMenu::Action(const std::string& name) const {
  const auto it = actions_.find(name);
  return it == actions_.end() ? nullptr : it->second;
}

void frmMenu::Click(const std::string& name) {
  const auto h = handlers_.find(name);
  if (h != handlers_.end()) h->second();
  if (session_.state.EndProcess) {
    // a required file went missing: the program can't go on
    hide();
    QCoreApplication::exit(1);
  }
}

void frmMenu::BindHandlers() {
  Session& s = session_;
  auto& h = handlers_;
  h["mnuFileNew"] = [&s] { mnuFileNew_Click(s); };
  h["mnuFileOpen"] = [&s] { mnuFileOpen_Click(s); };
  h["mnuFileClose"] = [&s] { mnuFileClose_Click(s); };
  h["mnuFileSave"] = [&s] { mnuFileSave_Click(s); };
  h["mnuFileSaveAs"] = [&s] { mnuFileSaveAs_Click(s); };
  for (int i = 1; i <= 4; ++i)
    h[ArrayName("mnuFileArray", i)] = [&s, i] { OpenDatabase(s, s.state.RecentFiles[static_cast<std::size_t>(i)]); };
  h["mnuRx"] = [this] { mnuRx_Click(session_, comm_, *progress_); };
  h["mnuSend"] = [this] { mnuSend_Click(session_, comm_, *progress_); };
  h["mnuExit"] = [this] { mnuExit_Click(); };
  h["mnuWindowCloseAll"] = [&s] { mnuWindowCloseAll_Click(s); };
  h["mnuSwitchBoard"] = [this] { mnuSwitchBoard_Click(); };
  h["mnuDate"] = [this] { RunDateTimeCommand(session_, comm_, *progress_, this); };
  h["mnuHelpAbout"] = [this] { gui::mnuHelpAbout_Click(session_, comm_, *progress_, this); };
  h["mnuHelpContents"] = [this] { gui::mnuHelpContents_Click(session_, this); };
  h["mnuDebug"] = [this] {
    // one journal window; the menu brings it back to the front
    auto* debug = findChild<frmDebug*>(QString(), Qt::FindDirectChildrenOnly);
    if (!debug) {
      debug = new frmDebug(session_, this);
      debug->setAttribute(Qt::WA_DeleteOnClose);
    }
    debug->show();
    debug->raise();
    debug->activateWindow();
  };

  // The window-opening guard holds for the programming windows but the clocks.
  for (int i = 1; i <= 6; ++i) h["mnuSched" + std::to_string(i)] = [&s, i] { mnuSched_Click(s, i); };
  h["mnuAllSched"] = [&s] { mnuAllSched_Click(s); };
  h["mnuArchNum"] = [&s] { mnuArchNum_Click(s); };
  h["mnuPageGroup"] = [this] { OpenEditor<frmPage>(session_, *mdi_); };
  h["mnuBGM"] = [this] { OpenEditor<frmBgm>(session_, *mdi_); };
  h["mnuClassService"] = [this] { OpenEditor<frmClassService>(session_, *mdi_); };
  h["mnuConfig"] = [&s] { mnuConfig_Click(s); };
  h["mnuSysOpt"] = [&s] { mnuSysOpt_Click(s); };
  h["mnuClocks"] = [&s] { mnuClocks_Click(s); };
  h["mnuComPort"] = [&s] { mnuComPort_Click(s); };
  h["mnuRemoteModem"] = [&s] { mnuRemoteModem_Click(s); };
  h["mnuModemConnect"] = [&s] { mnuModemConnect_Click(s); };
  h["mnuManualConnect"] = [this] { mnuManualConnect_Click(*modem_); };
  h["mnuModemRelease"] = [this] { mnuModemRelease_Click(*modem_); };
  h["mnuPrint"] = [&s] { mnuPrint_Click(s); };
}

void frmMenu::QuickMenu(const std::string& entry) {
  static const std::map<std::string, std::string> kEntries = {
      {"Schedule 1", "mnuSched1"}, {"Schedule 2", "mnuSched2"}, {"Schedule 3", "mnuSched3"},
      {"Schedule 4", "mnuSched4"}, {"Schedule 5", "mnuSched5"}, {"Schedule 6", "mnuSched6"},
      {"Clock", "mnuClocks"}, {"Custom Page Groups", "mnuPageGroup"}, {"Audio Connections", "mnuBGM"},
      {"System", "mnuSysOpt"}, {"ArchNumber / CLID", "mnuArchNum"}, {"Class Of Service", "mnuClassService"},
      {"All", "mnuAllSched"}};
  if (const auto it = kEntries.find(entry); it != kEntries.end()) Click(it->second);
}

void frmMenu::mnuSwitchBoard_Click() {
  if (session_.menu.Checked("mnuSwitchBoard")) {
    session_.menu.SetChecked("mnuSwitchBoard", false);
    switchBoard_->Form_Unload();
  } else {
    session_.menu.SetChecked("mnuSwitchBoard", true);
    switchBoard_->Form_Load();
  }
}

void frmMenu::mnuExit_Click() {
  if (r6183::mnuExit_Click(session_)) close();
}

bool frmMenu::MDIForm_Load() { return r6183::MDIForm_Load(session_, *this, instance_); }

// --- the host of start-up and shutdown

int32_t frmMenu::DesignHeight() const { return kDesignHeight; }
int32_t frmMenu::DesignWidth() const { return kDesignWidth; }
int32_t frmMenu::ScreenHeight() const { return ToTwips(ScreenArea(*this).height()); }
int32_t frmMenu::ScreenWidth() const { return ToTwips(ScreenArea(*this).width()); }
int32_t frmMenu::Height() const { return ToTwips(height()); }
int32_t frmMenu::Width() const { return ToTwips(width()); }
void frmMenu::Maximise() { setWindowState(windowState() | Qt::WindowMaximized); }

void frmMenu::Resize(int32_t height, int32_t width) {
  const QRect area = ScreenArea(*this);
  resize(std::min(ToPixels(width), area.width()), std::min(ToPixels(height), area.height()));
}

void frmMenu::CenterScreen() { CentreWindow(*this); }

void frmMenu::SetIcon(const std::string& path) {
  const QIcon icon(QString::fromStdString(path));
  setWindowIcon(icon);
  QApplication::setWindowIcon(icon);
}

void frmMenu::SetHourglass(bool on) {
  if (on) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    ++hourglass_;
  } else {
    for (; hourglass_ > 0; --hourglass_) QApplication::restoreOverrideCursor();
  }
}

void frmMenu::ShowSplash() {
  if (splashMs_ <= 0) return;
  ++splashes_;
  frmIntro splash(session_, this, splashMs_);
  // Not QDialog::exec: its timer may end the splash while it is being shown, before exec's
  // loop runs, and that loop would then wait for ever. Wait only for a splash still up.
  QEventLoop loop;
  connect(&splash, &QDialog::finished, &loop, &QEventLoop::quit);
  splash.setModal(true);
  splash.show();
  if (splash.isVisible()) loop.exec(QEventLoop::DialogExec);
}

// --- the windows core asks for

void frmMenu::ShowModal(const std::string& name) {
  if (name == "frmConfig") {
    frmConfig config(session_, this);
    config.exec();
  }
  if (name == "frmDip") frmDip(session_, this).exec();
  if (name == "frmComPort")
    frmComPort(session_, comm_, MapPorts(session_.journal(), session_.state.SettingsPath, DiscoverPorts()), this)
        .exec();
  if (name == "frmManConnect") frmManConnect(session_, *modem_, this).exec();
  // the wizard's pages stand over the port window that runs them
  QWidget* front = QApplication::activeModalWidget() ? QApplication::activeModalWidget() : this;
  if (name == kCommTypePage) frmCommType(session_, front).exec();
  if (name == kCommWarningPage) frmCommWarning(session_, front).exec();
  if (name == kCommResultsPage) frmCommResults(session_, comm_, *modem_, front).exec();
  if (name == "frmClock") frmClock(session_, this).exec();
  if (name == "frmPrint") frmPrint(session_, this).exec();
}

void frmMenu::Show(const std::string& name) {
  if (name == "frmSwitchBoard") switchBoard_->Form_Load();
  if (name == "frmRemote") {
    // a new window each time, gone when it closes
    auto* remote = new frmRemote(session_, *modem_, this);
    remote->show();
    remote->raise();
    remote->activateWindow();
  }
  if (name == "frmClid") {
    if (!clid_) clid_ = new frmClid(session_, mdi_);
    clid_->Open(*mdi_);
  }
  if (name == "frmMenu") {
    raise();
    activateWindow();
  }
  if (name == "frmSched") {
    // one window a schedule, made on first use and kept
    const int n = session_.state.ScheduleNumber;
    if (n < 1 || n > static_cast<int>(schedules_.size())) return;
    frmSched*& w = schedules_[static_cast<std::size_t>(n - 1)];
    if (!w) w = new frmSched(session_, mdi_);
    w->Open(*mdi_);
  }
}

void frmMenu::ShowPhoneList(const PhoneListSetup& setup) {
  // a new list window for each command, gone when it closes
  auto* list = new frmPhoneList(session_, *modem_, setup, this);
  list->setAttribute(Qt::WA_DeleteOnClose);
  list->show();
  CentreWindow(*list, this);
  list->raise();
  list->activateWindow();
}

void frmMenu::EnableMain(bool on) {
  // the menu and the programming windows take no input; the progress window stays live
  menuBar()->setEnabled(on);
  mdi_->setEnabled(on);
}

void frmMenu::ShowLogNotice(const std::string& text, const std::string& logFile) {
  frmMyMsgBox::ShowNotice(session_, this, text, logFile);
}

// --- events

void frmMenu::closeEvent(QCloseEvent* e) {
  if (unloaded_) {
    e->accept();
    return;
  }
  if (MDIForm_QueryUnload(session_, *this, comm_, shutdownModem_)) {
    e->ignore();
    return;
  }
  MDIForm_Unload(session_, comm_, shutdownModem_);
  unloaded_ = true;
  switchBoard_->hide();
  e->accept();
}

void frmMenu::resizeEvent(QResizeEvent* e) {
  QMainWindow::resizeEvent(e);
  KeepProgressInView();
}

void frmMenu::mouseDoubleClickEvent(QMouseEvent* e) {
  QMainWindow::mouseDoubleClickEvent(e);
  KeepProgressInView();
}

void frmMenu::KeepProgressInView() {
  if (Form* f = ProgressWindowToKeepInView(session_)) {
    f->SetFocus();
    f->BringToTop();
  }
}

}  // namespace r6183::gui
