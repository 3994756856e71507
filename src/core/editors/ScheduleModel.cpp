#include "editors/ScheduleModel.h"

#include "editors/EventEntry.h"
#include "editors/EventModel.h"
#include "shell/Conversions.h"
#include "shell/MainMenu.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmSched";
constexpr Where kBuild{kModule, "Build_lstEvent"};
constexpr Where kDays{kModule, "UpdateDays"};
constexpr Where kChkDay{kModule, "chkDay"};
constexpr Where kCmdEvent{kModule, "cmdEvent"};
constexpr Where kActivate{kModule, "Form Activate"};
constexpr Where kDeactivate{kModule, "Form Deactivate"};
constexpr Where kLoad{kModule, "Form Load"};
constexpr Where kUnload{kModule, "Unload"};
constexpr Where kList{kModule, "lstEvent"};

constexpr const char* kDayCaptions[] = {" Sunday",   " Monday", " Tuesday",  " Wednesday",
                                        " Thursday", " Friday", " Saturday"};
constexpr const char* kEventButtons[] = {"&Add", "&Edit", "&Delete"};

Predicate StartTimeIs(const std::string& time) {
  return [time](const RowView& r) { return TextOf(r["StartTime"]) == time; };
}

int16_t& EventsIn(ProcessState& st, int schedule) {
  if (schedule < 1 || schedule > kSchedules) throw RuntimeError(err::SubscriptOutOfRange);
  return st.EventsInSchedule[static_cast<std::size_t>(schedule - 1)];
}
}  // namespace

ScheduleModel::ScheduleModel(Session& session) : s_(session) {
  lblSchedule.SetVisible(false);
  for (int i = 0; i < 3; ++i) {
    cmdEvent.emplace_back(ArrayName("cmdEvent", i), ControlKind::Button, kEventButtons[i]);
    cmdEvent.back().OnClick = [this, i] { cmdEvent_Click(i); };
  }
  for (int i = 0; i < 7; ++i) {
    chkDay.emplace_back(ArrayName("chkDay", i), ControlKind::CheckBox, kDayCaptions[i]);
    chkDay.back().OnChange = [this, i] { chkDay_Click(i); };
  }
  lstEvent.OnDblClick = [this] { step(s_.journal(), kList, [&] { cmdEvent[1].Press(); }); };
  cmdClose.OnClick = [this] {
    if (CloseWindow) CloseWindow();
    else Form_Unload();
  };
}

ScheduleModel::~ScheduleModel() = default;

int ScheduleModel::Schedule() const { return static_cast<int>(Val(lblSchedule.Text())); }

void ScheduleModel::Form_Load() {
  ProcessState& st = s_.state;
  Journal& j = s_.journal();
  // a window loads as it was designed
  DaysLoading = true;
  for (Control& day : chkDay) {
    day.SetValue(0);
    day.SetEnabled(true);
  }
  DaysLoading = false;
  DaysChanged = false;
  lstEvent.Clear();
  step(j, kLoad, [&] {
    dtaEvent.DatabaseName = st.WorkDbPath;
    dtaDays.DatabaseName = st.WorkDbPath;
  });
  step(j, kLoad, [&] {
    const std::string n = std::to_string(st.ScheduleNumber);
    caption_ = std::string(kCaption) + n;
    lblSchedule.SetText(n);
  });
  loaded_ = true;
  step(j, kLoad, [&] {
    dtaDays.RecordSource = "SchedDays";
    dtaEvent.RecordSource = "Select * from Event where Schedule = " + lblSchedule.Text() + " order by StartTime";
    dtaEvent.Refresh();
    st.CurStartTime.clear();
    Build_lstEvent();
  });
}

void ScheduleModel::Form_Activate() {
  ProcessState& st = s_.state;
  Journal& j = s_.journal();
  step(j, kActivate, [&] { st.ScheduleNumber = static_cast<uint8_t>(Schedule()); });
  step(j, kActivate, [&] { cmdEvent[0].SetEnabled(st.EventCount < kMaxEvents); });
  step(j, kActivate, [&] {
    for (Control& day : chkDay) day.SetEnabled(true);
    dtaDays.Refresh();
    Recordset& rs = dtaDays.Recordset();
    const int mine = Schedule();
    for (; !rs.IsEOF(); rs.MoveNext()) {
      if (rs["Schedule"].Number() != mine) {
        // a day active in another schedule is grey here
        for (int i = 0; i < 7; ++i)
          if (rs.Fields(i + 1).Bool()) chkDay[static_cast<std::size_t>(i)].SetEnabled(false);
        continue;
      }
      DaysLoading = true;
      for (int i = 0; i < 7; ++i) chkDay[static_cast<std::size_t>(i)].SetValue(rs.Fields(i + 1).Bool() ? 1 : 0);
      DaysLoading = false;
    }
  });
  DaysLoading = false;
}

void ScheduleModel::Form_Deactivate() {
  step(s_.journal(), kDeactivate, [&] { Update_Days(); });
}

void ScheduleModel::Form_Unload() {
  if (!loaded_) return;
  step(s_.journal(), kUnload, [&] { Update_Days(); });
  step(s_.journal(), kUnload, [&] { dtaEvent.Close(); });
  step(s_.journal(), kUnload, [&] { dtaDays.Close(); });
  loaded_ = false;
}

void ScheduleModel::chkDay_Click(int) {
  if (DaysLoading) return;
  step(s_.journal(), kChkDay, [&] {
    DaysChanged = true;
    s_.state.DatabaseDirty = 1;
    s_.menu.SetEnabled("mnuFileSave", true);
  });
}

void ScheduleModel::Update_Days() {
  step(s_.journal(), kDays, [&] {
    if (!DaysChanged) return;
    DaysChanged = false;
    if (!dtaDays.HasRecordset()) dtaDays.Refresh();
    const int mine = Schedule();
    dtaDays.FindFirst([mine](const RowView& r) { return NumberOf(r["Schedule"]) == mine; });
    Recordset& rs = dtaDays.Recordset();
    if (rs.NoMatch()) return;
    rs.Edit();
    for (int i = 0; i < 7; ++i) rs.Fields(i + 1) = Value(chkDay[static_cast<std::size_t>(i)].Value() == 1);
    rs.Update();
  });
}

void ScheduleModel::Build_lstEvent() {
  ProcessState& st = s_.state;
  step(s_.journal(), kBuild, [&] {
    lstEvent.Clear();
    dtaEvent.Refresh();
    Recordset& rs = dtaEvent.Recordset();
    int16_t& count = EventsIn(st, Schedule());
    if (rs.RecordCount() == 0) {
      count = 0;
      cmdEvent[1].SetEnabled(false);
      cmdEvent[2].SetEnabled(false);
    } else {
      rs.MoveLast();
      count = static_cast<int16_t>(rs.RecordCount());
      cmdEvent[1].SetEnabled(true);
      cmdEvent[2].SetEnabled(true);
    }
    cmdEvent[0].SetEnabled(st.EventCount < kMaxEvents);
    int selected = 0;
    if (rs.RecordCount() > 0) {
      for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) {
        lstEvent.AddItem(EventLine(rs));
        if (TextOf(rs["StartTime"].GetValue()) == st.CurStartTime) selected = lstEvent.NewIndex();
      }
    }
    if (lstEvent.ListCount() > 0) lstEvent.SetListIndex(selected);
    dtaEvent.Refresh();
  });
}

void ScheduleModel::RunEventWindow(const std::function<void(EventModel&)>& prepare) {
  {
    EventModel window(s_, *this);
    prepare(window);
    if (ShowEventWindow && window.Loaded()) ShowEventWindow(window);
  }
  // the window may have been closed meanwhile (Close All, the end of the document)
  if (loaded_) Build_lstEvent();
}

void ScheduleModel::cmdEvent_Click(int index) {
  ProcessState& st = s_.state;
  Journal& j = s_.journal();
  step(j, kCmdEvent, [&] { st.SchedFormIndex = static_cast<int16_t>(GetFormIndex(s_.forms, caption_)); });
  step(j, kCmdEvent, [&] { st.CurStartTime = LineStartTime(lstEvent.Selected()); });
  switch (index) {
    case 0:
      step(j, kCmdEvent, [&] {
        RunEventWindow([&](EventModel& ev) {
          step(j, kCmdEvent, [&] {
            ev.dtaEvent.SetRecordset(dtaEvent.SharedRecordset());
            const std::string line = lstEvent.Selected();
            st.CurStartTime = LineStartTime(line);
            ev.dtaEvent.FindFirst(StartTimeIs(st.CurStartTime));
            if (!st.CurStartTime.empty()) {
              st.CurTone = static_cast<uint8_t>(LineRelay(line));
              st.CurDuration = static_cast<uint8_t>(LineDuration(line));
              st.CurPageGroups = RecordPageGroups(ev.dtaEvent.Recordset());
            }
          });
          ev.cmdAdd.Press();
        });
      });
      break;
    case 1:
      if (lstEvent.ListIndex() == -1) return;
      step(j, kCmdEvent, [&] {
        RunEventWindow([&](EventModel& ev) {
          step(j, kCmdEvent, [&] {
            ev.dtaEvent.SetRecordset(dtaEvent.SharedRecordset());
            ev.dtaEvent.MoveLast();
            ev.dtaEvent.FindFirst(StartTimeIs(st.CurStartTime));
          });
          ev.cmdEdit.Press();
        });
      });
      break;
    case 2: {
      if (lstEvent.ListIndex() == -1) return;
      const int at = lstEvent.ListIndex();
      bool deleted = false;
      step(j, kCmdEvent, [&] {
        Recordset& rs = dtaEvent.Recordset();
        dtaEvent.FindFirst(StartTimeIs(st.CurStartTime));
        if (rs.NoMatch()) return;  // never the wrong row
        dtaEvent.Delete();
        deleted = true;
        if (rs.RecordCount() > 0) dtaEvent.MoveFirst();
      });
      if (!deleted) return;
      step(j, kCmdEvent, [&] {
        lstEvent.RemoveItem(at);
        if (lstEvent.ListCount() < 1) {
          cmdEvent[1].SetEnabled(false);
          cmdEvent[2].SetEnabled(false);
        } else {
          lstEvent.SetListIndex(at < lstEvent.ListCount() ? at : lstEvent.ListCount() - 1);
        }
      });
      step(j, kCmdEvent, [&] {
        --EventsIn(st, Schedule());
        --st.EventCount;
        cmdEvent[0].SetEnabled(true);
        st.DatabaseDirty = 1;
        s_.menu.SetEnabled("mnuFileSave", true);
      });
      break;
    }
    default:
      break;
  }
}

int GetFormIndex(const FormsRegistry& forms, const std::string& caption) {
  int index = 0;
  for (int i = 0; i < forms.Count(); ++i)
    if (forms.At(i).Caption() == caption) index = i;
  return index;
}

void mnuSched_Click(Session& s, int schedule) {
  if (WindowOpenBlocked(s)) return;
  s.state.ScheduleNumber = static_cast<uint8_t>(schedule);
  s.windows().Show("frmSched");
}

void mnuAllSched_Click(Session& s) {
  if (WindowOpenBlocked(s)) return;
  for (int n = kSchedules; n >= 1; --n) mnuSched_Click(s, n);
}

}  // namespace r6183
