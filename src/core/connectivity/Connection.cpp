#include "connectivity/Connection.h"

#include "connectivity/CommWizard.h"
#include "connectivity/PhoneList.h"
#include "connectivity/modModem.h"
#include "protocol/DateTime.h"
#include "protocol/ModComm.h"
#include "protocol/ProgressWindow.h"
#include "shell/MainMenu.h"
#include "shell/Session.h"
#include "shell/StartUp.h"

namespace r6183 {

namespace {
constexpr std::string_view kComPort = "frmComport";
constexpr std::string_view kManConnect = "frmManConnect";
const std::string kDialing = "Dialing Modem";

// A transfer is under way: three windows, the last captioned with the product's title.
bool TransferOn(const Session& s) { return s.forms.CaptionAt(3, 2, s.product.ProductTitle); }

// The Communications Setup commands do nothing while the phone list is up, and refuse
// during a call: the port can't change under a call.
bool SetupRefused(Session& s) {
  if (s.forms.CaptionAt(2, 1, kDialing) || s.forms.CaptionAt(3, 2, kDialing)) return true;
  if (!InCall(s)) return false;
  s.prompter().Message(kReleaseFirst, Buttons::Ok, Icon::None, kRemoteModemTitle);
  return true;
}
}  // namespace

// --- the port window

ComPortModel::ComPortModel(Session& session, ModComm& comm, std::vector<PortInfo> ports)
    : s_(session), comm_(comm), ports_(std::move(ports)) {
  cmdOk.OnClick = [this] { cmdOk_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
  cmdAuto.OnClick = [this] { cmdAuto_Click(); };
  RunCommWizard = [this] {
    r6183::RunCommWizard(s_);
    return static_cast<int>(s_.state.WizardFoundPort);
  };
}

std::string ComPortModel::PortText(int index) const {
  std::string text = cboPort.List(index);
  for (const PortInfo& p : ports_)
    if (p.number == index + 1) {
      text += "   " + (p.device.empty() ? std::string("-") : p.device);
      if (!p.description.empty()) text += "   " + p.description;
    }
  return text;
}

void ComPortModel::Form_Load() {
  ProcessState& st = s_.state;
  st.ComPortCancelled = 1;
  if (st.ComPortNumber < 1) st.ComPortNumber = 1;
  cboPort.Clear();
  for (int n = 1; n <= kPortCount; ++n) cboPort.AddItem(std::to_string(n));
  cmdAuto.SetEnabled(static_cast<bool>(RunCommWizard));
  // a number beyond the list (a settings file written by hand) selects nothing
  step(s_.journal(), Where{kComPort, "Form_Load"}, [&] { cboPort.SetListIndex(st.ComPortNumber - 1); });
}

void ComPortModel::cmdOk_Click() {
  step(s_.journal(), Where{kComPort, "cmdOK"}, [&] {
    if (cboPort.ListIndex() < 0) {
      s_.prompter().Message("Must select a COM Port.", Buttons::Ok, Icon::Exclamation, "Communications Setup");
      if (FocusPort) FocusPort();
      return;
    }
    // the port closes, so the next operation opens the new one
    comm_.Exit_Comm();
    s_.state.ComPortNumber = static_cast<int16_t>(cboPort.ListIndex() + 1);
    s_.state.ComPortCancelled = 0;
    if (CloseWindow) CloseWindow();
  });
}

void ComPortModel::cmdCancel_Click() {
  if (CloseWindow) CloseWindow();
}

void ComPortModel::cmdAuto_Click() {
  step(s_.journal(), Where{kComPort, "cmdAuto"}, [&] {
    // a scan cancelled from its page ends at its next wait: no second wizard meanwhile
    if (!RunCommWizard || wizardRunning_) return;
    wizardRunning_ = true;
    // only the choice changes: the setting waits for OK
    const int found = RunCommWizard();
    wizardRunning_ = false;
    if (found < kNoPortFound) cboPort.SetListIndex(found - 1);
  });
}

// --- the manual connect window

ManConnectModel::ManConnectModel(modModem& modem) : m_(modem) {
  Label2.SetVisible(false);
  cmdConnect.OnClick = [this] { cmdConnect_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
}

void ManConnectModel::Close() {
  if (CloseWindow) CloseWindow();
}

void ManConnectModel::cmdConnect_Click() {
  Session& s = m_.session();
  WindowOpener& win = s.windows();
  step(s.journal(), Where{kManConnect, "cmdConnect"}, [&] {
    cmdConnect.SetEnabled(false);
    cmdCancel.SetEnabled(false);
    for (Control* l : {&Label1_0, &Label1_1, &Label1_2}) l->SetVisible(false);
    Label2.SetVisible(true);
    win.SetHourglass(true);
    // the dial command without a number: the modem takes over the line the telephone holds
    ModComm& comm = m_.comm();
    comm.msg_str = at::kManualConnect;
    comm.MyPutStr(comm.msg_str);
    const int16_t result = m_.ModemConnect(s.state.ComPortNumber);
    win.SetHourglass(false);
    switch (result) {
      case 0: s.Message("Modem connected succesfully"); break;
      case modem::kNoResult: s.Message("Modem connection failed."); break;
      case modem::kNotResponding: s.Message("Modem not responding."); break;
      case modem::kNoDialTone: s.Message("No dial tone."); break;
      case modem::kBusy: s.Message("Number dialed busy."); break;
      case modem::kWrongSpeed: s.Message("Modem connect error."); break;
      default: s.Message("response = " + std::to_string(result)); break;
    }
    if (result == 0) {
      SetLinkState(s, true);
    } else {
      Label2.SetText("Status : Releasing...");
      win.SetHourglass(true);
      m_.ReleaseModem();
    }
    win.SetHourglass(false);
    for (Control* l : {&Label1_0, &Label1_1, &Label1_2}) l->SetVisible(true);
    Label2.SetVisible(false);
    cmdConnect.SetEnabled(true);
  });
  Close();
}

void ManConnectModel::cmdCancel_Click() {
  Session& s = m_.session();
  WindowOpener& win = s.windows();
  step(s.journal(), Where{kManConnect, "cmdCancel"}, [&] {
    // the modem was initialised before the window opened: hang it up
    win.SetHourglass(true);
    win.EnableMain(false);
    if (m_.ReleaseModem()) {
      win.EnableMain(true);
      win.SetHourglass(false);
    } else {
      win.SetHourglass(false);
      // No leaves the main window disabled, as it always has
      if (s.prompter().Message(kReleaseAgain, Buttons::YesNo, Icon::None, kModemTitle) == Answer::Yes)
        mnuModemRelease_Click(m_);
    }
  });
  Close();
}

// --- the menu commands

void mnuComPort_Click(Session& s) {
  step(s.journal(), Where{"frmMenu", "mnuComport"}, [&] {
    if (SetupRefused(s)) return;
    s.windows().ShowModal("frmComPort");
  });
}

void mnuRemoteModem_Click(Session& s) {
  step(s.journal(), Where{"frmMenu", "mnuRemoteModem"}, [&] {
    if (SetupRefused(s)) return;
    s.windows().Show("frmRemote");
  });
}

void mnuModemConnect_Click(Session& s) {
  step(s.journal(), Where{"frmMenu", "mnuModemConnect"}, [&] {
    if (TransferOn(s)) return;
    for (int i = 1; i <= 4; ++i) s.menu.SetEnabled(ArrayName("mnuFileArray", i), false);
    // a new list window for each command; the call starts from its Dial
    s.windows().ShowPhoneList(PhoneListSetup::PhoneList());
  });
}

void mnuManualConnect_Click(modModem& m) {
  Session& s = m.session();
  WindowOpener& win = s.windows();
  ProgressWindow& progress = m.progress();
  for (bool again = true; again;) {
    again = false;
    step(s.journal(), Where{"frmMenu", "mnuManualConnect"}, [&] {
      if (TransferOn(s)) return;
      win.SetHourglass(true);
      progress.SetModemComm();
      progress.Show();
      progress.ChangeCaption("Manual Modem Connect");
      progress.SetPlainText("Status: Initializing ...");
      const bool ready = m.comm().Init_Comm(static_cast<int16_t>(Handshake::RequestToSend)) &&
                         m.ModemInit(s.state.ComPortNumber) == 0;
      win.SetHourglass(false);
      progress.Unload();
      if (ready) {
        win.ShowModal("frmManConnect");
        return;
      }
      again = s.prompter().Message("Port not initialized properly. Do you want to try again?", Buttons::YesNo,
                                   Icon::Exclamation, kModemTitle) == Answer::Yes;
    });
  }
}

void mnuModemRelease_Click(modModem& m) {
  Session& s = m.session();
  WindowOpener& win = s.windows();
  ProgressWindow& progress = m.progress();
  step(s.journal(), Where{"frmMenu", "mnuModemRelease"}, [&] {
    s.state.ModemReleasePending = 1;
    win.SetHourglass(true);
    win.EnableMain(false);
    progress.SetPlainText("Status: Releasing Modem Connection ...");
    progress.SetModemRelease();
    progress.Show();
    if (!m.ReleaseModem()) {
      win.SetHourglass(false);
      progress.Unload();
      if (s.prompter().Message(kReleaseAgain, Buttons::YesNo, Icon::None, kModemTitle) == Answer::Yes)
        mnuModemRelease_Click(m);
    }
  });
  win.EnableMain(true);
  win.SetHourglass(false);
  progress.Unload();
  s.state.ModemReleasePending = 0;
}

bool CheckDate(Session& s, ModComm& comm, const std::function<bool()>& stop) {
  bool found = false;
  step(s.journal(), Where{kComPort, "CheckDate"}, [&] {
    if (!comm.Init_Comm(0)) return;
    while (!stop || !stop()) {
      comm.msg_str = "Q";
      if (!comm.Send_Msg(comm.msg_str)) return;
      if (!comm.Receive_Msg(false)) return;
      if (ValidDataTime(s, comm)) {
        found = true;
        return;
      }
    }
  });
  return found;
}

}  // namespace r6183
