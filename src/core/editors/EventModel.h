#pragma once
// The rules of the event window (frmEvent): it walks through the events of one schedule
// on the schedule window's recordset, and adds, changes and deletes them. Three modes,
// told by the visible label: view, add and edit.
#include <deque>
#include <functional>
#include <string>

#include "editors/Controls.h"
#include "editors/DataControl.h"

namespace r6183 {

class ScheduleModel;
class Session;

class EventModel {
 public:
  // The window loads for the schedule in ScheduleNumber, opened by `schedule`.
  EventModel(Session& session, ScheduleModel& schedule);
  ~EventModel();
  EventModel(const EventModel&) = delete;
  EventModel& operator=(const EventModel&) = delete;

  static constexpr const char* kCaption = "Events - Schedule ";
  enum class Mode { View, Add, Edit };

  Control txtStartTime{"txtStartTime", ControlKind::TextBox, "00:00"};
  std::deque<Control> vsbStartTime;  // 0 the hours, 1 the minutes
  Control txtDuration{"txtDuration", ControlKind::TextBox};
  Control vsbDuration{"vsbDuration", ControlKind::ScrollBar};
  Control lblTone{"lblTone", ControlKind::Label};
  Control optTone{"optTone", ControlKind::OptionGroup};  // the relay, options 1 to 4
  std::deque<Control> chkPageGroup;                      // groups 1 to 16
  Control cmdInclude{"cmdInclude", ControlKind::Button, "&Include All"};
  Control cmdRemove{"cmdRemove", ControlKind::Button, "&Remove All"};
  std::deque<Control> cmdMove;  // "<<", "<", ">", ">>"
  Control cmdAdd{"cmdAdd", ControlKind::Button, "&Add"};
  Control cmdEdit{"cmdEdit", ControlKind::Button, "&Edit"};
  Control cmdDelete{"cmdDelete", ControlKind::Button, "&Delete"};
  Control cmdSave{"cmdSave", ControlKind::Button, "&Save"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "&Cancel"};
  Control cmdClose{"cmdClose", ControlKind::Button, "Close"};
  Control lblViewEvent{"lblViewEvent", ControlKind::Label, "View Events :"};
  Control lblAddEvent{"lblAddEvent", ControlKind::Label, "Add New Event :"};
  Control lblEditEvent{"lblEditEvent", ControlKind::Label, "Edit Event :"};
  Control fraEvent{"fraEvent", ControlKind::Frame};
  Control txtHideScreen{"txtHideScreen", ControlKind::TextBox, "Saving Event ..."};
  DataControl dtaEvent{"dtaEvent"};

  const std::string& Caption() const { return caption_; }
  Mode CurrentMode() const;
  bool Loaded() const { return loaded_; }
  ScheduleModel& Schedule() const { return sched_; }

  // members of the window
  bool SpinGuard = false;
  bool CanFocus = false;
  bool BadDuration = false;
  bool EventValid = false;
  bool TypedTime = false;
  bool Closing = false;
  int EventPos = 0;

  void Form_Activate();
  // Closing by the window's system box: never refused.
  void QueryUnload();
  // Leaving the start time after typing; false when the entry was refused.
  bool txtStartTime_LostFocus();
  // A command button as the operator presses it. A start time typed and not yet left is
  // checked first, as leaving the field would, and a refused entry stops the command.
  void Click(Control& button);

  // True while the window holds a new event, or an event changed in its fields.
  bool UncommittedChanges() const;
  bool DataChanged() const;
  // Settling the window before a save or a transfer: the event saved and the window
  // closed (it stays open when the checks refuse the event), or the event dropped and
  // the window closed.
  void Accept();
  void Drop();

  // Set by whoever shows the window.
  std::function<void(const std::string& control)> SetFocus;   // and select all of a text box
  std::function<void(const std::string& control)> SelectAll;  // the whole text of a text box
  std::function<void()> CloseWindow;                           // the window has unloaded

 private:
  void Form_Load();
  void Form_Unload();
  void UnloadWindow();
  void Begin_Add_Edit_Mode();
  void Begin_View_Mode();
  void SetMode(Mode m);
  void Default_Event();
  bool Duplicate_Time();
  bool Is_PageGroup_Selected() const;
  void Validate_Event();
  void Prompt_Save(const std::string& title);
  void RefreshFrmSched();
  void ReadCurrent();  // the four Cur values from the current record
  void Focus(const std::string& control);

  void cmdAdd_Click();
  void cmdEdit_Click();
  void cmdSave_Click();
  void cmdCancel_Click();
  void cmdDelete_Click();
  void cmdMove_Click(int index);
  void cmdClose_Click();
  void cmdInclude_Click();
  void cmdRemove_Click();
  void txtStartTime_Change();
  void txtStartTime_KeyPress(int& keyAscii);
  void vsbStartTime_Change(int index);
  void txtDuration_Change();
  void vsbDuration_Change();
  void optTone_Click();
  void lblTone_Change();
  void dtaEvent_Validate(int& action, bool& save);
  void SetBars(int hourBar, int minuteBar);

  Session& s_;
  ScheduleModel& sched_;
  std::string caption_ = kCaption;
  bool loaded_ = false;
  bool startTimeFocused_ = false;
};

}  // namespace r6183
