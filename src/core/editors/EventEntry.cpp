#include "editors/EventEntry.h"

#include <algorithm>
#include <cmath>

#include "database/Recordset.h"
#include "shell/Conversions.h"
#include "shell/Text.h"

namespace r6183 {

namespace {
bool AllDigits(const std::string& s) {
  return !s.empty() && std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string TwoDigits(int v) { return (v < 10 ? "0" : "") + std::to_string(v); }

// The rightmost n characters of n zeros and the text.
std::string ZeroPad(const std::string& s, std::size_t n) { return RightChars(std::string(n, '0') + s, n); }
}  // namespace

std::string EventLine(const std::string& startTime, const Value& tone, const Value& duration,
                      const std::array<bool, kPageGroups>& groups) {
  std::string pages;
  for (int g = 0; g < kPageGroups; ++g) {
    if (!groups[static_cast<std::size_t>(g)]) continue;
    if (!pages.empty()) pages += ',';
    pages += std::to_string(g + 1);
  }
  return startTime + "\tRelay " + TextOf(tone) + "\t" + TextOf(duration) + " sec\t" + pages;
}

std::array<bool, kPageGroups> RecordPageGroups(Recordset& rs) {
  std::array<bool, kPageGroups> groups{};
  for (int g = 0; g < kPageGroups; ++g)
    groups[static_cast<std::size_t>(g)] = IsTrue(rs.Fields(kFirstPageGroupField + g).GetValue());
  return groups;
}

std::string EventLine(Recordset& rs) {
  return EventLine(TextOf(rs["StartTime"].GetValue()), rs["Tone"].GetValue(), rs["Duration"].GetValue(),
                   RecordPageGroups(rs));
}

std::string LineStartTime(const std::string& line) { return LeftChars(line, 5); }
int LineRelay(const std::string& line) { return static_cast<int>(Val(MidChars(line, 13, 1))); }
int LineDuration(const std::string& line) { return static_cast<int>(Val(MidChars(line, 15, 2))); }

void StartTimeKey(int& keyAscii) {
  const bool passes = keyAscii == 8 || keyAscii == ':' || (keyAscii >= '0' && keyAscii <= '9');
  if (!passes) keyAscii = 0;
}

std::optional<TimeOfDay> ParseStartTime(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos || text.find(':', colon + 1) != std::string::npos) return std::nullopt;
  const std::string h = text.substr(0, colon), m = text.substr(colon + 1);
  if (!AllDigits(h) || !AllDigits(m) || h.size() > 2 || m.size() > 2) return std::nullopt;
  const TimeOfDay t{std::stoi(h), std::stoi(m)};
  if (t.hour > 23 || t.minute > 59) return std::nullopt;
  return t;
}

std::string FormatTime(TimeOfDay t) { return TwoDigits(t.hour) + ":" + TwoDigits(t.minute); }

StartTimeRewrite RewriteStartTime(const std::string& typed) {
  const auto colons = std::count(typed.begin(), typed.end(), ':');
  if (colons >= 2) return {typed, std::nullopt};
  std::string hour, minute;
  if (colons == 1) {
    const std::size_t at = typed.find(':');
    hour = ZeroPad(typed.substr(0, at), 2);
    minute = ZeroPad(typed.substr(at + 1), 2);
  } else {
    const std::string four = ZeroPad(typed, 4);
    hour = LeftChars(four, 2);
    minute = RightChars(four, 2);
  }
  const std::string text = hour + ":" + minute;
  return {text, ParseStartTime(text)};
}

TimeBars MinuteBarMoved(int hourBar, int minuteBar) {
  const int hour = -hourBar;
  if (minuteBar == kMinuteBarMax) {  // below minute 0
    if (hour == 0) return {hourBar, 0};
    return {hourBar + 1, -59};
  }
  if (minuteBar == kMinuteBarMin) {  // above minute 59
    if (hour == 23) return {hourBar, -59};
    return {hourBar - 1, 0};
  }
  return {hourBar, minuteBar};
}

std::string TimeOfBars(TimeBars bars) { return FormatTime({-bars.hour, -bars.minute}); }

DurationChange DurationTextChanged(const std::string& text) {
  if (!IsNumeric(text)) return {};
  const double seconds = Val(text);
  if (seconds >= 1 && seconds <= 59 && seconds == std::floor(seconds)) return {false, -static_cast<int>(seconds)};
  return {true, std::nullopt};
}

std::string DurationOfBar(int bar) { return std::to_string(-bar); }

std::string CannotSaveText(bool badTime, bool duplicate, bool badDuration, bool noPageGroup) {
  std::string text = "Cannot save current event:";
  if (badTime) text += "\nStart Time format must be 'hh:mm'.";
  if (duplicate) text += "\n- An event at this 'Start Time' is already scheduled.";
  if (badDuration) text += "\n- 'Tone Duration' must be between 1-59 seconds.";
  if (noPageGroup) text += "\n- Must select a 'Page Group'.";
  return text;
}

}  // namespace r6183
