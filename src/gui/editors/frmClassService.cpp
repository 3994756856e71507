#include "gui/editors/frmClassService.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

#include "gui/editors/GroupBoxes.h"
#include "gui/editors/WindowMnemonics.h"

namespace r6183::gui {

namespace {
QString Q(const std::string& s) { return QString::fromStdString(s); }

QLabel* Label(ControlAdapter& adapter, Control& c) {
  auto* l = new QLabel;
  l->setObjectName(Q(c.Name()));
  adapter.Link(c, l);
  return l;
}

// A combo box showing a list control: its lines, its line, its state; a line the operator
// chooses, by mouse or keys, goes back to it.
QComboBox* Combo(ListControl& list, QObject* context) {
  auto* box = new QComboBox;
  box->setObjectName(Q(list.Name()));
  auto mirror = [&list, box](ListControl::Event, int) {
    const QSignalBlocker quiet(box);
    if (box->count() != list.ListCount()) {
      box->clear();
      for (const std::string& line : list.Items()) box->addItem(Q(line));
    }
    box->setCurrentIndex(list.ListIndex());
    box->setEnabled(list.Enabled());
  };
  list.Mirror = mirror;
  mirror(ListControl::Event::State, -1);
  QObject::connect(box, &QComboBox::activated, context, [&list](int index) { list.Choose(index); });
  return box;
}
}  // namespace

frmClassService::frmClassService(Session& session, QWidget* parent)
    : QMdiSubWindow(parent), model_(session), form_(session, *this, "frmClassService") {
  setObjectName("frmClassService");
  WindowMnemonics::Install(*this);
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(ClassServiceModel::kCaption);
  model_.Form_Load();
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  auto* tabs = new QTabWidget;
  tabs->setObjectName("SSTab1");
  for (int b = 0; b < 4; ++b) {
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    for (int col = 0; col < 3; ++col) {
      auto* head = new QLabel(ClassServiceModel::kHeads[col]);
      head->setObjectName(QString("lblHead_%1").arg(b * 3 + col));
      grid->addWidget(head, 0, col);
    }
    for (int row = 0; row < 4; ++row) {
      const int g = b * 4 + row + 1;
      grid->addWidget(Label(adapter_, model_.lblgrp[static_cast<std::size_t>(g - 1)]), row + 1, 0);
      grid->addWidget(Label(adapter_, model_.lblgrp[static_cast<std::size_t>(g + 15)]), row + 1, 1);
      QComboBox* combo = Combo(model_.Combo(g), this);
      grid->addWidget(combo, row + 1, 2);
    }
    grid->setRowStretch(5, 1);
    tabs->addTab(page, ClassServiceModel::kTabs[b]);
  }
  column->addWidget(tabs);
  column->addLayout(ButtonRow(adapter_, {&model_.cmdOk, &model_.cmdCancel}));
  setWidget(content);

  model_.CloseWindow = [this] { close(); };
  form_.uncommitted = [this] { return model_.UncommittedChanges(); };
  form_.ok = [this] { model_.cmdOk.Press(); };
  form_.cancel = [this] { model_.cmdCancel.Press(); };
  form_.FollowVisibility();
}

frmClassService::~frmClassService() {
  model_.CloseWindow = nullptr;
  for (ListControl& l : model_.cboServGroup) l.Mirror = nullptr;
}

void frmClassService::closeEvent(QCloseEvent* e) {
  model_.CloseWindow = nullptr;
  model_.Form_Unload();
  QMdiSubWindow::closeEvent(e);
}

}  // namespace r6183::gui
