#pragma once
// The date window: shows the unit's clock as the T message in msg_str holds it, lets the
// operator edit it box by box, and sends it back on "Update".
#include <QDialog>

#include <array>
#include <string>

#include "gui/shell/FormLink.h"
#include "protocol/DateTime.h"

class QCheckBox;
class QLineEdit;
class QPushButton;
class QScrollBar;

namespace r6183 {
class ModComm;
class ProgressWindow;
class Session;
}  // namespace r6183

namespace r6183::gui {

class frmDate : public QDialog {
  Q_OBJECT

 public:
  // Fills itself from comm.msg_str and the daylight flags of the session.
  frmDate(Session& session, ModComm& comm, QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* e) override;

 private:
  // One group of three boxes and their spin bar: the date or the time.
  struct Group {
    std::array<QLineEdit*, 3> boxes{};
    QScrollBar* spin = nullptr;
    BoxRange (*range)(int) = nullptr;
    const char* refusal = "";  // shown when an entry is out of range
    int index = 0;             // the box in use
  };

  QWidget* BuildGroup(Group& g, const QString& title, const QString& name, QChar separator);
  void Form_Load();
  void GotFocus(Group& g, int i);
  void LostFocus(Group& g, int i);
  void Change(Group& g, int i, bool typed);
  void Validate(Group& g, int i);
  void SpinChange(Group& g, int value);
  void Refuse(Group& g, int i, const QString& oldText);
  void EnterPressed(Group& g, int i);
  void SetSpin(Group& g, int value);
  void SetBoxText(QLineEdit* box, const QString& text);
  void cmdOk_Click();

  Session& session_;
  ModComm& comm_;
  FormLink form_;
  Group date_, time_;
  QCheckBox* daylight_ = nullptr;
  QPushButton* cmdOk_ = nullptr;
  QPushButton* cmdCancel_ = nullptr;
  QLineEdit* current_ = nullptr;  // the box that took the focus last, until it loses it
  QString oldText_;               // its text as it stood then
  bool spinGuard_ = false;        // the code moves a spin bar: no change event
  bool filling_ = false;          // no validation while the window is filled
  bool invalid_ = false;
  bool codeEdit_ = false;         // the code, not the operator, changes a box
};

// The Date/Time command of the desktop program: the exchange, and the date window
// modally once the unit's clock makes sense.
void RunDateTimeCommand(Session& session, ModComm& comm, ProgressWindow& progress, QWidget* parent);

}  // namespace r6183::gui
