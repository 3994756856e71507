#include <gtest/gtest.h>

#include "shell/RequiredFiles.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;

std::string Missing(const std::string& name) {
  return "File '" + name +
         "' was not found in the application directory. Make sure the application was properly installed.";
}

TEST(CheckRequiredFiles, ChecksInOrderAndMakesTheListsFromTheShippedOnes) {
  struct Case {
    const char* name;
    std::vector<std::string> remove;
    bool result;
    std::vector<std::string> messages;
    bool phonelstMade, modemMade;
  };
  const Case cases[] = {
      {"complete", {}, true, {}, true, true},
      {"no template: reported, the check goes on", {"DEFAULT"}, false, {Missing("DEFAULT")}, true, true},
      {"no template and no journal", {"DEFAULT", "errors"}, false, {Missing("DEFAULT"), Missing("Errors")}, true, true},
      {"no shipped phone list stops at once", {"Dphonelst"}, false, {Missing("Dphonelst")}, false, false},
      {"no shipped modem list", {"Dmodem"}, false, {Missing("Dmodem")}, true, false},
      {"a report missing", {"reports/pagegrp.rpt"}, false, {Missing("reports/pagegrp.rpt")}, true, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    test::TestSession t;
    t->product.ProductTitle = "Title";
    for (const auto& r : c.remove) fs::remove(t.dir.path() / r);
    EXPECT_EQ(CheckRequiredFiles(*t), c.result);
    std::vector<std::string> shown;
    for (const auto& m : t.prompter.Shown()) {
      shown.push_back(m.text);
      EXPECT_EQ(m.icon, Icon::Exclamation);
      EXPECT_EQ(m.title, "Title");
    }
    EXPECT_EQ(shown, c.messages);
    EXPECT_EQ(fs::exists(t.dir.path() / "phonelst"), c.phonelstMade);
    EXPECT_EQ(fs::exists(t.dir.path() / "modem"), c.modemMade);
  }
}

TEST(CheckRequiredFiles, KeepsTheOperatorsListsAndMatchesNamesWithoutCase) {
  test::TestSession t;
  test::WriteFile(t.dir.path() / "PhoneLst", "operator's own");
  fs::rename(t.dir.path() / "errors", t.dir.path() / "ERRORS");
  fs::rename(t.dir.path() / "reports" / "clid.rpt", t.dir.path() / "reports" / "CLID.RPT");
  EXPECT_TRUE(CheckRequiredFiles(*t));
  EXPECT_TRUE(t.prompter.Shown().empty());
  EXPECT_EQ(test::ReadFile(t.dir.path() / "PhoneLst"), "operator's own");
  EXPECT_FALSE(fs::exists(t.dir.path() / "phonelst"));
}

}  // namespace
}  // namespace r6183
