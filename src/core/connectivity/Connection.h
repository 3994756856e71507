#pragma once
// The port of the link and the modem call as the operator handles them: the port window
// (frmComPort), the Modem menu's commands, the manual connect window (frmManConnect), and
// the probe by which a port is known to have the system on it.
#include <functional>
#include <string>
#include <vector>

#include "editors/Controls.h"
#include "protocol/PortMap.h"

namespace r6183 {

class ModComm;
class Session;
class modModem;

inline constexpr const char* kRemoteModemTitle = "Remote Modem Connection";
inline constexpr const char* kReleaseFirst = "You have to Release Modem before proceeding.";
inline constexpr const char* kReleaseAgain = "Modem Release Unsuccessful. Do you want to try again?";

// The port window: ports 1 to 16, each with the device it maps to.
class ComPortModel {
 public:
  ComPortModel(Session& session, ModComm& comm, std::vector<PortInfo> ports);

  static constexpr const char* kCaption = "Communications Setup:";
  Control Label1{"Label1", ControlKind::Label, "COM Port :"};
  ListControl cboPort{"cboPort"};  // "1" to "16"
  Control cmdAuto{"cmdAuto", ControlKind::Button, "Auto Find"};
  Control cmdOk{"cmdOk", ControlKind::Button, "OK"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};

  // How a port is shown: its number, its device ("-" for none) and the device's description.
  std::string PortText(int index) const;
  const std::vector<PortInfo>& Ports() const { return ports_; }

  void Form_Load();
  void cmdOk_Click();
  void cmdCancel_Click();
  void cmdAuto_Click();

  // Auto Find: the wizard that scans the ports (RunCommWizard through the session's
  // windows), giving the port it found or 65535. Auto Find is disabled when this is unset.
  std::function<int()> RunCommWizard;
  // Set by whoever shows the window.
  std::function<void()> CloseWindow;
  std::function<void()> FocusPort;

 private:
  Session& s_;
  ModComm& comm_;
  std::vector<PortInfo> ports_;
  bool wizardRunning_ = false;
};

// The manual connect window: the operator dials on a telephone on the modem's line, then
// the modem takes the line over.
class ManConnectModel {
 public:
  explicit ManConnectModel(modModem& modem);

  static constexpr const char* kCaption = "Manual Connect Call";
  Control Label1_0{"Label1_0", ControlKind::Label, "Manual Connect Call:"};
  Control Label1_1{"Label1_1", ControlKind::Label, "1 - Dial Number from the phone connected to modem; "};
  Control Label1_2{"Label1_2", ControlKind::Label,
                   "2 - Press \"Connect\" and hang up the phone as soon as            remote modem answers."};
  Control Label2{"Label2", ControlKind::Label, "Status: Connecting..."};
  Control cmdConnect{"cmdConnect", ControlKind::Button, "Connect"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};

  void cmdConnect_Click();
  void cmdCancel_Click();

  std::function<void()> CloseWindow;

 private:
  void Close();
  modModem& m_;
};

// The Communications Setup commands: refused with a message during a call.
void mnuComPort_Click(Session& s);
void mnuRemoteModem_Click(Session& s);
// The Modem commands.
void mnuModemConnect_Click(Session& s);
void mnuManualConnect_Click(modModem& m);
void mnuModemRelease_Click(modModem& m);

// True when a control unit answers on the port with a valid date and time. The probe
// ends only by a failed send or receive, or by a valid answer; or, when `stop` is given,
// once it says so (asked before each question: the port scan's page has gone).
bool CheckDate(Session& s, ModComm& comm, const std::function<bool()>& stop = {});

}  // namespace r6183
