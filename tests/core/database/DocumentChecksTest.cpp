#include "database/DocumentChecks.h"

#include <gtest/gtest.h>

#include "DbTestSupport.h"
#include "database/ToneDefaults.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;
using test::Peek;

// A copy of the shipped template, changed by `sql`.
std::string Document(const test::TempDir& dir, const std::string& sql, const std::string& name = "doc.mdb") {
  fs::copy_file(test::StagedAppDir() / "DEFAULT", dir.str(name), fs::copy_options::overwrite_existing);
  return test::MakeDb(dir.str(name), sql);
}

int JournalRows(const Session& s, const std::string& routine) {
  const std::string sql = "SELECT count(*) FROM \"Error\" WHERE errfcn = '" + routine + "'";
  return std::stoi(Peek(s.state.ErrorsDbPath, sql));
}

TEST(ValidDatabase, AcceptsOnlyTheShapeOfADocumentAndNeverWritesIt) {
  struct Case {
    const char *name, *sql;
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
      {"four expansion boards", "UPDATE Config SET System_Config = 4", false, 0, 4, 0, false},
      {"three expansion boards", "UPDATE Config SET System_Config = 3", true, 0, 3, 0, false},
      {"events counted", "INSERT INTO Event (Schedule) VALUES (1), (6)", true, 2, 0, 0, false},
      {"clock board installed", "UPDATE ClockDef SET ClockEnabled = 1", true, 0, 0, 1, false},
      {"two clock definitions", "INSERT INTO ClockDef (ClockEnabled) VALUES (1)", false, 0, 0, 0, false},
      // the last tables are only opened: a missing one is journalled, the file stays valid
      {"no audio table", "DROP TABLE Bgm", true, 0, 0, 0, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    test::TestSession t;
    const std::string path = Document(t.dir, c.sql);
    const std::string before = test::ReadFile(path);
    EXPECT_EQ(ValidDatabase(*t, path), c.valid);
    EXPECT_EQ(t->state.EventCount, c.events);
    EXPECT_EQ(t->state.SystemConfig, c.config);
    EXPECT_EQ(t->state.ClocksEnabled, c.clocks);
    EXPECT_EQ(JournalRows(*t, "ValidDatabase") > 0, c.journalled);
    EXPECT_EQ(test::ReadFile(path), before);
  }
}

TEST(DocumentChecks, FilesThatAreNoDocumentAreJournalledAndBoardsCapped) {
  test::TestSession t;
  test::WriteFile(t.dir.str("garbage.mdb"), std::string(8192, 'Z'));
  for (const char* name : {"garbage.mdb", "missing.mdb"}) {
    EXPECT_FALSE(ValidDatabase(*t, t.dir.str(name))) << name;
    EXPECT_EQ(GetNumberofSysBoards(*t, t.dir.str(name)), 0) << name;
  }
  EXPECT_FALSE(fs::exists(t.dir.str("missing.mdb")));
  EXPECT_GT(JournalRows(*t, "ValidDatabase"), 0);
  EXPECT_EQ(JournalRows(*t, "GetNumberofSysBoards"), 2);

  const std::string two = Document(t.dir, "UPDATE Config SET System_Config = 2");
  EXPECT_EQ(GetNumberofSysBoards(*t, two), 2);
  t->state.SystemConfig = 5;
  EXPECT_EQ(GetNumberofSysBoards(*t, two), 3);
}

// "PageGroup1<sep>PageGroup2<sep>...PageGroup16": reads the sixteen tone groups or sets them all.
std::string Groups(const std::string& sep) {
  std::string s = "PageGroup1";
  for (int g = 2; g <= 16; ++g) s += sep + "PageGroup" + std::to_string(g);
  return s;
}
std::string Groups(const std::string& path, const std::string& table) {
  return Peek(path, "SELECT " + Groups(" || ") + " FROM " + table);
}

TEST(ToneDefaults, ClearTheGroupsOfAbsentBoardsOnly) {
  const std::pair<int, const char*> cases[] = {
      {0, "1111000000000000"}, {1, "1111111100000000"}, {2, "1111111111110000"}, {3, "1111111111111111"}};
  for (const auto& [boards, expected] : cases) {
    for (bool viaSetToneDefaults : {false, true}) {
      SCOPED_TRACE(std::to_string(boards) + (viaSetToneDefaults ? " SetToneDefaults" : " UpdateData"));
      test::TestSession t;
      const std::string on = Groups(" = 1, ") + " = 1; ";
      t->state.WorkDbPath = Document(t.dir, "UPDATE TonesPG SET " + on + "UPDATE EmergencyPG SET " + on +
                                                "UPDATE Config SET System_Config = " + std::to_string(boards),
                                     "~TEMP");
      viaSetToneDefaults ? SetToneDefaults(*t, boards + 1) : UpdateData(*t);
      EXPECT_EQ(Groups(t->state.WorkDbPath, "TonesPG"), expected);
      EXPECT_EQ(Groups(t->state.WorkDbPath, "EmergencyPG"), expected);
    }
  }
}

TEST(ToneDefaults, LeaveAtTheFirstFailureUnderTheirOwnLabels) {
  test::TestSession t;
  t->state.WorkDbPath =
      Document(t.dir, "DROP TABLE EmergencyPG; UPDATE TonesPG SET PageGroup16 = 1", "~TEMP");
  UpdateData(*t);
  SetToneDefaults(*t, 1);
  // EmergencyPG comes first, so TonesPG is never reached
  EXPECT_EQ(Groups(t->state.WorkDbPath, "TonesPG"), "1111000000000001");
  EXPECT_EQ(JournalRows(*t, "UpdateData"), 1);
  EXPECT_EQ(JournalRows(*t, "MakeEmer"), 1);
}

}  // namespace
}  // namespace r6183
