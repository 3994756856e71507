#pragma once
// Places a window in the middle of another one, or of its screen.
#include <QWidget>

namespace r6183::gui {

// The part of the window's screen that windows may take (without panels and docks).
QRect ScreenArea(const QWidget& w);

// Centres `w` over `over`, or over the available area of its screen when `over` is null.
void CentreWindow(QWidget& w, const QWidget* over = nullptr);

}  // namespace r6183::gui
