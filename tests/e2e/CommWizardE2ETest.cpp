// Finding the unit and setting up a remote modem on real pseudo-terminals: a settings file
// maps ports 1 to 16 to silent terminals, a device that does not exist, r6183-sim, and
// r6183-sim --modem-only. r6183ctl find and the desktop program's core both scan them.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <deque>
#include <map>

#include "connectivity/CommResults.h"
#include "connectivity/CommWizard.h"
#include "connectivity/Connection.h"
#include "connectivity/RemoteSetup.h"
#include "connectivity/modModem.h"
#include "protocol/ModComm.h"
#include "protocol/PortMap.h"
#include "protocol/PosixSerialLine.h"
#include "protocol/ProgressWindow.h"
#include "shell/MainMenu.h"
#include "support/SimProcess.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

// The ports of the settings file: `devices` by number, every other port silent.
class SiteOfPorts {
 public:
  explicit SiteOfPorts(const std::map<int, std::string>& devices) {
    test::CopyStagedAppDir(dir.path());
    std::string ini = "[Ports]\r\n";
    for (int n = 1; n <= kPortCount; ++n) {
      const auto it = devices.find(n);
      ini += "Com " + std::to_string(n) + "=" + (it != devices.end() ? it->second : silent.device()) + "\r\n";
    }
    test::WriteFile(dir.path() / "settings.ini", ini);
    session = std::make_unique<Session>(AppDir(dir.path()), prompter, clock);
    Session& s = *session;
    s.product.ProductTitle = "Title";
    s.product.ProductModel = "R-6183";
    Initialize(s);
    // as the desktop program maps a port to its device
    comm = std::make_unique<ModComm>(s, [&s](int16_t port) -> std::unique_ptr<SerialLine> {
      return std::make_unique<PosixSerialLine>(DeviceForPort(s.journal(), s.state.SettingsPath, std::to_string(port)));
    });
    hayes = std::make_unique<modModem>(s, *comm, progress);
  }
  // Port n maps to a device that does not exist.
  void MapMissing(int n) {
    std::string ini = test::ReadFile(dir.path() / "settings.ini");
    const std::string key = "Com " + std::to_string(n) + "=";
    const std::size_t at = ini.find(key) + key.size();
    ini.replace(at, ini.find('\r', at) - at, dir.str("no-such-tty"));
    test::WriteFile(dir.path() / "settings.ini", ini);
  }

  // r6183ctl ARGS on this application directory: exit code and what it printed.
  int Ctl(const std::string& args, std::string& out) const {
    const std::string file = dir.str("ctl.txt");
    const std::string cmd = std::string("'") + R6183CTL_PATH + "' --appdir '" + dir.str() + "' " + args + " >'" +
                            file + "' 2>/dev/null </dev/null";
    const int status = std::system(cmd.c_str());
    out = test::ReadFile(file);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  test::TempDir dir;
  test::SilentPty silent;
  ScriptedPrompter prompter;
  SystemClock clock;
  std::unique_ptr<Session> session;
  std::unique_ptr<ModComm> comm;
  ProgressWindow progress;
  std::unique_ptr<modModem> hayes;
};

// The operator of the wizard: the kind of connection, Next, Next, and Finish after the scan.
struct NextNextFinish : WindowOpener {
  NextNextFinish(SiteOfPorts& site, bool modem) : site(site), modem(modem) {}
  void ShowModal(const std::string& name) override {
    Session& s = *site.session;
    if (name == kCommTypePage) {
      CommTypeModel page(s);
      page.Form_Load();
      page.optType.SetValue(modem ? 1 : 2);
      page.cmdNext.Press();
    } else if (name == kCommWarningPage) {
      CommWarningModel page(s);
      page.Form_Load();
      page.cmdNext.Press();
    } else if (name == kCommResultsPage) {
      CommResultsModel page(s, *site.comm, *site.hayes);
      page.Timer1_Timer();
      result = page.txtComport.Text();
      page.cmdFinish.Press();
    }
  }
  SiteOfPorts& site;
  bool modem;
  std::string result;
};

TEST(CommWizardOverPtys, TheScanFindsTheUnitOrTheModemOnItsPort) {
  struct Case {
    bool modem;
    int port;  // of the simulator
    std::vector<std::string> simArgs;
    const char* result;
  };
  const Case cases[] = {
      {false, 4, {}, "R-6183 System found on Com4:"},
      {true, 3, {"--modem-only"}, "Modem found on Com3:"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.result);
    test::SimProcess sim(R6183_SIM_PATH, c.simArgs);
    ASSERT_FALSE(sim.device().empty());
    // before the simulator: a device that does not exist, silent ports, and for the modem's
    // scan a unit, which is no modem
    std::unique_ptr<test::SimProcess> unit;
    std::map<int, std::string> devices{{c.port, sim.device()}};
    if (c.modem) {
      unit = std::make_unique<test::SimProcess>(R6183_SIM_PATH, std::vector<std::string>{});
      devices[2] = unit->device();
    }
    SiteOfPorts ports(devices);
    ports.MapMissing(1);

    std::string out;
    EXPECT_EQ(ports.Ctl(c.modem ? "find --modem" : "find", out), 0) << out;
    EXPECT_EQ(out, std::to_string(c.port) + "\t" + sim.device() + "\t\n");

    Session& s = *ports.session;
    NextNextFinish op(ports, c.modem);
    s.SetWindowOpener(&op);
    s.state.ComPortNumber = 9;
    ComPortModel window(s, *ports.comm, MapPorts(s.journal(), s.state.SettingsPath, {}));
    window.Form_Load();
    window.cmdAuto.Press();
    EXPECT_EQ(op.result, c.result);
    EXPECT_EQ(window.cboPort.ListIndex(), c.port - 1);
    EXPECT_NE(window.PortText(c.port - 1).find(sim.device()), std::string::npos);
    EXPECT_EQ(s.state.ComPortNumber, 9);
    window.cmdOk.Press();
    EXPECT_EQ(s.state.ComPortNumber, c.port);
    EXPECT_TRUE(ports.prompter.Shown().empty());
  }
}

// The remote setup through all its steps against a modem alone: once cleanly, once with a
// modem that hears nothing at first, so the test fails and is passed by Ignore.
TEST(CommWizardOverPtys, RemoteSetupRunsThroughItsStepsAgainstTheModem) {
  struct Case {
    std::vector<std::string> simArgs;
    std::vector<std::string> asked;
    const char* closing;
  };
  const Case cases[] = {
      {{"--modem-only"}, {}, "Setup complete. Modem may be disconnected"},
      {{"--modem-only", "--deaf-lines", "3"}, {"Test Connection failed."}, "Some of the Setup steps"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.closing);
    test::SimProcess modem(R6183_SIM_PATH, c.simArgs);
    ASSERT_FALSE(modem.device().empty());
    SiteOfPorts site({{2, modem.device()}});
    Session& s = *site.session;
    site.prompter.QueueAnswer(Answer::Ignore);
    RemoteModel r(s, *site.hayes);
    int charts = 0;
    bool closed = false;
    r.ShowChart = [&](const SwitchChart&) { ++charts; };
    r.ShowPortChoice = [&] {
      ComPortModel w(s, *site.comm, {});
      w.Form_Load();
      w.cboPort.SetListIndex(1);
      w.cmdOk.Press();
    };
    r.CloseWindow = [&] { closed = true; };
    r.Form_Load();
    r.cmdYes.Press();  // the modem with switches
    r.cmdOk.Press();   // port 2 and the test
    ASSERT_EQ(r.RemoteStep, 3);
    r.cmdYes.Press();  // factory defaults
    ASSERT_EQ(r.RemoteStep, 4);
    r.cmdYes.Press();  // saved in the modem's memory
    ASSERT_EQ(r.RemoteStep, 5);
    EXPECT_EQ(r.lbl1.Text().rfind(c.closing, 0), 0u) << r.lbl1.Text();
    std::vector<std::string> asked;
    for (const auto& m : site.prompter.Shown()) asked.push_back(m.text);
    EXPECT_EQ(asked, c.asked);
    EXPECT_EQ(charts, 2);
    EXPECT_TRUE(site.comm->PortOpen());
    r.cmdOk.Press();
    EXPECT_TRUE(closed);
    EXPECT_FALSE(site.comm->PortOpen());
    EXPECT_EQ(s.state.RemoteComPort, 2);
  }
}

}  // namespace
}  // namespace r6183
