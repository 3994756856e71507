#pragma once
// The list window (frmPhoneList) and its edit window (frmPhoneUpdate) as rules: a
// two-column list from a small database of its own, kept in a grid, with rows added,
// changed and deleted, and an action on the value chosen. Two roles: the phone list that
// dials, and the modem commands of a remote modem's setup. A list's table is never left
// without a row: the last row is blanked, and a blank table's next insert fills it.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "connectivity/FlexGrid.h"
#include "database/Database.h"
#include "database/Recordset.h"
#include "editors/Controls.h"

namespace r6183 {

class Session;
class modModem;
class PhoneListModel;

// What the caller sets before the window is shown.
struct PhoneListSetup {
  std::string DbName, TbName, FieldName1, FieldName2, ColName1, ColName2;
  int16_t ColWidth1 = 3500, ColWidth2 = 3810;
  // the arguments of Initialize
  std::string caption, prompt, label, buttonCaption;
  bool remote = false;  // chkRemote: commands go to the port of the remote setup

  // The phone list of Modem Connect, which dials.
  static PhoneListSetup PhoneList();
  // The modem commands of a remote modem's setup, which sends the command.
  static PhoneListSetup ModemCommands();
};

// The edit window of one row.
class PhoneUpdateModel {
 public:
  PhoneUpdateModel(Session& session, PhoneListModel& parent);

  static constexpr const char* kDesignCaption = "Edit Phone Number";
  std::string caption = kDesignCaption;
  Control Label1{"Label1", ControlKind::Label};
  Control Label2{"Label2", ControlKind::Label};
  Control txtDescription{"txtDescription", ControlKind::TextBox};
  Control txtPhonenum{"txtPhonenum", ControlKind::TextBox};
  Control cmdOk{"cmdOk", ControlKind::Button, "OK"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};

  void Initialize(const std::string& caption, const std::string& label2, const std::string& label1);
  void cmdOk_Click();
  void cmdCancel_Click();

  // Set by whoever shows the window.
  std::function<void()> CloseWindow;
  std::function<void()> ShowCaption;

 private:
  Session& s_;
  PhoneListModel& parent_;
};

class PhoneListModel {
 public:
  // `modem` dials the phone list's numbers and sends the modem list's commands.
  PhoneListModel(Session& session, modModem& modem);
  ~PhoneListModel();
  PhoneListModel(const PhoneListModel&) = delete;
  PhoneListModel& operator=(const PhoneListModel&) = delete;

  // Properties, as the caller sets them. Setting DbName opens the list's database.
  void SetDbName(const std::string& name);
  std::string TbName, FieldName1, FieldName2, ColName1, ColName2;
  int16_t ColWidth1 = 0, ColWidth2 = 0;
  // All properties of a setup, then Initialize with its texts, then Form_Load.
  void Setup(const PhoneListSetup& setup);

  std::string caption;
  FlexGrid grid1{3};
  Control txtNumber{"txtNumber", ControlKind::TextBox};
  Control Label1_0{"Label1_0", ControlKind::Label};
  Control Label1_1{"Label1_1", ControlKind::Label};
  Control cmdDial{"cmdDial", ControlKind::Button};
  Control cmdInsert{"cmdInsert", ControlKind::Button, "Insert"};
  Control cmdEdit{"cmdEdit", ControlKind::Button, "Edit"};
  Control cmdDelete{"cmdDelete", ControlKind::Button, "Delete"};
  Control cmdClose{"cmdClose", ControlKind::Button, "Close"};
  Control cmdHelp{"cmdHelp", ControlKind::Button, "Help"};
  Control chkInsert{"chkInsert", ControlKind::CheckBox};  // 1: the edit window adds a row
  Control chkRemote{"chkRemote", ControlKind::CheckBox};  // 1: commands to the remote setup's port

  bool ListLoading = false;
  bool ListEditing = false;
  PhoneUpdateModel& UpdateWindow() { return *update_; }

  void Initialize(const std::string& caption, const std::string& prompt, const std::string& label,
                  const std::string& buttonCaption);
  void Form_Load();
  void Form_Unload();
  void LoadGrid();
  // The first row whose second column is `text`, made current; 0 when none.
  int FindRow(const std::string& text);
  void grid1_SelChange();
  void grid1_DblClick();
  void cmdEdit_Click();
  void cmdInsert_Click();
  void cmdDelete_Click();
  void cmdDial_Click();
  void cmdClose_Click();
  void cmdHelp_Click();
  // Called by the edit window: true when the row was stored.
  bool UpdatePhoneList(const std::string& first, const std::string& second);
  bool InsertNewPhone(const std::string& first, const std::string& second);

  // Set by whoever shows the window.
  std::function<void()> HideWindow, ShowWindow, CloseWindow, ShowCaption;
  std::function<void(bool)> EnableWindow;
  std::function<void()> ShowUpdateModal;  // the edit window, modally
  std::function<void()> CloseUpdate;

  // The recordset of the list, as the window holds it.
  Recordset& Records() { return rs_; }

 private:
  void OpenEditor(int insert);
  void Unload();
  Session& s_;
  modModem& modem_;
  Database db_;
  Recordset rs_;
  std::unique_ptr<PhoneUpdateModel> update_;
};

// The help text of the modem commands, and its title's tail.
extern const char* const kModemCommandHelp;

}  // namespace r6183
