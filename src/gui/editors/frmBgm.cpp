#include "gui/editors/frmBgm.h"

#include <QCloseEvent>
#include <QTabWidget>
#include <QVBoxLayout>

#include "gui/editors/GroupBoxes.h"
#include "gui/editors/WindowMnemonics.h"

namespace r6183::gui {

frmBgm::frmBgm(Session& session, QWidget* parent)
    : QMdiSubWindow(parent), model_(session), form_(session, *this, "frmBgm") {
  setObjectName("frmBgm");
  WindowMnemonics::Install(*this);
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(BgmModel::kCaption);
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  auto* tabs = new QTabWidget;
  tabs->setObjectName("SSTab1");
  for (int src = 0; src < 3; ++src) {
    BgmModel::Set& set = model_.sets[static_cast<std::size_t>(src)];
    std::vector<Control*> boxes;
    for (Control& c : set.chk) boxes.push_back(&c);
    tabs->addTab(GroupsTab(adapter_, &set.lbl, set.fra, boxes, set.cmdInclude, set.cmdRemove), BgmModel::kTabs[src]);
  }
  column->addWidget(tabs);
  column->addLayout(ButtonRow(adapter_, {&model_.cmdOK, &model_.cmdCancel}));
  setWidget(content);
  model_.Form_Load();

  model_.CloseWindow = [this] { close(); };
  form_.uncommitted = [this] { return model_.UncommittedChanges(); };
  form_.ok = [this] { model_.cmdOK.Press(); };
  form_.cancel = [this] { model_.cmdCancel.Press(); };
  form_.FollowVisibility();
}

frmBgm::~frmBgm() { model_.CloseWindow = nullptr; }

void frmBgm::closeEvent(QCloseEvent* e) {
  model_.CloseWindow = nullptr;
  model_.Form_Unload();
  QMdiSubWindow::closeEvent(e);
}

}  // namespace r6183::gui
