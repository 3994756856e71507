// The clocks window, driven by mouse and keyboard from the Clocks menu.
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "EditorWindows.h"
#include "Pictures.h"
#include "WhenModal.h"
#include "gui/options/frmClock.h"

namespace r6183::gui::test {
namespace {

class frmClockTest : public EditorWindowsTest {
 protected:
  std::string Row() {
    SQLite::Database db(t->state.WorkDbPath, SQLite::OPEN_READONLY);
    SQLite::Statement st(db, "SELECT ClockA, ClockB, Direction, BCD_Type FROM ClockDef");
    st.executeStep();
    std::string out;
    for (int i = 0; i < 4; ++i) out += (i ? "|" : "") + st.getColumn(i).getString();
    return out;
  }
  void WithWindow(const std::function<void(frmClock&)>& script) {
    bool ran = false;
    r6183::test::WhenModal<frmClock>([&](frmClock& w) {
      ran = true;
      EXPECT_TRUE(QTest::qWaitForWindowActive(&w));
      Settle();
      script(w);
      if (w.isVisible()) w.close();
    });
    window->QuickMenu("Clock");  // the menu entry is hidden in this product
    EXPECT_TRUE(ran);
  }
  static constexpr const char* kClockBoard =
      "UPDATE ClockDef SET ClockEnabled = 1, ClockA = '3', ClockB = '1', Direction = '1', BCD_Type = '1';";
};

TEST_F(frmClockTest, MenuIsOffWithoutAClockBoard) {
  Start();
  OpenDocument("");
  EXPECT_FALSE(t->menu.Enabled("mnuClocks"));  // hidden in this product; the quick menu has no Clock
}

TEST_F(frmClockTest, ShowsTheStoredPositionsAndCaptions) {
  Start();
  OpenDocument(kClockBoard);
  EXPECT_TRUE(t->menu.Enabled("mnuClocks"));
  WithWindow([&](frmClock& w) {
    EXPECT_EQ(w.windowTitle(), "Modify Clock Configurations");
    auto* tabs = Ctl<QTabWidget>(w, "sss");
    ASSERT_NE(tabs, nullptr);
    EXPECT_EQ(tabs->tabText(0), "BCD");
    EXPECT_EQ(tabs->tabText(1), "Clock A");
    EXPECT_EQ(tabs->tabText(2), "Clock B");
    EXPECT_EQ(Ctl<QRadioButton>(w, "optBCDType_1")->text(), "24  Hour");
    EXPECT_TRUE(Ctl<QRadioButton>(w, "optBCDType_1")->isChecked());
    EXPECT_TRUE(Ctl<QRadioButton>(w, "optDirection_1")->isChecked());
    auto* a = Ctl<QComboBox>(w, "cbClockA");
    EXPECT_EQ(a->currentIndex(), 2);
    EXPECT_EQ(a->count(), 10);
    EXPECT_EQ(Ctl<QLabel>(w, "lblCorrection")->text(), "Yes");
    EXPECT_FALSE(Ctl<QWidget>(w, "txtclockA")->isVisible());
  });
  EXPECT_EQ(Row(), "3|1|1|1");
}

TEST_F(frmClockTest, KeyboardPickWritesThePositionOnOk) {
  Start();
  OpenDocument(kClockBoard);
  WithWindow([&](frmClock& w) {
    auto* tabs = Ctl<QTabWidget>(w, "sss");
    tabs->setCurrentIndex(2);  // Ctrl+Tab reaches it as well
    auto* b = Ctl<QComboBox>(w, "cbClockB");
    b->setFocus(Qt::TabFocusReason);
    Settle();
    QTest::keyClick(b, Qt::Key_Down);  // the second type, without opening the list
    QTest::keyClick(b, Qt::Key_Down);
    Settle();
    EXPECT_EQ(Ctl<QLabel>(w, "lblCorrectionB")->text(), "Yes");
    EXPECT_EQ(Ctl<QLineEdit>(w, "txtClockB")->text(), "3");
    QTest::keyClick(b, Qt::Key_Return);
  });
  EXPECT_EQ(Row(), "3|3|1|1");
  EXPECT_EQ(t->state.DatabaseDirty, 0) << "a pick without opening the list marks no change";
}

TEST_F(frmClockTest, OpeningTheListMarksAChangeAndEscapeWritesNothing) {
  Start();
  OpenDocument(kClockBoard);
  WithWindow([&](frmClock& w) {
    Ctl<QTabWidget>(w, "sss")->setCurrentIndex(1);
    Settle();
    auto* a = Ctl<QComboBox>(w, "cbClockA");
    a->showPopup();
    Settle();
    a->hidePopup();
    EXPECT_TRUE(window->Action("mnuFileSave")->isEnabled());
    Ctl<QTabWidget>(w, "sss")->setCurrentIndex(0);
    Settle();
    Click(Ctl<QRadioButton>(w, "optBCDType_3"));
    EXPECT_EQ(Ctl<QLineEdit>(w, "txtBCD_Type")->text(), "3");
    QTest::keyClick(&w, Qt::Key_Escape);
    EXPECT_FALSE(w.isVisible());
  });
  EXPECT_EQ(Row(), "3|1|1|1");
  EXPECT_FALSE(window->Action("mnuFileSave")->isEnabled());
}

TEST_F(frmClockTest, EmptyCatalogueLeavesTheWindowUsable) {
  Start();
  OpenDocument(std::string(kClockBoard) + "DELETE FROM Clocks;");
  WithWindow([&](frmClock& w) {
    EXPECT_EQ(Ctl<QComboBox>(w, "cbClockA")->count(), 0);
    EXPECT_EQ(Ctl<QComboBox>(w, "cbClockB")->count(), 0);
    Click(Ctl<QRadioButton>(w, "optDirection_0"));
    Click(Ctl<QPushButton>(w, "cmdOk"));
  });
  EXPECT_EQ(Row(), "3|1|0|1");
  EXPECT_EQ(t->state.DatabaseDirty, 1);
}

TEST_F(frmClockTest, PictureOfTheSampleSiteClocks) {
  Start();
  OpenDocument("", StagedAppDir() / "sample.mdb");
  std::string path;
  WithWindow([&](frmClock& w) {
    auto* tabs = Ctl<QTabWidget>(w, "sss");
    tabs->setCurrentIndex(1);
    Settle();
    EXPECT_EQ(Ctl<QComboBox>(w, "cbClockA")->currentText(), "Synchronous Wired 59 Minute");
    // the window on its Clock A tab, and a copy of it on its BCD tab
    const QImage clockA = w.grab().toImage();
    tabs->setCurrentIndex(0);
    Settle();
    QLabel shot;
    shot.setPixmap(QPixmap::fromImage(clockA));
    shot.setWindowTitle(w.windowTitle());
    shot.resize(clockA.size());
    path = SavePicture({&shot, &w}, "clocks-window.png");
  });
  ASSERT_FALSE(path.empty());
  EXPECT_GT(fs::file_size(path), 10000u);
}

}  // namespace
}  // namespace r6183::gui::test
