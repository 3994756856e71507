#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include "database/DocumentChecks.h"
#include "database/ToneDefaults.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;

// A copy of the shipped template, changed by `sql`.
std::string Document(const test::TempDir& dir, const std::string& sql, const std::string& name = "doc.mdb") {
  const std::string path = dir.str(name);
  fs::copy_file(test::StagedAppDir() / "DEFAULT", path, fs::copy_options::overwrite_existing);
  if (!sql.empty()) {
    SQLite::Database db(path, SQLite::OPEN_READWRITE);
    db.exec(sql);
  }
  return path;
}

int JournalRows(const Session& s, const std::string& routine) {
  SQLite::Database db(s.state.ErrorsDbPath);
  SQLite::Statement q(db, "SELECT count(*) FROM \"Error\" WHERE errfcn = ?");
  q.bind(1, routine);
  q.executeStep();
  return q.getColumn(0).getInt();
}

TEST(ValidDatabase, AcceptsOnlyTheShapeOfADocument) {
  struct Case {
    const char* name;
    std::string sql;
    bool valid;
    int events, config, clocks;
    bool journalled;
  };
  const Case cases[] = {
      {"the template", "", true, 0, 0, 0, false},
      {"95 stations", "DELETE FROM Clid WHERE clid_station = 96", false, 0, 0, 0, false},
      {"97 stations", "INSERT INTO Clid (clid_station) VALUES (97)", false, 0, 0, 0, false},
      {"5 custom page groups", "INSERT INTO PageGroup (DialCode) VALUES (4)", false, 0, 0, 0, false},
      {"5 schedules", "DELETE FROM SchedDays WHERE Schedule = 6", false, 0, 0, 0, false},
      {"no station table", "DROP TABLE Clid", false, 0, 0, 0, true},
      {"no schedule table", "DROP TABLE SchedDays", false, 0, 0, 0, true},
      {"four expansion boards", "UPDATE Config SET System_Config = 4", false, 0, 4, 0, false},
      {"three expansion boards", "UPDATE Config SET System_Config = 3", true, 0, 3, 0, false},
      {"events counted",
       "INSERT INTO Event (Schedule, StartTime) VALUES (1, '08:00'), (2, '09:00'), (6, '23:59')", true, 3,
       0, 0, false},
      {"clock board installed", "UPDATE ClockDef SET ClockEnabled = 1", true, 0, 0, 1, false},
      {"two clock definitions", "INSERT INTO ClockDef (ClockEnabled) VALUES (1)", false, 0, 0, 0, false},
      // the last tables are only opened: a missing one is journalled, the file stays valid
      {"no audio table", "DROP TABLE Bgm", true, 0, 0, 0, true},
      {"no revision table", "DROP TABLE Rev", true, 0, 0, 0, true},
      {"no option table", "DROP TABLE DipSwitch", true, 0, 0, 0, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    test::TestSession t;
    const std::string path = Document(t.dir, c.sql);
    EXPECT_EQ(ValidDatabase(*t, path), c.valid);
    EXPECT_EQ(t->state.EventCount, c.events);
    EXPECT_EQ(t->state.SystemConfig, c.config);
    EXPECT_EQ(t->state.ClocksEnabled, c.clocks);
    EXPECT_EQ(JournalRows(*t, "ValidDatabase") > 0, c.journalled);
  }
}

TEST(ValidDatabase, RejectsFilesThatAreNoDocument) {
  test::TestSession t;
  const std::string garbage = t.dir.str("garbage.mdb");
  test::WriteFile(garbage, std::string(8192, '\x5a'));
  EXPECT_FALSE(ValidDatabase(*t, garbage));
  EXPECT_FALSE(ValidDatabase(*t, t.dir.str("missing.mdb")));
  EXPECT_FALSE(fs::exists(t.dir.str("missing.mdb")));
  EXPECT_GT(JournalRows(*t, "ValidDatabase"), 0);
}

TEST(ValidDatabase, NeverWritesTheFile) {
  test::TestSession t;
  const std::string path = Document(t.dir, "DELETE FROM Clid WHERE clid_station > 90");
  const std::string before = test::ReadFile(path);
  ValidDatabase(*t, path);
  EXPECT_EQ(test::ReadFile(path), before);
}

TEST(GetNumberofSysBoards, ReadsTheFileButCapsByTheProcessValue) {
  test::TestSession t;
  const std::string two = Document(t.dir, "UPDATE Config SET System_Config = 2", "two.mdb");
  EXPECT_EQ(GetNumberofSysBoards(*t, two), 2);
  t->state.SystemConfig = 5;
  EXPECT_EQ(GetNumberofSysBoards(*t, two), 3);
  EXPECT_EQ(GetNumberofSysBoards(*t, t.dir.str("missing.mdb")), 0);
  EXPECT_EQ(JournalRows(*t, "GetNumberofSysBoards"), 1);
}

// The sixteen tone groups of a table as a string of 0 and 1.
std::string Groups(const std::string& path, const std::string& table) {
  SQLite::Database db(path);
  SQLite::Statement q(db, "SELECT * FROM " + table);
  q.executeStep();
  std::string s;
  for (int i = 0; i < 16; ++i) s += q.getColumn(i).getInt() ? '1' : '0';
  return s;
}

std::string AllGroupsOn(const std::string& table) {
  std::string sql = "UPDATE " + table + " SET PageGroup1 = 1";
  for (int g = 2; g <= 16; ++g) sql += ", PageGroup" + std::to_string(g) + " = 1";
  return sql + "; ";
}

TEST(ToneDefaults, ClearTheGroupsOfAbsentBoardsOnly) {
  struct Case {
    int boards;
    std::string expected;
  };
  const Case cases[] = {{0, "1111000000000000"},
                        {1, "1111111100000000"},
                        {2, "1111111111110000"},
                        {3, "1111111111111111"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.boards);
    for (bool viaSetToneDefaults : {false, true}) {
      test::TestSession t;
      t->state.WorkDbPath = Document(t.dir,
                                     AllGroupsOn("TonesPG") + AllGroupsOn("EmergencyPG") +
                                         "UPDATE Config SET System_Config = " + std::to_string(c.boards),
                                     "~TEMP");
      if (viaSetToneDefaults)
        SetToneDefaults(*t, c.boards + 1);
      else
        UpdateData(*t);
      EXPECT_EQ(Groups(t->state.WorkDbPath, "TonesPG"), c.expected);
      EXPECT_EQ(Groups(t->state.WorkDbPath, "EmergencyPG"), c.expected);
    }
  }
}

TEST(ToneDefaults, LeaveAtTheFirstFailureUnderTheirOwnLabels) {
  test::TestSession t;
  t->state.WorkDbPath = Document(
      t.dir, "DROP TABLE EmergencyPG; UPDATE TonesPG SET PageGroup16 = 1", "~TEMP");
  UpdateData(*t);
  SetToneDefaults(*t, 1);
  // EmergencyPG comes first, so TonesPG is never reached
  EXPECT_EQ(Groups(t->state.WorkDbPath, "TonesPG"), "1111000000000001");
  EXPECT_EQ(JournalRows(*t, "UpdateData"), 1);
  EXPECT_EQ(JournalRows(*t, "MakeEmer"), 1);
}

}  // namespace
}  // namespace r6183
