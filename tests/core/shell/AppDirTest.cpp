#include <gtest/gtest.h>

#include <cstdlib>

#include "shell/AppDir.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

TEST(AppDirTest, FindsNamesWithoutRegardToCase) {
  TempDir d;
  fs::create_directories(d.path() / "Reports");
  WriteFile(d.path() / "Reports" / "bgm.rpt", "x");
  WriteFile(d.path() / "errors", "x");
  const AppDir app(d.path());
  for (const auto& [asked, found, has] :
       {std::tuple{"ERRORS", "errors", true}, {"reports/Bgm.rpt", "Reports/bgm.rpt", true},
        {"reports/none.rpt", "Reports/none.rpt", false}, {"nothing/x", "nothing/x", false},
        {"reports", "Reports", false}}) {
    EXPECT_EQ(app.PathOf(asked), d.str(found));
    EXPECT_EQ(app.Has(asked), has) << asked;
  }
  EXPECT_EQ(ResolveNoCase(d.str("ERRORS")), d.str("errors"));
  EXPECT_EQ(ResolveNoCase(d.str("errors.bak")), d.str("errors.bak"));
}

TEST(AppDirTest, PortableBesideTheTemplateElseThePerUserDirectorySeededFromShare) {
  TempDir root;
  const fs::path bin = root.path() / "usr/bin", share = root.path() / "usr" / R6183_SHARE_SUBDIR;
  const fs::path user = root.path() / "data/r6183";
  for (const auto& dir : {bin, share, user}) fs::create_directories(dir);
  CopyStagedAppDir(share);
  fs::permissions(share / "DEFAULT", fs::perms::owner_read);  // installed files are read-only
  WriteFile(user / "errors", "the operator's journal");
  const char* was = std::getenv("XDG_DATA_HOME");
  const std::string saved = was ? was : "";
  ::setenv("XDG_DATA_HOME", (root.path() / "data").c_str(), 1);
  const AppDir installed = AppDir::Locate(bin / "r6183ctl");
  CopyStagedAppDir(bin);
  const AppDir portable = AppDir::Locate(bin / "r6183ctl");
  was ? ::setenv("XDG_DATA_HOME", saved.c_str(), 1) : ::unsetenv("XDG_DATA_HOME");

  EXPECT_EQ(installed.Dir(), user);
  EXPECT_TRUE(installed.Has("DEFAULT") && installed.Has("reports/sched.rpt"));
  EXPECT_NE(fs::status(user / "DEFAULT").permissions() & fs::perms::owner_write, fs::perms::none);
  EXPECT_EQ(ReadFile(user / "errors"), "the operator's journal");
  EXPECT_EQ(portable.Dir(), bin);
}

}  // namespace
}  // namespace r6183::test
