#include "gui/editors/frmSched.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include "editors/EventModel.h"
#include "gui/editors/frmEvent.h"
#include "gui/editors/WindowMnemonics.h"
#include "shell/Session.h"

namespace r6183::gui {

namespace {

constexpr int kGap = 14;  // pixels between the columns of the event list

// The columns of a line start at these offsets, wide enough for their heads and values;
// the tabs of the line separate them.
std::vector<int> TabStops(const QFontMetrics& fm) {
  auto wide = [&fm](const char* head, const char* value) {
    return std::max(fm.horizontalAdvance(head), fm.horizontalAdvance(value)) + kGap;
  };
  const int time = wide("Time", "00:00");
  const int relay = wide("Relay", "Relay 4");
  const int duration = wide("Duration", "59 sec");
  return {0, time, time + relay, time + relay + duration};
}

// Draws an event line in its four columns.
class EventLineDelegate : public QStyledItemDelegate {
 public:
  EventLineDelegate(std::vector<int> stops, QObject* parent) : QStyledItemDelegate(parent), stops_(std::move(stops)) {}
  void paint(QPainter* p, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem o(option);
    initStyleOption(&o, index);
    const QStringList parts = o.text.split('\t');
    o.text.clear();
    const QWidget* w = o.widget;
    w->style()->drawControl(QStyle::CE_ItemViewItem, &o, p, w);
    p->save();
    p->setPen(o.palette.color(o.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text));
    const QRect r = o.rect.adjusted(4, 0, -2, 0);
    for (int i = 0; i < parts.size(); ++i) {
      const int x = r.left() + stops_[static_cast<std::size_t>(std::min<int>(i, static_cast<int>(stops_.size()) - 1))];
      const QRect cell(x, r.top(), r.right() - x, r.height());
      p->drawText(cell, Qt::AlignVCenter | Qt::AlignLeft, o.fontMetrics.elidedText(parts[i], Qt::ElideRight, cell.width()));
    }
    p->restore();
  }

 private:
  std::vector<int> stops_;
};

}  // namespace

frmSched::frmSched(Session& session, QWidget* parent)
    : QMdiSubWindow(parent), session_(session), model_(session), form_(session, *this, "frmSched") {
  setObjectName("frmSched");
  WindowMnemonics::Install(*this);
  setAttribute(Qt::WA_DeleteOnClose, false);  // the main window keeps one window per schedule
  setWidget(BuildContent());
  setWindowTitle(QString::fromStdString(model_.Caption()));
  form_.FollowVisibility();
  model_.ShowEventWindow = [this](EventModel& ev) {
    frmEvent events(session_, ev, window());
    events.exec();
  };
  model_.CloseWindow = [this] { close(); };
  connect(this, &QMdiSubWindow::windowStateChanged, this, &frmSched::StateChanged);
}

frmSched::~frmSched() {
  model_.ShowEventWindow = nullptr;
  model_.CloseWindow = nullptr;
}

QWidget* frmSched::BuildContent() {
  auto* content = new QWidget;
  content->setObjectName("frmSchedContent");

  auto* fraEvents = new QGroupBox("Events");
  fraEvents->setObjectName("fraEvents");
  auto* lstEvent = new QListWidget;
  lstEvent->setObjectName("lstEvent");
  const std::vector<int> stops = TabStops(lstEvent->fontMetrics());
  lstEvent->setItemDelegate(new EventLineDelegate(stops, lstEvent));
  lstEvent->setSelectionMode(QAbstractItemView::SingleSelection);
  // room for the groups of three boards; more are cut short with an ellipsis
  lstEvent->setMinimumWidth(stops.back() + lstEvent->fontMetrics().horizontalAdvance("1,2,3,4,5,6,7,8,9,10,11,12") + 30);
  lstEvent->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

  // the column heads stand over the columns of the lines
  auto* heads = new QHBoxLayout;
  heads->setContentsMargins(lstEvent->frameWidth() + 4, 0, 0, 0);
  heads->setSpacing(0);
  const char* headNames[][2] = {{"lblTime", "Time"}, {"lblRelay", "Relay"}, {"lblDuration", "Duration"},
                                {"lblPageGroups", "Page Groups"}};
  for (std::size_t i = 0; i < 4; ++i) {
    auto* head = new QLabel(headNames[i][1]);
    head->setObjectName(headNames[i][0]);
    if (i < 3) head->setFixedWidth(stops[i + 1] - stops[i]);
    heads->addWidget(head);
  }
  heads->addStretch();

  auto* buttons = new QHBoxLayout;
  std::vector<QPushButton*> cmdEvent;
  for (Control& c : model_.cmdEvent) {
    auto* b = new QPushButton;
    b->setObjectName(QString::fromStdString(c.Name()));
    b->setAutoDefault(false);
    buttons->addWidget(b);
    cmdEvent.push_back(b);
  }
  auto* events = new QVBoxLayout(fraEvents);
  events->addLayout(heads);
  events->addWidget(lstEvent, 1);
  events->addLayout(buttons);

  auto* fraDays = new QGroupBox("Active Days");
  fraDays->setObjectName("fraDays");
  auto* days = new QGridLayout(fraDays);
  std::vector<QCheckBox*> chkDay;
  for (std::size_t i = 0; i < model_.chkDay.size(); ++i) {
    auto* box = new QCheckBox;
    box->setObjectName(QString::fromStdString(model_.chkDay[i].Name()));
    // Sunday to Wednesday in the first column, Thursday to Saturday in the second
    days->addWidget(box, static_cast<int>(i % 4), static_cast<int>(i / 4));
    chkDay.push_back(box);
  }

  auto* cmdClose = new QPushButton;
  cmdClose->setObjectName("cmdClose");
  cmdClose->setAutoDefault(false);
  auto* bottom = new QHBoxLayout;
  bottom->addStretch();
  bottom->addWidget(cmdClose);

  auto* lblSchedule = new QLabel;
  lblSchedule->setObjectName("lblSchedule");

  auto* layout = new QVBoxLayout(content);
  layout->addWidget(fraEvents, 1);
  layout->addWidget(fraDays);
  layout->addLayout(bottom);
  layout->addWidget(lblSchedule);

  adapter_.Link(model_.lstEvent, lstEvent);
  for (std::size_t i = 0; i < cmdEvent.size(); ++i) adapter_.Link(model_.cmdEvent[i], cmdEvent[i]);
  for (std::size_t i = 0; i < chkDay.size(); ++i) adapter_.Link(model_.chkDay[i], chkDay[i]);
  adapter_.Link(model_.cmdClose, static_cast<QAbstractButton*>(cmdClose));
  adapter_.Link(model_.lblSchedule, lblSchedule);

  // the reading order: the list, its buttons, the days, Close
  QWidget* previous = lstEvent;
  auto chain = [&previous](QWidget* next) {
    QWidget::setTabOrder(previous, next);
    previous = next;
  };
  for (QWidget* b : cmdEvent) chain(b);
  for (QWidget* d : chkDay) chain(d);
  chain(cmdClose);
  return content;
}

void frmSched::Open(QMdiArea& area) {
  if (!model_.Loaded()) {
    model_.Form_Load();
    setWindowTitle(QString::fromStdString(model_.Caption()));
    if (!mdiArea()) {
      area.addSubWindow(this);
      adjustSize();
    }
  }
  if (isMaximized()) showNormal();
  show();
  // the keyboard goes to the schedule, also when the quick menu opened it
  area.window()->activateWindow();
  area.setActiveSubWindow(this);
  raise();
  widget()->findChild<QListWidget*>("lstEvent")->setFocus();
}

void frmSched::StateChanged(Qt::WindowStates, Qt::WindowStates now) {
  const bool active = now.testFlag(Qt::WindowActive);
  if (active == active_ || !model_.Loaded()) return;
  active_ = active;
  if (active) model_.Form_Activate();
  else model_.Form_Deactivate();
}

void frmSched::closeEvent(QCloseEvent* e) {
  active_ = false;
  model_.Form_Unload();
  QMdiSubWindow::closeEvent(e);
}

void frmSched::changeEvent(QEvent* e) {
  QMdiSubWindow::changeEvent(e);
  // schedules stay side by side: a maximised one goes back to normal
  if (e->type() == QEvent::WindowStateChange && isMaximized())
    step(session_.journal(), Where{"frmSched", "Form GotFocus"}, [&] { showNormal(); });
}

}  // namespace r6183::gui
