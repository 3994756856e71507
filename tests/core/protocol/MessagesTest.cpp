#include <SQLiteCpp/Database.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>

#include "database/Database.h"
#include "database/DocumentDump.h"
#include "protocol/Messages.h"
#include "shell/Utility.h"
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

std::string Dump(const std::string& path) {
  Database db = Database::Open(path);
  std::ostringstream all;
  DumpDocument(db, all);
  return all.str();
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

  Messages msgs{*t, *comm};
};

// What the round trip with the simulated unit leaves out: fewer boards, and what the
// messages change on the way (padding, the clock's leading zero, absent boards' groups).
TEST_F(MessagesTest, RoundTripWithFewerBoardsChangesOnlyPaddingClocksAndAbsentGroups) {
  for (int boards = 0; boards <= 2; ++boards) {
    SCOPED_TRACE("boards " + std::to_string(boards));
    const std::string source = Document(
        t.dir.str("source"),
        "UPDATE Config SET System_Config = " + std::to_string(boards) + ";"
        "UPDATE ClockDef SET ClockEnabled = 1, ClockA = '5', ClockB = '12', Direction = '1', BCD_Type = '2';"
        "UPDATE Clid SET archnum = clid_station, clid_string = 'Room ' || clid_station WHERE clid_station <= 30;"
        "UPDATE TonesPG SET PageGroup1 = 0, PageGroup6 = 1, PageGroup13 = 1;"
        "UPDATE EmergencyPG SET PageGroup8 = 1, PageGroup16 = 1; UPDATE ClassService SET Service = \"Group\" % 3;");
    t->state.SystemConfig = static_cast<uint8_t>(boards);
    Database db = Database::Open(source);
    msgs.SendConfig();
    for (Send send : kSenders) (msgs.*send)(db);
    const auto frames = Frames();
    ASSERT_EQ(frames.size(), 1u + 4 + 7 + 96 + 6);  // X, 4 groups, 7 days, 96 stations, D M N K I P

    StartReceive();
    for (const std::string& frame : frames) comm->msg_str = frame, (msgs.*kReaders.at(frame[0]))();
    msgs.tables.Close_Tables();
    EXPECT_FALSE(comm->ExceptionsFlag || comm->transfer.TransferFailed);
    EXPECT_EQ(t->state.SystemConfig, boards);
    EXPECT_EQ(t->state.ClocksEnabled, 1);
    std::string effects =  // the clock's leading zero, the filling blanks
        "UPDATE ClockDef SET ClockA = '05'; UPDATE Clid SET archnum = substr(archnum || '    ', 1, 4),"
        " clid_string = substr(clid_string || '               ', 1, 15);";
    for (int g = (boards + 1) * 4 + 1; g <= 16; ++g) {  // the groups of absent boards: no tones, class 1
      const std::string n = std::to_string(g);
      effects += "UPDATE TonesPG SET PageGroup" + n + " = 0; UPDATE EmergencyPG SET PageGroup" + n +
                 " = 0; UPDATE ClassService SET Service = 1 WHERE \"Group\" = " + n + ";";
    }
    Database::Open(source).Handle().exec(effects);
    EXPECT_EQ(Dump(t->state.WorkDbPath), Dump(source));
  }
  EXPECT_TRUE(test::JournalRows(*t).empty());
}

TEST_F(MessagesTest, SendEncodings) {
  const struct {
    std::string sql;  // with no expansion boards
    Send send;
    std::string pick;    // the frames that start with this
    std::string frames;  // joined by "|"
  } cases[] = {
      {"UPDATE DipSwitch SET LowStn21 = 1, PriorityOverride = 1, RingPattern = 1, ExtToneSource = 1",
       &Messages::SendDip, "D", "D011111111111010" "0"},
      {"UPDATE DipSwitch SET RingPattern = 3", &Messages::SendDip, "D", "D" + std::string(13, '1') + "1"},
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
  };
  t->state.SystemConfig = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.sql);
    Database db = Database::Open(Document(t.dir.str("doc"), c.sql));
    (msgs.*c.send)(db);
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
    std::string message;
    std::string rows;  // lines of the dump afterwards; empty: the document is the template
    std::string log;   // the log line, empty for none
  } cases[] = {
      {"", "X?", "", "ERROR 13 RECEIVING CONFIG: X?"},
      {"", "D0111111111110" "10" "0", "DipSwitch|1|0|0|0|0|0|0|0|0|0|0|0|1|1|1\n", ""},
      {"", "D" + ones13 + "01" "1", "DipSwitch|0|0|0|0|0|0|0|0|0|0|0|0|0|2|0\n", ""},
      {"UPDATE DipSwitch SET RingPattern = 1", "D" + ones13 + "00" "1", "DipSwitch|0|0|0|0|0|0|0|0|0|0|0|0|0|1|0\n",
       "Ring pattern 11 do not exist: D" + ones13 + "001"},
      {"", "I1205 71", "ClockDef|1|05| 7|1|2\n", ""},
      {"", "W36", "SchedDays|5|0|0|0|0|0|0|0\nSchedDays|6|0|0|1|0|0|0|0\n", ""},
      {"", "W01", "", "ERROR 6 RECEIVING Schedules:  W01"},
      {"", "N01" + std::string(14, '1'), "EmergencyPG|0|1|1|1|0|0|0|0|0|0|0|0|0|0|0|0\n", ""},
      {"", "C97101 Lobby          ", "", "ERROR CLID STATION DOES NOT MATCH: C97101 Lobby          "},
      // the line's bytes become the document's UTF-8; the log is UTF-8 as well
      {"", "C07" "1\xE9  " "Caf\xE9 cr\xE8me \x80 ", "Clid|7|1é  |Café crème € \n", ""},
      {"", "C97" "101 " "R\xE9" "ception\x85   ", "", "ERROR CLID STATION DOES NOT MATCH: C97101 Réception…   "},
      {"", "G2" "1" + std::string(14, '0') + "1", "PageGroup|2|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0|1\n", ""},
      {"", "G7" + zeros, "", "CustomPageGroup - Dialing Code does not match:  G7" + zeros},
      {"UPDATE ClassService SET \"Group\" = 17 - \"Group\"", "P0120120120120120",
       "ClassService|16|0\nClassService|15|2\nClassService|14|1\n", ""},  // any row order
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.message);
    StartReceive(c.sql);
    comm->logFile.Open(t.dir.str("log_file.txt"));
    comm->ExceptionsFlag = false;
    comm->msg_str = c.message;
    (msgs.*kReaders.at(c.message[0]))();
    msgs.tables.Close_Tables();
    EXPECT_EQ(comm->ExceptionsFlag, !c.log.empty());
    EXPECT_EQ(t->state.SystemConfig, 0);
    EXPECT_EQ(LogFile(), c.log.empty() ? "" : c.log + "\r\n");
    const std::string dump = Dump(t->state.WorkDbPath);
    if (c.rows.empty()) EXPECT_EQ(dump, Dump(t->state.DefaultDbPath));
    else EXPECT_NE(dump.find(c.rows), std::string::npos) << dump;
  }
}

// The three checksum digits of a frame, summed here byte by byte without the tool's help.
std::string Sum(const std::string& bytes) {
  unsigned sum = 0;
  for (unsigned char c : bytes) sum += c;
  const char* hex = "0123456789ABCDEF";
  return {hex[(sum >> 8) & 15], hex[(sum >> 4) & 15], hex[sum & 15]};
}

// Each character of a station's number and description is one byte of Windows-1252 on
// the wire and in the checksum, and fills its field as one; the data file keeps the
// frame as UTF-8 text.
TEST_F(MessagesTest, StationFramesCarryOneByteACharacter) {
  const struct {
    std::string archnum, description;  // as the document holds them
    std::string payload;               // written by hand: station 7, number, description
  } cases[] = {
      {"101", "Café crème", "C07" "101 " "Caf\xE9 cr\xE8me     "},
      {"1é", "ÀÉÎÕÜàéîõüçñßøå", "C07" "1\xE9  " "\xC0\xC9\xCE\xD5\xDC\xE0\xE9\xEE\xF5\xFC\xE7\xF1\xDF\xF8\xE5"},
      {"€12", "Œuvre “Žižek”ÿÆ!", "C07" "\x80" "12 " "\x8Cuvre \x93\x8Ei\x9E" "ek\x94\xFF\xC6"},  // cut at 15
      {"7", "Straße – Büro", "C07" "7   " "Stra\xDF" "e \x96 B\xFCro  "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.description);
    Database db = Database::Open(Document(t.dir.str("doc"), "UPDATE Clid SET archnum = '" + c.archnum +
                                                              "', clid_string = '" + c.description +
                                                              "' WHERE clid_station = 7"));
    comm->dataFile.Open(t.dir.str("tx_data.txt"));
    toolEnd->ClearWritten();
    msgs.SendClid(db);
    const std::string frame = c.payload + Sum(c.payload) + "\r" + std::string(1, '\0');
    ASSERT_EQ(c.payload.size(), 22u);
    EXPECT_NE(toolEnd->Written().find(frame), std::string::npos) << toolEnd->Written();
    const std::string data = DataFile();
    const std::string line = "C07" + PadRight(c.archnum, 4) + PadRight(c.description, 15) + Sum(c.payload);
    EXPECT_NE(data.find("\r\n" + line + "\r\n"), std::string::npos) << data;
  }
  EXPECT_FALSE(comm->transfer.TransferFailed || comm->ExceptionsFlag);
}

// A station whose text the line cannot carry is not sent at all: the routine stops
// there with an exception for the log, the journal tells why, and the transfer goes on.
TEST_F(MessagesTest, AStationTheLineCannotCarryIsNotSent) {
  Database db = Database::Open(Document(
      t.dir.str("doc"), "UPDATE Clid SET clid_string = 'Ωmega' WHERE clid_station = 3"));
  msgs.SendClid(db);
  const auto frames = Frames();
  ASSERT_EQ(frames.size(), 2u);
  EXPECT_EQ(frames.back().substr(0, 3), "C02");
  EXPECT_TRUE(comm->ExceptionsFlag);
  EXPECT_FALSE(comm->transfer.TransferFailed);
  EXPECT_NE(LogFile().find("ERROR 5 SENDING MESSAGE (SendClid): C02"), std::string::npos);
  const auto rows = test::JournalRows(*t);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].number, 5);
  EXPECT_EQ(rows[0].routine, "SendClid");
  EXPECT_NE(rows[0].description.find("\"Ω\""), std::string::npos) << rows[0].description;
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
