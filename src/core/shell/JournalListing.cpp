#include "shell/JournalListing.h"

#include "database/Database.h"
#include "database/Recordset.h"
#include "shell/FileOps.h"
#include "shell/Session.h"

namespace r6183 {

namespace {

constexpr const char* kModule = "frmDebug";
constexpr const char* kTable = "Error";

}  // namespace

std::vector<JournalLine> ReadJournalLines(Session& session) {
  std::vector<JournalLine> lines;
  if (!IsFile(session.state.ErrorsDbPath)) return lines;
  step(session.journal(), Where{kModule, "LoadGrid"}, [&] {
    Database db = Database::Open(session.state.ErrorsDbPath, OpenOptions{.readOnly = true});
    Recordset rs = db.OpenRecordset(kTable);
    if (!TableEmpty(rs)) {
      for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) {
        const Value number = rs["errno"].GetValue();
        lines.push_back({number.IsNull() ? "0" : std::to_string(rs["errno"].Number()),
                         rs["errdesc"].Text(), rs["errdate"].Text() + " @ " + rs["errTime"].Text(),
                         rs["errfcn"].Text(), rs["errmodule"].Text()});
        session.pump();
      }
    }
    rs.Close();
    db.Close();
  });
  return lines;
}

void ClearJournal(Session& session) {
  if (!IsFile(session.state.ErrorsDbPath)) return;
  step(session.journal(), Where{kModule, "cmdClear"}, [&] {
    Database db = Database::Open(session.state.ErrorsDbPath);
    db.Execute("DELETE FROM \"Error\"");
    db.Close();
  });
}

}  // namespace r6183
