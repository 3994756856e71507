#include <SQLiteCpp/Database.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <sstream>

#include "database/Database.h"
#include "database/DocumentDump.h"
#include "protocol/Messages.h"
#include "protocol/ModComm.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;

// The unit's end: records each frame without CR and NUL and answers it with an ACK,
// or with nothing when silent.
struct RecordingPeer {
  MemoryLine* line = nullptr;
  bool silent = false;
  std::string partial;
  std::vector<std::string> frames;
  void Poll() {
    while (auto c = line->ReadByte()) {
      if (*c == '\0') continue;
      if (*c != '\r') {
        partial += *c;
        continue;
      }
      frames.push_back(partial);
      partial.clear();
      if (!silent) line->Write(std::string(1, kAck));
    }
  }
};

using Send = void (Messages::*)(Database&);

// The stages of a send transfer, in their order.
const Send kSenders[] = {&Messages::SendEvents, &Messages::SendGroups, &Messages::SendSched,
                         &Messages::SendClid,   &Messages::SendDip,    &Messages::SendBGM,
                         &Messages::SendEmer,   &Messages::SendCT,     &Messages::SendClock,
                         &Messages::SendClassService};

void Dispatch(Messages& m, char letter) {
  switch (letter) {
    case 'X': m.ReadConfig(); break;
    case 'D': m.ReadDip(); break;
    case 'I': m.REadClock(); break;
    case 'E': m.ReadEvent(); break;
    case 'W': m.ReadSched(); break;
    case 'K': m.ReadCT(); break;
    case 'N': m.ReadEmer(); break;
    case 'M': m.ReadBGM(); break;
    case 'C': m.ReadClid(); break;
    case 'G': m.ReadGroup(); break;
    case 'P': m.ReadClassService(); break;
    default: FAIL() << "no reader for " << letter;
  }
}

std::string Dump(const std::string& path, const std::string& table = {}) {
  Database db = Database::Open(path);
  std::ostringstream all;
  DumpDocument(db, all);
  if (table.empty()) return all.str();
  std::istringstream in(all.str());
  std::string line, rows;
  while (std::getline(in, line))
    if (line.rfind(table + "|", 0) == 0) rows += line + "\n";
  return rows;
}

void Exec(const std::string& path, const std::string& sql) {
  if (sql.empty()) return;
  Database db = Database::Open(path);
  db.Handle().exec(sql);
}

class MessagesTest : public ::testing::Test {
 protected:
  MessagesTest() {
    auto [tool, unit] = MemoryLine::Pair(t.clock);
    unitLine = std::move(unit);
    unitLine->Open({}, Handshake::None);
    peer.line = unitLine.get();
    t->SetPump([this] { peer.Poll(); });
    tool_ = std::move(tool);
    comm = std::make_unique<ModComm>(*t, [this](int16_t) { return std::unique_ptr<SerialLine>(std::move(tool_)); });
    EXPECT_TRUE(comm->Init_Comm(0));
    comm->dataFile.Open(t.dir.str("tx_data.txt"));
    comm->logFile.Open(t.dir.str("log_file.txt"));
    msgs = std::make_unique<Messages>(*t, *comm);
  }
  // The log so far; a new one is started.
  std::string TakeLog() {
    comm->logFile.Close();
    const std::string text = test::ReadFile(t.dir.path() / "log_file.txt");
    comm->logFile.Open(t.dir.str("log_file.txt"));
    return text;
  }
  // A fresh document from the template.
  std::string Template(const std::string& path) {
    fs::copy_file(t->state.DefaultDbPath, path, fs::copy_options::overwrite_existing);
    return path;
  }
  // Starts a receive on the template: the work copy replaced, counters at 0.
  void StartReceive(const std::string& setupSql = {}) {
    Template(t->state.WorkDbPath);
    Exec(t->state.WorkDbPath, setupSql);
    t->state.SystemConfig = 0;
    msgs->tables.Open_Tables(*t);
  }
  void SendAll(const std::string& path) {
    Database db = Database::Open(path);
    msgs->SendConfig();
    for (Send s : kSenders) (msgs.get()->*s)(db);
  }

  test::TestSession t;
  std::unique_ptr<MemoryLine> tool_, unitLine;
  RecordingPeer peer;
  std::unique_ptr<ModComm> comm;
  std::unique_ptr<Messages> msgs;
};

// Varied programming for a system of `boards` expansion boards.
std::string FillSql(int boards) {
  const std::string b = std::to_string(boards);
  return "UPDATE Config SET System_Config = " + b + ";"
         "UPDATE ClockDef SET ClockEnabled = 1, ClockA = '5', ClockB = '12', Direction = '1', BCD_Type = '2';"
         "UPDATE Clid SET archnum = CAST(100 + clid_station AS TEXT), clid_string = 'Room ' || clid_station"
         "  WHERE clid_station <= 30;"
         "UPDATE Clid SET archnum = '7', clid_string = 'A description longer than fifteen' WHERE clid_station = 40;"
         "UPDATE Clid SET archnum = '4321', clid_string = 'Exactly fifteen' WHERE clid_station = 96;"
         "UPDATE PageGroup SET PageGroup1 = 1, PageGroup5 = 1 WHERE DialCode = 0;"
         "UPDATE PageGroup SET PageGroup16 = 1 WHERE DialCode = 3;"
         "UPDATE SchedDays SET Sunday = 1, Monday = 1 WHERE Schedule = 1;"
         "UPDATE SchedDays SET Tuesday = 1, Friday = 1 WHERE Schedule = 3;"
         "UPDATE SchedDays SET Saturday = 1 WHERE Schedule = 6;"
         "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1, PageGroup16) VALUES"
         "  (3, '07:15', 10, 3, 1, 1), (1, '12:30', 59, 2, 0, 1), (1, '08:00', 5, 1, 1, 0), (6, '23:59', 1, 4, 0, 0);"
         "UPDATE Event SET PageGroup8 = 1 WHERE Schedule = 6;"
         "UPDATE Bgm SET PageGroup2 = 1, PageGroup9 = 1, PageGroup16 = 1;"
         "UPDATE TonesPG SET PageGroup1 = 0, PageGroup6 = 1, PageGroup13 = 1;"
         "UPDATE EmergencyPG SET PageGroup8 = 1, PageGroup16 = 1;"
         "UPDATE DipSwitch SET LowStn22 = 1, QueueTone = 1, PriorityOverride = 1, RingPattern = 2,"
         "  ExtToneSource = 1;"
         "UPDATE ClassService SET Service = \"Group\" % 3;";
}

// What the messages themselves make of that programming.
std::string MessageEffectsSql(int boards) {
  const std::string groups = std::to_string((boards + 1) * 4);
  std::string sql =
      // a one-character clock comes back with its leading "0"
      "UPDATE ClockDef SET ClockA = '05';"
      // numbers and descriptions come back filled with blanks, or cut
      "UPDATE Clid SET archnum = substr(archnum || '    ', 1, 4),"
      "  clid_string = substr(clid_string || '               ', 1, 15);"
      // the groups of absent boards: no tones, class 1
      "UPDATE ClassService SET Service = 1 WHERE \"Group\" > " + groups + ";";
  for (int g = (boards + 1) * 4 + 1; g <= 16; ++g)
    sql += "UPDATE TonesPG SET PageGroup" + std::to_string(g) + " = 0; UPDATE EmergencyPG SET PageGroup" +
           std::to_string(g) + " = 0;";
  return sql;
}

TEST_F(MessagesTest, RoundTripKeepsTheProgrammingBarTheMessagesOwnChanges) {
  for (int boards = 0; boards <= 3; ++boards) {
    SCOPED_TRACE("boards " + std::to_string(boards));
    const std::string source = Template(t.dir.str("source"));
    Exec(source, FillSql(boards));
    t->state.SystemConfig = static_cast<uint8_t>(boards);
    peer.frames.clear();
    SendAll(source);
    EXPECT_FALSE(comm->transfer.TransferFailed);
    // X, 4 events, 4 groups, 7 days, 96 stations, D M N K I P
    ASSERT_EQ(peer.frames.size(), 1u + 4 + 4 + 7 + 96 + 6);

    StartReceive();
    for (const std::string& frame : peer.frames) {
      ASSERT_GE(frame.size(), 4u);
      comm->msg_str = frame.substr(0, frame.size() - 3);
      EXPECT_EQ(static_cast<int>(comm->msg_str.size()), MessageLength(frame[0])) << frame;
      Dispatch(*msgs, frame[0]);
    }
    msgs->tables.Close_Tables();
    EXPECT_FALSE(comm->ExceptionsFlag);
    EXPECT_EQ(t->state.SystemConfig, boards);
    EXPECT_EQ(t->state.ClocksEnabled, 1);

    Exec(source, MessageEffectsSql(boards));
    EXPECT_EQ(Dump(t->state.WorkDbPath), Dump(source));
  }
  EXPECT_TRUE(test::JournalRows(*t).empty());
}

struct SendCase {
  const char* name;
  std::string sql;  // with no expansion boards
  Send send;        // null: SendConfig
  std::string pick;  // the frames that start with this
  std::vector<std::string> frames;  // without checksum
};

TEST_F(MessagesTest, SendEncodings) {
  const std::string thirteenOnes(13, '1');
  const SendCase cases[] = {
      {"boards 0", "", nullptr, "X", {"X0"}},
      {"options all off, pattern 0", "", &Messages::SendDip, "D", {"D" + thirteenOnes + "11" + "1"}},
      {"options inverted, pattern 1",
       "UPDATE DipSwitch SET LowStn21 = 1, PriorityOverride = 1, RingPattern = 1, ExtToneSource = 1", &Messages::SendDip, "D", {"D011111111111010" "0"}},
      {"unknown pattern sends nothing for it", "UPDATE DipSwitch SET RingPattern = 3", &Messages::SendDip, "D",
       {"D" + thirteenOnes + "1"}},
      {"clocks trimmed, one character gets a zero",
       "UPDATE ClockDef SET Direction = ' 1 ', BCD_Type = '0', ClockA = '7 ', ClockB = '123', ClockEnabled = 1", &Messages::SendClock, "I", {"I1007123" "1"}},
      {"empty clock sends a short message", "UPDATE ClockDef SET ClockA = ''", &Messages::SendClock, "I",
       {"I0001" "0"}},
      {"events in schedule and time order, duration in two digits",
       "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup2) VALUES"
       " (2, '10:00', 123, 1, 1), (1, '23:00', 5, 4, 0), (1, '06:05', 59, 2, 0)", &Messages::SendEvents, "E",
       {"E106:05259" + std::string(16, '0'), "E123:00405" + std::string(16, '0'),
        "E210:00123" "01" + std::string(14, '0')}},
      {"later row wins a day, unclaimed days go as 0",
       "UPDATE SchedDays SET Tuesday = 1 WHERE Schedule IN (2, 5); UPDATE SchedDays SET Sunday = 1 WHERE Schedule = 4", &Messages::SendSched, "W", {"W14", "W20", "W35", "W40", "W50", "W60", "W70"}},
      {"time tones as they stand, beyond the boards too", "UPDATE TonesPG SET PageGroup16 = 1", &Messages::SendCT,
       "K", {"K1111" + std::string(11, '0') + "1"}},
      {"music inverted", "UPDATE Bgm SET PageGroup2 = 1", &Messages::SendBGM, "M",
       {"M1011" + std::string(12, '1')}},
      {"station number padded with blanks",
       "UPDATE Clid SET archnum = '101', clid_string = 'Lobby' WHERE clid_station = 7", &Messages::SendClid,
       "C07", {"C07101 Lobby          "}},
      {"description cut to fifteen",
       "UPDATE Clid SET archnum = '12345', clid_string = 'Sixteen letters!' WHERE clid_station = 96", &Messages::SendClid, "C96", {"C961234Sixteen letters"}},
      {"class of absent boards goes as 1", "UPDATE ClassService SET Service = 2", &Messages::SendClassService, "P",
       {"P2222" + std::string(12, '1')}},
  };
  t->state.SystemConfig = 0;
  for (const SendCase& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string doc = Template(t.dir.str("doc"));
    Exec(doc, c.sql);
    peer.frames.clear();
    {
      Database db = Database::Open(doc);
      if (c.send) (msgs.get()->*c.send)(db);
      else msgs->SendConfig();
    }
    std::vector<std::string> picked;
    for (const std::string& f : peer.frames)
      if (f.rfind(c.pick, 0) == 0) picked.push_back(f.substr(0, f.size() - 3));
    EXPECT_EQ(picked, c.frames);
  }
  EXPECT_FALSE(comm->transfer.TransferFailed);
  EXPECT_FALSE(comm->ExceptionsFlag);
}

TEST_F(MessagesTest, StationProgressMovesEveryThirdStationUpTo64) {
  std::vector<int> shown;
  msgs->ShowProgress = [&](const std::string& first, const std::string& second, int percent) {
    EXPECT_EQ(first, "Sending Data:");
    EXPECT_EQ(second, "CLID");
    shown.push_back(percent);
  };
  const std::pair<int, int> cases[] = {{96, 62}, {120, 64}};  // stations, last percent
  for (const auto& [stations, last] : cases) {
    const std::string doc = Template(t.dir.str("doc"));
    Exec(doc, "INSERT INTO Clid (clid_station) SELECT clid_station + 96 FROM Clid LIMIT " +
                  std::to_string(stations - 96));
    shown.clear();
    Database db = Database::Open(doc);
    msgs->SendClid(db);
    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(shown.front(), 30);
    EXPECT_EQ(shown.back(), last) << stations;
    EXPECT_EQ(shown.size(), 1u + stations / 3);
  }
}

struct ReadCase {
  const char* name;
  std::string sql;  // on the template before the tables open
  int boards;
  std::string message;
  std::string table;
  std::string rows;         // dump lines of `table` afterwards; empty: the document is the template
  std::string log;          // the log line, empty for none
  int boardsAfter = -1;     // SystemConfig afterwards, -1 unchanged
  int clocksAfter = -1;     // ClocksEnabled afterwards, -1 not looked at
};

TEST_F(MessagesTest, ReadEncodingsAndExceptions) {
  const std::string ones(16, '1'), zeros(16, '0');
  const std::string allFalse = "|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0";
  const ReadCase cases[] = {
      {"boards in both places", "", 0, "X3", "Config", "Config|3\n", "", 3},
      {"boards not a digit", "", 0, "X?", "Config", "", "ERROR 13 RECEIVING CONFIG: X?"},
      {"options inverted", "", 0, "D0111111111110" "10" "0", "DipSwitch",
       "DipSwitch|1|0|0|0|0|0|0|0|0|0|0|0|1|1|1\n", ""},
      {"pattern 01", "", 0, "D" + std::string(13, '1') + "01" "1", "DipSwitch",
       "DipSwitch|0|0|0|0|0|0|0|0|0|0|0|0|0|2|0\n", ""},
      {"pattern 00 leaves the field", "UPDATE DipSwitch SET RingPattern = 1", 0, "D" + std::string(13, '1') + "00" "1",
       "DipSwitch", "DipSwitch|0|0|0|0|0|0|0|0|0|0|0|0|0|1|0\n",
       "Ring pattern 11 do not exist: D" + std::string(13, '1') + "001"},
      {"clocks stored as they come", "", 0, "I1205 71", "ClockDef", "ClockDef|1|05| 7|1|2\n", "", -1, 1},
      {"clock switch a letter counts as 0", "UPDATE ClockDef SET ClockEnabled = 1", 0, "I001234x", "ClockDef",
       "ClockDef|0|12|34|0|0\n", "", -1, 0},
      {"event", "", 0, "E212:3040" "5" "1000000000000001", "Event",
       "Event|2|12:30|5|4|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0|1\n", ""},
      {"day of a schedule set", "", 0, "W36", "SchedDays",
       "SchedDays|1|0|0|0|0|0|0|0\nSchedDays|2|0|0|0|0|0|0|0\nSchedDays|3|0|0|0|0|0|0|0\n"
       "SchedDays|4|0|0|0|0|0|0|0\nSchedDays|5|0|0|0|0|0|0|0\nSchedDays|6|0|0|1|0|0|0|0\n",
       ""},
      {"day 0", "", 0, "W01", "SchedDays", "", "ERROR 6 RECEIVING Schedules:  W01"},
      {"time tones of one board", "", 0, "K" + ones, "TonesPG", "TonesPG|1|1|1|1|0|0|0|0|0|0|0|0|0|0|0|0\n", ""},
      {"emergency tones of two boards", "", 1, "N01" + std::string(14, '1'), "EmergencyPG",
       "EmergencyPG|0|1|1|1|1|1|1|1|0|0|0|0|0|0|0|0\n", ""},
      {"music inverted, all sixteen", "", 0, "M" + ones, "Bgm", "Bgm" + allFalse + "\n", ""},
      {"station with its blanks", "", 0, "C07101 Lobby          ", "Clid", "Clid|7|101 |Lobby          \n", ""},
      {"unknown station", "", 0, "C97101 Lobby          ", "Clid", "",
       "ERROR CLID STATION DOES NOT MATCH: C97101 Lobby          "},
      {"custom group", "", 0, "G2" "1" + std::string(14, '0') + "1", "PageGroup",
       "PageGroup|2|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0|1\nPageGroup|3" + allFalse + "\n", ""},
      {"unknown dial code", "", 0, "G7" + zeros, "PageGroup", "", "CustomPageGroup - Dialing Code does not match:  G7" + zeros},
      {"class of service, all sixteen, any row order", "UPDATE ClassService SET \"Group\" = 17 - \"Group\"", 0,
       "P0120120120120120", "ClassService", "ClassService|16|0\nClassService|15|2\nClassService|14|1\n", ""},
  };
  for (const ReadCase& c : cases) {
    SCOPED_TRACE(c.name);
    StartReceive(c.sql);
    t->state.SystemConfig = static_cast<uint8_t>(c.boards);
    t->state.ClocksEnabled = -1;
    comm->ExceptionsFlag = false;
    comm->msg_str = c.message;
    Dispatch(*msgs, c.message[0]);
    msgs->tables.Close_Tables();
    EXPECT_EQ(comm->ExceptionsFlag, !c.log.empty());
    EXPECT_EQ(t->state.SystemConfig, c.boardsAfter < 0 ? c.boards : c.boardsAfter);
    if (c.clocksAfter >= 0) {
      EXPECT_EQ(t->state.ClocksEnabled, c.clocksAfter);
    }
    EXPECT_EQ(TakeLog(), c.log.empty() ? "" : c.log + "\r\n");
    if (c.rows.empty()) {
      EXPECT_EQ(Dump(t->state.WorkDbPath), Dump(t->state.DefaultDbPath));
    } else {
      EXPECT_NE(Dump(t->state.WorkDbPath, c.table).find(c.rows), std::string::npos)
          << Dump(t->state.WorkDbPath, c.table);
    }
  }
}

// A unit that stops answering: each routine tries its first message five times; only
// K, N and I leave the transfer going.
TEST_F(MessagesTest, SilentUnitFailsTheTransferExceptAtTonesAndClocks) {
  const std::pair<Send, bool> cases[] = {
      {&Messages::SendEvents, true}, {&Messages::SendGroups, true}, {&Messages::SendSched, true},
      {&Messages::SendClid, true},   {&Messages::SendDip, true},    {&Messages::SendBGM, true},
      {&Messages::SendEmer, false},  {&Messages::SendCT, false},    {&Messages::SendClock, false},
      {&Messages::SendClassService, true}};
  const std::string doc = Template(t.dir.str("doc"));
  Exec(doc, "INSERT INTO Event (Schedule, StartTime) VALUES (1, '08:00'), (2, '09:00')");
  Database db = Database::Open(doc);
  peer.silent = true;
  int index = 0;
  for (const auto& [send, fails] : cases) {
    SCOPED_TRACE(index++);
    comm->transfer.TransferFailed = false;
    peer.frames.clear();
    (msgs.get()->*send)(db);
    EXPECT_EQ(comm->transfer.TransferFailed, fails);
    ASSERT_EQ(peer.frames.size(), 5u);
    EXPECT_EQ(peer.frames.front(), peer.frames.back());
  }
  EXPECT_FALSE(comm->ExceptionsFlag);
}

TEST_F(MessagesTest, RunTimeErrorsAreLoggedJournalledAndPassedOver) {
  struct Case {
    const char* name;
    std::string sql;
    std::function<void(Messages&, Database&)> run;
    std::string log;
    std::string routine;
  };
  const Case cases[] = {
      {"class of service without the last group's row", "DELETE FROM ClassService WHERE \"Group\" = 4",
       [](Messages& m, Database& db) { m.SendClassService(db); },
       "ERROR 3021 SENDING MESSAGE (SendClassService): P" + std::string(15, '1'), "SendClassService"},
      {"music without its table", "DROP TABLE Bgm", [](Messages& m, Database& db) { m.SendBGM(db); },
       "SENDING MESSAGE (SendBgm): ", "SendBGM"},
      {"day 0 fails at the byte conversion", "",
       [this](Messages& m, Database&) {
         StartReceive();
         comm->msg_str = "W01";
         m.ReadSched();
         m.tables.Close_Tables();
       },
       "ERROR 6 RECEIVING Schedules:  W01", "ReadSched"},
      {"class of service with a short message", "",
       [this](Messages& m, Database&) {
         StartReceive();
         comm->msg_str = "P0120";
         m.ReadClassService();
         m.tables.Close_Tables();
       },
       " RECEIVING CLASS OF SERVICE: P0120", "ReadClassService"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string doc = Template(t.dir.str("doc"));
    Exec(doc, c.sql);
    comm->ExceptionsFlag = false;
    peer.frames.clear();
    const auto before = test::JournalRows(*t).size();
    {
      Database db = Database::Open(doc);
      c.run(*msgs, db);
    }
    EXPECT_TRUE(comm->ExceptionsFlag);
    EXPECT_TRUE(peer.frames.empty());
    const std::string log = TakeLog();
    EXPECT_NE(log.find(c.log), std::string::npos) << log;
    const auto rows = test::JournalRows(*t);
    ASSERT_EQ(rows.size(), before + 1);
    EXPECT_EQ(rows.back().module, "ModComm");
    EXPECT_EQ(rows.back().routine, c.routine);
  }
}

}  // namespace
}  // namespace r6183
