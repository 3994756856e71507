#include <gtest/gtest.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QWidget>

#include <memory>

#include "gui/shell/frmMyMsgBox.h"
#include "gui/shell/frmNotePad.h"
#include "shell/ProductIdentity.h"
#include "support/TestSupport.h"

namespace r6183::gui {
namespace {

using test::TestSession;

const char* const kNotice = "Receiving exceptions have occurred. Check the Log file for more information.";

TEST(frmMyMsgBoxTest, ViewLogShowsTheWholeLogUnderItsUpperCasedName) {
  TestSession ts;
  ts->product = IdentityFor(kProductIndex, 4);
  test::WriteFile(ts.dir.path() / "log_file.txt",
                  "Date - Time - 11/06/2001 09:30:00\r\nERROR 3163 RECEIVING CLID: C01\r\n");
  QWidget main;
  auto* box = frmMyMsgBox::ShowNotice(*ts, &main, kNotice, "log_file.txt");
  EXPECT_EQ(box->windowTitle().toStdString(), "Warning");
  EXPECT_EQ(box->findChild<QLabel*>("lbl1")->text().toStdString(), kNotice);
  EXPECT_EQ(box->findChild<QPushButton*>("cmdDisplay")->text().toStdString(), "&View Log");
  EXPECT_EQ(ts->forms.Count(), 1);

  box->findChild<QPushButton*>("cmdDisplay")->click();
  auto* pad = main.findChild<frmNotePad*>();
  ASSERT_NE(pad, nullptr);
  EXPECT_EQ(pad->windowTitle().toStdString(), "LOG_FILE.TXT");
  EXPECT_TRUE(pad->isVisible());
  QPlainTextEdit* text = pad->findChild<QPlainTextEdit*>("Text1");
  EXPECT_EQ(text->toPlainText().toStdString(), "Date - Time - 11/06/2001 09:30:00\nERROR 3163 RECEIVING CLID: C01\n");
  EXPECT_TRUE(text->isReadOnly());
  EXPECT_TRUE(ts.prompter.Shown().empty());
  EXPECT_EQ(ts->forms.Count(), 2);

  // the viewer stays when the notice goes
  box->findChild<QPushButton*>("cmdOk")->click();
  EXPECT_EQ(ts->forms.Count(), 1);
  EXPECT_EQ(ts->forms.At(0).Name(), "frmNotePad");
  pad->close();
  EXPECT_EQ(ts->forms.Count(), 0);
}

TEST(frmMyMsgBoxTest, UnreadableLogIsReportedUnderTheTitle) {
  for (const bool asFolder : {false, true}) {
    TestSession ts;
    ts->product = IdentityFor(kProductIndex, 4);
    if (asFolder) std::filesystem::create_directory(ts.dir.path() / "log_file.txt");
    QWidget main;
    frmMyMsgBox box(*ts, &main);
    box.SetMsg(kNotice, "log_file.txt");
    box.show();
    EXPECT_EQ(box.cmdDisplay_Click(), nullptr);
    ASSERT_EQ(ts.prompter.Shown().size(), 1u);
    EXPECT_EQ(ts.prompter.Shown()[0].text, "Can't open file: log_file.txt");
    EXPECT_EQ(ts.prompter.Shown()[0].title, ts->product.ProductTitle);
    EXPECT_EQ(main.findChild<frmNotePad*>(), nullptr);
    EXPECT_TRUE(box.isVisible());
  }
}

}  // namespace
}  // namespace r6183::gui
