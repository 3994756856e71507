#pragma once
// The options and clocks windows driven by a script (r6183ctl) on the work copy: the same
// controls and the same OK as for an operator. A request with an unknown name or a value
// out of range is refused as a whole, before the window is touched.
#include <optional>
#include <string>
#include <vector>

namespace r6183 {

class Session;

// The sixteen switches as the chart shows them: "n<TAB>label<TAB>ON", OFF, or nothing for a
// switch the chart leaves alone.
std::vector<std::string> SwitchLines(Session& s);
// "QueueTone=1,RingPattern=2": fields of the option switches with 0 or 1 (RingPattern 0
// to 2), set on the options window and accepted with OK.
bool ScriptSetOptions(Session& s, const std::string& assignments, std::string& refusal);

// Both clocks by name with their correction, the direction and the BCD type.
std::vector<std::string> ClockLines(Session& s);
struct ClockRequest {
  std::optional<std::string> a, b;     // clock type names
  std::optional<std::string> direction;  // "input" or "output"
  std::optional<int> bcd;              // 0 to 3
};
// The types chosen from their lists, the options set, then OK.
bool ScriptSetClocks(Session& s, const ClockRequest& request, std::string& refusal);

}  // namespace r6183
