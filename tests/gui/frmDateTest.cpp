// The date window against the simulated unit, driven through its controls.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include "gui/protocol/frmDate.h"
#include "WhenModal.h"
#include "sim/LinkedUnit.h"

namespace r6183::gui {
namespace {

void Settle() {
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

class DateWindow : public ::testing::Test, public test::LinkedUnit {
 protected:
  void SetUp() override { unitSim->SetUnitTime({2001, 11, 6, 9, 30, 15}); }

  // The exchange as the command runs it, then the window as it opens.
  std::unique_ptr<frmDate> Open() {
    bool reached = false;
    mnuDate_Click(*t, *comm, progress, [&] { reached = true; });
    EXPECT_TRUE(reached);
    auto w = std::make_unique<frmDate>(*t, *comm);
    w->show();
    w->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(w.get()));
    Settle();
    return w;
  }
  template <class W = QLineEdit>
  static W* Ctl(QWidget& w, const char* name) {
    W* c = w.findChild<W*>(name);
    EXPECT_NE(c, nullptr) << name;
    return c;
  }
  // A frame with this letter among those the unit took from the `from`th on.
  bool UnitGot(char letter, std::size_t from = 0) const {
    const auto& got = unitSim->Received();
    for (std::size_t i = from; i < got.size(); ++i)
      if (!got[i].empty() && got[i][0] == letter) return true;
    return false;
  }
};

TEST_F(DateWindow, ShowsTheUnitsClockAndItsDaylightSwitch) {
  struct Case {
    bool supported, on, tick, enabled;
  };
  for (const Case c : {Case{true, true, false, true}, Case{true, false, true, true}, Case{false, false, true, false}}) {
    unitSim->Options().daylightSupported = c.supported;
    unitSim->Options().daylightOn = c.on;
    auto w = Open();
    EXPECT_EQ(w->windowTitle().toStdString(), "Set System Date and Time");
    std::string shown;
    for (const char* n : {"txtDate_0", "txtDate_1", "txtDate_2", "txtTime_0", "txtTime_1", "txtTime_2"})
      shown += Ctl(*w, n)->text().toStdString() + " ";
    EXPECT_EQ(shown, "11 06 01 09 30 15 ");
    EXPECT_EQ(QApplication::focusWidget(), Ctl(*w, "txtDate_0"));
    auto* daylight = Ctl<QCheckBox>(*w, "daylight");
    EXPECT_EQ(daylight->isChecked(), c.on);
    EXPECT_EQ(daylight->isEnabled(), c.enabled);
    if (c.tick) daylight->setChecked(true);
    const std::size_t before = unitSim->Received().size();
    QTest::mouseClick(Ctl<QPushButton>(*w, "cmdOk"), Qt::LeftButton);
    EXPECT_EQ(w->result(), QDialog::Accepted);
    // a unit without the switch gets no U; one with it takes the box as it stands
    EXPECT_EQ(UnitGot('U', before), c.supported);
    EXPECT_TRUE(UnitGot('T', before));
    if (c.supported) {
      EXPECT_EQ(unitSim->DaylightOn(), c.on || c.tick);
    }
  }
}

TEST_F(DateWindow, AnEntryOutOfRangeIsRefusedOnLeavingTheBox) {
  struct Case {
    const char* box;
    const char* typed;
    const char* message;
  };
  auto w = Open();
  for (const Case c : {Case{"txtDate_0", "13", "Invalid date entry"}, Case{"txtDate_1", "0", "Invalid date entry"},
                       Case{"txtTime_0", "24", "Invalid time entry"}, Case{"txtTime_2", "", "Invalid time entry"}}) {
    QLineEdit* box = Ctl(*w, c.box);
    box->setFocus();
    const QString old = box->text();
    QTest::keyClick(box, Qt::Key_Backspace);
    QTest::keyClicks(box, c.typed);
    QTest::keyClick(box, Qt::Key_Tab);
    Settle();
    ASSERT_FALSE(t.prompter.Shown().empty()) << c.box;
    const ShownMessage& m = t.prompter.Shown().back();
    EXPECT_EQ(m.text, c.message);
    EXPECT_EQ(m.title, "Set System Date and Time");
    EXPECT_EQ(m.icon, Icon::Exclamation);
    EXPECT_EQ(box->text(), old) << c.box;
    EXPECT_EQ(QApplication::focusWidget(), box) << c.box;
    t.prompter.Clear();
  }
  // letters never get into a box
  QTest::keyClicks(Ctl(*w, "txtTime_2"), "a1");
  EXPECT_EQ(Ctl(*w, "txtTime_2")->text(), "1");
}

TEST_F(DateWindow, TypedDigitsMoveOnAndGoToTheUnitAsTheBoxesStand) {
  auto w = Open();
  QTest::keyClicks(Ctl(*w, "txtDate_0"), "05");
  EXPECT_EQ(QApplication::focusWidget(), Ctl(*w, "txtDate_1"));
  QTest::keyClicks(Ctl(*w, "txtDate_1"), "7");
  QTest::keyClick(Ctl(*w, "txtDate_1"), Qt::Key_Tab);
  EXPECT_EQ(Ctl(*w, "txtDate_1")->text(), "07");
  EXPECT_EQ(QApplication::focusWidget(), Ctl(*w, "txtDate_2"));
  // Enter in a good box is "Update"
  QTest::keyClicks(Ctl(*w, "txtDate_2"), "9");
  QTest::keyClick(Ctl(*w, "txtDate_2"), Qt::Key_Return);
  EXPECT_EQ(w->result(), QDialog::Accepted);
  const LocalDateTime set = unitSim->UnitTime();
  EXPECT_EQ((std::vector<int>{set.year, set.month, set.day, set.hour, set.minute}),
            (std::vector<int>{2009, 5, 7, 9, 30}));
  EXPECT_TRUE(t.prompter.Shown().empty());
}

TEST_F(DateWindow, SpinBarsStepTheBoxInUseWithinItsRange) {
  struct Case {
    const char *box, *start;
    bool up, byKey;
    const char* after;
  };
  auto w = Open();
  for (const Case c : {Case{"txtDate_0", "11", true, false, "12"}, Case{"txtDate_0", "12", true, false, "12"},
                       Case{"txtDate_1", "01", false, false, "01"}, Case{"txtDate_2", "99", false, true, "98"},
                       Case{"txtTime_1", "09", true, true, "10"}, Case{"txtTime_0", "00", false, false, "00"}}) {
    QLineEdit* box = Ctl(*w, c.box);
    box->setFocus();
    QTest::keyClicks(box, c.start);
    box->setFocus();
    Settle();
    auto* spin = Ctl<QScrollBar>(*w, c.box[3] == 'D' ? "scrollDate" : "scrollTime");
    if (c.byKey)
      QTest::keyClick(box, c.up ? Qt::Key_Up : Qt::Key_Down);
    else
      spin->triggerAction(c.up ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(box->text().toStdString(), c.after) << c.box << " from " << c.start;
    EXPECT_EQ(spin->value(), -box->text().toInt()) << c.box;
    EXPECT_EQ(QApplication::focusWidget(), box) << c.box;
  }
}

TEST_F(DateWindow, CancelAndEscapeSendNothing) {
  for (const bool escape : {false, true}) {
    bool seen = false;
    test::WhenModal<frmDate>([&](frmDate& w) {
      seen = t->forms.Find("frmDate") != nullptr;
      QTest::keyClicks(Ctl(w, "txtDate_0"), "0");
      if (escape)
        QTest::keyClick(Ctl(w, "txtDate_0"), Qt::Key_Escape);
      else
        Ctl<QPushButton>(w, "cmdCancel")->click();
    });
    RunDateTimeCommand(*t, *comm, progress, nullptr);
    EXPECT_TRUE(seen);
    EXPECT_EQ(t->forms.Find("frmDate"), nullptr);
    EXPECT_FALSE(UnitGot('T'));
    EXPECT_FALSE(UnitGot('U'));
    EXPECT_TRUE(t->menu.Enabled("mnuDate"));
  }
}

}  // namespace
}  // namespace r6183::gui
