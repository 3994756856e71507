#include "textform/Words.h"

#include "editors/ClassServiceModel.h"
#include "editors/ScheduleScript.h"
#include "options/DipRules.h"
#include "shell/Text.h"

namespace r6183 {

namespace {
// Fields 0 to 12 are switches 1 to 13, field 13 (the ring pattern) switches 14 and 15,
// field 14 switch 16.
int SwitchOf(int field) { return field <= 12 ? field + 1 : field == 13 ? 14 : 16; }
}  // namespace

std::string OptionName(int field) { return Trim(SwitchLabel(SwitchOf(field))); }

std::optional<int> OptionField(const std::string& name) {
  for (int f = 0; f < kDipFields; ++f)
    if (OptionName(f) == name) return f;
  return std::nullopt;
}

std::optional<std::string> RingPatternName(int pattern) {
  const std::string caption = Trim(RingPatternCaption(pattern));
  return caption.empty() ? std::nullopt : std::optional(caption);
}

std::optional<int> RingPatternOf(const std::string& name) {
  for (const int p : kRingPatternScreenOrder)
    if (RingPatternName(p) == name) return p;
  return std::nullopt;
}

std::optional<std::string> ServiceLevelName(int level) {
  if (level < 0 || level > 2) return std::nullopt;
  return ClassServiceModel::kLevels[level];
}

std::optional<int> ServiceLevelOf(const std::string& name) {
  for (int l = 0; l < 3; ++l)
    if (name == ClassServiceModel::kLevels[l]) return l;
  return std::nullopt;
}

std::string GroupList(const GroupSet& groups) {
  std::string out;
  for (int g = 1; g <= kPageGroups; ++g)
    if (groups[static_cast<std::size_t>(g - 1)]) out += (out.empty() ? "" : ",") + std::to_string(g);
  return out.empty() ? "none" : out;
}

std::string DayList(const std::array<bool, 7>& days) {
  const std::string text = DaysText(days);
  return text.empty() ? "none" : text;
}

std::optional<std::string> CaptionOf(const std::string& stored, const char* const* captions, int count) {
  for (int i = 0; i < count; ++i)
    if (stored == std::to_string(i)) return captions[i];
  return std::nullopt;
}

std::optional<std::string> ClockName(const std::vector<ClockType>& catalogue, const std::string& stored) {
  if (stored.empty() || stored.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
  const auto type = ClockAt(catalogue, stored);
  return type ? std::optional(type->name) : std::nullopt;
}

}  // namespace r6183
