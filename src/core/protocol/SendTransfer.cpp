#include "protocol/SendTransfer.h"

#include <functional>

#include "database/Backups.h"
#include "database/Database.h"
#include "database/DocumentCommands.h"
#include "protocol/Messages.h"
#include "protocol/ModComm.h"
#include "protocol/ProgressWindow.h"
#include "protocol/ReceiveTransfer.h"
#include "protocol/Revisions.h"
#include "protocol/StationText.h"
#include "shell/MainMenu.h"
#include "shell/Session.h"
#include "shell/Timer.h"

namespace r6183 {

namespace {
constexpr const char* kSending = "Sending Data:";


std::string Failed(const Session& s) { return "Error sending data to " + s.product.ProductModel + "."; }
}  // namespace

bool Send_Data(Session& s, ModComm& comm, ProgressWindow& w) {
  auto& win = s.windows();
  win.SetHourglass(true);
  win.EnableMain(false);
  if (!comm.Init_Comm(0)) {
    win.EnableMain(true);
    w.Unload();
    win.SetHourglass(false);
    s.Message(Failed(s), Buttons::Ok, Icon::Exclamation);
    return false;
  }
  Database db;
  Messages m(s, comm);
  m.ShowProgress = [&](const std::string& a, const std::string& b, int p) { w.WhatToDisplay(a, b, p); };
  auto& flags = comm.transfer;
  step(s.journal(), Where{"ModComm", "Send_Data"}, [&] {
    db = Database::Open(s.state.WorkDbPath);
    flags = {};
    comm.dataFile.Rewrite(s, "tx_data.txt");
    comm.ExceptionsFlag = false;
    std::string start = "S";
    if (!comm.Send_Msg(start)) {
      flags.TransferFailed = true;
      return;
    }
    struct Stage {
      const char* second;  // nullptr: the window stays as it is
      int percent;
      std::function<void()> run;
    };
    const Stage stages[] = {
        {"Events", 3, [&] { m.SendConfig(); }},
        {"Events", 10, [&] { m.SendEvents(db); }},
        {"Custom Page Groups", 20, [&] { m.SendGroups(db); }},
        {nullptr, 0, [&] { m.SendSched(db); }},
        {"CLID", 30, [&] { m.SendClid(db); }},
        {"Dipswiches", 75, [&] { m.SendDip(db); }},
        {"Background Music", 80, [&] { m.SendBGM(db); }},
        {nullptr, 0, [&] { m.SendEmer(db); }},
        {nullptr, 0, [&] { m.SendCT(db); }},
        {nullptr, 0, [&] { m.SendClock(db); }},
        {"Class Of Service", 90, [&] { m.SendClassService(db); }},
        {"All Done", 98,
         [&] {  // SendAllDone
           std::string a = "A";
           if (comm.Send_Msg(a)) flags.TransferDone = true;
           else flags.TransferFailed = true;
         }},
    };
    for (const Stage& stage : stages) {
      if (stage.second) w.WhatToDisplay(kSending, stage.second, stage.percent);
      stage.run();
      if (&stage == &stages[11]) {
        flags.TransferDone = true;  // whatever the last message got
        w.WhatToDisplay("Finished", "", 100);
      }
      if (flags.TransferDone || flags.TransferFailed) break;
    }
  });
  win.EnableMain(true);
  w.Unload();
  win.SetHourglass(false);
  if (flags.TransferDone) s.Message("Send data completed successfully.", Buttons::Ok, Icon::Information);
  else s.Message(Failed(s), Buttons::Ok, Icon::Exclamation);
  comm.dataFile.Close();
  comm.logFile.Close();
  if (comm.ExceptionsFlag)
    win.ShowLogNotice("Exceptions have occurred while sending data to " + s.product.ProductModel +
                          ". Check the Log file for more information.",
                      "log_file.txt");
  db.Close();
  return flags.TransferDone;
}

void mnuSend_Click(Session& s, ModComm& comm, ProgressWindow& w) {
  if (DialingModem(s)) return;
  DisableAllRootMenus(s);
  SaveOpenForms(s, "Send Data");
  if (s.state.SaveCancelled) {
    InableAllRootMenus(s);
    return;
  }
  if (s.state.CurrentFileName.empty()) mnuFileOpen_Click(s);
  if (const auto refusal = s.state.CurrentFileName.empty() ? std::nullopt : StationTextRefusal(s)) {
    s.Message(*refusal, Buttons::Ok, Icon::Exclamation);
    InableAllRootMenus(s);
    return;
  }
  w.Show();
  w.WhatToDisplay("Preparing to send data...", "", 1);
  if (!s.state.CurrentFileName.empty()) {
    step(s.journal(), Where{"frmMenu", "mnuSend"}, [&] { comm.logFile.Rewrite(s, "log_file.txt"); });
    RevisionLines lines;
    GetRevs(s, comm, lines);
    if (!comm.NoResponseFlag && UnitRevisionText(comm, lines, true) < s.state.ProgramDbRevisionShort) {
      const std::string& model = s.product.ProductModel;
      const Answer a = s.Message(model + " System may not support all programmed features.\r\n\r\n" +
                                     "Upgrade the " + model + " System Software to prevent receiving\r\n" +
                                     "this message in the future.\r\n\r\nContinue? ",
                                 Buttons::YesNo);
      if (a != Answer::Yes) {
        InableAllRootMenus(s);
        w.Unload();
        return;
      }
    }
    Sleep(s, 1);
    // what the unit now holds is kept, whatever becomes of the document
    if (Send_Data(s, comm, w)) KeepBackup(s, s.state.WorkDbPath, "send");
  }
  InableAllRootMenus(s);
  w.Unload();
}

}  // namespace r6183
