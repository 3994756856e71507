#include "gui/editors/frmAuto.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace r6183::gui {

namespace {
QLabel* Named(const char* name, const char* text = "") {
  auto* l = new QLabel(text);
  l->setObjectName(name);
  return l;
}
}  // namespace

frmAuto::frmAuto(Session& session, AutoModel& model, QWidget* parent)
    : QDialog(parent), model_(model), form_(session, *this, "frmAuto") {
  setObjectName("frmAuto");
  setWindowTitle(AutoModel::kCaption);

  QLabel* label1 = Named("Label1");
  QLabel* lblStartStation = Named("lblStartStation");
  QLabel* lblStartArchnum = Named("lblStartArchnum");
  for (QLabel* l : {lblStartStation, lblStartArchnum}) {
    l->setFrameShape(QFrame::Panel);
    l->setFrameShadow(QFrame::Sunken);
    l->setMinimumWidth(l->fontMetrics().horizontalAdvance("00000") + 8);
  }
  auto* txtStopArchnum = new QLineEdit;
  txtStopArchnum->setObjectName("txtStopArchnum");
  txtStopArchnum->setMaxLength(4);
  txtStopArchnum->setFixedWidth(txtStopArchnum->fontMetrics().horizontalAdvance("000000") + 12);
  QLabel* prompt = Named("Label4", "Enter last Arch Number in auto numbering sequence:");
  prompt->setBuddy(txtStopArchnum);

  auto* start = new QGridLayout;
  start->addWidget(Named("Label2", "Station :"), 0, 0);
  start->addWidget(Named("Label3", "Arch Number :"), 0, 1);
  start->addWidget(lblStartStation, 1, 0);
  start->addWidget(lblStartArchnum, 1, 1);
  start->setColumnStretch(2, 1);

  auto* stop = new QHBoxLayout;
  stop->addWidget(prompt);
  stop->addWidget(txtStopArchnum);
  stop->addStretch();

  auto* cmdOk = new QPushButton;
  cmdOk->setObjectName("cmdOk");
  cmdOk->setDefault(true);
  auto* cmdCancel = new QPushButton;
  cmdCancel->setObjectName("cmdCancel");
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdOk);
  buttons->addWidget(cmdCancel);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label1);
  layout->addLayout(start);
  layout->addSpacing(8);
  layout->addLayout(stop);
  layout->addLayout(buttons);
  layout->setSizeConstraint(QLayout::SetFixedSize);

  adapter_.Link(model_.Label1, label1);
  adapter_.Link(model_.lblStartStation, lblStartStation);
  adapter_.Link(model_.lblStartArchnum, lblStartArchnum);
  adapter_.Link(model_.txtStopArchnum, txtStopArchnum);
  adapter_.Link(model_.cmdOk, static_cast<QAbstractButton*>(cmdOk));
  adapter_.Link(model_.cmdCancel, static_cast<QAbstractButton*>(cmdCancel));
  setTabOrder(txtStopArchnum, cmdOk);
  setTabOrder(cmdOk, cmdCancel);

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

frmAuto::~frmAuto() {
  model_.SetFocus = nullptr;
  model_.SelectAll = nullptr;
  model_.CloseWindow = nullptr;
}

void frmAuto::showEvent(QShowEvent* e) {
  QDialog::showEvent(e);
  if (model_.SetFocus) model_.SetFocus("txtStopArchnum");
  if (model_.SelectAll) model_.SelectAll("txtStopArchnum");
}

void frmAuto::reject() {
  if (!done_) model_.cmdCancel.Press();
}

}  // namespace r6183::gui
