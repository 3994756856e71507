#pragma once
// Reads back what the journal wrote, for the shell tests.
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <string>
#include <vector>

#include "shell/Session.h"

namespace r6183::test {

struct JournalRow {
  int number;
  std::string description, module, program, routine, date, time;
};

inline std::vector<JournalRow> JournalRows(Session& session) {
  SQLite::Database db(session.state.ErrorsDbPath, SQLite::OPEN_READONLY);
  SQLite::Statement q(db,
                      "SELECT errno, errdesc, errmodule, ErrProgram, errfcn, errdate, errTime "
                      "FROM \"Error\" ORDER BY rowid");
  std::vector<JournalRow> rows;
  while (q.executeStep())
    rows.push_back({q.getColumn(0).getInt(), q.getColumn(1).getString(), q.getColumn(2).getString(),
                    q.getColumn(3).getString(), q.getColumn(4).getString(),
                    q.getColumn(5).getString(), q.getColumn(6).getString()});
  return rows;
}

}  // namespace r6183::test
