#pragma once
// The rules of the system configuration window (frmConfig): how many boards the system
// has. A smaller system loses the programming of the removed boards; a larger one gets
// the tone defaults of its new boards. The window opens only with no other editor open.
#include <functional>
#include <string>

#include "editors/Controls.h"
#include "editors/DataControl.h"

namespace r6183 {

class Session;

class ConfigModel {
 public:
  explicit ConfigModel(Session& session);
  ConfigModel(const ConfigModel&) = delete;
  ConfigModel& operator=(const ConfigModel&) = delete;

  static constexpr const char* kCaption = "System Configuration";
  // The options' captions, option i for SystemConfig i.
  static const char* const kOptions[4];
  // The window is this much lower than designed, as the clock board is not offered.
  static constexpr int kHiddenClockHeight = 800;

  Control Frame2{"Frame2", ControlKind::Frame, "Select System Configuration"};
  Control optConfig{"optConfig", ControlKind::OptionGroup};  // value i+1: option i
  Control Frame1{"Frame1", ControlKind::Frame};
  Control cbClock{"cbClock", ControlKind::CheckBox, " Clock Board"};
  Control cmdOK{"cmdOK", ControlKind::Button, "OK"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};
  Control cmdDetails{"cmdDetails", ControlKind::Button, "Details..."};
  DataControl dtaConfig{"dtaConfig"};
  DataControl dtaClock{"dtaClock"};

  int OldConfig = 0;
  bool OldClock = false;

  void Form_Load();
  void cmdOK_Click();
  // Ends the window: CloseWindow when set, else nothing more than the data controls' end.
  void Unload();

  // Set by whoever shows the window.
  std::function<void()> CloseWindow;
  std::function<void()> ShowDetails;

 private:
  Session& s_;
};

// Sets the emergency and time tones of the page groups of boards `first` to `last`.
void UpdateDefaults(Session& session, int first, int last);

// The menu entry: opens the configuration window once every other editor is closed,
// asking first; the quick menu is loaded again afterwards.
void mnuConfig_Click(Session& session);

// The text of the question asked before the open windows are closed.
std::string ConfigQuestion(bool uncommitted);
// The question before boards are removed.
extern const char* const kShrinkQuestion;

}  // namespace r6183
