#include "gui/editors/frmConflict.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/editors/ColumnLines.h"

namespace r6183::gui {

namespace {
QLabel* Label(const Control& c) {
  auto* l = new QLabel;
  l->setObjectName(QString::fromStdString(c.Name()));
  return l;
}
QLabel* Head(const char* name, const char* text) {
  auto* l = new QLabel(text);
  l->setObjectName(name);
  return l;
}
}  // namespace

frmConflict::frmConflict(Session& session, ConflictModel& model, QWidget* parent)
    : QDialog(parent), model_(model), form_(session, *this, "frmConflict") {
  setObjectName("frmConflict");
  setWindowTitle(ConflictModel::kCaption);

  QLabel* label5 = Label(model_.Label5);
  QLabel* label3 = Label(model_.Label3);
  label5->setWordWrap(true);
  label3->setWordWrap(true);
  QLabel* lblStation = Label(model_.lblStation);
  QLabel* lblArchnum = Label(model_.lblArchnum);
  for (QLabel* l : {lblStation, lblArchnum}) l->setFrameShape(QFrame::Panel), l->setFrameShadow(QFrame::Sunken);

  auto* lstConflict = new QListWidget;
  lstConflict->setObjectName("lstConflict");
  const int stn = lstConflict->fontMetrics().horizontalAdvance("Stn") + 16;
  auto* heads = ColumnHeads(*lstConflict, {0, stn}, {{"Label2", "Stn"}, {"Label4", "#"}});
  lstConflict->setMinimumWidth(stn + lstConflict->fontMetrics().horizontalAdvance("0000") + 40);

  auto* work = new QGridLayout;
  work->addWidget(Head("Label6", "Stn"), 0, 0);
  work->addWidget(Head("Label7", "#"), 0, 1);
  work->addWidget(lblStation, 1, 0);
  work->addWidget(lblArchnum, 1, 1);
  work->setColumnMinimumWidth(0, stn);
  work->setColumnMinimumWidth(1, lblArchnum->fontMetrics().horizontalAdvance("00000") + 8);
  work->setRowStretch(2, 1);

  auto* conflicts = new QVBoxLayout;
  conflicts->addWidget(Head("Label1", "Conflicts :"));
  conflicts->addLayout(heads);
  conflicts->addWidget(lstConflict);

  auto* middle = new QHBoxLayout;
  middle->addLayout(work);
  middle->addSpacing(16);
  middle->addLayout(conflicts, 1);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  std::vector<QPushButton*> order;
  for (Control* c : {&model_.cmdYes, &model_.cmdNo, &model_.cmdCancel}) {
    auto* b = new QPushButton;
    b->setObjectName(QString::fromStdString(c->Name()));
    buttons->addWidget(b);
    adapter_.Link(*c, static_cast<QAbstractButton*>(b));
    order.push_back(b);
  }

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label5);
  layout->addLayout(middle);
  layout->addWidget(label3);
  layout->addLayout(buttons);

  adapter_.Link(model_.Label5, label5);
  adapter_.Link(model_.Label3, label3);
  adapter_.Link(model_.lblStation, lblStation);
  adapter_.Link(model_.lblArchnum, lblArchnum);
  adapter_.Link(model_.lstConflict, lstConflict);

  // the answer first, then the list to look through
  setTabOrder(order[0], order[1]);
  setTabOrder(order[1], order[2]);
  setTabOrder(order[2], lstConflict);
  order[0]->setFocus();

  model_.CloseWindow = [this] { done(QDialog::Accepted); };
  form_.FollowVisibility();
}

frmConflict::~frmConflict() { model_.CloseWindow = nullptr; }

void frmConflict::reject() { model_.cmdCancel.Press(); }

}  // namespace r6183::gui
