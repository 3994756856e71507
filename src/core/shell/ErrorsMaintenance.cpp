#include "shell/ErrorsMaintenance.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include "shell/AppDir.h"
#include "shell/FileOps.h"
#include "shell/Utility.h"
#include "shell/Labels.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr Where kCompact{labels::frmMenu, "CompactErrors"};

std::string IntegrityOf(SQLite::Database& db) {
  return db.execAndGet("PRAGMA integrity_check").getString();
}
}  // namespace

bool RestoreErrorsDatabase(Session& session) {
  const std::string& errors = session.state.ErrorsDbPath;
  if (IsFile(errors)) return true;
  for (const char* ext : {"Bak", "old"}) {
    const std::string copy = ResolveNoCase(GetBackUpName(errors, ext));
    if (IsFile(copy) && ReplaceWithCopy(copy, errors)) return true;
  }
  return false;
}

void RepairDatabase(const std::string& path) {
  {
    SQLite::Database db(path, SQLite::OPEN_READWRITE);
    if (IntegrityOf(db) == "ok") return;
    // rebuilding the file drops damaged free pages and rebuilds the indexes
    db.exec("REINDEX");
    db.exec("VACUUM");
    if (IntegrityOf(db) == "ok") return;
  }
  throw RuntimeError(err::NotADatabase, path + " failed its integrity check");
}

void CompactErrors(Session& session) {
  Journal& journal = session.journal();
  const std::string& errors = session.state.ErrorsDbPath;
  int16_t lastError = 0;
  auto fail = [&](const char* text) { journal.Log(lastError, text, kCompact); };

  const std::string bak = ResolveNoCase(GetBackUpName(errors, "bak"));
  const std::string old = ResolveNoCase(GetBackUpName(errors, "old"));

  if (!fcnRemoveFile(bak)) return fail("Unable to remove BAK File");

  try {
    SQLite::Database db(errors, SQLite::OPEN_READWRITE);
    SQLite::Statement vacuum(db, "VACUUM INTO ?");
    vacuum.bind(1, bak);
    vacuum.exec();
  } catch (...) {
    lastError = DescribeCurrentException().number;
  }
  if (!IsFile(bak)) return fail("Compact Failed.");

  if (!fcnRemoveFile(old)) return fail("Unable to remove OLD File");
  if (!ReplaceWithCopy(errors, old)) return fail("Unable to copy errors file to .old.");
  if (!fcnRemoveFile(errors)) return fail("Unable to remove errors File");
  if (!ReplaceWithCopy(bak, errors)) return fail("Unable to copy bak File to Errors File.");
}

}  // namespace r6183
