#include "connectivity/PhoneList.h"

#include "connectivity/modModem.h"
#include "shell/Conversions.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmPhoneList";
constexpr std::string_view kUpdateModule = "frmPhoneUpdate";
constexpr int kHeadingHeight = 250, kNumberWidth = 150;  // twips

Where In(std::string_view routine) { return Where{kModule, routine}; }

// A text that a field of `size` characters can't take raises what the store raises.
void MustFit(const Recordset& rs, int field, const std::string& text) {
  const int size = rs.FieldAt(field).size;
  if (size > 0 && static_cast<int>(text.size()) > size) throw RuntimeError(err::FieldTooSmall);
}
}  // namespace

const char* const kModemCommandHelp =
    "The following parameters must be set\n"
    "when defining a modem command string:\n"
    "\n"
    "Auto-answer on 1st ring\n"
    "Connect rate fixed at 9600 Baud\n"
    "Fixed serial port baud rate\n"
    "Error Control disabled\n"
    "Compression disabled\n"
    "DTR override\n"
    "Suppress result codes\n"
    "Power-up profile 0\n"
    "\n"
    "The parameters must be saved to the modem's\n"
    "non-volatile memory before powering down\n"
    "and connecting to the 05.";

PhoneListSetup PhoneListSetup::PhoneList() {
  PhoneListSetup p;
  p.DbName = "phonelst";
  p.TbName = "PhoneList";
  p.FieldName1 = "Description";
  p.FieldName2 = "PhoneNumber";
  p.ColName1 = "Description";
  p.ColName2 = "Phone Number";
  p.caption = "Dialing Modem";
  p.prompt = "Enter the number to dial or select it from the list below.";
  p.label = "Number to Dial :";
  p.buttonCaption = "Dial";
  return p;
}

PhoneListSetup PhoneListSetup::ModemCommands() {
  PhoneListSetup p;
  p.DbName = "modem";
  p.TbName = "ModemList";
  p.FieldName1 = "Modem";
  p.FieldName2 = "Command";
  p.ColName1 = "Modem";
  p.ColName2 = "Command";
  p.caption = "Remote Commands";
  p.prompt = "Type modem command or select it from the list below and press 'Enter'.";
  p.label = "Command :";
  p.buttonCaption = "Enter";
  p.remote = true;
  return p;
}

// --- the edit window

PhoneUpdateModel::PhoneUpdateModel(Session& session, PhoneListModel& parent) : s_(session), parent_(parent) {}

void PhoneUpdateModel::Initialize(const std::string& text, const std::string& label2, const std::string& label1) {
  step(s_.journal(), Where{kUpdateModule, "Initialize"}, [&] {
    caption = text;
    if (ShowCaption) ShowCaption();
    Label2.SetText(label2);
    Label1.SetText(label1);
    if (parent_.chkInsert.Value() == 1) {
      txtDescription.SetText("");
      txtPhonenum.SetText("");
    } else {
      FlexGrid& grid = parent_.grid1;
      grid.SetCol(1);
      txtDescription.SetText(grid.Text());
      grid.SetCol(2);
      txtPhonenum.SetText(grid.Text());
    }
  });
}

void PhoneUpdateModel::cmdOk_Click() {
  step(s_.journal(), Where{kUpdateModule, "cmdOK"}, [&] {
    if (parent_.UpdatePhoneList(txtDescription.Text(), txtPhonenum.Text())) {
      if (CloseWindow) CloseWindow();
    } else {
      s_.Message("The record could not be updated.");
    }
  });
}

void PhoneUpdateModel::cmdCancel_Click() {
  if (CloseWindow) CloseWindow();
}

// --- the list window

PhoneListModel::PhoneListModel(Session& session, modModem& modem) : s_(session), modem_(modem) {
  cmdHelp.SetVisible(false);
  chkInsert.SetVisible(false);
  chkRemote.SetVisible(false);
  cmdDial.OnClick = [this] { cmdDial_Click(); };
  cmdInsert.OnClick = [this] { cmdInsert_Click(); };
  cmdEdit.OnClick = [this] { cmdEdit_Click(); };
  cmdDelete.OnClick = [this] { cmdDelete_Click(); };
  cmdClose.OnClick = [this] { cmdClose_Click(); };
  cmdHelp.OnClick = [this] { cmdHelp_Click(); };
}

PhoneListModel::~PhoneListModel() = default;

void PhoneListModel::SetDbName(const std::string& name) {
  db_ = Database::Open(s_.appDir().PathOf(name));
}

void PhoneListModel::Setup(const PhoneListSetup& p) {
  step(s_.journal(), In("Initialize"), [&] { SetDbName(p.DbName); });
  TbName = p.TbName;
  FieldName1 = p.FieldName1;
  FieldName2 = p.FieldName2;
  ColName1 = p.ColName1;
  ColName2 = p.ColName2;
  ColWidth1 = p.ColWidth1;
  ColWidth2 = p.ColWidth2;
  chkRemote.SetValue(p.remote ? 1 : 0);
  Initialize(p.caption, p.prompt, p.label, p.buttonCaption);
}

void PhoneListModel::Initialize(const std::string& text, const std::string& prompt, const std::string& label,
                                const std::string& buttonCaption) {
  Journal& j = s_.journal();
  step(j, In("Initialize"), [&] {
    rs_ = db_.OpenRecordset("Select " + FieldName1 + " , " + FieldName2 + " From " + TbName + " Order By " +
                            FieldName1 + " , " + FieldName2 + "  ");
  });
  // the window loads at the first touch of its controls, with the list open by then
  Form_Load();
  step(j, In("Initialize"), [&] {
    caption = text;
    if (ShowCaption) ShowCaption();
    Label1_0.SetText(label);
    Label1_1.SetText(prompt);
    cmdDial.SetText(buttonCaption);
    if (buttonCaption == "Enter") cmdHelp.SetVisible(true);
    update_ = std::make_unique<PhoneUpdateModel>(s_, *this);
    update_->Initialize("Edit " + ColName2, "&" + ColName1 + ": ", "&" + ColName2 + ": ");
  });
}

void PhoneListModel::Form_Load() {
  Journal& j = s_.journal();
  const Where where = In("Load");
  step(j, where, [&] {
    s_.menu.SetEnabled("mnuModem", false);
    s_.menu.SetEnabled("mnuComSetup", false);
  });
  LoadGrid();
  // each step on its own: a list without rows still gets its window
  step(j, where, [&] { grid1.SetRow(1); });
  step(j, where, [&] {
    grid1.SetCol(2);
    txtNumber.SetText(grid1.Text());
    grid1.SetCol(0);
  });
  ListEditing = false;
  chkInsert.SetValue(0);
}

void PhoneListModel::LoadGrid() {
  step(s_.journal(), In("LoadGrid"), [&] {
    ListLoading = true;
    grid1.SetRows(static_cast<int>(rs_.RecordCount()) + 1);
    grid1.SetRow(0);
    grid1.SetCol(1);
    grid1.SetText(ColName1);
    grid1.SetCol(2);
    grid1.SetText(ColName2);
    grid1.SetRowHeight(0, kHeadingHeight);
    grid1.SetColWidth(0, kNumberWidth);
    grid1.SetColWidth(1, ColWidth1);
    grid1.SetColWidth(2, ColWidth2);
    if (grid1.Rows() > 1) {
      rs_.MoveFirst();
      for (int n = 1; !rs_.IsEOF(); ++n, rs_.MoveNext()) {
        grid1.SetRow(n);
        grid1.SetCol(0);
        grid1.SetText(std::to_string(n));
        grid1.SetCol(1);
        grid1.SetText(TextOf(rs_[0].GetValue()));
        grid1.SetCol(2);
        grid1.SetText(TextOf(rs_[1].GetValue()));
      }
      ListLoading = false;
    } else {
      cmdEdit.SetEnabled(false);
      cmdDelete.SetEnabled(false);
    }
  });
}

int PhoneListModel::FindRow(const std::string& text) {
  int found = 0;
  // no match runs past the last row, and that ends in the journal
  step(s_.journal(), In("FindRow"), [&] {
    for (int n = 1; grid1.Row() != grid1.Rows(); ++n) {
      grid1.SetRow(n);
      grid1.SetCol(2);
      if (grid1.Text() == text) {
        found = n;
        return;
      }
    }
  });
  return found;
}

void PhoneListModel::grid1_SelChange() {
  if (ListLoading) return;
  step(s_.journal(), In("Grid1_SelChange"), [&] {
    if (grid1.Row() == 0) return;
    grid1.SetCol(2);
    txtNumber.SetText(grid1.Text());
    grid1.SetCol(0);
  });
}

void PhoneListModel::OpenEditor(int insert) {
  chkInsert.SetValue(insert);
  ListEditing = true;
  ListLoading = true;
  if (update_) update_->Initialize("Edit " + ColName2, "&" + ColName1 + ": ", "&" + ColName2 + ": ");
  if (ShowUpdateModal) ShowUpdateModal();
  ListEditing = false;
  ListLoading = false;
}

void PhoneListModel::grid1_DblClick() {
  step(s_.journal(), In("Grid1_dblclick"), [&] { OpenEditor(0); });
}

void PhoneListModel::cmdEdit_Click() {
  step(s_.journal(), In("cmdEdit"), [&] { OpenEditor(0); });
}

void PhoneListModel::cmdInsert_Click() {
  step(s_.journal(), In("cmdInsert"), [&] { OpenEditor(1); });
}

bool PhoneListModel::UpdatePhoneList(const std::string& first, const std::string& second) {
  bool stored = false;
  step(s_.journal(), In("UpdatePhoneList"), [&] {
    if (chkInsert.Value() == 1) {
      stored = InsertNewPhone(first, second);
      return;
    }
    grid1.SetCol(2);
    const std::string old = grid1.Text();
    // Every row with the old value changes. The statement has always put the texts in
    // quote marks without escaping one inside: such a text breaks the statement, which
    // then fails and changes nothing. Any other text is run bound, which is the same
    // statement and can't be read as anything else.
    const std::string q = "'";
    const std::string asBuilt = "UPDATE " + TbName + " SET " + FieldName2 + "  = " + q + second + q + ", " +
                                FieldName1 + "  = " + q + first + q + " WHERE " + FieldName2 + "  = " + q + old + q;
    for (const std::string* text : {&first, &second, &old})
      if (text->find('\'') != std::string::npos)
        throw RuntimeError(err::SyntaxError, "Syntax error (missing operator) in query expression: " + asBuilt);
    MustFit(rs_, 0, first);
    MustFit(rs_, 1, second);
    db_.Execute("UPDATE " + TbName + " SET " + FieldName2 + "  = ?, " + FieldName1 + "  = ? WHERE " + FieldName2 +
                    "  = ?",
                {Value(second), Value(first), Value(old)});
    rs_.Requery();
    LoadGrid();
    FindRow(second);
    txtNumber.SetText(second);
    stored = true;
  });
  return stored;
}

bool PhoneListModel::InsertNewPhone(const std::string& first, const std::string& second) {
  bool stored = false;
  step(s_.journal(), In("InsertNewPhone"), [&] {
    if (!cmdEdit.Enabled()) {
      cmdEdit.SetEnabled(true);
      cmdDelete.SetEnabled(true);
    }
    grid1.SetCol(2);
    bool filled = false;
    if (rs_.RecordCount() == 1) {
      // the blank row of an emptied list takes the first insert
      rs_.MoveFirst();
      if (TextOf(rs_[0].GetValue()).empty() && TextOf(rs_[1].GetValue()).empty()) {
        rs_.Edit();
        rs_[0] = Value(first);
        rs_[1] = Value(second);
        rs_.Update();
        filled = true;
      }
    }
    if (!filled) {
      rs_.AddNew();
      rs_[0] = Value(first);
      rs_[1] = Value(second);
      rs_.Update();
      rs_.Requery();
    }
    txtNumber.SetText(second);
    LoadGrid();
    FindRow(second);
    chkInsert.SetValue(0);
    stored = true;
  });
  return stored;
}

void PhoneListModel::cmdDelete_Click() {
  step(s_.journal(), In("cmdDelete"), [&] {
    const int row = grid1.Row(), rows = grid1.Rows();
    const std::string first = grid1.TextMatrix(row, 1), second = grid1.TextMatrix(row, 2);
    if (rows >= 3) {
      rs_.FindFirst([&](const RowView& r) { return TextOf(r[1]) == second && TextOf(r[0]) == first; });
      if (!rs_.NoMatch()) rs_.Delete();
      rs_.Requery();
      LoadGrid();
      // the last row deleted: the one before it becomes current
      grid1.SetRow(row == rows - 1 ? row - 1 : row);
      grid1.SetCol(2);
      txtNumber.SetText(grid1.Text());
    } else if (rows == 2) {
      // the only row is blanked, not deleted: a list never goes without a row
      db_.Execute("UPDATE " + TbName + " SET " + FieldName2 + "  = '' , " + FieldName1 + "  = '' ");
      rs_.Requery();
      LoadGrid();
    }
  });
}

void PhoneListModel::cmdDial_Click() {
  step(s_.journal(), In("cmdDial"), [&] {
    // the text box is never null, so an empty number is dialled as it stands
    if (cmdDial.Text() == "Dial") {
      ListEditing = true;
      if (HideWindow) HideWindow();
      if (!DialNumber(modem_, txtNumber.Text())) {
        // the operator can pick another number
        if (ShowWindow) ShowWindow();
        ListEditing = false;
        return;
      }
      Unload();
    } else if (cmdDial.Text() == "Enter") {
      cmdDial.SetEnabled(false);
      if (EnableWindow) EnableWindow(false);
      const ProcessState& st = s_.state;
      modem_.SendModemCommand(txtNumber.Text(), chkRemote.Value() == 1 ? st.RemoteComPort : st.ComPortNumber);
      if (EnableWindow) EnableWindow(true);
      cmdDial.SetEnabled(true);
      Unload();
    }
  });
}

void PhoneListModel::cmdClose_Click() {
  step(s_.journal(), In("cmdClose"), [&] { Unload(); });
}

void PhoneListModel::cmdHelp_Click() {
  step(s_.journal(), In("cmdHelp"), [&] {
    s_.prompter().Message(kModemCommandHelp, Buttons::Ok, Icon::None, s_.product.ProductTitle + " - Help");
  });
}

void PhoneListModel::Unload() {
  if (CloseUpdate) CloseUpdate();
  if (CloseWindow) CloseWindow();
  else Form_Unload();
}

void PhoneListModel::Form_Unload() {
  Journal& j = s_.journal();
  const Where where = In("Unload");
  step(j, where, [&] { rs_.Close(); });
  step(j, where, [&] { db_.Close(); });
  step(j, where, [&] {
    MenuModel& m = s_.menu;
    m.SetEnabled("mnuModem", true);
    m.SetEnabled("mnuComSetup", true);
    if (m.Enabled("mnuModemConnect")) m.SetEnabled("mnuManualConnect", true);
    for (int i = 1; i <= 4; ++i) m.SetEnabled(ArrayName("mnuFileArray", i), true);
  });
  chkRemote.SetValue(0);
}

}  // namespace r6183
