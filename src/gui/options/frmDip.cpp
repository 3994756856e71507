#include "gui/options/frmDip.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "gui/options/frmDipSw.h"
#include "gui/shell/Twips.h"
#include "shell/MenuModel.h"

namespace r6183::gui {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

QGroupBox* Frame(const char* name, const char* caption) {
  auto* f = new QGroupBox(caption);
  f->setObjectName(name);
  return f;
}

QCheckBox* Check(Control& c) {
  auto* b = new QCheckBox;
  b->setObjectName(Q(c.Name()));
  return b;
}

// The options of a group by index (option i sets the group's value i+1), named
// group_i and captioned.
std::vector<QRadioButton*> Options(const char* group, std::initializer_list<const char*> captions) {
  std::vector<QRadioButton*> out;
  for (const char* caption : captions) {
    auto* o = new QRadioButton(caption);
    o->setObjectName(Q(ArrayName(group, static_cast<int>(out.size()))));
    out.push_back(o);
  }
  return out;
}

QLabel* Label(const char* name, const char* text) {
  auto* l = new QLabel(text);
  l->setObjectName(name);
  return l;
}

}  // namespace

frmDip::frmDip(Session& session, QWidget* parent)
    : QDialog(parent), session_(session), model_(session), form_(session, *this, "frmDip") {
  setObjectName("frmDip");
  setWindowTitle(DipModel::kCaption);
  setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
  Build();
  resize(ToPixels(DipModel::kWidth), ToPixels(DipModel::kHeight));
  model_.CloseWindow = [this] { close(); };
  model_.ShowChart = [this] {
    frmDipSw chart(session_, model_, this);
    chart.exec();
  };
  form_.uncommitted = [this] { return model_.UncommittedChanges(); };
  form_.ok = [this] { model_.cmdOk.Press(); };
  form_.cancel = [this] { model_.cmdCancel.Press(); };
  form_.FollowVisibility();
  model_.Form_Load();
}

frmDip::~frmDip() {
  model_.CloseWindow = nullptr;
  model_.ShowChart = nullptr;
}

void frmDip::Build() {
  DipModel& m = model_;

  QGroupBox* frame1 = Frame("Frame1", "Low Priority Options");
  auto* low = new QVBoxLayout(frame1);
  std::vector<QCheckBox*> stations;
  for (Control& c : m.chkLowStation) {
    stations.push_back(Check(c));
    low->addWidget(stations.back());
  }

  QGroupBox* frame2 = Frame("Frame2", "Tone Source");
  const auto toneSource = Options("optToneSource", {" Internal", " External"});
  auto* source = new QVBoxLayout(frame2);
  for (QRadioButton* o : toneSource) source->addWidget(o);

  QGroupBox* frame3 = Frame("Frame3", "Tone Options");
  auto* tones = new QVBoxLayout(frame3);
  std::vector<QCheckBox*> toneBoxes;
  for (Control* c : {&m.chkPrivacyTone, &m.chkRingbackTone, &m.chkPageAlertTone, &m.chkHfAlertTone, &m.chkDialTone,
                     &m.chkQueueTone}) {
    toneBoxes.push_back(Check(*c));
    tones->addWidget(toneBoxes.back());
    adapter_.Link(*c, toneBoxes.back());
  }

  QGroupBox* frame4 = Frame("Frame4", "Ring Pattern");
  std::vector<QRadioButton*> ringPattern;
  for (int pattern = 0; pattern < 3; ++pattern) {
    auto* o = new QRadioButton(RingPatternCaption(pattern));
    o->setObjectName(Q(ArrayName("optRingPattern", pattern)));
    ringPattern.push_back(o);
  }
  auto* rings = new QVBoxLayout(frame4);
  // the stored number is not the place on the window
  for (int pattern : kRingPatternScreenOrder) rings->addWidget(ringPattern[static_cast<std::size_t>(pattern)]);

  QGroupBox* frame5 = Frame("Frame5", "Priority Phone Options");
  const auto priority = Options("optPriority", {" Local All Call", " Global All Call"});
  QCheckBox* chkOverride = Check(m.chkOverride);
  auto* phone = new QGridLayout(frame5);
  phone->addWidget(Label("Label1", "Offhook generates :"), 0, 0, 1, 2);
  phone->addWidget(priority[0], 1, 0);
  phone->addWidget(priority[1], 2, 0);
  phone->addWidget(Label("Label2", "(multi-system)"), 2, 1);
  phone->addWidget(chkOverride, 3, 0);
  phone->addWidget(Label("Label3", "All Call (multi-system)"), 4, 0, 1, 2);
  phone->setColumnStretch(1, 1);

  // the bound controls that the option groups show
  auto* chkPriorityGlobal = Check(m.chkPriorityGlobal);
  auto* chkExtToneSource = Check(m.chkExtToneSource);
  auto* lblRingPattern = new QLabel;
  lblRingPattern->setObjectName("lblRingPattern");

  auto* cmdOk = new QPushButton;
  cmdOk->setObjectName("cmdOk");
  cmdOk->setDefault(true);
  auto* cmdCancel = new QPushButton;
  cmdCancel->setObjectName("cmdCancel");
  cmdCancel->setAutoDefault(false);
  auto* cmdDipswitch = new QPushButton;
  cmdDipswitch->setObjectName("cmdDipswitch");
  cmdDipswitch->setAutoDefault(false);

  auto* left = new QVBoxLayout;
  left->addWidget(frame1);
  left->addWidget(frame2);
  left->addWidget(frame4);
  left->addStretch();
  auto* right = new QVBoxLayout;
  right->addWidget(frame3);
  right->addWidget(frame5);
  right->addStretch();
  auto* columns = new QHBoxLayout;
  columns->addLayout(left);
  columns->addLayout(right);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(cmdDipswitch);
  buttons->addStretch();
  buttons->addWidget(cmdOk);
  buttons->addWidget(cmdCancel);
  auto* hidden = new QHBoxLayout;
  hidden->addWidget(chkPriorityGlobal);
  hidden->addWidget(chkExtToneSource);
  hidden->addWidget(lblRingPattern);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(columns, 1);
  layout->addLayout(buttons);
  layout->addLayout(hidden);

  for (std::size_t i = 0; i < stations.size(); ++i) adapter_.Link(m.chkLowStation[i], stations[i]);
  adapter_.Link(m.chkOverride, chkOverride);
  adapter_.Link(m.chkPriorityGlobal, chkPriorityGlobal);
  adapter_.Link(m.chkExtToneSource, chkExtToneSource);
  adapter_.Link(m.lblRingPattern, lblRingPattern);
  adapter_.Link(m.optToneSource, toneSource);
  adapter_.Link(m.optRingPattern, ringPattern);
  adapter_.Link(m.optPriority, priority);
  adapter_.Link(m.cmdOk, static_cast<QAbstractButton*>(cmdOk));
  adapter_.Link(m.cmdCancel, static_cast<QAbstractButton*>(cmdCancel));
  adapter_.Link(m.cmdDipswitch, static_cast<QAbstractButton*>(cmdDipswitch));

  // the reading order: left column, right column, buttons
  std::vector<QWidget*> order(stations.begin(), stations.end());
  order.insert(order.end(), toneSource.begin(), toneSource.end());
  for (int pattern : kRingPatternScreenOrder) order.push_back(ringPattern[static_cast<std::size_t>(pattern)]);
  order.insert(order.end(), toneBoxes.begin(), toneBoxes.end());
  order.insert(order.end(), priority.begin(), priority.end());
  order.push_back(chkOverride);
  order.push_back(cmdDipswitch);
  order.push_back(cmdOk);
  order.push_back(cmdCancel);
  for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmDip::reject() { close(); }

void frmDip::closeEvent(QCloseEvent* e) {
  // OK, Cancel and the system box all end here; the rules tell the row what to keep
  model_.Form_Unload();
  if (isVisible()) done(QDialog::Rejected);
  e->accept();
}

}  // namespace r6183::gui
