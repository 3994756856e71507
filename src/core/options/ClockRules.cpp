#include "options/ClockRules.h"

#include "database/Database.h"
#include "database/Recordset.h"
#include "shell/Conversions.h"

namespace r6183 {

std::vector<ClockType> LoadClockCatalogue(const std::string& dbPath) {
  std::vector<ClockType> out;
  Database db = Database::Open(dbPath);
  Recordset rs = db.OpenRecordset("Clocks");
  if (rs.RecordCount() > 0) {
    rs.MoveLast();
    rs.MoveFirst();
  }
  while (!rs.IsEOF()) {
    out.push_back({TextOf(rs.Fields("Cindex").GetValue()), TextOf(rs.Fields("CCorrected").GetValue())});
    rs.MoveNext();
  }
  rs.Close();
  db.Close();
  return out;
}

std::optional<std::string> LookUpCorrection(const std::string& dbPath, const std::string& name) {
  Database db = Database::Open(dbPath);
  Recordset rs = db.OpenRecordset("select * from Clocks where CIndex = '" + name + "'");
  if (rs.RecordCount() < 1) return std::nullopt;
  rs.MoveFirst();
  std::string corrected = TextOf(rs.Fields("CCorrected").GetValue());
  rs.Close();
  db.Close();
  return corrected;
}

std::string ClockPositionText(int listIndex) { return std::to_string(listIndex + 1); }

int ClockListIndex(const std::string& stored) { return static_cast<int>(Val(stored)) - 1; }

std::optional<ClockType> ClockAt(const std::vector<ClockType>& catalogue, const std::string& stored) {
  const int i = ClockListIndex(stored);
  if (i < 0 || i >= static_cast<int>(catalogue.size())) return std::nullopt;
  return catalogue[static_cast<std::size_t>(i)];
}

std::optional<std::string> ClockPositionOf(const std::vector<ClockType>& catalogue, const std::string& name) {
  for (std::size_t i = 0; i < catalogue.size(); ++i)
    if (catalogue[i].name == name) return ClockPositionText(static_cast<int>(i));
  return std::nullopt;
}

}  // namespace r6183
