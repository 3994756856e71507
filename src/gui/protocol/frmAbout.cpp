#include "gui/protocol/frmAbout.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

#include "gui/shell/Twips.h"
#include "protocol/ModComm.h"
#include "protocol/ProgressWindow.h"
#include "protocol/Revisions.h"
#include "shell/MainMenu.h"
#include "shell/Session.h"

namespace r6183::gui {

frmAbout::frmAbout(Session& session, ModComm& comm, ProgressWindow& progress, QWidget* parent)
    : QDialog(parent), session_(session), form_{session, *this, "frmAbout"} {
  setObjectName("frmAbout");
  picIcon_ = new QLabel;
  picIcon_->setObjectName("picIcon");
  Label2_ = new QLabel;
  Label2_->setObjectName("Label2");
  Label2_->setWordWrap(true);
  Text3_ = new QLineEdit;
  Text3_->setObjectName("Text3");
  Text3_->setReadOnly(true);
  Text2_ = new QPlainTextEdit;
  Text2_->setObjectName("Text2");
  Text2_->setReadOnly(true);
  Text2_->setMaximumHeight(Text2_->fontMetrics().height() * 5);
  flexAbout_ = new QTableWidget(0, 2);
  flexAbout_->setObjectName("flexAbout");
  flexAbout_->horizontalHeader()->hide();
  flexAbout_->verticalHeader()->hide();
  flexAbout_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  flexAbout_->setWordWrap(false);
  flexAbout_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  flexAbout_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  flexAbout_->verticalHeader()->setDefaultSectionSize(flexAbout_->fontMetrics().height() + 6);
  flexAbout_->setColumnWidth(0, ToPixels(1700));
  flexAbout_->setColumnWidth(1, ToPixels(1795));
  cmdOk_ = new QPushButton("OK");
  cmdOk_->setObjectName("cmdOk");
  cmdOk_->setDefault(true);
  connect(cmdOk_, &QPushButton::clicked, this, &QDialog::accept);

  auto* top = new QHBoxLayout;
  top->addWidget(picIcon_);
  top->addWidget(Label2_, 1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cmdOk_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(Text3_);
  layout->addWidget(Text2_);
  layout->addWidget(flexAbout_);
  layout->addLayout(buttons);

  form_.FollowVisibility();
  form_.Load();  // while it asks the unit, before it shows
  Form_Load(comm, progress);
  cmdOk_->setFocus();
}

void frmAbout::Form_Load(ModComm& comm, ProgressWindow& progress) {
  const ProductIdentity& p = session_.product;
  progress.SetModemComm();
  progress.Show();
  progress.ChangeCaption("Preparing to Communicate");
  progress.SetPlainText("Preparing to communicate with " + p.ProductModel + " system...");

  setWindowTitle(QString::fromStdString("About " + p.ProductTitle));
  Label2_->setText(QString::fromStdString(p.ProductCaption));
  Text3_->setText(QString::fromStdString(p.ProductVersionText));
  Text2_->setPlainText(QString::fromStdString(p.LegalNotice));
  if (!p.IconPath.empty()) {
    const QPixmap icon(QString::fromStdString(p.IconPath));
    if (!icon.isNull()) picIcon_->setPixmap(icon.scaled(48, 48, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  }

  RevisionLines lines;
  step(session_.journal(), Where{"frmAbout", "Form_Load"}, [&] { comm.logFile.Rewrite(session_, "log_file.txt"); });
  GetRevs(session_, comm, lines);
  comm.logFile.Close();
  FillGrid(lines);
  progress.Unload();
}

// Seven rows, the empty lines included; each line's Tab parts the label from the value.
void frmAbout::FillGrid(const RevisionLines& lines) {
  const std::string* rows[] = {&lines.RevLineTool,   &lines.RevLineMain,  &lines.RevLineSecond, &lines.RevLineThird,
                               &lines.RevLineStatus, &lines.RevLineCard1, &lines.RevLineCard2};
  flexAbout_->setRowCount(static_cast<int>(std::size(rows)));
  for (int r = 0; r < flexAbout_->rowCount(); ++r) {
    const std::string& line = *rows[r];
    const auto tab = line.find('\t');
    flexAbout_->setItem(r, 0, new QTableWidgetItem(QString::fromStdString(line.substr(0, tab))));
    flexAbout_->setItem(
        r, 1, new QTableWidgetItem(tab == std::string::npos ? QString() : QString::fromStdString(line.substr(tab + 1))));
  }
  // all rows and whole labels in view
  for (int c = 0; c < 2; ++c) {
    const int designed = flexAbout_->columnWidth(c);
    flexAbout_->resizeColumnToContents(c);
    flexAbout_->setColumnWidth(c, std::max(designed, flexAbout_->columnWidth(c) + 8));
  }
  const int frame = 2 * flexAbout_->frameWidth();
  flexAbout_->setFixedHeight(flexAbout_->rowCount() * flexAbout_->verticalHeader()->defaultSectionSize() + frame);
  flexAbout_->setMinimumWidth(flexAbout_->columnWidth(0) + flexAbout_->columnWidth(1) + frame);
}

void mnuHelpAbout_Click(Session& session, ModComm& comm, ProgressWindow& progress, QWidget* parent) {
  if (WindowOpenBlocked(session)) return;
  step(session.journal(), Where{"frmMenu", "mnuAbout"}, [&] {
    DisableAllRootMenus(session);
    frmAbout window(session, comm, progress, parent);
    window.exec();
  });
  InableAllRootMenus(session);
}

}  // namespace r6183::gui
