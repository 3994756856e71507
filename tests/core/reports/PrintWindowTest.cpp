// The rules of the print window and of File > Print, on a session with a recorded output.
#include <gtest/gtest.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <ctime>

#include "ReportTestSupport.h"
#include "reports/PrintModel.h"
#include "shell/MainMenu.h"
#include "support/FakeForm.h"

namespace r6183::test {
namespace {

struct RecordingWindows : WindowOpener {
  std::vector<std::string> shown;
  void ShowModal(const std::string& name) override { shown.push_back(name); }
};

class PrintWindow : public ::testing::Test {
 protected:
  PrintWindow() {
    t->product.ProductTitle = "Title";
    t->product.ProductCode = 1;
    document = t.dir.path() / "SITE.MDB";
    MakeDocument(document, "sample.mdb");
    MakeDocument(t->state.WorkDbPath, "sample.mdb");
    t->state.CurrentFileName = document.string();
  }
  std::unique_ptr<PrintModel> Load() {
    auto m = std::make_unique<PrintModel>(*t, output);
    m->CloseWindow = [this] { ++closed; };
    m->Form_Load();
    return m;
  }
  std::vector<std::string> Texts() const {
    std::vector<std::string> out;
    for (const auto& m : t.prompter.Shown()) out.push_back(m.text);
    return out;
  }
  TestSession t;
  RecordingOutput output;
  fs::path document;
  int closed = 0;
};

TEST_F(PrintWindow, LoadHidesThreeBoxesMovesThreeAndSelectAllTicksOnlyTheShown) {
  auto m = Load();
  EXPECT_EQ(m->Height, 3190);
  EXPECT_EQ(m->FrameHeight, 2632);
  EXPECT_EQ(m->Top[5], 1440);
  EXPECT_EQ(m->Top[6], 1800);
  EXPECT_EQ(m->Top[7], 2160);
  m->chkPrint[3].SetValue(0);
  m->cmdSelectAll.Press();
  std::string visible, ticked;
  for (const Control& c : m->chkPrint) {
    visible += c.Visible() ? '1' : '0';
    ticked += c.Value() ? '1' : '0';
  }
  EXPECT_EQ(visible, "111001110");
  EXPECT_EQ(ticked, "111001110");
  EXPECT_TRUE(m->cmdPrint.Enabled());
  EXPECT_TRUE(t.prompter.Shown().empty());
}

TEST_F(PrintWindow, ReportFilesFollowTheProductCode) {
  const struct {
    int code;
    std::string first, sixth;
  } cases[] = {{0, "reports\\sBgm.rpt", "reports\\sClid.rpt"},  {1, "reports\\Bgm.rpt", "reports\\Clid.rpt"},
               {2, "reports\\cBgm.rpt", "reports\\cClid.rpt"},  {3, "reports\\bgmCC.rpt", "reports\\ClidCC.rpt"},
               {4, "reports\\IBgm.rpt", "reports\\IClid.rpt"}};
  for (const auto& c : cases) {
    const auto files = ReportFilesFor(c.code);
    ASSERT_TRUE(files);
    EXPECT_EQ((*files)[0], c.first);
    EXPECT_EQ((*files)[5], c.sixth);
  }
  EXPECT_EQ((*ReportFilesFor(3))[4], "reports\\eventCC.rpt");
  EXPECT_FALSE(ReportFilesFor(5));
  t->product.ProductCode = 5;
  auto m = Load();
  EXPECT_EQ(Texts(), (std::vector<std::string>{"The project name Title was not recognized by the system.",
                                               PrintModel::kMissingFiles}));
  EXPECT_FALSE(m->cmdPrint.Enabled());
}

// A layout missing, shown or hidden, stops Print at every opening; a name in another case
// is found.
TEST_F(PrintWindow, AMissingLayoutDisablesPrintAtEachOpening) {
  const struct {
    std::string file, renamed;
    bool missing;
  } cases[] = {{"Bgm.rpt", "", true}, {"event.rpt", "", true}, {"clocks.rpt", "", true}, {"Clid.rpt", "CLID.RPT", false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    const fs::path reports = t.dir.path() / "reports";
    const fs::path kept = t.dir.path() / c.file;
    fs::rename(reports / c.file, c.renamed.empty() ? kept : reports / c.renamed);
    for (int opening = 0; opening < 2; ++opening) {
      t.prompter.Clear();
      auto m = Load();
      EXPECT_EQ(m->cmdPrint.Enabled(), !c.missing);
      if (!c.missing) {
        EXPECT_TRUE(t.prompter.Shown().empty());
        continue;
      }
      ASSERT_EQ(t.prompter.Shown().size(), 1u);
      const ShownMessage& shown = t.prompter.Shown()[0];
      EXPECT_EQ(shown.text, "Cannot print data because print files not found.");
      EXPECT_EQ(shown.title, "Print");
      EXPECT_EQ(shown.icon, Icon::Exclamation);
    }
    fs::rename(c.renamed.empty() ? kept : reports / c.renamed, reports / c.file);
  }
}

TEST_F(PrintWindow, TheHeadingCarriesTheFilesDateAndTimeButNotForUntitled) {
  std::tm when{};
  when.tm_year = 2001 - 1900;
  when.tm_mon = 10;
  when.tm_mday = 6;
  when.tm_hour = 15;
  when.tm_min = 45;
  when.tm_isdst = -1;
  const std::time_t stamp = std::mktime(&when);
  const timespec times[2] = {{stamp, 0}, {stamp, 0}};
  ASSERT_EQ(::utimensat(AT_FDCWD, document.c_str(), times, 0), 0);
  const std::string saved = "Database = '" + document.string() + "  11/06/2001 15:45'";
  EXPECT_EQ(ReportHeading(*t), saved);
  auto m = Load();
  m->chkPrint[5].SetValue(1);
  m->cmdPrint.Press();
  ASSERT_EQ(output.jobs.size(), 1u);
  EXPECT_NE(PageText(output.jobs[0].pages[0]).find("Database: " + document.string() + "  11/06/2001 15:45\n"),
            std::string::npos);

  t->state.CurrentFileName = "Untitled";
  EXPECT_EQ(ReportHeading(*t), "Database = 'Untitled'");
  EXPECT_EQ(ParseFormulas({ReportHeading(*t), saved}).at("Database"), document.string() + "  11/06/2001 15:45");
}

TEST_F(PrintWindow, PrintSendsTheTickedReportsInOrderAndCloses) {
  const struct {
    std::vector<int> ticked;
    std::vector<std::string> jobs;
  } cases[] = {{{}, {}},
               {{7, 0, 5}, {"Audio Connections", "ArchNumber / CLID", "System Options"}},
               {{3, 4, 8}, {"Schedule - Active Days", "Schedule - Events", "Clock Options"}}};
  for (const auto& c : cases) {
    output.jobs.clear();
    closed = 0;
    auto m = Load();
    for (int i : c.ticked) m->chkPrint[static_cast<std::size_t>(i)].SetValue(1);
    m->cmdPrint.Press();
    EXPECT_EQ(output.JobNames(), c.jobs);
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(m->rptPrint.DataFiles0, c.ticked.empty() ? "" : t->state.WorkDbPath) << "the work copy is printed";
  }
  EXPECT_TRUE(t.prompter.Shown().empty());
}

TEST_F(PrintWindow, WithoutAPrinterTheOperatorIsToldAndOfferedAPdf) {
  output.printer.clear();
  const struct {
    Answer answer;
    std::optional<std::string> file;
    std::size_t pdfs;
  } cases[] = {{Answer::No, std::nullopt, 0}, {Answer::Yes, std::nullopt, 0}, {Answer::Yes, "site", 1}};
  for (const auto& c : cases) {
    output.pdfs.clear();
    t.prompter.Clear();
    closed = 0;
    auto m = Load();
    m->cmdSelectAll.Press();
    t.prompter.QueueAnswer(c.answer);
    if (c.file) t.prompter.QueueFile(c.file);
    m->cmdPrint.Press();
    ASSERT_FALSE(t.prompter.Shown().empty());
    EXPECT_NE(t.prompter.Shown()[0].text.find("no printer"), std::string::npos);
    EXPECT_EQ(t.prompter.Shown()[0].buttons, Buttons::YesNo);
    EXPECT_TRUE(output.jobs.empty());
    ASSERT_EQ(output.pdfs.size(), c.pdfs);
    if (c.pdfs) {
      EXPECT_EQ(output.pdfs[0].name, "site.pdf") << "the extension a name typed without one gets";
      const std::string text = AllText(output.pdfs[0].pages);
      for (const char* title : {"Audio Connections", "Custom Page Groups", "Phone List", "ArchNumber / CLID",
                                "Class of Service", "System Options"})
        EXPECT_NE(text.find(std::string(title) + "\n"), std::string::npos) << title;
    }
    EXPECT_EQ(closed, 1);
  }
}

TEST_F(PrintWindow, ADamagedLayoutIsNamedAndEndsThePrintingAfterTheReportsBefore) {
  WriteFile(t.dir.path() / "reports" / "class.rpt", "[Report]\nFormat=1\nTitle=Class\n[Table]\nSource=Services\n");
  auto m = Load();
  for (int i : {0, 6, 7}) m->chkPrint[static_cast<std::size_t>(i)].SetValue(1);
  m->cmdPrint.Press();
  EXPECT_EQ(output.JobNames(), std::vector<std::string>{"Audio Connections"});
  ASSERT_EQ(t.prompter.Shown().size(), 1u);
  EXPECT_EQ(t.prompter.Shown()[0].text,
            "The report file reports\\class.rpt is damaged, so \"Class of Service\" cannot be printed.\n"
            "Line 5: unknown source \"Services\"; the sources are Document, Clid, PageGroup, Audio, SchedDays, "
            "Event, ClassService, Switches, ClockDef");
  EXPECT_EQ(closed, 1);
  const auto rows = JournalRows(*t);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].module, "frmPrint");
  EXPECT_EQ(rows[0].routine, "cmdPrint");
}

TEST_F(PrintWindow, FilePrintSettlesTheOpenWindowsUnderPrintFirst) {
  RecordingWindows windows;
  t->SetWindowOpener(&windows);
  std::vector<std::string> events;
  FakeForm menu(t->forms, events, "frmMenu", "Title");
  for (Answer a : {Answer::Cancel, Answer::Yes}) {
    windows.shown.clear();
    t.prompter.Clear();
    FakeForm editor(t->forms, events, "frmDip", "System Options", true);
    t.prompter.QueueAnswer(a);
    mnuPrint_Click(*t);
    ASSERT_EQ(t.prompter.Shown().size(), 1u);
    EXPECT_EQ(t.prompter.Shown()[0].text, "Accept changes to System Options?");
    EXPECT_EQ(t.prompter.Shown()[0].title, "Print");
    EXPECT_EQ(windows.shown, a == Answer::Yes ? std::vector<std::string>{"frmPrint"} : std::vector<std::string>{});
  }
  windows.shown.clear();
  FakeForm progress(t->forms, events, "frmMsgWait", "Title");
  FakeForm dialing(t->forms, events, "frmDialing", "Dialing Modem");
  mnuPrint_Click(*t);
  EXPECT_TRUE(windows.shown.empty()) << "nothing while a modem is dialled";
}

}  // namespace
}  // namespace r6183::test
