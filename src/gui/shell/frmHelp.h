#pragma once
// The help book in a window of its own: the pages of help/ of the application
// directory, with Contents, Back and Forward.
#include <QString>
#include <QTextBrowser>
#include <QWidget>

namespace r6183 {
class Session;
}

namespace r6183::gui {

class frmHelp : public QWidget {
  Q_OBJECT
 public:
  // `indexPath`: the book's contents page.
  frmHelp(const QString& indexPath, const QString& caption, QWidget* parent = nullptr);

  QTextBrowser* txtHelp() const { return txtHelp_; }
  void ShowContents();

 private:
  QString indexPath_;
  QTextBrowser* txtHelp_;
};

// Help > Contents: nothing while a transfer or a dial is under way; otherwise the help
// window, opened or brought to the front, or a notice when the book is not installed.
// Returns the window, or null.
frmHelp* mnuHelpContents_Click(Session& session, QWidget* parent);

}  // namespace r6183::gui
