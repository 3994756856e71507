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
// The place of a window that was given `given`, in twips: a side still on the pixel
// `given` put it on keeps its twips, so that a place saved and loaded again does not
// creep by a pixel's rounding at each start; a side that moved takes its new pixels.
inline TwipsRect ToTwipsKeeping(const QRect& now, const TwipsRect& given) {
  const QRect was = ToPixels(given);
  const TwipsRect moved = ToTwips(now);
  return {now.y() == was.y() ? given.top : moved.top, now.x() == was.x() ? given.left : moved.left,
          now.width() == was.width() ? given.width : moved.width,
          now.height() == was.height() ? given.height : moved.height};
}

}  // namespace r6183::gui
