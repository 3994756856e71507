#pragma once
// The words the text form and the comparison name things by, taken from the windows
// that show them: the option switches by their row on the chart, the ring patterns and
// the classes of service by their captions, the audio sources as r6183ctl names them.
#include <optional>
#include <string>
#include <vector>

#include "options/ClockRules.h"
#include "textform/Programming.h"

namespace r6183 {

// The option of DipSwitch field `field` (0 to 14) by the chart's row: "Queue Tone".
std::string OptionName(int field);
// The field of an option name; nothing for a name that is none.
std::optional<int> OptionField(const std::string& name);
// " American" and the others without their blank; nothing for a number out of range.
std::optional<std::string> RingPatternName(int pattern);
std::optional<int> RingPatternOf(const std::string& name);
// "Normal Only", "Normal / Emergency", "Emergency Only!".
std::optional<std::string> ServiceLevelName(int level);
std::optional<int> ServiceLevelOf(const std::string& name);

// "1,2,5", or "none".
std::string GroupList(const GroupSet& groups);
// The days as "Mon,Tue", or "none".
std::string DayList(const std::array<bool, 7>& days);

// The caption of a stored index ("0" is the first), nothing for a text that is not one
// of them written plainly.
std::optional<std::string> CaptionOf(const std::string& stored, const char* const* captions, int count);

// The catalogue name of a clock stored as a position ("03" or "3"); nothing outside it.
std::optional<std::string> ClockName(const std::vector<ClockType>& catalogue, const std::string& stored);

}  // namespace r6183
