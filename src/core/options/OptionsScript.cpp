#include "options/OptionsScript.h"

#include <sstream>

#include "options/ClockModel.h"
#include "options/ClockRules.h"
#include "options/DipModel.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

// The check box of the options window bound to a field, or null.
Control* CheckBoxOf(DipModel& dip, const std::string& field) {
  static const char* kStations[] = {"LowStn21", "LowStn22", "LowStn23", "LowStn24"};
  for (int i = 0; i < 4; ++i)
    if (field == kStations[i]) return &dip.chkLowStation[static_cast<std::size_t>(i)];
  const std::pair<const char*, Control DipModel::*> boxes[] = {
      {"QueueTone", &DipModel::chkQueueTone},         {"DialTone", &DipModel::chkDialTone},
      {"HfAlertTone", &DipModel::chkHfAlertTone},     {"PageAlertTone", &DipModel::chkPageAlertTone},
      {"RingbackTone", &DipModel::chkRingbackTone},   {"PrivacyTone", &DipModel::chkPrivacyTone},
      {"PriorityOverride", &DipModel::chkOverride},
  };
  for (const auto& [name, member] : boxes)
    if (field == name) return &(dip.*member);
  return nullptr;
}

// The option group of a field shown through one, or null.
Control* GroupOf(DipModel& dip, const std::string& field) {
  if (field == "RingPattern") return &dip.optRingPattern;
  if (field == "PriorityGlobal") return &dip.optPriority;
  if (field == "ExtToneSource") return &dip.optToneSource;
  return nullptr;
}

constexpr const char* kFieldList =
    "LowStn21, LowStn22, LowStn23, LowStn24, QueueTone, DialTone, HfAlertTone, PageAlertTone, RingbackTone, "
    "PrivacyTone, PriorityGlobal, PriorityOverride, RingPattern, ExtToneSource";

}  // namespace

std::vector<std::string> SwitchLines(Session& s) {
  DipModel dip(s);
  dip.Form_Load();
  const auto on = SwitchPositions(dip.Values());
  dip.cmdCancel.Press();
  std::vector<std::string> out;
  for (int n = 1; n <= kSwitches; ++n) {
    const auto& at = on[static_cast<std::size_t>(n - 1)];
    out.push_back(std::to_string(n) + "\t" + SwitchLabel(n) + "\t" + (at ? (*at ? "ON" : "OFF") : ""));
  }
  return out;
}

bool ScriptSetOptions(Session& s, const std::string& assignments, std::string& refusal) {
  DipModel dip(s);
  // checked as a whole first: a refusal changes nothing
  std::vector<std::pair<std::string, int>> wanted;
  std::istringstream list(assignments);
  for (std::string item; std::getline(list, item, ',');) {
    const auto eq = item.find('=');
    const std::string field = Trim(item.substr(0, eq));
    const std::string value = eq == std::string::npos ? "" : Trim(item.substr(eq + 1));
    if (!CheckBoxOf(dip, field) && !GroupOf(dip, field)) {
      refusal = "unknown option \"" + field + "\"; the options are " + kFieldList;
      return false;
    }
    const int max = field == "RingPattern" ? 2 : 1;
    if (value.size() != 1 || value[0] < '0' || value[0] > '0' + max) {
      refusal = field + " wants 0 to " + std::to_string(max) + ", got \"" + value + "\"";
      return false;
    }
    wanted.emplace_back(field, value[0] - '0');
  }
  if (wanted.empty()) {
    refusal = "no option to set; the options are " + std::string(kFieldList);
    return false;
  }
  dip.Form_Load();
  for (const auto& [field, v] : wanted) {
    if (Control* box = CheckBoxOf(dip, field)) box->SetValue(v);
    else GroupOf(dip, field)->SetValue(v + 1);
  }
  dip.cmdOk.Press();
  return true;
}

std::vector<std::string> ClockLines(Session& s) {
  ClockModel clock(s);
  clock.Form_Load();
  std::vector<std::string> out;
  auto line = [&out](const char* which, const ListControl& list, const Control& corrected) {
    out.push_back(std::string(which) + "\t" + list.Selected() + "\tCorrected: " + corrected.Text());
  };
  line("Clock A", clock.cbClockA, clock.lblCorrection);
  line("Clock B", clock.cbClockB, clock.lblCorrectionB);
  const int dir = clock.optDirection.Value() - 1;
  const int bcd = clock.optBCDType.Value() - 1;
  out.push_back(std::string("Direction\t") + (dir >= 0 && dir < kDirections ? kDirectionCaptions[dir] : ""));
  out.push_back(std::string("BCD Type\t") + (bcd >= 0 && bcd < kBcdTypes ? kBcdTypeCaptions[bcd] : ""));
  clock.cmdCancel.Press();
  return out;
}

bool ScriptSetClocks(Session& s, const ClockRequest& request, std::string& refusal) {
  const auto catalogue = LoadClockCatalogue(s.state.WorkDbPath);
  auto lineOf = [&](const std::optional<std::string>& name, int& line) {
    if (!name) return true;
    const auto pos = ClockPositionOf(catalogue, *name);
    if (!pos) {
      refusal = "unknown clock type \"" + *name + "\"; the types are:";
      for (const ClockType& t : catalogue) refusal += "\n  " + t.name;
      if (catalogue.empty()) refusal += " none";
      return false;
    }
    line = ClockListIndex(*pos);
    return true;
  };
  int lineA = -1, lineB = -1;
  if (!lineOf(request.a, lineA) || !lineOf(request.b, lineB)) return false;
  int direction = -1;
  if (request.direction) {
    const std::string d = ToLower(*request.direction);
    direction = d == "input" ? 0 : d == "output" ? 1 : -1;
    if (direction < 0) {
      refusal = "--direction wants input or output, got \"" + *request.direction + "\"";
      return false;
    }
  }
  if (request.bcd && (*request.bcd < 0 || *request.bcd >= kBcdTypes)) {
    refusal = "--bcd wants 0 to 3 (12 Hour, 24  Hour, 12 Hour Enhanced, 24 Hour Enhanced), got " +
              std::to_string(*request.bcd);
    return false;
  }
  ClockModel clock(s);
  clock.Form_Load();
  if (request.a) {
    clock.cbClockA_DropDown();
    clock.PickClockA(lineA);
  }
  if (request.b) {
    clock.cbClockB_DropDown();
    clock.PickClockB(lineB);
  }
  if (direction >= 0) clock.optDirection.SetValue(direction + 1);
  if (request.bcd) clock.optBCDType.SetValue(*request.bcd + 1);
  clock.cmdOk.Press();
  return true;
}

}  // namespace r6183
