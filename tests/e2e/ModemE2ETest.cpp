// Transfers through a modem call over a real pseudo-terminal: r6183ctl and the desktop
// program's core against r6183-sim --modem.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include "connectivity/Connection.h"
#include "connectivity/modModem.h"
#include "protocol/ModComm.h"
#include "protocol/PosixSerialLine.h"
#include "protocol/ProgressWindow.h"
#include "protocol/ReceiveTransfer.h"
#include "protocol/SendTransfer.h"
#include "shell/MainMenu.h"
#include "CtlRun.h"
#include "support/SimProcess.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

std::vector<std::string> Modem(std::vector<std::string> more = {}) {
  std::vector<std::string> args{"--modem", "--dial-delay", "300", "--guard-time", "300"};
  args.insert(args.end(), more.begin(), more.end());
  return args;
}

// Texts in this order in `printed`.
void InOrder(const std::string& printed, const std::vector<std::string>& texts) {
  std::size_t at = 0;
  for (const auto& text : texts) {
    at = printed.find(text, at);
    EXPECT_NE(at, std::string::npos) << text << " in order in\n" << printed;
    if (at == std::string::npos) return;
  }
}

// A call dialled by one run of r6183ctl stands for the next ones until it is released.
TEST(ModemOverAPty, ScriptedCallCarriesAReceiveAndASend) {
  test::TempDir dir;
  test::CopyStagedAppDir(dir.path());
  test::SimProcess sim(R6183_SIM_PATH, Modem());
  ASSERT_FALSE(sim.device().empty());
  const std::string port = " --port '" + sim.device() + "'", out = dir.str("site.mdb");
  std::string printed;
  ASSERT_EQ(test::Ctl(dir, "dial 5551234" + port, printed), 0) << printed;
  InOrder(printed, {"Status: Initializing...", "Status: Dialing...", "Modem connected successfully."});
  ASSERT_EQ(test::Ctl(dir, "receive '" + out + "'" + port, printed), 0) << printed;
  ASSERT_EQ(test::Ctl(dir, "send '" + out + "'" + port, printed), 0) << printed;
  ASSERT_EQ(test::Ctl(dir, "release" + port, printed), 0) << printed;
  EXPECT_NE(printed.find("released"), std::string::npos) << printed;
  // no call: the unit is out of reach
  EXPECT_EQ(test::Ctl(dir, "revs" + port, printed), 1) << printed;
  // --dial: a call for one command
  EXPECT_EQ(test::Ctl(dir, "send '" + out + "'" + port + " --dial 5551234", printed), 0) << printed;
  InOrder(printed, {"Modem connected successfully.", "Send data completed successfully."});
  EXPECT_EQ(test::Ctl(dir, "datetime" + port + " --dial 5551234", printed), 0) << printed;
  EXPECT_NE(printed.find("Date="), std::string::npos) << printed;
  EXPECT_EQ(test::Ctl(dir, "verify '" + out + "'" + port + " --dial 5551234", printed), 0) << printed;
  EXPECT_NE(printed.find("the unit holds the programming of " + out), std::string::npos) << printed;
}

// Each way a call fails ends in its message, and nothing is sent.
TEST(ModemOverAPty, FailedCallsEndInTheirMessage) {
  struct Case {
    std::vector<std::string> modem;  // empty: a port with no modem at all
    const char* message;
  };
  const Case cases[] = {
      {Modem({"--busy", "5551234"}), "Number dialed busy."},
      {Modem({"--no-dialtone"}), "No dial tone."},
      {Modem({"--connect-speed", "14400"}), "Modem connect error."},
      {{}, "Modem could not be initialized."},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.message);
    test::TempDir dir;
    test::CopyStagedAppDir(dir.path());
    std::unique_ptr<test::SimProcess> sim;
    test::SilentPty dead;
    if (!c.modem.empty()) sim = std::make_unique<test::SimProcess>(R6183_SIM_PATH, c.modem);
    const std::string device = sim ? sim->device() : dead.device();
    std::string printed;
    EXPECT_EQ(test::Ctl(dir, "receive '" + dir.str("out.mdb") + "' --port '" + device + "' --dial 5551234", printed), 1)
        << printed;
    EXPECT_NE(printed.find(c.message), std::string::npos) << printed;
    EXPECT_EQ(printed.find("Receiving"), std::string::npos) << printed;
    EXPECT_FALSE(std::filesystem::exists(dir.path() / "out.mdb"));
  }
}

// The desktop program's core on the real line: the phone list's dial, Receive and Send in
// the call, Modem Release, and the menu in each state.
TEST(ModemOverAPty, DesktopCoreDialsTransfersAndReleases) {
  struct Case {
    std::vector<std::string> modem;
    std::string message;
    bool inCall;
  };
  const Case cases[] = {
      {Modem(), "Modem connected successfully.", true},
      {Modem({"--busy", "5551234"}), "Number dialed busy.", false},
      {Modem({"--connect-speed", "14400"}), "Modem connect error.", false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.message);
    test::TempDir dir;
    test::CopyStagedAppDir(dir.path());
    test::SimProcess sim(R6183_SIM_PATH, c.modem);
    ScriptedPrompter prompter;
    SystemClock clock;
    Session s(AppDir(dir.path()), prompter, clock);
    s.product.ProductTitle = "Title";
    Initialize(s);
    s.menu.SetEnabled("mnuModemRelease", false);
    ModComm comm(s, [&](int16_t) { return std::make_unique<PosixSerialLine>(sim.device()); });
    ProgressWindow progress;
    modModem modem(s, comm, progress);
    EXPECT_EQ(DialNumber(modem, "5551234"), c.inCall);
    ASSERT_FALSE(prompter.Shown().empty());
    EXPECT_EQ(prompter.Shown().back().text, c.message);
    EXPECT_EQ(s.menu.Enabled("mnuModemRelease"), c.inCall);
    EXPECT_EQ(s.menu.Enabled("mnuModemConnect"), !c.inCall);
    if (!c.inCall) continue;
    mnuRx_Click(s, comm, progress);
    EXPECT_EQ(prompter.Shown().back().text, "Receive Data completed successfully.");
    mnuSend_Click(s, comm, progress);
    EXPECT_EQ(prompter.Shown().back().text, "Send data completed successfully.");
    mnuModemRelease_Click(modem);
    EXPECT_EQ(prompter.Shown().back().text, "Send data completed successfully.") << "released without a word";
    EXPECT_FALSE(s.menu.Enabled("mnuModemRelease"));
    EXPECT_TRUE(s.menu.Enabled("mnuManualConnect"));
    EXPECT_EQ(s.state.ModemReleasePending, 0);
    comm.Exit_Comm();
  }
}

}  // namespace
}  // namespace r6183
