// Whole transfers over a real pseudo-terminal: r6183ctl against r6183-sim.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include <sstream>

#include "database/Database.h"
#include "database/DocumentDump.h"
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

TEST(TransfersOverAPty, ReceiveSavesTheUnitsProgrammingAsADocument) {
  test::TempDir dir;
  test::CopyStagedAppDir(dir.path());
  const std::string unitDoc = dir.str("unit.mdb");
  std::filesystem::copy_file(dir.path() / "DEFAULT", unitDoc);
  SQLite::Database(unitDoc, SQLite::OPEN_READWRITE)
      .exec("UPDATE Config SET System_Config = 3; UPDATE ClockDef SET ClockA = '12', ClockB = '07';"
            "UPDATE Clid SET archnum = printf('%-4d', 100 + clid_station), clid_string = printf('Room %-10d', clid_station);"
            "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup16) VALUES (6, '17:45', 30, 2, 1);"
            "UPDATE SchedDays SET Saturday = 1 WHERE Schedule = 6; UPDATE Bgm SET PageGroup9 = 1");
  test::SimProcess sim(R6183_SIM_PATH, {"--load", unitDoc, "--revision", "2.31"});
  ASSERT_FALSE(sim.device().empty());

  const std::string out = dir.str("received.mdb"), log = dir.str("ctl.txt");
  const std::string cmd = std::string("'") + R6183CTL_PATH + "' --appdir '" + dir.str() + "' receive '" + out +
                          "' --port '" + sim.device() + "' >'" + log + "' 2>&1";
  const int status = std::system(cmd.c_str());
  EXPECT_EQ(WEXITSTATUS(status), 0) << test::ReadFile(log);
  const std::string printed = test::ReadFile(log);
  EXPECT_NE(printed.find("Receiving data... All Done 100 %"), std::string::npos) << printed;
  EXPECT_NE(printed.find("Receive Data completed successfully."), std::string::npos);
  // a full system: every field arrives as it was (the clock types are two characters)
  EXPECT_EQ(Dump(out), Dump(unitDoc));
  EXPECT_EQ(sim.Stop(), 0);
}

int Ctl(const test::TempDir& dir, const std::string& args, std::string& printed) {
  const std::string log = dir.str("ctl.txt");
  const std::string cmd = std::string("'") + R6183CTL_PATH + "' --appdir '" + dir.str() + "' " + args + " >'" + log +
                          "' 2>&1 </dev/null";
  const int status = std::system(cmd.c_str());
  printed = test::ReadFile(log);
  return WEXITSTATUS(status);
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
    ASSERT_EQ(Ctl(dir, "send '" + site + "' --port '" + sim.device() + "'", printed), 0) << printed;
    const std::string back = dir.str("back.mdb");
    ASSERT_EQ(Ctl(dir, "receive '" + back + "' --port '" + sim.device() + "'", printed), 0) << printed;
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
  EXPECT_EQ(Ctl(dir, "send '" + site + "' --port '" + sim.device() + "'", printed), 1);
  EXPECT_NE(printed.find("System may not support all programmed features."), std::string::npos) << printed;
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "tx_data.txt"));
  EXPECT_EQ(Ctl(dir, "send '" + site + "' --port '" + sim.device() + "' --yes", printed), 0) << printed;
}

}  // namespace
}  // namespace r6183
