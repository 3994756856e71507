#pragma once
// Small databases for the table store's tests.
#include <SQLiteCpp/Database.h>

#include <functional>
#include <ostream>
#include <string>

#include "shell/ErrorNumbers.h"
#include "shell/Value.h"
#include "support/TestSupport.h"

namespace r6183 {

// Values in test messages.
inline void PrintTo(const Value& v, std::ostream* os) {
  if (v.IsNull()) *os << "Null";
  else if (v.IsInteger()) *os << v.Integer();
  else if (v.IsReal()) *os << v.Real() << " (real)";
  else if (v.IsText()) *os << '"' << v.Text() << '"';
  else *os << v.ByteData().size() << " bytes";
}

}  // namespace r6183

namespace r6183::test {

// The error number of what f raises, 0 when it returns.
inline int16_t ErrorOf(const std::function<void()>& f) {
  try {
    f();
  } catch (...) {
    return DescribeCurrentException().number;
  }
  return 0;
}

// Creates the file at `path` and runs the script in it.
inline std::string MakeDb(const std::string& path, const std::string& script) {
  SQLite::Database db(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
  db.exec(script);
  return path;
}

// Reads one value straight from the file, past the table store.
inline std::string Peek(const std::string& path, const std::string& query) {
  SQLite::Database db(path, SQLite::OPEN_READONLY);
  SQLite::Statement st(db, query);
  if (!st.executeStep()) return "<no row>";
  return st.getColumn(0).isNull() ? "<null>" : st.getColumn(0).getString();
}

}  // namespace r6183::test
