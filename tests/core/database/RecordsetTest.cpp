#include "database/Recordset.h"

#include <gtest/gtest.h>

#include <tuple>

#include "DbTestSupport.h"
#include "shell/Conversions.h"

namespace r6183 {
namespace {

using test::Calls;
using test::ErrorOf;
using test::Peek;
using Ids = std::vector<int64_t>;

class RecordsetTest : public ::testing::Test {
 protected:
  // ids from the current row to EOF
  static Ids Rest(Recordset& r) {
    Ids ids;
    for (; !r.IsEOF(); r.MoveNext()) ids.push_back(r["id"].Number());
    return ids;
  }

  test::TempDir dir;
  const std::string path = test::MakeDb(
      dir.str("rs.db"),
      "CREATE TABLE Item (id SMALLINT, name TEXT(5) DEFAULT 'x', flag BOOLEAN DEFAULT 'True', b BYTE DEFAULT"
      "  '5', n INTEGER DEFAULT (6 * 7), r REAL, memo TEXT DEFAULT CURRENT_TIMESTAMP, bin BLOB);"
      "INSERT INTO Item (id, name, flag, n) VALUES (1, 'a', 1, 10), (2, 'b', 0, 20), (3, 'c', 1, 30),"
      "  (4, 'd', 0, 40);"
      "CREATE TABLE Tag (item SMALLINT, label TEXT(10)); INSERT INTO Tag VALUES (1, 'red'), (3, 'blue');");
  Database db = Database::Open(path);
  Recordset rs = db.OpenRecordset("Item");
};

// Calls out of place raise and leave the set where it stands, past its last row.
TEST_F(RecordsetTest, PositionsAndTheErrorsOfCallsOutOfPlace) {
  EXPECT_EQ(rs.FieldCount(), 8);  // no rowid among the fields
  EXPECT_EQ(rs.FieldIndex("NAME"), 1);
  EXPECT_EQ(Rest(rs), (Ids{1, 2, 3, 4}));
  EXPECT_EQ(rs.AbsolutePosition(), -1);
  auto e = db.OpenRecordset("select * from Item where id > 9");
  EXPECT_TRUE(e.IsBOF() && e.IsEOF() && e.Clone().IsEOF() && TableEmpty(e));
  const std::pair<int16_t, Calls> raised[] = {
      {err::NoCurrentRecord,  // past the end, and anywhere on an empty set
       {[&] { rs["id"].GetValue(); }, [&] { rs.GetBookmark(); }, [&] { rs.MoveNext(); }, [&] { e.MoveFirst(); },
        [&] { e.MoveLast(); }, [&] { e.MoveNext(); }, [&] { e.MovePrevious(); }, [&] { e["id"].GetValue(); },
        [&] { e.Edit(); }}},
      {err::InvalidProcedureCall, {[&] { rs.SetAbsolutePosition(-1); }, [&] { rs.SetAbsolutePosition(4); }}},
      {err::ItemNotFound,
       {[&] { rs["nope"]; }, [&] { rs[8]; }, [&] { rs[-1]; },
        [&] { rs.FindFirst([](const RowView& r) { return r["nope"].IsNull(); }); }}},
  };
  for (const auto& [error, calls] : raised)
    for (std::size_t i = 0; i < calls.size(); ++i) EXPECT_EQ(ErrorOf(calls[i]), error) << error << " " << i;
  rs.MovePrevious();  // from EOF to the last row
  EXPECT_EQ(rs.AbsolutePosition(), 3);
  rs.MoveFirst();
  rs.MovePrevious();
  EXPECT_TRUE(rs.IsBOF() && !rs.IsEOF());
  EXPECT_EQ(ErrorOf([&] { rs.MovePrevious(); }), err::NoCurrentRecord);
  rs.MoveNext();  // from BOF to the first row
  EXPECT_EQ(rs["id"].Number(), 1);
  rs.SetAbsolutePosition(2);
  EXPECT_EQ(rs["id"].Number(), 3);
}

TEST_F(RecordsetTest, FindWalksMatchesAndKeepsTheRowOnNoMatch) {
  const Predicate flagged = [](const RowView& r) { return IsTrue(r["FLAG"]); };
  Ids found;
  for (rs.FindFirst(flagged); !rs.NoMatch(); rs.FindNext(flagged)) found.push_back(rs["id"].Number());
  for (rs.FindLast(flagged); !rs.NoMatch(); rs.FindPrevious(flagged)) found.push_back(rs["id"].Number());
  EXPECT_EQ(found, (Ids{1, 3, 3, 1}));
  EXPECT_EQ(rs["id"].Number(), 1);  // the last match, kept when the next search found none
  rs.MoveLast();
  rs.MoveNext();
  rs.FindNext(flagged);  // nothing after EOF
  EXPECT_TRUE(rs.NoMatch() && rs.IsEOF());
  rs.FindPrevious(flagged);
  EXPECT_EQ(rs["id"].Number(), 3);
}

// A clone shares the rows but starts without a current one.
TEST_F(RecordsetTest, AddNewAppendsWithTheDefaultsInTheFieldTypesAndKeepsTheRow) {
  rs.MoveNext();
  auto copy = rs.Clone();
  EXPECT_FALSE(copy.IsBOF() || copy.IsEOF());
  EXPECT_EQ(ErrorOf([&] { copy["id"].GetValue(); }), err::NoCurrentRecord);
  rs.AddNew();
  const std::pair<const char*, Value> defaults[] = {
      {"id", Value()}, {"name", Value("x")}, {"flag", Value(1)}, {"b", Value(5)}, {"n", Value(42)}};
  for (const auto& [field, value] : defaults) EXPECT_EQ(rs[field].GetValue(), value) << field;
  EXPECT_EQ(rs["memo"].Text().size(), 19u);  // evaluated: "YYYY-MM-DD HH:MM:SS"
  rs["id"] = 5;
  rs.Update();
  EXPECT_EQ(rs["id"].Number(), 2);  // still the row before AddNew
  copy.SetBookmark(rs.LastModified());
  EXPECT_EQ(copy.AbsolutePosition(), 4);
  EXPECT_EQ(Peek(path, "SELECT name || flag || b || n || typeof(r) FROM Item WHERE id = 5"), "x1542null");
}

TEST_F(RecordsetTest, EditUpdateAndCancelAndRetryWhenLocked) {
  for (const auto& f : Calls{[&] { rs.Update(); }, [&] { rs.CancelUpdate(); }, [&] { rs["name"] = "q"; }})
    EXPECT_EQ(ErrorOf(f), err::UpdateWithoutEdit);
  for (const auto& drop : Calls{[&] { rs.CancelUpdate(); }, [&] { rs.MoveNext(); }}) {
    rs.Edit();
    rs["name"] = "q";
    drop();
    EXPECT_EQ(rs.GetEditMode(), EditMode::None);
  }
  rs.Edit();
  rs["name"] = "bb";
  EXPECT_EQ(rs["name"].Text(), "bb");  // the buffer while editing
  db.Handle().setBusyTimeout(0);
  SQLite::Database other(path, SQLite::OPEN_READWRITE);
  other.exec("BEGIN; UPDATE Item SET n = 99 WHERE id = 2");  // someone else, meanwhile
  EXPECT_TRUE(IsLockError(ErrorOf([&] { rs.Update(); })));  // the edit stays for a retry
  other.exec("COMMIT");
  rs.Update();
  EXPECT_EQ(rs["n"].Number(), 99);  // only the changed field is written; the row is read back
  EXPECT_EQ(Peek(path, "SELECT group_concat(name || n) FROM Item WHERE id <= 2"), "a10,bb99");
  EXPECT_EQ(rs.LastModified(), rs.GetBookmark());
}

// Clones share the rows, and lose their row and bookmarks at a Requery.
TEST_F(RecordsetTest, DeleteRemovesTheRowAtOnceAndARequeryReadsTheTableAgain) {
  rs.MoveNext();
  const auto mark = rs.GetBookmark();
  auto other = rs.Clone();
  other.SetBookmark(mark);
  rs.Delete();
  EXPECT_EQ(Peek(path, "SELECT group_concat(id) FROM Item"), "1,3,4");
  EXPECT_EQ(rs.RecordCount(), 3);
  const Calls calls{[&] { rs["id"].Text(); }, [&] { other["id"].Text(); }, [&] { rs.Edit(); },
                    [&] { rs.SetBookmark(mark); }};
  for (std::size_t i = 0; i < calls.size(); ++i) EXPECT_EQ(ErrorOf(calls[i]), err::RecordDeleted) << i;
  rs.MoveNext();
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  rs.MovePrevious();  // past the deleted row
  EXPECT_EQ(rs["id"].Number(), 1);
  rs.FindFirst([](const RowView& r) { return r[0] == Value(2); });
  EXPECT_TRUE(rs.NoMatch());

  db.Execute("DELETE FROM Item WHERE id = 1");
  EXPECT_EQ(rs.RecordCount(), 3);  // rows were read at open
  rs.Requery();
  EXPECT_EQ(Rest(rs), (Ids{3, 4}));
  EXPECT_EQ(ErrorOf([&] { other["id"].GetValue(); }), err::NoCurrentRecord);
  EXPECT_EQ(ErrorOf([&] { other.SetBookmark(mark); }), err::InvalidBookmark);
}

// The fields' declared types decide the conversion; a failed one leaves the field as it was.
TEST_F(RecordsetTest, SetValueConvertsToTheDeclaredType) {
  const std::string umlauts = "\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F\xC3\xA9";  // 5 characters, 10 bytes
  const std::tuple<const char*, Value, Value, int16_t> cases[] = {
      {"flag", Value("True"), Value(1), 0},     {"flag", Value("abc"), Value(1), err::DataTypeConversion},
      {"b", Value(256), Value(5), err::Overflow}, {"id", Value(2.5), Value(2), 0},
      {"id", Value(" 12 "), Value(12), 0},      {"id", Value(40000), Value(12), err::Overflow},
      {"n", Value("70000"), Value(70000), 0},   {"n", Value(3e9), Value(70000), err::Overflow},
      {"r", Value("1.5"), Value(1.5), 0},       {"name", Value(12), Value("12"), 0},
      {"name", Value(umlauts), Value(umlauts), 0},
      {"name", Value("abcdef"), Value(umlauts), err::FieldTooSmall},
      {"bin", Value(Value::Bytes{0, 1}), Value(Value::Bytes{0, 1}), 0},
      {"id", Value(), Value(), 0},              {"memo", Value(3.5), Value("3.5"), 0},
  };
  for (const auto& [field, in, stored, error] : cases) {
    SCOPED_TRACE(std::string(field) + " <- " + TextOf(in));
    rs.Edit();
    EXPECT_EQ(ErrorOf([&] { rs[field] = in; }), error);
    rs.Update();
    EXPECT_EQ(rs[field].GetValue(), stored);
  }
  // lenient readings: Null as empty, false and 0; a text by its leading number, rounded
  EXPECT_EQ(std::tuple(rs["id"].Text(), rs["id"].Bool(), rs["id"].Number()),
            (std::tuple<std::string, bool, int64_t>{"", false, 0}));
  EXPECT_EQ(rs["memo"].Number(), 4);
}

TEST_F(RecordsetTest, OnlySingleTableSelectsGiveUpdatableRowsWrittenThroughTheTable) {
  const std::pair<const char*, bool> cases[] = {
      {"select i.name from Item as i", true},
      {"select * from [Item] where name = 'a, b' order by id, name limit 3", true},
      {"select * from Item where id in (select item from Tag group by item);", true},
      {"select i.name, Tag.label from Item i join Tag on Tag.item = i.id", false},
      {"select distinct name from Item", false},
      {"select max(id) from Item", false},
      {"select flag from Item where id > 0 group by flag", false},
      {"select id from Item union select item from Tag", false},
      {"select * from (select * from Item)", false},
  };
  for (const auto& [sql, updatable] : cases)
    EXPECT_EQ(ErrorOf([&] { db.OpenRecordset(sql).AddNew(); }), updatable ? 0 : err::ReadOnlyObject) << sql;
  auto snap = db.OpenRecordset("select * from Item", RecordsetType::Snapshot);
  for (const auto& f : Calls{[&] { snap.Edit(); }, [&] { snap.AddNew(); }, [&] { snap.Delete(); },
                             [&] { db.OpenRecordset("Item", RecordsetType::Snapshot).AddNew(); }})
    EXPECT_EQ(ErrorOf(f), err::ReadOnlyObject);

  auto q = db.OpenRecordset("select NAME, id, n * 2 as twice from Item i where i.id >= 2 order by id desc");
  ASSERT_EQ(q.FieldCount(), 3);  // the rowid stays hidden
  EXPECT_EQ(q["twice"].Number(), 80);
  q.Edit();
  EXPECT_EQ(ErrorOf([&] { q["twice"] = 1; }), err::FieldNotUpdatable);
  q["name"] = "dd";
  q.Update();
  q.AddNew();
  q["id"] = 6;
  q.Update();
  EXPECT_EQ(Peek(path, "SELECT group_concat(name || n) FROM Item WHERE id >= 4"), "dd40,x42");
  q.SetBookmark(q.LastModified());
  q.Delete();
  EXPECT_EQ(Peek(path, "SELECT count(*) FROM Item WHERE id = 6"), "0");
}

}  // namespace
}  // namespace r6183
