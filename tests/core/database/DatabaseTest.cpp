#include "database/Database.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "DbTestSupport.h"
#include "database/Recordset.h"

namespace r6183 {
namespace {

using test::Calls;
using test::ErrorOf;
using test::Peek;

class DatabaseTest : public ::testing::Test {
 protected:
  test::TempDir dir;
  const std::string path = test::MakeDb(
      dir.str("sample.db"),
      "CREATE TABLE Zeta (a SMALLINT); CREATE TABLE Alpha (id INTEGER PRIMARY KEY AUTOINCREMENT, name TEXT);"
      "CREATE VIEW AlphaNames AS SELECT name FROM Alpha; CREATE TABLE Mid (x TEXT);"
      "INSERT INTO Alpha (name) VALUES ('one'), ('two');");
};

TEST_F(DatabaseTest, OpenRefusesWhatIsNoDatabaseAndCreatesNothing) {
  test::WriteFile(dir.path() / "text.mdb", std::string(4096, 'x'));
  test::WriteFile(dir.path() / "empty.mdb", "");
  const std::pair<std::string, int16_t> cases[] = {
      {"missing.mdb", err::CannotFindFile}, {"text.mdb", err::NotADatabase},
      {"empty.mdb", err::NotADatabase},     {"", err::CannotFindFile},  // the folder
  };
  for (const auto& [name, number] : cases)
    EXPECT_EQ(ErrorOf([&] { Database::Open(dir.str(name)); }), number) << name;
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "missing.mdb"));
}

TEST_F(DatabaseTest, TablesAndStatementsByName) {
  auto db = Database::Open(path);
  EXPECT_EQ(db.TableNames(), (std::vector<std::string>{"Zeta", "Alpha", "Mid"}));  // no view, no internals
  EXPECT_TRUE(db.HasTable("MID"));
  EXPECT_FALSE(db.HasTable("AlphaNames"));
  EXPECT_EQ(db.OpenRecordset("alpha").Name(), "Alpha");
  const std::tuple<const char*, RecordsetType, int64_t> cases[] = {
      {"  [ALPHA] ", RecordsetType::Table, 2}, {"AlphaNames", RecordsetType::Dynaset, 2},
      {"select * from Alpha where id = 2", RecordsetType::Dynaset, 1}};
  for (const auto& [text, type, count] : cases) {
    auto rs = db.OpenRecordset(text);
    EXPECT_EQ(std::pair(rs.Type(), rs.RecordCount()), std::pair(type, count)) << text;
  }
  for (const char* text : {"[No where]", "select * from Nowhere"})
    EXPECT_EQ(ErrorOf([&] { db.OpenRecordset(text); }), err::TableNotFound) << text;
  EXPECT_EQ(db.ApplicationId(), 0);
  const auto shipped = (test::StagedAppDir() / "DEFAULT").string();
  EXPECT_EQ(Database::Open(shipped, {.readOnly = true}).ApplicationId(), kDocumentApplicationId);
}

TEST_F(DatabaseTest, ExecuteCountsChangedRowsOrRaisesAndTransactionsRollBack) {
  auto db = Database::Open(path);
  EXPECT_EQ(db.Execute("INSERT INTO Zeta (a) VALUES (?), (?), (?)", {1, 2, Value()}), 3);
  EXPECT_EQ(db.Execute("UPDATE Zeta SET a = ? WHERE a IS NOT NULL", {7}), 2);
  EXPECT_EQ(db.Execute("SELECT * FROM Zeta"), 0);
  EXPECT_EQ(db.Execute("DELETE FROM Zeta;  -- all\n"), 3);
  EXPECT_EQ(db.Execute("INSERT INTO Mid (x) VALUES (?)", {Value(Value::Bytes{})}), 1);
  EXPECT_EQ(Peek(path, "SELECT typeof(x) FROM Mid"), "blob");
  const std::pair<const char*, int16_t> errors[] = {
      {"DELETE FROM Mid; DELETE FROM Alpha", err::CharactersAfterStatement},
      {"DELETE FROM Nowhere", err::TableNotFound},
      {"DELEET FROM Zeta", err::SyntaxError},
      {"INSERT INTO Zeta (a) VALUES (", err::SyntaxError},
  };
  for (const auto& [sql, number] : errors) EXPECT_EQ(ErrorOf([&] { db.Execute(sql); }), number) << sql;
  EXPECT_EQ(Peek(path, "SELECT count(*) FROM Mid"), "1");

  for (bool commit : {false, true}) {
    db.BeginTrans();
    db.Execute("INSERT INTO Zeta (a) VALUES (?)", {commit});
    commit ? db.CommitTrans() : db.Rollback();
  }
  EXPECT_EQ(Peek(path, "SELECT group_concat(a) FROM Zeta"), "1");
}

TEST_F(DatabaseTest, ReadOnlyAndExclusiveOpens) {
  {
    auto readOnly = Database::Open(path, {.readOnly = true});
    auto rs = readOnly.OpenRecordset("Alpha");
    rs.Edit();
    rs["name"] = "changed";
    EXPECT_EQ(ErrorOf([&] { rs.Update(); }), err::ReadOnlyObject);
  }
  auto db = Database::Open(path, {.exclusive = true});
  SQLite::Database other(path, SQLite::OPEN_READONLY);  // gives up at once when locked out
  EXPECT_THROW(other.exec("SELECT count(*) FROM Alpha"), SQLite::Exception);
  db.Execute("UPDATE Alpha SET name = 'mine' WHERE id = 1");  // the holder itself carries on
  db.Close();
  EXPECT_EQ(other.execAndGet("SELECT group_concat(name) FROM Alpha").getString(), "mine,two");
}

TEST_F(DatabaseTest, RecordsetsOutliveTheirDatabase) {
  auto db = Database::Open(path);
  auto rs = db.OpenRecordset("Alpha");
  db.Close();
  for (const auto& f : Calls{[&] { db.OpenRecordset("Alpha"); }, [&] { db.Execute("DELETE FROM Alpha"); }})
    EXPECT_EQ(ErrorOf(f), err::ObjectInvalid);
  rs.MoveLast();
  rs.Edit();
  rs["name"] = "last";
  rs.Update();
  EXPECT_EQ(Peek(path, "SELECT name FROM Alpha WHERE id = 2"), "last");
  rs.Close();
  EXPECT_EQ(ErrorOf([&] { rs.MoveNext(); }), err::ObjectInvalid);
}

}  // namespace
}  // namespace r6183
