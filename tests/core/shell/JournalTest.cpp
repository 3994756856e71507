#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include "shell/Journal.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

TEST(JournalTest, StoresOneRowWithItsCutsDateAndTime) {
  std::string e120;  // 120 two-byte characters
  for (int i = 0; i < 120; ++i) e120 += "\xc3\xa9";
  const std::string m60(60, 'm'), m50(50, 'm');
  const struct {
    int16_t number;
    std::string desc, program, module, routine;
    JournalRow row;
  } cases[] = {
      {3021, "No row", "frmMenu", "frmMain", "Init", {3021, "No row", "frmMain", "frmMenu", "Init"}},
      {5, std::string(150, 'd'), m60, m60, m60, {5, std::string(100, 'd'), m50, m50, m50}},
      {5, e120, "p", "m", "r", {5, e120.substr(0, 200), "m", "p", "r"}},  // characters, not bytes
      {53, "", "p", "m", "r", {53, "File not found", "m", "p", "r"}},
      {1234, "", "p", "m", "r", {1234, "Application-defined or object-defined error", "m", "p", "r"}},
  };
  for (auto c : cases) {
    TestSession ts;
    ts.clock.SetNow({2001, 11, 6, 9, 5, 59});
    ts->journal().LogError(c.number, c.desc, c.program, c.module, c.routine);
    c.row.time = "09:05";
    EXPECT_EQ(JournalRows(*ts), std::vector<JournalRow>{c.row});
    EXPECT_EQ(ts.pumps, 3) << "events run after the open, before the write and at the end";
  }
}

TEST(JournalTest, KeepsAtMostAThousandRowsDroppingTheOldest) {
  for (const auto& [before, first] : {std::pair{999, "1"}, {1000, "2"}}) {
    TestSession ts;
    SQLite::Database(ts->state.ErrorsDbPath, SQLite::OPEN_READWRITE)
        .exec("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
              std::to_string(before) + ") INSERT INTO \"Error\" (errno, errdesc) SELECT i, i FROM n");
    ts->journal().LogError(7, "newest", "p", "m", "r");
    const auto rows = JournalRows(*ts);
    EXPECT_EQ(rows.size(), 1000u) << before;
    EXPECT_EQ(rows.front().description + "," + rows.back().description, first + std::string(",newest"));
  }
}

TEST(JournalTest, WaitsForALockedTableAndPassesOverAMissingOrBrokenFile) {
  TestSession ts;
  SQLite::Database other(ts->state.ErrorsDbPath, SQLite::OPEN_READWRITE);
  other.exec("BEGIN EXCLUSIVE");
  int pumps = 0;
  // the lock goes away while the journal lets events run, as another handler would
  ts->SetPump([&] {
    if (++pumps == 8) other.exec("COMMIT");
  });
  ts->journal().LogError(3260, "", "p", "m", "r");
  EXPECT_GT(pumps, 8);
  const JournalRow locked{3260, "Couldn't update; currently locked by another user.", "m", "p", "r"};
  EXPECT_EQ(JournalRows(*ts), std::vector<JournalRow>{locked});

  fs::remove(ts->state.ErrorsDbPath);
  EXPECT_NO_THROW(ts->journal().LogError(1, "lost", "p", "m", "r"));
  EXPECT_FALSE(fs::exists(ts->state.ErrorsDbPath));
  WriteFile(ts->state.ErrorsDbPath, std::string(4096, 'x'));
  EXPECT_NO_THROW(ts->journal().LogError(1, "lost", "p", "m", "r"));
  EXPECT_EQ(ReadFile(ts->state.ErrorsDbPath), std::string(4096, 'x'));
}

TEST(JournalTest, StepJournalsAFailureUnderItsModuleAndGoesOn) {
  const struct {
    std::function<void()> fail;
    int number;
    const char* text;
  } cases[] = {
      {[] { throw RuntimeError(err::NoCurrentRecord); }, 3021, "No current record."},
      {[] { SQLite::Database("/nonexistent/x.db", SQLite::OPEN_READWRITE); }, 3024,
       "unable to open database file"},
      {[] { throw std::logic_error("odd"); }, 32000, "odd"},
  };
  for (const auto& c : cases) {
    TestSession ts;
    int ran = 0;
    EXPECT_FALSE(step(ts->journal(), Where{"modProject", "GetTotalEvents"}, c.fail));
    EXPECT_TRUE(step(ts->journal(), Where{"modProject", "x"}, [&] { ++ran; }));
    EXPECT_EQ(ran, 1);
    const JournalRow row{c.number, c.text, "modProject", "modProject", "GetTotalEvents"};
    EXPECT_EQ(JournalRows(*ts), std::vector<JournalRow>{row});
  }
}

}  // namespace
}  // namespace r6183::test
