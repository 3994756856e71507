// The modem layer against a scripted modem: the reading of a dial's result, the
// connection's messages and menu states, attention, release and the time-outs, all on
// the session's clock.
#include <gtest/gtest.h>

#include "connectivity/Connection.h"
#include "ModemFixture.h"
#include "support/FakeForm.h"

namespace r6183::test {
namespace {

class Modem : public ::testing::Test, public ModemLink {};

// A dial's reply lines and what the connection makes of them.
TEST_F(Modem, TheResultOfADialDecidesTheMessageAndTheLinkState) {
  struct Case {
    std::vector<std::string> reply;
    int16_t code;  // of ModemConnect
    int32_t speed;
    const char* message;
    bool inCall, hungUp, speedJournalled;
  };
  const Case cases[] = {
      {{"CONNECT 9600"}, 0, 9600, "Modem connected successfully.", true, false, false},
      {{"CONNECT 9600/ARQ"}, 0, 9600, "Modem connected successfully.", true, false, false},
      {{"CONNECT 14400"}, -10, 14400, "Modem connect error.", false, false, true},
      {{"CONNECT"}, -10, 0, "Modem connect error.", false, false, true},
      // a report of a lost carrier reads as a carrier: success, as it always has
      {{"NO CARRIER"}, 0, 0, "Modem connected successfully.", true, false, false},
      {{"BUSY CARRIER"}, 0, 0, "Modem connected successfully.", true, false, false},
      {{"RINGING", "BUSY"}, -4, 0, "Number dialed busy.", false, false, false},
      {{"NO DIAL TONE"}, -3, 0, "No dial tone.", false, false, false},
      // thirty seconds of nothing: the only result that hangs up
      {{}, -1, 0, "Modem connection failed.", false, true, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.message + (c.reply.empty() ? std::string() : " after " + c.reply.back()));
    modem.dialReply = c.reply;
    modem.commands.clear();
    t.prompter.Clear();
    hayes->ConnectSpeed = 0;
    SetLinkState(*t, false);
    ASSERT_TRUE(comm->Init_Comm(2));
    const uint32_t before = Tick();
    EXPECT_EQ(hayes->Dial(1, "5551234"), 0);
    EXPECT_EQ(hayes->ModemConnect(1), c.code);
    EXPECT_EQ(hayes->ConnectSpeed, c.speed);
    if (c.code == -1) {
      EXPECT_GE(Tick() - before, 30000u);
    }

    modem.commands.clear();
    const std::size_t journalled = JournalRows(*t).size();
    EXPECT_EQ(hayes->ConnectModem("5551234"), c.inCall);
    EXPECT_EQ(Texts(), std::vector<std::string>{c.message});
    EXPECT_EQ(InCall(*t), c.inCall);
    EXPECT_EQ(t->menu.Enabled("mnuModemConnect"), !c.inCall);
    EXPECT_EQ(t->menu.Enabled("mnuManualConnect"), !c.inCall);
    EXPECT_TRUE(screen.mainEnabled);
    EXPECT_EQ(Heard().back() == "ATH", c.hungUp);
    EXPECT_EQ(modem.commands.at(0), "AT&F");
    EXPECT_NE(std::find(modem.commands.begin(), modem.commands.end(), "ATDT5551234"), modem.commands.end());
    bool speed = false;
    const auto rows = JournalRows(*t);
    for (std::size_t i = journalled; i < rows.size(); ++i)
      speed |= rows[i].description == "Modem Connect error.  Baud Rate <> 9600." && rows[i].routine == "GetConnectStr";
    EXPECT_EQ(speed, c.speedJournalled);
    comm->Exit_Comm();
  }
}

TEST_F(Modem, ProgressWindowShowsEachStepOfTheConnection) {
  ASSERT_TRUE(comm->Init_Comm(2));
  screen.calls.clear();
  EXPECT_TRUE(hayes->ConnectModem("5551234"));
  EXPECT_EQ(screen.calls, (std::vector<std::string>{"show", "plain face", "Status: Initializing...",
                                                     "Status: Dialing...", "unload"}));
}

// Without a modem nothing answers: attention takes its two passes of DTR, "AT", "+++" and
// "ATV1Q0", 22 seconds, and the connection stops at the first step.
TEST_F(Modem, NoModemAnswers) {
  modem.dead = true;
  ASSERT_TRUE(comm->Init_Comm(2));
  tool_->ClearWritten();
  uint32_t before = Tick();
  EXPECT_EQ(hayes->ModemAttention(1), -1);
  EXPECT_GE(Tick() - before, 22000u);
  EXPECT_LT(Tick() - before, 23000u);
  EXPECT_EQ(tool_->Written(), "AT\r+++ATV1Q0\rAT\r+++ATV1Q0\r");
  EXPECT_EQ(hayes->ModemInit(1), -1);
  EXPECT_EQ(hayes->CheckForModem(1), -1);
  EXPECT_FALSE(hayes->SendModemCommand("&W", 1));

  struct Case {
    std::function<bool()> run;
    std::vector<std::string> messages;
  };
  const Case cases[] = {
      {[&] { return hayes->ConnectModem("5551234"); }, {"Modem could not be initialized."}},
      {[&] { return hayes->ReleaseModem(); }, {"Modem does not respond."}},
      // a closed port that will not open is a modem that does not answer
      {[&] {
         comm->Exit_Comm();
         tool_->FailOpen(true);
         return hayes->ReleaseModem();
       },
       {"Modem does not respond."}},
  };
  for (const Case& c : cases) {
    t.prompter.Clear();
    SetLinkState(*t, true);
    EXPECT_FALSE(c.run());
    EXPECT_EQ(Texts(), c.messages);
    EXPECT_TRUE(InCall(*t)) << "the menus stay as they were";
    EXPECT_TRUE(screen.mainEnabled);
  }
}

TEST_F(Modem, ReleaseHangsUpAndOpensAPortLeftClosed) {
  for (const bool closed : {false, true}) {
    SetLinkState(*t, true);
    comm->Init_Comm(2);
    if (closed) comm->Exit_Comm();  // as a cancelled shutdown leaves it
    modem.commands.clear();
    EXPECT_TRUE(hayes->ReleaseModem());
    EXPECT_EQ(Heard(), (std::vector<std::string>{"AT", "ATH"}));
    EXPECT_FALSE(InCall(*t));
    EXPECT_TRUE(t->menu.Enabled("mnuModemConnect"));
    EXPECT_TRUE(t.prompter.Shown().empty());
  }
}

// The setup commands read up to five lines for an "OK" in the first 50 characters.
TEST_F(Modem, SetupCommandsLookForOKInFiveLines) {
  ASSERT_TRUE(comm->Init_Comm(2));
  EXPECT_TRUE(hayes->SendModemCommand("&FE0Q1&D0S0=1", 1));
  EXPECT_EQ(comm->msg_str, "AT&FE0Q1&D0S0=1\r");
  EXPECT_TRUE(hayes->SetModemDefaults("&W"));
  EXPECT_EQ(Heard(), (std::vector<std::string>{"AT&FE0Q1&D0S0=1", "AT&W"}));
  modem.dead = true;
  EXPECT_FALSE(hayes->SendModemCommand("&W", 1));
}

TEST_F(Modem, TraceShowsTheConnectionWhenAsked) {
  for (const int16_t trace : {0, 1}) {
    t->state.TraceAT = trace;
    ASSERT_TRUE(comm->Init_Comm(2));
    const std::size_t before = JournalRows(*t).size();
    EXPECT_EQ(hayes->GetConnectStr(1), -1);  // nothing asked: nothing comes
    modem.line->Write("\r\nCONNECT 9600\r\n");
    EXPECT_EQ(hayes->GetConnectStr(1), 2);
    std::vector<std::string> traced;
    const auto rows = JournalRows(*t);
    for (std::size_t i = before; i < rows.size(); ++i)
      if (rows[i].module == "Not An Error") traced.push_back(rows[i].description);
    if (trace)
      EXPECT_EQ(traced, (std::vector<std::string>{"Connect Speed = 9600", "Connect Settings = 9600,n,8,1",
                                                  "Connect Comport = 1", "Connect Handshaking = 2"}));
    else
      EXPECT_TRUE(traced.empty());
    comm->Exit_Comm();
  }
}

// During a call the port can't change; with the dial window up the commands do nothing.
TEST_F(Modem, CommunicationsSetupWaitsForTheRelease) {
  struct Case {
    bool inCall;
    const char* dialWindow;  // a window of this caption loaded, or none
    std::vector<std::string> messages, opened;
  };
  const std::string refusal = kReleaseFirst;
  const Case cases[] = {
      {false, nullptr, {}, {"modal frmComPort", "open frmRemote"}},
      {true, nullptr, {refusal, refusal}, {}},
      {false, "Dialing Modem", {}, {}},
  };
  std::vector<std::string> events;
  FakeForm main(t->forms, events, "frmMenu", "Title");
  for (const Case& c : cases) {
    std::unique_ptr<FakeForm> list;
    if (c.dialWindow) list = std::make_unique<FakeForm>(t->forms, events, "frmPhoneList", c.dialWindow);
    SetLinkState(*t, c.inCall);
    t.prompter.Clear();
    screen.calls.clear();
    const int16_t port = t->state.ComPortNumber;
    mnuComPort_Click(*t);
    mnuRemoteModem_Click(*t);
    EXPECT_EQ(Texts(), c.messages);
    for (const auto& m : t.prompter.Shown()) EXPECT_EQ(m.title, "Remote Modem Connection");
    EXPECT_EQ(screen.calls, c.opened);
    EXPECT_EQ(t->state.ComPortNumber, port);
  }
}

// Cancel in the manual connect window hangs up; a dead modem asks whether to try again,
// and No leaves the main window disabled.
TEST_F(Modem, CancelOfTheManualConnectWithADeadModem) {
  struct Case {
    std::vector<Answer> answers;  // each release's "Modem does not respond." takes an Ok
    bool mainEnabled;
    int questions;
  };
  const Case cases[] = {{{Answer::Ok, Answer::No}, false, 1},
                        {{Answer::Ok, Answer::Yes, Answer::Ok, Answer::No}, true, 2}};
  for (const Case& c : cases) {
    modem.dead = true;
    SetLinkState(*t, false);
    screen.mainEnabled = true;
    t.prompter.Clear();
    for (Answer a : c.answers) t.prompter.QueueAnswer(a);
    ManConnectModel window(*hayes);
    bool closed = false;
    window.CloseWindow = [&] { closed = true; };
    window.cmdCancel.Press();
    EXPECT_TRUE(closed);
    EXPECT_EQ(screen.mainEnabled, c.mainEnabled);
    int questions = 0;
    for (const auto& m : t.prompter.Shown())
      if (m.text == kReleaseAgain) {
        ++questions;
        EXPECT_EQ(m.title, "System Configuration");
        EXPECT_EQ(m.buttons, Buttons::YesNo);
      }
    EXPECT_EQ(questions, c.questions);
    EXPECT_EQ(t->state.ModemReleasePending, 0);
  }
}

TEST_F(Modem, ManualConnectTakesOverTheLine) {
  struct Case {
    std::vector<std::string> reply;
    const char* message;
    bool inCall;
  };
  const Case cases[] = {{{"CONNECT 9600"}, "Modem connected succesfully", true},
                        {{"BUSY"}, "Number dialed busy.", false}};
  for (const Case& c : cases) {
    modem.dialReply = c.reply;
    modem.commands.clear();
    SetLinkState(*t, false);
    t.prompter.Clear();
    screen.calls.clear();
    mnuManualConnect_Click(*hayes);
    EXPECT_EQ(screen.calls.back(), "modal frmManConnect");
    ManConnectModel window(*hayes);
    window.cmdConnect.Press();
    EXPECT_EQ(Texts(), std::vector<std::string>{c.message});
    EXPECT_EQ(InCall(*t), c.inCall);
    EXPECT_EQ(modem.commands.at(2), "ATE1V1Q0");
    EXPECT_EQ(modem.commands.at(3), "ATX1D");
    EXPECT_EQ(Heard().back() == "ATH", !c.inCall) << "a failed connect is released";
    EXPECT_TRUE(window.cmdConnect.Enabled());
    EXPECT_FALSE(window.Label2.Visible());
    comm->Exit_Comm();
  }
  // a modem that does not initialise: the question, and Yes tries again from the start
  modem.dead = true;
  t.prompter.Clear();
  t.prompter.QueueAnswer(Answer::Yes);
  t.prompter.QueueAnswer(Answer::No);
  screen.calls.clear();
  mnuManualConnect_Click(*hayes);
  EXPECT_EQ(Texts(), std::vector<std::string>(2, "Port not initialized properly. Do you want to try again?"));
  EXPECT_EQ(std::count(screen.calls.begin(), screen.calls.end(), "caption Manual Modem Connect"), 2);
}

TEST_F(Modem, ModemReleaseCommandShowsTheReleaseFace) {
  SetLinkState(*t, true);
  screen.calls.clear();
  mnuModemRelease_Click(*hayes);
  EXPECT_EQ(screen.calls, (std::vector<std::string>{"Status: Releasing Modem Connection ...", "release face", "show",
                                                     "unload"}));
  EXPECT_FALSE(InCall(*t));
  EXPECT_TRUE(screen.mainEnabled);
  EXPECT_EQ(t->state.ModemReleasePending, 0);
}

// The probe asks for the date until the unit gives a valid one, and gives up only when a
// send or a receive fails.
TEST_F(Modem, CheckDateAsksUntilAValidDateOrAFailure) {
  auto frame = [](const std::string& m) { return m + FrameChecksum(m) + "\r"; };
  const std::string good = frame("T093015110601"), impossible = frame("T093015130601");
  struct Case {
    std::vector<std::string> answers;  // to each Q in turn; none: silence
    bool found;
    int asked;
  };
  const Case cases[] = {{{good}, true, 1}, {{impossible, impossible, good}, true, 3}, {{}, false, 5}};
  comm->logFile.Open(t.dir.str("log_file.txt"));  // the port scan keeps its log open
  for (const Case& c : cases) {
    std::size_t next = 0;
    int asked = 0;
    std::string heard;
    t->SetPump([&] {
      while (auto b = far_->ReadByte()) {
        heard += *b;
        if (*b != '\r') continue;
        if (heard.find("Q051") != std::string::npos) {
          ++asked;
          if (next < c.answers.size()) far_->Write(std::string(1, kAck) + c.answers[next++]);
        }
        heard.clear();
      }
    });
    comm->Exit_Comm();
    const uint32_t before = Tick();
    EXPECT_EQ(CheckDate(*t, *comm), c.found);
    EXPECT_EQ(asked, c.asked);
    if (!c.found) {
      EXPECT_GE(Tick() - before, 2500u) << "five tries of half a second";
    }
  }
}

}  // namespace
}  // namespace r6183::test
