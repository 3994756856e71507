#include "database/Database.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>

#include <filesystem>
#include <system_error>

#include "database/Recordset.h"
#include "database/RecordsetState.h"
#include "database/Sql.h"
#include "shell/Conversions.h"
#include "shell/ErrorNumbers.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

constexpr int kBusyTimeoutMs = 2000;

struct MasterEntry {
  std::string name;
  std::string type;
};

// A table or view by name, without regard to case.
std::optional<MasterEntry> FindInMaster(sqlite3* db, std::string_view name) {
  sql::Statement st(db,
                    "SELECT name, type FROM sqlite_master WHERE type IN ('table', 'view') "
                    "AND name = ?1 COLLATE NOCASE ORDER BY type = 'view', rowid");
  st.Bind(1, Value(name));
  if (!st.Step()) return std::nullopt;
  return MasterEntry{st.Column(0).Text(), st.Column(1).Text()};
}

// Errors while preparing a statement the caller wrote.
[[noreturn]] void RaisePrepareError(const SQLite::Exception& e) {
  const std::string msg = e.what();
  if (msg.find("no such table") != std::string::npos) throw RuntimeError(err::TableNotFound);
  if (msg.find("syntax error") != std::string::npos || msg.find("incomplete input") != std::string::npos)
    throw RuntimeError(err::SyntaxError);
  throw e;
}

void Exec(sqlite3* db, const char* text) {
  sql::Statement st(db, text);
  while (st.Step()) {
  }
}

}  // namespace

Database::Database() = default;
Database::~Database() = default;
Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&&) noexcept = default;
Database::Database(std::shared_ptr<Connection> c) : conn_(std::move(c)) {}

// `exclusive` sets the exclusive locking mode and takes the file's lock at once:
// the write lock for a read-write open, the read lock for a read-only one. The
// lock is held until the last recordset of the connection is gone, so no other
// connection can change the file (nor read it, after a read-write open) meanwhile.
// Another connection holding the file that way makes Open raise 3045.
Database Database::Open(const std::string& path, OpenOptions options) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) throw RuntimeError(err::CannotFindFile);
  if (std::filesystem::file_size(path, ec) == 0) throw RuntimeError(err::NotADatabase);

  auto c = std::make_shared<Connection>();
  c->path = path;
  c->options = options;
  try {
    c->db = std::make_unique<SQLite::Database>(
        path, options.readOnly ? SQLite::OPEN_READONLY : SQLite::OPEN_READWRITE, kBusyTimeoutMs);
    sqlite3* db = c->raw();
    if (options.exclusive) Exec(db, "PRAGMA locking_mode = EXCLUSIVE");
    Exec(db, "SELECT count(*) FROM sqlite_master");
    if (options.exclusive && !options.readOnly) {
      Exec(db, "BEGIN EXCLUSIVE");
      Exec(db, "COMMIT");
    }
  } catch (const SQLite::Exception& e) {
    switch (e.getErrorCode()) {
      case SQLITE_NOTADB:
      case SQLITE_CORRUPT:
        throw RuntimeError(err::NotADatabase);
      case SQLITE_BUSY:
      case SQLITE_LOCKED:
        throw RuntimeError(err::FileInUse);
      default:
        throw;
    }
  }
  return Database(std::move(c));
}

namespace {
Database::Connection& Need(const std::shared_ptr<Database::Connection>& c) {
  if (!c) throw RuntimeError(err::ObjectInvalid);
  return *c;
}
}  // namespace

Recordset Database::OpenRecordset(std::string_view nameOrSql, std::optional<RecordsetType> type) {
  auto& c = Need(conn_);
  sqlite3* db = c.raw();
  const std::string text = Trim(nameOrSql);

  if (const auto entry = FindInMaster(db, sql::Unquote(text))) {
    if (entry->type == "view")
      return Recordset(StartState(MakeRowSet(conn_, entry->name, type.value_or(RecordsetType::Dynaset),
                                             "SELECT * FROM " + sql::Quote(entry->name), false, {})));
    const RecordsetType t = type.value_or(RecordsetType::Table);
    return Recordset(StartState(MakeRowSet(
        conn_, entry->name, t, "SELECT rowid, * FROM " + sql::Quote(entry->name) + " ORDER BY rowid",
        true, entry->name)));
  }
  if (sql::IsSingleName(text)) throw RuntimeError(err::TableNotFound);

  RecordsetType t = type.value_or(RecordsetType::Dynaset);
  if (t == RecordsetType::Table) t = RecordsetType::Dynaset;

  // A plain one-table select reads the rowid too, so that its rows can be written.
  if (t == RecordsetType::Dynaset) {
    if (const auto simple = sql::AnalyzeSelect(text)) {
      const auto entry = FindInMaster(db, simple->table);
      if (entry && entry->type == "table") {
        const std::string rewritten = sql::WithRowid(text, *simple);
        bool prepared = false;
        try {
          sql::Statement probe(db, rewritten);
          prepared = true;
        } catch (const SQLite::Exception&) {
          // fall back to read-only rows below
        }
        if (prepared)
          return Recordset(StartState(MakeRowSet(conn_, text, t, rewritten, true, entry->name)));
      }
    }
  }
  try {
    sql::Statement probe(db, text);
  } catch (const SQLite::Exception& e) {
    RaisePrepareError(e);
  }
  return Recordset(StartState(MakeRowSet(conn_, text, t, text, false, {})));
}

int Database::Execute(std::string_view text, const std::vector<Value>& params) {
  sqlite3* db = Need(conn_).raw();
  std::optional<sql::Statement> st;
  try {
    st.emplace(db, text);
  } catch (const SQLite::Exception& e) {
    RaisePrepareError(e);
  }
  if (st->HasMoreStatements()) throw RuntimeError(err::CharactersAfterStatement);
  for (std::size_t i = 0; i < params.size(); ++i) st->Bind(static_cast<int>(i + 1), params[i]);
  const auto before = sqlite3_total_changes64(db);
  while (st->Step()) {
  }
  if (sqlite3_total_changes64(db) == before) return 0;
  return sqlite3_changes(db);
}

std::vector<std::string> Database::TableNames() const {
  sqlite3* db = Need(conn_).raw();
  sql::Statement st(db,
                    "SELECT name FROM sqlite_master WHERE type = 'table' "
                    "AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY rowid");
  std::vector<std::string> names;
  while (st.Step()) names.push_back(st.Column(0).Text());
  return names;
}

bool Database::HasTable(std::string_view name) const {
  for (const auto& n : TableNames())
    if (EqualsNoCase(n, name)) return true;
  return false;
}

void Database::BeginTrans() { Exec(Need(conn_).raw(), "BEGIN"); }
void Database::CommitTrans() { Exec(Need(conn_).raw(), "COMMIT"); }
void Database::Rollback() { Exec(Need(conn_).raw(), "ROLLBACK"); }

int32_t Database::ApplicationId() const {
  sql::Statement st(Need(conn_).raw(), "PRAGMA application_id");
  if (!st.Step()) return 0;
  return static_cast<int32_t>(st.Column(0).Integer());
}

const std::string& Database::Path() const {
  static const std::string kNone;
  return conn_ ? conn_->path : kNone;
}

bool Database::IsOpen() const { return conn_ != nullptr; }

void Database::Close() { conn_.reset(); }

SQLite::Database& Database::Handle() { return *Need(conn_).db; }

}  // namespace r6183
