#include "shell/SwitchBoard.h"

#include <algorithm>

#include "shell/ProcessState.h"

namespace r6183 {

namespace {
constexpr int32_t kInset = 120;       // from the main window's right-hand edge
constexpr int32_t kBelowMenu = 1100;  // below its caption, menu and the top of its area
}  // namespace

TwipsRect SwitchBoardPlace(const ProcessState& st, int32_t screenWidth, int32_t screenHeight,
                           const TwipsRect& mainWindow) {
  const bool offScreen = st.SwitchBoardLeft + st.SwitchBoardWidth > screenWidth ||
                         st.SwitchBoardTop + st.SwitchBoardHeight > screenHeight;
  if (offScreen) {
    TwipsRect r;
    r.width = kSwitchBoardWidth;
    r.height = std::max(kSwitchBoardMinHeight, std::min<int32_t>(mainWindow.height - kBelowMenu - kInset, 5200));
    r.left = std::max(0, mainWindow.left + mainWindow.width - kSwitchBoardWidth - kInset);
    r.top = std::max(0, mainWindow.top + kBelowMenu);
    return r;
  }
  return {std::max(kSwitchBoardMinEdge, st.SwitchBoardTop), std::max(kSwitchBoardMinEdge, st.SwitchBoardLeft),
          kSwitchBoardWidth, std::max(kSwitchBoardMinHeight, st.SwitchBoardHeight)};
}

TwipsRect SwitchBoardResized(TwipsRect r) {
  r.width = kSwitchBoardWidth;
  r.height = std::max(kSwitchBoardMinHeight, r.height);
  return r;
}

std::vector<std::string> SwitchBoardEntries(const ProcessState& st) {
  std::vector<std::string> list;
  for (int i = 1; i <= 6; ++i) list.push_back("Schedule " + std::to_string(i));
  if (st.ClocksEnabled != 0) list.push_back("Clock");
  for (const char* e : {"Custom Page Groups", "Audio Connections", "System", "ArchNumber / CLID", "Class Of Service"})
    list.push_back(e);
  return list;
}

}  // namespace r6183
