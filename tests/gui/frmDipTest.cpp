// The system options window and its chart, driven by mouse and keyboard from the menu.
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "EditorWindows.h"
#include "Pictures.h"
#include "WhenModal.h"
#include "gui/options/frmDip.h"
#include "gui/options/frmDipSw.h"

namespace r6183::gui::test {
namespace {

class frmDipTest : public EditorWindowsTest {
 protected:
  std::string Row() {
    SQLite::Database db(t->state.WorkDbPath, SQLite::OPEN_READONLY);
    SQLite::Statement st(db, "SELECT QueueTone, DialTone, RingPattern, PriorityGlobal FROM DipSwitch");
    st.executeStep();
    std::string out;
    for (int i = 0; i < 4; ++i) out += (i ? "|" : "") + st.getColumn(i).getString();
    return out;
  }
  // Opens the window from the menu, runs `script` on it once it is up, and returns when it
  // has closed (by the script, or by its system box when the script left it open).
  void WithWindow(const std::function<void(frmDip&)>& script) {
    bool ran = false;
    r6183::test::WhenModal<frmDip>([&](frmDip& w) {
      ran = true;
      EXPECT_TRUE(QTest::qWaitForWindowActive(&w));
      script(w);
      if (w.isVisible()) w.close();
    });
    window->Click("mnuSysOpt");
    EXPECT_TRUE(ran);
  }
};

TEST_F(frmDipTest, ShowsTheStoredRowWithRingPatternsOutOfNumberOrder) {
  Start();
  OpenDocument("UPDATE DipSwitch SET RingPattern = 2, PriorityGlobal = 1;");
  WithWindow([&](frmDip& w) {
    EXPECT_EQ(w.windowTitle(), "System Options");
    auto* american = Ctl<QRadioButton>(w, "optRingPattern_0");
    auto* dutch = Ctl<QRadioButton>(w, "optRingPattern_1");
    auto* british = Ctl<QRadioButton>(w, "optRingPattern_2");
    ASSERT_TRUE(american && dutch && british);
    EXPECT_EQ(british->text(), " British");
    EXPECT_TRUE(british->isChecked());
    EXPECT_FALSE(dutch->isChecked());
    EXPECT_LT(american->y(), british->y());
    EXPECT_LT(british->y(), dutch->y());
    EXPECT_TRUE(Ctl<QRadioButton>(w, "optPriority_1")->isChecked());
    EXPECT_FALSE(Ctl<QWidget>(w, "lblRingPattern")->isVisible());
    EXPECT_EQ(Ctl<QCheckBox>(w, "chkOverride")->text(), " Override External Global");
  });
  EXPECT_EQ(Row(), "0|0|2|1");
}

TEST_F(frmDipTest, UnsavedTickShowsOnTheChartAndTheSystemBoxWritesNothing) {
  Start();
  OpenDocument("");
  WithWindow([&](frmDip& w) {
    Click(Ctl<QCheckBox>(w, "chkQueueTone"));
    EXPECT_TRUE(window->Action("mnuFileSave")->isEnabled()) << "Save follows the first change";
    bool charted = false;
    r6183::test::WhenModal<frmDipSw>([&](frmDipSw& chart) {
      charted = true;
      EXPECT_EQ(chart.windowTitle(), "Dipswitch Equivalents (Main Board)");
      EXPECT_EQ(Ctl<QLabel>(chart, "lblSwitch_5")->text(), "ON");
      EXPECT_EQ(Ctl<QLabel>(chart, "lblSwitch_6")->text(), "OFF");
      EXPECT_EQ(Ctl<QLabel>(chart, "lblSwitch_4")->text(), "") << "switch 5 shows neither";
      EXPECT_EQ(Ctl<QLabel>(chart, "lblName_12")->text(), "  Override External ");
      EXPECT_EQ(Ctl<QLabel>(chart, "lblName_13")->text(), "  Ring Pattern");
      EXPECT_EQ(chart.findChild<QLabel*>("lblName_14"), nullptr);
      EXPECT_EQ(Ctl<QFrame>(chart, "shpOn_5")->palette().color(QPalette::Window), QColor(Qt::white));
      EXPECT_EQ(Ctl<QFrame>(chart, "shpOff_5")->palette().color(QPalette::Window), QColor(Qt::black));
      Click(Ctl<QPushButton>(chart, "cmdClose"));
    });
    Click(Ctl<QPushButton>(w, "cmdDipswitch"));
    EXPECT_TRUE(charted);
    EXPECT_TRUE(w.isVisible()) << "the chart changes nothing";
    w.close();  // the system box
  });
  EXPECT_EQ(Row(), "0|0|0|0");
  EXPECT_EQ(t->state.DatabaseDirty, 0);
  EXPECT_FALSE(window->Action("mnuFileSave")->isEnabled());

  WithWindow([&](frmDip& w) { EXPECT_FALSE(Ctl<QCheckBox>(w, "chkQueueTone")->isChecked()); });
}

TEST_F(frmDipTest, KeyboardAloneChangesAndAccepts) {
  Start();
  OpenDocument("");
  WithWindow([&](frmDip& w) {
    // Tab to the tone options, Space ticks; the arrow keys move the ring pattern
    auto* dial = Ctl<QCheckBox>(w, "chkDialTone");
    auto* american = Ctl<QRadioButton>(w, "optRingPattern_0");
    american->setFocus(Qt::TabFocusReason);
    Settle();
    EXPECT_TRUE(american->isChecked());
    QTest::keyClick(american, Qt::Key_Down);  // " British", the button below
    Settle();
    EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), "optRingPattern_2");
    while (QApplication::focusWidget() != dial) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      if (QApplication::focusWidget() == american) break;
    }
    ASSERT_EQ(QApplication::focusWidget(), dial);
    QTest::keyClick(dial, Qt::Key_Space);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);  // OK is the default button
    EXPECT_FALSE(w.isVisible());
  });
  EXPECT_EQ(Row(), "0|1|2|0");
  EXPECT_EQ(t->state.DatabaseDirty, 1);
}

TEST_F(frmDipTest, OkWithoutAChangeLeavesTheDocumentClean) {
  Start();
  OpenDocument("UPDATE DipSwitch SET QueueTone = 1;");
  WithWindow([&](frmDip& w) { Click(Ctl<QPushButton>(w, "cmdOk")); });
  EXPECT_EQ(t->state.DatabaseDirty, 0);
  EXPECT_FALSE(window->Action("mnuFileSave")->isEnabled());
  EXPECT_EQ(Row(), "1|0|0|0");
}

TEST_F(frmDipTest, PictureOfTheSampleSiteOptionsBesideTheChart) {
  Start();
  OpenDocument("", StagedAppDir() / "sample.mdb");
  std::string path;
  WithWindow([&](frmDip& w) {
    r6183::test::WhenModal<frmDipSw>([&](frmDipSw& chart) {
      Settle();
      EXPECT_EQ(Ctl<QLabel>(chart, "lblSwitch_10")->text(), "ON") << "the sample site's privacy tone";
      path = SavePicture({&w, &chart}, "system-options-and-chart.png");
      chart.close();
    });
    Click(Ctl<QPushButton>(w, "cmdDipswitch"));
  });
  ASSERT_FALSE(path.empty());
  EXPECT_GT(fs::file_size(path), 10000u);
}

}  // namespace
}  // namespace r6183::gui::test
