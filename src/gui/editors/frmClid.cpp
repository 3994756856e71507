#include "gui/editors/frmClid.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>

#include "editors/AutoModel.h"
#include "editors/StationList.h"
#include "editors/StationModel.h"
#include "gui/editors/ColumnLines.h"
#include "gui/editors/frmAuto.h"
#include "gui/editors/frmStation.h"
#include "gui/editors/WindowMnemonics.h"
#include "shell/Session.h"

namespace r6183::gui {

frmClid::frmClid(Session& session, QWidget* parent)
    : QMdiSubWindow(parent), session_(session), model_(session), form_(session, *this, "frmClid") {
  setObjectName("frmClid");
  WindowMnemonics::Install(*this);
  setAttribute(Qt::WA_DeleteOnClose, false);  // the main window keeps it, loaded again at each opening
  setWindowTitle(ClidModel::kCaption);
  setWidget(BuildContent());
  model_.ShowStationWindow = [this](StationModel& st) {
    frmStation w(session_, st, window());
    w.exec();
  };
  model_.ShowAutoWindow = [this](AutoModel& a) {
    frmAuto w(session_, a, window());
    w.exec();
  };
  model_.SetFocus = [this](const std::string& name) {
    if (auto* w = widget()->findChild<QWidget*>(QString::fromStdString(name))) w->setFocus(Qt::OtherFocusReason);
  };
  model_.CloseWindow = [this] { close(); };
  form_.uncommitted = [this] { return model_.UncommittedChanges(); };
  form_.ok = [this] { model_.cmdOk.Press(); };
  form_.cancel = [this] { model_.cmdCancel.Press(); };
  form_.FollowVisibility();
}

frmClid::~frmClid() {
  model_.tabClid.Mirror = nullptr;
  model_.ShowStationWindow = nullptr;
  model_.ShowAutoWindow = nullptr;
  model_.SetFocus = nullptr;
  model_.CloseWindow = nullptr;
}

QWidget* frmClid::BuildBoard(int board) {
  auto* page = new QWidget;
  page->setObjectName(QString("tabClidPage_%1").arg(board));
  const auto b = static_cast<std::size_t>(board);

  auto* lbl = new QLabel;
  lbl->setObjectName(QString::fromStdString(model_.lblStations[b].Name()));
  auto* list = new QListWidget;
  list->setObjectName(QString::fromStdString(model_.lstClid[b].Name()));
  list->setSelectionMode(QAbstractItemView::SingleSelection);
  const QFontMetrics fm = list->fontMetrics();
  const int stn = fm.horizontalAdvance("00") + 18;
  const int arch = std::max(fm.horizontalAdvance("0000"), fm.horizontalAdvance("Arch #")) + 18;
  const std::vector<int> stops{0, stn, stn + arch};
  auto* heads = ColumnHeads(*list, stops,
                            {{ArrayName("lblStn", board).c_str(), ""},
                             {ArrayName("lblArch", board).c_str(), "Arch #"},
                             {ArrayName("lblClid", board).c_str(), "CLID Description"}});
  list->setMinimumWidth(stops.back() + fm.horizontalAdvance(QString(kClidWidth, 'W')) + 30);
  // the whole board in view: 24 lines
  list->setMinimumHeight(kBoardStations * (fm.height() + 2) + 2 * list->frameWidth() + 4);
  lbl->setBuddy(list);

  auto* buttons = new QVBoxLayout;
  std::vector<QPushButton*> cmds;
  for (Control* c : {&model_.cmdEdit[b], &model_.cmdDelete[b], &model_.cmdAuto[b]}) {
    auto* button = new QPushButton;
    button->setObjectName(QString::fromStdString(c->Name()));
    button->setAutoDefault(false);
    buttons->addWidget(button);
    adapter_.Link(*c, static_cast<QAbstractButton*>(button));
    cmds.push_back(button);
  }
  buttons->addStretch();

  auto* left = new QVBoxLayout;
  left->addWidget(lbl);
  left->addLayout(heads);
  left->addWidget(list, 1);
  auto* row = new QHBoxLayout(page);
  row->addLayout(left, 1);
  row->addLayout(buttons);

  adapter_.Link(model_.lblStations[b], lbl);
  adapter_.Link(model_.lstClid[b], list);
  QWidget::setTabOrder(list, cmds[0]);
  QWidget::setTabOrder(cmds[0], cmds[1]);
  QWidget::setTabOrder(cmds[1], cmds[2]);
  return page;
}

QWidget* frmClid::BuildContent() {
  auto* content = new QWidget;
  content->setObjectName("frmClidContent");
  tabs_ = new QTabWidget;
  tabs_->setObjectName("tabClid");
  for (int b = 0; b < kBoards; ++b) tabs_->addTab(BuildBoard(b), QString::fromStdString(BoardTabCaption(b)));

  auto* cmdOk = new QPushButton;
  cmdOk->setObjectName("cmdOk");
  cmdOk->setAutoDefault(false);
  auto* cmdCancel = new QPushButton;
  cmdCancel->setObjectName("cmdCancel");
  cmdCancel->setAutoDefault(false);
  auto* bottom = new QHBoxLayout;
  bottom->addStretch();
  bottom->addWidget(cmdOk);
  bottom->addWidget(cmdCancel);

  auto* layout = new QVBoxLayout(content);
  layout->addWidget(tabs_, 1);
  layout->addLayout(bottom);

  adapter_.Link(model_.cmdOk, static_cast<QAbstractButton*>(cmdOk));
  adapter_.Link(model_.cmdCancel, static_cast<QAbstractButton*>(cmdCancel));
  // the tab shown, both ways; a tab the operator picks runs the tab's click
  Control& tab = model_.tabClid;
  tab.Mirror = [this, &tab] {
    const QSignalBlocker quiet(tabs_);
    tabs_->setCurrentIndex(tab.Value());
  };
  connect(tabs_, &QTabWidget::currentChanged, this, [this](int index) {
    model_.tabClid.SetValue(index);
    // the keyboard goes on in the list of the board shown
    if (auto* list = tabs_->currentWidget()->findChild<QListWidget*>(); list && list->isEnabled()) list->setFocus();
  });
  QWidget::setTabOrder(tabs_, cmdOk);
  QWidget::setTabOrder(cmdOk, cmdCancel);
  return content;
}

void frmClid::Open(QMdiArea& area) {
  if (!model_.Loaded()) {
    model_.Form_Load();
    if (!mdiArea()) {
      area.addSubWindow(this);
      adjustSize();
    }
  }
  if (isMaximized()) showNormal();
  show();
  area.window()->activateWindow();
  area.setActiveSubWindow(this);
  raise();
  if (auto* list = tabs_->currentWidget()->findChild<QListWidget*>()) list->setFocus();
}

void frmClid::closeEvent(QCloseEvent* e) {
  // the system box as Cancel: the rows go back to the opening unless OK was pressed
  model_.Form_Unload();
  QMdiSubWindow::closeEvent(e);
}

void frmClid::changeEvent(QEvent* e) {
  QMdiSubWindow::changeEvent(e);
  // the window keeps its size: a maximised one goes back to normal
  if (e->type() == QEvent::WindowStateChange && isMaximized())
    step(session_.journal(), Where{"frmClid", "Form GotForcus"}, [&] { showNormal(); });
}

}  // namespace r6183::gui
