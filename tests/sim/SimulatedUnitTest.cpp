#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "database/Recordset.h"
#include "protocol/ModComm.h"
#include "protocol/Revisions.h"
#include "sim/SimulatedUnit.h"
#include "sim/UnitMemory.h"
#include "support/LinePeer.h"

namespace r6183::sim {
namespace {

const std::string kAckS(1, kAck), kNakS(1, kNak);

std::string Frame(const std::string& m) { return m + FrameChecksum(m) + "\r"; }

// The tool's protocol and a simulated unit on one in-memory line and a manual clock;
// the tool's pump runs the unit.
class SimTest : public ::testing::Test {
 protected:
  SimTest() {
    auto [tool, unit] = MemoryLine::Pair(t.clock);
    toolEnd = std::move(tool);
    unitEnd = std::move(unit);
    unitEnd->Open({}, Handshake::None);
    Start({});
    t->SetPump([this] { sim->Poll(); });
    comm = std::make_unique<ModComm>(*t, [this](int16_t) { return std::make_unique<test::LineRef>(toolEnd.get()); });
    EXPECT_TRUE(comm->Init_Comm(0));
    comm->logFile.Open(t.dir.str("log_file.txt"));
    comm->dataFile.Open(t.dir.str("rx_data.txt"));
  }
  void Start(UnitOptions o) {
    toolEnd->DiscardInput();
    if (!unitEnd->IsOpen()) unitEnd->Open({}, Handshake::None);
    sim = std::make_unique<SimulatedUnit>(*unitEnd, t.clock, std::move(o));
  }
  // Writes raw bytes from the tool's side and lets the unit answer.
  std::string Exchange(const std::string& bytes) {
    unitEnd->ClearWritten();
    toolEnd->Write(bytes);
    sim->Poll();
    return unitEnd->Written();
  }
  bool Ask(const std::string& letter) {
    std::string m = letter;
    return comm->Send_Msg(m) && comm->Receive_Msg(false);
  }

  test::TestSession t;
  std::unique_ptr<MemoryLine> toolEnd, unitEnd;
  std::unique_ptr<SimulatedUnit> sim;
  std::unique_ptr<ModComm> comm;
};

TEST(UnitRevisions, FieldIsTwoDigitsOfMajorAndTwoOfMinor) {
  const std::pair<const char*, const char*> good[] = {{"2.31", "0231"}, {"11.05", "1105"}, {"0.99", "0099"}};
  for (const auto& [text, field] : good) EXPECT_EQ(UnitRevisions::Field(text), field) << text;
  for (const char* bad : {"2", "2.3", "2.310", "123.00", "a.bc", ".31", ""})
    EXPECT_THROW(UnitRevisions::Field(bad), std::invalid_argument) << bad;
}

TEST_F(SimTest, ToolReadsRevisionsAndCardsOfTheUnit) {
  struct Case {
    UnitRevisions rev;
    std::string second, main, third, card1, card2, unitText;
    int naks;
  };
  const Case cases[] = {
      {{"0231", "0231", "0000", '2', true}, "Rev 2.31", "Rev 2.31", "", "First Option Card: \tType 2",
       "Second Option Card: \tType CLOCK", "2.31", 0},
      {{"1105", "0240", "0100", '1', false}, "Rev 11.05", "Rev 2.40", "Third CPU: \tRev 1.00",
       "First Option Card: \tType 1", "", "11.05", 0},
      {{"0200", "0200", "0000", '3', false}, "Rev 2.00", "Rev 2.00", "", "", "", "2.00", 0},
      // before 2.00 the unit does not know H: five NACKs
      {{"0150", "0150", "0000", '1', true}, "Pre 2.00", "Pre 2.00", "", "", "", "0.00", 5},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.rev.JMessage());
    UnitOptions o;
    o.revisions = c.rev;
    Start(o);
    RevisionLines lines;
    GetRevs(*t, *comm, lines);
    EXPECT_EQ(lines.RevLineSecond, "Second CPU: \t" + c.second);
    EXPECT_EQ(lines.RevLineMain, "Main CPU: \t" + c.main);
    EXPECT_EQ(lines.RevLineThird, c.third);
    EXPECT_EQ(lines.RevLineCard1, c.card1);
    EXPECT_EQ(lines.RevLineCard2, c.card2);
    EXPECT_EQ(lines.RevLineStatus, "");
    EXPECT_EQ(UnitRevisionText(*comm, lines, true), c.unitText);
    EXPECT_EQ(sim->Count().naksSent, c.naks);
  }
}

TEST_F(SimTest, EachReceivedFrameIsCheckedAsTheUnitDoes) {
  const std::string u = "U10";
  std::string lowerSum = FrameChecksum(u);
  for (char& ch : lowerSum) ch = static_cast<char>(std::tolower(ch));
  const std::pair<std::string, std::string> cases[] = {
      {"H048\r", kAckS},
      {"H049\r", kNakS},                                    // checksum off by one
      {u + lowerSum + "\r", kNakS},                         // lower-case digits don't match
      {Frame("X0"), kAckS},
      {Frame("X00"), kNakS},                                // wrong length for X
      {Frame("J023102310000002"), kNakS},                   // the unit only sends J
      {Frame("Y"), kNakS},                                  // unknown letter
      {"A04\r", kNakS},                                     // too short
      {"\r", kNakS},                                        // empty line
      {std::string("H0\0" "48\r", 6), kAckS},               // NUL is dropped
      {"A041\r", kAckS},
  };
  for (const auto& [frame, answer] : cases) {
    const std::string written = Exchange(frame);
    EXPECT_EQ(written.substr(0, 1), answer) << frame;
    toolEnd->DiscardInput();
    while (!sim->Idle()) Exchange(kAckS);  // take any reply off the line
  }
  EXPECT_EQ(sim->Received(), (std::vector<std::string>{"H", "X0", "H", "A"}));
}

TEST_F(SimTest, UnitRepeatsItsFrameUntilAcknowledgedFiveTimesAtMost) {
  struct Case {
    std::vector<std::string> answers;  // tool's reply to each try; "" is silence
    int frames;
    bool failed;
  };
  const Case cases[] = {
      {{kAckS}, 1, false},
      {{kNakS, kNakS, kAckS}, 3, false},
      {{kNakS, "", kNakS, kAckS}, 4, false},
      {{kNakS, kNakS, kNakS, kNakS, kNakS}, 5, true},
      {{"", "", "", "", ""}, 5, true},
  };
  const std::string j = Frame(UnitRevisions{}.JMessage());
  for (const auto& c : cases) {
    Start({});
    Exchange("H048\r");  // ACK, and the first try of J
    for (const std::string& a : c.answers) {
      if (a.empty())
        t.clock.Advance(std::chrono::milliseconds(1000));
      else
        toolEnd->Write(a);
      sim->Poll();
    }
    t.clock.Advance(std::chrono::milliseconds(5000));
    sim->Poll();  // nothing more goes out
    std::string expected = kAckS;
    for (int i = 0; i < c.frames; ++i) expected += j;
    EXPECT_EQ(unitEnd->Written(), expected) << c.frames;
    EXPECT_TRUE(sim->Idle());
    EXPECT_EQ(sim->Count().sendsFailed, c.failed ? 1 : 0);
  }
}

TEST_F(SimTest, DateAndTimeAreReadAndSet) {
  t.clock.SetNow({2024, 3, 9, 14, 5, 7});
  sim->SetClockOffset(std::chrono::hours(-24 * 10));  // the unit runs ten days behind
  ASSERT_TRUE(Ask("Q"));
  EXPECT_EQ(comm->msg_str, "T140507022824");  // leap year: ten days before 9 March

  std::string set = "T235930123199";
  ASSERT_TRUE(comm->Send_Msg(set));
  const LocalDateTime now = sim->UnitTime();
  EXPECT_EQ(FormatJournalDate(now) + " " + FormatJournalTime(now), "12/31/2099 23:59");
  t.clock.Advance(std::chrono::seconds(40));  // the unit's clock keeps running: past midnight
  ASSERT_TRUE(Ask("Q"));
  EXPECT_EQ(comm->msg_str.substr(1, 4), "0000");
  EXPECT_EQ(comm->msg_str.substr(7), "010100");
}

TEST_F(SimTest, ImpossibleClockHoldsUntilTheToolSetsIt) {
  UnitOptions o;
  o.faults.badClock = true;
  Start(o);
  ASSERT_TRUE(Ask("Q"));
  EXPECT_EQ(comm->msg_str.substr(7, 2), "13");
  ASSERT_TRUE(Ask("Q"));
  EXPECT_EQ(comm->msg_str.substr(7, 2), "13");
  std::string set = "T093000110601";
  ASSERT_TRUE(comm->Send_Msg(set));
  ASSERT_TRUE(Ask("Q"));
  EXPECT_EQ(comm->msg_str.substr(7), "110601");
}

TEST_F(SimTest, DaylightSwitchIsReadAndSet) {
  struct Case {
    bool supported, on;
    std::string revision;
    std::string first;   // U before setting, "" when Z is refused
    std::string set;     // U sent by the tool
    std::string second;  // U after
  };
  const Case cases[] = {
      {true, false, "0231", "U01", "U11", "U11"},
      {true, true, "0231", "U11", "U01", "U01"},
      {false, false, "0231", "U00", "U11", "U10"},
      {true, false, "0150", "", "U11", ""},  // an older unit has no daylight message
  };
  for (const auto& c : cases) {
    UnitOptions o;
    o.daylightSupported = c.supported;
    o.daylightOn = c.on;
    o.revisions.second = c.revision;
    Start(o);
    EXPECT_EQ(Ask("Z"), !c.first.empty());
    if (!c.first.empty()) {
      EXPECT_EQ(comm->msg_str, c.first);
    }
    std::string set = c.set;
    comm->Send_Msg(set);
    if (Ask("Z")) {
      EXPECT_EQ(comm->msg_str, c.second);
    } else {
      EXPECT_EQ(c.second, "");
    }
  }
}

TEST_F(SimTest, LineFaultsShowAsTheyAreAsked) {
  struct Case {
    const char* name;
    Faults faults;
    std::string answers;  // to six H frames in a row, the J replies acknowledged
  };
  const std::string a = kAckS, n = kNakS;
  const Case cases[] = {
      {"none", {}, a + a + a + a + a + a},
      {"every second", {.nackEvery = 2}, a + n + a + n + a + n},
      {"every frame", {.nackEvery = 1}, n + n + n + n + n + n},
      {"silent after 4", {.silentAfter = 4}, a + a + a + a},
      {"hang up after 2", {.hangUpAfter = 2}, a + a},
      {"all at random", {.nackShare = 1.0}, n + n + n + n + n + n},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    UnitOptions o;
    o.faults = c.faults;
    Start(o);
    std::string answers;
    for (int i = 0; i < 6; ++i) {
      const std::string w = Exchange("H048\r");
      if (!w.empty() && (w[0] == kAck || w[0] == kNak)) answers += w[0];
      while (!sim->Idle()) Exchange(kAckS);
    }
    EXPECT_EQ(answers, c.answers);
    EXPECT_EQ(sim->HungUp(), c.faults.hangUpAfter > 0);
    EXPECT_EQ(unitEnd->IsOpen(), c.faults.hangUpAfter == 0);
  }
}

TEST_F(SimTest, RandomNacksFollowTheirShareAndSeed) {
  auto run = [&](uint32_t seed) {
    UnitOptions o;
    o.faults.nackShare = 0.3;
    o.faults.seed = seed;
    Start(o);
    std::string answers;
    for (int i = 0; i < 200; ++i) answers += Exchange(Frame("X0"));
    return answers;
  };
  const std::string first = run(7);
  const auto naks = std::count(first.begin(), first.end(), kNak);
  EXPECT_GT(naks, 30);
  EXPECT_LT(naks, 90);
  EXPECT_EQ(run(7), first);
  EXPECT_NE(run(8), first);
}

TEST_F(SimTest, ToolCopesWithTheUnitsFaultyFrames) {
  struct Case {
    const char* name;
    Faults faults;
    bool gotRevisions;
  };
  const Case cases[] = {
      {"noise before each frame", {.garbage = true}, true},
      {"wrong checksum", {.badChecksum = true}, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    UnitOptions o;
    o.faults = c.faults;
    Start(o);
    RevisionLines lines;
    GetRevs(*t, *comm, lines);
    EXPECT_EQ(lines.RevLineSecond, c.gotRevisions ? "Second CPU: \tRev 2.31" : "Second CPU: \tPre 2.00");
  }
}

TEST_F(SimTest, PacingTakesTheTimeOfTheBytesOnTheWire) {
  for (bool pace : {false, true}) {
    UnitOptions o;
    o.pace = pace;
    Start(o);
    const uint32_t start = t.clock.TickCount();
    Exchange("H048\r");  // 5 bytes in, ACK and a 19-byte J out
    const uint32_t spent = t.clock.TickCount() - start;
    if (pace) {
      EXPECT_GE(spent, 25u);
      EXPECT_LE(spent, 27u);
    } else {
      EXPECT_EQ(spent, 0u);
    }
  }
}

TEST_F(SimTest, HandlersReplaceTheUnitsOwnAnswers) {
  sim->SetHandler('R', [this](const std::string&) {
    sim->Send("X2");
    sim->Send("A");
  });
  std::string r = "R";
  ASSERT_TRUE(comm->Send_Msg(r));
  ASSERT_TRUE(comm->Receive_Msg(false));
  EXPECT_EQ(comm->msg_str, "X2");
  ASSERT_TRUE(comm->Receive_Msg(false));
  EXPECT_EQ(comm->msg_str, "A");
}

TEST(UnitMemory, KeepsACopyOfADocumentAndSavesIt) {
  test::TempDir dir;
  const auto tmpl = test::StagedAppDir() / "DEFAULT";
  UnitMemory memory;
  EXPECT_FALSE(memory.Loaded());
  EXPECT_THROW(memory.Save(dir.path() / "x.mdb"), std::runtime_error);
  memory.Load(tmpl);
  memory.Open().Execute("UPDATE Config SET System_Config = 3");
  test::WriteFile(dir.path() / "junk.mdb", std::string(4096, 'j'));
  EXPECT_THROW(memory.Load(dir.path() / "junk.mdb"), std::runtime_error);
  EXPECT_THROW(memory.Load(dir.path() / "missing.mdb"), std::runtime_error);
  memory.Save(dir.path() / "saved.mdb");  // the refused loads left the memory alone

  UnitMemory again;
  again.Load(dir.path() / "saved.mdb");
  auto rs = again.Open().OpenRecordset("Config", RecordsetType::Snapshot);
  EXPECT_EQ(rs.Fields("System_Config").Number(), 3);
}

}  // namespace
}  // namespace r6183::sim
