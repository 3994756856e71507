#pragma once
// The rules of the quick menu, "Programming Windows": where it goes and what it lists.
#include <cstdint>
#include <string>
#include <vector>

namespace r6183 {

struct ProcessState;

// A window's place in twips.
struct TwipsRect {
  int32_t top = 0, left = 0, width = 0, height = 0;
  bool operator==(const TwipsRect&) const = default;
};

inline constexpr int32_t kSwitchBoardWidth = 2670;
inline constexpr int32_t kSwitchBoardMinHeight = 2500;
inline constexpr int32_t kSwitchBoardMinEdge = 500;

// The saved place when it lies on the screen (edges at least 500 from the top and the
// left, the fixed width, at least the least height); otherwise a place inside the main
// window, at its right-hand side below the menu.
TwipsRect SwitchBoardPlace(const ProcessState& st, int32_t screenWidth, int32_t screenHeight,
                           const TwipsRect& mainWindow);

// The size a resize may leave: the fixed width, at least the least height.
TwipsRect SwitchBoardResized(TwipsRect r);

// The list, by what the configuration allows.
std::vector<std::string> SwitchBoardEntries(const ProcessState& st);

}  // namespace r6183
