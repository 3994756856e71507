// r6183ctl verify against r6183-sim on a pseudo-terminal: what the messages themselves
// change (blanks, clock digits, absent boards) counts as equal, what another Send changed
// does not; every successful transfer leaves its backup.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include "CtlRun.h"
#include "support/SimProcess.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

TEST(VerifyOverAPty, TheUnitHoldsWhatWasSentUntilAnotherSendChangesIt) {
  test::TempDir dir;
  test::CopyStagedAppDir(dir.path());
  const std::string site = dir.str("site.mdb"), other = dir.str("other.mdb");
  std::filesystem::copy_file(test::StagedAppDir() / "sample.mdb", site);
  // beyond the sample's three boards: nothing of it goes to the unit
  SQLite::Database(site, SQLite::OPEN_READWRITE)
      .exec("UPDATE Clid SET archnum = '9999' WHERE clid_station = 90; UPDATE ClockDef SET ClockA = '3'");
  std::filesystem::copy_file(site, other);
  SQLite::Database(other, SQLite::OPEN_READWRITE)
      .exec("UPDATE Clid SET archnum = '205 ' WHERE clid_station = 5; UPDATE DipSwitch SET QueueTone = 1;"
            "DELETE FROM Event WHERE Schedule = 1 AND StartTime = '08:50'");
  test::SimProcess sim(R6183_SIM_PATH, {});
  ASSERT_FALSE(sim.device().empty());
  const std::string port = " --port '" + sim.device() + "'";
  std::string out;
  ASSERT_EQ(test::Ctl(dir, "send '" + site + "'" + port, out, false), 0) << out;
  EXPECT_EQ(test::Ctl(dir, "verify '" + site + "'" + port, out, false), 0);
  EXPECT_EQ(out, "the unit holds the programming of " + site + "\n");

  ASSERT_EQ(test::Ctl(dir, "send '" + other + "'" + port, out, false), 0) << out;
  EXPECT_EQ(test::Ctl(dir, "verify '" + site + "'" + port, out, false), 1);
  EXPECT_EQ(out, "the unit differs from " + site +
                     ":\nStation 5: Arch 105 -> 205\nSchedule 1: event 08:50 removed\nOption Queue Tone: off -> on\n");

  ASSERT_EQ(test::Ctl(dir, "backups", out, false), 0);
  std::vector<std::string> kinds;
  for (std::size_t at = 0; (at = out.find('\t', at)) != std::string::npos; at = out.find('\n', at))
    kinds.push_back(out.substr(at + 1, out.find('\t', at + 1) - at - 1));
  EXPECT_EQ(std::count(kinds.begin(), kinds.end(), "send"), 2) << out;
  EXPECT_EQ(std::count(kinds.begin(), kinds.end(), "receive"), 2) << out;
}

}  // namespace
}  // namespace r6183
