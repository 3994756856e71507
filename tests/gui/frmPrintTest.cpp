// The print window from File > Print: its face, the missing-file refusal, a real print
// service with a PDF printer, the PDF offered without a printer, and the preview.
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include "EditorWindows.h"
#include "Pictures.h"
#include "PrintServer.h"
#include "WhenModal.h"
#include "gui/reports/PagePainter.h"
#include "gui/reports/frmPreview.h"
#include "gui/reports/frmPrint.h"
#include "gui/shell/Twips.h"

namespace r6183::gui::test {
namespace {

class frmPrintTest : public EditorWindowsTest {
 protected:
  // Opens the window from the menu and runs `script` on it; true when it opened.
  bool WithWindow(const std::function<void(frmPrint&)>& script) {
    bool ran = false;
    r6183::test::WhenModal<frmPrint>([&](frmPrint& w) {
      ran = true;
      script(w);
    });
    window->Click("mnuPrint");
    return ran;
  }
  QCheckBox* Box(QWidget& w, int i) { return Ctl<QCheckBox>(w, QString("chkPrint_%1").arg(i)); }
  std::string All(const std::vector<fs::path>& pdfs) {
    std::string text;
    for (const fs::path& p : pdfs) text += PdfText(p);
    return text;
  }
};

TEST_F(frmPrintTest, LaidOutAsOfOldAndSelectAllTicksOnlyTheShownBoxes) {
  Start();
  OpenDocument("");
  std::string picture;
  ASSERT_TRUE(WithWindow([&](frmPrint& w) {
    EXPECT_EQ(w.windowTitle(), "Print");
    EXPECT_EQ(w.height(), ToPixels(3190));
    auto* frame = Ctl<QGroupBox>(w, "Frame1");
    EXPECT_EQ(frame->title(), "Select data to print");
    EXPECT_EQ(frame->height(), ToPixels(2632));
    const char* captions[] = {" Audio Connections", " Custom Page Groups", " Phone List", " Schedule - Active Days",
                              " Schedule - Events", " ArchNumber / CLID", " Class of Service", " System Options",
                              " Clock Options"};
    for (int i = 0; i < 9; ++i) {
      EXPECT_EQ(Box(w, i)->text(), captions[i]);
      EXPECT_EQ(Box(w, i)->isVisible(), i != 3 && i != 4 && i != 8) << i;
    }
    EXPECT_EQ(Box(w, 5)->y(), ToPixels(1440));
    EXPECT_EQ(Box(w, 7)->y(), ToPixels(2160));
    EXPECT_LE(Box(w, 7)->geometry().bottom(), frame->contentsRect().bottom());
    for (const char* b : {"cmdSelectAll", "cmdPrint", "cmdPreview", "cmdSavePdf", "cmdCancel"})
      EXPECT_TRUE(Ctl<QPushButton>(w, b)->isEnabled()) << b;
    EXPECT_EQ(Ctl<QPushButton>(w, "cmdSavePdf")->text(), "Save as PDF...");
    Click(Ctl<QPushButton>(w, "cmdSelectAll"));
    for (int i = 0; i < 9; ++i) EXPECT_EQ(Box(w, i)->isChecked(), i != 3 && i != 4 && i != 8) << i;
    picture = SavePicture({&w}, "print-window.png");
    Click(Ctl<QPushButton>(w, "cmdCancel"));
    EXPECT_FALSE(w.isVisible());
  }));
  EXPECT_FALSE(picture.empty());
  EXPECT_TRUE(t.prompter.Shown().empty());
}

TEST_F(frmPrintTest, AMissingHiddenLayoutKeepsPrintDisabledAtEachOpening) {
  Start();
  OpenDocument("");
  fs::remove(t.dir.path() / "reports" / "clocks.rpt");
  for (int opening = 0; opening < 2; ++opening) {
    t.prompter.Clear();
    ASSERT_TRUE(WithWindow([&](frmPrint& w) {
      for (const char* b : {"cmdPrint", "cmdPreview", "cmdSavePdf"}) EXPECT_FALSE(Ctl<QPushButton>(w, b)->isEnabled()) << b;
      EXPECT_TRUE(Ctl<QPushButton>(w, "cmdSelectAll")->isEnabled());
    }));
    EXPECT_EQ(Texts(), std::vector<std::string>{"Cannot print data because print files not found."});
  }
}

// The whole road to paper: the window's Print, QPrinter, the print service, a PDF printer.
TEST_F(frmPrintTest, PrintSendsEachTickedReportToThePrintService) {
  PrintServer server;
  ASSERT_EQ(server.Failure(), "");
  Start();
  OpenDocument("", StagedAppDir() / "sample.mdb");
  ASSERT_TRUE(WithWindow([&](frmPrint& w) {
    Click(Ctl<QPushButton>(w, "cmdSelectAll"));
    Click(Ctl<QPushButton>(w, "cmdPrint"));
    EXPECT_FALSE(w.isVisible());
  }));
  EXPECT_TRUE(t.prompter.Shown().empty());
  const auto pdfs = server.WaitForPdfs(6);
  ASSERT_EQ(pdfs.size(), 6u) << "one job a report";
  const char* titles[] = {"Audio Connections", "Custom Page Groups", "Phone List", "ArchNumber / CLID",
                          "Class of Service", "System Options"};
  for (std::size_t i = 0; i < pdfs.size(); ++i) {
    const std::string text = PdfText(pdfs[i]);
    EXPECT_EQ(text.rfind(std::string(titles[i]) + "\n", 0), 0u) << text.substr(0, 200);
    EXPECT_NE(text.find("Database: " + document), std::string::npos);
  }
  const std::string phones = PdfText(pdfs[2]);
  for (const char* s : {"101", "Front Office", "124", "Room 124", "172", "Hall 12"})
    EXPECT_NE(phones.find(s), std::string::npos) << s;
}

TEST_F(frmPrintTest, WithoutAPrinterTheReportsGoToAPdfOfTheOperatorsChoice) {
  UseCupsServer(t.dir.str("no-print-service.sock"));
  Start();
  OpenDocument("", StagedAppDir() / "sample.mdb");
  const std::string pdf = t.dir.str("site.pdf");
  t.prompter.QueueAnswer(Answer::Yes);
  t.prompter.QueueFile(pdf);
  ASSERT_TRUE(WithWindow([&](frmPrint& w) {
    Click(Ctl<QPushButton>(w, "cmdSelectAll"));
    Click(Ctl<QPushButton>(w, "cmdPrint"));
  }));
  ASSERT_EQ(t.prompter.Shown().size(), 1u);
  EXPECT_EQ(t.prompter.Shown()[0].text,
            "There is no printer set up on this computer, so the reports cannot be printed.\n"
            "Do you want to save them as a PDF file instead?");
  ASSERT_EQ(t.prompter.FileChoices().size(), 2u) << "File > Open, then the PDF";
  EXPECT_EQ(t.prompter.FileChoices()[1].initialName, "SITE.pdf");
  const std::string text = PdfText(pdf);
  for (const char* s : {"Audio Connections", "System Options", "Front Office", "Emergency Only!", "Page 2 of 2"})
    EXPECT_NE(text.find(s), std::string::npos) << s;

  // the pages of the sample site as pictures, for a person to look at
  const fs::path out(R6183_TEST_OUTPUT);
  fs::create_directories(out);
  for (const auto& e : fs::directory_iterator(out))
    if (e.path().filename().string().starts_with("report-sample-")) fs::remove(e.path());
  const std::string command = "pdftoppm -r 100 -png '" + pdf + "' '" + (out / "report-sample").string() + "'";
  ASSERT_EQ(std::system(command.c_str()), 0);
  int pictures = 0;
  for (const auto& e : fs::directory_iterator(out)) pictures += e.path().filename().string().starts_with("report-sample-");
  EXPECT_EQ(pictures, 8);
}

TEST_F(frmPrintTest, PreviewShowsTheTickedReportsAndLeavesTheWindowOpen) {
  UseCupsServer(t.dir.str("no-print-service.sock"));  // the locale's paper
  Start();
  OpenDocument("", StagedAppDir() / "sample.mdb");
  ASSERT_TRUE(WithWindow([&](frmPrint& w) {
    Click(Box(w, 2));  // the phone list: two pages of the sample site
    Click(Box(w, 7));
    bool shown = false;
    r6183::test::WhenModal<frmPreview>([&](frmPreview& p) {
      shown = true;
      EXPECT_EQ(Ctl<QLabel>(p, "lblPages")->text(), "3 pages");
      const QPixmap page = Ctl<QLabel>(p, "lblPage_2")->pixmap();
      EXPECT_NEAR(page.width() / page.devicePixelRatio(), LocalePaper().widthMm / 25.4 * 96, 2) << "96 dots an inch";
      EXPECT_FALSE(SavePicture({&p}, "print-preview.png").empty());
      Click(Ctl<QPushButton>(p, "cmdClose"));
    });
    Click(Ctl<QPushButton>(w, "cmdPreview"));
    EXPECT_TRUE(shown);
    EXPECT_TRUE(w.isVisible());
  }));
}

}  // namespace
}  // namespace r6183::gui::test
