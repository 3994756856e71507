// Whole transfers over a real pseudo-terminal: r6183ctl against r6183-sim.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include <ctime>
#include <optional>
#include <sstream>

#include "database/Database.h"
#include "database/DocumentDump.h"
#include "CtlRun.h"
#include "support/SimProcess.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

std::string Dump(const std::string& path) {
  Database db = Database::Open(path, {.readOnly = true});
  std::ostringstream out;
  DumpDocument(db, out);
  return out.str();
}

std::string AbsentGroupsCleared(int boards) {
  std::string sql;
  for (const char* table : {"PageGroup", "Event", "Bgm", "EmergencyPG", "TonesPG"})
    for (int g = (boards + 1) * 4 + 1; g <= 16; ++g)
      sql += std::string("UPDATE ") + table + " SET PageGroup" + std::to_string(g) + " = 0;";
  return sql;
}

// The largest programming for each board count goes to the unit and comes back; the only
// differences are the ones the messages themselves make, each named below.
TEST(TransfersOverAPty, SendThenReceiveGivesTheSameDocumentForEveryBoardCount) {
  for (int boards = 0; boards <= 3; ++boards) {
    SCOPED_TRACE(boards);
    test::TempDir dir;
    test::CopyStagedAppDir(dir.path());
    const std::string site = dir.str("site.mdb"), expected = dir.str("expected.mdb");
    std::filesystem::copy_file(dir.path() / "DEFAULT", site);
    SQLite::Database(site, SQLite::OPEN_READWRITE)
        .exec("UPDATE Config SET System_Config = " + std::to_string(boards) + ";"
              "UPDATE ClockDef SET ClockEnabled = 1, ClockA = '7', ClockB = '10', Direction = '1', BCD_Type = '3';"
              "UPDATE Clid SET archnum = CAST(200 + clid_station AS TEXT), clid_string = 'Room ' || clid_station;"
              "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 255)"
              " INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1, PageGroup4)"
              " SELECT i % 6 + 1, printf('%02d:%02d', i / 12, (i * 7) % 60), i % 59 + 1, i % 4 + 1, 1, i % 2 FROM n;"
              "UPDATE PageGroup SET PageGroup2 = 1, PageGroup3 = DialCode % 2;"
              "UPDATE SchedDays SET Monday = (Schedule = 1), Tuesday = (Schedule = 2), Sunday = (Schedule = 6);"
              "UPDATE Bgm SET PageGroup1 = 1, PageGroup3 = 1, PageGroup16 = 1; UPDATE TonesPG SET PageGroup2 = 0;"
              "UPDATE Event SET PageGroup13 = 1 WHERE Schedule = 3; UPDATE PageGroup SET PageGroup9 = 1;"
              "UPDATE DipSwitch SET LowStn22 = 1, PrivacyTone = 1, RingPattern = 2, ExtToneSource = 1;"
              "UPDATE ClassService SET Service = \"Group\" % 3");
    std::filesystem::copy_file(site, expected);
    const std::string first = std::to_string((boards + 1) * 24 + 1), group = std::to_string((boards + 1) * 4 + 1);
    SQLite::Database(expected, SQLite::OPEN_READWRITE)
        .exec(// numbers and descriptions come back padded with blanks to 4 and 15 characters
              "UPDATE Clid SET archnum = printf('%-4s', archnum), clid_string = printf('%-15s', clid_string);"
              // a one-character clock type comes back with a leading 0
              "UPDATE ClockDef SET ClockA = '07';"
              // stations of absent boards are not sent: they come back blank
              "UPDATE Clid SET archnum = '', clid_string = '' WHERE clid_station >= " + first + ";"
              // service groups of absent boards come back with class 1
              "UPDATE ClassService SET Service = 1 WHERE \"Group\" >= " + group + ";" +
              // page groups of absent boards come back cleared (and tones never had them)
              AbsentGroupsCleared(boards));
    test::SimProcess sim(R6183_SIM_PATH, {"--revision", "2.31"});
    ASSERT_FALSE(sim.device().empty());
    std::string printed;
    ASSERT_EQ(test::Ctl(dir, "send '" + site + "' --port '" + sim.device() + "'", printed), 0) << printed;
    const std::string back = dir.str("back.mdb");
    ASSERT_EQ(test::Ctl(dir, "receive '" + back + "' --port '" + sim.device() + "'", printed), 0) << printed;
    EXPECT_NE(printed.find("Receiving data... All Done 100 %\n"), std::string::npos) << printed;
    EXPECT_NE(printed.find("Receive Data completed successfully."), std::string::npos);
    EXPECT_EQ(Dump(back), Dump(expected));
  }
}

TEST(TransfersOverAPty, SendToAnOldUnitNeedsYes) {
  test::TempDir dir;
  test::CopyStagedAppDir(dir.path());
  const std::string site = dir.str("site.mdb");
  std::filesystem::copy_file(dir.path() / "DEFAULT", site);
  test::SimProcess sim(R6183_SIM_PATH, {"--revision", "1.50"});
  std::string printed;
  EXPECT_EQ(test::Ctl(dir, "send '" + site + "' --port '" + sim.device() + "'", printed), 1);
  EXPECT_NE(printed.find("System may not support all programmed features."), std::string::npos) << printed;
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "tx_data.txt"));
  EXPECT_EQ(test::Ctl(dir, "send '" + site + "' --port '" + sim.device() + "' --yes", printed), 0) << printed;
}


// The template, as it comes back from a unit, with a station of its own and, when `dialCode` is given, its last page group
// under that code with one more group in it.
std::string UnitDocument(const test::TempDir& dir, const std::string& name, std::optional<int> dialCode) {
  const std::string doc = dir.str(name);
  std::filesystem::copy_file(dir.path() / "DEFAULT", doc);
  SQLite::Database db(doc, SQLite::OPEN_READWRITE);
  // as the messages carry them: stations padded with blanks, clock types of two characters
  db.exec("UPDATE Clid SET archnum = printf('%-4s', archnum), clid_string = printf('%-15s', clid_string)"
          " WHERE clid_station <= 24;"
          "UPDATE Clid SET archnum = '301 ', clid_string = 'Front office   ' WHERE clid_station = 1;"
          "UPDATE ClockDef SET ClockA = '01', ClockB = '01'");
  if (dialCode)
    db.exec("UPDATE PageGroup SET PageGroup1 = 1 - PageGroup1, DialCode = " + std::to_string(*dialCode) +
            " WHERE DialCode = (SELECT MAX(DialCode) FROM PageGroup)");
  return doc;
}

// Receive from units that do what the tool does not expect; what r6183ctl printed, the
// transfer's log, and the document received tell what the tool made of it.
TEST(TransfersOverAPty, ReceiveCopesWithWhatTheUnitSends) {
  enum Expect { Nothing, Template, Unit, StationOnly };  // the document received
  struct Case {
    const char* name;
    std::vector<std::string> unit;
    std::optional<int> dialCode;
    int exit;
    std::vector<std::string> printed, logged;  // in this order
    const char* notLogged;
    Expect received;
  };
  const char* ok = "Receive Data completed successfully.";
  const char* notice = "Receiving exceptions have occurred. Check the Log file for more information.";
  const Case cases[] = {
      {"A first", {"--order", ""}, {}, 0, {ok}, {"Valid :  A"}, "NACK", Template},
      // a revision compares as text, with the blank before a one-digit major: 20.00 is newer, 2.31 is not
      {"newer unit's unknown letters", {"--unknown-letters", "--revision", "20.00"}, {}, 0, {ok},
       {"1 - NACK:  YX0000", "Ignore Message Due to Rev Conflicts", "Valid :  X"}, "2 - NACK", Unit},
      {"unknown letters from a 2.00 unit", {"--unknown-letters", "--revision", "2.00"}, {}, 1,
       {"Error receiving data"}, {"1 - NACK:  YX0000", "5 - NACK:  YX0000"}, "Ignore Message", Nothing},
      {"unknown dial code", {}, 7, 0, {notice, ok},
       {"CustomPageGroup - Dialing Code does not match:  G71"}, "NACK", StationOnly},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    test::TempDir dir;
    test::CopyStagedAppDir(dir.path());
    const std::string unit = UnitDocument(dir, "unit.mdb", c.dialCode), out = dir.str("received.mdb");
    std::vector<std::string> args{"--load", unit};
    args.insert(args.end(), c.unit.begin(), c.unit.end());
    test::SimProcess sim(R6183_SIM_PATH, args);
    std::string printed;
    EXPECT_EQ(test::Ctl(dir, "receive '" + out + "' --port '" + sim.device() + "'", printed), c.exit) << printed;
    std::size_t at = 0;
    for (const auto& text : c.printed) {
      at = printed.find(text, at);
      EXPECT_NE(at, std::string::npos) << text << " in order in\n" << printed;
    }
    const std::string log = test::ReadFile(dir.path() / "log_file.txt");
    at = 0;
    for (const auto& text : c.logged) {
      at = log.find(text, at);
      EXPECT_NE(at, std::string::npos) << text << " in order in\n" << log;
    }
    EXPECT_EQ(log.find(c.notLogged), std::string::npos) << log;
    switch (c.received) {
      case Nothing: EXPECT_FALSE(std::filesystem::exists(out)); break;
      case Template: EXPECT_EQ(Dump(out), Dump(dir.str("DEFAULT"))); break;
      case Unit: EXPECT_EQ(Dump(out), Dump(unit)); break;
      // the group of the unknown code stays as the template has it; the rest arrives
      case StationOnly: EXPECT_EQ(Dump(out), Dump(UnitDocument(dir, "expected.mdb", {}))); break;
    }
  }
}

// Send to units that fall silent: at S nothing goes, at K the transfer goes on without it.
TEST(TransfersOverAPty, SendToAUnitThatFallsSilent) {
  struct Case {
    const char* ignored;
    int exit;
    const char* printed;
    std::string sentLetters, receivedLetters;  // tx_data.txt after its first line; the unit's record
  };
  const Case cases[] = {
      {"S", 1, "Error sending data to R-6183.", "S", "H"},
      {"K", 0, "Send data completed successfully.", "SXGWCDMNKIPA", "HSXGWCDMNIPA"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.ignored);
    test::TempDir dir;
    test::CopyStagedAppDir(dir.path());
    const std::string site = dir.str("site.mdb"), record = dir.str("record.txt");
    std::filesystem::copy_file(dir.path() / "DEFAULT", site);
    test::SimProcess sim(R6183_SIM_PATH, {"--ignore", c.ignored, "--record", record});
    std::string printed;
    EXPECT_EQ(test::Ctl(dir, "send '" + site + "' --port '" + sim.device() + "'", printed), c.exit) << printed;
    EXPECT_NE(printed.find(c.printed), std::string::npos) << printed;
    ASSERT_EQ(sim.Stop(), 0);
    std::istringstream tx(test::ReadFile(dir.path() / "tx_data.txt")), rec(test::ReadFile(record));
    std::string line, sent, received;
    std::getline(tx, line);
    EXPECT_EQ(line.rfind("Date - Time - ", 0), 0u) << line;
    // one letter for each run of messages of that letter
    while (std::getline(tx, line))
      if (sent.empty() || sent.back() != line[0]) sent += line[0];
    while (std::getline(rec, line))
      if (received.empty() || received.back() != line[0]) received += line[0];
    EXPECT_EQ(sent, c.sentLetters);
    EXPECT_EQ(received, c.receivedLetters);
  }
}

// The unit's clock: one that makes no sense is set from the PC's and read again; "Update"
// sends the daylight switch only to a unit that has one.
TEST(TransfersOverAPty, DateTimeReadsAndSetsTheUnitsClock) {
  auto today = [] {
    const std::time_t now = std::time(nullptr);
    char text[16];
    std::strftime(text, sizeof text, "Date=%m/%d/%y", std::localtime(&now));
    return std::string(text);
  };
  test::TempDir dir;
  test::CopyStagedAppDir(dir.path());
  std::string printed;
  {
    test::SimProcess sim(R6183_SIM_PATH, {"--bad-clock", "--clock-offset", "-86400"});
    const std::string before = today();
    EXPECT_EQ(test::Ctl(dir, "datetime --port '" + sim.device() + "'", printed), 0) << printed;
    EXPECT_TRUE(printed.find(before) != std::string::npos || printed.find(today()) != std::string::npos) << printed;
  }
  struct Case {
    std::vector<std::string> unit;
    const char* daylight;  // as read back after the update
    const char* sent;      // what the update sent, in order
  };
  const Case cases[] = {{{"--no-daylight"}, "Daylight=not supported", "ZQT"}, {{}, "Daylight=on", "ZQUT"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.sent);
    const std::string record = dir.str("record.txt");
    std::vector<std::string> args{"--record", record};
    args.insert(args.end(), c.unit.begin(), c.unit.end());
    test::SimProcess sim(R6183_SIM_PATH, args);
    EXPECT_EQ(test::Ctl(dir, "datetime --port '" + sim.device() + "' --set '02/29/24 13:45:00' --dst on", printed), 0)
        << printed;
    ASSERT_EQ(test::Ctl(dir, "datetime --port '" + sim.device() + "'", printed), 0) << printed;
    EXPECT_NE(printed.find("Date=02/29/24\nTime=13:45:0"), std::string::npos) << printed;
    EXPECT_NE(printed.find(c.daylight), std::string::npos) << printed;
    ASSERT_EQ(sim.Stop(), 0);
    std::istringstream rec(test::ReadFile(record));
    std::string line, letters;
    while (std::getline(rec, line)) letters += line.substr(0, 1);
    EXPECT_EQ(letters, std::string(c.sent) + "ZQ");
  }
  // a day the month does not have goes to the unit as typed, as the window would send it
  const std::string record = dir.str("record-0431.txt");
  test::SimProcess sim(R6183_SIM_PATH, {"--record", record});
  EXPECT_EQ(test::Ctl(dir, "datetime --port '" + sim.device() + "' --set '04/31/25 10:20:30'", printed), 0) << printed;
  ASSERT_EQ(sim.Stop(), 0);
  EXPECT_NE(test::ReadFile(record).find("T102030043125\n"), std::string::npos) << test::ReadFile(record);
}

}  // namespace
}  // namespace r6183
