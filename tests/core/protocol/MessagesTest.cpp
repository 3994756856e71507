#include <SQLiteCpp/Database.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>

#include "database/Database.h"
#include "database/DocumentDump.h"
#include "protocol/Messages.h"
#include "support/LinePeer.h"

namespace r6183 {
namespace {

using Send = void (Messages::*)(Database&);
using Read = void (Messages::*)();

// The stages of a send transfer, in their order; the unit's letters and read routines.
const Send kSenders[] = {&Messages::SendEvents, &Messages::SendGroups, &Messages::SendSched,
                         &Messages::SendClid,   &Messages::SendDip,    &Messages::SendBGM,
                         &Messages::SendEmer,   &Messages::SendCT,     &Messages::SendClock,
                         &Messages::SendClassService};
const std::map<char, Read> kReaders = {
    {'X', &Messages::ReadConfig}, {'D', &Messages::ReadDip},   {'I', &Messages::REadClock},
    {'E', &Messages::ReadEvent},  {'W', &Messages::ReadSched}, {'K', &Messages::ReadCT},
    {'N', &Messages::ReadEmer},   {'M', &Messages::ReadBGM},   {'C', &Messages::ReadClid},
    {'G', &Messages::ReadGroup},  {'P', &Messages::ReadClassService}};

// The document's dump, or its lines of one table.
std::string Dump(const std::string& path, const std::string& table = {}) {
  Database db = Database::Open(path);
  std::ostringstream all;
  DumpDocument(db, all);
  std::istringstream in(all.str());
  std::string line, rows;
  while (std::getline(in, line))
    if (line.rfind(table + "|", 0) == 0 || table.empty()) rows += line + "\n";
  return rows;
}

// The unit ACKs every frame (or stays silent when its replies are cleared).
class MessagesTest : public ::testing::Test, public test::LinkedComm {
 protected:
  MessagesTest() { peer.replies.assign(1000, std::string(1, kAck)); }
  // A fresh document from the template, changed by `sql`.
  std::string Document(const std::string& path, const std::string& sql = {}) {
    std::filesystem::copy_file(t->state.DefaultDbPath, path, std::filesystem::copy_options::overwrite_existing);
    if (!sql.empty()) Database::Open(path).Handle().exec(sql);
    return path;
  }
  // The frames the unit received since the last call, without CR, NUL and checksum.
  std::vector<std::string> Frames() {
    std::vector<std::string> frames;
    std::string frame;
    for (const char c : std::exchange(peer.received, ""))
      if (c == '\r') frames.push_back(frame.substr(0, frame.size() - 3)), frame.clear();
      else if (c != '\0') frame += c;
    return frames;
  }
  // Starts a receive on the template: the work copy replaced, no boards.
  void StartReceive(const std::string& sql = {}) {
    Document(t->state.WorkDbPath, sql);
    t->state.SystemConfig = 0;
    msgs.tables.Open_Tables(*t);
  }
  std::string TakeLog() {
    const std::string text = LogFile();
    comm->logFile.Open(t.dir.str("log_file.txt"));
    return text;
  }

  Messages msgs{*t, *comm};
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
    const std::string source = Document(t.dir.str("source"), FillSql(boards));
    t->state.SystemConfig = static_cast<uint8_t>(boards);
    {
      Database db = Database::Open(source);
      msgs.SendConfig();
      for (Send send : kSenders) (msgs.*send)(db);
    }
    EXPECT_FALSE(comm->transfer.TransferFailed);
    const auto frames = Frames();
    ASSERT_EQ(frames.size(), 1u + 4 + 4 + 7 + 96 + 6);  // X, 4 events, 4 groups, 7 days, 96 stations, D M N K I P

    StartReceive();
    for (const std::string& frame : frames) {
      comm->msg_str = frame;
      EXPECT_EQ(static_cast<int>(frame.size()), MessageLength(frame[0])) << frame;
      (msgs.*kReaders.at(frame[0]))();
    }
    msgs.tables.Close_Tables();
    EXPECT_FALSE(comm->ExceptionsFlag);
    EXPECT_EQ(t->state.SystemConfig, boards);
    EXPECT_EQ(t->state.ClocksEnabled, 1);
    Database::Open(source).Handle().exec(MessageEffectsSql(boards));
    EXPECT_EQ(Dump(t->state.WorkDbPath), Dump(source));
  }
  EXPECT_TRUE(test::JournalRows(*t).empty());
}

TEST_F(MessagesTest, SendEncodings) {
  const std::string ones13(13, '1');
  const struct {
    std::string sql;  // with no expansion boards
    Send send;        // null: SendConfig
    std::string pick;    // the frames that start with this
    std::string frames;  // joined by "|"
  } cases[] = {
      {"", nullptr, "X", "X0"},
      {"", &Messages::SendDip, "D", "D" + ones13 + "11" "1"},  // options inverted: all off, pattern 0
      {"UPDATE DipSwitch SET LowStn21 = 1, PriorityOverride = 1, RingPattern = 1, ExtToneSource = 1",
       &Messages::SendDip, "D", "D011111111111010" "0"},
      {"UPDATE DipSwitch SET RingPattern = 3", &Messages::SendDip, "D", "D" + ones13 + "1"},
      {"UPDATE ClockDef SET Direction = ' 1 ', BCD_Type = '0', ClockA = '7 ', ClockB = '123', ClockEnabled = 1",
       &Messages::SendClock, "I", "I1007123" "1"},  // trimmed; one character gets a leading zero
      {"UPDATE ClockDef SET ClockA = ''", &Messages::SendClock, "I", "I0001" "0"},
      {"INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup2) VALUES"
       " (2, '10:00', 123, 1, 1), (1, '23:00', 5, 4, 0), (1, '06:05', 59, 2, 0)",
       &Messages::SendEvents, "E",
       "E106:05259" + std::string(16, '0') + "|E123:00405" + std::string(16, '0') + "|E210:00123" "01" +
           std::string(14, '0')},
      {"UPDATE SchedDays SET Tuesday = 1 WHERE Schedule IN (2, 5); UPDATE SchedDays SET Sunday = 1 WHERE Schedule = 4",
       &Messages::SendSched, "W", "W14|W20|W35|W40|W50|W60|W70"},  // later row wins a day
      {"UPDATE TonesPG SET PageGroup16 = 1", &Messages::SendCT, "K", "K1111" + std::string(11, '0') + "1"},
      {"UPDATE Bgm SET PageGroup2 = 1", &Messages::SendBGM, "M", "M1011" + std::string(12, '1')},
      {"UPDATE Clid SET archnum = '101', clid_string = 'Lobby' WHERE clid_station = 7", &Messages::SendClid, "C07",
       "C07101 Lobby          "},
      {"UPDATE Clid SET archnum = '12345', clid_string = 'Sixteen letters!' WHERE clid_station = 96",
       &Messages::SendClid, "C96", "C961234Sixteen letters"},
      {"UPDATE ClassService SET Service = 2", &Messages::SendClassService, "P", "P2222" + std::string(12, '1')},
  };
  t->state.SystemConfig = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.sql);
    Database db = Database::Open(Document(t.dir.str("doc"), c.sql));
    if (c.send) (msgs.*c.send)(db);
    else msgs.SendConfig();
    std::string picked;
    for (const std::string& f : Frames())
      if (f.rfind(c.pick, 0) == 0) picked += (picked.empty() ? "" : "|") + f;
    EXPECT_EQ(picked, c.frames);
  }
  EXPECT_FALSE(comm->transfer.TransferFailed || comm->ExceptionsFlag);
}

TEST_F(MessagesTest, ReadEncodingsAndExceptions) {
  const std::string ones13(13, '1'), zeros(16, '0');
  const struct {
    std::string sql;  // on the template before the tables open
    int boards;
    std::string message;
    std::string rows;  // dump lines of their table afterwards; empty: the document is the template
    std::string log;   // the log line, empty for none
    int boardsAfter = -1;
  } cases[] = {
      {"", 0, "X3", "Config|3\n", "", 3},
      {"", 0, "X?", "", "ERROR 13 RECEIVING CONFIG: X?"},
      {"", 0, "D0111111111110" "10" "0", "DipSwitch|1|0|0|0|0|0|0|0|0|0|0|0|1|1|1\n", ""},
      {"", 0, "D" + ones13 + "01" "1", "DipSwitch|0|0|0|0|0|0|0|0|0|0|0|0|0|2|0\n", ""},
      {"UPDATE DipSwitch SET RingPattern = 1", 0, "D" + ones13 + "00" "1", "DipSwitch|0|0|0|0|0|0|0|0|0|0|0|0|0|1|0\n",
       "Ring pattern 11 do not exist: D" + ones13 + "001"},
      {"", 0, "I1205 71", "ClockDef|1|05| 7|1|2\n", ""},
      {"", 0, "E212:3040" "5" "1000000000000001", "Event|2|12:30|5|4|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0|1\n", ""},
      {"", 0, "W36", "SchedDays|5|0|0|0|0|0|0|0\nSchedDays|6|0|0|1|0|0|0|0\n", ""},
      {"", 0, "W01", "", "ERROR 6 RECEIVING Schedules:  W01"},
      {"", 0, "K" + std::string(16, '1'), "TonesPG|1|1|1|1|0|0|0|0|0|0|0|0|0|0|0|0\n", ""},
      {"", 1, "N01" + std::string(14, '1'), "EmergencyPG|0|1|1|1|1|1|1|1|0|0|0|0|0|0|0|0\n", ""},
      {"", 0, "M" + std::string(16, '1'), "Bgm|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0\n", ""},
      {"", 0, "C07101 Lobby          ", "Clid|7|101 |Lobby          \n", ""},
      {"", 0, "C97101 Lobby          ", "", "ERROR CLID STATION DOES NOT MATCH: C97101 Lobby          "},
      {"", 0, "G2" "1" + std::string(14, '0') + "1", "PageGroup|2|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0|1\n", ""},
      {"", 0, "G7" + zeros, "", "CustomPageGroup - Dialing Code does not match:  G7" + zeros},
      {"UPDATE ClassService SET \"Group\" = 17 - \"Group\"", 0, "P0120120120120120",
       "ClassService|16|0\nClassService|15|2\nClassService|14|1\n", ""},  // any row order
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.message);
    StartReceive(c.sql);
    t->state.SystemConfig = static_cast<uint8_t>(c.boards);
    comm->ExceptionsFlag = false;
    comm->msg_str = c.message;
    (msgs.*kReaders.at(c.message[0]))();
    msgs.tables.Close_Tables();
    EXPECT_EQ(comm->ExceptionsFlag, !c.log.empty());
    EXPECT_EQ(t->state.SystemConfig, c.boardsAfter < 0 ? c.boards : c.boardsAfter);
    EXPECT_EQ(TakeLog(), c.log.empty() ? "" : c.log + "\r\n");
    if (c.rows.empty()) {
      EXPECT_EQ(Dump(t->state.WorkDbPath), Dump(t->state.DefaultDbPath));
    } else {
      const std::string table = Dump(t->state.WorkDbPath, c.rows.substr(0, c.rows.find('|')));
      EXPECT_NE(table.find(c.rows), std::string::npos) << table;
    }
  }
}

// A unit that stops answering: each routine tries its first message five times; only
// K, N and I leave the transfer going.
TEST_F(MessagesTest, SilentUnitFailsTheTransferExceptAtTonesAndClocks) {
  const std::string failing = "EGWCDMP";
  Database db = Database::Open(Document(t.dir.str("doc"), "INSERT INTO Event (Schedule, StartTime) VALUES (1, '8')"));
  peer.replies.clear();
  for (Send send : kSenders) {
    comm->transfer.TransferFailed = false;
    (msgs.*send)(db);
    const auto frames = Frames();
    ASSERT_EQ(frames.size(), 5u);
    SCOPED_TRACE(frames.front());
    EXPECT_EQ(frames.front(), frames.back());
    EXPECT_EQ(comm->transfer.TransferFailed, failing.find(frames.front()[0]) != std::string::npos);
  }
  EXPECT_FALSE(comm->ExceptionsFlag);
}

}  // namespace
}  // namespace r6183
