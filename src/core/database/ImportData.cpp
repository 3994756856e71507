#include "database/ImportData.h"

#include <memory>
#include <optional>

#include "database/Database.h"
#include "database/Recordset.h"
#include "database/TableSource.h"
#include "shell/Labels.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183 {

namespace {
constexpr Where kHere{labels::modProject, "ImportData"};

void PourTable(Session& session, Database& db, const SourceTable& source) {
  Journal& journal = session.journal();
  Recordset rs = db.OpenRecordset(source.name);
  const bool overwrite = !TableEmpty(rs);
  if (static_cast<int>(source.columns.size()) != rs.FieldCount()) {
    session.Message("Invalid Database");
    return;
  }
  if (!source.rows.empty() && overwrite) rs.MoveFirst();
  for (const auto& row : source.rows) {
    step(journal, kHere, [&] { overwrite ? rs.Edit() : rs.AddNew(); });
    for (std::size_t i = 0; i < row.size(); ++i)
      step(journal, kHere, [&] { rs.Fields(static_cast<int>(i)) = row[i]; });
    step(journal, kHere, [&] { rs.Update(); });
    if (overwrite) step(journal, kHere, [&] { rs.MoveNext(); });
  }
}
}  // namespace

bool ImportData(Session& session, const std::string& source, const std::string& target) {
  Journal& journal = session.journal();
  std::unique_ptr<TableSource> from;
  std::optional<Database> db;
  if (!step(journal, kHere, [&] { from = OpenTableSource(source); })) return false;
  if (!step(journal, kHere, [&] { db.emplace(Database::Open(target)); })) return true;

  std::vector<std::string> tables;
  step(journal, kHere, [&] { tables = from->TableNames(); });
  step(journal, kHere, [&] { db->BeginTrans(); });
  for (const std::string& name : tables) {
    if (ToUpper(name).starts_with("MSYS")) continue;
    step(journal, kHere, [&] { PourTable(session, *db, from->ReadTable(name)); });
  }
  step(journal, kHere, [&] { db->CommitTrans(); });
  db->Close();
  return true;
}

}  // namespace r6183
