#include "gui/options/frmClock.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

#include "options/ClockRules.h"
#include "shell/MenuModel.h"

namespace r6183::gui {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

// A drop-down list that tells when it opens and when the focus leaves it.
class ClockList : public QComboBox {
 public:
  ClockList(std::function<void()> dropDown, std::function<void()> lostFocus)
      : dropDown_(std::move(dropDown)), lostFocus_(std::move(lostFocus)) {}
  void showPopup() override {
    dropDown_();
    QComboBox::showPopup();
  }

 protected:
  void focusOutEvent(QFocusEvent* e) override {
    QComboBox::focusOutEvent(e);
    // its own list taking the focus, or another window, is no leaving
    if (e->reason() != Qt::PopupFocusReason && e->reason() != Qt::ActiveWindowFocusReason) lostFocus_();
  }

 private:
  std::function<void()> dropDown_, lostFocus_;
};

QLabel* Label(const char* name, const char* text) {
  auto* l = new QLabel(text);
  l->setObjectName(name);
  return l;
}

std::vector<QRadioButton*> Options(const char* group, const char* const* captions, int count) {
  std::vector<QRadioButton*> out;
  for (int i = 0; i < count; ++i) {
    auto* o = new QRadioButton(captions[i]);
    o->setObjectName(Q(ArrayName(group, i)));
    out.push_back(o);
  }
  return out;
}

QLineEdit* Hidden(const Control& c) {
  auto* box = new QLineEdit;
  box->setObjectName(Q(c.Name()));
  return box;
}

}  // namespace

frmClock::frmClock(Session& session, QWidget* parent)
    : QDialog(parent), model_(session), form_(session, *this, "frmClock") {
  setObjectName("frmClock");
  setWindowTitle(ClockModel::kCaption);
  setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
  Build();
  model_.CloseWindow = [this] { close(); };
  form_.uncommitted = [this] { return model_.UncommittedChanges(); };
  form_.ok = [this] { model_.cmdOk.Press(); };
  form_.cancel = [this] { model_.cmdCancel.Press(); };
  form_.FollowVisibility();
  model_.Form_Load();
}

frmClock::~frmClock() {
  model_.CloseWindow = nullptr;
  model_.cbClockA.Mirror = nullptr;
  model_.cbClockB.Mirror = nullptr;
}

void frmClock::Mirror(ListControl& list, QComboBox* box) {
  list.Mirror = [&list, box](ListControl::Event e, int index) {
    const QSignalBlocker quiet(box);
    switch (e) {
      case ListControl::Event::Cleared:
        box->clear();
        break;
      case ListControl::Event::Added:
        box->addItem(Q(list.List(index)));
        break;
      case ListControl::Event::Removed:
        box->removeItem(index);
        break;
      case ListControl::Event::Selected:
        box->setCurrentIndex(index);
        break;
      case ListControl::Event::State:
        box->setEnabled(list.Enabled());
        break;
    }
  };
}

void frmClock::Build() {
  ClockModel& m = model_;
  auto* sss = new QTabWidget;
  sss->setObjectName("sss");

  auto* bcd = new QWidget;
  auto* frame1 = new QGroupBox("Direction");
  frame1->setObjectName("Frame1");
  const auto direction = Options("optDirection", kDirectionCaptions, kDirections);
  auto* directions = new QVBoxLayout(frame1);
  for (QRadioButton* o : direction) directions->addWidget(o);
  directions->addStretch();
  auto* frame2 = new QGroupBox("BCD Type");
  frame2->setObjectName("Frame2");
  const auto bcdType = Options("optBCDType", kBcdTypeCaptions, kBcdTypes);
  auto* types = new QVBoxLayout(frame2);
  for (QRadioButton* o : bcdType) types->addWidget(o);
  auto* bcdLayout = new QHBoxLayout(bcd);
  bcdLayout->addWidget(frame1);
  bcdLayout->addWidget(frame2);
  sss->addTab(bcd, "BCD");

  auto clockTab = [&](ListControl& list, Control& correction, const char* typeLabel, const char* correctedLabel,
                      void (ClockModel::*pick)(int), void (ClockModel::*drop)(), void (ClockModel::*left)()) {
    auto* tab = new QWidget;
    auto* box = new ClockList([this, drop] { (model_.*drop)(); }, [this, left] { (model_.*left)(); });
    box->setObjectName(Q(list.Name()));
    box->setMinimumContentsLength(28);
    Mirror(list, box);
    connect(box, &QComboBox::activated, this, [this, pick](int index) { (model_.*pick)(index); });
    auto* lbl = new QLabel;
    lbl->setObjectName(Q(correction.Name()));
    adapter_.Link(correction, lbl);
    auto* grid = new QGridLayout(tab);
    grid->addWidget(Label(typeLabel, "Clock Type "), 0, 0);
    grid->addWidget(box, 0, 1);
    grid->addWidget(Label(correctedLabel, "Corrected:"), 1, 0);
    grid->addWidget(lbl, 1, 1);
    grid->setRowStretch(2, 1);
    grid->setColumnStretch(1, 1);
    return tab;
  };
  sss->addTab(clockTab(m.cbClockA, m.lblCorrection, "Label1", "Label3", &ClockModel::PickClockA,
                       &ClockModel::cbClockA_DropDown, &ClockModel::cbClockA_LostFocus),
              "Clock A");
  sss->addTab(clockTab(m.cbClockB, m.lblCorrectionB, "Label5", "Label2", &ClockModel::PickClockB,
                       &ClockModel::cbClockB_DropDown, &ClockModel::cbClockB_LostFocus),
              "Clock B");

  auto* cmdOk = new QPushButton;
  cmdOk->setObjectName("cmdOk");
  cmdOk->setDefault(true);
  auto* cmdCancel = new QPushButton;
  cmdCancel->setObjectName("cmdCancel");
  cmdCancel->setAutoDefault(false);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdOk);
  buttons->addWidget(cmdCancel);

  auto* hidden = new QHBoxLayout;
  for (Control* c : {&m.txtclockA, &m.txtClockB, &m.txtDirection, &m.txtBCD_Type}) {
    QLineEdit* box = Hidden(*c);
    hidden->addWidget(box);
    adapter_.Link(*c, box);
  }

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(sss, 1);
  layout->addLayout(buttons);
  layout->addLayout(hidden);

  adapter_.Link(m.optDirection, direction);
  adapter_.Link(m.optBCDType, bcdType);
  adapter_.Link(m.cmdOk, static_cast<QAbstractButton*>(cmdOk));
  adapter_.Link(m.cmdCancel, static_cast<QAbstractButton*>(cmdCancel));
}

void frmClock::reject() { close(); }

void frmClock::closeEvent(QCloseEvent* e) {
  model_.Form_Unload();
  if (isVisible()) done(QDialog::Rejected);
  e->accept();
}

}  // namespace r6183::gui
