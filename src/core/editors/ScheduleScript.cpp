#include "editors/ScheduleScript.h"

#include <sstream>

#include "database/Database.h"
#include "database/Recordset.h"
#include "editors/EventEntry.h"
#include "editors/EventModel.h"
#include "editors/ScheduleModel.h"
#include "editors/StationList.h"
#include "shell/Conversions.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183 {

namespace {
constexpr const char* kDayNames[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

// The operator in a text box: the focus selects all, the keys go through the box's filter.
void Type(Control& box, const std::string& text) {
  if (box.OnGotFocus) box.OnGotFocus();
  std::string shown;
  box.SetText("");
  for (const char ch : text) {
    int key = static_cast<unsigned char>(ch);
    if (!box.KeyPress(key)) continue;
    shown += static_cast<char>(key);
    box.SetText(shown);
  }
}

// A schedule window loaded and in front; closed (its days written) when it goes.
class OpenSchedule {
 public:
  OpenSchedule(Session& s, int schedule) : w_(s) {
    s.state.ScheduleNumber = static_cast<uint8_t>(schedule);
    w_.Form_Load();
    w_.Form_Activate();
  }
  ~OpenSchedule() { w_.Form_Unload(); }
  ScheduleModel* operator->() { return &w_; }
  ScheduleModel& operator*() { return w_; }

 private:
  ScheduleModel w_;
};

// The schedule that has `day` active, other than `mine`; 0 when none.
int ScheduleWithDay(Session& s, int day, int mine) {
  Database db = Database::Open(s.state.WorkDbPath, {.readOnly = true});
  Recordset rs = db.OpenRecordset("SchedDays", RecordsetType::Snapshot);
  for (; !rs.IsEOF(); rs.MoveNext())
    if (rs["Schedule"].Number() != mine && rs.Fields(day + 1).Bool()) return static_cast<int>(rs["Schedule"].Number());
  return 0;
}
}  // namespace

std::vector<std::string> ScheduleLines(Session& s, int schedule) {
  OpenSchedule w(s, schedule);
  return w->lstEvent.Items();
}

std::array<bool, 7> ScheduleDays(Session& s, int schedule) {
  OpenSchedule w(s, schedule);
  std::array<bool, 7> days{};
  for (std::size_t i = 0; i < days.size(); ++i) days[i] = w->chkDay[i].Value() == 1;
  return days;
}

bool ScriptAddEvent(Session& s, const EventRequest& r, std::string& line, std::string& refusal) {
  OpenSchedule w(s, r.schedule);
  if (!w->cmdEvent[0].Enabled()) {
    refusal = "the document holds " + std::to_string(s.state.EventCount) + " events, the most a unit takes";
    return false;
  }
  bool saved = false;
  std::string time;
  w->ShowEventWindow = [&](EventModel& ev) {
    ev.Form_Activate();
    if (r.groups) {
      // a grey box can't be ticked: the group's board is not in the system
      for (const int g : *r.groups) {
        if (g >= 1 && g <= kPageGroups && ev.chkPageGroup[static_cast<std::size_t>(g - 1)].Enabled()) continue;
        refusal = GroupNotInSystem("page group", g, s.state.SystemConfig);
        return;
      }
    }
    Type(ev.txtStartTime, r.time);
    ev.txtStartTime.OnLostFocus();
    if (!ParseStartTime(ev.txtStartTime.Text())) return;  // refused, with its message
    if (r.relay) ev.optTone.SetValue(*r.relay);
    if (r.duration) Type(ev.txtDuration, *r.duration);
    if (r.groups) {
      ev.Click(ev.cmdRemove);
      for (const int g : *r.groups) ev.chkPageGroup[static_cast<std::size_t>(g - 1)].SetValue(1);
    }
    ev.Click(ev.cmdSave);
    saved = ev.Loaded() && ev.CurrentMode() == EventModel::Mode::View;
    time = ev.txtStartTime.Text();
    if (saved) ev.Click(ev.cmdClose);
  };
  w->cmdEvent[0].Press();
  if (!saved) return false;
  for (const std::string& l : w->lstEvent.Items())
    if (LineStartTime(l) == time) line = l;
  return true;
}

bool ScriptDeleteEvent(Session& s, int schedule, const std::string& time, std::string& refusal) {
  const StartTimeRewrite t = RewriteStartTime(time);
  const std::string wanted = t.time ? t.text : time;
  OpenSchedule w(s, schedule);
  const auto& lines = w->lstEvent.Items();
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (LineStartTime(lines[i]) != wanted) continue;
    w->lstEvent.SetListIndex(static_cast<int>(i));
    w->cmdEvent[2].Press();
    return true;
  }
  refusal = "schedule " + std::to_string(schedule) + " has no event at " + wanted;
  return false;
}

bool ScriptSetDays(Session& s, int schedule, const std::array<bool, 7>& days, std::string& refusal) {
  OpenSchedule w(s, schedule);
  for (std::size_t i = 0; i < days.size(); ++i) {
    if (!days[i] || w->chkDay[i].Enabled()) continue;
    refusal = std::string(kDayNames[i]) + " is active in schedule " +
              std::to_string(ScheduleWithDay(s, static_cast<int>(i), schedule));
    return false;
  }
  for (std::size_t i = 0; i < days.size(); ++i) w->chkDay[i].SetValue(days[i] ? 1 : 0);
  return true;
}

std::optional<std::array<bool, 7>> ParseDays(const std::string& list) {
  std::array<bool, 7> days{};
  std::istringstream in(list);
  for (std::string item; std::getline(in, item, ',');) {
    item = Trim(item);
    if (item.empty()) continue;
    bool found = false;
    for (std::size_t i = 0; i < days.size(); ++i) {
      const std::string name = kDayNames[i];
      if (EqualsNoCase(item, name) || EqualsNoCase(item, name.substr(0, 3))) {
        days[i] = true;
        found = true;
      }
    }
    if (!found) return std::nullopt;
  }
  return days;
}

std::string DaysText(const std::array<bool, 7>& days) {
  std::string text;
  for (std::size_t i = 0; i < days.size(); ++i)
    if (days[i]) text += (text.empty() ? "" : ",") + std::string(kDayNames[i]).substr(0, 3);
  return text;
}

}  // namespace r6183
