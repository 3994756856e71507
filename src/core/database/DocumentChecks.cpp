#include "database/DocumentChecks.h"

#include <optional>

#include "database/Database.h"
#include "database/Recordset.h"
#include "shell/Conversions.h"
#include "shell/Labels.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr Where kValid{labels::frmMenu, "ValidDatabase"};
constexpr Where kBoards{labels::ModComm, "GetNumberofSysBoards"};
constexpr Where kTotal{labels::modProject, "GetTotalEvents"};

Database& Opened(std::optional<Database>& db) {
  if (!db || !db->IsOpen()) throw RuntimeError(err::ObjectNotSet);
  return *db;
}

// Rows of a table opened as a snapshot, counted after MoveLast; 0 when that fails.
int64_t CountRows(Journal& journal, std::optional<Database>& db, std::string_view table) {
  int64_t n = 0;
  step(journal, kValid, [&] {
    Recordset rs = Opened(db).OpenRecordset(table, RecordsetType::Snapshot);
    if (rs.RecordCount() > 0) rs.MoveLast();
    n = rs.RecordCount();
  });
  return n;
}
}  // namespace

bool ValidDatabase(Session& session, const std::string& path) {
  Journal& journal = session.journal();
  ProcessState& st = session.state;
  bool valid = true;

  std::optional<Database> db;
  step(journal, kValid, [&] { db.emplace(Database::Open(path)); });

  if (CountRows(journal, db, "Clid") != 96) valid = false;
  if (CountRows(journal, db, "PageGroup") != 4) valid = false;
  if (CountRows(journal, db, "SchedDays") != 6) valid = false;

  const int64_t events = CountRows(journal, db, "Event");
  step(journal, kValid, [&] { st.EventCount = CInt(Value(events)); });

  step(journal, kValid, [&] {
    Recordset rs = Opened(db).OpenRecordset("Config", RecordsetType::Snapshot);
    st.SystemConfig = CByte(rs["System_Config"].GetValue());
  });
  if (st.SystemConfig > 3) valid = false;

  if (valid) {
    std::optional<Recordset> rs;
    step(journal, kValid, [&] { rs.emplace(Opened(db).OpenRecordset("ClockDef", RecordsetType::Snapshot)); });
    step(journal, kValid, [&] {
      if (!rs) throw RuntimeError(err::ObjectNotSet);
      if (rs->RecordCount() > 0) rs->MoveLast();
      if (rs->RecordCount() != 1) valid = false;
    });
    step(journal, kValid, [&] {
      if (!rs) throw RuntimeError(err::ObjectNotSet);
      rs->MoveFirst();
      st.ClocksEnabled = IsTrue(rs->Fields("ClockEnabled").GetValue()) ? 1 : 0;
    });
  }

  if (valid) {
    for (const char* table : {"Bgm", "DipSwitch", "EmergencyPG", "TonesPG", "REV"}) {
      step(journal, kValid, [&] {
        Recordset rs = Opened(db).OpenRecordset(table, RecordsetType::Snapshot);
        rs.Close();
      });
    }
  }

  if (db) db->Close();
  return valid;
}

int GetNumberofSysBoards(Session& session, const std::string& path) {
  int result = 0;
  step(session.journal(), kBoards, [&] {
    Database db = Database::Open(path);
    Recordset rs = db.OpenRecordset("Config", RecordsetType::Snapshot);
    const int16_t value = CInt(rs["System_Config"].GetValue());
    result = session.state.SystemConfig > 3 ? 3 : value;
    rs.Close();
    db.Close();
  });
  return result;
}

void GetTotalEvents(Session& session, Database& db) {
  step(session.journal(), kTotal, [&] {
    Recordset rs = db.OpenRecordset("Event");
    if (rs.RecordCount() > 0) rs.MoveLast();
    session.state.EventCount = CInt(Value(rs.RecordCount()));
    rs.Close();
  });
}

}  // namespace r6183
