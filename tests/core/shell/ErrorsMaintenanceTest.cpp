#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include "shell/ErrorsMaintenance.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

using Texts = std::vector<std::string>;

// The descriptions in a journal file, or {""} when there is no file.
Texts Descriptions(const std::string& path) {
  if (!fs::exists(path)) return {""};
  Texts v;
  for (const auto& r : JournalRows(path)) v.push_back(r.description);
  return v;
}

TEST(ErrorsMaintenanceTest, RestoreTakesTheBakCopyThenTheOldOne) {
  // shutdown writes lower-case names, start-up asks for "Bak"; a folder can't be copied
  const struct {
    const char *errors, *bak, *old, *restored;  // "" absent, "dir" a folder
  } cases[] = {{"current", "bak", "old", "current"}, {"", "bak", "old", "bak"}, {"", "", "old", "old"},
               {"", "dir", "old", "old"}, {"", "", "", ""}};
  for (const auto& c : cases) {
    TestSession ts;
    fs::remove(ts->state.ErrorsDbPath);
    for (const auto& [path, what] : {std::pair{ts->state.ErrorsDbPath, c.errors},
                                     {ts.dir.str("errors.bak"), c.bak}, {ts.dir.str("errors.old"), c.old}}) {
      const std::string name = what;
      if (name == "dir") {
        fs::create_directory(path);
      } else if (!name.empty()) {
        fs::copy_file(StagedAppDir() / "errors", path);
        SQLite::Database(path, SQLite::OPEN_READWRITE)
            .exec("INSERT INTO \"Error\" (errdesc) VALUES ('" + name + "')");
      }
    }
    EXPECT_EQ(RestoreErrorsDatabase(*ts), *c.restored != 0) << c.restored;
    EXPECT_EQ(Descriptions(ts->state.ErrorsDbPath), Texts{c.restored});
  }
}

TEST(ErrorsMaintenanceTest, CompactShrinksAndRotatesThroughBakAndOld) {
  TestSession ts;
  const std::string errors = ts->state.ErrorsDbPath;
  ts->journal().LogError(1, "first", "p", "m", "r");
  SQLite::Database(errors, SQLite::OPEN_READWRITE)
      .exec("CREATE TABLE pad(x); INSERT INTO pad SELECT zeroblob(100000); DROP TABLE pad");
  const auto before = fs::file_size(errors);
  CompactErrors(*ts);
  EXPECT_LT(fs::file_size(errors), before);
  for (const auto& path : {errors, ts.dir.str("errors.bak"), ts.dir.str("errors.old")})
    EXPECT_EQ(Descriptions(path), Texts{"first"}) << path;
  ts->journal().LogError(2, "second", "p", "m", "r");
  CompactErrors(*ts);  // old takes the journal as it was before this compaction
  for (const auto& path : {errors, ts.dir.str("errors.bak"), ts.dir.str("errors.old")})
    EXPECT_EQ(Descriptions(path), (Texts{"first", "second"})) << path;
}

TEST(ErrorsMaintenanceTest, CompactStopsWithItsTextWhenASideCopyCantBeWritten) {
  for (const auto& [blocked, text] : {std::pair{"errors.bak", "Compact Failed."},
                                      {"errors.old", "Unable to copy errors file to .old."}}) {
    TestSession ts;
    ts->journal().LogError(1, "kept", "p", "m", "r");
    // a folder of that name is no file to remove, but nothing can be written there
    fs::create_directories(ts.dir.path() / blocked / "keep");
    CompactErrors(*ts);
    EXPECT_EQ(Descriptions(ts->state.ErrorsDbPath), (Texts{"kept", text}));
    EXPECT_EQ(JournalRows(*ts).back().routine, "CompactErrors");
  }
}

TEST(ErrorsMaintenanceTest, RepairPassesASoundFileAndRefusesGarbage) {
  TestSession ts;
  EXPECT_NO_THROW(RepairDatabase(ts->state.ErrorsDbPath));
  WriteFile(ts.dir.path() / "garbage", std::string(4096, 'g'));
  EXPECT_ANY_THROW(RepairDatabase(ts.dir.str("garbage")));
}

}  // namespace
}  // namespace r6183::test
