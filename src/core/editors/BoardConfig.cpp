#include "editors/BoardConfig.h"

#include <string>

#include "database/Database.h"
#include "shell/Labels.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr const char* kBoardGroups[] = {
    "",
    " SET PageGroup5 = False, pageGroup6 = False, PageGroup7 = false, pageGroup8 = False",
    " SET PageGroup9 = False, pageGroup10 = False, pageGroup11 = false, pageGroup12 = False",
    " SET PageGroup13 = False, pageGroup14 = False, pageGroup15 = false, pageGroup16 = False",
};
}  // namespace

void Validate_Config(Session& s) {
  const Where where{labels::modProject, "Validate_Config"};
  Journal& j = s.journal();
  const int boards = s.state.SystemConfig;
  const std::string first = std::to_string((boards + 1) * 24 + 1);
  const std::string group = std::to_string((boards + 1) * 4 + 1);
  Database db;
  if (!step(j, where, [&] { db = Database::Open(s.state.WorkDbPath); })) return;
  // One commit for the whole clearing: a statement that fails is journalled and the others
  // still run, but the work copy never holds half a configuration after a crash.
  step(j, where, [&] { db.Execute("BEGIN"); });
  step(j, where, [&] { db.Execute("UPDATE Clid SET Clid_String = '' WHERE Clid_Station BETWEEN " + first + " AND 97"); });
  step(j, where, [&] { db.Execute("UPDATE Clid SET Archnum = '' WHERE Clid_Station BETWEEN " + first + " AND 97"); });
  // "Group" is a keyword of the store and is quoted
  step(j, where, [&] {
    db.Execute("UPDATE ClassService SET Service = 1  WHERE ClassService.\"Group\" BETWEEN " + group + " and 17 ");
  });
  for (const char* table : {"PageGroup", "Event", "Bgm", "EmergencyPG", "TonesPG"})
    for (int b = boards + 1; b <= 3; ++b)
      step(j, where, [&] { db.Execute(std::string("UPDATE ") + table + kBoardGroups[b]); });
  step(j, where, [&] { db.Execute(kDeleteOrphanEvents); });
  step(j, where, [&] { db.Execute("COMMIT"); });
  db.Close();
}

}  // namespace r6183
