#include "gui/shell/Centre.h"

#include <QScreen>

namespace r6183::gui {

void CentreWindow(QWidget& w, const QWidget* over) {
  QRect area;
  if (over) {
    area = over->frameGeometry();
  } else if (const QScreen* screen = w.screen()) {
    area = screen->availableGeometry();
  }
  if (area.isEmpty()) return;
  QRect frame = w.frameGeometry();
  frame.moveCenter(area.center());
  w.move(frame.topLeft());
}

}  // namespace r6183::gui
