#include "shell/Journal.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <optional>

#include "shell/Text.h"

namespace r6183 {

// Repeats f while the table is locked, letting events run twice between tries.
// Any other failure is passed over, like the handler of the original routine.
template <class F>
bool Journal::RetryWhileLocked(F&& f) {
  for (;;) {
    try {
      f();
      return true;
    } catch (...) {
      if (!IsLockError(DescribeCurrentException().number)) return false;
      Yield();
      Yield();
      clock_.Pause(std::chrono::milliseconds(5));
    }
  }
}

void Journal::LogError(int16_t number, std::string_view description, std::string_view program,
                       std::string_view module, std::string_view routine) {
  std::optional<SQLite::Database> db;
  RetryWhileLocked([&] {
    db.emplace(path_, SQLite::OPEN_READWRITE);
    db->exec("PRAGMA busy_timeout = 0");
  });
  Yield();
  if (!db) return;

  const std::string desc =
      LeftChars(description.empty() ? StandardErrorText(number) : std::string(description),
                kDescriptionWidth);
  Yield();
  const LocalDateTime now = clock_.Now();

  bool added = RetryWhileLocked([&] {
    SQLite::Statement insert(*db,
                             "INSERT INTO \"Error\" (errno, errdesc, errmodule, ErrProgram, errfcn, "
                             "errdate, errTime) VALUES (?, ?, ?, ?, ?, ?, ?)");
    insert.bind(1, number);
    insert.bind(2, desc);
    insert.bind(3, LeftChars(module, kNameWidth));
    insert.bind(4, LeftChars(program, kNameWidth));
    insert.bind(5, LeftChars(routine, kNameWidth));
    insert.bind(6, FormatJournalDate(now));
    insert.bind(7, FormatJournalTime(now));
    insert.exec();
  });

  if (added) {
    int64_t count = 0;
    RetryWhileLocked([&] { count = db->execAndGet("SELECT count(*) FROM \"Error\"").getInt64(); });
    if (count > kMaxRows) {
      RetryWhileLocked([&] {
        db->exec("DELETE FROM \"Error\" WHERE rowid = (SELECT min(rowid) FROM \"Error\")");
      });
    }
  }
  Yield();
}

}  // namespace r6183
