#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

#include "shell/AppDir.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;

TEST(AppDir, FindsNamesWithoutRegardToCase) {
  test::TempDir d;
  fs::create_directories(d.path() / "Reports");
  test::WriteFile(d.path() / "Reports" / "bgm.rpt", "x");
  test::WriteFile(d.path() / "errors", "x");
  const AppDir app(d.path());
  struct Case {
    const char* asked;
    fs::path found;
    bool has;
  };
  const Case cases[] = {
      {"Errors", d.path() / "errors", true},
      {"ERRORS", d.path() / "errors", true},
      {"reports/Bgm.rpt", d.path() / "Reports" / "bgm.rpt", true},
      {"reports/none.rpt", d.path() / "Reports" / "none.rpt", false},
      {"nothing/x", d.path() / "nothing" / "x", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.asked);
    EXPECT_EQ(app.PathOf(c.asked), c.found.string());
    EXPECT_EQ(app.Has(c.asked), c.has);
  }
  EXPECT_EQ(ResolveNoCase((d.path() / "ERRORS").string()), (d.path() / "errors").string());
  EXPECT_EQ(ResolveNoCase((d.path() / "errors.bak").string()), (d.path() / "errors.bak").string());
}

class ScopedEnv {
 public:
  ScopedEnv(const char* name, const std::string& value) : name_(name) {
    if (const char* v = std::getenv(name)) old_ = v;
    ::setenv(name, value.c_str(), 1);
  }
  ~ScopedEnv() {
    if (old_) ::setenv(name_, old_->c_str(), 1);
    else ::unsetenv(name_);
  }

 private:
  const char* name_;
  std::optional<std::string> old_;
};

TEST(AppDir, PortableWhenTheProgramsDirectoryHoldsTheTemplate) {
  test::TempDir d;
  test::CopyStagedAppDir(d.path());
  EXPECT_EQ(AppDir::Locate(d.path() / "r6183ctl").Dir(), d.path());
}

TEST(AppDir, InstalledUsesThePerUserDirectorySeededFromShare) {
  test::TempDir root;
  const fs::path bin = root.path() / "usr" / "bin";
  const fs::path share = root.path() / "usr" / R6183_SHARE_SUBDIR;
  fs::create_directories(bin);
  fs::create_directories(share);
  test::CopyStagedAppDir(share);
  const ScopedEnv xdg("XDG_DATA_HOME", (root.path() / "home-data").string());

  const fs::path user = root.path() / "home-data" / "r6183";
  fs::create_directories(user);
  test::WriteFile(user / "errors", "the operator's journal");

  const AppDir dir = AppDir::Locate(bin / "r6183ctl");
  EXPECT_EQ(dir.Dir(), user);
  EXPECT_TRUE(dir.Has("DEFAULT"));
  EXPECT_TRUE(dir.Has("reports/sched.rpt"));
  EXPECT_EQ(test::ReadFile(user / "errors"), "the operator's journal");
}

}  // namespace
}  // namespace r6183
