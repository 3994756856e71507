// The programming written as YAML.
#include <yaml-cpp/yaml.h>

#include <algorithm>

#include "options/ClockRules.h"
#include "shell/Text.h"
#include "shell/Utility.h"
#include "textform/TextForm.h"
#include "textform/Words.h"

namespace r6183 {

namespace {

constexpr const char* kDayShort[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

// True when `stored` is `shown` filled with blanks to `width`, and the blanks are there.
bool Filled(const std::string& stored, int width) {
  return stored == PadRight(TrimRight(stored), static_cast<uint8_t>(width));
}

void Groups(YAML::Emitter& out, const GroupSet& groups, int last) {
  out << YAML::Flow << YAML::BeginSeq;
  for (int g = 1; g <= last; ++g)
    if (groups[static_cast<std::size_t>(g - 1)]) out << g;
  out << YAML::EndSeq;
}

// Groups set beyond `last`, as "13,14", or empty.
std::string Beyond(const GroupSet& groups, int last) {
  std::string out;
  for (int g = last + 1; g <= kPageGroups; ++g)
    if (groups[static_cast<std::size_t>(g - 1)]) out += (out.empty() ? "" : ",") + std::to_string(g);
  return out;
}

// A stored index by its caption, or by its stored text where it has none.
void Captioned(YAML::Emitter& out, const std::string& stored, const char* const* captions, int count) {
  if (const auto caption = CaptionOf(stored, captions, count)) out << *caption;
  else out << YAML::Flow << YAML::BeginMap << YAML::Key << "stored" << YAML::Value << YAML::DoubleQuoted << stored << YAML::EndMap;
}

void Clock(YAML::Emitter& out, const std::string& stored, const std::vector<ClockType>& catalogue) {
  const auto name = ClockName(catalogue, stored);
  if (name && ClockPositionOf(catalogue, *name) == stored) {
    out << *name;
    return;
  }
  out << YAML::Flow << YAML::BeginMap;
  if (name) out << YAML::Key << "type" << YAML::Value << *name;
  out << YAML::Key << "stored" << YAML::Value << YAML::DoubleQuoted << stored << YAML::EndMap;
}

void Section(YAML::Emitter& out, const char* comment, const char* key) {
  out << YAML::Newline << YAML::Comment(comment) << YAML::Key << key << YAML::Value;
}

}  // namespace

std::string ProgrammingText(const Programming& p, const std::vector<ClockType>& catalogue,
                            std::vector<std::string>& leftOut) {
  const int lastStation = LastValidStation(std::min(p.systemConfig, kBoards - 1));
  const int lastGroup = LastValidGroup(p.systemConfig);
  YAML::Emitter out;
  out.SetIndent(2);
  out << YAML::Comment("R-6183 programming. r6183ctl import turns it into a document.");
  out << YAML::BeginMap;
  Section(out, "Boards: 1 (Main Board) to 4 (Main Board + Expansion 1, 2, 3)", "boards");
  out << p.systemConfig + 1;

  Section(out, "Stations: Architectural Number and CLID description", "stations");
  out << YAML::BeginSeq;
  for (int n = 1; n <= kStations; ++n) {
    const StationTexts& st = p.stations[static_cast<std::size_t>(n - 1)];
    if (n > lastStation) {
      if (!st.archnum.empty() || !st.clid.empty()) leftOut.push_back("station " + std::to_string(n));
      continue;
    }
    const bool filled = Filled(st.archnum, kArchWidth) && Filled(st.clid, kClidWidth) &&
                        (st.archnum != TrimRight(st.archnum) || st.clid != TrimRight(st.clid));
    const std::string arch = filled ? TrimRight(st.archnum) : st.archnum;
    const std::string clid = filled ? TrimRight(st.clid) : st.clid;
    out << YAML::Flow << YAML::BeginMap << YAML::Key << "station" << YAML::Value << n;
    if (!arch.empty()) out << YAML::Key << "arch" << YAML::Value << YAML::DoubleQuoted << arch;
    if (!clid.empty()) out << YAML::Key << "clid" << YAML::Value << clid;
    if (filled) out << YAML::Key << "filled" << YAML::Value << YAML::YesNoBool << true;
    out << YAML::EndMap;
  }
  out << YAML::EndSeq;

  Section(out, "Custom page groups by dial code: the page groups they take in", "custom_groups");
  out << YAML::BeginMap;
  for (int row = 0; row < 4; ++row) {
    const GroupSet& g = p.customGroups[static_cast<std::size_t>(row)];
    out << YAML::Key << 50 + row << YAML::Value;
    Groups(out, g, lastGroup);
    if (const auto beyond = Beyond(g, lastGroup); !beyond.empty())
      leftOut.push_back("page groups " + beyond + " of custom group " + std::to_string(50 + row));
  }
  out << YAML::EndMap;

  Section(out, "Schedules 1 to 6: active days and events (start time, relay, seconds, page groups)", "schedules");
  out << YAML::BeginMap;
  for (int s = 1; s <= kSchedules; ++s) {
    out << YAML::Key << s << YAML::Value << YAML::BeginMap << YAML::Key << "days" << YAML::Value << YAML::Flow
        << YAML::BeginSeq;
    for (int d = 0; d < 7; ++d)
      if (p.days[static_cast<std::size_t>(s - 1)][static_cast<std::size_t>(d)]) out << kDayShort[d];
    const bool none = std::none_of(p.events.begin(), p.events.end(), [s](const auto& e) { return e.schedule == s; });
    out << YAML::EndSeq << YAML::Key << "events" << YAML::Value;
    if (none) out << YAML::Flow;
    out << YAML::BeginSeq;
    for (const ProgrammedEvent& e : p.events) {
      if (e.schedule != s) continue;
      out << YAML::Flow << YAML::BeginMap << YAML::Key << "time" << YAML::Value << YAML::DoubleQuoted << e.startTime
          << YAML::Key << "relay" << YAML::Value << e.relay << YAML::Key << "duration" << YAML::Value << e.duration
          << YAML::Key << "groups" << YAML::Value;
      Groups(out, e.groups, lastGroup);
      out << YAML::EndMap;
      if (const auto beyond = Beyond(e.groups, lastGroup); !beyond.empty())
        leftOut.push_back("page groups " + beyond + " of the event at " + e.startTime + " in schedule " +
                          std::to_string(s));
    }
    out << YAML::EndSeq << YAML::EndMap;
  }
  out << YAML::EndMap;

  Section(out, "Audio: the page groups of background music, time tones and emergency tones", "audio");
  out << YAML::BeginMap;
  constexpr const char* kSources[kAudioTables] = {"bgm", "time", "emergency"};
  for (int a = 0; a < kAudioTables; ++a) {
    out << YAML::Key << kSources[a] << YAML::Value;
    Groups(out, p.audio[static_cast<std::size_t>(a)], lastGroup);
    if (const auto beyond = Beyond(p.audio[static_cast<std::size_t>(a)], lastGroup); !beyond.empty())
      leftOut.push_back("page groups " + beyond + " of " + kSources[a]);
  }
  out << YAML::EndMap;

  Section(out, "Class of service by service group (group n: stations 6n-5 to 6n); the groups of absent boards are "
               "kept but never sent",
          "service");
  out << YAML::BeginMap;
  for (int g = 1; g <= kServiceGroups; ++g) {
    const int level = p.service[static_cast<std::size_t>(g - 1)];
    out << YAML::Key << g << YAML::Value;
    if (const auto name = ServiceLevelName(level)) out << *name;
    else out << level;
  }
  out << YAML::EndMap;

  Section(out, "Option switches by their row on the chart", "options");
  out << YAML::BeginMap;
  for (int f = 0; f < kDipFields; ++f) {
    const int v = p.dip[static_cast<std::size_t>(f)];
    out << YAML::Key << OptionName(f) << YAML::Value;
    if (f == kRingPatternField && RingPatternName(v)) out << *RingPatternName(v);
    else if (f != kRingPatternField && (v == 0 || v == 1)) out << YAML::OnOffBool << (v == 1);
    else out << v;
  }
  out << YAML::EndMap;

  Section(out, "Clocks: clock types by their name in the catalogue", "clocks");
  out << YAML::BeginMap << YAML::Key << "installed" << YAML::Value << YAML::YesNoBool << p.clockEnabled;
  out << YAML::Key << "a" << YAML::Value;
  Clock(out, p.clockA, catalogue);
  out << YAML::Key << "b" << YAML::Value;
  Clock(out, p.clockB, catalogue);
  out << YAML::Key << "direction" << YAML::Value;
  Captioned(out, p.direction, kDirectionCaptions, kDirections);
  out << YAML::Key << "bcd" << YAML::Value;
  Captioned(out, p.bcdType, kBcdTypeCaptions, kBcdTypes);
  out << YAML::EndMap;

  out << YAML::EndMap;
  return std::string(out.c_str()) + "\n";
}

}  // namespace r6183
