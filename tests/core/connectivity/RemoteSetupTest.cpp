// The remote modem's setup against a scripted modem: the steps as the operator answers
// them, the test and the factory reset that fail, and the main menu locked meanwhile.
#include <gtest/gtest.h>

#include <algorithm>

#include "ModemFixture.h"
#include "connectivity/Connection.h"
#include "connectivity/RemoteSetup.h"

namespace r6183::test {
namespace {

const std::string kComplete =
    "Setup complete. Modem may be disconnected from this computer's serial port and installed with the R-6183.";
const std::string kIncomplete =
    "Some of the Setup steps were not completed successfully. Disconnect modem from this computer's serial port and "
    "install it with the 05. If communication fails, do Setup Remote Modem again.";

class RemoteSetup : public ::testing::Test, public ModemLink {
 protected:
  RemoteSetup() { t->product.ProductModel = "R-6183"; }

  // The window loaded with its hooks: the charts it shows, the port chosen in the port
  // window (0: its Cancel), its closing.
  std::unique_ptr<RemoteModel> Open(int port = 3) {
    auto r = std::make_unique<RemoteModel>(*t, *hayes);
    r->ShowChart = [this](const SwitchChart& chart) {
      USRobotModel shown(*t);
      shown.Initialize(chart);
      charts.push_back(chart == kSwitchesBefore ? "before" : "after");
      positions.push_back(shown.txt_sw[2].Text());
    };
    r->ShowPortChoice = [this, port] {
      ComPortModel w(*t, *comm, {});
      w.Form_Load();
      if (port == 0) return w.cmdCancel.Press();
      w.cboPort.SetListIndex(port - 1);
      w.cmdOk.Press();
    };
    r->CloseWindow = [this] { closed = true; };
    r->Form_Load();
    return r;
  }
  int ListsOpened() const { return static_cast<int>(std::count(screen.calls.begin(), screen.calls.end(), "list Remote Commands")); }

  std::vector<std::string> charts, positions;
  bool closed = false;
};

// Yes and No at steps 1, 3 and 4: the charts, the commands the modem hears, and the list of
// modem commands, which opens at step 3 whatever the answer.
TEST_F(RemoteSetup, TheStepsAsTheOperatorAnswersThem) {
  struct Case {
    bool dip, reset, save;
    std::vector<std::string> charts, heard;
  };
  const Case cases[] = {
      {true, true, true, {"before", "after"}, {"AT", "AT&F", "AT&W"}},
      {false, false, false, {}, {"AT"}},
      {true, false, true, {"before", "after"}, {"AT", "AT&W"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.dip << c.reset << c.save);
    charts.clear();
    positions.clear();
    screen.calls.clear();
    modem.commands.clear();
    closed = false;
    t->state.ComPortNumber = 1;
    auto r = Open(3);
    EXPECT_EQ(r->lbl2.Text(), "Are you using a US Robotics 'Sportster' modem with DIP switches?");
    (c.dip ? r->cmdYes : r->cmdNo).Press();
    EXPECT_EQ(r->RemoteStep, 2);
    EXPECT_TRUE(r->cmdOk.Visible());
    EXPECT_FALSE(r->cmdYes.Visible());
    r->cmdOk.Press();
    EXPECT_EQ(r->RemoteStep, 3);
    EXPECT_EQ(r->lbl1.Text(), "Restore the modem to factory defaults (recommended)?");
    EXPECT_EQ(r->txtCommand.Text(), "&F");
    EXPECT_EQ(r->Width, 6500);
    EXPECT_EQ(t->state.RemoteComPort, 3);
    EXPECT_EQ(t->state.ComPortNumber, 1) << "the choice is the remote modem's port, not the link's";
    EXPECT_TRUE(comm->PortOpen()) << "the test opens the port for the steps after it";
    (c.reset ? r->cmdYes : r->cmdNo).Press();
    EXPECT_EQ(ListsOpened(), 1);
    EXPECT_EQ(r->txtCommand.Text(), "&W");
    (c.save ? r->cmdYes : r->cmdNo).Press();
    EXPECT_EQ(r->RemoteStep, 5);
    EXPECT_EQ(r->lbl1.Text(), kComplete);
    EXPECT_EQ(r->cmdOk.Text(), "Finish");
    EXPECT_EQ(r->Width, 7188);
    EXPECT_EQ(charts, c.charts);
    if (c.dip) EXPECT_EQ(positions, (std::vector<std::string>{"          DOWN", "          UP"}));
    EXPECT_EQ(Heard(), c.heard);
    r->cmdOk.Press();
    EXPECT_TRUE(closed);
    EXPECT_FALSE(comm->PortOpen()) << "the port closes with the window";
  }
}

// Abort, Retry and Ignore after a failed test or factory reset, and Cancel in the port window.
TEST_F(RemoteSetup, FailedStepsAnswerAbortRetryIgnore) {
  const std::string testFailed = "Test Connection failed.", resetFailed = "Problems Setting Modem Default.";
  struct Case {
    const char* name;
    int port;          // chosen in the port window; 0 cancels it
    bool deadTest;     // the modem hears nothing until the first failure's question
    bool deadReset;    // nor until the reset's failure
    std::vector<Answer> answers;
    std::vector<std::string> asked;
    std::string closing;  // empty: the window ended before
  };
  const Case cases[] = {
      {"test ignored", 2, true, false, {Answer::Ignore}, {testFailed}, kIncomplete},
      {"test retried", 2, true, false, {Answer::Retry}, {testFailed}, kComplete},
      {"test aborted", 2, true, false, {Answer::Abort}, {testFailed}, ""},
      {"port window cancelled", 0, false, false, {}, {}, ""},
      {"reset ignored", 2, false, true, {Answer::Ignore}, {resetFailed}, kIncomplete},
      {"reset retried", 2, false, true, {Answer::Retry}, {resetFailed}, kComplete},
      {"reset aborted", 2, false, true, {Answer::Abort}, {resetFailed}, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    t.prompter.Clear();
    for (Answer a : c.answers) t.prompter.QueueAnswer(a);
    t.prompter.OnMessage = [&](const ShownMessage& m) {
      EXPECT_EQ(m.title, "Remote Modem Connection");
      EXPECT_EQ(m.buttons, Buttons::AbortRetryIgnore);
      modem.dead = false;
    };
    closed = false;
    t->state.ComPortNumber = 1;
    t->state.RemoteComPort = 7;
    modem.dead = c.deadTest;
    auto r = Open(c.port);
    r->cmdNo.Press();
    r->cmdOk.Press();
    if (!closed) {
      modem.dead = c.deadReset;
      r->cmdYes.Press();
      if (r->RemoteStep == 3 && !closed) {
        EXPECT_TRUE(r->cmdYes.Enabled()) << "Retry asks again";
        r->cmdYes.Press();
      }
    }
    if (!closed) {
      r->cmdNo.Press();
      EXPECT_EQ(r->lbl1.Text(), c.closing);
      r->cmdOk.Press();
    }
    EXPECT_TRUE(closed);
    EXPECT_EQ(Texts(), c.asked);
    EXPECT_EQ(t->state.ComPortNumber, 1);
    EXPECT_EQ(t->state.RemoteComPort, c.port ? c.port : 7);
    EXPECT_FALSE(comm->PortOpen());
    EXPECT_TRUE(t->menu.Enabled("mnuFile"));
  }
}

// The main menu is locked while the window is up, a document's windows too when one is open,
// and freed as it was at the end.
TEST_F(RemoteSetup, TheMenuIsLockedWhileTheWindowIsUp) {
  const std::vector<std::string> always{"mnuFile", "mnuDate", "mnuWindow", "mnuHelp"},
      document{"mnuConfig", "mnuSchedules", "mnuStation", "mnuPageGroup", "mnuSysOpt", "mnuBGM"};
  for (const bool open : {false, true}) {
    SCOPED_TRACE(open ? "a document open" : "no document");
    for (const auto& item : always) t->menu.SetEnabled(item, true);
    for (const auto& item : document) t->menu.SetEnabled(item, open);
    t->menu.SetEnabled("mnuFileClose", open);
    auto r = Open();
    for (const auto& item : always) EXPECT_FALSE(t->menu.Enabled(item)) << item;
    for (const auto& item : document) EXPECT_FALSE(t->menu.Enabled(item)) << item;
    EXPECT_TRUE(t->menu.Enabled("mnuDebug"));
    r->cmdCancel.Press();
    for (const auto& item : always) EXPECT_TRUE(t->menu.Enabled(item)) << item;
    for (const auto& item : document) EXPECT_EQ(t->menu.Enabled(item), open) << item;
  }
}

}  // namespace
}  // namespace r6183::test
