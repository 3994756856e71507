#include "database/DocumentDump.h"

#include <array>

#include "database/Database.h"
#include "database/Recordset.h"
#include "shell/Conversions.h"

namespace r6183 {

namespace {
constexpr std::array kTables{"Config",      "ClockDef", "Clid",         "PageGroup", "SchedDays",
                             "Event",       "Bgm",      "TonesPG",      "EmergencyPG", "DipSwitch",
                             "ClassService", "Rev",     "Clocks"};

std::string Cell(const Value& v) {
  if (v.IsNull()) return {};
  if (v.IsBytes()) {
    static const char* hex = "0123456789abcdef";
    std::string s;
    for (uint8_t b : v.ByteData()) {
      s += hex[b >> 4];
      s += hex[b & 15];
    }
    return s;
  }
  return CStr(v);
}
}  // namespace

void DumpDocument(Database& db, std::ostream& out) {
  for (const char* table : kTables) {
    const std::string source = std::string_view(table) == "Event"
                                   ? "SELECT * FROM Event ORDER BY Schedule, StartTime, rowid"
                                   : std::string(table);
    Recordset rs = db.OpenRecordset(source, RecordsetType::Snapshot);
    while (!rs.IsEOF()) {
      out << table;
      for (int i = 0; i < rs.FieldCount(); ++i) out << '|' << Cell(rs.Fields(i).GetValue());
      out << '\n';
      rs.MoveNext();
    }
  }
}

}  // namespace r6183
