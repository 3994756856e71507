#pragma once
// Alt+letter in an editor window that lives inside the main window presses that window's own
// button before the main window's menu bar, another window's buttons or the buttons of tabs
// not shown can take the key: Alt+D deletes a station in the numbering window rather than
// opening Date/Time, and Alt+I includes the groups of the tab in front.
#include <QObject>

class QAbstractButton;
class QKeyEvent;
class QWidget;

namespace r6183::gui {

class WindowMnemonics : public QObject {
 public:
  // Watches `window` for the rest of its life.
  static void Install(QWidget& window);
  // The one shown, enabled button of `window` whose mnemonic is the key; none when no button
  // or several carry it (those are left to the usual cycling through their focus).
  static QAbstractButton* Find(const QWidget& window, const QKeyEvent& k);

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  explicit WindowMnemonics(QWidget& window);
};

}  // namespace r6183::gui
