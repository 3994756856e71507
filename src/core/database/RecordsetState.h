#pragma once
// Private state of the table store: the shared connection, the rows a recordset and
// its clones share, and each recordset's own position and edit buffer.
#include <SQLiteCpp/Database.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "database/Database.h"
#include "database/Recordset.h"

namespace r6183 {

struct Database::Connection {
  std::unique_ptr<SQLite::Database> db;
  std::string path;
  OpenOptions options;
  sqlite3* raw() const { return db->getHandle(); }
};

// The rows of one opened recordset, shared by its clones. Deleted rows stay in
// place, marked, so that positions and bookmarks of clones stay valid.
struct RowSet {
  struct Row {
    Recordset::Bookmark bookmark = 0;
    int64_t rowid = 0;
    std::vector<Value> values;
    bool deleted = false;
  };

  std::shared_ptr<Database::Connection> conn;
  std::string name;
  RecordsetType type = RecordsetType::Table;
  std::string sql;        // reads the rows; column 0 is the rowid when hasRowid
  bool hasRowid = false;
  std::string table;      // the table written to; empty for read-only rows
  std::vector<FieldInfo> fields;
  std::vector<std::string> origins;  // table column behind each field, empty when none
  std::optional<std::vector<std::string>> defaults;  // default expression per field, read at the first AddNew

  std::vector<Row> rows;  // in bookmark order
  int64_t live = 0;       // rows not deleted
  Recordset::Bookmark nextBookmark = 1;
  uint64_t generation = 0;  // counts Requery; clones of an older generation lose their row

  bool Updatable() const { return !table.empty() && type != RecordsetType::Snapshot; }
  // Reads the rows (and on the first call the fields) from the file.
  void Load();
};

struct Recordset::State {
  enum class At { None, Bof, Row, Eof };

  std::shared_ptr<RowSet> set;
  At at = At::None;
  std::size_t index = 0;  // the row when at == Row
  uint64_t generation = 0;
  bool noMatch = false;

  EditMode mode = EditMode::None;
  std::vector<Value> buffer;
  std::vector<bool> dirty;
  std::size_t editIndex = 0;
  std::optional<Bookmark> lastModified;
};

// Reads the rows of a table or statement.
std::shared_ptr<RowSet> MakeRowSet(std::shared_ptr<Database::Connection> conn, std::string name,
                                   RecordsetType type, std::string sql, bool hasRowid,
                                   std::string table);
// A recordset's state on the rows, at the first row.
std::shared_ptr<Recordset::State> StartState(std::shared_ptr<RowSet> set);

}  // namespace r6183
