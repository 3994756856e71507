#pragma once
// A set of rows with a current position, read and changed the way the tool's
// algorithms expect: MoveFirst/Last/Next/Previous with BOF and EOF, AbsolutePosition,
// Bookmark and Clone, FindFirst/FindNext with a predicate and NoMatch, AddNew, Edit,
// Update, CancelUpdate, Delete, Requery. Fields are reached by position or by name
// without regard to case. Changes are written to the file at Update and Delete.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/Database.h"
#include "shell/Value.h"

namespace r6183 {

enum class FieldType { Boolean, Byte, Integer, Long, Real, Text, Memo, Binary };

struct FieldInfo {
  std::string name;
  FieldType type = FieldType::Text;
  int size = 0;  // characters for Text, 0 where no limit
};

enum class EditMode { None, InProgress, Add };

class Recordset;

// A row as a Find predicate sees it.
class RowView {
 public:
  const Value& operator[](int index) const;
  const Value& operator[](std::string_view name) const;  // raises 3265 for an unknown name

 private:
  friend class Recordset;
  RowView(const Recordset& rs, const std::vector<Value>& values) : rs_(rs), values_(values) {}
  const Recordset& rs_;
  const std::vector<Value>& values_;
};

using Predicate = std::function<bool(const RowView&)>;

// One field of the current row (or of the edit buffer while editing).
class Field {
 public:
  const std::string& Name() const;
  FieldType Type() const;
  int Size() const;
  Value GetValue() const;  // 3021 without a current row
  // Converts to the field's type: booleans to 0/1, numbers checked for range (6),
  // a text that is no number into a number field raises 3421, a text longer than
  // the field raises 3163. 3020 outside AddNew or Edit.
  void SetValue(const Value& v);
  Field& operator=(const Value& v) {
    SetValue(v);
    return *this;
  }

  std::string Text() const;  // Null as empty
  bool Bool() const;         // Null as false
  int64_t Number() const;    // numeric value, Null as 0

 private:
  friend class Recordset;
  Field(Recordset& rs, int index) : rs_(&rs), index_(index) {}
  Recordset* rs_;
  int index_;
};

class Recordset {
 public:
  using Bookmark = int64_t;

  Recordset();
  ~Recordset();
  Recordset(Recordset&&) noexcept;
  Recordset& operator=(Recordset&&) noexcept;

  // fields
  int FieldCount() const;
  const FieldInfo& FieldAt(int index) const;
  int FieldIndex(std::string_view name) const;  // -1 when not there
  Field Fields(int index);
  Field Fields(std::string_view name);  // raises 3265 for an unknown name
  Field operator[](int index) { return Fields(index); }
  Field operator[](std::string_view name) { return Fields(name); }
  Field operator[](const char* name) { return Fields(std::string_view(name)); }

  // position
  bool IsBOF() const;
  bool IsEOF() const;
  void MoveFirst();  // 3021 on an empty set
  void MoveLast();
  void MoveNext();      // past the last row: EOF; at EOF: 3021
  void MovePrevious();  // before the first row: BOF; at BOF: 3021
  int64_t RecordCount() const;
  int64_t AbsolutePosition() const;  // 0-based; -1 without a current row
  void SetAbsolutePosition(int64_t pos);
  Bookmark GetBookmark() const;  // 3021 without a current row
  void SetBookmark(Bookmark b);
  Recordset Clone() const;  // same rows, own position, no current row yet

  // find; the current row stays where it was when nothing matches
  void FindFirst(const Predicate& p);
  void FindNext(const Predicate& p);
  void FindLast(const Predicate& p);
  void FindPrevious(const Predicate& p);
  bool NoMatch() const;

  // change
  void AddNew();   // edit buffer with the fields' defaults
  void Edit();     // edit buffer from the current row
  void Update();   // writes the buffer; after AddNew the current row stays where it was
  void CancelUpdate();
  void Delete();  // deletes the current row; it stays current but can't be read
  EditMode GetEditMode() const;
  Bookmark LastModified() const;
  bool Updatable() const;
  void Requery();  // reads the rows again, positioned at the first

  RecordsetType Type() const;
  const std::string& Name() const;
  bool IsOpen() const;
  void Close();

  struct State;

 private:
  friend class Database;
  friend class Field;
  friend class RowView;
  explicit Recordset(std::shared_ptr<State> s);
  std::shared_ptr<State> s_;
};

// True when the recordset holds no rows.
inline bool TableEmpty(const Recordset& rs) { return rs.RecordCount() == 0; }

}  // namespace r6183
