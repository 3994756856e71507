#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "database/Recordset.h"
#include "protocol/ModComm.h"
#include "sim/SimulatedUnit.h"
#include "sim/UnitMemory.h"
#include "support/LinePeer.h"

namespace r6183::sim {
namespace {

const std::string kAckS(1, kAck), kNakS(1, kNak);
const std::string kJ = "J023102310000" "00";  // what a unit with the default revisions sends

std::string Frame(const std::string& m) { return m + FrameChecksum(m) + "\r"; }

// The tool's protocol and a simulated unit on one in-memory line and a manual clock;
// the tool's pump runs the unit.
class SimTest : public ::testing::Test {
 protected:
  SimTest() {
    std::tie(toolEnd, unitEnd) = MemoryLine::Pair(t.clock);
    Start({});
    t->SetPump([this] { sim->Poll(); });
    comm = std::make_unique<ModComm>(*t, [this](int16_t) { return std::make_unique<BorrowedLine>(*toolEnd); });
    EXPECT_TRUE(comm->Init_Comm(0));
    comm->logFile.Open(t.dir.str("log_file.txt"));
    comm->dataFile.Open(t.dir.str("rx_data.txt"));
  }
  void Start(UnitOptions o) {
    t.clock.SetNow({2024, 3, 9, 14, 5, 7});
    toolEnd->DiscardInput();
    toolEnd->ClearWritten();
    unitEnd->Open({}, Handshake::None);  // again after a hang-up
    unitEnd->DiscardInput();             // and without what the tool sent to the last one
    sim = std::make_unique<SimulatedUnit>(*unitEnd, t.clock, std::move(o));
  }
  // Writes raw bytes from the tool's side and lets the unit answer.
  std::string Exchange(const std::string& bytes) {
    unitEnd->ClearWritten();
    toolEnd->Write(bytes);
    sim->Poll();
    return unitEnd->Written();
  }
  // The tool sends each message ("+N" waits N seconds instead); a question (one letter)
  // also waits for the reply. Gives what came of each: the reply, "ack" or the failure.
  std::vector<std::string> Run(const std::vector<std::string>& script) {
    std::vector<std::string> seen;
    for (std::string m : script) {
      const bool wait = m[0] == '+', question = m.size() == 1;
      if (wait) t.clock.Advance(std::chrono::seconds(std::stoi(m)));
      else if (!comm->Send_Msg(m)) seen.push_back(comm->NoResponseFlag ? "silent" : "nacked");
      else seen.push_back(!question ? "ack" : comm->Receive_Msg(false) ? comm->msg_str : "bad reply");
    }
    return seen;
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

TEST_F(SimTest, UnitChecksEachFrameAndAnswersHWithItsRevisions) {
  const UnitRevisions older{"0150", "0150", "0000", '1', true};
  struct Case { UnitRevisions rev; std::string frame, written, kept; };  // kept: "" for none
  const Case cases[] = {
      {{"0231", "0231", "0000", '2', true}, "H048\r", kAckS + Frame("J023102310000" "21"), "H"},
      {{"1105", "0240", "0100", '1', false}, "H048\r", kAckS + Frame("J110502400100" "10"), "H"},
      // before 2.00 the unit knows neither H nor Z, but it knows U
      {older, "H048\r", kNakS, ""}, {older, Frame("Z"), kNakS, ""}, {older, Frame("U10"), kAckS, "U10"},
      // a checksum off by one, in lower-case digits (0B6), a wrong length for X
      {{}, "H049\r", kNakS, ""}, {{}, "U100b6\r", kNakS, ""}, {{}, Frame("X00"), kNakS, ""},
      // the unit only sends J; an unknown letter, too short, an empty line
      {{}, Frame(kJ), kNakS, ""}, {{}, Frame("Y"), kNakS, ""}, {{}, "A04\r", kNakS, ""}, {{}, "\r", kNakS, ""},
      {{}, "A041\r", kAckS, "A"}, {{}, Frame("X0"), kAckS, "X0"},
  };
  for (const auto& c : cases) {
    Start({.revisions = c.rev, .faults = {}});
    EXPECT_EQ(Exchange(c.frame), c.written) << c.frame;
    EXPECT_EQ(sim->Received(), c.kept.empty() ? std::vector<std::string>{} : std::vector{c.kept}) << c.frame;
  }
}

// A script the tool runs against a unit set up so, and what the tool sees: the outcome of
// each message, and how many frames and NACKs it wrote.
TEST_F(SimTest, ToolSeesTheClockTheDaylightSwitchAndTheLineFaultsOfTheUnit) {
  struct Case {
    const char* name;
    UnitOptions unit;
    std::vector<std::string> script, seen;
    int toolFrames, toolNaks;
  };
  const std::vector<std::string> h4 = {"H", "H", "H", "H"}, j4 = {kJ, kJ, kJ, kJ};
  const std::string n = "nacked", s = "silent", b = "bad reply";
  auto with = [](Faults f, bool on = false, bool supported = true) {
    return UnitOptions{.revisions = {}, .faults = f, .daylightSupported = supported, .daylightOn = on};
  };
  const Case cases[] = {
      // the clock, read and set, runs on with the host's
      {"clock into a leap day", {}, {"Q", "T235930022824", "Q", "+40", "Q"},
       {"T140507030924", "ack", "T235930022824", "T000010022924"}, 4, 0},
      {"clock into a new century", {}, {"T235930123199", "+40", "Q"}, {"ack", "T000010010100"}, 2, 0},
      {"daylight off", {}, {"Z", "U11", "Z"}, {"U01", "ack", "U11"}, 3, 0},
      {"daylight on", with({}, true), {"Z", "U01", "Z"}, {"U11", "ack", "U01"}, 3, 0},
      {"daylight unsupported", with({}, false, false), {"Z", "U11", "Z"}, {"U00", "ack", "U10"}, 3, 0},
      // line faults
      {"no fault", {}, h4, j4, 4, 0},
      {"NACK every second", with({.nackEvery = 2}), h4, j4, 7, 0},
      {"NACK all", with({.nackShare = 1.0}), h4, {n, n, n, n}, 20, 0},
      {"NACK half, seed 7", with({.nackShare = 0.5, .seed = 7}), h4, {kJ, n, kJ, kJ}, 11, 0},
      {"NACK half, seed 8", with({.nackShare = 0.5, .seed = 8}), h4, j4, 9, 0},
      {"silent after 2", with({.silentAfter = 2}), h4, {kJ, kJ, s, s}, 12, 0},
      {"hang up after 2", with({.hangUpAfter = 2}), h4, {kJ, b, s, s}, 12, 5},  // the J is not sent
      {"Q ignored, H answered", with({.ignored = "Q"}), {"Q", "H"}, {s, kJ}, 6, 0},
      {"noise before each frame", with({.garbage = true}), h4, j4, 4, 4},
      {"wrong checksum", with({.badChecksum = true}), h4, {b, b, b, b}, 4, 20},
      {"impossible clock until set", with({.badClock = true}), {"Q", "Q", "T093000110601", "Q"},
       {"T140507130924", "T140507130924", "ack", "T093000110601"}, 4, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Start(c.unit);
    EXPECT_EQ(Run(c.script), c.seen);
    const std::string& w = toolEnd->Written();
    EXPECT_EQ(std::count(w.begin(), w.end(), '\r'), c.toolFrames);
    EXPECT_EQ(std::count(w.begin(), w.end(), kNak), c.toolNaks);
    EXPECT_EQ(unitEnd->IsOpen(), c.unit.faults.hangUpAfter == 0);
  }
}

TEST_F(SimTest, UnitRepeatsItsFrameUntilAcknowledgedFiveTimesAtMost) {
  const char a = kAck, n = kNak, quiet = '.';  // the tool's answer to each try
  const std::pair<std::string, int> cases[] = {
      {{a}, 1}, {{n, n, a}, 3}, {{n, quiet, n, a}, 4}, {{n, n, n, n, n}, 5}, {{quiet, quiet, quiet, quiet, quiet}, 5}};
  for (const auto& [answers, frames] : cases) {
    Start({});
    Exchange("H048\r");  // ACK, and the first try of J
    for (char answer : answers) {
      if (answer == quiet) t.clock.Advance(std::chrono::milliseconds(1000));
      else toolEnd->Write(std::string(1, answer));
      sim->Poll();
    }
    t.clock.Advance(std::chrono::milliseconds(5000));
    sim->Poll();  // nothing more goes out
    std::string expected = kAckS;
    for (int i = 0; i < frames; ++i) expected += Frame(kJ);
    EXPECT_EQ(unitEnd->Written(), expected) << frames;
    EXPECT_TRUE(sim->Idle());
    EXPECT_EQ(sim->Count().sendsFailed, answers.back() == a ? 0 : 1) << frames;
  }
}

// Paced, the unit answers when what crossed the line before has had its wire time, in one
// pause per answer: each pause oversleeps a little, and one per byte made a Send a sixth
// slower than the wire.
TEST(SimulatedUnitPacing, AnswersAfterTheWireTimeInOnePause) {
  struct CountingClock final : Clock {
    ManualClock inner;
    int pauses = 0;
    uint32_t TickCount() const override { return inner.TickCount(); }
    LocalDateTime Now() const override { return inner.Now(); }
    void Pause(std::chrono::milliseconds ms) override {
      ++pauses;
      inner.Advance(ms);
    }
  };
  const std::string c = Frame("C" + std::string(21, '7'));  // 26 bytes
  struct Case { bool pace; std::vector<std::string> in; uint32_t ms; int pauses; };
  const Case cases[] = {
      {false, {"H048\r"}, 0, 0},
      // 5 bytes and the tool's NUL in, the ACK (7 ms), then the J (1 ms more), whose own
      // time is paid before the unit's next answer
      {true, {"H048\r"}, 8, 2},
      {true, {c}, 29, 1},  // 26 bytes, the NUL and the ACK: 29.2 ms
      // the second frame follows the first ACK at once: 58.3 ms of line for both
      {true, {c, c}, 58, 2},
  };
  for (const auto& k : cases) {
    CountingClock clock;
    auto [tool, unit] = MemoryLine::Pair(clock.inner);
    tool->Open({}, Handshake::None);
    unit->Open({}, Handshake::None);
    SimulatedUnit sim(*unit, clock, {.revisions = {}, .faults = {}, .pace = k.pace});
    for (const auto& frame : k.in) {
      tool->Write(frame);
      sim.Poll();
    }
    EXPECT_EQ(unit->Written().substr(0, 1), kAckS) << k.in.size();
    EXPECT_EQ(clock.inner.TickCount() - 1000, k.ms) << k.in[0] << " x" << k.in.size();
    EXPECT_EQ(clock.pauses, k.pauses) << k.in[0] << " x" << k.in.size();
  }
}

TEST(UnitMemory, KeepsACopyOfADocumentAndSavesIt) {
  test::TempDir dir;
  UnitMemory memory;
  EXPECT_FALSE(memory.Loaded());
  EXPECT_THROW(memory.Save(dir.path() / "x.mdb"), std::runtime_error);
  memory.Load(test::StagedAppDir() / "DEFAULT");
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
