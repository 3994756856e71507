#pragma once
// Helpers of the table store's and the conversions' tests: small databases, error numbers.
#include <SQLiteCpp/Database.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "shell/Conversions.h"
#include "shell/ErrorNumbers.h"
#include "shell/Value.h"
#include "support/TestSupport.h"

namespace r6183 {

// Values in test messages, by kind: Null, Integer, Real, Text or Bytes.
inline void PrintTo(const Value& v, std::ostream* os) {
  *os << "NIRTB"[v.Raw().index()] << '(' << TextOf(v) << ')';
}

}  // namespace r6183

namespace r6183::test {

using Calls = std::vector<std::function<void()>>;

// The error number of what f raises, 0 when it returns.
inline int16_t ErrorOf(const std::function<void()>& f) {
  try {
    f();
  } catch (...) {
    return DescribeCurrentException().number;
  }
  return 0;
}

// Runs the script in the file at `path`, created when missing.
inline std::string MakeDb(const std::string& path, const std::string& script) {
  SQLite::Database(path, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE).exec(script);
  return path;
}

// One value read straight from the file, past the table store.
inline std::string Peek(const std::string& path, const std::string& query) {
  SQLite::Database db(path, SQLite::OPEN_READONLY);
  SQLite::Statement st(db, query);
  if (!st.executeStep()) return "<no row>";
  return st.getColumn(0).isNull() ? "<null>" : st.getColumn(0).getString();
}

}  // namespace r6183::test
