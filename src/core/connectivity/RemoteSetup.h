#pragma once
// The set-up of the modem that will answer beside the unit at the site (frmRemote): the
// operator connects it to this computer and is walked through five steps: the switch chart
// of one known modem, the port and a test, factory defaults, further commands from the
// modem command list, saving to the modem's memory, and a closing note. frmUSRobot is the
// modal chart of that modem's eight switches.
#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>

#include "editors/Controls.h"

namespace r6183 {

class Session;
class modModem;

// The positions of SW1 to SW8.
using SwitchChart = std::array<const char*, 8>;
inline constexpr SwitchChart kSwitchesBefore{"DOWN", "UP", "DOWN", "UP", "UP", "UP", "UP", "DOWN"};
inline constexpr SwitchChart kSwitchesAfter{"DOWN", "UP", "UP", "UP", "UP", "UP", "UP", "DOWN"};

class USRobotModel {
 public:
  explicit USRobotModel(Session& session);
  static constexpr const char* kCaption = "US Robotics \"Sportster\" modem";
  Control lbl_instruction{"lbl_instruction", ControlKind::Label,
                          "With modem power OFF, set DIP switches as follows:"};
  std::deque<Control> lbl_sw;  // "SW1" to "SW8"
  std::deque<Control> txt_sw;  // each switch's position
  Control cmd_Ok{"cmd_Ok", ControlKind::Button, "OK"};

  void Initialize(const SwitchChart& chart);
  std::function<void()> CloseWindow;

 private:
  Session& s_;
};

inline constexpr const char* kRemoteSetupCaption = "Remote Modem Setup";

class RemoteModel {
 public:
  RemoteModel(Session& session, modModem& modem);

  static constexpr const char* kCaption = kRemoteSetupCaption;
  static constexpr int32_t kDesignWidth = 6000;  // twips
  Control lbl1{"lbl1", ControlKind::Label};
  Control lbl2{"lbl2", ControlKind::Label};
  Control lbl3{"lbl3", ControlKind::Label,
               "Note:  Connection to a phone line is not required during remote modem setup."};
  Control lblCommand{"lblCommand", ControlKind::Label, "Command :  AT"};
  Control txtCommand{"txtCommand", ControlKind::TextBox, "&F"};
  Control cmdYes{"cmdYes", ControlKind::Button, "Yes"};
  Control cmdNo{"cmdNo", ControlKind::Button, "No"};
  Control cmdOk{"cmdOk", ControlKind::Button, "Ok"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};

  int16_t RemoteStep = 0;
  bool RemoteStepFailed = false;
  bool RemoteDipModem = false;
  // The window's width in twips, as SetFormEnvironment leaves it.
  int32_t Width = kDesignWidth;

  void Form_Load();
  void Form_Unload();
  void SetFormEnvironment();
  void DisableAllMenuOptions();
  void EnableMenuOptions();
  void OpenSetupScreen();
  void cmdYes_Click();
  void cmdNo_Click();
  void cmdOk_Click();
  void cmdCancel_Click();

  // Set by whoever shows the window.
  std::function<void()> HideWindow, ShowWindow, CloseWindow;
  std::function<void()> Resized;  // after Width changed
  // The switch chart, modally.
  std::function<void(const SwitchChart&)> ShowChart;
  // The port window, modally and without its Auto Find; it sets ComPortNumber and
  // ComPortCancelled as its OK or Cancel does.
  std::function<void()> ShowPortChoice;

 private:
  void Unload();
  void Chart(const SwitchChart& chart);
  void PortChoiceAndTest();
  void Step3Yes();
  void Step4(bool save);
  Session& s_;
  modModem& modem_;
  bool documentOpen_ = false;  // remembered by DisableAllMenuOptions
  bool unloaded_ = false;
};

}  // namespace r6183
