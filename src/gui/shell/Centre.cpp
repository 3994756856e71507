#include "gui/shell/Centre.h"

#include <QGuiApplication>
#include <QScreen>

namespace r6183::gui {

QRect ScreenArea(const QWidget& w) {
  const QScreen* screen = w.screen() ? w.screen() : QGuiApplication::primaryScreen();
  return screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
}

void CentreWindow(QWidget& w, const QWidget* over) {
  const QRect area = over ? over->frameGeometry() : ScreenArea(w);
  if (area.isEmpty()) return;
  QRect frame = w.frameGeometry();
  frame.moveCenter(area.center());
  w.move(frame.topLeft());
}

}  // namespace r6183::gui
