// An installer's journey through the schedule and event windows, end to end: a new
// document, three events typed and spun in, two days, a save, and the file read back by
// r6183ctl. Also the picture of schedule 1 beside the event window on the sample site.
#include <sys/wait.h>

#include <QImage>
#include <QPushButton>

#include <sstream>

#include "EditorWindows.h"
#include "Pictures.h"
#include "gui/shell/frmSwitchBoard.h"

namespace r6183::gui::test {
namespace {

class ScheduleJourney : public EditorWindowsTest {
 protected:
  // r6183ctl ARGS on an application directory of its own; its standard output.
  std::string RunCtl(const std::string& args, int* code = nullptr) {
    const fs::path app = t.dir.path() / "ctl";
    if (!fs::exists(app)) {
      fs::create_directory(app);
      CopyStagedAppDir(app);
    }
    const std::string out = t.dir.str("ctl.out");
    const std::string cmd =
        std::string("'") + R6183CTL_PATH + "' --appdir '" + app.string() + "' " + args + " >'" + out + "' 2>/dev/null";
    const int status = std::system(cmd.c_str());
    if (code) *code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return ReadFile(out);
  }
  static std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string l; std::getline(in, l);) lines.push_back(l);
    return lines;
  }
};

TEST_F(ScheduleJourney, ThreeEventsAndTwoDaysReachTheFile) {
  Start();
  const std::string file = t.dir.str("SCHOOL.MDB");
  int code = -1;
  RunCtl("new '" + file + "'", &code);
  ASSERT_EQ(code, 0);
  const std::vector<std::string> fresh = LinesOf(RunCtl("dump '" + file + "'"));
  ASSERT_FALSE(fresh.empty());

  t.prompter.QueueFile(file);
  window->Click("mnuFileOpen");
  ASSERT_EQ(t->state.CurrentFileName, file);
  // the quick menu's first entry, Schedule 1, by a double click
  QListWidget* entries = window->switchBoard()->list();
  const QRect first = entries->visualItemRect(entries->item(0));

  QTest::mousePress(entries->viewport(), Qt::LeftButton, Qt::NoModifier, first.center());
  QTest::mouseRelease(entries->viewport(), Qt::LeftButton, Qt::NoModifier, first.center());
  QTest::mouseDClick(entries->viewport(), Qt::LeftButton, Qt::NoModifier, first.center());

  Settle();
  frmSched* w = window->schedule(1);
  ASSERT_NE(w, nullptr);
  ASSERT_TRUE(w->isVisible());

  WhenEventWindowOpens([&](frmEvent& ev) {
    auto* time = Ctl<QLineEdit>(ev, "txtStartTime");
    // one typed as "7"
    QTest::keyClicks(time, "7");
    QTest::keyClick(time, Qt::Key_Tab);
    EXPECT_EQ(time->text().toStdString(), "00:07");
    Click(Ctl(ev, "chkPageGroup_0"));
    Click(Ctl(ev, "cmdSave"));
    // one typed as "7:5"
    Click(Ctl(ev, "cmdAdd"));
    EXPECT_EQ(QApplication::focusWidget(), time);
    QTest::keyClicks(time, "7:5");
    QTest::keyClick(time, Qt::Key_Tab);
    EXPECT_EQ(time->text().toStdString(), "07:05");
    Click(Ctl(ev, "cmdSave"));
    // one by the spin bars: three hours up, five minutes down, from the copy of 07:05
    Click(Ctl(ev, "cmdAdd"));
    for (int i = 0; i < 3; ++i) ClickArrow(Ctl<QScrollBar>(ev, "vsbStartTime_0"), true);
    for (int i = 0; i < 5; ++i) ClickArrow(Ctl<QScrollBar>(ev, "vsbStartTime_1"), false);
    EXPECT_EQ(time->text().toStdString(), "10:00");
    Click(Ctl(ev, "cmdSave"));
    EXPECT_TRUE(Ctl(ev, "lblViewEvent")->isVisible());
    Click(Ctl(ev, "cmdClose"));
  });
  Click(Ctl(Content(w), "cmdEvent_0"));
  EXPECT_TRUE(WaitFor([&] { return QApplication::activeModalWidget() == nullptr; }));
  EXPECT_EQ(Lines(w), (QStringList{"00:07\tRelay 1\t1 sec\t1", "07:05\tRelay 1\t1 sec\t1",
                                   "10:00\tRelay 1\t1 sec\t1"}));
  Click(Ctl(Content(w), "chkDay_1"));  // Monday
  Click(Ctl(Content(w), "chkDay_3"));  // Wednesday
  EXPECT_TRUE(window->Action("mnuFileSave")->isEnabled());
  // the main window is active again, as the window manager makes it after a dialog
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_FALSE(window->Action("mnuFileSave")->isEnabled());
  EXPECT_TRUE(t.prompter.Shown().empty()) << t.prompter.Shown().front().text;

  // exactly those rows differ from the fresh document
  std::vector<std::string> expected;
  auto groups1 = [] {
    std::string g = "|1";
    for (int i = 2; i <= 16; ++i) g += "|0";
    return g;
  };
  for (const std::string& line : fresh) {
    if (line == "SchedDays|1|0|0|0|0|0|0|0") expected.push_back("SchedDays|1|0|1|0|1|0|0|0");
    else expected.push_back(line);
  }
  const std::vector<std::string> saved = LinesOf(RunCtl("dump '" + file + "'"));
  std::vector<std::string> added, removed;
  for (const std::string& l : saved)
    if (std::find(expected.begin(), expected.end(), l) == expected.end()) added.push_back(l);
  for (const std::string& l : expected)
    if (std::find(saved.begin(), saved.end(), l) == saved.end()) removed.push_back(l);
  EXPECT_EQ(added, (std::vector<std::string>{"Event|1|00:07|1|1" + groups1(), "Event|1|07:05|1|1" + groups1(),
                                             "Event|1|10:00|1|1" + groups1()}));
  EXPECT_EQ(removed, std::vector<std::string>{});
  EXPECT_EQ(saved.size(), fresh.size() + 3);
  EXPECT_EQ(JournalRows(*t), std::vector<JournalRow>{}) << "no step failed on the way";
}

TEST_F(ScheduleJourney, PictureOfScheduleOneBesideTheEventWindow) {
  Start();
  window->resize(820, 600);
  OpenDocument("", StagedAppDir() / "sample.mdb");
  window->switchBoard()->hide();
  frmSched* w = Schedule(1);
  ASSERT_NE(w, nullptr);
  w->move(8, 8);
  auto* list = Ctl<QListWidget>(Content(w), "lstEvent");
  list->setCurrentRow(2);
  std::string path;
  WhenEventWindowOpens([&](frmEvent& ev) { path = SavePicture({window.get(), &ev}, "schedule1-and-event-window.png"); });
  Click(Ctl(Content(w), "cmdEvent_1"));
  ASSERT_FALSE(path.empty());
  EXPECT_GT(fs::file_size(path), 10000u);
  EXPECT_EQ(Lines(w).size(), 10) << "the sample site's schedule 1";
}

}  // namespace
}  // namespace r6183::gui::test
