#pragma once
// The rules of the auto-numbering window (frmAuto): from the selected station and its
// number, the operator gives the last number of a run; each following station gets the
// number before plus 1. Three checks, in order, refuse a run that leaves the system's
// stations, goes nowhere, or would give a later station a number that begins with the
// first.
#include <functional>
#include <string>

#include "editors/Controls.h"

namespace r6183 {

class ClidModel;
class Session;

class AutoModel {
 public:
  AutoModel(Session& session, ClidModel& clid);
  AutoModel(const AutoModel&) = delete;
  AutoModel& operator=(const AutoModel&) = delete;

  static constexpr const char* kCaption = "Auto Numbering";
  static constexpr const char* kTitle = "Automatic Numbering";

  Control Label1{"Label1", ControlKind::Label, "Automatically increment Arch Numbers starting from "};
  Control lblStartStation{"lblStartStation", ControlKind::Label};
  Control lblStartArchnum{"lblStartArchnum", ControlKind::Label};
  Control txtStopArchnum{"txtStopArchnum", ControlKind::TextBox};
  Control cmdOk{"cmdOk", ControlKind::Button, "OK"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};

  // The station that would get the last number is beyond the configuration's last.
  bool Exceeds_Max_Stations();
  // A start of one or two digits and a last number of at least ten times it: a later
  // number would begin with the first.
  bool Conflicts_In_Range();

  // Start station and number, as cmdAuto gives them; the last number is preset to the start.
  void Start(const std::string& station, const std::string& archnum);

  // Set by whoever shows the window.
  std::function<void(const std::string& control)> SetFocus;
  std::function<void(const std::string& control)> SelectAll;
  std::function<void()> CloseWindow;

 private:
  void cmdOk_Click();
  void cmdCancel_Click();
  void Refuse(const std::string& text);
  void Unload();

  Session& s_;
  ClidModel& clid_;
  int16_t last_ = 0;
  bool filtering_ = false;
};

}  // namespace r6183
