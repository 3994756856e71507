// r6183ctl run as a process on staged application directories.
#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <sstream>

#include "support/TestSupport.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;

struct Result {
  int code;
  std::string out, err;
};

class Ctl : public ::testing::Test {
 protected:
  Ctl() {
    fs::create_directory(app());
    test::CopyStagedAppDir(app());
  }
  fs::path app() const { return dir.path() / "app"; }
  std::string file(const std::string& name) const { return dir.str(name); }

  Result Run(const std::string& args) {
    const std::string out = dir.str("stdout"), err = dir.str("stderr");
    const std::string cmd = std::string("'") + R6183CTL_PATH + "' --appdir '" + app().string() + "' " + args +
                            " >'" + out + "' 2>'" + err + "' </dev/null";
    const int status = std::system(cmd.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, test::ReadFile(out), test::ReadFile(err)};
  }

  // A copy of the template changed by `sql`.
  std::string Document(const std::string& name, const std::string& sql) {
    const std::string path = file(name);
    fs::copy_file(app() / "DEFAULT", path, fs::copy_options::overwrite_existing);
    if (!sql.empty()) {
      SQLite::Database db(path, SQLite::OPEN_READWRITE);
      db.exec(sql);
    }
    return path;
  }

  test::TempDir dir;
};

TEST_F(Ctl, CheckReportsValidityAndCounts) {
  struct Case {
    const char* name;
    std::string sql;
    int code;
    std::string out;
  };
  const Case cases[] = {
      {"template", "", 0, "valid\nEventCount=0\nSystemConfig=0\nClocksEnabled=0\nRev=02.00\n"},
      {"95 stations", "DELETE FROM Clid WHERE clid_station = 5", 1,
       "invalid\nEventCount=0\nSystemConfig=0\nClocksEnabled=0\nRev=02.00\n"},
      {"four expansion boards", "UPDATE Config SET System_Config = 4", 1,
       "invalid\nEventCount=0\nSystemConfig=4\nClocksEnabled=0\nRev=02.00\n"},
      {"events, boards, clocks, newer revision",
       "INSERT INTO Event (Schedule) VALUES (1), (3); UPDATE Config SET System_Config = 2;"
       "UPDATE ClockDef SET ClockEnabled = 1; UPDATE Rev SET rev = '02.10'",
       0, "valid\nEventCount=2\nSystemConfig=2\nClocksEnabled=1\nRev=02.10\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string path = Document("doc.mdb", c.sql);
    const std::string before = test::ReadFile(path);
    const Result r = Run("check '" + path + "'");
    EXPECT_EQ(r.code, c.code);
    EXPECT_EQ(r.out, c.out);
    EXPECT_EQ(test::ReadFile(path), before) << "check must never write the file";
  }
}

TEST_F(Ctl, CheckTellsUnreadableFromInvalid) {
  EXPECT_EQ(Run("check '" + file("missing.mdb") + "'").code, 2);
  test::WriteFile(file("text.mdb"), "not a database at all");
  const Result r = Run("check '" + file("text.mdb") + "'");
  EXPECT_EQ(r.code, 1);
  EXPECT_EQ(r.out.substr(0, 8), "invalid\n");
}

TEST_F(Ctl, NewMakesTheDocumentOfTheNewCommand) {
  const std::string path = file("Fresh.mdb");
  const Result made = Run("new '" + path + "'");
  ASSERT_EQ(made.code, 0) << made.err;
  EXPECT_EQ(Run("check '" + path + "'").code, 0);

  const Result dump = Run("dump '" + path + "'");
  ASSERT_EQ(dump.code, 0) << dump.err;
  std::istringstream lines(dump.out);
  std::vector<std::string> v;
  for (std::string l; std::getline(lines, l);) v.push_back(l);
  ASSERT_EQ(v.size(), 1u + 1 + 96 + 4 + 6 + 0 + 1 + 1 + 1 + 1 + 16 + 1 + 10);
  EXPECT_EQ(v[0], "Config|0");
  EXPECT_EQ(v[1], "ClockDef|0|1|1|0|0");
  EXPECT_EQ(v[2], "Clid|1||");
  EXPECT_EQ(v[97], "Clid|96||");
  EXPECT_EQ(v[98], "PageGroup|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0");
  EXPECT_EQ(v[101], "PageGroup|3|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0");
  EXPECT_EQ(v[102], "SchedDays|1|0|0|0|0|0|0|0");
  // with no expansion board, New leaves only the main board's tone groups on
  EXPECT_EQ(v[109], "TonesPG|1|1|1|1|0|0|0|0|0|0|0|0|0|0|0|0");
  EXPECT_EQ(v[110], "EmergencyPG|1|1|1|1|0|0|0|0|0|0|0|0|0|0|0|0");
  EXPECT_EQ(v[111], "DipSwitch|0|0|0|0|0|0|0|0|0|0|0|0|0|0|0");
  EXPECT_EQ(v[112], "ClassService|1|1");
  EXPECT_EQ(v[128], "Rev|02.00");
  EXPECT_EQ(v[129].substr(0, 7), "Clocks|");
}

TEST_F(Ctl, DumpKeepsTextVerbatimAndOrdersEvents) {
  const std::string path = Document(
      "doc.mdb",
      "UPDATE Clid SET archnum = '12  ', clid_string = 'Front Desk     ' WHERE clid_station = 1;"
      "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup2) VALUES (2, '07:00', 5, 3, 1),"
      "(1, '12:30', 10, 1, 0), (1, '06:15', 59, 4, 1)");
  const Result r = Run("dump '" + path + "'");
  ASSERT_EQ(r.code, 0);
  EXPECT_NE(r.out.find("\nClid|1|12  |Front Desk     \n"), std::string::npos);
  const auto a = r.out.find("Event|1|06:15|59|4|0|1|");
  const auto b = r.out.find("Event|1|12:30|10|1|0|0|");
  const auto c = r.out.find("Event|2|07:00|5|3|0|1|");
  ASSERT_NE(a, std::string::npos);
  ASSERT_NE(b, std::string::npos);
  ASSERT_NE(c, std::string::npos);
  EXPECT_LT(a, b);
  EXPECT_LT(b, c);
}

TEST_F(Ctl, FailuresGoToStderrAndLeaveNoFileBehind) {
  struct Case {
    const char* name;
    std::string args;
    int code;
  };
  test::WriteFile(file("existing.mdb"), "keep me");
  fs::create_directory(file("locked"));
  fs::permissions(file("locked"), fs::perms::owner_read | fs::perms::owner_exec);
  const std::vector<Case> cases = {
      {"dump of a missing file", "dump '" + file("none.mdb") + "'", 2},
      {"dump of a text file", "dump '" + file("existing.mdb") + "'", 2},
      {"new over an existing file", "new '" + file("existing.mdb") + "'", 1},
      {"no subcommand", "", 106},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const Result r = Run(c.args);
    EXPECT_EQ(r.code, c.code);
    EXPECT_TRUE(r.out.empty()) << r.out;
    EXPECT_FALSE(r.err.empty());
  }
  EXPECT_TRUE(test::AsUnprivileged(dir.path(), [&] {
    const Result r = Run("new '" + file("locked/x.mdb") + "'");
    return r.code == 1 && !r.err.empty();
  })) << "new into a read-only directory";
  EXPECT_EQ(test::ReadFile(file("existing.mdb")), "keep me");
  for (const auto& e : fs::directory_iterator(dir.path()))
    EXPECT_EQ(e.path().filename().string().find(".part"), std::string::npos) << e.path();
}

}  // namespace
}  // namespace r6183
