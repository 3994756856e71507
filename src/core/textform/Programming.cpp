#include "textform/Programming.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include "database/Database.h"
#include "database/Recordset.h"
#include "shell/Conversions.h"

namespace r6183 {

namespace {

int NumberAt(Recordset& rs, const char* field) { return static_cast<int>(NumberOf(rs[field].GetValue())); }

GroupSet GroupsFrom(Recordset& rs, int first) {
  GroupSet g{};
  for (int i = 0; i < kPageGroups; ++i) g[static_cast<std::size_t>(i)] = IsTrue(rs.Fields(first + i).GetValue());
  return g;
}

// "PageGroup1 = ?, ..., PageGroup16 = ?"
std::string GroupAssignments() {
  std::string sql;
  for (int g = 1; g <= kPageGroups; ++g) sql += (g > 1 ? ", " : "") + std::string("PageGroup") + std::to_string(g) + " = ?";
  return sql;
}

void AddGroups(std::vector<Value>& params, const GroupSet& groups) {
  for (const bool on : groups) params.emplace_back(on);
}

}  // namespace

Programming ReadProgramming(const std::string& path) {
  Programming p;
  Database db = Database::Open(path, {.readOnly = true});
  {
    Recordset rs = db.OpenRecordset("Config", RecordsetType::Snapshot);
    if (!rs.IsEOF()) p.systemConfig = NumberAt(rs, "System_Config");
  }
  for (Recordset rs = db.OpenRecordset("Clid", RecordsetType::Snapshot); !rs.IsEOF(); rs.MoveNext()) {
    const int station = NumberAt(rs, "clid_station");
    if (station >= 1 && station <= kStations)
      p.stations[static_cast<std::size_t>(station - 1)] = {TextOf(rs["archnum"].GetValue()),
                                                           TextOf(rs["clid_string"].GetValue())};
  }
  {
    Recordset rs = db.OpenRecordset("PageGroup", RecordsetType::Snapshot);
    for (std::size_t row = 0; row < p.customGroups.size() && !rs.IsEOF(); ++row, rs.MoveNext())
      p.customGroups[row] = GroupsFrom(rs, 1);
  }
  for (Recordset rs = db.OpenRecordset("SchedDays", RecordsetType::Snapshot); !rs.IsEOF(); rs.MoveNext()) {
    const int schedule = NumberAt(rs, "Schedule");
    if (schedule < 1 || schedule > kSchedules) continue;
    for (int d = 0; d < 7; ++d)
      p.days[static_cast<std::size_t>(schedule - 1)][static_cast<std::size_t>(d)] = IsTrue(rs.Fields(d + 1).GetValue());
  }
  for (Recordset rs = db.OpenRecordset("SELECT * FROM Event ORDER BY Schedule, StartTime, rowid", RecordsetType::Snapshot);
       !rs.IsEOF(); rs.MoveNext())
    p.events.push_back({NumberAt(rs, "Schedule"), TextOf(rs["StartTime"].GetValue()), NumberAt(rs, "Duration"),
                        NumberAt(rs, "Tone"), GroupsFrom(rs, kFirstPageGroupField)});
  for (int a = 0; a < kAudioTables; ++a) {
    Recordset rs = db.OpenRecordset(kAudioTableNames[a], RecordsetType::Snapshot);
    if (!rs.IsEOF()) p.audio[static_cast<std::size_t>(a)] = GroupsFrom(rs, 0);
  }
  {
    Recordset rs = db.OpenRecordset("DipSwitch", RecordsetType::Snapshot);
    for (int f = 0; f < kDipFields && !rs.IsEOF(); ++f)
      p.dip[static_cast<std::size_t>(f)] = static_cast<int>(NumberOf(rs.Fields(f).GetValue()));
  }
  for (Recordset rs = db.OpenRecordset("ClassService", RecordsetType::Snapshot); !rs.IsEOF(); rs.MoveNext()) {
    const int group = NumberAt(rs, "Group");
    if (group >= 1 && group <= kServiceGroups) p.service[static_cast<std::size_t>(group - 1)] = NumberAt(rs, "Service");
  }
  {
    Recordset rs = db.OpenRecordset("ClockDef", RecordsetType::Snapshot);
    if (!rs.IsEOF()) {
      p.clockEnabled = IsTrue(rs["ClockEnabled"].GetValue());
      p.clockA = TextOf(rs["ClockA"].GetValue());
      p.clockB = TextOf(rs["ClockB"].GetValue());
      p.direction = TextOf(rs["Direction"].GetValue());
      p.bcdType = TextOf(rs["BCD_Type"].GetValue());
    }
  }
  return p;
}

void WriteProgramming(const Programming& p, const std::string& path, bool scratch) {
  Database db = Database::Open(path);
  if (scratch) db.Handle().exec("PRAGMA synchronous = OFF");
  db.BeginTrans();
  try {
    db.Execute("UPDATE Config SET System_Config = ?", {p.systemConfig});
    for (int n = 1; n <= kStations; ++n) {
      const StationTexts& st = p.stations[static_cast<std::size_t>(n - 1)];
      db.Execute("UPDATE Clid SET archnum = ?, clid_string = ? WHERE clid_station = ?", {st.archnum, st.clid, n});
    }
    // the custom groups by position: the rows keep their dial codes
    const std::string groups = GroupAssignments();
    for (std::size_t row = 0; row < p.customGroups.size(); ++row) {
      std::vector<Value> params;
      AddGroups(params, p.customGroups[row]);
      params.emplace_back(static_cast<int>(row));
      db.Execute("UPDATE PageGroup SET " + groups + " WHERE rowid = (SELECT rowid FROM PageGroup ORDER BY rowid LIMIT 1 OFFSET ?)",
                 params);
    }
    for (int s = 1; s <= kSchedules; ++s) {
      std::vector<Value> params;
      for (const bool on : p.days[static_cast<std::size_t>(s - 1)]) params.emplace_back(on);
      params.emplace_back(s);
      db.Execute("UPDATE SchedDays SET Sunday = ?, Monday = ?, Tuesday = ?, Wednesday = ?, Thursday = ?, Friday = ?, "
                 "Saturday = ? WHERE Schedule = ?",
                 params);
    }
    db.Execute("DELETE FROM Event");
    std::string insert = "INSERT INTO Event (Schedule, StartTime, Duration, Tone", values = ") VALUES (?, ?, ?, ?";
    for (int g = 1; g <= kPageGroups; ++g) {
      insert += ", PageGroup" + std::to_string(g);
      values += ", ?";
    }
    insert += values + ")";
    for (const ProgrammedEvent& e : p.events) {
      std::vector<Value> params{e.schedule, e.startTime, e.duration, e.relay};
      AddGroups(params, e.groups);
      db.Execute(insert, params);
    }
    for (int a = 0; a < kAudioTables; ++a) {
      std::vector<Value> params;
      AddGroups(params, p.audio[static_cast<std::size_t>(a)]);
      db.Execute(std::string("UPDATE ") + kAudioTableNames[a] + " SET " + groups, params);
    }
    {
      Recordset rs = db.OpenRecordset("DipSwitch");
      rs.MoveFirst();
      rs.Edit();
      for (int f = 0; f < kDipFields; ++f) rs.Fields(f) = Value(p.dip[static_cast<std::size_t>(f)]);
      rs.Update();
    }
    for (int g = 1; g <= kServiceGroups; ++g)
      db.Execute("UPDATE ClassService SET Service = ? WHERE \"Group\" = ?", {p.service[static_cast<std::size_t>(g - 1)], g});
    db.Execute("UPDATE ClockDef SET ClockEnabled = ?, ClockA = ?, ClockB = ?, Direction = ?, BCD_Type = ?",
               {p.clockEnabled, p.clockA, p.clockB, p.direction, p.bcdType});
    db.CommitTrans();
  } catch (...) {
    db.Rollback();
    throw;
  }
}

}  // namespace r6183
