#pragma once
// The About window: the product's words and the revisions the unit reports.
#include <QDialog>

#include "gui/shell/FormLink.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTableWidget;

namespace r6183 {
class ModComm;
class ProgressWindow;
class Session;
struct RevisionLines;
}  // namespace r6183

namespace r6183::gui {

class frmAbout : public QDialog {
  Q_OBJECT

 public:
  // Loads at once: asks the unit for its revisions behind the progress window.
  frmAbout(Session& session, ModComm& comm, ProgressWindow& progress, QWidget* parent = nullptr);

 protected:

 private:
  void Form_Load(ModComm& comm, ProgressWindow& progress);
  void FillGrid(const RevisionLines& lines);

  Session& session_;
  FormLink form_;
  QLabel* picIcon_ = nullptr;
  QLabel* Label2_ = nullptr;
  QLineEdit* Text3_ = nullptr;
  QPlainTextEdit* Text2_ = nullptr;
  QTableWidget* flexAbout_ = nullptr;
  QPushButton* cmdOk_ = nullptr;
};

// Help > About: the guard of a busy link, the root menus gated around the modal window.
void mnuHelpAbout_Click(Session& session, ModComm& comm, ProgressWindow& progress, QWidget* parent);

}  // namespace r6183::gui
