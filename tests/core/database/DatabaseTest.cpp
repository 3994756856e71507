#include "database/Database.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "DbTestSupport.h"
#include "database/Recordset.h"

namespace r6183 {
namespace {

using test::ErrorOf;
using test::MakeDb;
using test::Peek;

class DatabaseTest : public ::testing::Test {
 protected:
  std::string Sample() {
    return MakeDb(dir.str("sample.db"),
                  "CREATE TABLE Zeta (a SMALLINT);"
                  "CREATE TABLE Alpha (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT(20));"
                  "CREATE VIEW AlphaNames AS SELECT name FROM Alpha;"
                  "CREATE TABLE Mid (x TEXT);"
                  "INSERT INTO Alpha (name) VALUES ('one'), ('two');");
  }
  test::TempDir dir;
};

TEST_F(DatabaseTest, OpenRefusesWhatIsNoDatabase) {
  test::WriteFile(dir.path() / "text.mdb", std::string(4096, 'x'));
  test::WriteFile(dir.path() / "empty.mdb", "");
  std::filesystem::create_directory(dir.path() / "folder");
  const std::pair<std::string, int16_t> cases[] = {
      {dir.str("missing.mdb"), err::CannotFindFile},
      {dir.str("text.mdb"), err::NotADatabase},
      {dir.str("empty.mdb"), err::NotADatabase},
      {dir.str("folder"), err::CannotFindFile},
  };
  for (const auto& [path, number] : cases) {
    EXPECT_EQ(ErrorOf([&] { Database::Open(path); }), number) << path;
    EXPECT_EQ(ErrorOf([&] { Database::Open(path, {.readOnly = true}); }), number) << path;
  }
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "missing.mdb"));
}

TEST_F(DatabaseTest, TableNamesInCreationOrderWithoutInternalTables) {
  auto db = Database::Open(Sample());
  EXPECT_EQ(db.TableNames(), (std::vector<std::string>{"Zeta", "Alpha", "Mid"}));
  EXPECT_TRUE(db.HasTable("alpha"));
  EXPECT_TRUE(db.HasTable("MID"));
  EXPECT_FALSE(db.HasTable("AlphaNames"));  // a view
  EXPECT_FALSE(db.HasTable("sqlite_sequence"));
}

TEST_F(DatabaseTest, ExecuteCountsChangedRows) {
  auto db = Database::Open(Sample());
  EXPECT_EQ(db.Execute("INSERT INTO Zeta (a) VALUES (?), (?), (?)", {1, 2, Value()}), 3);
  EXPECT_EQ(db.Execute("UPDATE Zeta SET a = ? WHERE a IS NOT NULL", {7}), 2);
  EXPECT_EQ(db.Execute("SELECT * FROM Zeta"), 0);
  EXPECT_EQ(db.Execute("CREATE TABLE Extra (q TEXT)"), 0);
  EXPECT_EQ(db.Execute("DELETE FROM Zeta WHERE a = 99"), 0);
  EXPECT_EQ(db.Execute("DELETE FROM Zeta;  -- all\n"), 3);
  EXPECT_EQ(db.Execute("INSERT INTO Mid (x) VALUES (?)", {Value(Value::Bytes{})}), 1);
  EXPECT_EQ(Peek(db.Path(), "SELECT typeof(x) FROM Mid"), "blob");
}

TEST_F(DatabaseTest, ExecuteErrors) {
  auto db = Database::Open(Sample());
  const std::pair<const char*, int16_t> cases[] = {
      {"DELETE FROM Zeta; DELETE FROM Alpha", err::CharactersAfterStatement},
      {"DELETE FROM Nowhere", err::TableNotFound},
      {"DELEET FROM Zeta", err::SyntaxError},
      {"INSERT INTO Zeta (a) VALUES (", err::SyntaxError},
  };
  for (const auto& [sql, number] : cases) EXPECT_EQ(ErrorOf([&] { db.Execute(sql); }), number) << sql;
  EXPECT_EQ(Peek(db.Path(), "SELECT count(*) FROM Alpha"), "2");
}

TEST_F(DatabaseTest, TransactionsCommitAndRollBack) {
  auto db = Database::Open(Sample());
  db.BeginTrans();
  db.Execute("INSERT INTO Zeta (a) VALUES (1)");
  db.Rollback();
  EXPECT_EQ(Peek(db.Path(), "SELECT count(*) FROM Zeta"), "0");
  db.BeginTrans();
  db.Execute("INSERT INTO Zeta (a) VALUES (2)");
  db.CommitTrans();
  EXPECT_EQ(Peek(db.Path(), "SELECT a FROM Zeta"), "2");
}

TEST_F(DatabaseTest, ReadOnlyOpenRefusesWrites) {
  auto db = Database::Open(Sample(), {.readOnly = true});
  EXPECT_EQ(ErrorOf([&] { db.Execute("DELETE FROM Alpha"); }), err::ReadOnlyObject);
  auto rs = db.OpenRecordset("Alpha");
  rs.Edit();
  rs["name"] = "changed";
  EXPECT_EQ(ErrorOf([&] { rs.Update(); }), err::ReadOnlyObject);
  EXPECT_EQ(Peek(db.Path(), "SELECT name FROM Alpha WHERE id = 1"), "one");
}

TEST_F(DatabaseTest, ExclusiveOpenKeepsOthersOut) {
  const auto path = Sample();
  auto db = Database::Open(path, {.exclusive = true});
  EXPECT_EQ(ErrorOf([&] { Database::Open(path); }), err::FileInUse);
  // the holder itself carries on
  EXPECT_EQ(db.Execute("INSERT INTO Zeta (a) VALUES (1)"), 1);
  db.Close();
  auto again = Database::Open(path);
  EXPECT_EQ(again.OpenRecordset("Zeta").RecordCount(), 1);
}

TEST_F(DatabaseTest, RecordsetsOutliveMoveAndClose) {
  Database db = Database::Open(Sample());
  auto rs = db.OpenRecordset("Alpha");
  Database moved = std::move(db);
  EXPECT_FALSE(db.IsOpen());  // NOLINT(bugprone-use-after-move): the moved-from state is the point
  moved.Close();
  EXPECT_FALSE(moved.IsOpen());
  EXPECT_EQ(moved.Path(), "");
  EXPECT_EQ(ErrorOf([&] { moved.OpenRecordset("Alpha"); }), err::ObjectInvalid);
  EXPECT_EQ(ErrorOf([&] { moved.Execute("DELETE FROM Alpha"); }), err::ObjectInvalid);

  rs.MoveLast();
  rs.Edit();
  rs["name"] = "last";
  rs.Update();
  EXPECT_EQ(Peek(dir.str("sample.db"), "SELECT name FROM Alpha WHERE id = 2"), "last");
}

TEST_F(DatabaseTest, OpenRecordsetNamesAndStatements) {
  auto db = Database::Open(Sample());
  struct Case {
    const char* text;
    int16_t error;
    RecordsetType type;
    int64_t count;
  };
  const Case cases[] = {
      {"alpha", 0, RecordsetType::Table, 2},
      {"[Alpha]", 0, RecordsetType::Table, 2},
      {"  ALPHA ", 0, RecordsetType::Table, 2},
      {"AlphaNames", 0, RecordsetType::Dynaset, 2},
      {"select * from Alpha where id = 2", 0, RecordsetType::Dynaset, 1},
      {"Nowhere", err::TableNotFound, RecordsetType::Table, 0},
      {"[No where]", err::TableNotFound, RecordsetType::Table, 0},
      {"select * from Nowhere", err::TableNotFound, RecordsetType::Table, 0},
      {"select * form Alpha", err::SyntaxError, RecordsetType::Table, 0},
  };
  for (const auto& c : cases) {
    Recordset rs;
    EXPECT_EQ(ErrorOf([&] { rs = db.OpenRecordset(c.text); }), c.error) << c.text;
    if (c.error != 0) continue;
    EXPECT_EQ(rs.Type(), c.type) << c.text;
    EXPECT_EQ(rs.RecordCount(), c.count) << c.text;
  }
  EXPECT_EQ(db.OpenRecordset("alpha").Name(), "Alpha");
}

TEST_F(DatabaseTest, ShippedTemplateIsADocument) {
  const auto path = dir.str("DEFAULT");
  std::filesystem::copy_file(test::StagedAppDir() / "DEFAULT", path);
  auto db = Database::Open(path, {.readOnly = true});
  EXPECT_EQ(db.ApplicationId(), kDocumentApplicationId);
  EXPECT_EQ(db.TableNames().front(), "Config");

  auto clid = db.OpenRecordset("CLID");
  EXPECT_EQ(clid.RecordCount(), 96);
  EXPECT_EQ(clid["clid_station"].Type(), FieldType::Integer);
  EXPECT_EQ(clid["ARCHNUM"].Type(), FieldType::Text);
  EXPECT_EQ(clid["archnum"].Size(), 10);
  EXPECT_EQ(clid["clid_station"].Number(), 1);
  clid.MoveLast();
  EXPECT_EQ(clid["clid_station"].Number(), 96);

  auto sample = Database::Open(Sample());
  EXPECT_EQ(sample.ApplicationId(), 0);
}

}  // namespace
}  // namespace r6183
