#include <gtest/gtest.h>

#include "shell/ProductIdentity.h"
#include "shell/Registry.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

TEST(ProductIdentityTest, WordsAndHelpFileOfEachProduct) {
  const struct {
    int product, browser;
    const char *help, *caption, *holder;
  } cases[] = {
      {0, 0, "8362.chm", "8362 Programming Tool  -  06/15/2000", "1996-2000 Orvane"},  // HTML help only
      {1, 3, "6183.hlp", "R-6183 Programming Tool  -  11/06/2001", "1996-2001 Orvane"},
      {1, 4, "6183.chm", "R-6183 Programming Tool  -  11/06/2001", "1996-2001 Orvane"},
      {2, 11, "KT48.chm", "KT-48 Programming Tool  -  11/06/2001", "1996-2001 Vespane"},
      {3, 0, "PN48hlp.hlp", "PN-48 Programming Tool  -  11/06/2001", "1996-2001 Orvane"},
  };
  for (const auto& c : cases) {
    const ProductIdentity id = IdentityFor(c.product, c.browser);
    EXPECT_EQ(id.HelpFileName, c.help) << c.product << "/" << c.browser;
    EXPECT_EQ(id.ProductCaption, c.caption);
    EXPECT_EQ(id.LegalNotice, std::string("Copyright (C) ") + c.holder + ". All rights reserved.");
    EXPECT_EQ(id.ProductCode, c.product);
  }
  EXPECT_EQ(IdentityFor(5, 5).ProductTitle, "");
  for (const auto& [text, version] :
       {std::pair{"", 0}, {"5.50.4807.2300", 5}, {"11", 11}, {"abc", 0}, {".5", 0}, {"6a.1", 6}})
    EXPECT_EQ(BrowserVersionFrom(text), version) << text;
}

TEST(ProductIdentityTest, ReportNamesAndRegistryText) {
  EXPECT_EQ(ReportFileNames(1),
            (std::array<std::string, 9>{"reports/sched.rpt", "reports/event.rpt", "reports/bgm.rpt",
                                        "reports/class.rpt", "reports/clid.rpt", "reports/dip.rpt",
                                        "reports/pagegrp.rpt", "reports/phonlst.rpt", "reports/clocks.rpt"}));
  // the reported length counts the closing null
  for (const auto& [length, text] : {std::pair{5u, "5.50"}, {2u, "5"}, {1u, ""}, {0u, ""}})
    EXPECT_EQ(RegValueText(std::string("5.50\0\0\0", 7), length), text) << length;
  EXPECT_EQ(RegValueText("abc", 50), "abc");
  EXPECT_EQ(GetRegString(RegistryHive::LocalMachine, "Software", "Version"), "");
}

TEST(ProductIdentityTest, WhoAmiFindsTheIconInAnyCaseAndJournalsAMissingOne) {
  for (const std::string icon : {"r6183.ico", "R6183.ICO", ""}) {  // "": no icon
    TestSession ts;
    if (icon.empty()) fs::remove(ts.dir.path() / "r6183.ico");
    else fs::rename(ts.dir.path() / "r6183.ico", ts.dir.path() / icon);
    AA_Sys_WhoAmi(*ts);
    EXPECT_EQ(ts->product.ProductTitle, "Orvane R-6183 Programming Tool");
    EXPECT_EQ(ts->product.HelpFileName, "6183.hlp");  // no registry: browser version 0
    EXPECT_EQ(ts->product.IconPath, icon.empty() ? "" : ts.dir.str(icon));
    std::vector<JournalRow> rows;
    if (icon.empty())
      rows.push_back({err::FileNotFound, "File not found", "AA_Sys_WhoAmi", "AA_Sys_WhoAmi", "iniSysOpt"});
    EXPECT_EQ(JournalRows(*ts), rows);
  }
}

}  // namespace
}  // namespace r6183::test
