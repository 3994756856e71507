// r6183-mkdb OUT SCRIPT...: runs the scripts, in order, into a new database file OUT.
// The shipped databases are made this way at build time; the program itself never
// creates a table.
#include <SQLiteCpp/Database.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: r6183-mkdb OUT SCRIPT...\n");
    return 2;
  }
  const std::filesystem::path out = argv[1];
  const std::filesystem::path tmp = out.string() + ".part";
  std::error_code ec;
  std::filesystem::remove(tmp, ec);
  try {
    {
      SQLite::Database db(tmp.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
      db.exec("PRAGMA journal_mode = DELETE");
      for (int i = 2; i < argc; ++i) {
        std::ifstream in(argv[i], std::ios::binary);
        if (!in) {
          std::fprintf(stderr, "r6183-mkdb: cannot read %s\n", argv[i]);
          return 1;
        }
        std::stringstream sql;
        sql << in.rdbuf();
        db.exec("BEGIN");
        db.exec(sql.str());
        db.exec("COMMIT");
      }
      db.exec("VACUUM");
    }
    std::filesystem::rename(tmp, out);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "r6183-mkdb: %s: %s\n", out.string().c_str(), e.what());
    std::filesystem::remove(tmp, ec);
    return 1;
  }
  return 0;
}
