#include "connectivity/RemoteSetup.h"

#include "connectivity/Connection.h"
#include "connectivity/PhoneList.h"
#include "connectivity/modModem.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmRemote";
constexpr int32_t kCommandWidth = 6500, kClosingWidth = 7188;  // twips

Where In(std::string_view routine) { return Where{kModule, routine}; }

// The main menu's items a remote setup locks: those of a document, and the rest.
constexpr const char* kDocumentItems[] = {"mnuConfig", "mnuSchedules", "mnuStation", "mnuPageGroup", "mnuSysOpt",
                                          "mnuBGM"};
constexpr const char* kAlwaysItems[] = {"mnuFile", "mnuDate", "mnuWindow", "mnuHelp"};
}  // namespace

// --- the switch chart

USRobotModel::USRobotModel(Session& session) : s_(session) {
  for (int i = 0; i < 8; ++i) {
    lbl_sw.emplace_back(ArrayName("lbl_sw", i), ControlKind::Label, "SW" + std::to_string(i + 1));
    txt_sw.emplace_back(ArrayName("txt_sw", i), ControlKind::TextBox);
  }
  cmd_Ok.OnClick = [this] {
    if (CloseWindow) CloseWindow();
  };
}

void USRobotModel::Initialize(const SwitchChart& chart) {
  step(s_.journal(), Where{"frmUSRObot", "Initialize"}, [&] {
    for (std::size_t i = 0; i < chart.size(); ++i) txt_sw[i].SetText(std::string(10, ' ') + chart[i]);
  });
}

// --- the set-up window

RemoteModel::RemoteModel(Session& session, modModem& modem) : s_(session), modem_(modem) {
  // as the window is designed: the question of step 1 with Yes, No and Cancel
  for (Control* c : {&lbl1, &lbl3, &lblCommand, &txtCommand, &cmdOk}) c->SetVisible(false);
  cmdYes.OnClick = [this] { cmdYes_Click(); };
  cmdNo.OnClick = [this] { cmdNo_Click(); };
  cmdOk.OnClick = [this] { cmdOk_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
}

void RemoteModel::Form_Load() {
  DisableAllMenuOptions();
  RemoteStep = 1;
  lbl2.SetText("Are you using a US Robotics 'Sportster' modem with DIP switches?");
}

void RemoteModel::Form_Unload() {
  if (unloaded_) return;
  unloaded_ = true;
  modem_.ExitComm_Remote();
  EnableMenuOptions();
}

void RemoteModel::Unload() {
  Form_Unload();
  if (CloseWindow) CloseWindow();
}

void RemoteModel::DisableAllMenuOptions() {
  step(s_.journal(), In("DisableAllMenuOpt"), [&] {
    MenuModel& m = s_.menu;
    documentOpen_ = m.Enabled("mnuFileClose");
    if (documentOpen_)
      for (const char* item : kDocumentItems) m.SetEnabled(item, false);
    for (const char* item : kAlwaysItems) m.SetEnabled(item, false);
  });
}

void RemoteModel::EnableMenuOptions() {
  step(s_.journal(), In("EnableMenuOPt"), [&] {
    MenuModel& m = s_.menu;
    if (documentOpen_)
      for (const char* item : kDocumentItems) m.SetEnabled(item, true);
    for (const char* item : kAlwaysItems) m.SetEnabled(item, true);
  });
}

void RemoteModel::SetFormEnvironment() {
  step(s_.journal(), In("SetFormEnvir"), [&] {
    auto show = [](std::initializer_list<Control*> shown, std::initializer_list<Control*> hidden) {
      for (Control* c : shown) c->SetVisible(true);
      for (Control* c : hidden) c->SetVisible(false);
    };
    switch (RemoteStep) {
      case 1:
        lbl1.SetText(
            "Connect the remote modem to this Computer's serial port using a 'straight through' serial cable and "
            "turn modem power ON.");
        show({&lbl1, &lbl3, &cmdOk}, {&lbl2, &cmdCancel, &lblCommand, &txtCommand, &cmdYes, &cmdNo});
        Width = kDesignWidth;
        break;
      case 2:
      case 3:
        if (RemoteStep == 2) {
          lbl1.SetText("Restore the modem to factory defaults (recommended)?");
          Width = kCommandWidth;
        } else {
          lbl1.SetText("Save these settings in modem's memory (recommended)?");
          txtCommand.SetText("&W");
        }
        show({&lblCommand, &txtCommand, &cmdYes, &cmdNo}, {&lbl3, &cmdOk, &cmdCancel});
        cmdYes.SetEnabled(true);
        cmdNo.SetEnabled(true);
        break;
      case 4:
        if (RemoteStepFailed)
          lbl1.SetText(
              "Some of the Setup steps were not completed successfully. Disconnect modem from this computer's serial "
              "port and install it with the 05. If communication fails, do Setup Remote Modem again.");
        else
          lbl1.SetText("Setup complete. Modem may be disconnected from this computer's serial port and installed "
                       "with the " +
                       s_.product.ProductModel + ".");
        cmdOk.SetText("Finish");
        show({&cmdOk}, {&cmdCancel, &lblCommand, &txtCommand, &cmdYes, &cmdNo});
        Width = kClosingWidth;
        break;
      default:
        return;
    }
    if (Resized) Resized();
  });
}

void RemoteModel::OpenSetupScreen() {
  step(s_.journal(), In("OpenSetupScreen"), [&] { s_.windows().ShowPhoneList(PhoneListSetup::ModemCommands()); });
}

void RemoteModel::Chart(const SwitchChart& chart) {
  if (HideWindow) HideWindow();
  if (ShowChart) ShowChart(chart);
  if (ShowWindow) ShowWindow();
}

void RemoteModel::cmdYes_Click() {
  step(s_.journal(), In("cmdYes"), [&] {
    cmdYes.SetEnabled(false);
    cmdNo.SetEnabled(false);
    switch (RemoteStep) {
      case 1:
        RemoteDipModem = true;
        Chart(kSwitchesBefore);
        SetFormEnvironment();
        RemoteStep = 2;
        break;
      case 3: Step3Yes(); break;
      case 4: Step4(true); break;
      default: s_.Message("Yes button - wrong step"); break;
    }
  });
}

void RemoteModel::cmdNo_Click() {
  step(s_.journal(), In("cmdNo"), [&] {
    cmdYes.SetEnabled(false);
    cmdNo.SetEnabled(false);
    switch (RemoteStep) {
      case 1:
        RemoteDipModem = false;
        SetFormEnvironment();
        RemoteStep = 2;
        break;
      case 3:
        // a modem that needs no factory reset still gets the command list
        OpenSetupScreen();
        SetFormEnvironment();
        RemoteStep = 4;
        break;
      case 4: Step4(false); break;
      default: s_.Message("No button - wrong step"); break;
    }
  });
}

void RemoteModel::cmdOk_Click() {
  step(s_.journal(), In("cmdOK"), [&] {
    if (RemoteStep == 2) PortChoiceAndTest();
    else if (RemoteStep == 5) Unload();
  });
}

void RemoteModel::cmdCancel_Click() { Unload(); }

void RemoteModel::PortChoiceAndTest() {
  ProcessState& st = s_.state;
  const int16_t noted = st.ComPortNumber;
  if (HideWindow) HideWindow();
  if (ShowPortChoice) ShowPortChoice();
  if (st.ComPortCancelled) {
    if (ShowWindow) ShowWindow();
    st.ComPortNumber = noted;
    Unload();
    return;
  }
  // the choice made here is the remote modem's port, not the link's
  st.RemoteComPort = st.ComPortNumber;
  st.ComPortNumber = noted;
  while (!modem_.TestConnections()) {
    const Answer a =
        s_.prompter().Message("Test Connection failed.", Buttons::AbortRetryIgnore, Icon::None, kRemoteModemTitle);
    if (a == Answer::Abort) {
      if (ShowWindow) ShowWindow();
      Unload();
      return;
    }
    if (a == Answer::Ignore) {
      RemoteStepFailed = true;
      break;
    }
  }
  SetFormEnvironment();
  RemoteStep = 3;
  if (ShowWindow) ShowWindow();
}

void RemoteModel::Step3Yes() {
  if (modem_.SetModemDefaults(txtCommand.Text())) {
    OpenSetupScreen();
    SetFormEnvironment();
    RemoteStep = 4;
    return;
  }
  switch (s_.prompter().Message("Problems Setting Modem Default.", Buttons::AbortRetryIgnore, Icon::None,
                                kRemoteModemTitle)) {
    case Answer::Abort: Unload(); break;
    case Answer::Ignore:
      RemoteStepFailed = true;
      OpenSetupScreen();
      SetFormEnvironment();
      RemoteStep = 4;
      break;
    default:
      RemoteStep = 3;
      cmdYes.SetEnabled(true);
      cmdNo.SetEnabled(true);
      break;
  }
}

void RemoteModel::Step4(bool save) {
  if (save) modem_.SetModemDefaults(txtCommand.Text());  // its result is not looked at
  if (RemoteDipModem) Chart(kSwitchesAfter);
  SetFormEnvironment();
  RemoteStep = 5;
}

}  // namespace r6183
