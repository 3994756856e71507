#include "gui/editors/frmConfig.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "gui/editors/GroupBoxes.h"
#include "gui/shell/Twips.h"

namespace r6183::gui {

namespace {
// The window as designed, with the clock board's frame
constexpr int32_t kDesignHeight = 4440;
}  // namespace

frmConfig::frmConfig(Session& session, QWidget* parent)
    : QDialog(parent), model_(session), form_(session, *this, "frmConfig") {
  setObjectName("frmConfig");
  setWindowTitle(ConfigModel::kCaption);
  auto* column = new QVBoxLayout(this);
  auto* frame2 = new QGroupBox(QString::fromStdString(model_.Frame2.Text()));
  frame2->setObjectName("Frame2");
  auto* options = new QVBoxLayout(frame2);
  std::vector<QRadioButton*> opt;
  for (int i = 0; i < 4; ++i) {
    auto* o = new QRadioButton(ConfigModel::kOptions[i]);
    o->setObjectName(QString("optConfig_%1").arg(i));
    options->addWidget(o);
    opt.push_back(o);
  }
  column->addWidget(frame2);
  auto* frame1 = new QGroupBox;
  frame1->setObjectName("Frame1");
  auto* clock = new QCheckBox;
  clock->setObjectName("cbClock");
  (new QVBoxLayout(frame1))->addWidget(clock);
  column->addWidget(frame1);
  column->addLayout(ButtonRow(adapter_, {&model_.cmdOK, &model_.cmdCancel, &model_.cmdDetails}));
  adapter_.Link(model_.optConfig, opt);
  adapter_.Link(model_.cbClock, clock);
  adapter_.Link(model_.Frame1, frame1);

  model_.CloseWindow = [this] { accept(); };
  model_.ShowDetails = [this, &session] {
    frmDetail details(session, this);
    details.exec();
  };
  model_.Form_Load();
  if (auto* ok = findChild<QPushButton*>("cmdOK")) ok->setDefault(true);
  // the clock board's frame is not shown, and the window is that much lower
  resize(sizeHint().width(), std::max(sizeHint().height(), ToPixels(kDesignHeight - ConfigModel::kHiddenClockHeight)));
  form_.FollowVisibility();
}

frmConfig::~frmConfig() { model_.CloseWindow = nullptr; }

frmDetail::frmDetail(Session& session, QWidget* parent) : QDialog(parent), form_(session, *this, "frmDetail") {
  setObjectName("frmDetail");
  setWindowTitle("Detailed Configuration");
  static const char* const kBoards[] = {"MAIN BOARD", "EXPANSION 1", "EXPANSION 2", "EXPANSION 3"};
  auto* column = new QVBoxLayout(this);
  auto* chart = new QGridLayout;
  for (int b = 0; b < 4; ++b) {
    auto* board = new QGroupBox(kBoards[b]);
    board->setObjectName(QString("fraBoard_%1").arg(b));
    auto* rows = new QGridLayout(board);
    for (int row = 0; row < 4; ++row) {
      const int g = b * 4 + row + 1;
      auto* group = new QLabel(QString("PAGE GROUP %1").arg(g));
      group->setObjectName(QString("lblGroup_%1").arg(g - 1));
      auto* stations = new QLabel(QString("Stations %1..%2").arg(6 * (g - 1) + 1).arg(6 * g));
      stations->setObjectName(QString("lblStations_%1").arg(g - 1));
      rows->addWidget(group, row, 0);
      rows->addWidget(stations, row, 1);
    }
    chart->addWidget(board, b / 2, b % 2);
  }
  column->addLayout(chart);
  auto* close = new QPushButton("Close");
  close->setObjectName("cmdClose");
  close->setDefault(true);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(close);
  column->addLayout(row);
  form_.FollowVisibility();
}

}  // namespace r6183::gui
