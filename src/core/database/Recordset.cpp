#include "database/Recordset.h"

#include <SQLiteCpp/Exception.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "database/RecordsetState.h"
#include "database/Sql.h"
#include "shell/Conversions.h"
#include "shell/ErrorNumbers.h"
#include "shell/Text.h"

namespace r6183 {

using At = Recordset::State::At;

// ---------------------------------------------------------------- loading

void RowSet::Load() {
  sql::Statement st(conn->raw(), sql);
  const int first = hasRowid ? 1 : 0;
  const int count = std::max(0, st.ColumnCount() - first);
  const bool describe = fields.empty() && count > 0;
  std::vector<bool> guessed(static_cast<std::size_t>(count), false);
  if (describe) {
    fields.resize(static_cast<std::size_t>(count));
    origins.resize(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
      const int col = first + i;
      auto& f = fields[static_cast<std::size_t>(i)];
      const char* decl = sqlite3_column_decltype(st.get(), col);
      if (auto info = sql::FieldFromDeclaredType(decl ? decl : "")) f = *info;
      else guessed[static_cast<std::size_t>(i)] = true;
      const char* name = sqlite3_column_name(st.get(), col);
      f.name = name ? name : "";
      if (table.empty()) continue;
#ifdef SQLITE_ENABLE_COLUMN_METADATA
      const char* tbl = sqlite3_column_table_name(st.get(), col);
      const char* origin = sqlite3_column_origin_name(st.get(), col);
      if (tbl && origin && EqualsNoCase(tbl, table)) origins[static_cast<std::size_t>(i)] = origin;
#else
      // without the engine's column origins: the table's column of the same name
      if (decl) origins[static_cast<std::size_t>(i)] = f.name;
#endif
    }
  }

  rows.clear();
  live = 0;
  while (st.Step()) {
    Row r;
    r.bookmark = nextBookmark++;
    r.rowid = hasRowid ? sqlite3_column_int64(st.get(), 0) : 0;
    r.values.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) r.values.push_back(st.Column(first + i));
    rows.push_back(std::move(r));
    ++live;
  }

  // a computed column takes its type from the first value it holds
  for (int i = 0; i < count; ++i) {
    if (!guessed[static_cast<std::size_t>(i)]) continue;
    auto& f = fields[static_cast<std::size_t>(i)];
    f.type = FieldType::Memo;
    for (const auto& r : rows) {
      const Value& v = r.values[static_cast<std::size_t>(i)];
      if (v.IsNull()) continue;
      f.type = v.IsInteger() ? FieldType::Long
               : v.IsReal()  ? FieldType::Real
               : v.IsBytes() ? FieldType::Binary
                             : FieldType::Memo;
      break;
    }
  }
  ++generation;
}

std::shared_ptr<RowSet> MakeRowSet(std::shared_ptr<Database::Connection> conn, std::string name,
                                   RecordsetType type, std::string sql, bool hasRowid,
                                   std::string table) {
  auto set = std::make_shared<RowSet>();
  set->conn = std::move(conn);
  set->name = std::move(name);
  set->type = type;
  set->sql = std::move(sql);
  set->hasRowid = hasRowid;
  set->table = std::move(table);
  set->Load();
  return set;
}

namespace {

std::optional<std::size_t> NextLive(const RowSet& set, std::size_t from) {
  for (std::size_t i = from; i < set.rows.size(); ++i)
    if (!set.rows[i].deleted) return i;
  return std::nullopt;
}

// The last live row before `before`.
std::optional<std::size_t> PreviousLive(const RowSet& set, std::size_t before) {
  for (std::size_t i = std::min(before, set.rows.size()); i-- > 0;)
    if (!set.rows[i].deleted) return i;
  return std::nullopt;
}

void PlaceAtFirst(Recordset::State& s) {
  s.generation = s.set->generation;
  if (const auto i = NextLive(*s.set, 0)) {
    s.at = At::Row;
    s.index = *i;
  } else {
    s.at = At::Eof;
  }
}

}  // namespace

std::shared_ptr<Recordset::State> StartState(std::shared_ptr<RowSet> set) {
  auto s = std::make_shared<Recordset::State>();
  s->set = std::move(set);
  PlaceAtFirst(*s);
  return s;
}

// ---------------------------------------------------------------- helpers

namespace {

// The open state, brought up to date with a Requery made through a clone.
Recordset::State& Need(const std::shared_ptr<Recordset::State>& p) {
  if (!p) throw RuntimeError(err::ObjectInvalid);
  auto& s = *p;
  if (s.generation != s.set->generation) {
    s.generation = s.set->generation;
    s.at = At::None;
    s.mode = EditMode::None;
    s.buffer.clear();
    s.dirty.clear();
    s.lastModified.reset();
  }
  return s;
}

void DropEdit(Recordset::State& s) {
  s.mode = EditMode::None;
  s.buffer.clear();
  s.dirty.clear();
}

RowSet::Row& CurrentRow(Recordset::State& s) {
  if (s.at != At::Row) throw RuntimeError(err::NoCurrentRecord);
  auto& row = s.set->rows[s.index];
  if (row.deleted) throw RuntimeError(err::RecordDeleted);
  return row;
}

void CheckIndex(const RowSet& set, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= set.fields.size())
    throw RuntimeError(err::ItemNotFound);
}

int IndexOf(const RowSet& set, std::string_view name) {
  for (std::size_t i = 0; i < set.fields.size(); ++i)
    if (EqualsNoCase(set.fields[i].name, name)) return static_cast<int>(i);
  return -1;
}

void RequireUpdatable(const Recordset::State& s) {
  if (!s.set->Updatable()) throw RuntimeError(err::ReadOnlyObject);
}

Value ConvertForField(const FieldInfo& f, const Value& v);

// The defaults of the table's columns, evaluated by the engine at each AddNew and
// given the field's type where they fit it.
std::vector<Value> Defaults(RowSet& set) {
  sqlite3* db = set.conn->raw();
  if (!set.defaults) {
    std::vector<std::pair<std::string, std::string>> declared;  // column, default expression
    sql::Statement info(db, "SELECT name, dflt_value FROM pragma_table_info(?1)");
    info.Bind(1, Value(set.table));
    while (info.Step()) {
      const Value d = info.Column(1);
      if (!d.IsNull()) declared.emplace_back(info.Column(0).Text(), d.Text());
    }
    std::vector<std::string> exprs(set.fields.size());
    for (std::size_t i = 0; i < set.fields.size(); ++i)
      for (const auto& [column, expr] : declared)
        if (!set.origins[i].empty() && EqualsNoCase(column, set.origins[i])) exprs[i] = expr;
    set.defaults = std::move(exprs);
  }
  std::vector<Value> values(set.fields.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::string& expr = (*set.defaults)[i];
    if (expr.empty()) continue;
    sql::Statement eval(db, "SELECT " + expr);
    if (!eval.Step()) continue;
    values[i] = eval.Column(0);
    try {
      values[i] = ConvertForField(set.fields[i], values[i]);
    } catch (const RuntimeError&) {
      // kept as the engine gave it; the table decides at Update
    }
  }
  return values;
}

// Runs an INSERT or UPDATE ending in "RETURNING rowid" and reads the row back as
// the table holds it. False when no row was written.
bool WriteAndRead(RowSet& set, sql::Statement& st, int64_t& rowid, std::vector<Value>& values) {
  if (!st.Step()) return false;
  rowid = sqlite3_column_int64(st.get(), 0);
  while (st.Step()) {
  }
  std::string columns;
  for (const auto& o : set.origins)
    if (!o.empty()) columns += (columns.empty() ? "" : ", ") + sql::Quote(o);
  if (columns.empty()) return true;
  sql::Statement read(set.conn->raw(),
                      "SELECT " + columns + " FROM " + sql::Quote(set.table) + " WHERE rowid = ?");
  read.Bind(1, Value(static_cast<long long>(rowid)));
  if (!read.Step()) return true;
  int col = 0;
  for (std::size_t i = 0; i < set.fields.size(); ++i)
    if (!set.origins[i].empty()) values[i] = read.Column(col++);
  return true;
}

constexpr const char* kReturning = " RETURNING rowid";

Value ConvertForField(const FieldInfo& f, const Value& v) {
  if (v.IsNull()) return v;
  try {
    switch (f.type) {
      case FieldType::Boolean:
        return Value(CBool(v));
      case FieldType::Byte:
        return Value(static_cast<int>(CByte(v)));
      case FieldType::Integer:
        return Value(static_cast<int>(CInt(v)));
      case FieldType::Long:
        return Value(static_cast<long long>(CLng(v)));
      case FieldType::Real:
        return Value(CDbl(v));
      case FieldType::Text:
      case FieldType::Memo: {
        std::string s = CStr(v);
        if (f.type == FieldType::Text && f.size > 0 && CharCount(s) > static_cast<std::size_t>(f.size))
          throw RuntimeError(err::FieldTooSmall);
        return Value(std::move(s));
      }
      case FieldType::Binary:
        if (v.IsText()) return Value(Value::Bytes(v.Text().begin(), v.Text().end()));
        return v;
    }
  } catch (const RuntimeError& e) {
    if (e.number() == err::TypeMismatch) throw RuntimeError(err::DataTypeConversion);
    throw;
  }
  return v;
}

}  // namespace

// ---------------------------------------------------------------- RowView, Field

const Value& RowView::operator[](int index) const {
  CheckIndex(*rs_.s_->set, index);
  return values_[static_cast<std::size_t>(index)];
}

const Value& RowView::operator[](std::string_view name) const {
  const int i = IndexOf(*rs_.s_->set, name);
  if (i < 0) throw RuntimeError(err::ItemNotFound);
  return values_[static_cast<std::size_t>(i)];
}

const std::string& Field::Name() const { return rs_->FieldAt(index_).name; }
FieldType Field::Type() const { return rs_->FieldAt(index_).type; }
int Field::Size() const { return rs_->FieldAt(index_).size; }

Value Field::GetValue() const {
  auto& s = Need(rs_->s_);
  CheckIndex(*s.set, index_);
  const auto i = static_cast<std::size_t>(index_);
  if (s.mode != EditMode::None) return s.buffer[i];
  return CurrentRow(s).values[i];
}

void Field::SetValue(const Value& v) {
  auto& s = Need(rs_->s_);
  CheckIndex(*s.set, index_);
  if (s.mode == EditMode::None) throw RuntimeError(err::UpdateWithoutEdit);
  const auto i = static_cast<std::size_t>(index_);
  if (s.set->origins[i].empty()) throw RuntimeError(err::FieldNotUpdatable);
  s.buffer[i] = ConvertForField(s.set->fields[i], v);
  s.dirty[i] = true;
}

std::string Field::Text() const { return TextOf(GetValue()); }
bool Field::Bool() const { return IsTrue(GetValue()); }

int64_t Field::Number() const {
  const double d = RoundHalfEven(NumberOf(GetValue()));
  if (std::isnan(d)) return 0;
  if (d <= static_cast<double>(std::numeric_limits<int64_t>::min()))
    return std::numeric_limits<int64_t>::min();
  if (d >= static_cast<double>(std::numeric_limits<int64_t>::max()))
    return std::numeric_limits<int64_t>::max();
  return static_cast<int64_t>(d);
}

// ---------------------------------------------------------------- Recordset

Recordset::Recordset() = default;
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::Recordset(std::shared_ptr<State> s) : s_(std::move(s)) {}

int Recordset::FieldCount() const { return static_cast<int>(Need(s_).set->fields.size()); }

const FieldInfo& Recordset::FieldAt(int index) const {
  const auto& set = *Need(s_).set;
  CheckIndex(set, index);
  return set.fields[static_cast<std::size_t>(index)];
}

int Recordset::FieldIndex(std::string_view name) const { return IndexOf(*Need(s_).set, name); }

Field Recordset::Fields(int index) {
  CheckIndex(*Need(s_).set, index);
  return Field(*this, index);
}

Field Recordset::Fields(std::string_view name) {
  const int i = FieldIndex(name);
  if (i < 0) throw RuntimeError(err::ItemNotFound);
  return Field(*this, i);
}

bool Recordset::IsBOF() const {
  const auto& s = Need(s_);
  return s.at == At::Bof || s.set->live == 0;
}

bool Recordset::IsEOF() const {
  const auto& s = Need(s_);
  return s.at == At::Eof || s.set->live == 0;
}

void Recordset::MoveFirst() {
  auto& s = Need(s_);
  DropEdit(s);
  const auto i = NextLive(*s.set, 0);
  if (!i) throw RuntimeError(err::NoCurrentRecord);
  s.at = At::Row;
  s.index = *i;
}

void Recordset::MoveLast() {
  auto& s = Need(s_);
  DropEdit(s);
  const auto i = PreviousLive(*s.set, s.set->rows.size());
  if (!i) throw RuntimeError(err::NoCurrentRecord);
  s.at = At::Row;
  s.index = *i;
}

// Without a current row (a fresh clone) MoveNext goes to the first row and
// MovePrevious to the last. From a deleted row they go on even when it was the last.
void Recordset::MoveNext() {
  auto& s = Need(s_);
  DropEdit(s);
  if (s.at == At::Eof || (s.at != At::Row && s.set->live == 0)) throw RuntimeError(err::NoCurrentRecord);
  const auto i = NextLive(*s.set, s.at == At::Row ? s.index + 1 : 0);
  if (i) {
    s.at = At::Row;
    s.index = *i;
  } else {
    s.at = At::Eof;
  }
}

void Recordset::MovePrevious() {
  auto& s = Need(s_);
  DropEdit(s);
  if (s.at == At::Bof || (s.at != At::Row && s.set->live == 0)) throw RuntimeError(err::NoCurrentRecord);
  const auto i = PreviousLive(*s.set, s.at == At::Row ? s.index : s.set->rows.size());
  if (i) {
    s.at = At::Row;
    s.index = *i;
  } else {
    s.at = At::Bof;
  }
}

int64_t Recordset::RecordCount() const { return Need(s_).set->live; }

int64_t Recordset::AbsolutePosition() const {
  const auto& s = Need(s_);
  if (s.at != At::Row || s.set->rows[s.index].deleted) return -1;
  int64_t pos = 0;
  for (std::size_t i = 0; i < s.index; ++i)
    if (!s.set->rows[i].deleted) ++pos;
  return pos;
}

void Recordset::SetAbsolutePosition(int64_t pos) {
  auto& s = Need(s_);
  if (pos < 0 || pos >= s.set->live) throw RuntimeError(err::InvalidProcedureCall);
  DropEdit(s);
  for (std::size_t i = 0; i < s.set->rows.size(); ++i) {
    if (s.set->rows[i].deleted) continue;
    if (pos-- == 0) {
      s.at = At::Row;
      s.index = i;
      return;
    }
  }
}

Recordset::Bookmark Recordset::GetBookmark() const {
  auto& s = Need(s_);
  return CurrentRow(s).bookmark;
}

void Recordset::SetBookmark(Bookmark b) {
  auto& s = Need(s_);
  const auto& rows = s.set->rows;
  const auto it = std::lower_bound(rows.begin(), rows.end(), b,
                                   [](const RowSet::Row& r, Bookmark x) { return r.bookmark < x; });
  if (it == rows.end() || it->bookmark != b) throw RuntimeError(err::InvalidBookmark);
  if (it->deleted) throw RuntimeError(err::RecordDeleted);
  DropEdit(s);
  s.at = At::Row;
  s.index = static_cast<std::size_t>(it - rows.begin());
}

Recordset Recordset::Clone() const {
  const auto& s = Need(s_);
  auto c = std::make_shared<State>();
  c->set = s.set;
  c->generation = s.set->generation;
  c->at = At::None;
  return Recordset(std::move(c));
}

namespace {

// Searches forward from `from` or backward from before `from`; the row stays
// where it was when nothing matches.
void Find(Recordset::State& s, std::size_t from, bool forward,
          const std::function<bool(std::size_t)>& matches) {
  DropEdit(s);
  const auto& rows = s.set->rows;
  const std::size_t n = rows.size();
  auto hit = [&](std::size_t i) {
    if (rows[i].deleted || !matches(i)) return false;
    s.at = At::Row;
    s.index = i;
    s.noMatch = false;
    return true;
  };
  if (forward) {
    for (std::size_t i = from; i < n; ++i)
      if (hit(i)) return;
  } else {
    for (std::size_t i = std::min(from, n); i-- > 0;)
      if (hit(i)) return;
  }
  s.noMatch = true;
}

}  // namespace

void Recordset::FindFirst(const Predicate& p) {
  auto& s = Need(s_);
  Find(s, 0, true, [&](std::size_t i) { return p(RowView(*this, s.set->rows[i].values)); });
}

// From a row: the rows after it. Before the first row or without a row: all rows.
void Recordset::FindNext(const Predicate& p) {
  auto& s = Need(s_);
  const std::size_t from = s.at == At::Row ? s.index + 1 : s.at == At::Eof ? s.set->rows.size() : 0;
  Find(s, from, true, [&](std::size_t i) { return p(RowView(*this, s.set->rows[i].values)); });
}

void Recordset::FindLast(const Predicate& p) {
  auto& s = Need(s_);
  Find(s, s.set->rows.size(), false,
       [&](std::size_t i) { return p(RowView(*this, s.set->rows[i].values)); });
}

void Recordset::FindPrevious(const Predicate& p) {
  auto& s = Need(s_);
  const std::size_t from = s.at == At::Row ? s.index : s.at == At::Bof ? 0 : s.set->rows.size();
  Find(s, from, false, [&](std::size_t i) { return p(RowView(*this, s.set->rows[i].values)); });
}

bool Recordset::NoMatch() const { return Need(s_).noMatch; }

void Recordset::AddNew() {
  auto& s = Need(s_);
  RequireUpdatable(s);
  s.buffer = Defaults(*s.set);
  s.dirty.assign(s.buffer.size(), true);
  s.mode = EditMode::Add;
}

void Recordset::Edit() {
  auto& s = Need(s_);
  RequireUpdatable(s);
  const auto& row = CurrentRow(s);
  s.buffer = row.values;
  s.dirty.assign(s.buffer.size(), false);
  s.editIndex = s.index;
  s.mode = EditMode::InProgress;
}

// A failed write keeps the buffer, so that Update can be tried again.
void Recordset::Update() {
  auto& s = Need(s_);
  if (s.mode == EditMode::None) throw RuntimeError(err::UpdateWithoutEdit);
  RowSet& set = *s.set;
  sqlite3* db = set.conn->raw();
  std::vector<Value> values = s.buffer;

  if (s.mode == EditMode::Add) {
    std::string columns, marks;
    std::vector<Value> params;
    for (std::size_t i = 0; i < set.fields.size(); ++i) {
      if (set.origins[i].empty()) continue;
      if (!params.empty()) {
        columns += ", ";
        marks += ", ";
      }
      columns += sql::Quote(set.origins[i]);
      marks += '?';
      params.push_back(s.buffer[i]);
    }
    std::string text = "INSERT INTO " + sql::Quote(set.table);
    text += params.empty() ? " DEFAULT VALUES" : " (" + columns + ") VALUES (" + marks + ")";
    sql::Statement st(db, text + kReturning);
    for (std::size_t i = 0; i < params.size(); ++i) st.Bind(static_cast<int>(i + 1), params[i]);
    int64_t rowid = 0;
    WriteAndRead(set, st, rowid, values);
    RowSet::Row row;
    row.bookmark = set.nextBookmark++;
    row.rowid = rowid;
    row.values = std::move(values);
    set.rows.push_back(std::move(row));
    ++set.live;
    s.lastModified = set.rows.back().bookmark;
    DropEdit(s);
    return;
  }

  RowSet::Row& row = set.rows[s.editIndex];
  if (row.deleted) {
    DropEdit(s);
    throw RuntimeError(err::RecordDeleted);
  }
  std::string assignments;
  std::vector<Value> params;
  for (std::size_t i = 0; i < set.fields.size(); ++i) {
    if (!s.dirty[i] || set.origins[i].empty()) continue;
    if (!params.empty()) assignments += ", ";
    assignments += sql::Quote(set.origins[i]) + " = ?";
    params.push_back(s.buffer[i]);
  }
  if (!params.empty()) {
    sql::Statement st(db, "UPDATE " + sql::Quote(set.table) + " SET " + assignments +
                              " WHERE rowid = ?" + kReturning);
    for (std::size_t i = 0; i < params.size(); ++i) st.Bind(static_cast<int>(i + 1), params[i]);
    st.Bind(static_cast<int>(params.size() + 1), Value(static_cast<long long>(row.rowid)));
    int64_t rowid = row.rowid;
    if (!WriteAndRead(set, st, rowid, values)) {
      // gone from the file meanwhile
      row.deleted = true;
      --set.live;
      DropEdit(s);
      throw RuntimeError(err::RecordDeleted);
    }
    row.rowid = rowid;
    row.values = std::move(values);
  }
  s.lastModified = row.bookmark;
  DropEdit(s);
}

void Recordset::CancelUpdate() {
  auto& s = Need(s_);
  if (s.mode == EditMode::None) throw RuntimeError(err::UpdateWithoutEdit);
  DropEdit(s);
}

void Recordset::Delete() {
  auto& s = Need(s_);
  RequireUpdatable(s);
  auto& row = CurrentRow(s);
  DropEdit(s);
  sql::Statement st(s.set->conn->raw(), "DELETE FROM " + sql::Quote(s.set->table) + " WHERE rowid = ?");
  st.Bind(1, Value(static_cast<long long>(row.rowid)));
  while (st.Step()) {
  }
  row.deleted = true;
  --s.set->live;
}

EditMode Recordset::GetEditMode() const { return Need(s_).mode; }

Recordset::Bookmark Recordset::LastModified() const {
  const auto& s = Need(s_);
  if (!s.lastModified) throw RuntimeError(err::NoCurrentRecord);
  return *s.lastModified;
}

bool Recordset::Updatable() const { return Need(s_).set->Updatable(); }

// Clones share the rows, so they lose their current row.
void Recordset::Requery() {
  auto& s = Need(s_);
  DropEdit(s);
  s.set->Load();
  s.noMatch = false;
  s.lastModified.reset();
  PlaceAtFirst(s);
}

RecordsetType Recordset::Type() const { return Need(s_).set->type; }

const std::string& Recordset::Name() const {
  static const std::string kNone;
  return s_ ? s_->set->name : kNone;
}

bool Recordset::IsOpen() const { return s_ != nullptr; }

void Recordset::Close() { s_.reset(); }

}  // namespace r6183
