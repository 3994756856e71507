// r6183ctl report: the reports of a document in a PDF file, read back with pdftotext.
#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <sstream>

#include "support/TestSupport.h"

namespace r6183::test {
namespace {

class ReportCommand : public ::testing::Test {
 protected:
  ReportCommand() {
    fs::create_directory(dir.path() / "app");
    CopyStagedAppDir(dir.path() / "app");
    // the sample site with a ring pattern, a queue tone and background music in groups 3 and 12
    fs::copy_file(StagedAppDir() / "sample.mdb", dir.path() / "site.mdb");
    SQLite::Database(dir.str("site.mdb"), SQLite::OPEN_READWRITE)
        .exec("UPDATE DipSwitch SET RingPattern = 1, QueueTone = 1; UPDATE Bgm SET PageGroup3 = 1, PageGroup12 = 1;"
              "UPDATE Bgm SET PageGroup11 = 0;");
  }
  int Run(const std::string& args) {
    const std::string cmd = std::string("'") + R6183CTL_PATH + "' --appdir '" + dir.str("app") + "' report '" +
                            dir.str("site.mdb") + "' --paper a4 " + args + " >'" + dir.str("out") + "' 2>'" +
                            dir.str("err") + "' </dev/null";
    const int status = std::system(cmd.c_str());
    out = ReadFile(dir.path() / "out");
    err = ReadFile(dir.path() / "err");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  // The line of the text that holds `key`.
  static std::string Line(const std::string& text, const std::string& key) {
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
      if (line.find(key) != std::string::npos) return line;
    return "<no line with " + key + ">";
  }
  TempDir dir;
  std::string out, err;
};

TEST_F(ReportCommand, EachReportOfARichDocumentShowsItsData) {
  const struct {
    std::string only, title;
    std::vector<std::pair<std::string, std::vector<std::string>>> lines;  // key of a line, what it holds
    int pages = 1;
    int marks = -1;  // X in the first line's key, where counted
  } cases[] = {
      {"Bgm", "Audio Connections", {{"Background Music", {}}, {"System:", {"Main Board + Expansion 1, 2", "1 to 12"}}}, 1, 2},
      {"PageGrp", "Custom Page Groups", {{"  51  ", {}}}, 1, 2},
      {"Phonlst", "Phone List", {{"Front Office", {"101", "1", "Main Board"}}, {"Hall 12", {"172", "72", "Expansion 2"}}}, 2},
      {"Clid", "ArchNumber / CLID", {{"Principal", {"2", "102", "1"}}, {"Expansion 2", {}}, {"72 stations", {"72 with"}}}, 2},
      {"class", "Class of Service", {{"Emergency Only!", {"101", "106"}}, {"172", {"Normal / Emergency", "167"}}}},
      {"dip", "System Options", {{"Ring Pattern", {"14", "Dutch"}}, {"Queue Tone", {"6", "X"}}, {"Tone Source", {"16", "Internal"}}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.only);
    ASSERT_EQ(Run("--only " + c.only + " --pdf '" + dir.str(c.only + ".pdf") + "'"), 0) << err;
    EXPECT_EQ(out, dir.str(c.only + ".pdf") + ": 1 report, " + std::to_string(c.pages) + (c.pages == 1 ? " page\n" : " pages\n"));
    const std::string text = PdfText(dir.path() / (c.only + ".pdf"));
    EXPECT_EQ(text.rfind(c.title + "\n", 0), 0u) << text;
    // the heading: the file and its date (pdftotext closes up the two blanks between them)
    EXPECT_NE(Line(text, "Database: " + dir.str("site.mdb")).find("/20"), std::string::npos);
    for (const auto& [key, holds] : c.lines)
      for (const std::string& h : holds) EXPECT_NE(Line(text, key).find(h), std::string::npos) << key << ": " << h;
    if (c.marks >= 0) {
      const std::string line = Line(text, c.lines[0].first);
      EXPECT_EQ(std::count(line.begin(), line.end(), 'X'), c.marks) << line;
    }
  }
}

TEST_F(ReportCommand, TheShownSixByDefaultAndRefusals) {
  ASSERT_EQ(Run("--pdf '" + dir.str("all.pdf") + "'"), 0) << err;
  EXPECT_NE(out.find(": 6 reports, "), std::string::npos) << out;
  const std::string all = PdfText(dir.path() / "all.pdf");
  for (const char* title : {"Audio Connections\n", "Custom Page Groups\n", "Phone List\n", "ArchNumber / CLID\n",
                            "Class of Service\n", "System Options\n"})
    EXPECT_NE(all.find(title), std::string::npos) << title;
  EXPECT_EQ(all.find("Schedule - Events"), std::string::npos);

  EXPECT_EQ(Run("--only Bgm,Clocks2 --pdf '" + dir.str("x.pdf") + "'"), 2);
  EXPECT_EQ(err, "r6183ctl: no report \"Clocks2\"; the reports are Bgm,PageGrp,Phonlst,sched,event,Clid,class,dip,clocks\n");

  WriteFile(dir.path() / "app/reports/dip.rpt", "[Report]\nFormat=1\nTitle=Options\n[Table]\nSource=Switches\nColumn=On | on | 9 | Up\n");
  EXPECT_EQ(Run("--only event.rpt,dip --pdf '" + dir.str("x.pdf") + "'"), 1);
  EXPECT_EQ(err, "Print: The report file reports\\dip.rpt is damaged, so \"System Options\" cannot be printed.\n"
                 "Line 6: a column is aligned Left, Center or Right, not \"Up\"\n");
  EXPECT_FALSE(fs::exists(dir.path() / "x.pdf"));
}

}  // namespace
}  // namespace r6183::test
