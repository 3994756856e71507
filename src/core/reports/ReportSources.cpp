#include "reports/ReportSources.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <stdexcept>

#include "database/Database.h"
#include "database/Recordset.h"
#include "editors/ClassServiceModel.h"
#include "editors/ConfigModel.h"
#include "options/ClockRules.h"
#include "options/DipRules.h"
#include "shell/Conversions.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

constexpr const char* kDayNames[7] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr const char* kAudioSources[3][2] = {
    {"Bgm", "Background Music"}, {"TonesPG", "Time Tone"}, {"EmergencyPG", "Emergency Tone"}};

std::vector<std::string> With(std::vector<std::string> fields, const std::string& prefix, int count) {
  for (int i = 1; i <= count; ++i) fields.push_back(prefix + std::to_string(i));
  return fields;
}
std::vector<std::string> WithGroups(std::vector<std::string> fields) { return With(std::move(fields), "PageGroup", 16); }
std::vector<std::string> WithDays(std::vector<std::string> fields) {
  for (const char* d : kDayNames) fields.push_back(d);
  return fields;
}

void EachRow(Database& db, const std::string& sql, const std::function<void(Recordset&)>& fn) {
  Recordset rs = db.OpenRecordset(sql, RecordsetType::Snapshot);
  while (!rs.IsEOF()) {
    fn(rs);
    rs.MoveNext();
  }
  rs.Close();
}

std::string Flag(bool b) { return b ? "1" : "0"; }

std::string BoardName(int board) { return board == 1 ? "Main Board" : "Expansion " + std::to_string(board - 1); }

// The sixteen page-group flags of the current row, fields "PageGroup1" to "PageGroup16".
std::vector<std::string> Groups(Recordset& rs, std::vector<int>* ticked = nullptr) {
  std::vector<std::string> out;
  for (int g = 1; g <= 16; ++g) {
    const bool on = rs.Fields("PageGroup" + std::to_string(g)).Bool();
    out.push_back(Flag(on));
    if (on && ticked) ticked->push_back(g);
  }
  return out;
}

// "Mon Tue Thu Fri", or "No days".
std::string DayList(const std::array<bool, 7>& days) {
  std::string out;
  for (int d = 0; d < 7; ++d)
    if (days[static_cast<std::size_t>(d)]) out += (out.empty() ? "" : " ") + std::string(kDayNames[d]).substr(0, 3);
  return out.empty() ? "No days" : out;
}

std::map<int, std::array<bool, 7>> ScheduleDays(Database& db) {
  std::map<int, std::array<bool, 7>> out;
  EachRow(db, "SELECT * FROM SchedDays ORDER BY Schedule", [&](Recordset& rs) {
    std::array<bool, 7> days{};
    for (int d = 0; d < 7; ++d) days[static_cast<std::size_t>(d)] = rs.Fields(d + 1).Bool();
    out[static_cast<int>(rs.Fields("Schedule").Number())] = days;
  });
  return out;
}

using Loader = std::function<void(Database&, const DocumentFacts&, SourceRows&)>;

struct Source {
  SourceInfo info;
  Loader load;
};

void LoadDocument(Database& db, const DocumentFacts& facts, SourceRows& out) {
  int numbered = 0, described = 0, events = 0;
  EachRow(db, "SELECT archnum, clid_string FROM Clid WHERE clid_station <= " + std::to_string(facts.InstalledStations()),
          [&](Recordset& rs) {
            numbered += !Trim(rs.Fields(0).Text()).empty();
            described += !Trim(rs.Fields(1).Text()).empty();
          });
  EachRow(db, "SELECT count(*) FROM Event", [&](Recordset& rs) { events = static_cast<int>(rs.Fields(0).Number()); });
  out.rows.push_back({Trim(ConfigModel::kOptions[facts.boards - 1]), std::to_string(facts.boards),
                      std::to_string(facts.InstalledStations()), std::to_string(facts.InstalledGroups()),
                      std::to_string(numbered), std::to_string(described), std::to_string(events)});
}

void LoadClid(Database& db, const DocumentFacts& facts, SourceRows& out) {
  EachRow(db, "SELECT clid_station, archnum, clid_string FROM Clid ORDER BY clid_station", [&](Recordset& rs) {
    const int station = static_cast<int>(rs.Fields(0).Number());
    const int board = std::clamp((station - 1) / 24 + 1, 1, 4);
    out.rows.push_back({std::to_string(station), Trim(rs.Fields(1).Text()), Trim(rs.Fields(2).Text()),
                        std::to_string(board), BoardName(board), std::to_string((station - 1) / 6 + 1),
                        Flag(station >= 1 && station <= facts.InstalledStations())});
  });
}

void LoadPageGroup(Database& db, const DocumentFacts&, SourceRows& out) {
  EachRow(db, "SELECT * FROM PageGroup", [&](Recordset& rs) {
    const std::string digit = Trim(rs.Fields("DialCode").Text());
    std::vector<std::string> row{digit, "5" + digit};
    for (std::string& g : Groups(rs)) row.push_back(std::move(g));
    out.rows.push_back(std::move(row));
  });
}

void LoadAudio(Database& db, const DocumentFacts&, SourceRows& out) {
  for (const auto& [table, name] : kAudioSources) {
    EachRow(db, std::string("SELECT * FROM ") + table, [&, name = name, table = table](Recordset& rs) {
      std::vector<std::string> row{name, table};
      for (std::string& g : Groups(rs)) row.push_back(std::move(g));
      out.rows.push_back(std::move(row));
    });
  }
}

void LoadSchedDays(Database& db, const DocumentFacts&, SourceRows& out) {
  for (const auto& [schedule, days] : ScheduleDays(db)) {
    std::vector<std::string> row{std::to_string(schedule), DayList(days)};
    for (bool d : days) row.push_back(Flag(d));
    out.rows.push_back(std::move(row));
  }
}

void LoadEvent(Database& db, const DocumentFacts&, SourceRows& out) {
  const auto days = ScheduleDays(db);
  EachRow(db, "Select * from Event order by Schedule, StartTime", [&](Recordset& rs) {
    const int schedule = static_cast<int>(rs.Fields("Schedule").Number());
    const auto d = days.find(schedule);
    std::vector<int> ticked;
    auto groups = Groups(rs, &ticked);
    std::vector<std::string> row{std::to_string(schedule), d == days.end() ? "No days" : DayList(d->second),
                                 Trim(rs.Fields("StartTime").Text()), Trim(rs.Fields("Duration").Text()),
                                 Trim(rs.Fields("Tone").Text()), GroupRanges(ticked)};
    for (std::string& g : groups) row.push_back(std::move(g));
    out.rows.push_back(std::move(row));
  });
}

void LoadClassService(Database& db, const DocumentFacts& facts, SourceRows& out) {
  std::map<int, std::string> numbers;
  EachRow(db, "SELECT clid_station, archnum FROM Clid ORDER BY clid_station", [&](Recordset& rs) {
    const int station = static_cast<int>(rs.Fields(0).Number());
    const std::string number = Trim(rs.Fields(1).Text());
    std::string& list = numbers[(station - 1) / 6 + 1];
    if (!number.empty()) list += (list.empty() ? "" : "  ") + number;
  });
  EachRow(db, "SELECT \"Group\", Service FROM ClassService ORDER BY \"Group\"", [&](Recordset& rs) {
    const int group = static_cast<int>(rs.Fields(0).Number());
    const int service = static_cast<int>(rs.Fields(1).Number());
    const std::string level = service >= 0 && service <= 2 ? ClassServiceModel::kLevels[service] : std::to_string(service);
    out.rows.push_back({std::to_string(group), std::to_string(service), level,
                        std::to_string(group * 6 - 5) + " - " + std::to_string(group * 6), numbers[group],
                        Flag(group >= 1 && group <= facts.InstalledGroups())});
  });
}

void LoadSwitches(Database& db, const DocumentFacts&, SourceRows& out) {
  DipValues v;
  EachRow(db, "SELECT * FROM DipSwitch", [&](Recordset& rs) {
    auto at = [&rs](int position) { return rs.Fields(position).Bool() ? 1 : 0; };
    for (int i = 0; i < 4; ++i) v.lowStation[static_cast<std::size_t>(i)] = at(i);
    v.queueTone = at(5);
    v.dialTone = at(6);
    v.hfAlertTone = at(7);
    v.pageAlertTone = at(8);
    v.ringbackTone = at(9);
    v.privacyTone = at(10);
    v.priorityGlobal = at(11);
    v.priorityOverride = at(12);
    v.ringPattern = Trim(rs.Fields(13).Text());
    v.extToneSource = at(14);
  });
  const auto positions = SwitchPositions(v);
  const int pattern = static_cast<int>(Val(v.ringPattern));
  for (int n = 1; n <= kSwitches; ++n) {
    const auto& on = positions[static_cast<std::size_t>(n - 1)];
    std::string option = Trim(SwitchLabel(n == 15 ? 14 : n));
    std::string note;
    if (n == 14 || n == 15) note = Trim(RingPatternCaption(pattern));
    if (n == 12) note = v.priorityGlobal ? "Global All Call" : "Local All Call";
    if (n == 16) note = v.extToneSource ? "External" : "Internal";
    if (n == 5) note = "not used";
    out.rows.push_back({std::to_string(n), option, on ? (*on ? "ON" : "OFF") : "", Flag(on && *on), Flag(on && !*on),
                        note});
  }
}

void LoadClockDef(Database& db, const DocumentFacts&, SourceRows& out) {
  const auto catalogue = LoadClockCatalogue(db.Path());
  EachRow(db, "SELECT * FROM ClockDef", [&](Recordset& rs) {
    auto clock = [&](const char* item, const char* field) {
      const std::string stored = Trim(rs.Fields(field).Text());
      const auto type = ClockAt(catalogue, stored);
      out.rows.push_back({item, type ? type->name : stored.empty() ? "None" : "Unknown type " + stored});
      out.rows.push_back({std::string(item) + " corrected", type ? type->corrected : ""});
    };
    auto caption = [&](const char* field, const char* const* captions, int count) {
      const int i = static_cast<int>(Val(rs.Fields(field).Text()));
      return i >= 0 && i < count ? std::string(captions[i]) : Trim(rs.Fields(field).Text());
    };
    out.rows.push_back({"Clock board", rs.Fields("ClockEnabled").Bool() ? "Installed" : "Not installed"});
    clock("Clock A", "ClockA");
    clock("Clock B", "ClockB");
    out.rows.push_back({"Direction", caption("Direction", kDirectionCaptions, kDirections)});
    out.rows.push_back({"BCD type", caption("BCD_Type", kBcdTypeCaptions, kBcdTypes)});
  });
}

const std::vector<Source>& Sources() {
  static const std::vector<Source> kSources = {
      {{"Document", "Config, Clid, Event",
        {"boards", "board_count", "stations", "page_groups", "numbered", "described", "events"}},
       LoadDocument},
      {{"Clid", "Clid, Config",
        {"clid_station", "archnum", "clid_string", "board", "board_name", "page_group", "installed"}},
       LoadClid},
      {{"PageGroup", "PageGroup", WithGroups({"DialCode", "dial"})}, LoadPageGroup},
      {{"Audio", "Bgm, TonesPG, EmergencyPG", WithGroups({"source", "table"})}, LoadAudio},
      {{"SchedDays", "SchedDays", WithDays({"Schedule", "days"})}, LoadSchedDays},
      {{"Event", "Event, SchedDays",
        WithGroups({"Schedule", "days", "StartTime", "Duration", "Tone", "groups"})},
       LoadEvent},
      {{"ClassService", "ClassService, Clid, Config",
        {"Group", "Service", "class", "stations", "numbers", "installed"}},
       LoadClassService},
      {{"Switches", "DipSwitch", {"switch", "option", "setting", "on", "off", "note"}}, LoadSwitches},
      {{"ClockDef", "ClockDef, Clocks", {"item", "value"}}, LoadClockDef},
  };
  return kSources;
}

}  // namespace

int SourceRows::Index(std::string_view field) const {
  for (std::size_t i = 0; i < fields.size(); ++i)
    if (EqualsNoCase(fields[i], field)) return static_cast<int>(i);
  return -1;
}

const std::vector<SourceInfo>& ReportSources() {
  static const std::vector<SourceInfo> kInfos = [] {
    std::vector<SourceInfo> out;
    for (const Source& s : Sources()) out.push_back(s.info);
    return out;
  }();
  return kInfos;
}

const SourceInfo* FindSource(std::string_view name) {
  for (const SourceInfo& s : ReportSources())
    if (EqualsNoCase(s.name, name)) return &s;
  return nullptr;
}

bool HasField(const SourceInfo& info, std::string_view field) {
  return std::any_of(info.fields.begin(), info.fields.end(), [&](const std::string& f) { return EqualsNoCase(f, field); });
}

DocumentFacts ReadFacts(Database& db) {
  DocumentFacts facts;
  EachRow(db, "SELECT System_Config FROM Config", [&](Recordset& rs) {
    facts.boards = static_cast<int>(std::clamp<int64_t>(rs.Fields(0).Number(), 0, 3)) + 1;
  });
  return facts;
}

SourceRows LoadSource(Database& db, std::string_view name, const DocumentFacts& facts) {
  for (const Source& s : Sources()) {
    if (!EqualsNoCase(s.info.name, name)) continue;
    SourceRows out;
    out.fields = s.info.fields;
    s.load(db, facts, out);
    return out;
  }
  throw std::invalid_argument("no record source " + std::string(name));
}

bool IsTicked(std::string_view value) {
  const std::string v = Trim(value);
  return !v.empty() && v != "0";
}

std::string GroupRanges(const std::vector<int>& groups) {
  std::string out;
  for (std::size_t i = 0; i < groups.size();) {
    std::size_t j = i;
    while (j + 1 < groups.size() && groups[j + 1] == groups[j] + 1) ++j;
    out += (out.empty() ? "" : ", ") + std::to_string(groups[i]);
    if (j > i) out += (j == i + 1 ? ", " : "-") + std::to_string(groups[j]);
    i = j + 1;
  }
  return out;
}

}  // namespace r6183
