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

TEST(TransfersOverAPty, SendThenReceiveGivesTheSameDocument) {
  test::TempDir dir;
  test::CopyStagedAppDir(dir.path());
  const std::string site = dir.str("site.mdb");
  std::filesystem::copy_file(dir.path() / "DEFAULT", site);
  SQLite::Database(site, SQLite::OPEN_READWRITE)
      .exec("UPDATE Config SET System_Config = 3; UPDATE ClockDef SET ClockEnabled = 1, ClockA = '02', ClockB = '09';"
            "UPDATE Clid SET archnum = printf('%04d', 5000 + clid_station), clid_string = printf('Class %-9d', clid_station);"
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 39)"
            " INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1, PageGroup13)"
            " SELECT i % 6 + 1, printf('%02d:%02d', 6 + i % 12, i), i % 59 + 1, i % 4 + 1, 1, i % 2 FROM n;"
            "UPDATE SchedDays SET Monday = (Schedule = 1), Tuesday = (Schedule = 2); UPDATE Bgm SET PageGroup14 = 1;"
            "UPDATE DipSwitch SET PrivacyTone = 1, RingPattern = 1");
  test::SimProcess sim(R6183_SIM_PATH, {"--revision", "2.31"});
  ASSERT_FALSE(sim.device().empty());
  std::string printed;
  EXPECT_EQ(Ctl(dir, "send '" + site + "' --port '" + sim.device() + "'", printed), 0) << printed;
  EXPECT_NE(printed.find("Sending Data: CLID 30 %"), std::string::npos) << printed;
  EXPECT_NE(printed.find("Send data completed successfully."), std::string::npos);
  const std::string back = dir.str("back.mdb");
  EXPECT_EQ(Ctl(dir, "receive '" + back + "' --port '" + sim.device() + "'", printed), 0) << printed;
  EXPECT_EQ(Dump(back), Dump(site));
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
