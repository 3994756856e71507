#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include "shell/ErrorsMaintenance.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> Descriptions(const std::string& path) {
  SQLite::Database db(path);
  SQLite::Statement q(db, "SELECT errdesc FROM \"Error\" ORDER BY rowid");
  std::vector<std::string> v;
  while (q.executeStep()) v.push_back(q.getColumn(0).getString());
  return v;
}

// A journal file with one entry whose description names it.
void JournalNamed(const std::string& path, const std::string& name) {
  fs::copy_file(test::StagedAppDir() / "errors", path, fs::copy_options::overwrite_existing);
  SQLite::Database db(path, SQLite::OPEN_READWRITE);
  db.exec("INSERT INTO \"Error\" (errno, errdesc) VALUES (1, '" + name + "')");
}

TEST(RestoreErrorsDatabase, TriesTheBakCopyThenTheOldOne) {
  struct Case {
    const char* name;
    bool bak, bakUnreadable, old;
    bool restored;
    const char* from;
  };
  const Case cases[] = {
      {"both copies: bak wins", true, false, true, true, "bak"},
      {"only old", false, false, true, true, "old"},
      {"bak that can't be copied, old tried", true, true, true, true, "old"},
      {"none", false, false, false, false, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    test::TestSession t;
    const std::string errors = t->state.ErrorsDbPath;
    fs::remove(errors);
    // the shutdown writes lower-case names; start-up asks for "Bak"
    if (c.bakUnreadable)
      fs::create_directory(t.dir.str("errors.bak"));  // there, but no copy can be made of it
    else if (c.bak)
      JournalNamed(t.dir.str("errors.bak"), "bak");
    if (c.old) JournalNamed(t.dir.str("errors.old"), "old");
    EXPECT_EQ(RestoreErrorsDatabase(*t), c.restored);
    if (c.restored) {
      EXPECT_EQ(Descriptions(errors), std::vector<std::string>{c.from});
    }
  }
}

TEST(RestoreErrorsDatabase, LeavesAPresentJournalAlone) {
  test::TestSession t;
  JournalNamed(t->state.ErrorsDbPath, "current");
  JournalNamed(t.dir.str("errors.bak"), "bak");
  EXPECT_TRUE(RestoreErrorsDatabase(*t));
  EXPECT_EQ(Descriptions(t->state.ErrorsDbPath), std::vector<std::string>{"current"});
}

TEST(CompactErrors, RotatesThroughBakAndOld) {
  test::TestSession t;
  const std::string errors = t->state.ErrorsDbPath;
  t->journal().LogError(1, "first", "p", "m", "r");
  CompactErrors(*t);
  EXPECT_EQ(Descriptions(errors), std::vector<std::string>{"first"});
  EXPECT_EQ(Descriptions(t.dir.str("errors.bak")), std::vector<std::string>{"first"});
  EXPECT_EQ(Descriptions(t.dir.str("errors.old")), std::vector<std::string>{"first"});

  t->journal().LogError(2, "second", "p", "m", "r");
  CompactErrors(*t);
  // old holds the journal as it was before this compaction, bak and errors the compacted one
  EXPECT_EQ(Descriptions(errors), (std::vector<std::string>{"first", "second"}));
  EXPECT_EQ(Descriptions(t.dir.str("errors.old")), (std::vector<std::string>{"first", "second"}));
  EXPECT_EQ(Descriptions(t.dir.str("errors.bak")), (std::vector<std::string>{"first", "second"}));
}

TEST(CompactErrors, ShrinksTheFile) {
  test::TestSession t;
  const std::string errors = t->state.ErrorsDbPath;
  for (int i = 0; i < 300; ++i) t->journal().LogError(1, std::string(90, 'x'), "p", "m", "r");
  {
    SQLite::Database db(errors, SQLite::OPEN_READWRITE);
    db.exec("DELETE FROM \"Error\"");
  }
  const auto before = fs::file_size(errors);
  CompactErrors(*t);
  EXPECT_LT(fs::file_size(errors), before);
}

TEST(CompactErrors, StopsWithItsTextWhenASideCopyCantGo) {
  struct Case {
    const char* blocked;
    const char* text;
  };
  for (const Case& c : {Case{"errors.bak", "Compact Failed."},
                        Case{"errors.old", "Unable to copy errors file to .old."}}) {
    SCOPED_TRACE(c.blocked);
    test::TestSession t;
    t->journal().LogError(1, "kept", "p", "m", "r");
    // a folder of that name is no file to remove, but nothing can be written there
    fs::create_directories(t.dir.path() / c.blocked / "keep");
    CompactErrors(*t);
    EXPECT_EQ(Descriptions(t->state.ErrorsDbPath), (std::vector<std::string>{"kept", c.text}));
  }
}

TEST(RepairDatabase, PassesASoundFileAndRefusesGarbage) {
  test::TestSession t;
  EXPECT_NO_THROW(RepairDatabase(t->state.ErrorsDbPath));
  const std::string garbage = t.dir.str("garbage");
  test::WriteFile(garbage, std::string(4096, 'g'));
  EXPECT_ANY_THROW(RepairDatabase(garbage));
}

}  // namespace
}  // namespace r6183
