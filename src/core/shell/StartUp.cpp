#include "shell/StartUp.h"

#include "database/DocumentCommands.h"
#include "protocol/ModComm.h"
#include "shell/ErrorsMaintenance.h"
#include "shell/FileOps.h"
#include "shell/InstanceLock.h"
#include "shell/MainMenu.h"
#include "shell/ProductIdentity.h"
#include "shell/Session.h"
#include "shell/Settings.h"

namespace r6183 {

namespace {
const Where kLoad{"frmMenu", "MDIForm_Load"};
const Where kQueryUnload{"frmMenu", "MDIForm_QueryUnload"};
const Where kUnload{"frmMenu", "MDIForm_Unload"};
constexpr int32_t kSmallScreenHeight = 8000, kSmallScreenWidth = 10000;  // 640 by 480

void ModemBeingReleased(Session& s) {
  s.prompter().Message("Modem is being Released. ", Buttons::YesNo, Icon::Exclamation, kModemTitle);
}
}  // namespace

bool MDIForm_Load(Session& s, MainWindowHost& host, InstanceLock& instance) {
  auto& st = s.state;
  step(s.journal(), kLoad, [&] { ReadIniFile(s); });
  step(s.journal(), kLoad, [&] {
    // a saved size that is missing or under half the design size is not applied
    if (host.DesignHeight() / 2 > st.MdiHeight) st.MdiHeight = host.Height();
    if (host.DesignWidth() / 2 > st.MdiWidth) st.MdiWidth = host.Width();
    if (host.ScreenHeight() < kSmallScreenHeight && host.ScreenWidth() < kSmallScreenWidth) host.Maximise();
    else host.Resize(st.MdiHeight, st.MdiWidth);
  });
  step(s.journal(), kLoad, [&] { host.CenterScreen(); });

  if (!RestoreErrorsDatabase(s)) {
    // the product's words are not known yet: the title is blank
    s.Message(kErrorsCorruptText, Buttons::Ok, Icon::Exclamation);
    return false;
  }
  step(s.journal(), kLoad, [&] { RepairDatabase(st.ErrorsDbPath); });
  AA_Sys_WhoAmi(s);
  step(s.journal(), Where{"AA_Sys_WhoAmi", "iniSysOpt"}, [&] {
    if (!s.product.IconPath.empty()) host.SetIcon(s.product.IconPath);
  });
  if (!SetProjectOptions(s)) return false;

  host.SetHourglass(true);
  host.ShowSplash();
  host.SetHourglass(false);
  // the help file needs no setting up: the help command finds the book when asked
  if (!Initialize(s)) return false;

  if (!instance.Acquire()) {
    s.Message("'" + s.product.ProductTitle + "' is already running.", Buttons::Ok, Icon::Exclamation);
    return false;
  }
  step(s.journal(), kLoad, [&] {
    if (IsFile(st.DefaultDbPath)) RepairDatabase(st.DefaultDbPath);
    else s.Message("could not find default db");
  });
  DisplayFileArray(s);
  st.TraceComm = 0;
  st.TraceAT = 0;
  st.ProgramDbRevision = "02.00";
  st.ProgramDbRevisionShort = "2.00";
  s.menu.SetEnabled("mnuModemRelease", false);
  return true;
}

bool MDIForm_QueryUnload(Session& s, MainWindowHost& host, ModComm& comm, const ModemRelease& modem) {
  auto& st = s.state;
  bool cancel = false;
  host.SetHourglass(true);
  if (s.menu.Enabled("mnuFileClose")) {
    mnuFileClose_Click(s);
    if (st.SaveCancelled) cancel = true;
  }
  step(s.journal(), kQueryUnload, [&] {
    st.MdiHeight = host.Height();
    st.MdiWidth = host.Width();
    SaveIniFile(s);
  });
  if (st.ModemReleasePending) {
    ModemBeingReleased(s);
  } else if (s.menu.Enabled("mnuModemRelease") && modem.release && !modem.release()) {
    if (s.prompter().Message("Modem Release Unsuccessful. Shut down anyway?", Buttons::YesNo, Icon::Exclamation,
                             kModemTitle) == Answer::No)
      cancel = true;
  }
  // a cancelled shutdown has still closed the port and compacted the journal
  step(s.journal(), kQueryUnload, [&] { comm.Exit_Comm(); });
  CompactErrors(s);
  host.SetHourglass(false);
  return cancel;
}

void MDIForm_Unload(Session& s, ModComm& comm, const ModemRelease& modem) {
  if (s.state.ModemReleasePending) {
    ModemBeingReleased(s);
  } else if (s.menu.Enabled("mnuModemRelease") && modem.release && !modem.release()) {
    if (s.prompter().Message("Modem Release Unsuccessful. Do you want to try again?", Buttons::YesNo,
                             Icon::Exclamation, kModemTitle) == Answer::Yes &&
        modem.releaseCommand)
      modem.releaseCommand();
  }
  step(s.journal(), kUnload, [&] { comm.Exit_Comm(); });
}

}  // namespace r6183
