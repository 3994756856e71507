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

}  // namespace
}  // namespace r6183
