#include "database/TableSource.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <random>

#include "DbTestSupport.h"
#include "database/Database.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;
using test::ErrorOf;

const fs::path kSamples(R6183_JET_SAMPLES);

std::string JetHeader(char version, std::size_t size) {
  std::string b = std::string("\0\1\0\0Standard Jet DB\0", 20) + version;
  b.resize(size, '\0');
  return b;
}

std::string RandomBytes(std::size_t n) {
  std::mt19937 rng(6183);
  std::string b(n, '\0');
  for (auto& c : b) c = static_cast<char>(rng());
  return b;
}

std::string Default() { return (test::StagedAppDir() / "DEFAULT").string(); }

std::string ForeignSqlite(const test::TempDir& dir) {
  return test::MakeDb(dir.str("foreign.db"), "CREATE TABLE Zeta (a INTEGER); CREATE TABLE Alpha (x REAL);");
}

TEST(DetectFormat, TellsEachKindOfFileByItsFirstBytes) {
  test::TempDir dir;
  const auto file = [&](const std::string& name, const std::string& bytes) {
    test::WriteFile(dir.path() / name, bytes);
    return dir.str(name);
  };
  std::string wrongSignature = JetHeader(0, 4096);
  wrongSignature[1] = 0;
  struct Case {
    std::string path;
    FileFormat format;
    const char* name;
  };
  std::vector<Case> cases = {
      {file("empty", ""), FileFormat::Unknown, "unknown"},
      {file("zeros", std::string(8192, '\0')), FileFormat::Unknown, "unknown"},
      {file("random", RandomBytes(8192)), FileFormat::Unknown, "unknown"},
      {file("jet3", JetHeader(0, 2048)), FileFormat::Jet3, "Jet 3.0"},
      {file("jet3 short of a page", JetHeader(0, 2047)), FileFormat::Unknown, "unknown"},
      {file("jet4", JetHeader(1, 4096)), FileFormat::Jet4, "Jet 4.0"},
      {file("jet4 of a Jet 3 page", JetHeader(1, 2048)), FileFormat::Unknown, "unknown"},
      {file("later jet", JetHeader(3, 4096)), FileFormat::Jet4, "Jet 4.0"},
      {file("signature only", JetHeader(0, 20)), FileFormat::Unknown, "unknown"},
      {file("wrong signature", wrongSignature), FileFormat::Unknown, "unknown"},
      {Default(), FileFormat::Document, "document"},
      {ForeignSqlite(dir), FileFormat::ForeignSqlite, "SQLite"},
      {file("sqlite header cut", test::ReadFile(Default()).substr(0, 99)), FileFormat::Unknown, "unknown"},
      {dir.str("none"), FileFormat::Missing, "missing"},
      {dir.str(), FileFormat::Missing, "missing"},  // a directory
  };
  if (fs::is_directory(kSamples)) {
    cases.push_back({(kSamples / "testV1997.mdb").string(), FileFormat::Jet3, "Jet 3.0"});
    cases.push_back({(kSamples / "test2V2000.mdb").string(), FileFormat::Jet4, "Jet 4.0"});
  }
  for (const auto& c : cases) {
    const FileFormat f = DetectFormat(c.path);
    EXPECT_EQ(f, c.format) << c.path;
    EXPECT_STREQ(FormatName(f), c.name) << c.path;
  }
}

TEST(DetectFormat, AFileThatCantBeReadIsUnreadable) {
  test::TempDir dir;
  const std::string path = dir.str("locked.mdb");
  test::WriteFile(path, JetHeader(1, 4096));
  ::chmod(path.c_str(), 0);
  EXPECT_TRUE(test::AsUnprivileged(dir.path(), [&] {
    return DetectFormat(path) == FileFormat::Unreadable &&
           ErrorOf([&] { OpenTableSource(path); }) == err::PermissionDenied;
  }));
}

TEST(OpenTableSource, HandsEachKindToItsReaderAndRefusesTheRest) {
  test::TempDir dir;
  test::WriteFile(dir.path() / "zeros", std::string(8192, '\0'));
  test::WriteFile(dir.path() / "empty", "");
  test::WriteFile(dir.path() / "jet4", JetHeader(1, 3 * 4096));  // a header and nothing behind it
  struct Case {
    std::string path;
    int16_t error;
    const char* firstTable;
  };
  std::vector<Case> cases = {
      {Default(), 0, "Config"},
      {ForeignSqlite(dir), 0, "Zeta"},
      {dir.str("zeros"), err::NotADatabase, nullptr},
      {dir.str("empty"), err::NotADatabase, nullptr},
      {dir.str("jet4"), err::NotADatabase, nullptr},
      {dir.str("none"), err::FileNotFound, nullptr},
  };
  if (fs::is_directory(kSamples)) cases.push_back({(kSamples / "testV1997.mdb").string(), 0, "MSysObjects"});
  for (const auto& c : cases) {
    SCOPED_TRACE(c.path);
    std::unique_ptr<TableSource> src;
    EXPECT_EQ(ErrorOf([&] { src = OpenTableSource(c.path); }), c.error);
    if (c.firstTable) {
      EXPECT_EQ(src->TableNames().at(0), c.firstTable);
    }
  }
  EXPECT_EQ(ErrorOf([&] { OpenSqliteSource(dir.str("zeros")); }), err::NotADatabase);
}

TEST(SqliteSource, ReadsTablesInCreationOrderWithTypesAndRowsInRowidOrder) {
  test::TempDir dir;
  const std::string path = test::MakeDb(dir.str("made.db"), R"(
    CREATE TABLE Later (id INTEGER PRIMARY KEY AUTOINCREMENT);
    CREATE TABLE Earlier (b BOOLEAN, y BYTE, s SMALLINT, l INTEGER, t TEXT(12), m TEXT, o MEMO,
                          r REAL, d DOUBLE, z BLOB, n);
    INSERT INTO Earlier (rowid, b, y, s, l, t, m, o, r, d, z, n) VALUES
      (7, 1, 255, -2, 70000, 'seven', 'memo', 'o', 1.5, 2.25, x'00FF', NULL),
      (3, 0, 0, 0, 0, '', NULL, NULL, 0.0, -0.125, NULL, 'any');
    CREATE TABLE Dropped (v);
    DROP TABLE Dropped;
  )");
  const std::string before = test::ReadFile(path);
  const auto src = OpenSqliteSource(path);
  // sqlite_sequence, made by AUTOINCREMENT, is the engine's own
  EXPECT_EQ(src->TableNames(), (std::vector<std::string>{"Later", "Earlier"}));

  const SourceTable t = src->ReadTable("earlier");
  EXPECT_EQ(t.name, "Earlier");
  std::vector<std::string> columns;
  for (const auto& c : t.columns) columns.push_back(c.name + ":" + c.type + ":" + std::to_string(c.size));
  EXPECT_EQ(columns, (std::vector<std::string>{"b:boolean:0", "y:byte:0", "s:integer:0", "l:long:0",
                                               "t:text:12", "m:memo:0", "o:memo:0", "r:double:0",
                                               "d:double:0", "z:binary:0", "n:memo:0"}));
  const std::vector<std::vector<Value>> rows = {
      {0, 0, 0, 0, "", nullptr, nullptr, 0.0, -0.125, nullptr, "any"},
      {1, 255, -2, 70000, "seven", "memo", "o", 1.5, 2.25, Value(Value::Bytes{0x00, 0xFF}), nullptr},
  };
  EXPECT_EQ(t.rows, rows);
  for (const char* gone : {"sqlite_sequence", "Dropped"})
    EXPECT_EQ(ErrorOf([&] { src->ReadTable(gone); }), err::TableNotFound) << gone;
  EXPECT_EQ(test::ReadFile(path), before);  // opened read-only
}

TEST(SqliteSource, ReadsTheShippedTemplateAsTheTableStoreSeesIt) {
  const auto src = OpenSqliteSource(Default());
  const auto names = src->TableNames();
  EXPECT_EQ(names, Database::Open(Default(), {.readOnly = true}).TableNames());
  std::vector<std::string> columns;
  for (const auto& c : src->ReadTable("ClockDef").columns)
    columns.push_back(c.type + ":" + std::to_string(c.size));
  EXPECT_EQ(columns, (std::vector<std::string>{"boolean:0", "text:10", "text:10", "text:10", "text:10"}));
  for (const auto& n : names)
    EXPECT_EQ(std::to_string(src->ReadTable(n).rows.size()),
              test::Peek(Default(), "SELECT count(*) FROM " + n))
        << n;
}

}  // namespace
}  // namespace r6183
