// Tables of any SQLite file, read-only: our own documents and foreign files alike.
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Exception.h>

#include <filesystem>
#include <system_error>

#include "database/Sql.h"
#include "database/TableSource.h"
#include "shell/ErrorNumbers.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

[[noreturn]] void Raise(const SQLite::Exception& e) {
  switch (e.getErrorCode()) {
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
    case SQLITE_FORMAT: throw RuntimeError(err::NotADatabase);
    case SQLITE_BUSY:
    case SQLITE_LOCKED: throw RuntimeError(err::FileInUse);
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH: throw RuntimeError(err::PermissionDenied);
    case SQLITE_IOERR: throw RuntimeError(err::DeviceIoError);
    default: throw RuntimeError(err::DatabaseEngineError, e.what());
  }
}

// Our names of the declared types; an undeclared type reads as memo.
SourceColumn ColumnFromDeclared(std::string name, std::string_view declared) {
  SourceColumn c{std::move(name), "memo", 0};
  const auto info = sql::FieldFromDeclaredType(declared);
  if (!info) return c;
  switch (info->type) {
    case FieldType::Boolean: c.type = "boolean"; break;
    case FieldType::Byte: c.type = "byte"; break;
    case FieldType::Integer: c.type = "integer"; break;
    case FieldType::Long: c.type = "long"; break;
    case FieldType::Real: c.type = "double"; break;
    case FieldType::Text:
      c.type = "text";
      c.size = info->size;
      break;
    case FieldType::Memo: c.type = "memo"; break;
    case FieldType::Binary: c.type = "binary"; break;
  }
  return c;
}

class SqliteSource : public TableSource {
 public:
  explicit SqliteSource(const std::string& path) : db_(path, SQLite::OPEN_READONLY) {
    // Opening is lazy: make the engine read the header now.
    Names();
  }

  std::vector<std::string> TableNames() override {
    try {
      return Names();
    } catch (const SQLite::Exception& e) {
      Raise(e);
    }
  }

  SourceTable ReadTable(const std::string& name) override {
    try {
      return Read(name);
    } catch (const SQLite::Exception& e) {
      Raise(e);
    }
  }

 private:
  std::vector<std::string> Names() {
    sql::Statement st(db_.getHandle(),
                      "SELECT name FROM sqlite_master WHERE type = 'table' "
                      "AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY rowid");
    std::vector<std::string> names;
    while (st.Step()) names.push_back(st.Column(0).Text());
    return names;
  }

  SourceTable Read(const std::string& wanted) {
    SourceTable t;
    for (auto& n : Names())
      if (EqualsNoCase(n, wanted)) {
        t.name = n;
        break;
      }
    if (t.name.empty()) throw RuntimeError(err::TableNotFound);

    sqlite3* db = db_.getHandle();
    const std::string quoted = sql::Quote(t.name);
    {
      sql::Statement info(db, "PRAGMA table_info(" + quoted + ")");
      while (info.Step()) {
        const Value decl = info.Column(2);
        t.columns.push_back(ColumnFromDeclared(info.Column(1).Text(), decl.IsText() ? decl.Text() : ""));
      }
    }
    // WITHOUT ROWID tables have no rowid to order by; their key order is all there is.
    std::unique_ptr<sql::Statement> rows;
    try {
      rows = std::make_unique<sql::Statement>(db, "SELECT * FROM " + quoted + " ORDER BY rowid");
    } catch (const SQLite::Exception&) {
      rows = std::make_unique<sql::Statement>(db, "SELECT * FROM " + quoted);
    }
    const int n = rows->ColumnCount();
    while (rows->Step()) {
      auto& row = t.rows.emplace_back();
      row.reserve(static_cast<std::size_t>(n));
      for (int i = 0; i < n; ++i) row.push_back(rows->Column(i));
    }
    return t;
  }

  SQLite::Database db_;
};

}  // namespace

std::unique_ptr<TableSource> OpenSqliteSource(const std::string& path) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) throw RuntimeError(err::FileNotFound);
  try {
    return std::make_unique<SqliteSource>(path);
  } catch (const SQLite::Exception& e) {
    Raise(e);
  }
}

}  // namespace r6183
