// Report layouts read and laid out: the shipped ones, damaged ones, and the pages a long
// table makes.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "ReportTestSupport.h"
#include "reports/ReportEngine.h"
#include "reports/ReportLayout.h"
#include "reports/PrintModel.h"

namespace r6183::test {
namespace {

constexpr const char* kHead = "[Report]\nFormat=1\nTitle=T\n";

TEST(Layouts, TheShippedLayoutsAreReadableAndRenderAnEmptyDocument) {
  TempDir dir;
  MakeDocument(dir.path() / "EMPTY.MDB", "DEFAULT");
  const AppDir shipped(StagedAppDir());
  const auto files = ReportFilesFor(1);
  for (std::string name : *files) {
    SCOPED_TRACE(name);
    name.replace(name.find('\\'), 1, "/");
    ASSERT_TRUE(shipped.Has(name));
    const ReportLayout layout = LoadLayout(shipped.PathOf(name));
    const auto pages = RenderReport(layout, dir.str("EMPTY.MDB"), {"Database = 'Untitled'"}, {});
    ASSERT_FALSE(pages.empty());
    EXPECT_EQ(pages.front().texts.front().text, layout.title);
    EXPECT_NE(PageText(pages.front()).find("Database: Untitled\n"), std::string::npos);
  }
}

TEST(Layouts, ADamagedLayoutIsRefusedWithItsNameLineAndReason) {
  const struct {
    std::string text;
    int line;
    std::string reason;
  } cases[] = {
      {"", 0, "the [Report] section is missing"},
      {std::string("%PDF\0\x01\x02", 7), 0, "binary data"},
      {"Title=T\n[Report]\n", 1, "must begin with its [Report] section"},
      {"[Report]\nFormat=2\nTitle=T\n[Text]\nSource=Document\nText=x\n", 2, "Format=1 is the only format"},
      {"[Report]\nFormat=1\n[Text]\nSource=Document\nText=x\n", 0, "has no Title"},
      {std::string(kHead) + "[Tabel]\n", 4, "unknown section \"[Tabel]\""},
      {std::string(kHead) + "[Table]\nSource=Clidd\nColumn=A | archnum | 20\n", 5, "unknown source \"Clidd\""},
      {std::string(kHead) + "[Table]\nSource=Clid\n\nColumn=A | archnumber | 20\n", 7, "no field \"archnumber\""},
      {std::string(kHead) + "[Table]\nSource=Clid\nColumn=A | archnum | wide\n", 6, "a width is millimetres"},
      {std::string(kHead) + "[Table]\nSource=Clid\nColumn=A | archnum | 20 | Middle\n", 6, "Left, Center or Right"},
      {std::string(kHead) + "[Table]\nSource=Clid\nColumn=A | archnum\n", 6, "a column is Caption | field | width"},
      {std::string(kHead) + "[Table]\nSource=Clid\nGroup={board_name\nColumn=A | archnum | 20\n", 6, "a { without its }"},
      {std::string(kHead) + "[Table]\nSource=Audio\nMarks=G | PageGroup | 16-1 | 8\n", 6, "as 1-16"},
      {std::string(kHead) + "[Table]\nSource=Audio\nMarks=G | Group | 1-2 | 8\n", 6, "no field \"Group1\""},
      {std::string(kHead) + "[Table]\nSource=Clid\n", 4, "has no Column"},
      {std::string(kHead) + "[Table]\nColumn=A | archnum | 20\n", 4, "names no Source"},
      {std::string(kHead) + "[Text]\nSource=Document\nText=on {nothing}\n", 6, "no field \"nothing\""},
      {std::string(kHead) + "a line of prose\n", 4, "must be [Section] or Key=Value"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    try {
      ParseLayout(c.text, "reports\\x.rpt");
      ADD_FAILURE() << "accepted";
    } catch (const LayoutError& e) {
      EXPECT_EQ(e.line(), c.line);
      EXPECT_NE(e.reason().find(c.reason), std::string::npos) << e.reason();
      EXPECT_EQ(std::string(e.what()).rfind("reports\\x.rpt", 0), 0u) << e.what();
    }
  }
  TempDir dir;
  EXPECT_THROW(LoadLayout(dir.str("gone.rpt"), "reports\\gone.rpt"), LayoutError);
}

// The largest system on small paper: the station list runs over several pages.
TEST(Layouts, ATableGoesOnOverPagesWithItsHeadingsAndGroup) {
  TempDir dir;
  MakeDocument(dir.path() / "BIG.MDB", "DEFAULT",
               "UPDATE Config SET System_Config = 3; UPDATE Clid SET archnum = 1000 + clid_station;");
  const ReportLayout layout = ParseLayout(std::string(kHead) +
                                              "[Table]\nCaption=Stations\nSource=Clid\nGroup={board_name}\n"
                                              "Column=Station | clid_station | 20 | Right\nColumn=Number | archnum | 20\n",
                                          "t.rpt");
  RenderOptions options;
  options.paper = {148, 210};
  const auto pages = RenderReport(layout, dir.str("BIG.MDB"), {"Database = 'BIG.MDB'"}, options);
  ASSERT_GE(pages.size(), 3u);
  const double bottom = 210 * kPointsPerMm - options.marginMm * kPointsPerMm;
  std::map<std::string, int> numbers;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    SCOPED_TRACE("page " + std::to_string(i + 1));
    const auto& texts = pages[i].texts;
    EXPECT_EQ(texts.front().text, "T");
    const std::string all = PageText(pages[i]);
    EXPECT_NE(all.find("Page " + std::to_string(i + 1) + " of " + std::to_string(pages.size())), std::string::npos);
    // the caption, the column headings, then a board: never a row without its group
    const std::string caption = i == 0 ? "Stations\nStation\nNumber\n" : "Stations (continued)\nStation\nNumber\n";
    const std::size_t at = all.find(caption);
    ASSERT_NE(at, std::string::npos) << all;
    const std::string next = all.substr(at + caption.size(), all.find('\n', at + caption.size()) - at - caption.size());
    EXPECT_TRUE(next.starts_with("Main Board") || next.starts_with("Expansion")) << next;
    for (const TextRun& t : texts) {
      EXPECT_LE(t.box.y + t.box.h, bottom + 0.01) << t.text;
      if (t.text.size() == 4 && t.text[0] == '1') ++numbers[t.text];
    }
  }
  ASSERT_EQ(numbers.size(), 96u);
  for (const auto& [n, times] : numbers) EXPECT_EQ(times, 1) << n;
}

TEST(Layouts, RowsAreSortedAndFilteredAndMarksKeepToTheInstalledGroups) {
  TempDir dir;
  MakeDocument(dir.path() / "TWO.MDB", "DEFAULT",
               "UPDATE Config SET System_Config = 1;"
               "UPDATE Clid SET archnum = CASE clid_station WHEN 1 THEN '300 ' WHEN 2 THEN '90' WHEN 30 THEN '410'"
               " WHEN 60 THEN '777' ELSE '' END;"
               "UPDATE Bgm SET PageGroup8 = 1, PageGroup9 = 1;");
  const ReportLayout layout = ParseLayout(std::string(kHead) +
                                              "[Table]\nSource=Clid\nOnly=installed, archnum\nOrder=archnum\n"
                                              "Column=Number | archnum | 20\n"
                                              "[Table]\nSource=Audio\nColumn=Source | source | 40\n"
                                              "Marks=Page Groups | PageGroup | 1-16 | 8 | Installed\n",
                                          "t.rpt");
  const std::string text = AllText(RenderReport(layout, dir.str("TWO.MDB"), {}, {}));
  EXPECT_NE(text.find("Number\n90\n300\n410\n"), std::string::npos) << text;
  EXPECT_EQ(text.find("777"), std::string::npos) << "station 60 is on a board not installed";
  EXPECT_NE(text.find("Page Groups\n1\n"), std::string::npos);
  EXPECT_NE(text.find("\n8\nBackground Music\nX\n"), std::string::npos) << "group 8 ticked, group 9 not shown";
  EXPECT_EQ(text.find("\n9\n"), std::string::npos);
}

}  // namespace
}  // namespace r6183::test
