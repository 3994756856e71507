// The programming read from YAML. Every entry passes the rule of the window that edits
// it; a refusal names the line and column of what it refuses, and the reading goes on so
// that all of them are told at once.
#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <map>

#include "editors/EventEntry.h"
#include "editors/NumberConflicts.h"
#include "editors/ScheduleScript.h"
#include "options/ClockRules.h"
#include "shell/Conversions.h"
#include "shell/Text.h"
#include "shell/Utility.h"
#include "textform/TextForm.h"
#include "textform/Words.h"

namespace r6183 {

namespace {

constexpr const char* kDayNames[] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr const char* kSources[kAudioTables] = {"bgm", "time", "emergency"};

// A line of the event window's refusal, without its dash: CannotSaveText's own words.
std::string EventRefusal(bool badTime, bool duplicate, bool badDuration, bool noPageGroup) {
  const std::string text = CannotSaveText(badTime, duplicate, badDuration, noPageGroup);
  std::string line = text.substr(text.find('\n') + 1);
  return line.starts_with("- ") ? line.substr(2) : line;
}

class Reader {
 public:
  Reader(const Programming& base, const std::vector<ClockType>& catalogue, std::string_view model)
      : p_(base), catalogue_(catalogue), model_(model) {}

  TextImport Read(std::string_view text) {
    YAML::Node root;
    try {
      root = YAML::Load(std::string(text));
    } catch (const YAML::Exception& e) {
      refusals_.push_back({e.mark.line + 1, e.mark.column + 1, e.msg});
      return {p_, refusals_};
    }
    if (!root.IsMap()) {
      Refuse(root, "a programming text is a map of sections: boards, stations, custom_groups, schedules, audio, service, "
                   "options, clocks");
      return {p_, refusals_};
    }
    // the boards first: what lies beyond them is refused everywhere else
    if (const YAML::Node boards = root["boards"]) Boards(boards);
    for (const auto& section : root) {
      const std::string key = Scalar(section.first);
      const YAML::Node& v = section.second;
      if (key == "boards") continue;
      if (key == "stations") Stations(v);
      else if (key == "custom_groups") CustomGroups(v);
      else if (key == "schedules") Schedules(v);
      else if (key == "audio") Audio(v);
      else if (key == "service") Service(v);
      else if (key == "options") Options(v);
      else if (key == "clocks") Clocks(v);
      else
        Refuse(section.first, "unknown section \"" + key +
                                  "\"; the sections are boards, stations, custom_groups, schedules, audio, service, "
                                  "options, clocks");
    }
    std::stable_sort(refusals_.begin(), refusals_.end(), [](const TextRefusal& a, const TextRefusal& b) {
      return a.line != b.line ? a.line < b.line : a.column < b.column;
    });
    return {p_, refusals_};
  }

 private:
  void Refuse(const YAML::Node& at, std::string text) {
    const YAML::Mark m = at.Mark();
    refusals_.push_back({m.line + 1, m.column + 1, std::move(text)});
  }

  static std::string Scalar(const YAML::Node& n) { return n.IsScalar() ? n.Scalar() : std::string(); }

  std::optional<int> Int(const YAML::Node& n, const std::string& what) {
    try {
      if (n.IsScalar()) return n.as<int>();
    } catch (const YAML::Exception&) {
    }
    Refuse(n, what + " wants a number, got \"" + Scalar(n) + "\"");
    return std::nullopt;
  }

  std::optional<bool> Bool(const YAML::Node& n, const std::string& what) {
    try {
      if (n.IsScalar()) return n.as<bool>();
    } catch (const YAML::Exception&) {
    }
    Refuse(n, what + " wants yes or no (on or off), got \"" + Scalar(n) + "\"");
    return std::nullopt;
  }

  // Text of a scalar; a refusal for anything else.
  std::optional<std::string> Text(const YAML::Node& n, const std::string& what) {
    if (n.IsScalar()) return n.Scalar();
    if (n.IsNull()) return std::string();
    Refuse(n, what + " wants a text");
    return std::nullopt;
  }

  bool IsMap(const YAML::Node& n, const std::string& what) {
    if (n.IsMap()) return true;
    if (!n.IsNull()) Refuse(n, what + " wants a map of keys and values");
    return false;
  }

  bool IsSeq(const YAML::Node& n, const std::string& what) {
    if (n.IsSequence()) return true;
    if (!n.IsNull()) Refuse(n, what + " wants a list, as [1, 2]");
    return false;
  }

  // A map's keys must be among `known`.
  void KnownKeys(const YAML::Node& map, std::initializer_list<const char*> known, const std::string& what) {
    for (const auto& kv : map) {
      const std::string key = Scalar(kv.first);
      if (std::none_of(known.begin(), known.end(), [&](const char* k) { return key == k; })) {
        std::string list;
        for (const char* k : known) list += (list.empty() ? "" : ", ") + std::string(k);
        Refuse(kv.first, "unknown key \"" + key + "\" in " + what + "; the keys are " + list);
      }
    }
  }

  // Page groups 1 to the last of the boards; a group beyond them is refused.
  std::optional<GroupSet> Groups(const YAML::Node& n, const std::string& what) {
    GroupSet groups{};
    if (n.IsNull()) return groups;
    if (!IsSeq(n, what)) return std::nullopt;
    bool ok = true;
    for (const YAML::Node& item : n) {
      const auto g = Int(item, what);
      if (!g) {
        ok = false;
      } else if (*g < 1 || *g > LastValidGroup(p_.systemConfig)) {
        Refuse(item, GroupNotInSystem("page group", *g, p_.systemConfig));
        ok = false;
      } else {
        groups[static_cast<std::size_t>(*g - 1)] = true;
      }
    }
    return ok ? std::optional(groups) : std::nullopt;
  }

  void Boards(const YAML::Node& n) {
    const auto boards = Int(n, "boards");
    if (!boards) return;
    if (*boards < 1 || *boards > kBoards) {
      Refuse(n, "a system has 1 to 4 boards, not " + std::to_string(*boards));
      return;
    }
    p_.systemConfig = *boards - 1;
  }

  void Stations(const YAML::Node& n) {
    if (!IsSeq(n, "stations")) return;
    std::map<int, YAML::Node> given;  // station -> its number's node
    for (const YAML::Node& entry : n) {
      if (!IsMap(entry, "a station")) continue;
      KnownKeys(entry, {"station", "arch", "clid", "filled"}, "a station");
      const YAML::Node number = entry["station"];
      if (!number) {
        Refuse(entry, "a station wants its number: station: N");
        continue;
      }
      const auto station = Int(number, "station");
      if (!station) continue;
      if (*station < 1 || *station > LastValidStation(p_.systemConfig)) {
        Refuse(number, StationNotInSystem(*station, p_.systemConfig));
        continue;
      }
      if (given.contains(*station)) {
        Refuse(number, "station " + std::to_string(*station) + " is given twice");
        continue;
      }
      const std::string name = "station " + std::to_string(*station);
      std::optional<std::string> arch = std::string(), clid = std::string();
      if (const YAML::Node a = entry["arch"]) arch = Text(a, name + ", arch");
      if (const YAML::Node c = entry["clid"]) clid = Text(c, name + ", clid");
      if (arch)
        if (const auto refusal = ArchnumRefusal(TrimRight(*arch))) {
          Refuse(entry["arch"], name + ", arch: " + *refusal);
          arch.reset();
        }
      if (clid)
        if (const auto refusal = ClidRefusal(*clid, model_)) {
          Refuse(entry["clid"], name + ", clid: " + *refusal);
          clid.reset();
        }
      bool filled = false;
      if (const YAML::Node f = entry["filled"]) filled = Bool(f, name + ", filled").value_or(false);
      if (!arch || !clid) continue;
      StationTexts& st = p_.stations[static_cast<std::size_t>(*station - 1)];
      st.archnum = filled ? PadRight(*arch, kArchWidth) : *arch;
      st.clid = filled ? PadRight(*clid, kClidWidth) : *clid;
      given[*station] = entry["arch"] ? entry["arch"] : number;
    }
    // no number may begin another: each conflict is told at the later station
    for (const auto& [station, at] : given) {
      const std::string mine = Trim(p_.stations[static_cast<std::size_t>(station - 1)].archnum);
      for (int other = 1; other <= LastValidStation(p_.systemConfig); ++other) {
        if (other == station) continue;
        const std::string theirs = Trim(p_.stations[static_cast<std::size_t>(other - 1)].archnum);
        if (!NumbersConflict(mine, theirs) || (given.contains(other) && other > station)) continue;
        Refuse(at, "station " + std::to_string(station) + ", arch: " + mine + " conflicts with " + theirs +
                       " of station " + std::to_string(other));
        break;
      }
    }
  }

  void CustomGroups(const YAML::Node& n) {
    if (!IsMap(n, "custom_groups")) return;
    for (const auto& kv : n) {
      const auto dial = Int(kv.first, "a dial code");
      if (!dial) continue;
      if (*dial < 50 || *dial > 53) {
        Refuse(kv.first, "the custom page groups have the dial codes 50 to 53, not " + std::to_string(*dial));
        continue;
      }
      if (const auto groups = Groups(kv.second, "custom group " + std::to_string(*dial)))
        p_.customGroups[static_cast<std::size_t>(*dial - 50)] = *groups;
    }
  }

  void Schedules(const YAML::Node& n) {
    if (!IsMap(n, "schedules")) return;
    p_.days = {};
    p_.events.clear();
    std::array<int, 7> dayOwner{};  // the schedule a day is active in
    int count = 0;
    for (const auto& kv : n) {
      const auto schedule = Int(kv.first, "a schedule");
      if (!schedule) continue;
      if (*schedule < 1 || *schedule > kSchedules) {
        Refuse(kv.first, "the schedules are 1 to 6, not " + std::to_string(*schedule));
        continue;
      }
      const YAML::Node& body = kv.second;
      if (!IsMap(body, "schedule " + std::to_string(*schedule))) continue;
      KnownKeys(body, {"days", "events"}, "a schedule");
      const YAML::Node days = body["days"];
      if (days && IsSeq(days, "days"))
        for (const YAML::Node& day : days) {
          const auto parsed = ParseDays(Scalar(day));
          if (!day.IsScalar() || !parsed || Trim(day.Scalar()).empty() || day.Scalar().find(',') != std::string::npos) {
            Refuse(day, "\"" + Scalar(day) + "\" is no day; the days are Sun, Mon, Tue, Wed, Thu, Fri, Sat");
            continue;
          }
          for (std::size_t d = 0; d < 7; ++d) {
            if (!(*parsed)[d]) continue;
            // a day active in another schedule is grey in the schedule window
            if (dayOwner[d] != 0 && dayOwner[d] != *schedule) {
              Refuse(day, std::string(kDayNames[d]) + " is active in schedule " + std::to_string(dayOwner[d]));
              continue;
            }
            dayOwner[d] = *schedule;
            p_.days[static_cast<std::size_t>(*schedule - 1)][d] = true;
          }
        }
      const YAML::Node events = body["events"];
      if (!events || !IsSeq(events, "events")) continue;
      std::vector<std::string> times;
      for (const YAML::Node& e : events) {
        if (!IsMap(e, "an event")) continue;
        KnownKeys(e, {"time", "relay", "duration", "groups"}, "an event");
        if (++count == kMaxEvents + 1)
          Refuse(e, "a unit takes " + std::to_string(kMaxEvents) + " events at most: this is the " +
                        std::to_string(count) + "th");
        Event(*schedule, e, times);
      }
    }
    std::stable_sort(p_.events.begin(), p_.events.end(), [](const ProgrammedEvent& a, const ProgrammedEvent& b) {
      return a.schedule != b.schedule ? a.schedule < b.schedule : a.startTime < b.startTime;
    });
  }

  void Event(int schedule, const YAML::Node& e, std::vector<std::string>& times) {
    ProgrammedEvent ev;
    ev.schedule = schedule;
    bool ok = true;
    const YAML::Node time = e["time"];
    const auto parsed = time && time.IsScalar() ? ParseStartTime(time.Scalar()) : std::nullopt;
    if (!parsed) {
      Refuse(time ? time : e, EventRefusal(true, false, false, false));
      ok = false;
    } else {
      ev.startTime = FormatTime(*parsed);
      if (std::find(times.begin(), times.end(), ev.startTime) != times.end()) {
        Refuse(time, EventRefusal(false, true, false, false));
        ok = false;
      }
      times.push_back(ev.startTime);
    }
    if (const YAML::Node relay = e["relay"]) {
      const auto r = Int(relay, "relay");
      if (r && (*r < 1 || *r > 4)) Refuse(relay, "the relays are 1 to 4, not " + std::to_string(*r));
      if (!r || *r < 1 || *r > 4) ok = false;
      else ev.relay = *r;
    }
    const YAML::Node duration = e["duration"];
    const DurationChange d = DurationTextChanged(duration && duration.IsScalar() ? duration.Scalar() : "");
    if (!d.bar || d.bad.value_or(true)) {
      Refuse(duration ? duration : e, EventRefusal(false, false, true, false));
      ok = false;
    } else {
      ev.duration = -*d.bar;
    }
    const YAML::Node groups = e["groups"];
    const auto set = groups ? Groups(groups, "groups") : std::optional(GroupSet{});
    if (!set) {
      ok = false;
    } else if (std::none_of(set->begin(), set->end(), [](bool g) { return g; })) {
      Refuse(groups ? groups : e, EventRefusal(false, false, false, true));
      ok = false;
    } else {
      ev.groups = *set;
    }
    if (ok) p_.events.push_back(ev);
  }

  void Audio(const YAML::Node& n) {
    if (!IsMap(n, "audio")) return;
    KnownKeys(n, {"bgm", "time", "emergency"}, "audio");
    for (int a = 0; a < kAudioTables; ++a)
      if (const YAML::Node list = n[kSources[a]])
        if (const auto groups = Groups(list, kSources[a])) p_.audio[static_cast<std::size_t>(a)] = *groups;
  }

  void Service(const YAML::Node& n) {
    if (!IsMap(n, "service")) return;
    for (const auto& kv : n) {
      const auto group = Int(kv.first, "a service group");
      if (!group) continue;
      // a group of an absent board keeps its level, as the document does; it is never sent
      if (*group < 1 || *group > kServiceGroups) {
        Refuse(kv.first, "the service groups are 1 to 16, not " + std::to_string(*group));
        continue;
      }
      auto level = ServiceLevelOf(Scalar(kv.second));
      if (!level) {
        const std::string v = Scalar(kv.second);
        if (v.size() == 1 && v[0] >= '0' && v[0] <= '2') level = v[0] - '0';
      }
      if (!level) {
        Refuse(kv.second, "the class of service is Normal Only, Normal / Emergency or Emergency Only!, not \"" +
                              Scalar(kv.second) + "\"");
        continue;
      }
      p_.service[static_cast<std::size_t>(*group - 1)] = *level;
    }
  }

  void Options(const YAML::Node& n) {
    if (!IsMap(n, "options")) return;
    for (const auto& kv : n) {
      const std::string name = Scalar(kv.first);
      const auto field = OptionField(name);
      if (!field) {
        std::string names;
        for (int f = 0; f < kDipFields; ++f) names += (f ? ", " : "") + OptionName(f);
        Refuse(kv.first, "unknown option \"" + name + "\"; the options are " + names);
        continue;
      }
      int& value = p_.dip[static_cast<std::size_t>(*field)];
      if (*field == kRingPatternField) {
        const auto pattern = RingPatternOf(Scalar(kv.second));
        if (pattern) value = *pattern;
        else Refuse(kv.second, "Ring Pattern is American, Dutch or British, not \"" + Scalar(kv.second) + "\"");
      } else if (const auto on = Bool(kv.second, name)) {
        value = *on ? 1 : 0;
      }
    }
  }

  // A clock type by its name, or {type, stored} for the stored form of its position.
  std::optional<std::string> ClockPosition(const YAML::Node& n, const std::string& what) {
    std::optional<std::string> name, stored;
    if (n.IsMap()) {
      KnownKeys(n, {"type", "stored"}, what);
      if (n["type"]) name = Scalar(n["type"]);
      if (n["stored"]) stored = Scalar(n["stored"]);
    } else {
      name = Scalar(n);
    }
    std::optional<std::string> position;
    if (name) {
      position = ClockPositionOf(catalogue_, *name);
      if (!position) {
        std::string types;
        for (const auto& t : catalogue_) types += (types.empty() ? "" : ", ") + t.name;
        Refuse(n.IsMap() ? n["type"] : n, "unknown clock type \"" + *name + "\"; the types are " + types);
        return std::nullopt;
      }
    }
    if (!stored) return position;
    const bool digits = !stored->empty() && stored->find_first_not_of("0123456789") == std::string::npos;
    if (!digits || (position && Val(*stored) != Val(*position))) {
      Refuse(n["stored"], what + ": \"" + *stored + "\" is not the stored position of " + name.value_or("a clock type"));
      return std::nullopt;
    }
    return stored;
  }

  // A caption by its stored index, or {stored} for a text kept as it was.
  std::optional<std::string> Caption(const YAML::Node& n, const char* const* captions, int count, const std::string& what) {
    if (n.IsMap() && n["stored"]) return Scalar(n["stored"]);
    for (int i = 0; i < count; ++i)
      if (Scalar(n) == captions[i]) return std::to_string(i);
    std::string list;
    for (int i = 0; i < count; ++i) list += (i ? ", " : "") + std::string(captions[i]);
    Refuse(n, what + " is one of " + list + ", not \"" + Scalar(n) + "\"");
    return std::nullopt;
  }

  void Clocks(const YAML::Node& n) {
    if (!IsMap(n, "clocks")) return;
    KnownKeys(n, {"installed", "a", "b", "direction", "bcd"}, "clocks");
    if (n["installed"])
      if (const auto on = Bool(n["installed"], "installed")) p_.clockEnabled = *on;
    if (n["a"])
      if (const auto a = ClockPosition(n["a"], "clock a")) p_.clockA = *a;
    if (n["b"])
      if (const auto b = ClockPosition(n["b"], "clock b")) p_.clockB = *b;
    if (n["direction"])
      if (const auto d = Caption(n["direction"], kDirectionCaptions, kDirections, "direction")) p_.direction = *d;
    if (n["bcd"])
      if (const auto b = Caption(n["bcd"], kBcdTypeCaptions, kBcdTypes, "bcd")) p_.bcdType = *b;
  }

  Programming p_;
  const std::vector<ClockType>& catalogue_;
  std::string model_;
  std::vector<TextRefusal> refusals_;
};

}  // namespace

TextImport ReadProgrammingText(std::string_view text, const Programming& base, const std::vector<ClockType>& catalogue,
                               std::string_view model) {
  return Reader(base, catalogue, model).Read(text);
}

}  // namespace r6183
