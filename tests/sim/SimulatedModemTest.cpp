// The simulated Hayes modem on an in-memory line with a manual clock: what it answers in
// command state, how a dial ends, the escape and its guard times, hang-up by command and
// by DTR.
#include <gtest/gtest.h>

#include "protocol/SerialLine.h"
#include "shell/Clock.h"
#include "sim/SimulatedModem.h"

namespace r6183::sim {
namespace {

class HayesModem : public ::testing::Test {
 protected:
  HayesModem() {
    auto [t, m] = MemoryLine::Pair(clock);
    tool = std::move(t);
    modemEnd = std::move(m);
    tool->Open({}, Handshake::None);
    modemEnd->Open({}, Handshake::None);
  }
  void Make(ModemOptions o = {}) { modem = std::make_unique<SimulatedModem>(*modemEnd, clock, o); }
  // Sends text, lets `ms` pass, and returns what came back.
  std::string Say(const std::string& text, int ms = 0) {
    if (!text.empty()) tool->Write(text);
    modem->Poll();
    if (ms > 0) {
      clock.Advance(std::chrono::milliseconds(ms));
      modem->Poll();
    }
    std::string got;
    while (auto c = tool->ReadByte()) got += *c;
    return got;
  }
  // What the unit behind the modem has been given.
  std::string UnitGot() {
    std::string got;
    while (auto c = modem->UnitSide().ReadByte()) got += *c;
    return got;
  }
  void Connect(const std::string& number = "5551234") {
    Say("ATDT" + number + "\r", 1000);
    ASSERT_TRUE(modem->InCall());
  }

  ManualClock clock;
  std::unique_ptr<MemoryLine> tool, modemEnd;
  std::unique_ptr<SimulatedModem> modem;
};

TEST_F(HayesModem, CommandStateEchoesAndAnswers) {
  struct Case {
    const char* sent;
    const char* answer;
  };
  // one session: each line sees the settings the lines before it left
  const Case cases[] = {
      {"AT\r", "AT\r\r\nOK\r\n"},
      {"AT&F\r", "AT&F\r\r\nOK\r\n"},
      {"ATE1V1Q0\r", "ATE1V1Q0\r\r\nOK\r\n"},
      {"AT S0=1 &D0 \\N0 %C0 +MS=V32,0,9600,9600\r", "AT S0=1 &D0 \\N0 %C0 +MS=V32,0,9600,9600\r\r\nOK\r\n"},
      {"AT#CID=1\r", "AT#CID=1\r\r\nERROR\r\n"},
      {"hello\r", "hello\r"},  // not a command: echoed, not answered
      {"ATO\r", "ATO\r\r\nNO CARRIER\r\n"},
      {"ATE0\r", "ATE0\r\r\nOK\r\n"},
      {"AT\r", "\r\nOK\r\n"},
      {"ATV0\r", "0\r"},
      {"ATQ1\r", ""},
      {"ATZ\r", "\r\nOK\r\n"},  // typed without echo, answered as reset
  };
  Make();
  for (const Case& c : cases) EXPECT_EQ(Say(c.sent), c.answer) << c.sent;
}

TEST_F(HayesModem, ADialEndsAfterItsDelayAsTheNumberAndSwitchesSay) {
  struct Case {
    ModemOptions options;
    const char* dial;
    const char* result;
    bool inCall;
  };
  ModemOptions busy, noTone, fast;
  busy.busy = {"5550000"};
  busy.noAnswer = {"5559999"};
  noTone.noDialTone = true;
  fast.connectSpeed = 14400;
  const Case cases[] = {
      {busy, "ATDT5551234\r", "\r\nCONNECT 9600\r\n", true},
      {busy, "ATDT5550000\r", "\r\nBUSY\r\n", false},
      {busy, "ATDT5559999\r", "\r\nNO CARRIER\r\n", false},
      {noTone, "ATDT5551234\r", "\r\nNO DIAL TONE\r\n", false},
      {fast, "ATDT5551234\r", "\r\nCONNECT 14400\r\n", true},
      {{}, "ATX1D\r", "\r\nCONNECT 9600\r\n", true},  // the line taken over by hand
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.dial);
    Make(c.options);
    EXPECT_EQ(Say(c.dial, 999), c.dial) << "nothing but the echo before the delay";
    EXPECT_EQ(Say("", 1), c.result);
    EXPECT_EQ(modem->InCall(), c.inCall);
  }
  // a key pressed while it dials ends the dial
  Make();
  Say("ATDT5551234\r", 500);
  EXPECT_EQ(Say("\r", 1000), "\r\nNO CARRIER\r\n");
  EXPECT_FALSE(modem->InCall());
  EXPECT_EQ(modem->Number(), "5551234");
}

TEST_F(HayesModem, ACallCarriesBytesBothWaysUntilTheEscape) {
  Make();
  Connect();
  EXPECT_EQ(Say("S041\r", 10), "");
  EXPECT_EQ(UnitGot(), "S041\r");
  modem->UnitSide().Write("\x06");
  EXPECT_EQ(Say(""), "\x06");

  struct Case {
    int quietBefore;  // ms of silence after the last data
    std::vector<std::pair<const char*, int>> sent;  // text, then ms of silence
    bool escaped;
    const char* toUnit;
  };
  const Case cases[] = {
      {200, {{"+++", 1500}}, false, "+++"},                // too soon after the data
      {1500, {{"+++", 300}, {"A", 1500}}, false, "+++A"},  // data within the guard after
      {1500, {{"++++", 1500}}, false, "++++"},             // four are data
      {1500, {{"+++", 1000}}, true, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.sent.front().first + std::to_string(c.quietBefore));
    Say("X");
    UnitGot();
    Say("", c.quietBefore);
    std::string answer;
    for (const auto& [text, quiet] : c.sent) answer += Say(text, quiet);
    EXPECT_EQ(answer, c.escaped ? "\r\nOK\r\n" : "");
    EXPECT_EQ(UnitGot(), c.toUnit);
  }
  EXPECT_EQ(modem->state(), SimulatedModem::State::OnlineCommand);
  // the unit's bytes wait for the call to come back
  modem->UnitSide().Write("lost");
  EXPECT_EQ(Say("AT\r"), "AT\r\r\nOK\r\n");
  EXPECT_EQ(Say("ATO\r"), "ATO\r\r\nCONNECT 9600\r\n");
  EXPECT_EQ(modem->state(), SimulatedModem::State::Online);
  Say("", 1500);
  Say("+++", 1000);
  EXPECT_EQ(Say("ATH\r"), "ATH\r\r\nOK\r\n");
  EXPECT_EQ(modem->state(), SimulatedModem::State::Command);
  Say("Q041\r", 10);
  EXPECT_EQ(UnitGot(), "") << "no call, nothing for the unit";
}

TEST_F(HayesModem, DroppingDTRHangsUp) {
  Make();
  tool->SetDTR(true);
  modem->Poll();
  Connect();
  tool->SetDTR(false);
  EXPECT_EQ(Say(""), "\r\nNO CARRIER\r\n");
  EXPECT_EQ(modem->state(), SimulatedModem::State::Command);
  tool->SetDTR(true);
  EXPECT_EQ(Say("AT\r"), "AT\r\r\nOK\r\n");
}

}  // namespace
}  // namespace r6183::sim
