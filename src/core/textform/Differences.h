#pragma once
// What differs between two programmings, in the operator's words: "Station 5: Arch 200 ->
// 201", "Schedule 2: event 08:15 removed", "Option Queue Tone: off -> on".
//
// Only what the unit holds counts: the blanks that fill a station's texts, the two-digit
// form of a clock's position, and whatever lies beyond a programming's boards (which no
// Send carries and no Receive brings back) make no difference.
#include <string>
#include <vector>

#include "options/ClockRules.h"
#include "textform/Programming.h"

namespace r6183 {

// A line per difference, in the order of the text form; empty when the two are equal.
std::vector<std::string> Differences(const Programming& a, const Programming& b, const std::vector<ClockType>& catalogue);

}  // namespace r6183
