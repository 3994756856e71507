#include "database/Recordset.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "DbTestSupport.h"
#include "database/Database.h"
#include "shell/Conversions.h"

namespace r6183 {
namespace {

using test::ErrorOf;
using test::Peek;

class RecordsetTest : public ::testing::Test {
 protected:
  RecordsetTest() {
    path = test::MakeDb(dir.str("rs.db"),
                        "CREATE TABLE Item ("
                        "  id SMALLINT, name TEXT(5) DEFAULT 'x', flag BOOLEAN NOT NULL DEFAULT 0,"
                        "  b BYTE, n INTEGER DEFAULT (6 * 7), r REAL, memo TEXT, bin BLOB);"
                        "INSERT INTO Item (id, name, flag, n) VALUES"
                        "  (1, 'a', 1, 10), (2, 'b', 0, 20), (3, 'c', 1, 30), (4, 'd', 0, 40);"
                        "CREATE TABLE Empty (v SMALLINT);"
                        "CREATE TABLE Tag (item SMALLINT, label TEXT(10));"
                        "INSERT INTO Tag VALUES (1, 'red'), (3, 'blue');"
                        "CREATE TABLE Preset (s SMALLINT DEFAULT '5', f BOOLEAN DEFAULT 'True',"
                        "  stamp TEXT DEFAULT CURRENT_TIMESTAMP, plain TEXT(2));");
    db = Database::Open(path);
  }

  // ids of the rows from the current one to the end
  static std::vector<int64_t> IdsFromHere(Recordset& rs) {
    std::vector<int64_t> ids;
    while (!rs.IsEOF()) {
      ids.push_back(rs["id"].Number());
      rs.MoveNext();
    }
    return ids;
  }

  test::TempDir dir;
  std::string path;
  Database db;
};

TEST_F(RecordsetTest, FieldTypesFromDeclaredTypes) {
  auto rs = db.OpenRecordset("Item");
  struct Case {
    const char* name;
    FieldType type;
    int size;
  };
  const Case cases[] = {
      {"id", FieldType::Integer, 0}, {"name", FieldType::Text, 5}, {"flag", FieldType::Boolean, 0},
      {"b", FieldType::Byte, 0},     {"n", FieldType::Long, 0},    {"r", FieldType::Real, 0},
      {"memo", FieldType::Memo, 0},  {"bin", FieldType::Binary, 0},
  };
  ASSERT_EQ(rs.FieldCount(), 8);  // no rowid among the fields
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(rs.FieldAt(i).name, cases[i].name);
    EXPECT_EQ(rs.FieldAt(i).type, cases[i].type) << cases[i].name;
    EXPECT_EQ(rs.FieldAt(i).size, cases[i].size) << cases[i].name;
  }
}

TEST_F(RecordsetTest, FieldNamesIgnoreCase) {
  auto rs = db.OpenRecordset("Item");
  EXPECT_EQ(rs.FieldIndex("NAME"), 1);
  EXPECT_EQ(rs.FieldIndex("nope"), -1);
  EXPECT_EQ(rs["Name"].Text(), "a");
  EXPECT_EQ(rs["FLAG"].Name(), "flag");
  EXPECT_EQ(ErrorOf([&] { rs["nope"]; }), err::ItemNotFound);
  EXPECT_EQ(ErrorOf([&] { rs[8]; }), err::ItemNotFound);
  EXPECT_EQ(ErrorOf([&] { rs[-1]; }), err::ItemNotFound);
  EXPECT_EQ(ErrorOf([&] { rs.FindFirst([](const RowView& r) { return r["nope"].IsNull(); }); }),
            err::ItemNotFound);
}

TEST_F(RecordsetTest, WalkingForwardAndBack) {
  auto rs = db.OpenRecordset("Item");
  EXPECT_FALSE(rs.IsBOF());
  EXPECT_EQ(rs.AbsolutePosition(), 0);
  EXPECT_EQ(rs.RecordCount(), 4);
  EXPECT_EQ(IdsFromHere(rs), (std::vector<int64_t>{1, 2, 3, 4}));
  EXPECT_TRUE(rs.IsEOF());
  EXPECT_EQ(rs.AbsolutePosition(), -1);
  EXPECT_EQ(ErrorOf([&] { rs["id"].GetValue(); }), err::NoCurrentRecord);
  EXPECT_EQ(ErrorOf([&] { rs.GetBookmark(); }), err::NoCurrentRecord);
  EXPECT_EQ(ErrorOf([&] { rs.MoveNext(); }), err::NoCurrentRecord);

  rs.MovePrevious();  // from EOF to the last row
  EXPECT_EQ(rs["id"].Number(), 4);
  rs.MoveFirst();
  rs.MovePrevious();
  EXPECT_TRUE(rs.IsBOF());
  EXPECT_FALSE(rs.IsEOF());
  EXPECT_EQ(ErrorOf([&] { rs.MovePrevious(); }), err::NoCurrentRecord);
  rs.MoveNext();  // from BOF to the first row
  EXPECT_EQ(rs["id"].Number(), 1);
  rs.MoveLast();
  EXPECT_EQ(rs.AbsolutePosition(), 3);
}

TEST_F(RecordsetTest, EmptySetIsBofAndEof) {
  auto rs = db.OpenRecordset("Empty");
  EXPECT_TRUE(rs.IsBOF());
  EXPECT_TRUE(rs.IsEOF());
  EXPECT_TRUE(TableEmpty(rs));
  EXPECT_EQ(rs.AbsolutePosition(), -1);
  const std::pair<const char*, std::function<void()>> moves[] = {
      {"MoveFirst", [&] { rs.MoveFirst(); }},       {"MoveLast", [&] { rs.MoveLast(); }},
      {"MoveNext", [&] { rs.MoveNext(); }},         {"MovePrevious", [&] { rs.MovePrevious(); }},
      {"read", [&] { rs["v"].GetValue(); }},        {"Edit", [&] { rs.Edit(); }},
      {"Delete", [&] { rs.Delete(); }},
  };
  for (const auto& [what, f] : moves) EXPECT_EQ(ErrorOf(f), err::NoCurrentRecord) << what;
  rs.FindFirst([](const RowView&) { return true; });
  EXPECT_TRUE(rs.NoMatch());
}

TEST_F(RecordsetTest, AbsolutePositionOutOfRange) {
  auto rs = db.OpenRecordset("Item");
  for (int64_t pos : {-1, 4, 100}) EXPECT_EQ(ErrorOf([&] { rs.SetAbsolutePosition(pos); }), err::InvalidProcedureCall);
  EXPECT_EQ(rs["id"].Number(), 1);  // stays
  rs.SetAbsolutePosition(2);
  EXPECT_EQ(rs["id"].Number(), 3);
}

TEST_F(RecordsetTest, FindWalksMatchesAndKeepsTheRowOnNoMatch) {
  auto rs = db.OpenRecordset("Item");
  const Predicate flagged = [](const RowView& r) { return IsTrue(r["FLAG"]); };
  std::vector<int64_t> found;
  for (rs.FindFirst(flagged); !rs.NoMatch(); rs.FindNext(flagged)) found.push_back(rs["id"].Number());
  EXPECT_EQ(found, (std::vector<int64_t>{1, 3}));
  EXPECT_EQ(rs["id"].Number(), 3);  // the last match stays current

  found.clear();
  for (rs.FindLast(flagged); !rs.NoMatch(); rs.FindPrevious(flagged)) found.push_back(rs["id"].Number());
  EXPECT_EQ(found, (std::vector<int64_t>{3, 1}));

  rs.SetAbsolutePosition(1);
  rs.FindFirst([](const RowView& r) { return r[0] == Value(99); });
  EXPECT_TRUE(rs.NoMatch());
  EXPECT_EQ(rs["id"].Number(), 2);

  rs.MoveLast();
  rs.MoveNext();  // EOF: nothing after it
  rs.FindNext(flagged);
  EXPECT_TRUE(rs.NoMatch());
  EXPECT_TRUE(rs.IsEOF());
  rs.FindPrevious(flagged);  // from EOF: the last match
  EXPECT_EQ(rs["id"].Number(), 3);
}

TEST_F(RecordsetTest, AddNewAppendsWithDefaultsAndKeepsTheRow) {
  auto rs = db.OpenRecordset("Item");
  rs.MoveNext();
  rs.AddNew();
  EXPECT_EQ(rs.GetEditMode(), EditMode::Add);
  EXPECT_EQ(rs["name"].GetValue(), Value("x"));
  EXPECT_EQ(rs["flag"].GetValue(), Value(0));
  EXPECT_EQ(rs["n"].GetValue(), Value(42));
  EXPECT_TRUE(rs["id"].GetValue().IsNull());
  rs["id"] = 5;
  rs.Update();

  EXPECT_EQ(rs.GetEditMode(), EditMode::None);
  EXPECT_EQ(rs["id"].Number(), 2);  // still the row before AddNew
  EXPECT_EQ(rs.RecordCount(), 5);
  rs.SetBookmark(rs.LastModified());
  EXPECT_EQ(rs["id"].Number(), 5);
  EXPECT_EQ(rs.AbsolutePosition(), 4);
  EXPECT_EQ(Peek(path, "SELECT name || '/' || flag || '/' || n FROM Item WHERE id = 5"), "x/0/42");
  EXPECT_EQ(Peek(path, "SELECT typeof(b) FROM Item WHERE id = 5"), "null");
}

TEST_F(RecordsetTest, DefaultsTakeTheFieldType) {
  auto rs = db.OpenRecordset("Preset");
  rs.AddNew();
  EXPECT_EQ(rs["s"].GetValue(), Value(5));
  EXPECT_EQ(rs["f"].GetValue(), Value(1));
  EXPECT_EQ(rs["stamp"].Text().size(), 19u);  // evaluated, "YYYY-MM-DD HH:MM:SS"
  EXPECT_TRUE(rs["plain"].GetValue().IsNull());
  rs.Update();
  rs.MoveFirst();
  EXPECT_EQ(rs["s"].GetValue(), Value(5));
}

TEST_F(RecordsetTest, AddNewOnAnEmptySet) {
  auto rs = db.OpenRecordset("Empty");
  rs.AddNew();
  rs["v"] = "7";
  rs.Update();
  EXPECT_EQ(rs.RecordCount(), 1);
  EXPECT_TRUE(rs.IsEOF());
  rs.MoveFirst();
  EXPECT_EQ(rs["v"].GetValue(), Value(7));
}

TEST_F(RecordsetTest, EditWritesOnlyTheChangedFields) {
  auto rs = db.OpenRecordset("Item");
  rs.MoveNext();
  rs.Edit();
  EXPECT_EQ(rs.GetEditMode(), EditMode::InProgress);
  rs["name"] = "bb";
  EXPECT_EQ(rs["name"].Text(), "bb");  // the buffer while editing
  db.Execute("UPDATE Item SET n = 99 WHERE id = 2");  // someone else, meanwhile
  rs.Update();
  EXPECT_EQ(rs["name"].Text(), "bb");
  EXPECT_EQ(rs["n"].Number(), 99);  // the row is read back after the write
  EXPECT_EQ(Peek(path, "SELECT name || n FROM Item WHERE id = 2"), "bb99");
  EXPECT_EQ(rs.LastModified(), rs.GetBookmark());
}

TEST_F(RecordsetTest, EditStateErrorsAndDrops) {
  auto rs = db.OpenRecordset("Item");
  EXPECT_EQ(ErrorOf([&] { rs.Update(); }), err::UpdateWithoutEdit);
  EXPECT_EQ(ErrorOf([&] { rs.CancelUpdate(); }), err::UpdateWithoutEdit);
  EXPECT_EQ(ErrorOf([&] { rs["name"] = "q"; }), err::UpdateWithoutEdit);
  EXPECT_EQ(ErrorOf([&] { rs.LastModified(); }), err::NoCurrentRecord);

  rs.Edit();
  rs["name"] = "q";
  rs.CancelUpdate();
  EXPECT_EQ(rs["name"].Text(), "a");

  rs.Edit();
  rs["name"] = "q";
  rs.MoveNext();  // drops the edit
  EXPECT_EQ(rs.GetEditMode(), EditMode::None);
  EXPECT_EQ(ErrorOf([&] { rs.Update(); }), err::UpdateWithoutEdit);
  EXPECT_EQ(Peek(path, "SELECT name FROM Item WHERE id = 1"), "a");
}

TEST_F(RecordsetTest, ALockedFileKeepsTheEditForARetry) {
  db.Handle().setBusyTimeout(0);
  auto rs = db.OpenRecordset("Item");
  SQLite::Database other(path, SQLite::OPEN_READWRITE);
  for (bool adding : {false, true}) {
    SCOPED_TRACE(adding ? "AddNew" : "Edit");
    if (adding) rs.AddNew();
    else rs.Edit();
    rs["name"] = "held";
    other.exec("BEGIN IMMEDIATE");
    const int16_t e = ErrorOf([&] { rs.Update(); });
    EXPECT_TRUE(IsLockError(e)) << e;
    EXPECT_EQ(rs.GetEditMode(), adding ? EditMode::Add : EditMode::InProgress);
    EXPECT_EQ(rs["name"].Text(), "held");
    other.exec("COMMIT");
    rs.Update();
  }
  EXPECT_EQ(Peek(path, "SELECT count(*) FROM Item WHERE name = 'held'"), "2");
  EXPECT_EQ(rs.RecordCount(), 5);
}

TEST_F(RecordsetTest, DeleteRemovesAtOnce) {
  auto rs = db.OpenRecordset("Item");
  rs.MoveNext();
  auto other = rs.Clone();
  other.SetBookmark(rs.GetBookmark());
  rs.Delete();
  EXPECT_EQ(Peek(path, "SELECT count(*) FROM Item WHERE id = 2"), "0");
  EXPECT_EQ(rs.RecordCount(), 3);
  EXPECT_EQ(ErrorOf([&] { rs["id"].GetValue(); }), err::RecordDeleted);
  EXPECT_EQ(ErrorOf([&] { other["id"].GetValue(); }), err::RecordDeleted);
  EXPECT_EQ(ErrorOf([&] { rs.Delete(); }), err::RecordDeleted);
  EXPECT_EQ(rs.AbsolutePosition(), -1);
  rs.MoveNext();
  EXPECT_EQ(rs["id"].Number(), 3);
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  other.MovePrevious();
  EXPECT_EQ(other["id"].Number(), 1);

  rs.MoveFirst();
  EXPECT_EQ(IdsFromHere(rs), (std::vector<int64_t>{1, 3, 4}));
}

TEST_F(RecordsetTest, DeletingEveryRowLeavesBofAndEof) {
  auto rs = db.OpenRecordset("Item");
  while (!rs.IsEOF()) {
    rs.Delete();
    rs.MoveNext();
  }
  EXPECT_TRUE(rs.IsBOF());
  EXPECT_EQ(rs.RecordCount(), 0);
  EXPECT_EQ(Peek(path, "SELECT count(*) FROM Item"), "0");
}

TEST_F(RecordsetTest, ClonesShareRowsNotPositions) {
  auto rs = db.OpenRecordset("Item");
  rs.MoveLast();
  const auto mark = rs.GetBookmark();
  auto copy = rs.Clone();
  EXPECT_FALSE(copy.IsBOF());
  EXPECT_FALSE(copy.IsEOF());
  EXPECT_EQ(ErrorOf([&] { copy["id"].GetValue(); }), err::NoCurrentRecord);
  copy.SetBookmark(mark);
  EXPECT_EQ(copy["id"].Number(), 4);

  copy.AddNew();
  copy["id"] = 9;
  copy.Update();
  EXPECT_EQ(rs.RecordCount(), 5);
  rs.SetBookmark(copy.LastModified());
  EXPECT_EQ(rs["id"].Number(), 9);

  copy.MoveFirst();
  copy.Edit();
  copy["name"] = "z";
  copy.Update();
  rs.MoveFirst();
  EXPECT_EQ(rs["name"].Text(), "z");

  auto fresh = rs.Clone();
  fresh.MoveNext();  // a fresh clone moves on from before the first row
  EXPECT_EQ(fresh["id"].Number(), 1);
  EXPECT_EQ(ErrorOf([&] { rs.SetBookmark(12345); }), err::InvalidBookmark);
}

TEST_F(RecordsetTest, RequeryReadsAgain) {
  auto rs = db.OpenRecordset("Item");
  auto clone = rs.Clone();
  clone.MoveLast();
  const auto oldMark = clone.GetBookmark();
  rs.MoveLast();
  db.Execute("DELETE FROM Item WHERE id = 1");
  db.Execute("INSERT INTO Item (id) VALUES (8)");
  EXPECT_EQ(rs.RecordCount(), 4);  // rows were read at open
  rs.Requery();
  EXPECT_EQ(rs.AbsolutePosition(), 0);
  EXPECT_EQ(IdsFromHere(rs), (std::vector<int64_t>{2, 3, 4, 8}));
  EXPECT_EQ(ErrorOf([&] { clone["id"].GetValue(); }), err::NoCurrentRecord);
  EXPECT_EQ(ErrorOf([&] { clone.SetBookmark(oldMark); }), err::InvalidBookmark);
}

struct SetCase {
  const char* field;
  Value in;
  Value stored;  // when error is 0
  int16_t error;
};

TEST_F(RecordsetTest, SetValueConvertsToTheFieldType) {
  const SetCase cases[] = {
      {"flag", Value("True"), Value(1), 0},       {"flag", Value(-1), Value(1), 0},
      {"flag", Value("false"), Value(0), 0},      {"flag", Value(0.5), Value(1), 0},
      {"flag", Value("abc"), {}, err::DataTypeConversion},
      {"b", Value(255), Value(255), 0},           {"b", Value(256), {}, err::Overflow},
      {"b", Value(-1), {}, err::Overflow},        {"b", Value("x"), {}, err::DataTypeConversion},
      {"id", Value(2.5), Value(2), 0},            {"id", Value(" 12 "), Value(12), 0},
      {"id", Value(40000), {}, err::Overflow},    {"id", Value("12a"), {}, err::DataTypeConversion},
      {"n", Value("70000"), Value(70000), 0},     {"n", Value(3e9), {}, err::Overflow},
      {"r", Value("1.5"), Value(1.5), 0},         {"r", Value(2), Value(2.0), 0},
      {"r", Value("x"), {}, err::DataTypeConversion},
      {"name", Value(12), Value("12"), 0},        {"name", Value("abcde"), Value("abcde"), 0},
      {"name", Value("abcdef"), {}, err::FieldTooSmall},
      {"name", Value("\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F\xC3\xA9"), Value("\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F\xC3\xA9"), 0},
      {"memo", Value(std::string(1000, 'm')), Value(std::string(1000, 'm')), 0},
      {"memo", Value(2.5), Value("2.5"), 0},
      {"bin", Value(Value::Bytes{0, 1, 2}), Value(Value::Bytes{0, 1, 2}), 0},
      {"id", Value(), Value(), 0},                {"name", Value(), Value(), 0},
  };
  auto rs = db.OpenRecordset("Item");
  for (const auto& c : cases) {
    rs.Edit();
    const int16_t e = ErrorOf([&] { rs[c.field] = c.in; });
    EXPECT_EQ(e, c.error) << c.field << " <- " << TextOf(c.in);
    if (e == 0 && c.error == 0) {
      EXPECT_EQ(rs[c.field].GetValue(), c.stored) << c.field << " <- " << TextOf(c.in);
      rs.Update();
      EXPECT_EQ(rs[c.field].GetValue(), c.stored) << "read back: " << c.field;
    } else {
      rs.CancelUpdate();
    }
  }
}

TEST_F(RecordsetTest, FieldReadings) {
  auto rs = db.OpenRecordset("Item");
  rs.Edit();
  rs["memo"] = "9600/ARQ";
  rs["r"] = 2.5;
  rs.Update();
  EXPECT_EQ(rs["memo"].Number(), 9600);
  EXPECT_EQ(rs["r"].Number(), 2);  // rounded half to even
  EXPECT_EQ(rs["r"].Text(), "2.5");
  EXPECT_EQ(rs["b"].Text(), "");
  EXPECT_FALSE(rs["b"].Bool());
  EXPECT_EQ(rs["b"].Number(), 0);
  EXPECT_TRUE(rs["flag"].Bool());
}

TEST_F(RecordsetTest, SnapshotIsReadOnly) {
  auto rs = db.OpenRecordset("Item", RecordsetType::Snapshot);
  EXPECT_EQ(rs.Type(), RecordsetType::Snapshot);
  EXPECT_FALSE(rs.Updatable());
  EXPECT_EQ(rs.RecordCount(), 4);
  for (const auto& f : std::vector<std::function<void()>>{
           [&] { rs.Edit(); }, [&] { rs.AddNew(); }, [&] { rs.Delete(); }})
    EXPECT_EQ(ErrorOf(f), err::ReadOnlyObject);
  auto q = db.OpenRecordset("select * from Item", RecordsetType::Snapshot);
  EXPECT_FALSE(q.Updatable());
}

TEST_F(RecordsetTest, WhichStatementsGiveUpdatableRows) {
  const std::pair<const char*, bool> cases[] = {
      {"select * from Item", true},
      {"SELECT name, id FROM Item WHERE id > 1 ORDER BY id DESC", true},
      {"select i.name from Item i where i.id = 2", true},
      {"select i.name from Item as i", true},
      {"select * from [Item] where name = 'a, b' order by id, name limit 3", true},
      {"select * from Item where id in (select item from Tag group by item)", true},
      {"select * from Item;", true},
      {"select Item.name, Tag.label from Item join Tag on Tag.item = Item.id", false},
      {"select Item.name, Tag.label from Item, Tag where Tag.item = Item.id", false},
      {"select distinct name from Item", false},
      {"select flag, count(*) from Item group by flag", false},
      {"select max(id) from Item", false},
      {"select id from Item union select item from Tag", false},
      {"select * from Item natural join Tag", false},
      {"select * from (select * from Item)", false},
      {"with t as (select * from Item) select * from t", false},
  };
  for (const auto& [sql, updatable] : cases) {
    auto rs = db.OpenRecordset(sql);
    EXPECT_EQ(rs.Updatable(), updatable) << sql;
    EXPECT_EQ(rs.Type(), RecordsetType::Dynaset) << sql;
    if (!updatable) {
      EXPECT_EQ(ErrorOf([&] { rs.AddNew(); }), err::ReadOnlyObject) << sql;
    }
  }
}

TEST_F(RecordsetTest, UpdatableQueryWritesThroughTheTable) {
  auto rs = db.OpenRecordset("select name, id, n * 2 as twice from Item i where i.id >= 2 order by id desc");
  ASSERT_EQ(rs.FieldCount(), 3);  // the rowid stays hidden
  EXPECT_EQ(rs["id"].Number(), 4);
  EXPECT_EQ(rs["twice"].Number(), 80);
  EXPECT_EQ(rs["id"].Type(), FieldType::Integer);
  EXPECT_EQ(rs["name"].Size(), 5);

  rs.Edit();
  EXPECT_EQ(ErrorOf([&] { rs["twice"] = 1; }), err::FieldNotUpdatable);
  rs["name"] = "dd";
  rs.Update();
  EXPECT_EQ(Peek(path, "SELECT name FROM Item WHERE id = 4"), "dd");

  rs.AddNew();
  EXPECT_EQ(rs["name"].Text(), "x");
  rs["id"] = 6;
  rs.Update();
  EXPECT_EQ(rs.RecordCount(), 4);
  rs.SetBookmark(rs.LastModified());
  EXPECT_EQ(rs["id"].Number(), 6);
  EXPECT_EQ(Peek(path, "SELECT n FROM Item WHERE id = 6"), "42");  // default of a column outside the query

  rs.Delete();
  EXPECT_EQ(Peek(path, "SELECT count(*) FROM Item WHERE id = 6"), "0");
}

TEST_F(RecordsetTest, JoinRowsAreReadOnly) {
  auto rs = db.OpenRecordset(
      "select Item.name, Tag.label, Item.id from Item join Tag on Tag.item = Item.id order by Item.id");
  EXPECT_FALSE(rs.Updatable());
  ASSERT_EQ(rs.RecordCount(), 2);
  EXPECT_EQ(rs["label"].Text(), "red");
  EXPECT_EQ(rs["LABEL"].Type(), FieldType::Text);
  rs.MoveNext();
  EXPECT_EQ(rs["name"].Text(), "c");
  EXPECT_EQ(ErrorOf([&] { rs.Edit(); }), err::ReadOnlyObject);
  EXPECT_EQ(ErrorOf([&] { rs.Delete(); }), err::ReadOnlyObject);
}

TEST_F(RecordsetTest, ComputedColumnsTakeTheirValuesType) {
  auto rs = db.OpenRecordset("select count(*) as c, avg(n) as a, 'x' || name as t, null as z from Item");
  const std::pair<const char*, FieldType> cases[] = {
      {"c", FieldType::Long}, {"a", FieldType::Real}, {"t", FieldType::Memo}, {"z", FieldType::Memo}};
  for (const auto& [name, type] : cases) EXPECT_EQ(rs[name].Type(), type) << name;
  EXPECT_EQ(rs["c"].Number(), 4);
}

TEST_F(RecordsetTest, ClosedAndMovedRecordsets) {
  auto rs = db.OpenRecordset("Item");
  rs.MoveNext();
  Recordset moved = std::move(rs);
  EXPECT_EQ(moved["id"].Number(), 2);
  EXPECT_TRUE(moved.IsOpen());
  moved.Close();
  EXPECT_FALSE(moved.IsOpen());
  EXPECT_EQ(moved.Name(), "");
  EXPECT_EQ(ErrorOf([&] { moved.MoveNext(); }), err::ObjectInvalid);
  EXPECT_EQ(ErrorOf([&] { moved.RecordCount(); }), err::ObjectInvalid);
  EXPECT_FALSE(Recordset().IsOpen());
}

}  // namespace
}  // namespace r6183
