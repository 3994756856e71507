#pragma once
// The rules of the station window (frmStation): one station's Architectural Number and
// CLID description, checked against the other stations' numbers on OK, and the four move
// buttons that save the station and go to another of the board in one step.
#include <deque>
#include <functional>
#include <string>

#include "editors/Controls.h"

namespace r6183 {

class ClidModel;
class ConflictModel;
class Session;

class StationModel {
 public:
  // The window loads from the numbering window: its board and the selected line.
  StationModel(Session& session, ClidModel& clid);
  ~StationModel();
  StationModel(const StationModel&) = delete;
  StationModel& operator=(const StationModel&) = delete;

  static constexpr const char* kCaption = "Station ";

  Control lblStation{"lblStation", ControlKind::Label};
  Control txtArchnum{"txtArchnum", ControlKind::TextBox};
  Control txtClid{"txtClid", ControlKind::TextBox};
  std::deque<Control> cmdMove;  // "<<", "<", ">", ">>"
  Control cmdOk{"cmdOk", ControlKind::Button, "OK"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};

  // members of the window
  int ConflictReply = 0;
  bool ArchTyped = false;
  bool ClidTyped = false;
  int BoardTab = 0;
  int FirstStation = 0;
  int LastStation = 0;
  int ListPos = 0;

  const std::string& Caption() const { return caption_; }
  bool Loaded() const { return loaded_; }

  // The station, its number and description as the window opens on them.
  void Show(const std::string& station, const std::string& archnum, const std::string& clid);
  // The window comes to the front: the focus goes to the number.
  void Form_Activate();

  // Set by whoever shows the window.
  std::function<void(ConflictModel&)> ShowConflictWindow;  // modal; returns when it closed
  std::function<void(const std::string& control)> SetFocus;
  std::function<void(const std::string& control)> SelectAll;
  std::function<void()> CloseWindow;  // the window has unloaded

 private:
  void cmdOk_Click();
  void cmdMove_Click(int index);
  void Unload();
  // Find_Conflicts on the station and its number; with conflicts the conflict window
  // answers, without them the reply is Yes.
  void CheckConflicts();
  // The shown fields into the station's row, its list line rewritten, then the
  // conflicting stations' numbers blanked. False when the station's row is not there.
  void SaveStation();
  void BlankConflicts(const std::function<void()>& afterEach);
  void SelectLine();
  // Programmatic changes of the fields, which are not the operator's typing.
  void Fill(Control& c, const std::string& text);

  Session& s_;
  ClidModel& clid_;
  std::string caption_ = kCaption;
  std::string acceptedClid_;  // the description before the operator's last change
  bool loaded_ = false;
  bool filling_ = false;
};

}  // namespace r6183
