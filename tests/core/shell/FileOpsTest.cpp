#include <gtest/gtest.h>

#include "shell/FileOps.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

TEST(FileOpsTest, IsFileTakesNamesAndPatternsInAnyCaseButNoFolders) {
  TempDir d;
  for (const char* name : {"DEFAULT", "Site.MDB", "readme", "aXXbYYc", "\xc3\xa9x", "[A]"})
    WriteFile(d.path() / name, "x");
  fs::create_directory(d.path() / "folder.mdb");
  for (const auto& [pattern, found] :
       {std::pair{"DEFAULT", true}, {"default", true}, {"*.mdb", true}, {"S?TE.*", true}, {"readme.*", true},
        {"a*b*c", true}, {"a*b*cd", false}, {"?x", true}, {"[?]", true}, {"*.ldb", false}, {"*.md", false},
        {"missing", false}, {"folder.mdb", false}, {"fold*", false}, {"", false}, {"nodir/DEFAULT", false},
        {"DEFAULT/x", false}})
    EXPECT_EQ(IsFile(d.str() + "/" + pattern), found) << pattern;
  EXPECT_FALSE(IsFile(""));
  EXPECT_FALSE(WildcardMatch("?", ""));
}

TEST(FileOpsTest, RemoveFileDeletesEveryMatchAndJournalsOneThatStays) {
  TestSession ts;
  const auto P = [&](const std::string& name) { return ts.dir.str(name); };
  for (const char* name : {"a.tmp", "B.TMP", "keep.mdb"}) WriteFile(P(name), "x");
  RemoveFile(*ts, P("*.tmp"));
  EXPECT_TRUE(!IsFile(P("*.tmp")) && IsFile(P("keep.mdb")));
  RemoveFile(*ts, P("KEEP.MDB"));
  RemoveFile(*ts, P("missing"));
  EXPECT_FALSE(IsFile(P("keep.mdb")));
  EXPECT_TRUE(JournalRows(*ts).empty());

  fs::create_directory(P("locked"));
  WriteFile(P("locked/site.mdb"), "x");
  fs::permissions(P("locked"), fs::perms::owner_read | fs::perms::owner_exec);
  EXPECT_TRUE(AsUnprivileged(ts.dir.path(), [&] {
    RemoveFile(*ts, P("locked/site.mdb"));
    return IsFile(P("locked/site.mdb"));
  }));
  const JournalRow row{err::PathFileAccessError, "File " + P("locked/site.mdb") + " did not delete.",
                       "Utility", "Unknown", "RemoveFile"};
  EXPECT_EQ(JournalRows(*ts), std::vector<JournalRow>{row});
}

TEST(FileOpsTest, FcnRemoveFileRemovesFilesAndLinksButNoFolders) {
  TempDir d;
  WriteFile(d.path() / "site.mdb", "x");
  fs::create_symlink(d.path() / "nowhere", d.path() / "dangling");
  fs::create_directory(d.path() / "folder");
  for (const char* name : {"missing", "site.mdb", "dangling", "folder"})
    EXPECT_TRUE(fcnRemoveFile(d.path() / name)) << name;
  EXPECT_EQ(std::distance(fs::directory_iterator(d.path()), {}), 1);
  EXPECT_TRUE(fs::is_directory(d.path() / "folder"));
}

TEST(FileOpsTest, CopyReplacesTheTargetAndNeverTheSource) {
  TempDir d;
  const auto P = [&](const std::string& name) { return d.str(name); };
  WriteFile(P("DEFAULT"), "template");
  WriteFile(P("~TEMP"), "old work");
  EXPECT_TRUE(ReplaceWithCopy(P("DEFAULT"), P("~TEMP")));
  EXPECT_EQ(ReadFile(P("~TEMP")), "template");
  EXPECT_TRUE(ReplaceWithCopy(P("DEFAULT"), P("./DEFAULT")));  // onto itself
  EXPECT_FALSE(ReplaceWithCopy(P("missing"), P("~TEMP")));     // the target goes all the same
  EXPECT_FALSE(fs::exists(P("~TEMP")));
  fs::create_directory(P("ro"));
  fs::permissions(P("ro"), fs::perms::owner_read | fs::perms::owner_exec);
  for (const char* target : {"no such dir/~TEMP", "DEFAULT/~TEMP", "ro/~TEMP"})
    EXPECT_TRUE(AsUnprivileged(d.path(), [&] { return !ReplaceWithCopy(P("DEFAULT"), P(target)); }))
        << target;
  EXPECT_FALSE(fs::exists(P("ro/~TEMP")));
  EXPECT_EQ(ReadFile(P("DEFAULT")), "template");
}

}  // namespace
}  // namespace r6183::test
