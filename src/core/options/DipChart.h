#pragma once
// The rules of the dip-switch chart (frmDipSw): the sixteen switches of the main board as
// the options window's controls would set them, saved or not. Read only.
#include <array>
#include <deque>
#include <functional>

#include "editors/Controls.h"
#include "options/DipRules.h"

namespace r6183 {

class DipModel;
class Session;

class DipChart {
 public:
  explicit DipChart(Session& session);
  DipChart(const DipChart&) = delete;
  DipChart& operator=(const DipChart&) = delete;

  static constexpr const char* kCaption = "Dipswitch Equivalents (Main Board)";
  static constexpr const char* kNote = "white indicates switch position";
  static constexpr int kWhite = 16777215;
  static constexpr int kBlack = 0;
  static constexpr int kAsDesigned = -1;  // a shape not yet filled

  std::deque<Control> lblSwitch;  // "ON" or "OFF", empty as designed
  std::array<int, kSwitches> shpOn{};
  std::array<int, kSwitches> shpOff{};
  Control cmdClose{"cmdClose", ControlKind::Button, "Close"};

  // Reads the controls of the open options window.
  void Form_Load(const DipModel& dip);
  void Switch_On(int index);
  void Switch_Off(int index);

  // Set by whoever shows the window.
  std::function<void()> CloseWindow;
  // The view: runs after the shapes change.
  std::function<void()> Mirror;

 private:
  Session& s_;
};

}  // namespace r6183
