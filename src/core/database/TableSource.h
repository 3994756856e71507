#pragma once
// Reading the tables of a file that may not be one of our documents: a programming
// document of an earlier version of the tool (a Jet 3 or Jet 4 database) or any SQLite
// file. The import pours what these give into a fresh copy of the template.
#include <memory>
#include <string>
#include <vector>

#include "shell/Value.h"

namespace r6183 {

// What a file is, as far as the document routines care.
enum class FileFormat {
  Missing,        // no such file, or not a regular file
  Unreadable,     // can't be opened for reading
  Jet3,           // the older format, Jet 3.x
  Jet4,           // the older format, Jet 4.x
  Document,       // SQLite with our application_id
  ForeignSqlite,  // SQLite without it
  Unknown,        // anything else: empty, zeros, random bytes, a damaged header
};

FileFormat DetectFormat(const std::string& path);
// "Jet 3.0", "Jet 4.0", "SQLite", ... for messages and r6183ctl.
const char* FormatName(FileFormat f);

struct SourceColumn {
  std::string name;
  std::string type;  // text, memo, byte, integer, long, float, double, currency, datetime, boolean, binary, ole, guid, numeric
                     // (complex: the long key of a Jet attachment column)
  int size = 0;      // bytes as the file declares them
};

// One table: columns in stored order, rows in stored order. Booleans are 0 or 1, text
// is UTF-8, dates are "yyyy-mm-dd hh:mm:ss" text, currency a real number, OLE and
// binary fields bytes.
struct SourceTable {
  std::string name;
  std::vector<SourceColumn> columns;
  std::vector<std::vector<Value>> rows;
};

class TableSource {
 public:
  virtual ~TableSource() = default;
  // Every table in the order of the file's table definitions, system tables included.
  // A Jet file gives its user tables and its MSys... tables; hidden system tables
  // under other names (the data of complex columns) are left out. SQLite gives no
  // sqlite_... table.
  virtual std::vector<std::string> TableNames() = 0;
  // Raises RuntimeError when the table can't be read whole (3343 for a truncated or
  // damaged file), 3078 for a name not in the file (matched without regard to case).
  virtual SourceTable ReadTable(const std::string& name) = 0;
};

// Opens a Jet or SQLite file for reading; raises RuntimeError 3343 for anything else,
// 53 for a missing file, 70 for one that can't be read.
std::unique_ptr<TableSource> OpenTableSource(const std::string& path);

// The readers behind OpenTableSource.
std::unique_ptr<TableSource> OpenJetSource(const std::string& path);
std::unique_ptr<TableSource> OpenSqliteSource(const std::string& path);

}  // namespace r6183
