#pragma once
// Window sizes are kept in twips in the settings file: 15 twips to a logical pixel.
#include <QRect>

#include "shell/SwitchBoard.h"

namespace r6183::gui {

inline constexpr int kTwipsPerPixel = 15;
inline int ToPixels(int32_t twips) { return static_cast<int>(twips / kTwipsPerPixel); }
inline int32_t ToTwips(int pixels) { return static_cast<int32_t>(pixels) * kTwipsPerPixel; }
inline QRect ToPixels(const TwipsRect& r) {
  return {ToPixels(r.left), ToPixels(r.top), ToPixels(r.width), ToPixels(r.height)};
}
inline TwipsRect ToTwips(const QRect& r) { return {ToTwips(r.y()), ToTwips(r.x()), ToTwips(r.width()), ToTwips(r.height())}; }

}  // namespace r6183::gui
