#include <gtest/gtest.h>

#include "JournalRows.h"
#include "shell/ProductIdentity.h"
#include "shell/Registry.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

TEST(ProductIdentityTest, HelpFileFormFollowsTheBrowserVersion) {
  const struct {
    int product, browser;
    const char* help;
  } cases[] = {{1, 4, "6183.chm"}, {1, 11, "6183.chm"},   {1, 3, "6183.hlp"},
               {1, 0, "6183.hlp"}, {3, 4, "PN48hlp.chm"}, {4, 3, "MF48hlp.hlp"},
               {0, 0, "8362.chm"}, {0, 6, "8362.chm"}};
  for (const auto& c : cases)
    EXPECT_EQ(IdentityFor(c.product, c.browser).HelpFileName, c.help)
        << c.product << "/" << c.browser;
}

TEST(ProductIdentityTest, CaptionAndNoticeOfEachProduct) {
  const struct {
    int product;
    const char *caption, *notice;
  } cases[] = {
      {0, "8362 Programming Tool  -  06/15/2000",
       "Copyright (C) 1996-2000 Orvane. All rights reserved."},
      {1, "R-6183 Programming Tool  -  11/06/2001",
       "Copyright (C) 1996-2001 Orvane. All rights reserved."},
      {2, "KT-48 Programming Tool  -  11/06/2001",
       "Copyright (C) 1996-2001 Vespane. All rights reserved."},
      {3, "PN-48 Programming Tool  -  11/06/2001",
       "Copyright (C) 1996-2001 Orvane. All rights reserved."},
  };
  for (const auto& c : cases) {
    const ProductIdentity id = IdentityFor(c.product, 5);
    EXPECT_EQ(id.ProductCaption, c.caption);
    EXPECT_EQ(id.LegalNotice, c.notice);
    EXPECT_EQ(id.ProductVersionText, "Version - 2.00");
    EXPECT_EQ(id.ProductCode, c.product);
  }
  EXPECT_EQ(IdentityFor(4, 5).IconName, "/MF-48.ico");
  EXPECT_EQ(IdentityFor(5, 5).ProductTitle, "");
}

TEST(ProductIdentityTest, BrowserVersionIsTheNumberBeforeTheFirstPoint) {
  const struct {
    const char* text;
    int version;
  } cases[] = {{"", 0}, {"5.50.4807.2300", 5}, {"11", 11}, {"abc", 0}, {".5", 0}, {"6a.1", 6}};
  for (const auto& c : cases) EXPECT_EQ(BrowserVersionFrom(c.text), c.version) << c.text;
}

TEST(ProductIdentityTest, ReportNamesOfEachProduct) {
  const struct {
    int product;
    const char* first;
  } cases[] = {{0, "reports/ssched.rpt"},
               {2, "reports/csched.rpt"},
               {3, "reports/schedCC.rpt"},
               {4, "reports/Isched.rpt"}};
  for (const auto& c : cases) EXPECT_EQ(ReportFileNames(c.product)[0], c.first);
  EXPECT_EQ(ReportFileNames(3)[8], "reports/clocksCC.rpt");
  EXPECT_EQ(ReportFileNames(1),
            (std::array<std::string, 9>{"reports/sched.rpt", "reports/event.rpt", "reports/bgm.rpt",
                                        "reports/class.rpt", "reports/clid.rpt", "reports/dip.rpt",
                                        "reports/pagegrp.rpt", "reports/phonlst.rpt",
                                        "reports/clocks.rpt"}));
}

TEST(RegistryTest, ValueTextDropsTheClosingNull) {
  const struct {
    std::string buffer;
    uint32_t length;
    const char* text;
  } cases[] = {{std::string("5.50\0\0\0", 7), 5, "5.50"},
               {"abc", 1, ""},
               {"abc", 0, ""},
               {"abc", 2, "a"},
               {"abc", 50, "abc"}};
  for (const auto& c : cases) EXPECT_EQ(RegValueText(c.buffer, c.length), c.text) << c.length;
  EXPECT_EQ(GetRegString(RegistryHive::LocalMachine, "Software", "Version"), "");
}

TEST(WhoAmiTest, EstablishesTheBuiltInProductWithItsIcon) {
  TestSession ts;
  AA_Sys_WhoAmi(*ts);
  EXPECT_EQ(ts->product.ProductModel, "R-6183");
  EXPECT_EQ(ts->product.HelpFileName, "6183.hlp");  // no registry: browser version 0
  EXPECT_EQ(ts->product.IconPath, (ts.dir.path() / "r6183.ico").string());
  EXPECT_TRUE(JournalRows(*ts).empty());
}

TEST(WhoAmiTest, FindsTheIconWhateverItsCase) {
  TestSession ts;
  fs::rename(ts.dir.path() / "r6183.ico", ts.dir.path() / "R6183.ICO");
  AA_Sys_WhoAmi(*ts);
  EXPECT_EQ(ts->product.IconPath, (ts.dir.path() / "R6183.ICO").string());
  EXPECT_TRUE(JournalRows(*ts).empty());
}

TEST(WhoAmiTest, AMissingIconIsJournalledAndStartUpGoesOn) {
  TestSession ts;
  fs::remove(ts.dir.path() / "r6183.ico");
  AA_Sys_WhoAmi(*ts);
  EXPECT_EQ(ts->product.ProductTitle, "Orvane R-6183 Programming Tool");
  EXPECT_EQ(ts->product.IconPath, "");
  const auto rows = JournalRows(*ts);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].number, err::FileNotFound);
  EXPECT_EQ(rows[0].description, "File not found");
  EXPECT_EQ(rows[0].module, "AA_Sys_WhoAmi");
  EXPECT_EQ(rows[0].routine, "iniSysOpt");
  EXPECT_EQ(rows[0].date, "11/06/2001");
}

}  // namespace
}  // namespace r6183::test
