// The schedule windows in the main window, on a document on disk, driven through their
// control names.
#include <QGroupBox>
#include <QLabel>
#include <QMdiSubWindow>
#include <QPushButton>

#include "EditorWindows.h"
#include "gui/shell/frmSwitchBoard.h"

namespace r6183::gui::test {
namespace {

const char* kSite =
    "UPDATE SchedDays SET Monday = 1, Tuesday = 1 WHERE Schedule = 1;"
    "UPDATE SchedDays SET Wednesday = 1 WHERE Schedule = 2;"
    "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1, PageGroup3) VALUES"
    " (1, '08:15', 5, 2, 1, 1), (1, '07:55', 12, 1, 1, 0), (2, '12:00', 3, 4, 0, 1)";

using ScheduleWindow = EditorWindowsTest;

TEST_F(ScheduleWindow, ShowsItsEventsInTimeOrderAndItsDays) {
  Start();
  OpenDocument(kSite);
  frmSched* w = Schedule(1);
  ASSERT_NE(w, nullptr);
  EXPECT_EQ(w->windowTitle().toStdString(), "Master Clock Schedule 1");
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), w);
  EXPECT_EQ(Lines(w), (QStringList{"07:55\tRelay 1\t12 sec\t1", "08:15\tRelay 2\t5 sec\t1,3"}));
  QWidget& c = Content(w);
  EXPECT_EQ(Ctl<QListWidget>(c, "lstEvent")->currentRow(), 0);
  const std::pair<const char*, const char*> captions[] = {
      {"cmdEvent_0", "&Add"}, {"cmdEvent_1", "&Edit"}, {"cmdEvent_2", "&Delete"}, {"cmdClose", "Close"},
      {"chkDay_0", " Sunday"}, {"chkDay_3", " Wednesday"}, {"chkDay_6", " Saturday"}};
  for (const auto& [name, caption] : captions)
    EXPECT_EQ(Ctl<QAbstractButton>(c, name)->text().toStdString(), caption) << name;
  EXPECT_EQ(Ctl<QGroupBox>(c, "fraEvents")->title().toStdString(), "Events");
  EXPECT_EQ(Ctl<QGroupBox>(c, "fraDays")->title().toStdString(), "Active Days");
  for (const char* head : {"Time", "Relay", "Duration", "Page Groups"})
    EXPECT_TRUE(std::ranges::any_of(c.findChildren<QLabel*>(), [&](QLabel* l) { return l->text() == head; })) << head;
  EXPECT_FALSE(Ctl<QLabel>(c, "lblSchedule")->isVisible());
  std::string days, enabled;
  for (int i = 0; i < 7; ++i) {
    auto* box = Ctl<QCheckBox>(c, QString("chkDay_%1").arg(i));
    days += box->isChecked() ? '1' : '0';
    enabled += box->isEnabled() ? '1' : '0';
  }
  EXPECT_EQ(days, "0110000");
  EXPECT_EQ(enabled, "1110111") << "Wednesday is schedule 2's";
  // the reading order of the keyboard; Wednesday is grey and skipped
  std::vector<std::string> order;
  Ctl(c, "lstEvent")->setFocus();
  for (int i = 0; i < 12; ++i) {
    order.push_back(QApplication::focusWidget()->objectName().toStdString());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(order, (std::vector<std::string>{"lstEvent", "cmdEvent_0", "cmdEvent_1", "cmdEvent_2", "chkDay_0",
                                             "chkDay_1", "chkDay_2", "chkDay_4", "chkDay_5", "chkDay_6", "cmdClose",
                                             "lstEvent"}));
}

TEST_F(ScheduleWindow, OpenAllPutsScheduleOneInFrontAndCloseAllWritesTheDays) {
  Start();
  OpenDocument(kSite);
  Click(Ctl(*window->switchBoard(), "cmdAll"));
  Settle();
  for (int n = 1; n <= 6; ++n) {
    ASSERT_NE(window->schedule(n), nullptr) << n;
    EXPECT_TRUE(window->schedule(n)->isVisible()) << n;
  }
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), window->schedule(1));
  EXPECT_EQ(t->forms.Count(), 8) << "main window, quick menu, six schedules";
  // a maximised schedule goes back to normal, so that they stay side by side
  window->schedule(3)->showMaximized();
  Settle();
  EXPECT_FALSE(window->schedule(3)->isMaximized());

  // Friday in schedule 1, written when Close All closes the windows
  window->mdiArea()->setActiveSubWindow(window->schedule(1));
  Click(Ctl(Content(window->schedule(1)), "chkDay_5"));
  EXPECT_TRUE(window->Action("mnuFileSave")->isEnabled());
  window->Click("mnuWindowCloseAll");
  Settle();
  for (int n = 1; n <= 6; ++n) EXPECT_FALSE(window->schedule(n)->isVisible()) << n;
  EXPECT_TRUE(window->switchBoard()->isVisible());
  EXPECT_EQ(t->forms.Count(), 2);
  SQLite::Database work(t->state.WorkDbPath, SQLite::OPEN_READONLY);
  EXPECT_EQ(work.execAndGet("SELECT Friday FROM SchedDays WHERE Schedule = 1").getInt(), 1);

  // opened again, the window loads anew and shows what was written
  frmSched* w = Schedule(1);
  EXPECT_TRUE(Ctl<QCheckBox>(Content(w), "chkDay_5")->isChecked());
  EXPECT_EQ(Lines(w).size(), 2);
}

TEST_F(ScheduleWindow, ADayTakenInOneScheduleIsGreyInAnotherUntilCleared) {
  Start();
  OpenDocument(kSite);
  frmSched* one = Schedule(1);
  frmSched* two = Schedule(2);
  EXPECT_FALSE(Ctl<QCheckBox>(Content(two), "chkDay_1")->isEnabled()) << "Monday is schedule 1's";
  window->mdiArea()->setActiveSubWindow(one);
  Settle();
  Click(Ctl(Content(one), "chkDay_1"));  // Monday off in schedule 1
  window->mdiArea()->setActiveSubWindow(two);
  Settle();
  auto* monday = Ctl<QCheckBox>(Content(two), "chkDay_1");
  EXPECT_TRUE(monday->isEnabled());
  Click(monday);
  window->mdiArea()->setActiveSubWindow(one);
  Settle();
  EXPECT_FALSE(Ctl<QCheckBox>(Content(one), "chkDay_1")->isEnabled());
}

TEST_F(ScheduleWindow, EnterOnALineEditsItAndDeleteAsksNothing) {
  Start();
  OpenDocument(kSite);
  frmSched* w = Schedule(1);
  auto* list = Ctl<QListWidget>(Content(w), "lstEvent");
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Down);
  EXPECT_EQ(list->currentRow(), 1);
  std::string mode, shown;
  WhenEventWindowOpens([&](frmEvent& ev) {
    mode = Ctl<QLabel>(ev, "lblEditEvent")->isVisible() ? "edit" : "other";
    shown = Ctl<QLineEdit>(ev, "txtStartTime")->text().toStdString();
    EXPECT_EQ(QApplication::focusWidget(), Ctl(ev, "txtStartTime"));
    QTest::keyClick(&ev, Qt::Key_Escape);  // its system box: nothing changed, nothing asked
  });
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(mode, "edit");
  EXPECT_EQ(shown, "08:15");
  EXPECT_TRUE(t.prompter.Shown().empty());
  EXPECT_EQ(list->currentRow(), 1);

  Click(Ctl(Content(w), "cmdEvent_2"));
  EXPECT_EQ(Lines(w), QStringList{"07:55\tRelay 1\t12 sec\t1"});
  EXPECT_TRUE(t.prompter.Shown().empty());
  EXPECT_EQ(t->state.EventCount, 2);
}

}  // namespace
}  // namespace r6183::gui::test
