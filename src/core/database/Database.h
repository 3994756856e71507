#pragma once
// The table store: one programming document, list or journal file, reached through
// the few operations the tool's algorithms are written in. Every file is SQLite.
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/Value.h"

namespace SQLite {
class Database;
}

namespace r6183 {

class Recordset;

enum class RecordsetType { Table = 1, Dynaset = 2, Snapshot = 4 };

struct OpenOptions {
  bool exclusive = false;
  bool readOnly = false;
};

// The application_id that marks a programming document of this tool.
inline constexpr int32_t kDocumentApplicationId = 0x52363138;  // "R618"

class Database {
 public:
  // Opens an existing file. A missing file raises 3024, a file that is not a
  // database 3343; a file is never created here.
  static Database Open(const std::string& path, OpenOptions options = {});

  Database();
  ~Database();
  Database(Database&&) noexcept;
  Database& operator=(Database&&) noexcept;

  // A table name opens a Table recordset unless a type is given; any other text is
  // an SQL statement and opens a Dynaset (or the given type). A statement that
  // reads one table with "select ... from T ..." gives an updatable Dynaset;
  // other statements give read-only rows.
  Recordset OpenRecordset(std::string_view nameOrSql,
                          std::optional<RecordsetType> type = std::nullopt);

  // Runs a statement as written, with optional bound parameters; returns the
  // number of rows changed.
  int Execute(std::string_view sql, const std::vector<Value>& params = {});

  // User tables in the order they were created, as TableDefs lists them.
  std::vector<std::string> TableNames() const;
  bool HasTable(std::string_view name) const;  // case-insensitive

  void BeginTrans();
  void CommitTrans();
  void Rollback();

  int32_t ApplicationId() const;
  const std::string& Path() const;
  bool IsOpen() const;
  void Close();

  // The underlying connection, for the few maintenance statements (VACUUM INTO,
  // integrity check).
  SQLite::Database& Handle();

  struct Connection;

 private:
  explicit Database(std::shared_ptr<Connection> c);
  std::shared_ptr<Connection> conn_;
};

}  // namespace r6183
