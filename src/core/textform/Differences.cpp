#include "textform/Differences.h"

#include <algorithm>
#include <map>

#include "editors/BgmModel.h"
#include "shell/Conversions.h"
#include "shell/Text.h"
#include "textform/Words.h"

namespace r6183 {

namespace {

// A programming as far as the unit holds it: what lies beyond the boards is empty.
struct Held {
  explicit Held(const Programming& p) : p(p), config(std::min(p.systemConfig, kBoards - 1)) {}
  bool HasStation(int n) const { return n <= LastValidStation(config); }
  std::string Arch(int n) const { return HasStation(n) ? Trim(p.stations[static_cast<std::size_t>(n - 1)].archnum) : ""; }
  std::string Clid(int n) const { return HasStation(n) ? TrimRight(p.stations[static_cast<std::size_t>(n - 1)].clid) : ""; }
  GroupSet Groups(const GroupSet& g) const {
    GroupSet held{};
    for (int i = 0; i < LastValidGroup(config); ++i) held[static_cast<std::size_t>(i)] = g[static_cast<std::size_t>(i)];
    return held;
  }
  int Service(int group) const {
    return group <= LastValidGroup(config) ? p.service[static_cast<std::size_t>(group - 1)] : 1;
  }
  const Programming& p;
  int config;
};

std::string OrNone(const std::string& s) { return s.empty() ? "(none)" : s; }
std::string Quoted(const std::string& s) { return s.empty() ? "(none)" : "\"" + s + "\""; }

std::string EventKey(const std::string& time) {
  const auto t = ParseStartTime(time);
  return t ? FormatTime(*t) : time;
}

std::string EventText(const ProgrammedEvent& e, const Held& h) {
  return "relay " + std::to_string(e.relay) + ", " + std::to_string(e.duration) + " sec, page groups " +
         GroupList(h.Groups(e.groups));
}

// What differs between two events at the same time, "relay 1 -> 2, 3 -> 5 sec".
std::string EventChange(const ProgrammedEvent& a, const Held& ha, const ProgrammedEvent& b, const Held& hb) {
  std::string out;
  auto add = [&out](const std::string& part) { out += (out.empty() ? "" : ", ") + part; };
  if (a.relay != b.relay) add("relay " + std::to_string(a.relay) + " -> " + std::to_string(b.relay));
  if (a.duration != b.duration) add(std::to_string(a.duration) + " -> " + std::to_string(b.duration) + " sec");
  if (ha.Groups(a.groups) != hb.Groups(b.groups))
    add("page groups " + GroupList(ha.Groups(a.groups)) + " -> " + GroupList(hb.Groups(b.groups)));
  return out;
}

std::string ClockText(const std::vector<ClockType>& catalogue, const std::string& stored) {
  if (const auto name = ClockName(catalogue, stored)) return *name;
  return "position \"" + stored + "\"";
}

std::string CaptionText(const std::string& stored, const char* const* captions, int count) {
  const std::string plain = IsNumeric(stored) ? std::to_string(static_cast<int>(Val(stored))) : stored;
  return CaptionOf(plain, captions, count).value_or("\"" + stored + "\"");
}

bool SameNumber(const std::string& a, const std::string& b) {
  return a == b || (IsNumeric(a) && IsNumeric(b) && Val(a) == Val(b));
}

std::string OptionValue(int field, int v) {
  if (field == kRingPatternField) return RingPatternName(v).value_or(std::to_string(v));
  return v == 0 ? "off" : v == 1 ? "on" : std::to_string(v);
}

}  // namespace

std::vector<std::string> Differences(const Programming& pa, const Programming& pb, const std::vector<ClockType>& catalogue) {
  const Held a(pa), b(pb);
  std::vector<std::string> out;
  if (a.config != b.config) out.push_back("Boards: " + std::to_string(a.config + 1) + " -> " + std::to_string(b.config + 1));

  const int lastStation = LastValidStation(std::max(a.config, b.config));
  for (int n = 1; n <= lastStation; ++n) {
    const std::string station = "Station " + std::to_string(n) + ": ";
    if (a.Arch(n) != b.Arch(n)) out.push_back(station + "Arch " + OrNone(a.Arch(n)) + " -> " + OrNone(b.Arch(n)));
    if (a.Clid(n) != b.Clid(n)) out.push_back(station + "Description " + Quoted(a.Clid(n)) + " -> " + Quoted(b.Clid(n)));
  }

  for (std::size_t row = 0; row < pa.customGroups.size(); ++row) {
    const GroupSet ga = a.Groups(pa.customGroups[row]), gb = b.Groups(pb.customGroups[row]);
    if (ga != gb)
      out.push_back("Custom group " + std::to_string(50 + row) + ": page groups " + GroupList(ga) + " -> " + GroupList(gb));
  }

  for (int s = 1; s <= kSchedules; ++s) {
    const std::string schedule = "Schedule " + std::to_string(s) + ": ";
    const auto& da = pa.days[static_cast<std::size_t>(s - 1)];
    const auto& db = pb.days[static_cast<std::size_t>(s - 1)];
    if (da != db) out.push_back(schedule + "days " + DayList(da) + " -> " + DayList(db));
    std::map<std::string, const ProgrammedEvent*> ea, eb;
    for (const auto& e : pa.events)
      if (e.schedule == s) ea.emplace(EventKey(e.startTime), &e);
    for (const auto& e : pb.events)
      if (e.schedule == s) eb.emplace(EventKey(e.startTime), &e);
    for (const auto& [time, e] : ea) {
      const auto other = eb.find(time);
      if (other == eb.end()) out.push_back(schedule + "event " + time + " removed");
      else if (const std::string change = EventChange(*e, a, *other->second, b); !change.empty())
        out.push_back(schedule + "event " + time + ": " + change);
    }
    for (const auto& [time, e] : eb)
      if (!ea.contains(time)) out.push_back(schedule + "event " + time + " added: " + EventText(*e, b));
  }

  for (int src = 0; src < kAudioTables; ++src) {
    const GroupSet ga = a.Groups(pa.audio[static_cast<std::size_t>(src)]), gb = b.Groups(pb.audio[static_cast<std::size_t>(src)]);
    if (ga != gb)
      out.push_back(std::string("Audio ") + BgmModel::kTabs[src] + ": page groups " + GroupList(ga) + " -> " + GroupList(gb));
  }

  for (int g = 1; g <= kServiceGroups; ++g) {
    if (a.Service(g) == b.Service(g)) continue;
    auto level = [](int l) { return ServiceLevelName(l).value_or(std::to_string(l)); };
    out.push_back("Class of service, group " + std::to_string(g) + " (stations " + std::to_string(6 * g - 5) + " - " +
                  std::to_string(6 * g) + "): " + level(a.Service(g)) + " -> " + level(b.Service(g)));
  }

  for (int f = 0; f < kDipFields; ++f) {
    const int va = pa.dip[static_cast<std::size_t>(f)], vb = pb.dip[static_cast<std::size_t>(f)];
    if (va != vb) out.push_back("Option " + OptionName(f) + ": " + OptionValue(f, va) + " -> " + OptionValue(f, vb));
  }

  if (pa.clockEnabled != pb.clockEnabled)
    out.push_back(std::string("Clocks: ") + (pa.clockEnabled ? "installed" : "not installed") + " -> " +
                  (pb.clockEnabled ? "installed" : "not installed"));
  if (!SameNumber(pa.clockA, pb.clockA))
    out.push_back("Clock A: " + ClockText(catalogue, pa.clockA) + " -> " + ClockText(catalogue, pb.clockA));
  if (!SameNumber(pa.clockB, pb.clockB))
    out.push_back("Clock B: " + ClockText(catalogue, pa.clockB) + " -> " + ClockText(catalogue, pb.clockB));
  if (!SameNumber(pa.direction, pb.direction))
    out.push_back("Clock direction: " + CaptionText(pa.direction, kDirectionCaptions, kDirections) + " -> " +
                  CaptionText(pb.direction, kDirectionCaptions, kDirections));
  if (!SameNumber(pa.bcdType, pb.bcdType))
    out.push_back("Clock BCD type: " + CaptionText(pa.bcdType, kBcdTypeCaptions, kBcdTypes) + " -> " +
                  CaptionText(pb.bcdType, kBcdTypeCaptions, kBcdTypes));
  return out;
}

}  // namespace r6183
