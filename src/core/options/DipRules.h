#pragma once
// The rules of the option switches: how the three ring patterns are stored and shown, and
// where each option stands on the sixteen switches of the unit's main board.
#include <array>
#include <optional>
#include <string>
#include <utility>

namespace r6183 {

// Stored ring pattern numbers.
namespace ring {
inline constexpr int American = 0;
inline constexpr int Dutch = 1;
inline constexpr int British = 2;
}  // namespace ring

// The caption of the option of ring pattern `pattern` (" American", " Dutch", " British").
const char* RingPatternCaption(int pattern);
// The options from top to bottom on the window: American, British, Dutch. The stored
// number is the option's index, not its place.
inline constexpr std::array<int, 3> kRingPatternScreenOrder{ring::American, ring::British, ring::Dutch};

// The option values as the options window holds them: check boxes 0 or 1, the ring
// pattern as the text of its hidden label.
struct DipValues {
  std::array<int, 4> lowStation{};  // stations 21 to 24
  int queueTone = 0;
  int dialTone = 0;
  int hfAlertTone = 0;
  int pageAlertTone = 0;
  int ringbackTone = 0;
  int privacyTone = 0;
  int priorityGlobal = 0;
  int priorityOverride = 0;
  std::string ringPattern = "0";
  int extToneSource = 0;
};

inline constexpr int kSwitches = 16;
// The row label of switch n (1 to 16) on the chart; switch 15 shares the row of 14 and
// has none.
const char* SwitchLabel(int n);
// Switches 14 and 15 for the text of the ring pattern; nothing for a text other than
// "0", "1" or "2".
std::optional<std::pair<bool, bool>> RingPatternSwitches(const std::string& text);
// Where each switch stands, index n-1 for switch n: true ON, false OFF, nothing where the
// chart leaves the row as it is (switch 5, and 14 and 15 for an unknown pattern).
std::array<std::optional<bool>, kSwitches> SwitchPositions(const DipValues& v);

}  // namespace r6183
