#include "protocol/ReceiveTransfer.h"

#include "database/Backups.h"
#include "database/Database.h"
#include "database/DocumentChecks.h"
#include "database/ToneDefaults.h"
#include "editors/BoardConfig.h"
#include "protocol/Messages.h"
#include "protocol/ModComm.h"
#include "protocol/ProgressWindow.h"
#include "protocol/Revisions.h"
#include "shell/FileOps.h"
#include "shell/MainMenu.h"
#include "shell/Session.h"
#include "shell/Timer.h"

namespace r6183 {

namespace {
constexpr const char* kReceiving = "Receiving data...";
constexpr const char* kPreparing = "Preparing to receive data...";

}  // namespace

void Process_Msg(Session& s, ModComm& comm, Messages& m, ProgressWindow& w, int16_t& clidCount) {
  step(s.journal(), Where{"ModComm", "Process_Msg"}, [&] {
    if (comm.msg_str.empty()) return;
    switch (comm.msg_str[0]) {
      case 'E': m.ReadEvent(); w.WhatToDisplay(kReceiving, "Events", 30); break;
      case 'G': m.ReadGroup(); w.WhatToDisplay(kReceiving, "Custom Page Groups", 40); break;
      case 'C':
        m.ReadClid();
        ++clidCount;
        w.WhatToDisplay(kReceiving, "CLID", 50 + clidCount / 3);
        break;
      case 'P': m.ReadClassService(); w.WhatToDisplay(kReceiving, "Class Of Service", 85); break;
      case 'D': m.ReadDip(); w.WhatToDisplay(kReceiving, "Dipswiches", 90); break;
      case 'M': m.ReadBGM(); w.WhatToDisplay(kReceiving, "Background Music", 95); break;
      case 'A': comm.transfer.TransferDone = true; w.WhatToDisplay(kReceiving, "All Done", 100); break;
      case 'K': m.ReadCT(); break;
      case 'N': m.ReadEmer(); break;
      case 'X': m.ReadConfig(); break;
      case 'W': m.ReadSched(); break;
      case 'I': m.REadClock(); break;
      default: break;  // a letter of newer firmware let through: passed over
    }
  });
}

bool Receive_Data(Session& s, ModComm& comm, ProgressWindow& w, const std::string& rv) {
  const Where where{"ModComm", "Receive_Data"};
  auto& st = s.state;
  auto& win = s.windows();
  if (!ReplaceWithCopy(st.DefaultDbPath, st.WorkDbPath))
    s.Message("Error receiving data into Database.", Buttons::Ok, Icon::Exclamation);
  st.EventCount = 0;
  st.SystemConfig = 0;
  win.SetHourglass(true);
  win.EnableMain(false);
  if (!comm.Init_Comm(0)) {
    win.EnableMain(true);
    w.Unload();
    win.SetHourglass(false);
    s.Message("Error receiving data", Buttons::Ok, Icon::Exclamation);
    return false;
  }
  Messages messages(s, comm);
  int16_t clidCount = 0;
  step(s.journal(), where, [&] {
    messages.tables.Open_Tables(s);
    comm.dataFile.Rewrite(s, "rx_data.txt");
    comm.ExceptionsFlag = false;
    comm.transfer = {};
    const bool acceptNewer = rv > st.ProgramDbRevisionShort;
    std::string r = "R";
    if (!comm.Send_Msg(r)) {
      comm.transfer.TransferFailed = true;
    } else {
      w.WhatToDisplay(kPreparing, "", 10);
      while (!comm.transfer.TransferDone && !comm.transfer.TransferFailed) {
        if (comm.Receive_Msg(acceptNewer)) Process_Msg(s, comm, messages, w, clidCount);
        else comm.transfer.TransferFailed = true;
      }
    }
  });
  comm.dataFile.Close();
  comm.logFile.Close();
  if (comm.ExceptionsFlag)
    win.ShowLogNotice("Receiving exceptions have occurred. Check the Log file for more information.",
                      "log_file.txt");
  messages.tables.Close_Tables();
  win.EnableMain(true);
  w.Unload();
  win.SetHourglass(false);

  if (!comm.transfer.TransferDone) {
    s.Message("Error receiving data", Buttons::Ok, Icon::Exclamation);
    return false;
  }
  s.Message("Receive Data completed successfully.", Buttons::Ok, Icon::Information);
  win.SetHourglass(true);
  Validate_Config(s);
  step(s.journal(), where, [&] {
    Database db = Database::Open(st.WorkDbPath);
    GetTotalEvents(s, db);
  });
  File_Menu_Options(s);
  win.Show("frmSwitchBoard");
  s.menu.SetEnabled("mnuModem", true);
  s.menu.SetVisible("mnuModem", true);
  st.CurrentFileName = "Untitled";
  s.menu.SetWindowCaption("Untitled - " + s.product.ProductTitle);
  win.SetHourglass(false);
  return true;
}

void mnuRx_Click(Session& s, ModComm& comm, ProgressWindow& w) {
  if (DialingModem(s)) return;
  w.Show();
  w.WhatToDisplay(kPreparing, "", 1);
  DisableAllRootMenus(s);
  step(s.journal(), Where{"frmMenu", "mnuRx"}, [&] { comm.logFile.Rewrite(s, "log_file.txt"); });
  RevisionLines lines;
  GetRevs(s, comm, lines);
  const std::string rv = UnitRevisionText(comm, lines, false);
  Sleep(s, 1);
  const bool received = Receive_Data(s, comm, w, rv);
  if (rv < s.state.ProgramDbRevisionShort) UpdateData(s);
  // what the unit held is kept, whatever becomes of the work copy
  if (received) KeepBackup(s, s.state.WorkDbPath, "receive");
  InableAllRootMenus(s);
  w.Unload();
}

}  // namespace r6183
