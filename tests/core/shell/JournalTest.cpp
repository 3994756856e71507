#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include "shell/Journal.h"
#include "shell/Labels.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

struct Row {
  int errno_;
  std::string desc, module, program, fcn, date, time;
};

std::vector<Row> Rows(const std::string& path) {
  SQLite::Database db(path);
  SQLite::Statement q(db, "SELECT errno, errdesc, errmodule, ErrProgram, errfcn, errdate, errTime FROM \"Error\" ORDER BY rowid");
  std::vector<Row> rows;
  while (q.executeStep())
    rows.push_back({q.getColumn(0).getInt(), q.getColumn(1).getString(), q.getColumn(2).getString(),
                    q.getColumn(3).getString(), q.getColumn(4).getString(), q.getColumn(5).getString(),
                    q.getColumn(6).getString()});
  return rows;
}

void FillJournal(const std::string& path, int count) {
  SQLite::Database db(path, SQLite::OPEN_READWRITE);
  SQLite::Transaction t(db);
  SQLite::Statement ins(db, "INSERT INTO \"Error\" (errno, errdesc) VALUES (?, ?)");
  for (int i = 1; i <= count; ++i) {
    ins.bind(1, i);
    ins.bind(2, "entry " + std::to_string(i));
    ins.exec();
    ins.reset();
  }
  t.commit();
}

TEST(Journal, StoresOneRowWithCutsDateAndTime) {
  struct Case {
    const char* name;
    int16_t number;
    std::string desc, program, module, routine;
    Row expected;
  };
  const std::string long150(150, 'd');
  const std::string long60(60, 'm');
  const Case cases[] = {
      {"plain", 3021, "No row", "frmMenu", "frmMenu", "Init_Menu_opt",
       {3021, "No row", "frmMenu", "frmMenu", "Init_Menu_opt", "11/06/2001", "09:05"}},
      {"description cut to 100", 5, long150, "p", "m", "r",
       {5, std::string(100, 'd'), "m", "p", "r", "11/06/2001", "09:05"}},
      {"names cut to 50", 5, "x", long60, long60, long60,
       {5, "x", std::string(50, 'm'), std::string(50, 'm'), std::string(50, 'm'), "11/06/2001", "09:05"}},
      {"empty description takes the standard text", 53, "", "p", "m", "r",
       {53, "File not found", "m", "p", "r", "11/06/2001", "09:05"}},
      {"unknown number, empty description", 1234, "", "p", "m", "r",
       {1234, "Application-defined or object-defined error", "m", "p", "r", "11/06/2001", "09:05"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    test::TestSession t;
    t.clock.SetNow({2001, 11, 6, 9, 5, 59});
    t->journal().LogError(c.number, c.desc, c.program, c.module, c.routine);
    const auto rows = Rows(t->state.ErrorsDbPath);
    ASSERT_EQ(rows.size(), 1u);
    const Row& r = rows[0];
    EXPECT_EQ(r.errno_, c.expected.errno_);
    EXPECT_EQ(r.desc, c.expected.desc);
    EXPECT_EQ(r.module, c.expected.module);
    EXPECT_EQ(r.program, c.expected.program);
    EXPECT_EQ(r.fcn, c.expected.fcn);
    EXPECT_EQ(r.date, c.expected.date);
    EXPECT_EQ(r.time, c.expected.time);
  }
}

TEST(Journal, CutsCountCharactersNotBytes) {
  test::TestSession t;
  std::string desc;
  for (int i = 0; i < 120; ++i) desc += "\xc3\xa9";  // é
  t->journal().LogError(1, desc, "p", "m", "r");
  EXPECT_EQ(Rows(t->state.ErrorsDbPath).at(0).desc.size(), 200u);
}

TEST(Journal, KeepsAtMostAThousandRowsDroppingTheOldest) {
  struct Case {
    int before;
    size_t after;
    std::string first;
  };
  for (const Case& c : {Case{999, 1000, "entry 1"}, Case{1000, 1000, "entry 2"}}) {
    SCOPED_TRACE(c.before);
    test::TestSession t;
    FillJournal(t->state.ErrorsDbPath, c.before);
    t->journal().LogError(7, "newest", "p", "m", "r");
    const auto rows = Rows(t->state.ErrorsDbPath);
    EXPECT_EQ(rows.size(), c.after);
    EXPECT_EQ(rows.front().desc, c.first);
    EXPECT_EQ(rows.back().desc, "newest");
  }
}

TEST(Journal, YieldsThreeTimesToThePump) {
  test::TestSession t;
  t->journal().LogError(1, "x", "p", "m", "r");
  EXPECT_EQ(t.pumps, 3);
}

TEST(Journal, WaitsForALockedTableAndThenWrites) {
  test::TestSession t;
  SQLite::Database other(t->state.ErrorsDbPath, SQLite::OPEN_READWRITE);
  other.exec("BEGIN EXCLUSIVE");
  bool released = false;
  int pumps = 0;
  // the lock goes away while the journal lets events run, as another handler would
  t->SetPump([&] {
    if (++pumps == 8 && !released) {
      other.exec("COMMIT");
      released = true;
    }
  });
  t->journal().LogError(3260, "", "p", "m", "r");
  EXPECT_TRUE(released);
  const auto rows = Rows(t->state.ErrorsDbPath);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].desc, "Couldn't update; currently locked by another user.");
}

TEST(Journal, PassesOverAMissingOrBrokenFile) {
  test::TestSession t;
  std::filesystem::remove(t->state.ErrorsDbPath);
  EXPECT_NO_THROW(t->journal().LogError(1, "lost", "p", "m", "r"));
  EXPECT_FALSE(std::filesystem::exists(t->state.ErrorsDbPath));

  test::WriteFile(t->state.ErrorsDbPath, std::string(4096, 'x'));
  EXPECT_NO_THROW(t->journal().LogError(1, "lost", "p", "m", "r"));
}

TEST(Journal, StepJournalsWithTheModuleTwiceAndGoesOn) {
  test::TestSession t;
  int after = 0;
  const bool ok = step(t->journal(), Where{labels::modProject, "GetTotalEvents"},
                       [] { throw RuntimeError(err::NoCurrentRecord); });
  ++after;
  EXPECT_FALSE(ok);
  EXPECT_TRUE(step(t->journal(), Where{labels::modProject, "x"}, [&] { ++after; }));
  EXPECT_EQ(after, 2);
  const auto rows = Rows(t->state.ErrorsDbPath);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].errno_, 3021);
  EXPECT_EQ(rows[0].desc, "No current record.");
  EXPECT_EQ(rows[0].module, "modProject");
  EXPECT_EQ(rows[0].program, "modProject");
  EXPECT_EQ(rows[0].fcn, "GetTotalEvents");
}

TEST(Journal, StepNarrowsForeignFailuresToRuntimeNumbers) {
  struct Case {
    const char* name;
    std::function<void()> fail;
    int number;
  };
  const Case cases[] = {
      {"missing table", [] { SQLite::Database db(":memory:"); db.exec("SELECT * FROM nothing"); }, 3709},
      {"missing file",
       [] { SQLite::Database db("/nonexistent/dir/x.db", SQLite::OPEN_READWRITE); }, 3024},
      {"standard exception", [] { throw std::logic_error("odd"); }, 32000},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    test::TestSession t;
    step(t->journal(), Where{"m", "r"}, c.fail);
    const auto rows = Rows(t->state.ErrorsDbPath);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].errno_, c.number);
    EXPECT_FALSE(rows[0].desc.empty());
  }
}

}  // namespace
}  // namespace r6183
