#include "gui/editors/WindowMnemonics.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QKeySequence>
#include <QWidget>

namespace r6183::gui {

WindowMnemonics::WindowMnemonics(QWidget& window) : QObject(&window) {}

void WindowMnemonics::Install(QWidget& window) { window.installEventFilter(new WindowMnemonics(window)); }

QAbstractButton* WindowMnemonics::Find(const QWidget& window, const QKeyEvent& k) {
  if (k.modifiers() != Qt::AltModifier) return nullptr;
  const QKeySequence key(Qt::ALT | k.key());
  QAbstractButton* found = nullptr;
  for (QAbstractButton* b : window.findChildren<QAbstractButton*>()) {
    if (!b->isVisible() || !b->isEnabled() || QKeySequence::mnemonic(b->text()) != key) continue;
    if (found) return nullptr;
    found = b;
  }
  return found;
}

bool WindowMnemonics::eventFilter(QObject* watched, QEvent* e) {
  auto* window = static_cast<QWidget*>(parent());
  if (watched != window || (e->type() != QEvent::ShortcutOverride && e->type() != QEvent::KeyPress))
    return false;
  QAbstractButton* b = Find(*window, *static_cast<QKeyEvent*>(e));
  if (!b) return false;
  e->accept();
  if (e->type() == QEvent::KeyPress) {
    b->setFocus(Qt::ShortcutFocusReason);
    b->click();
  }
  return true;
}

}  // namespace r6183::gui
