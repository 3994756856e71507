#include "gui/options/frmDipSw.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/shell/Centre.h"
#include "shell/MenuModel.h"

namespace r6183::gui {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

QLabel* Label(const std::string& name, const QString& text) {
  auto* l = new QLabel(text);
  l->setObjectName(Q(name));
  return l;
}

QFrame* Shape(const std::string& name) {
  auto* f = new QFrame;
  f->setObjectName(Q(name));
  f->setFrameShape(QFrame::Box);
  f->setFixedSize(14, 14);
  return f;
}

// A colour of the old colour numbers: red in the low byte, blue in the high.
QColor FromColourNumber(int n) { return QColor(n & 0xff, (n >> 8) & 0xff, (n >> 16) & 0xff); }

}  // namespace

frmDipSw::frmDipSw(Session& session, const DipModel& dip, QWidget* parent)
    : QDialog(parent), model_(session), form_(session, *this, "frmDipSw") {
  setObjectName("frmDipSw");
  setWindowTitle(DipChart::kCaption);
  setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
  Build();
  model_.Mirror = [this] { ShowShapes(); };
  model_.CloseWindow = [this] { accept(); };
  form_.FollowVisibility();
  model_.Form_Load(dip);
  adjustSize();
  CentreWindow(*this);
}

frmDipSw::~frmDipSw() {
  model_.Mirror = nullptr;
  model_.CloseWindow = nullptr;
}

void frmDipSw::Build() {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(10);
  grid->setVerticalSpacing(2);
  grid->addWidget(Label("lblOnHead", "ON"), 0, 3, Qt::AlignHCenter);
  grid->addWidget(Label("lblOffHead", "OFF"), 0, 4, Qt::AlignHCenter);
  for (int i = 0; i < kSwitches; ++i) {
    const int row = i + 1;
    grid->addWidget(Label(ArrayName("lblNumber", i), QString::number(i + 1)), row, 0, Qt::AlignRight);
    if (const std::string label = SwitchLabel(i + 1); !label.empty())
      grid->addWidget(Label(ArrayName("lblName", i), Q(label)), row, 1);
    auto* state = new QLabel;
    state->setObjectName(Q(model_.lblSwitch[static_cast<std::size_t>(i)].Name()));
    state->setMinimumWidth(state->fontMetrics().horizontalAdvance("OFF") + 4);
    grid->addWidget(state, row, 2);
    adapter_.Link(model_.lblSwitch[static_cast<std::size_t>(i)], state);
    shpOn_.push_back(Shape(ArrayName("shpOn", i)));
    shpOff_.push_back(Shape(ArrayName("shpOff", i)));
    grid->addWidget(shpOn_.back(), row, 3, Qt::AlignHCenter);
    grid->addWidget(shpOff_.back(), row, 4, Qt::AlignHCenter);
  }
  grid->setColumnStretch(1, 1);

  auto* cmdClose = new QPushButton;
  cmdClose->setObjectName("cmdClose");
  cmdClose->setDefault(true);
  adapter_.Link(model_.cmdClose, static_cast<QAbstractButton*>(cmdClose));
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(Label("lblNote", DipChart::kNote));
  bottom->addStretch();
  bottom->addWidget(cmdClose);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addLayout(bottom);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  ShowShapes();
}

void frmDipSw::ShowShapes() {
  auto fill = [](QFrame* f, int colour) {
    if (colour == DipChart::kAsDesigned) {
      f->setAutoFillBackground(false);
      return;
    }
    QPalette p = f->palette();
    p.setColor(QPalette::Window, FromColourNumber(colour));
    f->setPalette(p);
    f->setAutoFillBackground(true);
  };
  for (std::size_t i = 0; i < shpOn_.size(); ++i) {
    fill(shpOn_[i], model_.shpOn[i]);
    fill(shpOff_[i], model_.shpOff[i]);
  }
}

}  // namespace r6183::gui
