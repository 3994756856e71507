#include <gtest/gtest.h>

#include <filesystem>

#include "shell/HelpBook.h"
#include "shell/ProductIdentity.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

TEST(HelpBookTest, BothHelpFileFormsLeadToTheInstalledBook) {
  const struct {
    const char* helpFile;
    const char* bookDir;  // where index.html lies; null: no book
    bool found;
  } cases[] = {
      {"6183.chm", "help", true},
      {"6183.hlp", "help", true},
      {"6183.CHM", "Help", true},  // names in the application directory ignore case
      {"6183.chm", nullptr, false},
      {"", "help", false},  // no identity established
      {"6183.txt", "help", false},
  };
  for (const auto& c : cases) {
    TestSession ts;
    fs::remove_all(ts.dir.path() / "help");
    if (c.bookDir) fs::copy(StagedAppDir() / "help", ts.dir.path() / c.bookDir, fs::copy_options::recursive);
    ts->product.HelpFileName = c.helpFile;
    const std::string path = HelpBookPath(*ts);
    EXPECT_EQ(!path.empty(), c.found) << c.helpFile << " in " << (c.bookDir ? c.bookDir : "-");
    if (c.found) {
      EXPECT_EQ(fs::path(path), ts.dir.path() / c.bookDir / "index.html");
    } else {
      EXPECT_EQ(path, "");
    }
  }
}

}  // namespace
}  // namespace r6183::test
