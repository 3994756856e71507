#pragma once
// A data control: the recordset of an editor window and the controls bound to its
// fields. The bound controls show the current record; what the operator changes in them
// goes back into the record at Update, or when the record is left, unless the window's
// Validate hook drops it. A window can hand its recordset to another window's data
// control, and both then work on the same rows.
#include <memory>
#include <string>
#include <vector>

#include "database/Database.h"
#include "database/Recordset.h"
#include "editors/Controls.h"

namespace r6183 {

// The action a Validate hook is told about.
namespace data_action {
inline constexpr int Cancel = 0;  // set by the hook: the operation does not happen
inline constexpr int MoveFirst = 1;
inline constexpr int MovePrevious = 2;
inline constexpr int MoveNext = 3;
inline constexpr int MoveLast = 4;
inline constexpr int AddNew = 5;
inline constexpr int Update = 6;
inline constexpr int Delete = 7;
inline constexpr int Find = 8;
inline constexpr int Bookmark = 9;
inline constexpr int Close = 10;
inline constexpr int Unload = 11;
}  // namespace data_action

class DataControl {
 public:
  explicit DataControl(std::string name) : name_(std::move(name)) {}
  DataControl(const DataControl&) = delete;
  DataControl& operator=(const DataControl&) = delete;

  const std::string& Name() const { return name_; }

  // The database file and the table or statement the recordset is opened on.
  std::string DatabaseName;
  std::string RecordSource;

  // Binds a control to a field: a check box to a boolean (0/1), an option group to a
  // number, a text box or label to the field's text.
  void Bind(Control& control, std::string dataField);

  // Reads the rows again: opens RecordSource (or reads a handed-over recordset anew);
  // the bound controls show the first row.
  void Refresh();
  // The bound controls show the current record (or the new one after AddNew), and
  // none counts as changed.
  void UpdateControls();
  // Takes another data control's recordset; the bound controls show its current record.
  void SetRecordset(std::shared_ptr<r6183::Recordset> rs);
  std::shared_ptr<r6183::Recordset> SharedRecordset() const { return rs_; }
  bool HasRecordset() const { return rs_ != nullptr; }
  // Raises 91 when there is none.
  r6183::Recordset& Recordset() const;

  // Runs before the record is left or written, with `save` telling whether a bound
  // control changed. Clearing `save` drops the changes; setting `action` to
  // data_action::Cancel stops the operation.
  std::function<void(int& action, bool& save)> Validate;

  // The record operations, as the bound controls see them.
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();
  void FindFirst(const Predicate& p);
  void SetBookmark(Recordset::Bookmark b);
  void AddNew();
  void Edit();
  // Writes the changed bound controls and the record.
  void Update();
  // Drops the record in work; the controls show the current record again.
  void CancelUpdate();
  void Delete();
  // The window closes: pending changes are written unless Validate drops them, then the
  // recordset and the database are let go.
  void Unload();
  void Close();

  // True when a bound control changed since the record was shown.
  bool AnyChanged() const;

 private:
  struct Binding {
    Control* control;
    std::string field;
  };
  // Runs Validate; writes the pending changes when they are kept. False when cancelled.
  bool Validating(int action);
  void WriteBound();
  void ClearChanged();

  std::string name_;
  std::vector<Binding> bound_;
  Database db_;
  std::string openPath_, openSource_;
  std::shared_ptr<r6183::Recordset> rs_;
};

}  // namespace r6183
