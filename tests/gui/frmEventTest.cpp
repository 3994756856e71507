// The event window over a schedule window, by mouse and keyboard, with the scripted
// prompter answering its questions.
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "EditorWindows.h"
#include "gui/shell/frmSwitchBoard.h"

namespace r6183::gui::test {
namespace {

const char* kSite =
    "UPDATE Config SET System_Config = 1;"
    "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1) VALUES (1, '07:55', 12, 1, 1)";

using EventWindow = EditorWindowsTest;

std::string Focused() {
  QWidget* f = QApplication::focusWidget();
  return f ? f->objectName().toStdString() : "";
}

TEST_F(EventWindow, ShowsItsTextsAndTakesTheKeyboardInReadingOrder) {
  Start();
  OpenDocument(kSite);
  frmSched* w = Schedule(1);
  std::string title;
  std::vector<std::string> order;
  std::vector<std::pair<std::string, std::string>> texts;
  WhenEventWindowOpens([&](frmEvent& ev) {
    title = ev.windowTitle().toStdString();
    for (const char* name : {"lblAddEvent", "lblStartTime", "lblRelayType", "lblRelayDuration", "lblSeconds",
                             "lblPageGroups", "optTone_1", "optTone_4", "chkPageGroup_0", "chkPageGroup_15",
                             "cmdInclude", "cmdRemove", "cmdMove_0", "cmdMove_1", "cmdMove_2", "cmdMove_3", "cmdAdd",
                             "cmdEdit", "cmdDelete", "cmdSave", "cmdCancel", "cmdClose"}) {
      QWidget* c = Ctl(ev, name);
      const QString text = qobject_cast<QLabel*>(c) ? static_cast<QLabel*>(c)->text()
                                                     : static_cast<QAbstractButton*>(c)->text();
      texts.emplace_back(name, text.toStdString());
    }
    EXPECT_FALSE(Ctl(ev, "lblViewEvent")->isVisible());
    EXPECT_FALSE(Ctl(ev, "lblEditEvent")->isVisible());
    EXPECT_FALSE(Ctl(ev, "lblTone")->isVisible());
    EXPECT_FALSE(Ctl(ev, "txtHideScreen")->isVisible());
    // two boards: groups 1 to 8
    EXPECT_TRUE(Ctl(ev, "chkPageGroup_7")->isEnabled());
    EXPECT_FALSE(Ctl(ev, "chkPageGroup_8")->isEnabled());
    for (int i = 0; i < 16; ++i) {
      order.push_back(Focused());
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  });
  Click(Ctl(Content(w), "cmdEvent_0"));
  EXPECT_EQ(title, "Events - Schedule  - 1");
  const std::vector<std::pair<std::string, std::string>> expected = {
      {"lblAddEvent", "Add New Event :"}, {"lblStartTime", "Start Time :"},   {"lblRelayType", "Relay Type :"},
      {"lblRelayDuration", "Relay Duration :"}, {"lblSeconds", "(1 - 59 secs)"}, {"lblPageGroups", "Page Groups :"},
      {"optTone_1", " 1"},     {"optTone_4", " 4"},       {"chkPageGroup_0", " 1"},  {"chkPageGroup_15", " 16"},
      {"cmdInclude", "&Include All"}, {"cmdRemove", "&Remove All"}, {"cmdMove_0", "<<"}, {"cmdMove_1", "<"},
      {"cmdMove_2", ">"},      {"cmdMove_3", ">>"},       {"cmdAdd", "&Add"},        {"cmdEdit", "&Edit"},
      {"cmdDelete", "&Delete"}, {"cmdSave", "&Save"},     {"cmdCancel", "&Cancel"},  {"cmdClose", "Close"}};
  EXPECT_EQ(texts, expected);
  // in add mode: the fields, the enabled groups, the buttons of the mode; the grey ones are passed over
  EXPECT_EQ(order, (std::vector<std::string>{"txtStartTime", "optTone_1", "txtDuration", "chkPageGroup_0",
                                             "chkPageGroup_1", "chkPageGroup_2", "chkPageGroup_3", "chkPageGroup_4",
                                             "chkPageGroup_5", "chkPageGroup_6", "chkPageGroup_7", "cmdInclude",
                                             "cmdRemove", "cmdSave", "cmdCancel", "cmdClose"}));
  EXPECT_EQ(Lines(w).size(), 1) << "Escape closed the window and dropped the new event";
}

TEST_F(EventWindow, AnEventAddedByKeyboardAlone) {
  Start();
  OpenDocument(kSite);
  frmSched* w = Schedule(1);
  WhenEventWindowOpens([&](frmEvent& ev) {
    EXPECT_EQ(Focused(), "txtStartTime");
    QTest::keyClicks(QApplication::focusWidget(), "7x:5");  // the letter is swallowed
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(Ctl<QLineEdit>(ev, "txtStartTime")->text().toStdString(), "07:05");
    EXPECT_EQ(Focused(), "optTone_1");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);  // the next relay
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_TRUE(Ctl<QRadioButton>(ev, "optTone_3")->isChecked());
    auto* time = Ctl<QLineEdit>(ev, "txtStartTime");
    time->setFocus(Qt::BacktabFocusReason);
    QTest::keyClick(time, Qt::Key_Up);       // a minute up
    QTest::keyClick(time, Qt::Key_PageUp);   // an hour up
    EXPECT_EQ(time->text().toStdString(), "08:06");
    auto* seconds = Ctl<QLineEdit>(ev, "txtDuration");
    seconds->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(seconds, "9");
    QTest::keyClick(seconds, Qt::Key_Up);
    EXPECT_EQ(seconds->text().toStdString(), "10");
    QTest::keyClick(seconds, Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);  // group 1 off
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);  // group 2 on
    QTest::keyClick(&ev, Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(WaitFor([&] { return Ctl(ev, "lblViewEvent")->isVisible(); }));
    EXPECT_EQ(Focused(), "cmdAdd");
    QTest::keyClick(&ev, Qt::Key_Escape);
  });
  QTest::keyClick(Ctl(Content(w), "lstEvent"), Qt::Key_A, Qt::AltModifier);  // the schedule's Add
  EXPECT_TRUE(WaitFor([&] { return Lines(w).size() == 2; }));
  EXPECT_EQ(Lines(w), (QStringList{"07:55\tRelay 1\t12 sec\t1", "08:06\tRelay 3\t10 sec\t2"}));
  EXPECT_EQ(Ctl<QListWidget>(Content(w), "lstEvent")->currentRow(), 1) << "the selection follows the saved event";
  EXPECT_TRUE(t.prompter.Shown().empty());
}

TEST_F(EventWindow, ARefusedStartTimeHoldsTheCommandBackWithOneMessage) {
  Start();
  OpenDocument(kSite);
  frmSched* w = Schedule(1);
  WhenEventWindowOpens([&](frmEvent& ev) {
    QTest::keyClicks(QApplication::focusWidget(), "1:2:3");
    QTest::keyClick(&ev, Qt::Key_S, Qt::AltModifier);  // by its mnemonic
    Settle();
    EXPECT_EQ(Texts(), std::vector<std::string>{"Invalid 'Start Time' entry"});
    EXPECT_EQ(t.prompter.Shown().back().title, "Add Event");
    Click(Ctl(ev, "cmdSave"));  // and by the mouse
    EXPECT_EQ(Texts().size(), 2u);
    EXPECT_TRUE(Ctl(ev, "lblAddEvent")->isVisible());
    EXPECT_EQ(Focused(), "txtStartTime");
    QTest::keyClicks(QApplication::focusWidget(), "1315");
    Click(Ctl(ev, "cmdSave"));
    EXPECT_TRUE(Ctl(ev, "lblViewEvent")->isVisible());
    Click(Ctl(ev, "cmdClose"));
  });
  Click(Ctl(Content(w), "cmdEvent_0"));
  EXPECT_EQ(Lines(w), (QStringList{"07:55\tRelay 1\t12 sec\t1", "13:15\tRelay 1\t12 sec\t1"}));
}

TEST_F(EventWindow, TheSpinBarsByMouseAndTheRefusalOfABadDuration) {
  Start();
  OpenDocument(kSite);
  frmSched* w = Schedule(1);
  WhenEventWindowOpens([&](frmEvent& ev) {
    auto* time = Ctl<QLineEdit>(ev, "txtStartTime");
    QTest::keyClicks(time, "2359");
    ClickArrow(Ctl<QScrollBar>(ev, "vsbStartTime_1"), true);  // up from the day's last minute
    EXPECT_EQ(time->text().toStdString(), "23:59");
    EXPECT_EQ(Focused(), "txtStartTime");
    ClickArrow(Ctl<QScrollBar>(ev, "vsbStartTime_0"), false);
    ClickArrow(Ctl<QScrollBar>(ev, "vsbStartTime_1"), false);
    EXPECT_EQ(time->text().toStdString(), "22:58");
    Type(ev, "txtDuration", "60");
    Click(Ctl(ev, "cmdSave"));
    EXPECT_EQ(Texts(), std::vector<std::string>{
                           "Cannot save current event:\n- 'Tone Duration' must be between 1-59 seconds."});
    // the bar stayed where the first digit put it, and a step down puts a good value in
    ClickArrow(Ctl<QScrollBar>(ev, "vsbDuration"), false);
    EXPECT_EQ(Ctl<QLineEdit>(ev, "txtDuration")->text().toStdString(), "5");
    t.prompter.QueueAnswer(Answer::Yes);
    Click(Ctl(ev, "cmdClose"));  // "Save current Event?" Yes
  });
  Click(Ctl(Content(w), "cmdEvent_0"));
  EXPECT_EQ(t.prompter.Shown().back().text, "Save current Event?");
  EXPECT_EQ(t.prompter.Shown().back().title, "Add Event");
  EXPECT_EQ(Lines(w), (QStringList{"07:55\tRelay 1\t12 sec\t1", "22:58\tRelay 1\t5 sec\t1"}));
}

TEST_F(EventWindow, ASaveWhileItHoldsAnEditSettlesItFirst) {
  Start();
  OpenDocument(kSite);
  frmSched* w = Schedule(1);
  std::string asked;
  bool stillOpen = true;
  WhenEventWindowOpens([&](frmEvent& ev) {
    QTest::keyClicks(QApplication::focusWidget(), "930");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    t.prompter.QueueAnswer(Answer::Yes);
    window->Click("mnuFileSave");  // as a save reaches it from the program (its shutdown, a transfer)
    asked = t.prompter.Shown().empty() ? "" : t.prompter.Shown().front().text + " / " + t.prompter.Shown().front().title;
    stillOpen = ev.isVisible();
  });
  Click(Ctl(Content(w), "cmdEvent_1"));
  EXPECT_EQ(asked, "Accept changes to Events - Schedule  - 1? / Save File");
  EXPECT_FALSE(stillOpen);
  EXPECT_FALSE(w->isVisible()) << "a save leaves only the quick menu open";
  EXPECT_TRUE(window->switchBoard()->isVisible());
  SQLite::Database saved(document, SQLite::OPEN_READONLY);
  EXPECT_EQ(saved.execAndGet("SELECT group_concat(StartTime) FROM Event").getString(), "09:30");
  EXPECT_FALSE(window->Action("mnuFileSave")->isEnabled());
}

}  // namespace
}  // namespace r6183::gui::test
