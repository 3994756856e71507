#include <gtest/gtest.h>

#include "shell/RequiredFiles.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

TEST(RequiredFilesTest, ChecksInOrderAndMakesTheListsFromTheShippedOnes) {
  const struct {
    std::vector<std::string> remove, missing;  // missing: reported, in order
    bool result, phonelstMade, modemMade;
  } cases[] = {
      {{}, {}, true, true, true},
      {{"DEFAULT"}, {"DEFAULT"}, false, true, true},  // the check goes on
      {{"errors", "DEFAULT"}, {"DEFAULT", "Errors"}, false, true, true},
      {{"Dphonelst"}, {"Dphonelst"}, false, false, false},  // stops at once
      {{"Dmodem"}, {"Dmodem"}, false, true, false},
      // looked up in reports/, named in the message as the system writes it
      {{"reports/PageGrp.rpt", "reports/clocks.rpt"}, {"reports\\pagegrp.rpt"}, false, true, true},
  };
  for (const auto& c : cases) {
    TestSession ts;
    ts->product.ProductTitle = "Title";
    for (const auto& r : c.remove) fs::remove(ts.dir.path() / r);
    EXPECT_EQ(CheckRequiredFiles(*ts), c.result);
    std::vector<std::string> shown, expected;
    for (const auto& m : ts.prompter.Shown()) {
      shown.push_back(m.text);
      EXPECT_TRUE(m.icon == Icon::Exclamation && m.title == "Title" && m.buttons == Buttons::Ok);
    }
    for (const auto& name : c.missing)
      expected.push_back("File '" + name + "' was not found in the application directory. "
                         "Make sure the application was properly installed.");
    EXPECT_EQ(shown, expected);
    const fs::path list = ts.dir.path() / "phonelst", shipped = ts.dir.path() / "Dphonelst";
    EXPECT_EQ(fs::exists(list) ? ReadFile(list) : "-", c.phonelstMade ? ReadFile(shipped) : "-");
    EXPECT_EQ(fs::exists(ts.dir.path() / "modem"), c.modemMade);
  }
}

TEST(RequiredFilesTest, KeepsTheOperatorsListsAndMatchesNamesWithoutCase) {
  TestSession ts;
  WriteFile(ts.dir.path() / "PhoneLst", "operator's own");
  fs::rename(ts.dir.path() / "errors", ts.dir.path() / "ERRORS");
  fs::rename(ts.dir.path() / "reports/Clid.rpt", ts.dir.path() / "reports/CLID.RPT");
  EXPECT_TRUE(CheckRequiredFiles(*ts));
  EXPECT_TRUE(ts.prompter.Shown().empty());
  EXPECT_EQ(ReadFile(ts.dir.path() / "PhoneLst"), "operator's own");
  EXPECT_FALSE(fs::exists(ts.dir.path() / "phonelst"));
}

}  // namespace
}  // namespace r6183::test
