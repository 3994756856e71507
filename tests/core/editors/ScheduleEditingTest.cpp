// The schedule and event windows' rules on a real work copy, driven as the operator
// drives the windows: through their controls.
#include <gtest/gtest.h>

#include <memory>

#include "core/editors/EditorTestSupport.h"
#include "support/FakeForm.h"
#include "editors/EventEntry.h"
#include "editors/EventModel.h"
#include "editors/ScheduleModel.h"

namespace r6183::test {
namespace {

using Lines = std::vector<std::string>;
using Script = std::function<void(EventModel&)>;

// A document and its schedule windows. The event window runs the script queued for it,
// then, if still open, is closed by its system box as the operator would.
struct Schedules {
  explicit Schedules(const std::string& sql = "") : doc(sql) {}

  ScheduleModel& Open(int n) {
    doc->state.ScheduleNumber = static_cast<uint8_t>(n);
    auto& w = windows.emplace_back(std::make_unique<ScheduleModel>(*doc));
    w->ShowEventWindow = [this](EventModel& ev) {
      ev.SetFocus = [this](const std::string& c) { focus.push_back(c); };
      ev.CloseWindow = [this] { ++closed; };
      ev.Form_Activate();
      if (!scripts.empty()) {
        Script s = std::move(scripts.front());
        scripts.erase(scripts.begin());
        s(ev);
      }
      if (ev.Loaded()) ev.QueryUnload();
    };
    w->Form_Load();
    w->Form_Activate();
    return *w;
  }
  // Brings `w` to the front after `from`, as clicking into it does.
  static void SwitchTo(ScheduleModel& from, ScheduleModel& w) {
    from.Form_Deactivate();
    w.Form_Activate();
  }
  void Then(Script s) { scripts.push_back(std::move(s)); }
  std::string Events(int schedule) {
    return doc.Peek("SELECT StartTime, Tone, Duration, PageGroup1, PageGroup2 FROM Event WHERE Schedule = " +
                    std::to_string(schedule) + " ORDER BY StartTime");
  }
  const ShownMessage& Last() const { return doc.t.prompter.Shown().back(); }

  EditorSession doc;
  std::vector<std::unique_ptr<ScheduleModel>> windows;
  std::vector<Script> scripts;
  Lines focus;
  int closed = 0;
};

std::string Fields(const EventModel& ev) {
  std::string groups;
  for (const Control& c : ev.chkPageGroup) groups += c.Value() ? '1' : '0';
  return ev.txtStartTime.Text() + " relay " + ev.lblTone.Text() + " " + ev.txtDuration.Text() + "s " + groups;
}

TEST(ScheduleEditingTest, AddingByTypingKeepsTheListInTimeOrderAndTheSelectionOnTheSavedEvent) {
  Schedules s;
  ScheduleModel& w = s.Open(1);
  EXPECT_EQ(w.Caption(), "Master Clock Schedule 1");
  EXPECT_FALSE(w.cmdEvent[1].Enabled());
  std::string before;
  s.Then([&](EventModel& ev) {
    EXPECT_EQ(ev.Caption(), "Events - Schedule  - 1");
    before = Fields(ev);
    EXPECT_TRUE(ev.lblAddEvent.Visible());
    TypeInto(ev.txtStartTime, "7");
    EXPECT_EQ(ev.txtStartTime.Text(), "00:07");
    ev.Click(ev.chkPageGroup[0].Value() ? ev.cmdRemove : ev.cmdInclude);  // all four groups of the main board
    ev.Click(ev.cmdSave);
    EXPECT_TRUE(ev.lblViewEvent.Visible());
    // a new event copies the current one and can't be saved until its time differs
    ev.Click(ev.cmdAdd);
    EXPECT_EQ(Fields(ev), "00:07 relay 1 1s 1111000000000000");
    ev.Click(ev.cmdSave);
    EXPECT_EQ(s.Last().text, "Cannot save current event:\n- An event at this 'Start Time' is already scheduled.");
    TypeInto(ev.txtStartTime, "7:5");
    ev.optTone.SetValue(3);
    ev.Click(ev.cmdSave);
    ev.Click(ev.cmdAdd);
    TypeInto(ev.txtStartTime, "3");
    ev.Click(ev.cmdSave);
    EXPECT_EQ(w.lstEvent.ListIndex(), 0) << "the saved event is selected in the schedule";
    ev.Click(ev.cmdClose);
  });
  w.cmdEvent[0].Press();
  EXPECT_EQ(before, "00:00 relay 1 1s 0000000000000000") << "an empty schedule adds from the defaults";
  EXPECT_EQ(s.closed, 1);
  EXPECT_EQ(w.lstEvent.Items(), (Lines{"00:03\tRelay 3\t1 sec\t1,2,3,4", "00:07\tRelay 1\t1 sec\t1,2,3,4",
                                       "07:05\tRelay 3\t1 sec\t1,2,3,4"}));
  EXPECT_EQ(w.lstEvent.ListIndex(), 0);
  EXPECT_EQ(s.Events(1), "00:03|3|1|1|1\n00:07|1|1|1|1\n07:05|3|1|1|1\n");
  EXPECT_EQ(s.doc->state.EventCount, 3);
  EXPECT_EQ(s.doc->state.EventsInSchedule[0], 3);
  EXPECT_TRUE(w.cmdEvent[1].Enabled() && w.cmdEvent[2].Enabled());
  EXPECT_NE(s.doc->state.DatabaseDirty, 0);
  EXPECT_TRUE(s.doc->menu.Enabled("mnuFileSave"));
  EXPECT_TRUE(JournalRows(*s.doc).empty());
}

TEST(ScheduleEditingTest, LeavingTheStartTimeRewritesItOrRefusesItUnderTheModesTitle) {
  const struct {
    int button;  // 0 add, 1 edit
    const char* typed;
    const char* shown;
    const char* refusal;  // its title, or nothing
  } cases[] = {
      {0, "7", "00:07", nullptr},   {0, "7:5", "07:05", nullptr},      {1, "930", "09:30", nullptr},
      {0, "1:2:3", "1:2:3", "Add Event"}, {1, "25:00", "25:00", "Edit Event"}, {0, "7a:b5", "07:05", nullptr},
  };
  for (const auto& c : cases) {
    Schedules s("INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1) VALUES (1, '12:00', 5, 2, 1)");
    ScheduleModel& w = s.Open(1);
    std::string bars;
    Lines focus;
    s.Then([&](EventModel& ev) {
      s.focus.clear();
      TypeInto(ev.txtStartTime, c.typed);
      focus = s.focus;
      bars = std::to_string(ev.vsbStartTime[0].Value()) + " " + std::to_string(ev.vsbStartTime[1].Value());
      EXPECT_EQ(ev.txtStartTime.Text(), c.shown) << c.typed;
      ev.Click(ev.cmdCancel);
    });
    const std::size_t shown = s.doc.t.prompter.Shown().size();
    w.cmdEvent[c.button].Press();
    if (c.refusal) {
      ASSERT_EQ(s.doc.t.prompter.Shown().size(), shown + 1) << c.typed;
      EXPECT_EQ(s.doc.t.prompter.Shown()[shown].text, "Invalid 'Start Time' entry");
      EXPECT_EQ(s.doc.t.prompter.Shown()[shown].title, c.refusal);
      EXPECT_EQ(s.doc.t.prompter.Shown()[shown].icon, Icon::Exclamation);
      EXPECT_EQ(focus, Lines{"txtStartTime"}) << "the focus comes back";
      EXPECT_EQ(bars, "-12 0") << "the bars stay on the record's time";
    } else {
      EXPECT_EQ(s.doc.t.prompter.Shown().size(), shown) << c.typed;
      const auto t = ParseStartTime(c.shown);
      EXPECT_EQ(bars, std::to_string(-t->hour) + " " + std::to_string(-t->minute)) << c.typed;
    }
    EXPECT_EQ(s.Events(1), "12:00|2|5|1|0\n") << "cancelled: " << c.typed;
  }
}

TEST(ScheduleEditingTest, ACommandAfterARefusedStartTimeDoesNotRun) {
  Schedules s("INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1) VALUES (1, '12:00', 5, 2, 1)");
  ScheduleModel& w = s.Open(1);
  s.Then([&](EventModel& ev) {
    TypeInto(ev.txtStartTime, "1:2:3", false);  // still in the field
    ev.Click(ev.cmdSave);
    EXPECT_TRUE(ev.lblAddEvent.Visible()) << "the save did not happen";
    EXPECT_EQ(s.Last().text, "Invalid 'Start Time' entry");
    TypeInto(ev.txtStartTime, "13", false);
    ev.Click(ev.cmdSave);
    EXPECT_TRUE(ev.lblViewEvent.Visible());
  });
  w.cmdEvent[0].Press();
  EXPECT_EQ(s.Events(1), "00:13|2|5|1|0\n12:00|2|5|1|0\n");
}

TEST(ScheduleEditingTest, TheSpinBarsStepTheTimeWithoutWrappingTheDay) {
  const struct {
    const char* start;
    int bar;    // 0 hours, 1 minutes
    int steps;  // up is negative, as on the bar
    const char* shown;
  } cases[] = {
      {"23:59", 1, -1, "23:59"}, {"00:00", 1, 1, "00:00"}, {"10:59", 1, -1, "11:00"},
      {"11:00", 1, 1, "10:59"},  {"07:05", 0, -3, "10:05"}, {"23:10", 0, -1, "23:10"},
  };
  for (const auto& c : cases) {
    Schedules s;
    ScheduleModel& w = s.Open(1);
    std::string shown;
    s.Then([&](EventModel& ev) {
      TypeInto(ev.txtStartTime, c.start);
      s.focus.clear();
      Control& bar = ev.vsbStartTime[static_cast<std::size_t>(c.bar)];
      for (int i = 0; i < std::abs(c.steps); ++i) bar.SetValue(bar.Value() + (c.steps < 0 ? -1 : 1));
      shown = ev.txtStartTime.Text();
      if (shown != c.start) {
        EXPECT_EQ(s.focus.back(), "txtStartTime");
      }
    });
    w.cmdEvent[0].Press();
    EXPECT_EQ(shown, c.shown) << c.start << " bar " << c.bar << " " << c.steps;
  }
}

TEST(ScheduleEditingTest, ASaveIsRefusedWithEveryFailedCheckAndNothingIsWritten) {
  const struct {
    std::function<void(EventModel&)> edit;
    std::string refusal;  // empty: saved
    std::string stored;   // the new event's row
  } cases[] = {
      {[](EventModel& ev) { TypeInto(ev.txtDuration, "60"); },
       "Cannot save current event:\n- An event at this 'Start Time' is already scheduled.\n"
       "- 'Tone Duration' must be between 1-59 seconds.",
       ""},
      {[](EventModel& ev) {
         TypeInto(ev.txtStartTime, "9");
         TypeInto(ev.txtDuration, "0");
       },
       "Cannot save current event:\n- 'Tone Duration' must be between 1-59 seconds.", ""},
      {[](EventModel& ev) {
         TypeInto(ev.txtStartTime, "9");
         TypeInto(ev.txtDuration, "");  // emptied by hand: no check catches it
       },
       "", "00:09|2|<null>|1|0\n"},
      {[](EventModel& ev) {
         TypeInto(ev.txtStartTime, "9");
         TypeInto(ev.txtDuration, "60");
         ev.vsbDuration.SetValue(-20);  // the bar puts a good value back
       },
       "", "00:09|2|20|1|0\n"},
      {[](EventModel& ev) {
         TypeInto(ev.txtStartTime, "1:2:3", false);
         TypeInto(ev.txtDuration, "99");
         ev.cmdRemove.Press();
       },
       "Cannot save current event:\nStart Time format must be 'hh:mm'.\n"
       "- 'Tone Duration' must be between 1-59 seconds.\n- Must select a 'Page Group'.",
       ""},
  };
  for (const auto& c : cases) {
    Schedules s("INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1) VALUES (1, '12:00', 5, 2, 1)");
    ScheduleModel& w = s.Open(1);
    bool stillAdding = false;
    s.Then([&](EventModel& ev) {
      c.edit(ev);
      ev.cmdSave.Press();
      stillAdding = ev.lblAddEvent.Visible();
    });
    const std::size_t shown = s.doc.t.prompter.Shown().size();
    w.cmdEvent[0].Press();
    const auto& msgs = s.doc.t.prompter.Shown();
    if (c.refusal.empty()) {
      EXPECT_FALSE(stillAdding);
      EXPECT_EQ(s.doc.Peek("SELECT StartTime, Tone, Duration, PageGroup1, PageGroup2 FROM Event WHERE StartTime <> "
                           "'12:00'"),
                c.stored);
    } else {
      ASSERT_GT(msgs.size(), shown);
      EXPECT_EQ(msgs[shown].text, c.refusal);
      EXPECT_EQ(msgs[shown].title, "Event");
      EXPECT_EQ(msgs[shown].icon, Icon::Exclamation);
      EXPECT_TRUE(stillAdding) << "a refused save stays in its mode";
      EXPECT_EQ(s.Events(1), "12:00|2|5|1|0\n") << c.refusal;
    }
  }
}

TEST(ScheduleEditingTest, TheLastEventSlotDisablesAddEverywhereUntilADeleteAnywhere) {
  Schedules s(EventsSql(3, 255, 60));
  ScheduleModel& one = s.Open(1);
  ScheduleModel& two = s.Open(2);
  ScheduleModel& three = s.Open(3);
  Schedules::SwitchTo(three, one);
  EXPECT_TRUE(one.cmdEvent[0].Enabled());
  bool addAfter = true;
  s.Then([&](EventModel& ev) {
    TypeInto(ev.txtStartTime, "6:30");
    ev.cmdInclude.Press();
    ev.Click(ev.cmdSave);
    addAfter = ev.cmdAdd.Enabled();
  });
  one.cmdEvent[0].Press();
  EXPECT_EQ(s.doc->state.EventCount, 256);
  EXPECT_EQ(s.doc.Peek("SELECT COUNT(*) FROM Event"), "256\n") << "the 256th event is saved";
  EXPECT_FALSE(addAfter);
  EXPECT_FALSE(one.cmdEvent[0].Enabled());
  for (ScheduleModel* w : {&two, &three}) {
    Schedules::SwitchTo(one, *w);
    EXPECT_FALSE(w->cmdEvent[0].Enabled()) << w->Caption();
    Schedules::SwitchTo(*w, one);
  }
  // a delete in schedule 3 gives the slot back, there at once and elsewhere when in front
  Schedules::SwitchTo(one, three);
  three.lstEvent.SetListIndex(100);
  three.cmdEvent[2].Press();
  EXPECT_TRUE(three.cmdEvent[0].Enabled());
  EXPECT_EQ(three.lstEvent.ListIndex(), 100);
  EXPECT_EQ(three.lstEvent.ListCount(), 254);
  EXPECT_EQ(s.doc->state.EventCount, 255);
  Schedules::SwitchTo(three, two);
  EXPECT_TRUE(two.cmdEvent[0].Enabled());
  EXPECT_TRUE(JournalRows(*s.doc).empty());
}

TEST(ScheduleEditingTest, IncludeAllTicksOnlyTheGroupsOfTheBoardsThere) {
  for (const int config : {0, 2}) {
    Schedules s("UPDATE Config SET System_Config = " + std::to_string(config) +
                "; INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup16) VALUES (1, '12:00', 5, 2, 1)");
    ScheduleModel& w = s.Open(1);
    std::string included, enabled, removed;
    s.Then([&](EventModel& ev) {
      for (const Control& c : ev.chkPageGroup) enabled += c.Enabled() ? '1' : '0';
      ev.cmdInclude.Press();
      for (const Control& c : ev.chkPageGroup) included += c.Value() ? '1' : '0';
      ev.cmdRemove.Press();
      for (const Control& c : ev.chkPageGroup) removed += c.Value() ? '1' : '0';
    });
    w.cmdEvent[1].Press();
    const std::string boards(static_cast<std::size_t>((config + 1) * 4), '1');
    EXPECT_EQ(enabled, boards + std::string(16 - boards.size(), '0')) << config;
    // group 16 of the record stays as it is when its box is grey
    EXPECT_EQ(included, boards + std::string(15 - boards.size(), '0') + "1") << config;
    EXPECT_EQ(removed, std::string(16, '0')) << "Remove All clears the grey boxes too";
  }
}

TEST(ScheduleEditingTest, DeletingTheLastEventOrCancellingTheFirstClosesTheEventWindow) {
  {
    Schedules s("INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1) VALUES (1, '12:00', 5, 2, 1)");
    ScheduleModel& w = s.Open(1);
    s.Then([&](EventModel& ev) {
      EXPECT_TRUE(ev.lblEditEvent.Visible());
      ev.Click(ev.cmdCancel);
      ev.Click(ev.cmdDelete);
      EXPECT_FALSE(ev.Loaded());
    });
    w.cmdEvent[1].Press();
    EXPECT_EQ(s.closed, 1);
    EXPECT_EQ(w.lstEvent.ListCount(), 0);
    EXPECT_FALSE(w.cmdEvent[1].Enabled());
    EXPECT_FALSE(w.cmdEvent[2].Enabled());
    EXPECT_EQ(s.doc->state.EventCount, 0);
    EXPECT_EQ(s.Events(1), "");
  }
  {
    Schedules s;
    ScheduleModel& w = s.Open(1);
    s.Then([&](EventModel& ev) {
      TypeInto(ev.txtStartTime, "8");
      ev.Click(ev.cmdCancel);
      EXPECT_FALSE(ev.Loaded()) << "nothing to view";
    });
    w.cmdEvent[0].Press();
    EXPECT_EQ(s.closed, 1);
    EXPECT_EQ(s.Events(1), "");
    EXPECT_EQ(s.doc->state.EventCount, 0);
    EXPECT_FALSE(w.cmdEvent[1].Enabled());
    EXPECT_TRUE(JournalRows(*s.doc).empty());
  }
}

TEST(ScheduleEditingTest, CloseAsksAboutTheEventInWorkAndTheSystemBoxNeverRefuses) {
  const struct {
    int button;
    bool change;
    std::optional<Answer> answer;  // nothing: no question
    bool systemBox;
    std::string stored;
  } cases[] = {
      {0, true, Answer::Yes, false, "00:08|2|5|1|0\n12:00|2|5|1|0\n"},
      {0, false, Answer::No, false, "12:00|2|5|1|0\n"},
      {1, true, Answer::Yes, false, "00:08|2|5|1|0\n"},
      {1, true, Answer::No, false, "12:00|2|5|1|0\n"},
      {1, false, std::nullopt, false, "12:00|2|5|1|0\n"},
      // Yes to a save its checks refuse: the system box closes all the same, nothing saved
      {0, false, Answer::Yes, true, "12:00|2|5|1|0\n"},
  };
  for (const auto& c : cases) {
    Schedules s("INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1) VALUES (1, '12:00', 5, 2, 1)");
    ScheduleModel& w = s.Open(1);
    if (c.answer) s.doc.t.prompter.QueueAnswer(*c.answer);
    bool openAfterClose = false;
    s.Then([&](EventModel& ev) {
      if (c.change) TypeInto(ev.txtStartTime, "8");
      if (c.systemBox) {
        ev.QueryUnload();
      } else {
        ev.Click(ev.cmdClose);
        openAfterClose = ev.Loaded();
      }
    });
    const std::size_t shown = s.doc.t.prompter.Shown().size();
    w.cmdEvent[c.button].Press();
    const auto& msgs = s.doc.t.prompter.Shown();
    if (c.answer) {
      ASSERT_GT(msgs.size(), shown);
      EXPECT_EQ(msgs[shown].text, "Save current Event?");
      EXPECT_EQ(msgs[shown].title, c.button == 0 ? "Add Event" : "Edit Event");
      EXPECT_EQ(msgs[shown].buttons, Buttons::YesNo);
    } else {
      EXPECT_EQ(msgs.size(), shown);
    }
    EXPECT_FALSE(openAfterClose);
    EXPECT_EQ(s.closed, 1);
    EXPECT_EQ(s.Events(1), c.stored) << c.button << c.change;
    EXPECT_EQ(w.lstEvent.ListCount(), std::count(c.stored.begin(), c.stored.end(), '\n'));
    EXPECT_TRUE(JournalRows(*s.doc).empty());
  }
}

TEST(ScheduleEditingTest, AnEditThatMovesAnEventKeepsTheOrderAndTheSelectionFollowsIt) {
  Schedules s(
      "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1) VALUES (1, '08:00', 5, 1, 1),"
      " (1, '09:00', 6, 2, 1), (1, '10:00', 7, 3, 1), (2, '06:00', 5, 1, 1)");
  ScheduleModel& w = s.Open(1);
  w.lstEvent.SetListIndex(0);
  s.Then([&](EventModel& ev) {
    ev.Click(ev.cmdSave);  // the time unchanged is no duplicate of itself
    EXPECT_TRUE(ev.lblViewEvent.Visible());
    ev.Click(ev.cmdEdit);
    TypeInto(ev.txtStartTime, "9:30");
    ev.Click(ev.cmdSave);
    EXPECT_EQ(w.lstEvent.ListIndex(), 1);
    EXPECT_EQ(ev.EventPos, 1);
    // the arrows walk the schedule and the schedule's selection goes along
    const std::pair<int, const char*> moves[] = {{3, "10:00"}, {2, "10:00"}, {0, "09:00"}, {1, "09:00"}, {2, "09:30"}};
    for (const auto& [button, time] : moves) {
      ev.Click(ev.cmdMove[static_cast<std::size_t>(button)]);
      EXPECT_EQ(ev.txtStartTime.Text(), time) << button;
      EXPECT_EQ(s.doc->state.CurStartTime, time);
      EXPECT_EQ(w.lstEvent.Selected().substr(0, 5), time);
    }
    ev.Click(ev.cmdEdit);
    TypeInto(ev.txtStartTime, "6");  // 06:00 is taken in schedule 2 only
    ev.Click(ev.cmdSave);
    EXPECT_TRUE(ev.lblViewEvent.Visible());
  });
  w.cmdEvent[1].Press();
  EXPECT_EQ(w.lstEvent.Items(), (Lines{"00:06\tRelay 1\t5 sec\t1", "09:00\tRelay 2\t6 sec\t1",
                                       "10:00\tRelay 3\t7 sec\t1"}));
  EXPECT_EQ(w.lstEvent.ListIndex(), 0) << "the window closed on the event saved last";
  EXPECT_TRUE(JournalRows(*s.doc).empty());
}

TEST(ScheduleEditingTest, ADayActiveInOneScheduleIsGreyInTheOthersUntilCleared) {
  Schedules s;
  ScheduleModel& one = s.Open(1);
  ScheduleModel& two = s.Open(2);
  Schedules::SwitchTo(two, one);
  one.chkDay[1].SetValue(1);  // Monday
  EXPECT_NE(s.doc->state.DatabaseDirty, 0);
  EXPECT_TRUE(s.doc->menu.Enabled("mnuFileSave"));
  Schedules::SwitchTo(one, two);
  EXPECT_FALSE(two.chkDay[1].Enabled());
  EXPECT_TRUE(two.chkDay[0].Enabled() && two.chkDay[2].Enabled());
  EXPECT_EQ(s.doc.Peek("SELECT Schedule, Monday FROM SchedDays WHERE Schedule < 3"), "1|1\n2|0\n");
  Schedules::SwitchTo(two, one);
  EXPECT_EQ(one.chkDay[1].Value(), 1);
  one.chkDay[1].SetValue(0);
  one.chkDay[3].SetValue(1);
  one.Form_Unload();  // closing writes the boxes too
  two.Form_Activate();
  EXPECT_TRUE(two.chkDay[1].Enabled());
  EXPECT_FALSE(two.chkDay[3].Enabled());
  EXPECT_EQ(s.doc.Peek("SELECT Monday, Wednesday FROM SchedDays WHERE Schedule = 1"), "0|1\n");
}

TEST(ScheduleEditingTest, DeleteInTheScheduleWindowAsksNothingAndKeepsTheSelectionInTheList) {
  Schedules s(
      "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1) VALUES (1, '08:00', 5, 1, 1),"
      " (1, '09:00', 6, 2, 1), (1, '10:00', 7, 3, 1)");
  ScheduleModel& w = s.Open(1);
  const std::pair<int, int> deletes[] = {{2, 1}, {0, 0}, {0, -1}};  // selected, selected after
  for (const auto& [at, after] : deletes) {
    w.lstEvent.SetListIndex(at);
    w.cmdEvent[2].Press();
    EXPECT_EQ(w.lstEvent.ListIndex(), after);
  }
  EXPECT_TRUE(s.doc.t.prompter.Shown().empty());
  EXPECT_EQ(s.Events(1), "");
  EXPECT_FALSE(w.cmdEvent[2].Enabled());
  EXPECT_EQ(s.doc->state.EventCount, 0);
  EXPECT_TRUE(JournalRows(*s.doc).empty());
}

TEST(ScheduleEditingTest, AnEventWindowWithEditsSettlesForASave) {
  Schedules s("INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1) VALUES (1, '12:00', 5, 2, 1)");
  ScheduleModel& w = s.Open(1);
  s.Then([&](EventModel& ev) {
    EXPECT_FALSE(ev.UncommittedChanges()) << "an edit with nothing changed yet";
    TypeInto(ev.txtStartTime, "13", false);  // still in the field: accepting leaves it first
    EXPECT_TRUE(ev.UncommittedChanges());
    ev.Accept();
    EXPECT_FALSE(ev.Loaded());
  });
  w.cmdEvent[1].Press();
  s.Then([&](EventModel& ev) {
    EXPECT_TRUE(ev.UncommittedChanges()) << "a new event";
    TypeInto(ev.txtStartTime, "14");
    ev.Drop();
    EXPECT_FALSE(ev.Loaded());
  });
  w.cmdEvent[0].Press();
  EXPECT_EQ(s.Events(1), "00:13|2|5|1|0\n");
}

}  // namespace
}  // namespace r6183::test

namespace r6183::test {
namespace {

struct RecordingWindows : WindowOpener {
  explicit RecordingWindows(Session& s) : s_(s) {}
  void Show(const std::string& name) override { shown.push_back(name + " " + std::to_string(s_.state.ScheduleNumber)); }
  Session& s_;
  Lines shown;
};

TEST(ScheduleMenuTest, TheMenuOpensTheSchedulesUnlessATransferOrADialIsUnderWay) {
  const struct {
    const char* third;  // caption of the window at index 2, if any
    bool opens;
  } cases[] = {{nullptr, true}, {"Title", false}, {"Dialing Modem", false}, {"Programming Windows", true}};
  for (const auto& c : cases) {
    TestSession t;
    t->product.ProductTitle = "Title";
    RecordingWindows windows(*t);
    t->SetWindowOpener(&windows);
    Lines events;
    FakeForm main(t->forms, events, "frmMenu", "Title"), quick(t->forms, events, "frmSwitchBoard", "Programming Windows");
    std::optional<FakeForm> third;
    if (c.third) third.emplace(t->forms, events, "frmX", c.third);
    mnuSched_Click(*t, 4);
    mnuAllSched_Click(*t);
    EXPECT_EQ(windows.shown, c.opens ? (Lines{"frmSched 4", "frmSched 6", "frmSched 5", "frmSched 4", "frmSched 3",
                                              "frmSched 2", "frmSched 1"})
                                     : Lines{})
        << (c.third ? c.third : "two windows");
    third.reset();
    t->SetWindowOpener(nullptr);
  }
}

TEST(ScheduleMenuTest, TheFormIndexIsTheLastWindowWithTheCaption) {
  TestSession t;
  Lines events;
  FakeForm a(t->forms, events, "frmMenu", "Title"), b(t->forms, events, "frmSched", "Master Clock Schedule 1"),
      c(t->forms, events, "frmSched", "Master Clock Schedule 2"), d(t->forms, events, "frmSched", "Master Clock Schedule 1");
  EXPECT_EQ(GetFormIndex(t->forms, "Master Clock Schedule 1"), 3);
  EXPECT_EQ(GetFormIndex(t->forms, "Master Clock Schedule 2"), 2);
  EXPECT_EQ(GetFormIndex(t->forms, "Master Clock Schedule 3"), 0);
}

}  // namespace
}  // namespace r6183::test
