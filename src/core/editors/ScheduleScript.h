#pragma once
// The schedule and event windows driven by a script (r6183ctl) on the work copy: the same
// rules and the same refusals as for an operator. What a window tells in a message box
// goes to the session's prompter; what it tells by greying a control comes back as text.
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace r6183 {

class Session;

struct EventRequest {
  int schedule = 1;
  std::string time;  // as typed into the start time
  // Left out, they keep what Add gives the new event: a copy of the schedule's first event,
  // or relay 1 for 1 second in no page group when the schedule is empty.
  std::optional<int> relay;                // 1 to 4
  std::optional<std::string> duration;     // as typed, seconds
  std::optional<std::vector<int>> groups;  // the page groups ticked, all others cleared
};

// The lines of a schedule, as its window lists them.
std::vector<std::string> ScheduleLines(Session& s, int schedule);
// The active days of a schedule, Sunday first.
std::array<bool, 7> ScheduleDays(Session& s, int schedule);

// Add in the schedule window, then the event window: the time typed and left, the relay,
// the duration typed, the groups ticked, Save. True when the event was saved; the new
// line in `line`.
bool ScriptAddEvent(Session& s, const EventRequest& request, std::string& line, std::string& refusal);
// The line with this start time selected in the schedule window, then Delete.
bool ScriptDeleteEvent(Session& s, int schedule, const std::string& time, std::string& refusal);
// The day boxes of the schedule window set to `days`, then the window closed.
bool ScriptSetDays(Session& s, int schedule, const std::array<bool, 7>& days, std::string& refusal);

// "Mon,Tue" and the like (three letters or whole names, any case) as seven days, Sunday first;
// nothing for a name that is no day.
std::optional<std::array<bool, 7>> ParseDays(const std::string& list);
// The days as "Mon,Tue".
std::string DaysText(const std::array<bool, 7>& days);

}  // namespace r6183
