// r6183ctl's schedule commands on a document on disk: the windows' rules and refusals.
#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "CtlTest.h"

namespace r6183::test {
namespace {

class ScheduleCommands : public CtlTest {
 protected:
  ScheduleCommands() {
    fs::copy_file(dir.path() / "app/DEFAULT", dir.path() / "doc.mdb");
    SQLite::Database(dir.str("doc.mdb"), SQLite::OPEN_READWRITE)
        .exec("UPDATE Config SET System_Config = 1; UPDATE SchedDays SET Monday = 1 WHERE Schedule = 1;"
              "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup2, PageGroup8) VALUES"
              " (1, '08:15', 5, 2, 1, 0), (1, '07:00', 12, 4, 1, 1), (3, '12:00', 3, 1, 1, 0)");
  }
  // r6183ctl COMMAND doc.mdb ARGS
  Result Run(const std::string& command, const std::string& args = "") { return Ctl(command, "doc.mdb", args); }
  std::string Doc() const { return Bytes("doc.mdb"); }
};

TEST_F(ScheduleCommands, EventsListsTheLinesOfTheScheduleWindows) {
  EXPECT_EQ(Run("events", "--schedule 1").out, "07:00\tRelay 4\t12 sec\t2,8\n08:15\tRelay 2\t5 sec\t2\n");
  const Result all = Run("events");
  EXPECT_EQ(all.code, 0) << all.err;
  EXPECT_EQ(all.out,
            "Master Clock Schedule 1\n07:00\tRelay 4\t12 sec\t2,8\n08:15\tRelay 2\t5 sec\t2\n"
            "Master Clock Schedule 2\nMaster Clock Schedule 3\n12:00\tRelay 1\t3 sec\t2\n"
            "Master Clock Schedule 4\nMaster Clock Schedule 5\nMaster Clock Schedule 6\n");
}

TEST_F(ScheduleCommands, ARefusedChangeSaysWhyAndLeavesTheFileAsItWas) {
  const struct {
    std::string command, args, err;
  } cases[] = {
      {"event add", "--schedule 1 --time 7:00", "Event: Cannot save current event:\n"
                                                 "- An event at this 'Start Time' is already scheduled.\n"},
      {"event add", "--schedule 1 --time 1:2:3", "Add Event: Invalid 'Start Time' entry\n"},
      {"event add", "--schedule 1 --time 2400", "Add Event: Invalid 'Start Time' entry\n"},
      {"event add", "--schedule 1 --time 9 --duration 60",
       "Event: Cannot save current event:\n- 'Tone Duration' must be between 1-59 seconds.\n"},
      {"event add", "--schedule 2 --time 9 --duration 0",
       "Event: Cannot save current event:\n- 'Tone Duration' must be between 1-59 seconds.\n"
       "- Must select a 'Page Group'.\n"},
      {"event add", "--schedule 1 --time 9 --groups 3,9",
       "r6183ctl: page group 9 is not in this system: its 2 boards have groups 1 to 8\n"},
      {"event delete", "--schedule 1 --time 9:00", "r6183ctl: schedule 1 has no event at 09:00\n"},
      {"days", "--schedule 2 --set Sun,Mon", "r6183ctl: Monday is active in schedule 1\n"},
  };
  const std::string before = Doc();
  for (const auto& c : cases) {
    const Result r = Run(c.command, c.args);
    EXPECT_EQ(r.code, 1) << c.args;
    EXPECT_EQ(r.err, c.err) << c.args;
    EXPECT_EQ(r.out, "") << c.args;
    EXPECT_TRUE(Doc() == before) << c.args;
  }
}

TEST_F(ScheduleCommands, AddDeleteAndDaysChangeTheDocumentAsTheWindowsWould) {
  Result r = Run("event add", "--schedule 1 --time 9");  // a copy of the first event at 00:09
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out, "00:09\tRelay 4\t12 sec\t2,8\n");
  r = Run("event add", "--schedule 2 --time 7:5 --relay 3 --duration 30 --groups 1,8");
  EXPECT_EQ(r.out, "07:05\tRelay 3\t30 sec\t1,8\n") << r.err;
  EXPECT_EQ(Run("event delete", "--schedule 1 --time 8:15").code, 0);
  EXPECT_EQ(Run("days", "--schedule 2 --set tue,Saturday").code, 0);
  EXPECT_EQ(Run("days", "--schedule 2").out, "Tue,Sat\n");
  EXPECT_EQ(Run("events").out,
            "Master Clock Schedule 1\n00:09\tRelay 4\t12 sec\t2,8\n07:00\tRelay 4\t12 sec\t2,8\n"
            "Master Clock Schedule 2\n07:05\tRelay 3\t30 sec\t1,8\nMaster Clock Schedule 3\n"
            "12:00\tRelay 1\t3 sec\t2\nMaster Clock Schedule 4\nMaster Clock Schedule 5\nMaster Clock Schedule 6\n");
  EXPECT_EQ(Run("check").out, "valid\nEventCount=4\nSystemConfig=1\nClocksEnabled=0\nRev=02.00\n");
  EXPECT_EQ(Run("days", "--schedule 2 --set \"\"").code, 0);
  EXPECT_EQ(Run("days", "--schedule 2").out, "\n");
}

TEST_F(ScheduleCommands, TheLastEventSlotIsRefused) {
  SQLite::Database(dir.str("doc.mdb"), SQLite::OPEN_READWRITE)
      .exec("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 251)"
            " INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1)"
            " SELECT 4, printf('%02d:%02d', i / 60, i % 60), 1, 1, 1 FROM n");
  EXPECT_EQ(Run("event add", "--schedule 5 --time 9 --groups 1").code, 0) << "the 256th";
  const std::string before = Doc();
  const Result r = Run("event add", "--schedule 6 --time 9 --groups 1");
  EXPECT_EQ(r.code, 1);
  EXPECT_EQ(r.err, "r6183ctl: the document holds 256 events, the most a unit takes\n");
  EXPECT_TRUE(Doc() == before);
}

}  // namespace
}  // namespace r6183::test
