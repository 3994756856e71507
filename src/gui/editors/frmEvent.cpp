#include "gui/editors/frmEvent.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

#include "shell/Session.h"

namespace r6183::gui {

namespace {

QPushButton* Button(Control& c) {
  auto* b = new QPushButton(QString::fromStdString(c.Text()));
  b->setObjectName(QString::fromStdString(c.Name()));
  // a click leaves the focus where it is: the rules check a start time being typed first
  b->setFocusPolicy(Qt::TabFocus);
  return b;
}

QLabel* Label(const char* name, const char* text) {
  auto* l = new QLabel(text);
  l->setObjectName(name);
  return l;
}

QScrollBar* SpinBar(const Control& c, int height) {
  auto* bar = new QScrollBar(Qt::Vertical);
  bar->setObjectName(QString::fromStdString(c.Name()));
  bar->setSingleStep(1);
  bar->setPageStep(1);
  bar->setFixedHeight(height);
  // clicking the bar takes the focus from a start time being typed, so that it is checked first
  bar->setFocusPolicy(Qt::ClickFocus);
  return bar;
}

}  // namespace

frmEvent::frmEvent(Session& session, EventModel& model, QWidget* parent)
    : QDialog(parent), session_(session), model_(model), form_(session, *this, "frmEvent") {
  setObjectName("frmEvent");
  setWindowTitle(QString::fromStdString(model_.Caption()));
  Build();
  adapter_.click = [this](Control& c) { model_.Click(c); };
  model_.SetFocus = [this](const std::string& name) {
    auto* w = findChild<QWidget*>(QString::fromStdString(name));
    if (!w) return;
    w->setFocus(Qt::OtherFocusReason);
    if (auto* box = qobject_cast<QLineEdit*>(w)) box->selectAll();
  };
  model_.SelectAll = [this](const std::string& name) {
    auto* box = findChild<QLineEdit*>(QString::fromStdString(name));
    if (!box) return;
    box->selectAll();
    // a click into the box places the cursor after the focus came: select once it is done
    if (QGuiApplication::mouseButtons() != Qt::NoButton)
      QTimer::singleShot(0, box, [box] {
        if (box->hasFocus()) box->selectAll();
      });
  };
  model_.CloseWindow = [this] {
    done_ = true;
    done(QDialog::Accepted);
  };
  form_.uncommitted = [this] { return model_.UncommittedChanges(); };
  form_.ok = [this] { model_.Accept(); };
  form_.cancel = [this] { model_.Drop(); };
  form_.FollowVisibility();
}

frmEvent::~frmEvent() {
  model_.SetFocus = nullptr;
  model_.SelectAll = nullptr;
  model_.CloseWindow = nullptr;
}

void frmEvent::Build() {
  EventModel& m = model_;
  auto* modes = new QHBoxLayout;
  for (Control* c : {&m.lblViewEvent, &m.lblAddEvent, &m.lblEditEvent}) {
    auto* l = new QLabel;
    l->setObjectName(QString::fromStdString(c->Name()));
    QFont bold = l->font();
    bold.setBold(true);
    l->setFont(bold);
    modes->addWidget(l);
    adapter_.Link(*c, l);
  }
  modes->addStretch();

  auto* fraEvent = new QGroupBox;
  fraEvent->setObjectName("fraEvent");
  auto* fields = new QGridLayout(fraEvent);

  txtStartTime_ = new QLineEdit;
  txtStartTime_->setObjectName("txtStartTime");
  txtStartTime_->setMaxLength(5);
  txtStartTime_->setFixedWidth(txtStartTime_->fontMetrics().horizontalAdvance("00:000") + 12);
  const int barHeight = txtStartTime_->sizeHint().height();
  hours_ = SpinBar(m.vsbStartTime[0], barHeight);
  minutes_ = SpinBar(m.vsbStartTime[1], barHeight);
  auto* time = new QHBoxLayout;
  time->setSpacing(2);
  time->addWidget(txtStartTime_);
  time->addWidget(hours_);
  time->addWidget(minutes_);
  time->addStretch();
  fields->addWidget(Label("lblStartTime", "Start Time :"), 0, 0);
  fields->addLayout(time, 0, 1);

  std::vector<QRadioButton*> optTone;
  auto* relays = new QHBoxLayout;
  for (int i = 1; i <= 4; ++i) {
    auto* o = new QRadioButton(" " + QString::number(i));
    o->setObjectName(QString("optTone_%1").arg(i));
    relays->addWidget(o);
    optTone.push_back(o);
  }
  relays->addStretch();
  fields->addWidget(Label("lblRelayType", "Relay Type :"), 1, 0);
  fields->addLayout(relays, 1, 1);

  txtDuration_ = new QLineEdit;
  txtDuration_->setObjectName("txtDuration");
  txtDuration_->setMaxLength(2);
  txtDuration_->setFixedWidth(txtDuration_->fontMetrics().horizontalAdvance("000") + 12);
  seconds_ = SpinBar(m.vsbDuration, barHeight);
  auto* duration = new QHBoxLayout;
  duration->setSpacing(2);
  duration->addWidget(txtDuration_);
  duration->addWidget(seconds_);
  duration->addSpacing(6);
  duration->addWidget(Label("lblSeconds", "(1 - 59 secs)"));
  duration->addStretch();
  fields->addWidget(Label("lblRelayDuration", "Relay Duration :"), 2, 0);
  fields->addLayout(duration, 2, 1);

  // the page groups a board at a row, and the buttons that set or clear them all
  auto* groups = new QGridLayout;
  std::vector<QCheckBox*> chkPageGroup;
  for (std::size_t g = 0; g < m.chkPageGroup.size(); ++g) {
    auto* box = new QCheckBox;
    box->setObjectName(QString::fromStdString(m.chkPageGroup[g].Name()));
    groups->addWidget(box, static_cast<int>(g / 4), static_cast<int>(g % 4));
    chkPageGroup.push_back(box);
  }
  QPushButton* cmdInclude = Button(m.cmdInclude);
  QPushButton* cmdRemove = Button(m.cmdRemove);
  auto* all = new QVBoxLayout;
  all->addWidget(cmdInclude);
  all->addWidget(cmdRemove);
  all->addStretch();
  auto* pages = new QHBoxLayout;
  pages->addLayout(groups);
  pages->addSpacing(12);
  pages->addLayout(all);
  fields->addWidget(Label("lblPageGroups", "Page Groups :"), 3, 0, Qt::AlignTop);
  fields->addLayout(pages, 3, 1);
  auto* lblTone = new QLabel;
  lblTone->setObjectName("lblTone");
  fields->addWidget(lblTone, 4, 0);

  auto* moves = new QHBoxLayout;
  std::vector<QPushButton*> cmdMove;
  moves->addStretch();
  for (Control& c : m.cmdMove) {
    cmdMove.push_back(Button(c));
    moves->addWidget(cmdMove.back());
  }
  moves->addStretch();

  auto* commands = new QHBoxLayout;
  std::vector<QPushButton*> buttons;
  for (Control* c : {&m.cmdAdd, &m.cmdEdit, &m.cmdDelete, &m.cmdSave, &m.cmdCancel, &m.cmdClose}) {
    buttons.push_back(Button(*c));
    commands->addWidget(buttons.back());
    adapter_.Link(*c, static_cast<QAbstractButton*>(buttons.back()));
  }

  txtHideScreen_ = new QLabel(this);
  txtHideScreen_->setObjectName("txtHideScreen");
  txtHideScreen_->setAlignment(Qt::AlignCenter);
  txtHideScreen_->setFrameShape(QFrame::Box);
  txtHideScreen_->setAutoFillBackground(true);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(modes);
  layout->addWidget(fraEvent);
  layout->addLayout(moves);
  layout->addLayout(commands);
  layout->setSizeConstraint(QLayout::SetFixedSize);

  adapter_.Link(m.fraEvent, fraEvent);
  adapter_.Link(m.txtStartTime, txtStartTime_);
  adapter_.Link(m.vsbStartTime[0], hours_);
  adapter_.Link(m.vsbStartTime[1], minutes_);
  adapter_.Link(m.optTone, optTone);
  adapter_.Link(m.lblTone, lblTone);
  adapter_.Link(m.txtDuration, txtDuration_);
  adapter_.Link(m.vsbDuration, seconds_);
  for (std::size_t g = 0; g < chkPageGroup.size(); ++g) adapter_.Link(m.chkPageGroup[g], chkPageGroup[g]);
  adapter_.Link(m.cmdInclude, static_cast<QAbstractButton*>(cmdInclude));
  adapter_.Link(m.cmdRemove, static_cast<QAbstractButton*>(cmdRemove));
  for (std::size_t i = 0; i < cmdMove.size(); ++i) adapter_.Link(m.cmdMove[i], static_cast<QAbstractButton*>(cmdMove[i]));
  adapter_.Link(m.txtHideScreen, txtHideScreen_);

  // the reading order
  std::vector<QWidget*> order{txtStartTime_};
  order.insert(order.end(), optTone.begin(), optTone.end());
  order.push_back(txtDuration_);
  order.insert(order.end(), chkPageGroup.begin(), chkPageGroup.end());
  order.push_back(cmdInclude);
  order.push_back(cmdRemove);
  order.insert(order.end(), cmdMove.begin(), cmdMove.end());
  order.insert(order.end(), buttons.begin(), buttons.end());
  for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);

  txtStartTime_->installEventFilter(this);
  txtDuration_->installEventFilter(this);
  for (QPushButton* b : findChildren<QPushButton*>()) b->installEventFilter(this);
}

void frmEvent::showEvent(QShowEvent* e) {
  QDialog::showEvent(e);
  if (activated_) return;
  activated_ = true;
  txtHideScreen_->setGeometry(rect().adjusted(width() / 4, height() / 3, -width() / 4, -height() / 3));
  txtHideScreen_->raise();
  model_.Form_Activate();
}

bool frmEvent::Spin(QScrollBar* bar, bool up) {
  // a time being typed is checked before the bars step from it
  if (bar != seconds_ && !model_.txtStartTime_LostFocus()) return true;
  bar->triggerAction(up ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd);
  return true;
}

bool frmEvent::eventFilter(QObject* watched, QEvent* e) {
  if (e->type() == QEvent::Shortcut) {
    // a button's mnemonic takes the focus from a start time being typed: checked first, and a
    // refused entry keeps the focus and the command back, with one message
    if (watched->objectName() != "cmdCancel" && QApplication::focusWidget() == txtStartTime_ && model_.TypedTime &&
        !model_.txtStartTime_LostFocus())
      return true;
    return QDialog::eventFilter(watched, e);
  }
  if (e->type() != QEvent::KeyPress || (watched != txtStartTime_ && watched != txtDuration_))
    return QDialog::eventFilter(watched, e);
  const int key = static_cast<QKeyEvent*>(e)->key();
  const bool time = watched == txtStartTime_;
  switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
      return Spin(time ? minutes_ : seconds_, key == Qt::Key_Up);
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      return time ? Spin(hours_, key == Qt::Key_PageUp) : false;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return true;  // no command hides behind Enter in a field
    default:
      return QDialog::eventFilter(watched, e);
  }
}

void frmEvent::reject() { close(); }

void frmEvent::closeEvent(QCloseEvent* e) {
  // the system box: never refused
  if (!done_) model_.QueryUnload();
  if (isVisible()) done(QDialog::Rejected);
  e->accept();
}

}  // namespace r6183::gui
