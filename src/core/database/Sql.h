#pragma once
// Private helpers of the table store: a prepared statement on the raw handle,
// identifier quoting, field types from declared column types, and the shape of a
// plain one-table select that can be made updatable.
#include <sqlite3.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "database/Recordset.h"
#include "shell/Value.h"

namespace r6183::sql {

// A prepared statement. Failures raise SQLite::Exception with the engine's code.
class Statement {
 public:
  Statement(sqlite3* db, std::string_view text);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  void Bind(int index, const Value& v);  // 1-based
  bool Step();                           // true while there is a row
  int ColumnCount() const;
  Value Column(int index) const;
  sqlite3_stmt* get() const { return stmt_; }
  // True when text after the first statement holds more than blanks and comments.
  bool HasMoreStatements() const;

 private:
  sqlite3* db_;
  sqlite3_stmt* stmt_ = nullptr;
  std::string tail_;
};

// "name" with inner quotes doubled.
std::string Quote(std::string_view identifier);
// A name without the [ ] or " " or ` ` around it.
std::string Unquote(std::string_view token);
// True for one bare or bracketed/quoted name (no blanks outside the quotes).
bool IsSingleName(std::string_view text);

// Field type and size from a declared column type; nullopt when none is declared.
std::optional<FieldInfo> FieldFromDeclaredType(std::string_view declared);

// "select <cols> from <table> [alias] [where ...] [order by ...] [limit ...]"
// reading a single table, without distinct, joins, grouping, aggregates or
// compound parts.
struct SimpleSelect {
  std::string table;      // unquoted
  std::string qualifier;  // alias or table as written, to qualify the rowid
  std::size_t insertAt;   // offset just after the SELECT keyword
};
std::optional<SimpleSelect> AnalyzeSelect(std::string_view text);

// The statement with the qualified rowid as its first column.
std::string WithRowid(std::string_view text, const SimpleSelect& s);

}  // namespace r6183::sql
