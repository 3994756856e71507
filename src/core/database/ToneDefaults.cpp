#include "database/ToneDefaults.h"

#include "database/Database.h"
#include "database/DocumentChecks.h"
#include "database/Recordset.h"
#include "shell/Labels.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
// Groups 4b+1 to 4b+4 belong to expansion board b; the main board's 1 to 4 stay.
void ClearAbsentBoards(Database& db, const char* table, int boards) {
  Recordset rs = db.OpenRecordset(table);
  rs.MoveFirst();
  rs.Edit();
  for (int board = 3; board >= 1; --board) {
    if (boards >= board) break;
    for (int g = 4 * board + 1; g <= 4 * board + 4; ++g)
      rs["pagegroup" + std::to_string(g)] = false;
  }
  rs.Update();
  rs.Close();
}

void ClearToneGroups(Session& session, int boards, const Where& where) {
  step(session.journal(), where, [&] {
    Database db = Database::Open(session.state.WorkDbPath);
    ClearAbsentBoards(db, "EmergencyPG", boards);
    ClearAbsentBoards(db, "TonesPG", boards);
    db.Close();
  });
}
}  // namespace

void UpdateData(Session& session) {
  const int boards = GetNumberofSysBoards(session, session.state.WorkDbPath);
  ClearToneGroups(session, boards, Where{labels::modProject, "UpdateData"});
}

void SetToneDefaults(Session& session, int n) {
  ClearToneGroups(session, n - 1, Where{labels::modProject, "MakeEmer"});
}

}  // namespace r6183
