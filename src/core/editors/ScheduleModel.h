#pragma once
// The rules of a schedule window (frmSched): the events of one master clock schedule in
// time order, the buttons that add, edit and delete them through the event window, and the
// seven day boxes, of which each day can be active in one schedule only.
#include <deque>
#include <functional>
#include <memory>
#include <string>

#include "editors/Controls.h"
#include "editors/DataControl.h"

namespace r6183 {

class EventModel;
class FormsRegistry;
class Session;

class ScheduleModel {
 public:
  explicit ScheduleModel(Session& session);
  ~ScheduleModel();
  ScheduleModel(const ScheduleModel&) = delete;
  ScheduleModel& operator=(const ScheduleModel&) = delete;

  static constexpr const char* kCaption = "Master Clock Schedule ";

  Control lblSchedule{"lblSchedule", ControlKind::Label};
  ListControl lstEvent{"lstEvent"};
  std::deque<Control> cmdEvent;  // "&Add", "&Edit", "&Delete"
  std::deque<Control> chkDay;    // " Sunday" ... " Saturday"
  Control cmdClose{"cmdClose", ControlKind::Button, "Close"};
  DataControl dtaEvent{"dtaEvent"};
  DataControl dtaDays{"dtaDays"};

  const std::string& Caption() const { return caption_; }
  bool Loaded() const { return loaded_; }
  // The schedule number in lblSchedule.
  int Schedule() const;

  bool DaysChanged = false;
  bool DaysLoading = false;

  // The window's events. Form_Load takes the schedule from ScheduleNumber.
  void Form_Load();
  void Form_Activate();
  void Form_Deactivate();
  void Form_Unload();
  void Build_lstEvent();
  void Update_Days();
  void cmdEvent_Click(int index);

  // Set by whoever shows the window.
  // Shows the event window modally and returns when it has closed.
  std::function<void(EventModel&)> ShowEventWindow;
  // Closes the window; its Form_Unload runs on the way. Without it, Close unloads here.
  std::function<void()> CloseWindow;

 private:
  void chkDay_Click(int index);
  // Opens the event window on this window's recordset, runs `prepare` and shows it.
  void RunEventWindow(const std::function<void(EventModel&)>& prepare);

  Session& s_;
  std::string caption_ = kCaption;
  bool loaded_ = false;
};

// The index among the loaded windows of the last one with this caption; 0 when none has it.
int GetFormIndex(const FormsRegistry& forms, const std::string& caption);

// The menu entries of the schedules: the window of schedule N in front, and all six with
// schedule 1 ending in front. Both do nothing while a transfer or a modem dial runs.
void mnuSched_Click(Session& session, int schedule);
void mnuAllSched_Click(Session& session);

}  // namespace r6183
