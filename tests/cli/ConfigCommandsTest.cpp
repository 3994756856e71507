// r6183ctl's configuration, custom page group, audio and class of service commands on
// copies of the sample site (Main Board + Expansion 1, 2).
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <sstream>

#include "CtlTest.h"

namespace r6183::test {
namespace {

class ConfigCommands : public CtlTest {
 protected:
  ConfigCommands() {
    fs::copy_file(StagedAppDir() / "sample.mdb", dir.path() / "site.mdb");
  }
  // r6183ctl COMMAND FILE ARGS, FILE the site in the test's directory.
  Result Run(const std::string& command, const std::string& args = "") { return Ctl(command, "site.mdb", args); }
  std::string Bytes() const { return CtlTest::Bytes("site.mdb"); }
  // The dump's rows that begin with `prefix` ("Bgm|", "ClassService|9|").
  std::vector<std::string> Rows(const std::string& prefix) { return DumpRows("site.mdb", prefix); }
  std::string Unchanged() const { return "; " + dir.str("site.mdb") + " is unchanged\n"; }
};

TEST_F(ConfigCommands, PrintsWhatTheWindowsShowAndLeavesTheFile) {
  const std::string before = Bytes();
  const struct {
    std::string command, out;
  } cases[] = {
      {"config", "Main Board + Expansion 1, 2\npage groups 1 to 12, stations 1 to 72\n"},
      {"groups", "50\t2,3,4,5,6,7,8,9,10\n51\t11,12\n52\t1\n53\t1,2,3,4,5,6,7,8,9,10,11,12\n"},
      {"audio", "BGM\t11,12\nTime Tone\t2,3,4,5,6,7,8,9,10,11,12\nEmergency\t1,2,3,4,5,6,7,8,9,10,11,12\n"},
      {"service",
       "1\t1 - 6\tEmergency Only!\n2\t7 - 12\tNormal / Emergency\n3\t13 - 18\tNormal / Emergency\n"
       "4\t19 - 24\tNormal / Emergency\n5\t25 - 30\tNormal / Emergency\n6\t31 - 36\tNormal / Emergency\n"
       "7\t37 - 42\tNormal / Emergency\n8\t43 - 48\tNormal / Emergency\n9\t49 - 54\tNormal / Emergency\n"
       "10\t55 - 60\tNormal / Emergency\n11\t61 - 66\tNormal / Emergency\n12\t67 - 72\tNormal / Emergency\n"
       "13\t73 - 78\t\n14\t79 - 84\t\n15\t85 - 90\t\n16\t91 - 96\t\n"},
  };
  for (const auto& c : cases) {
    const Result r = Run(c.command);
    EXPECT_EQ(r.code, 0) << c.command << ": " << r.err;
    EXPECT_EQ(r.out, c.out) << c.command;
  }
  EXPECT_EQ(Bytes(), before);
}

TEST_F(ConfigCommands, ChangesGoThroughTheWindowsAndReachTheTables) {
  const struct {
    std::string command, args, table;
    std::vector<std::string> rows;
  } cases[] = {
      {"group",
       "--dial 51 --set 1,2,5",
       "PageGroup|",
       {"PageGroup|0|0|1|1|1|1|1|1|1|1|1|0|0|0|0|0|0", "PageGroup|1|1|1|0|0|1|0|0|0|0|0|0|0|0|0|0|0",
        "PageGroup|2|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0", "PageGroup|3|1|1|1|1|1|1|1|1|1|1|1|1|0|0|0|0"}},
      // a custom group may be left empty
      {"group",
       "--dial 53 --set ''",
       "PageGroup|",
       {"PageGroup|0|0|1|1|1|1|1|1|1|1|1|0|0|0|0|0|0", "PageGroup|1|1|1|0|0|1|0|0|0|0|0|0|0|0|0|0|0",
        "PageGroup|2|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0", "PageGroup|3|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0"}},
      {"audio", "--source bgm --set 1,2", "Bgm|", {"Bgm|1|1|0|0|0|0|0|0|0|0|0|0|0|0|0|0"}},
      {"audio", "--source time --set 12,3", "TonesPG|", {"TonesPG|0|0|1|0|0|0|0|0|0|0|0|1|0|0|0|0"}},
      {"audio", "--source emergency --set none", "EmergencyPG|", {"EmergencyPG|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0"}},
      {"service", "--group 1 --level 0", "ClassService|1|", {"ClassService|1|0"}},
      {"service", "--group 12 --level 2", "ClassService|12|", {"ClassService|12|2"}},
  };
  for (const auto& c : cases) {
    const Result r = Run(c.command, c.args);
    EXPECT_EQ(r.code, 0) << c.args << ": " << r.err;
    EXPECT_EQ(Rows(c.table), c.rows) << c.command << " " << c.args;
  }
  // the print after a change is the window's view of it
  EXPECT_TRUE(Run("service", "--group 3 --level 2").out.starts_with(
      "1\t1 - 6\tNormal Only\n2\t7 - 12\tNormal / Emergency\n3\t13 - 18\tEmergency Only!\n"));
  EXPECT_EQ(Run("audio", "--source bgm --set 12").out,
            "BGM\t12\nTime Tone\t3,12\nEmergency\tnone\n");
}

TEST_F(ConfigCommands, GroupsBeyondTheConfigurationAndWrongValuesAreRefused) {
  const std::string before = Bytes();
  const std::string outside = "its 3 boards have groups 1 to 12" + Unchanged();
  const struct {
    std::string command, args;
    int code;
    std::string err;
  } cases[] = {
      {"group", "--dial 50 --set 1,13", 1, "r6183ctl: page group 13 is not in this system: " + outside},
      {"group", "--dial 52 --set 0", 1, "r6183ctl: page group 0 is not in this system: " + outside},
      {"group", "--dial 54 --set 1", 1, "r6183ctl: the custom page groups have the dial codes 50 to 53, not 54" + Unchanged()},
      {"group", "--dial 50 --set 1,x", 2, "r6183ctl: --set wants page group numbers, as 1,2,5, got \"1,x\"\n"},
      {"audio", "--source time --set 16", 1, "r6183ctl: page group 16 is not in this system: " + outside},
      {"audio", "--source emergency --set 2,14,3", 1, "r6183ctl: page group 14 is not in this system: " + outside},
      {"service", "--group 13 --level 0", 1, "r6183ctl: group 13 is not in this system: " + outside},
      {"service", "--group 3 --level 3", 1,
       "r6183ctl: the class of service is 0 (Normal Only), 1 (Normal / Emergency) or 2 (Emergency Only!), not 3" +
           Unchanged()},
      {"config", "--boards 5", 1, "r6183ctl: a system has 1 to 4 boards, not 5" + Unchanged()},
  };
  for (const auto& c : cases) {
    const Result r = Run(c.command, c.args);
    EXPECT_EQ(r.code, c.code) << c.command << " " << c.args;
    EXPECT_EQ(r.err, c.err) << c.command << " " << c.args;
    EXPECT_EQ(r.out, "") << c.command << " " << c.args;
    EXPECT_EQ(Bytes(), before) << c.command << " " << c.args;
  }
  // a source with no groups to set is a usage error of the command line
  const Result incomplete = Run("audio", "--source bgm");
  EXPECT_NE(incomplete.code, 0);
  EXPECT_NE(incomplete.err.find("--set"), std::string::npos) << incomplete.err;
  EXPECT_EQ(Bytes(), before);
}

TEST_F(ConfigCommands, ShrinkingAsksAndClearsTheRemovedBoardsOnlyWithYes) {
  // an event in groups 9 and 10 only, which the Main Board + Expansion 1 does not have
  ASSERT_EQ(Run("event add", "--schedule 3 --time 10:00 --groups 9,10").code, 0);
  const std::string before = Bytes();
  const Result asked = Run("config", "--boards 2");
  EXPECT_EQ(asked.code, 1);
  EXPECT_EQ(asked.err,
            "System Configuration: This configuration change requires removing board(s) from the system.\n\n"
            "User programming for these boards will be cleared.  Continue update configuration?\n"
            "r6183ctl: the configuration stays Main Board + Expansion 1, 2" + Unchanged());
  EXPECT_EQ(Bytes(), before);

  const Result done = Run("config", "--boards 2 --yes");
  ASSERT_EQ(done.code, 0) << done.err;
  EXPECT_EQ(done.out, "Main Board + Expansion 1\npage groups 1 to 8, stations 1 to 48\n");
  EXPECT_EQ(Rows("Config|"), std::vector<std::string>{"Config|1"});
  EXPECT_EQ(Rows("Event|").size(), 15u) << "the event of groups 9 and 10 is gone";
  const auto clid = Rows("Clid|");
  ASSERT_EQ(clid.size(), 96u);
  EXPECT_EQ(clid[47], "Clid|48|148 |Room 148       ");
  EXPECT_EQ(clid[48], "Clid|49||");
  EXPECT_EQ(Run("groups").out, "50\t2,3,4,5,6,7,8\n51\tnone\n52\t1\n53\t1,2,3,4,5,6,7,8\n");
  EXPECT_EQ(Run("audio").out, "BGM\tnone\nTime Tone\t2,3,4,5,6,7,8\nEmergency\t1,2,3,4,5,6,7,8\n");
  EXPECT_EQ(Rows("ClassService|9|"), std::vector<std::string>{"ClassService|9|1"});

  // growing gives the new boards' groups the tones only
  ASSERT_EQ(Run("config", "--boards 4").code, 0);
  EXPECT_EQ(Run("audio").out,
            "BGM\tnone\nTime Tone\t2,3,4,5,6,7,8,9,10,11,12,13,14,15,16\n"
            "Emergency\t1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16\n");
  EXPECT_EQ(Run("groups").out, "50\t2,3,4,5,6,7,8\n51\tnone\n52\t1\n53\t1,2,3,4,5,6,7,8\n");
  EXPECT_EQ(Run("config").out, "Main Board + Expansion 1, 2, 3\npage groups 1 to 16, stations 1 to 96\n");
}

}  // namespace
}  // namespace r6183::test
