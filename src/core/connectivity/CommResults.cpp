#include "connectivity/CommResults.h"

#include "connectivity/Connection.h"
#include "connectivity/modModem.h"
#include "protocol/ModComm.h"
#include "protocol/PortMap.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmCommResults";
constexpr int kBarStep = 6;  // per port: 96 at port 16, 100 only at the end
}  // namespace

CommResultsModel::CommResultsModel(Session& session, ModComm& comm, modModem& modem)
    : s_(session), comm_(comm), modem_(modem) {
  ProgressBar1.SetRange(0, 100);
  cmdNext.SetEnabled(false);
  cmdFinish.OnClick = [this] { cmdFinish_Click(); };
  cmdPrev.OnClick = [this] { cmdPrev_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
}

void CommResultsModel::Form_Load() {}

void CommResultsModel::Timer1_Timer() {
  step(s_.journal(), Where{kModule, "Timer1"}, [&] {
    Timer1Enabled = false;
    cmdPrev.SetEnabled(false);
    if (s_.state.WizardByModem == 1) AutoFindModem();
    else AutoFindComm();
    cmdPrev.SetEnabled(true);
    cmdFinish.SetEnabled(true);
  });
}

bool CommResultsModel::HasUnit() {
  return CheckDate(s_, comm_, [this] { return unloaded_; });
}

bool CommResultsModel::HasModem() {
  return comm_.Init_Comm(static_cast<int16_t>(Handshake::RequestToSend)) &&
         modem_.CheckForModem(s_.state.ComPortNumber) == 0;
}

void CommResultsModel::AutoFindComm() {
  Scan("AutoFinDComm", &CommResultsModel::HasUnit, s_.product.ProductModel + " System found on Com",
       "Can't communcate with system on any port");
}

void CommResultsModel::AutoFindModem() {
  Scan("AutoFindMdem", &CommResultsModel::HasModem, "Modem found on Com", "Modem not found.");
}

void CommResultsModel::Scan(const char* routine, bool (CommResultsModel::*probe)(), const std::string& found,
                            const std::string& notFound) {
  ProcessState& st = s_.state;
  Journal& j = s_.journal();
  const Where where{kModule, routine};
  WindowOpener& win = s_.windows();
  const int16_t saved = st.ComPortNumber;
  win.SetHourglass(true);
  // the probe prints each frame it receives to the log
  step(j, where, [&] {
    comm_.logFile.Close();
    comm_.logFile.Rewrite(s_, "log_file.txt");
  });
  Label1.SetText("0 %");
  ProgressBar1.SetValue(0);
  step(j, where, [&] {
    if (comm_.PortOpen()) comm_.Exit_Comm();
  });
  int16_t port = 0;
  step(j, where, [&] {
    for (int16_t n = 1; n <= kPortCount && !unloaded_; ++n) {
      st.ComPortNumber = n;
      ProgressBar1.SetValue(kBarStep * n);
      Label1.SetText(std::to_string(kBarStep * n) + " %");
      const bool here = (this->*probe)();
      // a port is passed over when it does not open; one the operator could have (busy, or
      // refused for want of a group) is worth a line in the journal
      if (comm_.OpenFailureNumber() == err::PermissionDenied) j.Log(err::PermissionDenied, comm_.OpenFailure(), where);
      if (OnPortProbed) OnPortProbed(n);
      if (here) {
        port = n;
        break;
      }
      if (comm_.PortOpen()) comm_.Exit_Comm();
    }
  });
  step(j, where, [&] {
    if (comm_.PortOpen()) comm_.Exit_Comm();
  });
  // a page that has gone (Cancel) keeps the result its Cancel gave
  if (!unloaded_) {
    Label1.SetText("100 %");
    ProgressBar1.SetValue(100);
    if (port > 0) {
      st.WizardFoundPort = port;
      txtComport.SetText(found + std::to_string(port) + ":");
    } else {
      st.WizardFoundPort = kNoPortFound;
      txtComport.SetText(notFound);
    }
  }
  comm_.logFile.Close();
  win.SetHourglass(false);
  st.ComPortNumber = saved;
}

void CommResultsModel::Unload() {
  s_.windows().SetHourglass(false);
  unloaded_ = true;
  if (CloseWindow) CloseWindow();
}

void CommResultsModel::cmdFinish_Click() { Unload(); }

void CommResultsModel::cmdPrev_Click() {
  s_.state.WizardFoundPort = kNoPortFound;
  s_.state.WizardGoBack = 1;
  Unload();
}

void CommResultsModel::cmdCancel_Click() {
  s_.state.WizardDone = 1;
  s_.state.WizardFoundPort = kNoPortFound;
  Unload();
}

}  // namespace r6183
