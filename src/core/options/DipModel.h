#pragma once
// The rules of the system options window (frmDip): one row of DipSwitch, a check box a
// field, and three fields shown through option groups that mirror hidden bound controls.
// What the operator changes reaches the row only through OK.
#include <deque>
#include <functional>
#include <string>

#include "editors/Controls.h"
#include "editors/DataControl.h"
#include "options/DipRules.h"

namespace r6183 {

class Session;

class DipModel {
 public:
  explicit DipModel(Session& session);
  DipModel(const DipModel&) = delete;
  DipModel& operator=(const DipModel&) = delete;

  static constexpr const char* kCaption = "System Options";
  static constexpr int kHeight = 5895;  // twips
  static constexpr int kWidth = 6405;

  std::deque<Control> chkLowStation;  // " Station 21" ... " Station 24"
  Control chkQueueTone{"chkQueueTone", ControlKind::CheckBox, " Queue Tone"};
  Control chkDialTone{"chkDialTone", ControlKind::CheckBox, " Dial Tone"};
  Control chkHfAlertTone{"chkHfAlertTone", ControlKind::CheckBox, " Handsfree Alert Tone"};
  Control chkPageAlertTone{"chkPageAlertTone", ControlKind::CheckBox, " Page Alert Tone"};
  Control chkRingbackTone{"chkRingbackTone", ControlKind::CheckBox, " Ringback Tone"};
  Control chkPrivacyTone{"chkPrivacyTone", ControlKind::CheckBox, " Privacy Tone"};
  Control chkOverride{"chkOverride", ControlKind::CheckBox, " Override External Global"};
  // hidden, bound; the option groups below show them (an option group's value is its
  // option index plus one)
  Control chkPriorityGlobal{"chkPriorityGlobal", ControlKind::CheckBox};
  Control chkExtToneSource{"chkExtToneSource", ControlKind::CheckBox};
  Control lblRingPattern{"lblRingPattern", ControlKind::Label};
  Control optPriority{"optPriority", ControlKind::OptionGroup};      // " Local All Call", " Global All Call"
  Control optToneSource{"optToneSource", ControlKind::OptionGroup};  // " Internal", " External"
  Control optRingPattern{"optRingPattern", ControlKind::OptionGroup};  // " American", " Dutch", " British"
  Control cmdOk{"cmdOk", ControlKind::Button, "OK"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};
  Control cmdDipswitch{"cmdDipswitch", ControlKind::Button, "Dip Switch"};
  DataControl dtaDip{"dtaDip"};

  bool OptionsChanged = false;
  bool OptionsAccepted = false;

  bool Loaded() const { return loaded_; }
  void Form_Load();
  // Runs once as the window goes, however it is closed.
  void Form_Unload();
  bool UncommittedChanges() const { return loaded_ && OptionsChanged; }
  // The values the controls hold now, saved or not.
  DipValues Values() const;

  // Set by whoever shows the window.
  std::function<void()> CloseWindow;  // closes the window; Form_Unload runs on the way
  std::function<void()> ShowChart;    // the dip-switch chart, modal

 private:
  void Track(const Control& c);
  // The option groups show the hidden controls.
  void ShowHidden();
  void Close();

  Session& s_;
  bool loaded_ = false;
  bool filling_ = false;  // the row is being put into the controls
};

// System > Options: the window, modally; nothing while a transfer or a dial runs.
void mnuSysOpt_Click(Session& session);

}  // namespace r6183
