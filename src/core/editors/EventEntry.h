#pragma once
// The rules of an event's fields that need no window: the line the schedule window lists
// an event by, the entry of the start time (key filter, the rewrite on leaving the field,
// the two spin bars), the duration bar, and the refusal text of a save.
#include <array>
#include <optional>
#include <string>

#include "shell/Value.h"

namespace r6183 {

class Recordset;

inline constexpr int kMaxEvents = 256;  // over all six schedules
inline constexpr int kSchedules = 6;
inline constexpr int kPageGroups = 16;
inline constexpr int kFirstPageGroupField = 4;  // PageGroup1; group N is field N+3

// --- the list line

// "08:15\tRelay 2\t5 sec\t1,3,16": the time, the relay, the duration and the set page
// groups in rising order. The time is characters 1-5, the relay character 13 and the
// duration the two characters from 15.
std::string EventLine(const std::string& startTime, const Value& tone, const Value& duration,
                      const std::array<bool, kPageGroups>& groups);
// The line of the current record of an Event recordset.
std::string EventLine(Recordset& rs);
std::string LineStartTime(const std::string& line);  // characters 1-5
int LineRelay(const std::string& line);               // character 13
int LineDuration(const std::string& line);            // the two characters from 15
// The page groups of the current record (fields 4 to 19).
std::array<bool, kPageGroups> RecordPageGroups(Recordset& rs);

// --- the start time

// Key filter of the start time: backspace, digits and ":" pass, anything else becomes 0.
void StartTimeKey(int& keyAscii);

// A start time read as hour and minute: one or two digits each side of one colon,
// the hour 0 to 23 and the minute 0 to 59.
struct TimeOfDay {
  int hour = 0, minute = 0;
};
std::optional<TimeOfDay> ParseStartTime(const std::string& text);
std::string FormatTime(TimeOfDay t);  // "hh:mm"

// The field on leaving it after typing: one colon pads each side to two digits from the
// right ("7:5" is "07:05", "123:45" is "23:45"); no colon pads the whole to four ("7" is
// "00:07", "930" is "09:30"); two or more colons are invalid and leave the text.
struct StartTimeRewrite {
  std::string text;
  std::optional<TimeOfDay> time;  // nothing when the entry is invalid
};
StartTimeRewrite RewriteStartTime(const std::string& typed);

// The spin bars: the hour bar holds minus the hour (-23 to 0), the minute bar minus the
// minute with two overrun positions, 1 below minute 0 and -60 above minute 59.
inline constexpr int kHourBarMin = -23, kHourBarMax = 0;
inline constexpr int kMinuteBarMin = -60, kMinuteBarMax = 1;
struct TimeBars {
  int hour = 0, minute = 0;  // bar values
  bool operator==(const TimeBars&) const = default;
};
// The bars after the minute bar reached `minuteBar`: an overrun carries into the hour,
// except that 00:00 and 23:59 do not wrap.
TimeBars MinuteBarMoved(int hourBar, int minuteBar);
std::string TimeOfBars(TimeBars bars);  // "hh:mm"

// --- the duration

inline constexpr int kDurationBarMin = -59, kDurationBarMax = -1;
// What a change of the duration text means: a number inside 1 to 59 moves the bar and
// clears the flag, another number sets the flag, and a text that is no number (the empty
// text above all) leaves both as they are.
struct DurationChange {
  std::optional<bool> bad;
  std::optional<int> bar;
};
DurationChange DurationTextChanged(const std::string& text);
// The text the duration bar writes: the seconds without blanks.
std::string DurationOfBar(int bar);

// --- saving

// "Cannot save current event:" and the lines of the failed checks, in their order.
std::string CannotSaveText(bool badTime, bool duplicate, bool badDuration, bool noPageGroup);

}  // namespace r6183
