#include "options/DipRules.h"

namespace r6183 {

namespace {
constexpr const char* kSwitchLabels[kSwitches] = {
    "  Low Priority Station 21", "  Low Priority Station 22", "  Low Priority Station 23",
    "  Low Priority Station 24", "  3 Digit Dial Plan",       "  Queue Tone",
    "  Dial Tone",               "  Handsfree Alert Tone",    "  Page Alert Tone",
    "  Ringback Tone",           "  Privacy Tone",            "  Priority Global",
    "  Override External ",      "  Ring Pattern",            "",
    "  Tone Source"};
}  // namespace

const char* RingPatternCaption(int pattern) {
  switch (pattern) {
    case ring::American:
      return " American";
    case ring::Dutch:
      return " Dutch";
    case ring::British:
      return " British";
    default:
      return "";
  }
}

const char* SwitchLabel(int n) { return n >= 1 && n <= kSwitches ? kSwitchLabels[n - 1] : ""; }

std::optional<std::pair<bool, bool>> RingPatternSwitches(const std::string& text) {
  if (text == "0") return std::pair{false, false};
  if (text == "1") return std::pair{false, true};
  if (text == "2") return std::pair{true, false};
  return std::nullopt;
}

std::array<std::optional<bool>, kSwitches> SwitchPositions(const DipValues& v) {
  std::array<std::optional<bool>, kSwitches> on{};
  auto set = [&on](int n, int value) { on[static_cast<std::size_t>(n - 1)] = value == 1; };
  for (int i = 0; i < 4; ++i) set(i + 1, v.lowStation[static_cast<std::size_t>(i)]);
  set(6, v.queueTone);
  set(7, v.dialTone);
  set(8, v.hfAlertTone);
  set(9, v.pageAlertTone);
  set(10, v.ringbackTone);
  set(11, v.privacyTone);
  set(12, v.priorityGlobal);
  set(13, v.priorityOverride);
  if (const auto ring = RingPatternSwitches(v.ringPattern)) {
    on[13] = ring->first;
    on[14] = ring->second;
  }
  set(16, v.extToneSource);
  return on;
}

}  // namespace r6183
