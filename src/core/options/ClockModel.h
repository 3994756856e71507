#pragma once
// The rules of the clocks window (frmClock): one row of ClockDef held in hidden bound
// controls, which the two clock lists and the two option groups mirror. A clock is stored
// as the 1-based position of its type in the Clocks catalogue. What the operator changes
// reaches the row only through OK.
#include <functional>
#include <string>

#include "editors/Controls.h"
#include "editors/DataControl.h"
#include "shell/Journal.h"

namespace r6183 {

class Session;

class ClockModel {
 public:
  explicit ClockModel(Session& session);
  ClockModel(const ClockModel&) = delete;
  ClockModel& operator=(const ClockModel&) = delete;

  static constexpr const char* kCaption = "Modify Clock Configurations";

  // hidden, bound
  Control txtclockA{"txtclockA", ControlKind::TextBox};
  Control txtClockB{"txtClockB", ControlKind::TextBox};
  Control txtDirection{"txtDirection", ControlKind::TextBox};
  Control txtBCD_Type{"txtBCD_Type", ControlKind::TextBox};
  // shown; an option group's value is its option index plus one
  ListControl cbClockA{"cbClockA"};
  ListControl cbClockB{"cbClockB"};
  Control lblCorrection{"lblCorrection", ControlKind::Label};
  Control lblCorrectionB{"lblCorrectionB", ControlKind::Label};
  Control optDirection{"optDirection", ControlKind::OptionGroup};  // "Input", "Output"
  Control optBCDType{"optBCDType", ControlKind::OptionGroup};      // "12 Hour", "24  Hour", ...
  Control cmdOk{"cmdOk", ControlKind::Button, "OK"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};
  DataControl dtaClock{"dtaClock"};

  bool OptionsChanged = false;
  bool OptionsAccepted = false;
  bool ClockFormLoaded = false;

  bool Loaded() const { return loaded_; }
  void Form_Load();
  void Form_Unload();
  bool UncommittedChanges() const { return loaded_ && OptionsChanged; }

  // The operator in a clock list: a line taken (a click; also what setting the line
  // runs), the list opened, the list left.
  void cbClockA_Click();
  void cbClockB_Click();
  void cbClockA_DropDown();
  void cbClockB_DropDown();
  void cbClockA_LostFocus();
  void cbClockB_LostFocus();
  // Takes line `index` of a list as a click on it does.
  void PickClockA(int index);
  void PickClockB(int index);

  // Set by whoever shows the window.
  std::function<void()> CloseWindow;

 private:
  void LoadList(ListControl& list, const Where& where);
  void GetClockVars(const std::string& name, Control& label, const Where& where);
  void MarkChange(const Where& where);
  void ShowHidden();
  void Close();

  Session& s_;
  bool loaded_ = false;
  bool filling_ = false;
};

// Clocks: the window, modally.
void mnuClocks_Click(Session& session);

}  // namespace r6183
