#include "editors/DataControl.h"

#include "shell/Conversions.h"
#include "shell/ErrorNumbers.h"

namespace r6183 {

namespace {
bool IsTextField(FieldType t) { return t == FieldType::Text || t == FieldType::Memo; }

// The value of a field of the current record; Null without one.
Value CurrentValue(Recordset& rs, const std::string& field) {
  try {
    return rs.Fields(field).GetValue();
  } catch (const RuntimeError& e) {
    if (e.number() == err::NoCurrentRecord || e.number() == err::RecordDeleted) return {};
    throw;
  }
}
}  // namespace

void DataControl::Bind(Control& control, std::string dataField) {
  bound_.push_back({&control, std::move(dataField)});
}

Recordset& DataControl::Recordset() const {
  if (!rs_) throw RuntimeError(err::ObjectNotSet);
  return *rs_;
}

void DataControl::Refresh() {
  if (!RecordSource.empty()) {
    if (!db_.IsOpen() || openPath_ != DatabaseName) {
      rs_.reset();
      db_ = Database::Open(DatabaseName);
      openPath_ = DatabaseName;
      openSource_.clear();
    }
    if (rs_ && openSource_ == RecordSource) {
      rs_->Requery();
    } else {
      rs_ = std::make_shared<r6183::Recordset>(db_.OpenRecordset(RecordSource));
      openSource_ = RecordSource;
    }
  } else if (rs_) {
    rs_->Requery();
  }
  UpdateControls();
}

void DataControl::UpdateControls() {
  for (const Binding& b : bound_) {
    const Value v = rs_ ? CurrentValue(*rs_, b.field) : Value();
    Control& c = *b.control;
    switch (c.Kind()) {
      case ControlKind::CheckBox:
        c.SetValue(IsTrue(v) ? 1 : 0);
        break;
      case ControlKind::OptionGroup:
        c.SetValue(static_cast<int>(NumberOf(v)));
        break;
      default:
        c.SetText(TextOf(v));
        break;
    }
    c.DataChanged = false;
  }
}

void DataControl::SetRecordset(std::shared_ptr<r6183::Recordset> rs) {
  rs_ = std::move(rs);
  openSource_.clear();
  UpdateControls();
}

bool DataControl::AnyChanged() const {
  for (const Binding& b : bound_)
    if (b.control->DataChanged) return true;
  return false;
}

void DataControl::ClearChanged() {
  for (const Binding& b : bound_) b.control->DataChanged = false;
}

void DataControl::WriteBound() {
  r6183::Recordset& rs = Recordset();
  if (rs.GetEditMode() == EditMode::None) rs.Edit();
  for (const Binding& b : bound_) {
    const Control& c = *b.control;
    if (!c.DataChanged) continue;
    Field f = rs.Fields(b.field);
    switch (c.Kind()) {
      case ControlKind::CheckBox:
        f = Value(c.Value() != 0);
        break;
      case ControlKind::OptionGroup:
        f = Value(c.Value());
        break;
      default:
        // an emptied box leaves a number field without a value
        if (c.Text().empty() && !IsTextField(f.Type())) f = Value();
        else f = Value(c.Text());
        break;
    }
  }
}

bool DataControl::Validating(int action) {
  bool save = AnyChanged();
  int act = action;
  if (Validate) Validate(act, save);
  if (act == data_action::Cancel) return false;
  if (save && rs_ && action != data_action::Delete &&
      (rs_->GetEditMode() != EditMode::None || rs_->AbsolutePosition() >= 0)) {
    WriteBound();
    rs_->Update();
  }
  ClearChanged();
  return true;
}

void DataControl::MoveFirst() {
  if (!Validating(data_action::MoveFirst)) return;
  Recordset().MoveFirst();
  UpdateControls();
}

void DataControl::MoveLast() {
  if (!Validating(data_action::MoveLast)) return;
  Recordset().MoveLast();
  UpdateControls();
}

void DataControl::MoveNext() {
  if (!Validating(data_action::MoveNext)) return;
  Recordset().MoveNext();
  UpdateControls();
}

void DataControl::MovePrevious() {
  if (!Validating(data_action::MovePrevious)) return;
  Recordset().MovePrevious();
  UpdateControls();
}

void DataControl::FindFirst(const Predicate& p) {
  if (!Validating(data_action::Find)) return;
  Recordset().FindFirst(p);
  UpdateControls();
}

void DataControl::SetBookmark(Recordset::Bookmark b) {
  if (!Validating(data_action::Bookmark)) return;
  Recordset().SetBookmark(b);
  UpdateControls();
}

void DataControl::AddNew() {
  if (!Validating(data_action::AddNew)) return;
  Recordset().AddNew();
  UpdateControls();
}

void DataControl::Edit() { Recordset().Edit(); }

void DataControl::Update() {
  r6183::Recordset& rs = Recordset();
  bool save = AnyChanged();
  int act = data_action::Update;
  if (Validate) Validate(act, save);
  if (act == data_action::Cancel) return;
  if (save) WriteBound();
  rs.Update();
  UpdateControls();
}

void DataControl::CancelUpdate() {
  r6183::Recordset& rs = Recordset();
  if (rs.GetEditMode() != EditMode::None) rs.CancelUpdate();
  UpdateControls();
}

void DataControl::Delete() {
  if (!Validating(data_action::Delete)) return;
  Recordset().Delete();
}

void DataControl::Unload() {
  if (!rs_) {
    Close();
    return;
  }
  bool save = AnyChanged();
  int act = data_action::Unload;
  try {
    if (Validate) Validate(act, save);
    if (save && act != data_action::Cancel) {
      WriteBound();
      rs_->Update();
    }
  } catch (...) {
    if (rs_->GetEditMode() != EditMode::None) rs_->CancelUpdate();
    Close();
    throw;
  }
  if (rs_->GetEditMode() != EditMode::None) rs_->CancelUpdate();
  Close();
}

void DataControl::Close() {
  rs_.reset();
  if (db_.IsOpen()) db_.Close();
  openPath_.clear();
  openSource_.clear();
  ClearChanged();
}

}  // namespace r6183
