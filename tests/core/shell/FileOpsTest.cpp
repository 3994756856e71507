#include <gtest/gtest.h>
#include <unistd.h>

#include "JournalRows.h"
#include "shell/FileOps.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {


class FileOpsTest : public ::testing::Test {
 protected:
  std::string P(const std::string& name) const { return dir.str(name); }
  void Touch(const std::string& name, const std::string& bytes = "x") {
    WriteFile(dir.path() / name, bytes);
  }
  TempDir dir;
};

TEST(WildcardMatchTest, StarAndQuestionMarkWithoutRegardToCase) {
  const struct {
    const char *pattern, *name;
    bool match;
  } cases[] = {{"*.rpt", "sched.RPT", true},
               {"S?HED.rpt", "sched.rpt", true},
               {"a*b*c", "aXXbYYc", true},
               {"a*b*c", "aXXbYY", false},
               {"*.mdb", "site.mdb.bak", false},
               {"?x", "\xc3\xa9x", true},
               {"?", "", false},
               {"[a]", "[A]", true}};
  for (const auto& c : cases)
    EXPECT_EQ(WildcardMatch(c.pattern, c.name), c.match) << c.pattern << " ~ " << c.name;
}

TEST_F(FileOpsTest, IsFileMatchesNamesAndPatternsWithoutRegardToCase) {
  Touch("DEFAULT");
  Touch("Site.MDB");
  Touch("readme");
  fs::create_directory(dir.path() / "folder.mdb");
  const struct {
    std::string pattern;
    bool found;
  } cases[] = {
      {P("DEFAULT"), true},        {P("default"), true},    {P("site.mdb"), true},
      {P("*.mdb"), true},          {P("S?TE.*"), true},     {P("readme.*"), true},
      {P("*.ldb"), false},         {P("missing"), false},   {P("folder.mdb"), false},
      {P("fold*"), false},         {P(""), false},          {"", false},
      {P("nodir/DEFAULT"), false}, {P("DEFAULT/x"), false},
  };
  for (const auto& c : cases) EXPECT_EQ(IsFile(c.pattern), c.found) << c.pattern;
}

TEST_F(FileOpsTest, RemoveFileDeletesEveryMatch) {
  TestSession ts;
  for (const char* name : {"a.tmp", "B.TMP", "keep.mdb"}) Touch(name);
  RemoveFile(*ts, P("*.tmp"));
  EXPECT_FALSE(IsFile(P("*.tmp")));
  EXPECT_TRUE(IsFile(P("keep.mdb")));
  RemoveFile(*ts, P("KEEP.MDB"));  // a plain name in another case
  EXPECT_FALSE(IsFile(P("keep.mdb")));
  RemoveFile(*ts, P("missing"));
  EXPECT_TRUE(JournalRows(*ts).empty());
}

TEST_F(FileOpsTest, AFileThatStaysIsJournalled) {
  TestSession ts;  // its directory holds the journal and the locked folder
  const fs::path locked = ts.dir.path() / "locked";
  fs::create_directory(locked);
  WriteFile(locked / "site.mdb", "x");
  fs::permissions(locked, fs::perms::owner_read | fs::perms::owner_exec);
  const std::string name = (locked / "site.mdb").string();
  EXPECT_TRUE(AsUnprivileged(ts.dir.path(), [&] {
    RemoveFile(*ts, name);
    return IsFile(name);
  }));
  const auto rows = JournalRows(*ts);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].description, "File " + name + " did not delete.");
  EXPECT_EQ(rows[0].program, "Unknown");
  EXPECT_EQ(rows[0].module, "Utility");
  EXPECT_EQ(rows[0].routine, "RemoveFile");
}

TEST_F(FileOpsTest, FcnRemoveFile) {
  EXPECT_TRUE(fcnRemoveFile(P("missing")));
  Touch("site.mdb");
  EXPECT_TRUE(fcnRemoveFile(P("site.mdb")));
  EXPECT_FALSE(fs::exists(P("site.mdb")));
  fs::create_symlink(P("nowhere"), P("dangling"));
  EXPECT_TRUE(fcnRemoveFile(P("dangling")));
  EXPECT_FALSE(fs::is_symlink(P("dangling")));
  fs::create_directory(P("folder"));
  EXPECT_TRUE(fcnRemoveFile(P("folder")));  // not a file: nothing to remove
  EXPECT_TRUE(fs::is_directory(P("folder")));
}

TEST_F(FileOpsTest, CopyReplacesTheTargetAndNeverTheSource) {
  Touch("DEFAULT", "template");
  Touch("~TEMP", "old work");
  EXPECT_TRUE(ReplaceWithCopy(P("DEFAULT"), P("~TEMP")));
  EXPECT_EQ(ReadFile(P("~TEMP")), "template");
  EXPECT_TRUE(ReplaceWithCopy(P("DEFAULT"), P("./DEFAULT")));  // onto itself
  EXPECT_EQ(ReadFile(P("DEFAULT")), "template");

  EXPECT_FALSE(ReplaceWithCopy(P("missing"), P("~TEMP")));  // the target is gone all the same
  EXPECT_FALSE(fs::exists(P("~TEMP")));
  EXPECT_FALSE(ReplaceWithCopy(P("DEFAULT"), P("no such dir/~TEMP")));
  EXPECT_FALSE(ReplaceWithCopy(P("DEFAULT"), P("DEFAULT/~TEMP")));
  EXPECT_EQ(ReadFile(P("DEFAULT")), "template");
}

TEST_F(FileOpsTest, CopyIntoAReadOnlyDirectoryFails) {
  Touch("DEFAULT", "template");
  fs::create_directory(P("ro"));
  fs::permissions(P("ro"), fs::perms::owner_read | fs::perms::owner_exec);
  EXPECT_TRUE(AsUnprivileged(dir.path(), [&] { return !ReplaceWithCopy(P("DEFAULT"), P("ro/~TEMP")); }));
  EXPECT_FALSE(fs::exists(P("ro/~TEMP")));
}

}  // namespace
}  // namespace r6183::test
