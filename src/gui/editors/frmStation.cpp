#include "gui/editors/frmStation.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "editors/ConflictModel.h"
#include "editors/StationList.h"
#include "gui/editors/frmConflict.h"

namespace r6183::gui {

namespace {
QPushButton* Button(const Control& c) {
  auto* b = new QPushButton;
  b->setObjectName(QString::fromStdString(c.Name()));
  return b;
}
}  // namespace

frmStation::frmStation(Session& session, StationModel& model, QWidget* parent)
    : QDialog(parent), session_(session), model_(model), form_(session, *this, "frmStation") {
  setObjectName("frmStation");
  setWindowTitle(QString::fromStdString(model_.Caption()));

  auto* lblStation = new QLabel;
  lblStation->setObjectName("lblStation");
  QFont big = lblStation->font();
  big.setBold(true);
  big.setPointSizeF(big.pointSizeF() * 1.4);
  lblStation->setFont(big);

  auto* txtArchnum = new QLineEdit;
  txtArchnum->setObjectName("txtArchnum");
  txtArchnum->setMaxLength(kArchWidth);
  txtArchnum->setFixedWidth(txtArchnum->fontMetrics().horizontalAdvance("000000") + 12);
  auto* txtClid = new QLineEdit;
  txtClid->setObjectName("txtClid");
  // fifteen characters of the line's code, each one character here
  txtClid->setMaxLength(kClidWidth);
  txtClid->setMinimumWidth(txtClid->fontMetrics().horizontalAdvance(QString(kClidWidth + 1, 'W')) + 12);
  auto* label1 = new QLabel("&Architectural Number :");
  label1->setObjectName("Label1");
  label1->setBuddy(txtArchnum);
  auto* label2 = new QLabel("&CLID Description :");
  label2->setObjectName("Label2");
  label2->setBuddy(txtClid);

  auto* fields = new QGridLayout;
  fields->addWidget(lblStation, 0, 0, 1, 2);
  fields->addWidget(label1, 1, 0);
  fields->addWidget(txtArchnum, 1, 1, Qt::AlignLeft);
  fields->addWidget(label2, 2, 0);
  fields->addWidget(txtClid, 2, 1);

  auto* moves = new QHBoxLayout;
  std::vector<QPushButton*> cmdMove;
  moves->addStretch();
  for (Control& c : model_.cmdMove) {
    cmdMove.push_back(Button(c));
    cmdMove.back()->setAutoDefault(false);
    moves->addWidget(cmdMove.back());
  }
  moves->addStretch();

  QPushButton* cmdOk = Button(model_.cmdOk);
  cmdOk->setDefault(true);
  QPushButton* cmdCancel = Button(model_.cmdCancel);
  cmdCancel->setAutoDefault(false);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdOk);
  buttons->addWidget(cmdCancel);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(fields);
  layout->addLayout(moves);
  layout->addLayout(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);

  adapter_.Link(model_.lblStation, lblStation);
  adapter_.Link(model_.txtArchnum, txtArchnum);
  adapter_.Link(model_.txtClid, txtClid);
  for (std::size_t i = 0; i < cmdMove.size(); ++i) adapter_.Link(model_.cmdMove[i], static_cast<QAbstractButton*>(cmdMove[i]));
  adapter_.Link(model_.cmdOk, static_cast<QAbstractButton*>(cmdOk));
  adapter_.Link(model_.cmdCancel, static_cast<QAbstractButton*>(cmdCancel));
  // a move changes the station shown, and the caption with it
  adapter_.click = [this](Control& c) {
    c.Press();
    setWindowTitle(QString::fromStdString(model_.Caption()));
  };

  std::vector<QWidget*> order{txtArchnum, txtClid};
  order.insert(order.end(), cmdMove.begin(), cmdMove.end());
  order.push_back(cmdOk);
  order.push_back(cmdCancel);
  for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);

  model_.ShowConflictWindow = [this](ConflictModel& conflicts) {
    frmConflict w(session_, conflicts, this);
    w.exec();
  };
  model_.SetFocus = [this](const std::string& name) {
    if (auto* w = findChild<QWidget*>(QString::fromStdString(name))) w->setFocus(Qt::OtherFocusReason);
  };
  model_.SelectAll = [this](const std::string& name) {
    if (auto* box = findChild<QLineEdit*>(QString::fromStdString(name))) box->selectAll();
  };
  model_.CloseWindow = [this] {
    done_ = true;
    done(QDialog::Accepted);
  };
  form_.FollowVisibility();
}

frmStation::~frmStation() {
  model_.ShowConflictWindow = nullptr;
  model_.SetFocus = nullptr;
  model_.SelectAll = nullptr;
  model_.CloseWindow = nullptr;
}

void frmStation::showEvent(QShowEvent* e) {
  QDialog::showEvent(e);
  model_.Form_Activate();
}

void frmStation::reject() {
  if (!done_) model_.cmdCancel.Press();
}

}  // namespace r6183::gui
