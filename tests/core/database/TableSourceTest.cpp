#include "database/TableSource.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

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

std::string Default() { return (test::StagedAppDir() / "DEFAULT").string(); }

// Tables made in the order Zeta, Dropped, Alpha; AUTOINCREMENT adds the engine's sqlite_sequence.
std::string ForeignSqlite(const test::TempDir& dir) {
  return test::MakeDb(dir.str("foreign.db"),
                      "CREATE TABLE Zeta (id INTEGER PRIMARY KEY AUTOINCREMENT, t TEXT(12), z BLOB, r REAL);"
                      "INSERT INTO Zeta VALUES (7, 'seven', x'00FF', 1.5), (3, NULL, NULL, -0.125);"
                      "CREATE TABLE Dropped (v); DROP TABLE Dropped; CREATE TABLE Alpha (x);");
}

TEST(DetectFormat, TellsEachKindOfFileByItsFirstBytes) {
  test::TempDir dir;
  const auto file = [&](const std::string& name, const std::string& bytes) {
    test::WriteFile(dir.path() / name, bytes);
    return dir.str(name);
  };
  const std::tuple<std::string, FileFormat, const char*> cases[] = {
      {file("empty", ""), FileFormat::Unknown, "unknown"},
      {file("jet3", JetHeader(0, 2048)), FileFormat::Jet3, "Jet 3.0"},
      {file("jet3 short of a page", JetHeader(0, 2047)), FileFormat::Unknown, "unknown"},
      {file("jet4", JetHeader(1, 4096)), FileFormat::Jet4, "Jet 4.0"},
      {file("jet4 of a Jet 3 page", JetHeader(1, 2048)), FileFormat::Unknown, "unknown"},
      {file("later jet", JetHeader(3, 4096)), FileFormat::Jet4, "Jet 4.0"},
      {file("wrong signature", JetHeader(0, 4096).replace(1, 1, 1, '\0')), FileFormat::Unknown, "unknown"},
      {Default(), FileFormat::Document, "document"},
      {ForeignSqlite(dir), FileFormat::ForeignSqlite, "SQLite"},
      {file("sqlite header cut", test::ReadFile(Default()).substr(0, 99)), FileFormat::Unknown, "unknown"},
      {dir.str("none"), FileFormat::Missing, "missing"},
      {dir.str(), FileFormat::Missing, "missing"},  // a directory
  };
  for (const auto& [path, format, name] : cases) {
    EXPECT_EQ(DetectFormat(path), format) << path;
    EXPECT_STREQ(FormatName(format), name) << path;
  }
  const std::string locked = file("locked", JetHeader(1, 4096));
  ::chmod(locked.c_str(), 0);
  EXPECT_TRUE(test::AsUnprivileged(dir.path(), [&] {
    return DetectFormat(locked) == FileFormat::Unreadable &&
           ErrorOf([&] { OpenTableSource(locked); }) == err::PermissionDenied;
  }));
}

TEST(OpenTableSource, HandsEachKindToItsReaderAndRefusesTheRest) {
  test::TempDir dir;
  test::WriteFile(dir.path() / "zeros", std::string(8192, '\0'));
  test::WriteFile(dir.path() / "jet4", JetHeader(1, 3 * 4096));  // a header and nothing behind it
  const std::tuple<std::string, int16_t, std::string> cases[] = {  // path, error, first table
      {Default(), 0, "Config"},
      {ForeignSqlite(dir), 0, "Zeta"},
      {(kSamples / "testV1997.mdb").string(), 0, "MSysObjects"},
      {dir.str("zeros"), err::NotADatabase, ""},
      {dir.str("jet4"), err::NotADatabase, ""},
      {dir.str("none"), err::FileNotFound, ""},
  };
  for (const auto& [path, error, first] : cases) {
    if (!fs::exists(path) && error == 0) continue;  // the Jet samples live beside the project
    std::unique_ptr<TableSource> src;
    EXPECT_EQ(ErrorOf([&] { src = OpenTableSource(path); }), error) << path;
    EXPECT_EQ(src ? src->TableNames().at(0) : "", first) << path;
  }
  EXPECT_EQ(ErrorOf([&] { OpenSqliteSource(dir.str("zeros")); }), err::NotADatabase);
}

TEST(SqliteSource, ReadsTablesInCreationOrderAndLeavesTheFileAsItWas) {
  test::TempDir dir;
  const std::string path = ForeignSqlite(dir), before = test::ReadFile(path);
  const auto src = OpenSqliteSource(path);
  EXPECT_EQ(src->TableNames(), (std::vector<std::string>{"Zeta", "Alpha"}));
  const SourceTable t = src->ReadTable("zeta");
  EXPECT_EQ(t.name, "Zeta");
  EXPECT_EQ(t.rows, (std::vector<std::vector<Value>>{{3, nullptr, nullptr, -0.125},
                                                     {7, "seven", Value(Value::Bytes{0x00, 0xFF}), 1.5}}));
  for (const char* gone : {"sqlite_sequence", "Dropped"})
    EXPECT_EQ(ErrorOf([&] { src->ReadTable(gone); }), err::TableNotFound) << gone;
  EXPECT_EQ(test::ReadFile(path), before);

  // The shipped template, as the table store sees it: every table with its columns and rows.
  const auto tmpl = OpenSqliteSource(Default());
  EXPECT_EQ(tmpl->TableNames(), Database::Open(Default(), {.readOnly = true}).TableNames());
  const auto count = [](const std::string& of) { return test::Peek(Default(), "SELECT count(*) FROM " + of); };
  for (const auto& n : tmpl->TableNames()) {
    const SourceTable table = tmpl->ReadTable(n);
    EXPECT_EQ(std::to_string(table.rows.size()), count(n)) << n;
    EXPECT_EQ(std::to_string(table.columns.size()), count("pragma_table_info('" + n + "')")) << n;
  }
}

}  // namespace
}  // namespace r6183
