#include "editors/EventModel.h"

#include <algorithm>

#include "editors/EventEntry.h"
#include "editors/StationList.h"
#include "editors/ScheduleModel.h"
#include "shell/Conversions.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"
#include "shell/Utility.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmEvent";
constexpr Where kAddEditMode{kModule, "Begin_Add_Edit_Mode"};
constexpr Where kDataChanged{kModule, "DataChanged"};
constexpr Where kPromptSave{kModule, "Prompt_Save"};
constexpr Where kDefault{kModule, "Default_Event"};
constexpr Where kDuplicate{kModule, "Duplicate_Time"};
constexpr Where kGroupSelected{kModule, "Is_PageGroup_Selected"};
constexpr Where kValidate{kModule, "Validate_Event"};
constexpr Where kViewMode{kModule, "Begin ViewMode"};
constexpr Where kAdd{kModule, "cmdAdd"};
constexpr Where kCancel{kModule, "cmdCancel"};
constexpr Where kClose{kModule, "cmdClose"};
constexpr Where kDelete{kModule, "cmdDelete"};
constexpr Where kEdit{kModule, "cmdEdit"};
constexpr Where kInclude{kModule, "cmdInclude"};
constexpr Where kMove{kModule, "cmdMove"};
constexpr Where kRemove{kModule, "cmdRemove"};
constexpr Where kSave{kModule, "cmdSave"};
constexpr Where kDta{kModule, "dtaEvent"};
constexpr Where kActivate{kModule, "Activate"};
constexpr Where kLoad{kModule, "Load"};
constexpr Where kUnload{kModule, "unload"};
constexpr Where kLblTone{kModule, "lblTone"};
constexpr Where kOptTone{kModule, "optTone"};
constexpr Where kTxtDuration{kModule, "txtDuration"};
constexpr Where kKeyPress{kModule, "KeyPress"};
constexpr Where kTxtStartTime{kModule, "txtStartTime"};
constexpr Where kStartKeyPress{kModule, "txtStartTime_KeyPress"};
constexpr Where kStartLostFocus{kModule, "txtStartTime_LostFocus"};
constexpr Where kVsbDuration{kModule, "vsbDuration"};
constexpr Where kVsbStartTime{kModule, "vsbStartTime_Chg"};
constexpr Where kRefreshSched{kModule, "RefreshfrmSched"};

constexpr const char* kMoveCaptions[] = {"<<", "<", ">", ">>"};

Predicate StartTimeIs(const std::string& time) {
  return [time](const RowView& r) { return TextOf(r["StartTime"]) == time; };
}

uint8_t SmallNumber(const Value& v) { return static_cast<uint8_t>(std::clamp<double>(NumberOf(v), 0, 255)); }
}  // namespace

EventModel::EventModel(Session& session, ScheduleModel& schedule) : s_(session), sched_(schedule) {
  vsbStartTime.emplace_back("vsbStartTime_0", ControlKind::ScrollBar);
  vsbStartTime.emplace_back("vsbStartTime_1", ControlKind::ScrollBar);
  vsbStartTime[0].SetRange(kHourBarMin, kHourBarMax);
  vsbStartTime[1].SetRange(kMinuteBarMin, kMinuteBarMax);
  vsbDuration.SetRange(kDurationBarMin, kDurationBarMax);
  for (int g = 0; g < kPageGroups; ++g)
    chkPageGroup.emplace_back(ArrayName("chkPageGroup", g), ControlKind::CheckBox, " " + std::to_string(g + 1));
  for (int i = 0; i < 4; ++i) {
    cmdMove.emplace_back(ArrayName("cmdMove", i), ControlKind::Button, kMoveCaptions[i]);
    cmdMove.back().OnClick = [this, i] { cmdMove_Click(i); };
  }
  lblTone.SetVisible(false);
  txtHideScreen.SetVisible(false);

  txtStartTime.OnChange = [this] { txtStartTime_Change(); };
  txtStartTime.OnKeyPress = [this](int& k) { txtStartTime_KeyPress(k); };
  txtStartTime.OnGotFocus = [this] {
    startTimeFocused_ = true;
    if (SelectAll) SelectAll(txtStartTime.Name());
  };
  txtStartTime.OnLostFocus = [this] {
    startTimeFocused_ = false;
    txtStartTime_LostFocus();
  };
  for (int i = 0; i < 2; ++i) vsbStartTime[static_cast<std::size_t>(i)].OnChange = [this, i] { vsbStartTime_Change(i); };
  txtDuration.OnChange = [this] { txtDuration_Change(); };
  txtDuration.OnKeyPress = [this](int& k) { step(s_.journal(), kKeyPress, [&] { Allow_digits_only(k); }); };
  txtDuration.OnGotFocus = [this] {
    if (SelectAll) SelectAll(txtDuration.Name());
  };
  vsbDuration.OnChange = [this] { vsbDuration_Change(); };
  optTone.OnChange = [this] { optTone_Click(); };
  lblTone.OnChange = [this] { lblTone_Change(); };
  cmdInclude.OnClick = [this] { cmdInclude_Click(); };
  cmdRemove.OnClick = [this] { cmdRemove_Click(); };
  cmdAdd.OnClick = [this] { cmdAdd_Click(); };
  cmdEdit.OnClick = [this] { cmdEdit_Click(); };
  cmdDelete.OnClick = [this] { cmdDelete_Click(); };
  cmdSave.OnClick = [this] { cmdSave_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
  cmdClose.OnClick = [this] { cmdClose_Click(); };

  dtaEvent.Bind(txtStartTime, "StartTime");
  dtaEvent.Bind(txtDuration, "Duration");
  dtaEvent.Bind(lblTone, "Tone");
  for (int g = 0; g < kPageGroups; ++g)
    dtaEvent.Bind(chkPageGroup[static_cast<std::size_t>(g)], "PageGroup" + std::to_string(g + 1));
  dtaEvent.Validate = [this](int& action, bool& save) { dtaEvent_Validate(action, save); };
  Form_Load();
}

EventModel::~EventModel() {
  SetFocus = nullptr;
  SelectAll = nullptr;
  CloseWindow = nullptr;
  if (loaded_) Form_Unload();
}

// ---------------------------------------------------------------- the window

void EventModel::Form_Load() {
  const ProcessState& st = s_.state;
  step(s_.journal(), kLoad, [&] {
    Closing = false;
    CanFocus = false;
    if (st.EventCount >= kMaxEvents) cmdAdd.SetEnabled(false);
  });
  step(s_.journal(), kLoad, [&] { caption_ = std::string(kCaption) + " - " + std::to_string(st.ScheduleNumber); });
  step(s_.journal(), kLoad, [&] {
    const int enabled = LastValidGroup(st.SystemConfig);  // four page groups a board
    for (int g = 0; g < kPageGroups; ++g) chkPageGroup[static_cast<std::size_t>(g)].SetEnabled(g < enabled);
  });
  SetMode(Mode::View);
  loaded_ = true;
}

void EventModel::Form_Activate() {
  step(s_.journal(), kActivate, [&] {
    // texts and bars agree
    vsbStartTime_Change(1);
    vsbDuration_Change();
  });
  step(s_.journal(), kActivate, [&] {
    if (optTone.Value() >= 1 && optTone.Value() <= 4) optTone_Click();
    else optTone.SetValue(1);
  });
  CanFocus = true;
  step(s_.journal(), kActivate, [&] { EventPos = sched_.lstEvent.ListIndex(); });
}

void EventModel::QueryUnload() {
  step(s_.journal(), kUnload, [&] {
    if (Closing) return;
    // a start time typed and not yet left counts as left
    if (startTimeFocused_ && TypedTime) txtStartTime_LostFocus();
    cmdClose_Click();
    if (lblViewEvent.Visible()) s_.state.CurStartTime = txtStartTime.Text();
  });
  UnloadWindow();  // never refused
}

void EventModel::UnloadWindow() {
  if (!loaded_) return;
  Form_Unload();
  if (CloseWindow) CloseWindow();
}

void EventModel::Form_Unload() {
  step(s_.journal(), kUnload, [&] { dtaEvent.Unload(); });
  loaded_ = false;
}

void EventModel::dtaEvent_Validate(int& action, bool& save) {
  step(s_.journal(), kDta, [&] {
    // closing otherwise than by Close: the record in work is not saved
    if (action == data_action::Unload && !Closing) save = false;
  });
}

void EventModel::Click(Control& button) {
  if (!loaded_ || !button.Enabled()) return;
  if ((&button == &cmdInclude || &button == &cmdRemove) && !fraEvent.Enabled()) return;
  if (&button != &cmdCancel && startTimeFocused_ && TypedTime && !txtStartTime_LostFocus()) return;
  button.Press();
}

EventModel::Mode EventModel::CurrentMode() const {
  if (lblAddEvent.Visible()) return Mode::Add;
  if (lblEditEvent.Visible()) return Mode::Edit;
  return Mode::View;
}

bool EventModel::UncommittedChanges() const {
  const Mode m = CurrentMode();
  return loaded_ && (m == Mode::Add || (m == Mode::Edit && DataChanged()));
}

void EventModel::Accept() {
  Click(cmdSave);  // a start time being typed counts as left
  if (loaded_ && CurrentMode() == Mode::View) cmdClose.Press();
}

void EventModel::Drop() {
  cmdCancel.Press();
  if (loaded_) cmdClose.Press();
}

void EventModel::Focus(const std::string& control) {
  if (SetFocus) SetFocus(control);
}

// ---------------------------------------------------------------- modes

void EventModel::SetMode(Mode m) {
  lblViewEvent.SetVisible(m == Mode::View);
  lblAddEvent.SetVisible(m == Mode::Add);
  lblEditEvent.SetVisible(m == Mode::Edit);
}

void EventModel::Begin_Add_Edit_Mode() {
  step(s_.journal(), kAddEditMode, [&] {
    fraEvent.SetEnabled(true);
    for (Control* c : {&cmdAdd, &cmdEdit, &cmdDelete}) c->SetEnabled(false);
    for (Control& c : cmdMove) c.SetEnabled(false);
    cmdSave.SetEnabled(true);
    cmdCancel.SetEnabled(true);
    if (CanFocus) Focus(txtStartTime.Name());
  });
}

void EventModel::Begin_View_Mode() {
  step(s_.journal(), kViewMode, [&] {
    SetMode(Mode::View);
    fraEvent.SetEnabled(false);
    cmdAdd.SetEnabled(s_.state.EventCount < kMaxEvents);
    cmdEdit.SetEnabled(true);
    cmdDelete.SetEnabled(true);
    for (Control& c : cmdMove) c.SetEnabled(true);
    cmdSave.SetEnabled(false);
    cmdCancel.SetEnabled(false);
    if (CanFocus && cmdAdd.Enabled()) Focus(cmdAdd.Name());
  });
}

// ---------------------------------------------------------------- the record

void EventModel::Default_Event() {
  const ProcessState& st = s_.state;
  step(s_.journal(), kDefault, [&] {
    Recordset& rs = dtaEvent.Recordset();
    rs["Schedule"] = Value(static_cast<int>(st.ScheduleNumber));
    const bool fresh = st.CurStartTime.empty();
    rs["StartTime"] = Value(fresh ? std::string("00:00") : st.CurStartTime);
    rs["Tone"] = Value(fresh ? 1 : static_cast<int>(st.CurTone));
    rs["Duration"] = Value(fresh ? 1 : static_cast<int>(st.CurDuration));
    for (int g = 0; g < kPageGroups; ++g)
      rs.Fields(kFirstPageGroupField + g) = Value(!fresh && st.CurPageGroups[static_cast<std::size_t>(g)]);
    dtaEvent.UpdateControls();
  });
}

void EventModel::ReadCurrent() {
  ProcessState& st = s_.state;
  Recordset& rs = dtaEvent.Recordset();
  st.CurStartTime = TextOf(rs["StartTime"].GetValue());
  st.CurTone = SmallNumber(rs["Tone"].GetValue());
  st.CurDuration = SmallNumber(rs["Duration"].GetValue());
  st.CurPageGroups = RecordPageGroups(rs);
}

bool EventModel::DataChanged() const {
  bool changed = false;
  step(s_.journal(), kDataChanged, [&] {
    changed = txtStartTime.DataChanged || lblTone.DataChanged || txtDuration.DataChanged ||
              std::any_of(chkPageGroup.begin(), chkPageGroup.end(), [](const Control& c) { return c.DataChanged; });
  });
  return changed;
}

bool EventModel::Duplicate_Time() {
  bool duplicate = false;
  step(s_.journal(), kDuplicate, [&] {
    if (!txtStartTime.DataChanged && !lblAddEvent.Visible()) return;
    Recordset& rs = dtaEvent.Recordset();
    // the event in work is no duplicate of itself
    std::optional<Recordset::Bookmark> self;
    if (rs.GetEditMode() == EditMode::InProgress) self = rs.GetBookmark();
    Recordset clone = rs.Clone();
    const Predicate same = StartTimeIs(txtStartTime.Text());
    clone.FindFirst(same);
    while (!clone.NoMatch() && self && clone.GetBookmark() == *self) clone.FindNext(same);
    duplicate = !clone.NoMatch();
  });
  return duplicate;
}

bool EventModel::Is_PageGroup_Selected() const {
  bool any = false;
  step(s_.journal(), kGroupSelected, [&] {
    any = std::any_of(chkPageGroup.begin(), chkPageGroup.end(), [](const Control& c) { return c.Value() == 1; });
  });
  return any;
}

void EventModel::Validate_Event() {
  EventValid = false;
  step(s_.journal(), kValidate, [&] {
    const bool badTime = !ParseStartTime(txtStartTime.Text());
    if (badTime) Focus(txtStartTime.Name());
    const bool duplicate = Duplicate_Time();
    if (duplicate) Focus(txtStartTime.Name());
    const bool noGroup = !Is_PageGroup_Selected();
    const bool badDuration = BadDuration;
    EventValid = !(badTime || duplicate || noGroup || badDuration);
    if (!EventValid)
      s_.prompter().Message(CannotSaveText(badTime, duplicate, badDuration, noGroup), Buttons::Ok, Icon::Exclamation,
                            "Event");
  });
}

void EventModel::Prompt_Save(const std::string& title) {
  Answer a = Answer::No;
  step(s_.journal(), kPromptSave,
       [&] { a = s_.prompter().Message("Save current Event?", Buttons::YesNo, Icon::Exclamation, title); });
  if (a == Answer::Yes) cmdSave.Press();
  else cmdCancel.Press();
}

void EventModel::RefreshFrmSched() {
  const ProcessState& st = s_.state;
  step(s_.journal(), kRefreshSched, [&] {
    ListControl& list = sched_.lstEvent;
    list.Clear();
    Recordset& rs = dtaEvent.Recordset();
    const Recordset::Bookmark here = rs.GetBookmark();
    if (rs.RecordCount() > 0) {
      for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) {
        list.AddItem(EventLine(rs));
        if (TextOf(rs["StartTime"].GetValue()) == st.CurStartTime) EventPos = list.NewIndex();
      }
    }
    rs.SetBookmark(here);
    ReadCurrent();
    list.SetListIndex(EventPos);
  });
}

// ---------------------------------------------------------------- commands

void EventModel::cmdAdd_Click() {
  step(s_.journal(), kAdd, [&] {
    TypedTime = false;
    s_.state.CurStartTime = txtStartTime.Text();
    dtaEvent.AddNew();
    Default_Event();
    lblAddEvent.SetVisible(true);
    lblViewEvent.SetVisible(false);
    lblEditEvent.SetVisible(false);
    Begin_Add_Edit_Mode();
  });
}

void EventModel::cmdEdit_Click() {
  step(s_.journal(), kEdit, [&] {
    lblEditEvent.SetVisible(true);
    lblViewEvent.SetVisible(false);
    lblAddEvent.SetVisible(false);
    Begin_Add_Edit_Mode();
    dtaEvent.Edit();
  });
}

void EventModel::cmdSave_Click() {
  ProcessState& st = s_.state;
  Journal& j = s_.journal();
  step(j, kSave, [&] {
    Validate_Event();
    txtHideScreen.SetVisible(true);
  });
  if (EventValid) {
    const bool adding = lblAddEvent.Visible();
    const bool moves = adding || txtStartTime.DataChanged;
    st.CurStartTime = txtStartTime.Text();
    // a record that could not be written leaves the window as it is
    if (step(j, kSave, [&] { dtaEvent.Update(); })) {
      TypedTime = false;
      if (moves) {
        // the rows are in time order: the record has a new place
        step(j, kSave, [&] {
          dtaEvent.Refresh();
          dtaEvent.MoveLast();
          dtaEvent.FindFirst(StartTimeIs(st.CurStartTime));
        });
      }
      RefreshFrmSched();
      if (adding) step(j, kSave, [&] {
          ++st.EventsInSchedule.at(static_cast<std::size_t>(st.ScheduleNumber - 1));
          ++st.EventCount;
        });
      Begin_View_Mode();
      st.DatabaseDirty = 1;
      s_.menu.SetEnabled("mnuFileSave", true);
    }
  }
  txtHideScreen.SetVisible(false);
}

void EventModel::cmdCancel_Click() {
  step(s_.journal(), kCancel, [&] {
    TypedTime = false;
    dtaEvent.CancelUpdate();
  });
  Begin_View_Mode();
  step(s_.journal(), kCancel, [&] {
    // nothing left to view
    if (s_.state.EventsInSchedule.at(static_cast<std::size_t>(s_.state.ScheduleNumber - 1)) == 0) UnloadWindow();
  });
}

void EventModel::cmdDelete_Click() {
  ProcessState& st = s_.state;
  Journal& j = s_.journal();
  step(j, kDelete, [&] {
    --st.EventsInSchedule.at(static_cast<std::size_t>(st.ScheduleNumber - 1));
    --st.EventCount;
    cmdAdd.SetEnabled(true);
    st.DatabaseDirty = 1;
    s_.menu.SetEnabled("mnuFileSave", true);
  });
  int64_t at = -1;
  if (!step(j, kDelete, [&] {
        at = dtaEvent.Recordset().AbsolutePosition();
        dtaEvent.Delete();
      }))
    return;
  step(j, kDelete, [&] { sched_.lstEvent.RemoveItem(EventPos); });
  step(j, kDelete, [&] {
    Recordset& rs = dtaEvent.Recordset();
    if (rs.RecordCount() < 1) {
      UnloadWindow();
      return;
    }
    TypedTime = false;
    if (at + 1 <= rs.RecordCount()) {
      dtaEvent.MoveNext();
    } else {
      dtaEvent.MovePrevious();
      --EventPos;
    }
    ReadCurrent();
  });
}

void EventModel::cmdMove_Click(int index) {
  step(s_.journal(), kMove, [&] {
    Recordset& rs = dtaEvent.Recordset();
    const int inSchedule = s_.state.EventsInSchedule.at(static_cast<std::size_t>(s_.state.ScheduleNumber - 1));
    TypedTime = false;
    if (rs.RecordCount() > 0) {
      switch (index) {
        case 0:
          dtaEvent.MoveFirst();
          EventPos = 0;
          break;
        case 1:
          if (rs.AbsolutePosition() > 0) {
            dtaEvent.MovePrevious();
            --EventPos;
          }
          break;
        case 2:
          if (rs.AbsolutePosition() < inSchedule - 1) {
            dtaEvent.MoveNext();
            ++EventPos;
          }
          break;
        case 3:
          dtaEvent.MoveLast();
          EventPos = inSchedule - 1;
          break;
        default:
          break;
      }
      ReadCurrent();
    }
  });
  step(s_.journal(), kMove, [&] {
    sched_.lstEvent.SetListIndex(EventPos);
    TypedTime = false;
  });
}

void EventModel::cmdClose_Click() {
  step(s_.journal(), kClose, [&] {
    if (lblEditEvent.Visible()) {
      if (DataChanged()) Prompt_Save("Edit Event");
      else Begin_View_Mode();
    } else if (lblAddEvent.Visible()) {
      Prompt_Save("Add Event");  // whether anything changed or not
    }
    // the save succeeded, was declined, or nothing was open
    if (loaded_ && lblViewEvent.Visible()) {
      s_.state.CurStartTime = txtStartTime.Text();
      Closing = true;
      UnloadWindow();
    }
  });
}

void EventModel::cmdInclude_Click() {
  step(s_.journal(), kInclude, [&] {
    for (Control& c : chkPageGroup)
      if (c.Enabled()) c.SetValue(1);
  });
}

void EventModel::cmdRemove_Click() {
  step(s_.journal(), kRemove, [&] {
    for (Control& c : chkPageGroup) c.SetValue(0);
  });
}

// ---------------------------------------------------------------- the fields

void EventModel::SetBars(int hourBar, int minuteBar) {
  struct Release {
    bool& guard;
    ~Release() { guard = false; }
  } release{SpinGuard};
  SpinGuard = true;
  vsbStartTime[0].SetValue(hourBar);
  vsbStartTime[1].SetValue(minuteBar);
}

void EventModel::txtStartTime_KeyPress(int& keyAscii) {
  step(s_.journal(), kStartKeyPress, [&] {
    TypedTime = true;
    StartTimeKey(keyAscii);
  });
}

void EventModel::txtStartTime_Change() {
  step(s_.journal(), kTxtStartTime, [&] {
    const std::string& text = txtStartTime.Text();
    if (TypedTime || text.empty()) return;
    // a record arrived in the field, or a bar wrote it
    if (const auto t = ParseStartTime(text)) {
      SetBars(-t->hour, -t->minute);
    } else if (text != "00:") {
      s_.Message("Start Time format must be hh:mm", Buttons::Ok, Icon::Exclamation);
    }
  });
}

bool EventModel::txtStartTime_LostFocus() {
  bool valid = true;
  step(s_.journal(), kStartLostFocus, [&] {
    if (!TypedTime) return;
    const StartTimeRewrite r = RewriteStartTime(txtStartTime.Text());
    txtStartTime.SetText(r.text);
    if (r.time) {
      SetBars(-r.time->hour, -r.time->minute);
      return;
    }
    valid = false;
    s_.prompter().Message("Invalid 'Start Time' entry", Buttons::Ok, Icon::Exclamation,
                          lblAddEvent.Visible() ? "Add Event" : "Edit Event");
    Focus(txtStartTime.Name());
  });
  return valid;
}

void EventModel::vsbStartTime_Change(int index) {
  step(s_.journal(), kVsbStartTime, [&] {
    if (SpinGuard) return;
    if (index == 1) {
      const TimeBars b = MinuteBarMoved(vsbStartTime[0].Value(), vsbStartTime[1].Value());
      SetBars(b.hour, b.minute);
    }
    txtStartTime.SetText(TimeOfBars({vsbStartTime[0].Value(), vsbStartTime[1].Value()}));
    Focus(txtStartTime.Name());
  });
}

void EventModel::txtDuration_Change() {
  step(s_.journal(), kTxtDuration, [&] {
    const DurationChange c = DurationTextChanged(txtDuration.Text());
    if (c.bad) BadDuration = *c.bad;
    if (c.bar) vsbDuration.SetValue(*c.bar);
  });
}

void EventModel::vsbDuration_Change() {
  step(s_.journal(), kVsbDuration, [&] {
    const std::string text = DurationOfBar(vsbDuration.Value());
    if (text == txtDuration.Text()) return;
    BadDuration = false;
    txtDuration.SetText(text);
    Focus(txtDuration.Name());
  });
}

void EventModel::optTone_Click() {
  step(s_.journal(), kOptTone, [&] { lblTone.SetText(std::to_string(optTone.Value())); });
}

void EventModel::lblTone_Change() {
  step(s_.journal(), kLblTone, [&] {
    const std::string& text = lblTone.Text();
    const int relay = static_cast<int>(Val(text));
    if (!text.empty() && relay >= 1 && relay <= 4) optTone.SetValue(relay);
  });
}

}  // namespace r6183
