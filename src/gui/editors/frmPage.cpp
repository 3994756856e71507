#include "gui/editors/frmPage.h"

#include <QCloseEvent>
#include <QLabel>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "gui/editors/GroupBoxes.h"
#include "gui/editors/WindowMnemonics.h"

namespace r6183::gui {

frmPage::frmPage(Session& session, QWidget* parent)
    : QMdiSubWindow(parent), model_(session), form_(session, *this, "frmPage") {
  setObjectName("frmPage");
  WindowMnemonics::Install(*this);
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(PageModel::kCaption);
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  auto* label = new QLabel;
  label->setObjectName(QString::fromStdString(model_.Label1.Name()));
  adapter_.Link(model_.Label1, label);
  column->addWidget(label);
  tabs_ = new QTabWidget;
  tabs_->setObjectName("tabPageGroup");
  for (int t = 0; t < 4; ++t) {
    std::vector<Control*> boxes;
    for (int g = 1; g <= 16; ++g) boxes.push_back(&model_.Box(t, g));
    tabs_->addTab(GroupsTab(adapter_, nullptr, model_.fraPageGroup[static_cast<std::size_t>(t)], boxes,
                            model_.cmdInclude[static_cast<std::size_t>(t)], model_.cmdRemove[static_cast<std::size_t>(t)]),
                  PageModel::kTabs[t]);
  }
  column->addWidget(tabs_);
  column->addLayout(ButtonRow(adapter_, {&model_.cmdOK, &model_.cmdCancel}));
  setWidget(content);

  model_.SetFocus = [this](const std::string& name) {
    if (auto* w = findChild<QWidget*>(QString::fromStdString(name))) w->setFocus(Qt::TabFocusReason);
  };
  model_.CloseWindow = [this] { close(); };
  model_.Form_Load();
  connect(tabs_, &QTabWidget::currentChanged, this, [this](int t) { model_.tabPageGroup_Click(t); });
  form_.uncommitted = [this] { return model_.UncommittedChanges(); };
  form_.ok = [this] { model_.cmdOK.Press(); };
  form_.cancel = [this] { model_.cmdCancel.Press(); };
  form_.FollowVisibility();
}

frmPage::~frmPage() {
  model_.SetFocus = nullptr;
  model_.CloseWindow = nullptr;
}

void frmPage::closeEvent(QCloseEvent* e) {
  model_.CloseWindow = nullptr;
  model_.Form_Unload();
  QMdiSubWindow::closeEvent(e);
}

}  // namespace r6183::gui
