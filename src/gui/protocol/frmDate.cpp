#include "gui/protocol/frmDate.h"

#include <QApplication>
#include <QCheckBox>
#include <QFocusEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>

#include "protocol/ModComm.h"
#include "shell/Conversions.h"
#include "shell/Session.h"
#include "shell/Utility.h"

namespace r6183::gui {

namespace {

constexpr const char* kCaption = "Set System Date and Time";

// A two-digit box that reports its focus changes and keys to the window.
class Box : public QLineEdit {
 public:
  std::function<void(Qt::FocusReason)> gotFocus, lostFocus;
  std::function<bool(QKeyEvent*)> keyPress;  // true: the key is taken
  void Advance() { focusNextPrevChild(true); }

 protected:
  void focusInEvent(QFocusEvent* e) override {
    QLineEdit::focusInEvent(e);
    if (gotFocus) gotFocus(e->reason());
  }
  void focusOutEvent(QFocusEvent* e) override {
    QLineEdit::focusOutEvent(e);
    if (lostFocus) lostFocus(e->reason());
  }
  void keyPressEvent(QKeyEvent* e) override {
    if (keyPress && keyPress(e)) return;
    QLineEdit::keyPressEvent(e);
  }
};

// Another window or a popup taking the focus is no leaving of the box.
bool WindowSwitch(Qt::FocusReason r) { return r == Qt::ActiveWindowFocusReason || r == Qt::PopupFocusReason; }

}  // namespace

frmDate::frmDate(Session& session, ModComm& comm, QWidget* parent)
    : QDialog(parent), session_(session), comm_(comm), form_{session, *this, "frmDate"} {
  setObjectName("frmDate");
  setWindowTitle(kCaption);
  date_.range = DateBoxRange;
  date_.refusal = "Invalid date entry";
  time_.range = TimeBoxRange;
  time_.refusal = "Invalid time entry";

  daylight_ = new QCheckBox("Enable Automatic DST Adjustment");
  daylight_->setObjectName("daylight");
  cmdOk_ = new QPushButton("Update");
  cmdOk_->setObjectName("cmdOk");
  cmdCancel_ = new QPushButton("Cancel");
  cmdCancel_->setObjectName("cmdCancel");
  // Enter on the check box updates; in a box it first checks the box (EnterPressed)
  cmdOk_->setDefault(true);
  connect(cmdOk_, &QPushButton::clicked, this, [this] { cmdOk_Click(); });
  connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdOk_);
  buttons->addWidget(cmdCancel_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(BuildGroup(date_, "&Date ( mm/dd/yy )", "Date", '/'));
  layout->addWidget(BuildGroup(time_, "&Time ( hh:mm:ss )", "Time", ':'));
  layout->addWidget(daylight_);
  layout->addLayout(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);

  QWidget* order[] = {date_.boxes[0], date_.boxes[1], date_.boxes[2], time_.boxes[0], time_.boxes[1],
                      time_.boxes[2], daylight_,      cmdOk_,         cmdCancel_};
  for (std::size_t i = 1; i < std::size(order); ++i) setTabOrder(order[i - 1], order[i]);

  form_.FollowVisibility();
  form_.Load();
  Form_Load();
}

// A spin bar is a vertical scroll bar on the negative of the box's number: its upper
// arrow lowers the value and so counts the box up. It takes no focus, so it steps the
// box that has it.
QWidget* frmDate::BuildGroup(Group& g, const QString& title, const QString& name, QChar separator) {
  auto* frame = new QGroupBox(title);
  frame->setObjectName("fra" + name);
  auto* row = new QHBoxLayout(frame);
  for (int i = 0; i < 3; ++i) {
    auto* box = new Box;
    box->setObjectName(QString("txt%1_%2").arg(name).arg(i));
    box->setMaxLength(2);
    box->setFixedWidth(box->fontMetrics().horizontalAdvance("000") + 12);
    box->setAlignment(Qt::AlignCenter);
    g.boxes[static_cast<std::size_t>(i)] = box;
    if (i > 0) row->addWidget(new QLabel(QString(separator)));
    row->addWidget(box);

    box->gotFocus = [this, &g, i, box](Qt::FocusReason) {
      if (box != current_) GotFocus(g, i);
    };
    box->lostFocus = [this, &g, i](Qt::FocusReason r) {
      if (!WindowSwitch(r)) LostFocus(g, i);
    };
    box->keyPress = [this, &g, i](QKeyEvent* e) {
      switch (e->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
          EnterPressed(g, i);
          return true;
        case Qt::Key_Up:
          g.spin->triggerAction(QAbstractSlider::SliderSingleStepSub);
          return true;
        case Qt::Key_Down:
          g.spin->triggerAction(QAbstractSlider::SliderSingleStepAdd);
          return true;
        default:
          break;
      }
      const QString text = e->text();
      if (text.size() != 1 || (text[0].unicode() < 32 && text[0].unicode() != 8)) return false;
      int key = text[0].unicode();
      Allow_digits_only(key);
      return key == 0;
    };
    connect(box, &QLineEdit::textChanged, this, [this, &g, i] { Change(g, i, !codeEdit_); });
  }
  g.spin = new QScrollBar(Qt::Vertical);
  g.spin->setObjectName("scroll" + name);
  g.spin->setFocusPolicy(Qt::NoFocus);
  g.spin->setSingleStep(1);
  g.spin->setPageStep(1);
  g.spin->setFixedHeight(g.boxes[0]->sizeHint().height() + 6);
  connect(g.spin, &QScrollBar::valueChanged, this, [this, &g](int v) { SpinChange(g, v); });
  row->addWidget(g.spin);
  row->addStretch();
  return frame;
}

void frmDate::Form_Load() {
  filling_ = true;
  const DateTimeBoxes b = BoxesOf(comm_.msg_str);
  const std::string values[] = {b.month, b.day, b.year, b.hour, b.minute, b.second};
  for (int i = 0; i < 3; ++i) {
    date_.boxes[static_cast<std::size_t>(i)]->setText(QString::fromStdString(values[i]));
    time_.boxes[static_cast<std::size_t>(i)]->setText(QString::fromStdString(values[i + 3]));
  }
  daylight_->setChecked(session_.state.DaylightEnabled != 0);
  daylight_->setEnabled(session_.state.DaylightSupported != 0);
  for (Group* g : {&date_, &time_}) {
    const BoxRange r = g->range(0);
    spinGuard_ = true;
    g->spin->setRange(-r.max, -r.min);
    spinGuard_ = false;
    SetSpin(*g, -static_cast<int>(Val(g->boxes[0]->text().toStdString())));
  }
  filling_ = false;
}

void frmDate::showEvent(QShowEvent* e) {
  QDialog::showEvent(e);
  date_.boxes[0]->setFocus();
}

void frmDate::SetSpin(Group& g, int value) {
  spinGuard_ = true;
  g.spin->setValue(value);
  spinGuard_ = false;
}

void frmDate::SetBoxText(QLineEdit* box, const QString& text) {
  codeEdit_ = true;
  box->setText(text);
  codeEdit_ = false;
}

void frmDate::Validate(Group& g, int i) {
  const std::string text = g.boxes[static_cast<std::size_t>(i)]->text().toStdString();
  if (BoxValid(text, g.range(i))) {
    SetSpin(g, -static_cast<int>(Val(text)));
    invalid_ = false;
  } else {
    invalid_ = true;
  }
}

void frmDate::GotFocus(Group& g, int i) {
  QLineEdit* box = g.boxes[static_cast<std::size_t>(i)];
  current_ = box;
  g.index = i;
  oldText_ = box->text();
  box->selectAll();
  const BoxRange r = g.range(i);
  spinGuard_ = true;
  g.spin->setRange(-r.max, -r.min);
  spinGuard_ = false;
  Validate(g, i);
}

void frmDate::Change(Group& g, int i, bool typed) {
  if (filling_) return;
  Validate(g, i);
  QLineEdit* box = g.boxes[static_cast<std::size_t>(i)];
  // two good digits typed: on to the next box, as a Tab would
  if (typed && box->text().size() == 2 && !invalid_) static_cast<Box*>(box)->Advance();
}

void frmDate::LostFocus(Group& g, int i) {
  QLineEdit* box = g.boxes[static_cast<std::size_t>(i)];
  current_ = nullptr;
  SetBoxText(box, QString::fromStdString(TwoDigitBox(box->text().toStdString())));
  if (!invalid_) return;
  invalid_ = false;
  // the refusal waits until the focus has settled, then takes it back
  QTimer::singleShot(0, this, [this, &g, i, old = oldText_] {
    if (isVisible()) Refuse(g, i, old);
  });
}

void frmDate::Refuse(Group& g, int i, const QString& oldText) {
  QLineEdit* box = g.boxes[static_cast<std::size_t>(i)];
  QApplication::beep();
  session_.prompter().Message(g.refusal, Buttons::Ok, Icon::Exclamation, kCaption);
  SetBoxText(box, oldText);
  box->setFocus();
  box->selectAll();
}

void frmDate::EnterPressed(Group& g, int i) {
  QLineEdit* box = g.boxes[static_cast<std::size_t>(i)];
  SetBoxText(box, QString::fromStdString(TwoDigitBox(box->text().toStdString())));
  if (invalid_) {
    invalid_ = false;
    Refuse(g, i, oldText_);
  } else {
    cmdOk_Click();
  }
}

void frmDate::SpinChange(Group& g, int value) {
  if (spinGuard_) return;
  invalid_ = false;
  QLineEdit* box = g.boxes[static_cast<std::size_t>(g.index)];
  SetBoxText(box, QString::fromStdString(TwoDigitBox(std::to_string(-value))));
  box->selectAll();
  box->setFocus();
}

void frmDate::cmdOk_Click() {
  auto text = [](const Group& g, int i) { return g.boxes[static_cast<std::size_t>(i)]->text().toStdString(); };
  const DateTimeBoxes boxes{text(date_, 0), text(date_, 1), text(date_, 2),
                            text(time_, 0), text(time_, 1), text(time_, 2)};
  UpdateDateTime(session_, comm_, boxes, daylight_->isChecked());
  accept();
}

void RunDateTimeCommand(Session& session, ModComm& comm, ProgressWindow& progress, QWidget* parent) {
  mnuDate_Click(session, comm, progress, [&] {
    frmDate window(session, comm, parent);
    window.exec();
  });
}

}  // namespace r6183::gui
