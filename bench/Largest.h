#pragma once
// The largest programming of the benchmarks: three expansion boards, 96 numbered and
// described stations, 256 events over the six schedules.
#include <SQLiteCpp/SQLiteCpp.h>

#include <filesystem>
#include <string>

namespace r6183::bench {

// A copy of the template at `site` made the largest programming, then changed by `more`
// (SQL run in the same transaction).
inline void MakeLargest(const std::string& templatePath, const std::string& site, const std::string& more = "") {
  std::filesystem::copy_file(templatePath, site);
  SQLite::Database(site, SQLite::OPEN_READWRITE)
      .exec("BEGIN; UPDATE Config SET System_Config = 3;"
            "UPDATE Clid SET archnum = printf('%04d', 1000 + clid_station), clid_string = printf('Station %-7d', clid_station);"
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 255)"
            " INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1, PageGroup16)"
            " SELECT i % 6 + 1, printf('%02d:%02d', i / 12, i % 60), i % 59 + 1, i % 4 + 1, 1, i % 2 FROM n;" +
            more + ";COMMIT");
}

}  // namespace r6183::bench
