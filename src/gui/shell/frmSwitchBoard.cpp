#include "gui/shell/frmSwitchBoard.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "gui/shell/Centre.h"
#include "gui/shell/Twips.h"
#include "shell/Session.h"
#include "shell/Settings.h"
#include "shell/SwitchBoard.h"

namespace r6183::gui {

frmSwitchBoard::frmSwitchBoard(Session& session, QWidget* mainWindow, QuickMenu quickMenu)
    : QWidget(mainWindow, Qt::Tool),  // a tool window stays above its main window
      session_(session),
      main_(mainWindow),
      quickMenu_(std::move(quickMenu)),
      form_(session, *this, "frmSwitchBoard") {
  setObjectName("frmSwitchBoard");
  setWindowTitle("Programming Windows");
  lstMenu_ = new QListWidget(this);
  lstMenu_->setObjectName("lstMenu");
  cmdOpen_ = new QPushButton("&Open", this);
  cmdOpen_->setObjectName("cmdOpen");
  cmdAll_ = new QPushButton("Open &All", this);
  cmdAll_->setObjectName("cmdAll");
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(cmdOpen_);
  buttons->addWidget(cmdAll_);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 6);
  layout->addWidget(lstMenu_, 1);
  layout->addLayout(buttons);
  Timer1_ = new QTimer(this);
  Timer1_->setObjectName("Timer1");
  Timer1_->setSingleShot(true);
  Timer1_->setInterval(100);
  connect(Timer1_, &QTimer::timeout, this, [this] { raise(); });
  connect(cmdOpen_, &QPushButton::clicked, this, &frmSwitchBoard::OpenSelected);
  connect(cmdAll_, &QPushButton::clicked, this, [this] { quickMenu_("All"); });
  // a double click or Enter on an entry presses Open (once: a double click also activates)
  connect(lstMenu_, &QListWidget::itemActivated, this, [this] { cmdOpen_->click(); });
}

void frmSwitchBoard::Form_Load() {
  form_.Load();
  getSwitchBoardValues(session_);
  const QRect avail = ScreenArea(*main_);
  placed_ = SwitchBoardPlace(session_.state, ToTwips(avail.right() + 1), ToTwips(avail.bottom() + 1),
                             ToTwips(main_->frameGeometry()));
  resizing_ = true;
  setGeometry(ToPixels(placed_));
  resizing_ = false;
  lstMenu_->clear();
  for (const std::string& entry : SwitchBoardEntries(session_.state)) lstMenu_->addItem(QString::fromStdString(entry));
  lstMenu_->setCurrentRow(0);
  show();
  Timer1_->start();
}

void frmSwitchBoard::Form_Unload() {
  if (!form_.Loaded()) return;
  const TwipsRect now = ToTwipsKeeping(geometry(), placed_);
  auto& st = session_.state;
  st.SwitchBoardTop = now.top;
  st.SwitchBoardLeft = now.left;
  st.SwitchBoardWidth = now.width;
  st.SwitchBoardHeight = now.height;
  PutSwitchBoardVal(session_);
  session_.menu.SetChecked("mnuSwitchBoard", false);
  hide();
  form_.Leave();
}

void frmSwitchBoard::OpenSelected() {
  if (const QListWidgetItem* item = lstMenu_->currentItem()) quickMenu_(item->text().toStdString());
}

void frmSwitchBoard::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  if (resizing_) return;
  // the width is fixed and the height has a floor
  const TwipsRect fixed = SwitchBoardResized(ToTwips(geometry()));
  const QSize want(ToPixels(fixed.width), ToPixels(fixed.height));
  if (size() != want) {
    resizing_ = true;
    resize(want);
    resizing_ = false;
  }
}

void frmSwitchBoard::closeEvent(QCloseEvent* e) {
  Form_Unload();
  e->accept();
}

void frmSwitchBoard::changeEvent(QEvent* e) {
  QWidget::changeEvent(e);
  if (e->type() == QEvent::WindowStateChange && (windowState() & Qt::WindowMaximized))
    setWindowState(windowState() & ~Qt::WindowMaximized);
}

}  // namespace r6183::gui
