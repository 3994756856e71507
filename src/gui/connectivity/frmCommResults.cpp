#include "gui/connectivity/frmCommResults.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

namespace r6183::gui {

frmCommResults::frmCommResults(Session& session, ModComm& comm, modModem& modem, QWidget* parent)
    : WizardPage(session, kCommResultsPage, CommResultsModel::kCaption, WizardPicture::Subject::Ports, parent),
      model_(session, comm, modem) {
  auto* title = new QLabel;
  title->setObjectName("Label4");
  auto* results = new QLabel;
  results->setObjectName("Label2");
  auto* found = new QLineEdit;
  found->setObjectName("txtComport");
  found->setReadOnly(true);
  results->setBuddy(found);
  auto* percent = new QLabel;
  percent->setObjectName("Label1");
  percent->setMinimumWidth(percent->fontMetrics().horizontalAdvance("100 %") + 4);
  percent->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  bar_ = new QProgressBar;
  bar_->setObjectName("ProgressBar1");
  bar_->setTextVisible(false);
  auto* barRow = new QHBoxLayout;
  barRow->addWidget(bar_, 1);
  barRow->addWidget(percent);
  Body()->addWidget(title);
  Body()->addSpacing(12);
  Body()->addWidget(results);
  Body()->addWidget(found);
  Body()->addStretch();
  Body()->addLayout(barRow);
  adapter_.Link(model_.Label4, title);
  adapter_.Link(model_.Label2, results);
  adapter_.Link(model_.txtComport, found);
  adapter_.Link(model_.Label1, percent);
  model_.ProgressBar1.Mirror = [this] {
    bar_->setRange(model_.ProgressBar1.Min(), model_.ProgressBar1.Max());
    bar_->setValue(model_.ProgressBar1.Value());
  };
  model_.ProgressBar1.Mirror();
  model_.CloseWindow = [this] { accept(); };
  // one tick, a second after the page shows: the scan
  timer_ = new QTimer(this);
  timer_->setObjectName("Timer1");
  timer_->setSingleShot(true);
  timer_->setInterval(CommResultsModel::kTimerInterval);
  connect(timer_, &QTimer::timeout, this, [this] {
    if (model_.Timer1Enabled) model_.Timer1_Timer();
  });
  model_.Form_Load();
  Finish(adapter_, model_, model_.cmdFinish);
}

frmCommResults::~frmCommResults() {
  model_.ProgressBar1.Mirror = nullptr;
  model_.CloseWindow = nullptr;
}

void frmCommResults::showEvent(QShowEvent* e) {
  WizardPage::showEvent(e);
  if (model_.Timer1Enabled && !timer_->isActive()) timer_->start();
}

}  // namespace r6183::gui
