#include "gui/shell/frmDebug.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

#include "connectivity/FlexGrid.h"
#include "gui/shell/Centre.h"
#include "gui/shell/Twips.h"
#include "shell/JournalListing.h"
#include "shell/Session.h"

namespace r6183::gui {

namespace {

int16_t Flag(const QCheckBox& box) { return box.isChecked() ? 1 : 0; }

}  // namespace

frmDebug::frmDebug(Session& session, QWidget* parent)
    : QWidget(parent, Qt::Window),
      session_(session),
      form_(session, *this, "frmDebug"),
      chkComm_(new QCheckBox("Communications", this)),
      chkAT_(new QCheckBox("AT Commands", this)),
      grid1_(new QTableWidget(this)) {
  setObjectName("frmDebug");
  setWindowTitle("Debug");
  chkComm_->setObjectName("chkComm");
  chkAT_->setObjectName("chkAT");

  auto* lblLog = new QLabel("Log:", this);
  lblLog->setObjectName("lblLog");
  grid1_->setObjectName("grid1");
  grid1_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  grid1_->setSelectionBehavior(QAbstractItemView::SelectRows);
  grid1_->verticalHeader()->hide();
  grid1_->horizontalHeader()->setStretchLastSection(true);

  auto* cmdClear = new QPushButton("Clear", this);
  cmdClear->setObjectName("cmdClear");
  auto* cmdOk = new QPushButton("OK", this);
  cmdOk->setObjectName("cmdOk");
  cmdOk->setDefault(true);
  connect(cmdClear, &QPushButton::clicked, this, &frmDebug::cmdClear_Click);
  connect(cmdOk, &QPushButton::clicked, this, &frmDebug::cmdOk_Click);

  auto* traces = new QHBoxLayout;
  traces->addWidget(chkComm_);
  traces->addWidget(chkAT_);
  traces->addStretch();
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdClear);
  buttons->addWidget(cmdOk);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(traces);
  layout->addWidget(lblLog);
  layout->addWidget(grid1_, 1);
  layout->addLayout(buttons);
  resize(720, 420);
  form_.FollowVisibility();
}

void frmDebug::LoadGrid() {
  grid1_->clear();
  grid1_->setColumnCount(5);
  grid1_->setHorizontalHeaderLabels({"No", "Description", "Date/Time", "Function", "Module"});
  grid1_->setColumnWidth(0, ToPixels(600));
  grid1_->setColumnWidth(1, ToPixels(2300));
  grid1_->setColumnWidth(2, ToPixels(1800));
  // a line per row of the journal, added as the grid routines add them
  FlexGrid grid(5);
  for (const JournalLine& line : ReadJournalLines(session_))
    AddItemToFlexQ(session_, grid, line.number, line.description, line.dateTime, line.function, line.module);
  grid1_->setRowCount(grid.Rows() - 1);
  for (int row = 1; row < grid.Rows(); ++row)
    for (int col = 0; col < grid.Cols(); ++col)
      grid1_->setItem(row - 1, col, new QTableWidgetItem(QString::fromStdString(grid.TextMatrix(row, col))));
}

void frmDebug::cmdOk_Click() {
  session_.state.TraceComm = Flag(*chkComm_);
  session_.state.TraceAT = Flag(*chkAT_);
  close();
}

void frmDebug::cmdClear_Click() {
  ClearJournal(session_);
  grid1_->clear();
  LoadGrid();
}

void frmDebug::showEvent(QShowEvent* event) {
  // a window restored from the task bar keeps what it shows
  if (!event->spontaneous()) quietly([&] {
    if (isWindow()) CentreWindow(*this);
    LoadGrid();
    chkComm_->setChecked(session_.state.TraceComm != 0);
    chkAT_->setChecked(session_.state.TraceAT != 0);
  });
  QWidget::showEvent(event);
}

}  // namespace r6183::gui
