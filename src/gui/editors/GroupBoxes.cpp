#include "gui/editors/GroupBoxes.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QVBoxLayout>

namespace r6183::gui {

namespace {
QString Q(const std::string& s) { return QString::fromStdString(s); }

QPushButton* Button(ControlAdapter& adapter, Control& c) {
  auto* b = new QPushButton;
  b->setObjectName(Q(c.Name()));
  adapter.Link(c, static_cast<QAbstractButton*>(b));
  return b;
}
}  // namespace

QWidget* GroupsTab(ControlAdapter& adapter, Control* label, Control& frame, const std::vector<Control*>& boxes,
                   Control& include, Control& remove) {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  if (label) {
    auto* l = new QLabel;
    l->setObjectName(Q(label->Name()));
    adapter.Link(*label, l);
    column->addWidget(l);
  }
  auto* fra = new QGroupBox(Q(frame.Text()));
  fra->setObjectName(Q(frame.Name()));
  adapter.Link(frame, fra);
  auto* grid = new QGridLayout(fra);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    auto* box = new QCheckBox;
    box->setObjectName(Q(boxes[i]->Name()));
    adapter.Link(*boxes[i], box);
    grid->addWidget(box, static_cast<int>(i / 4), static_cast<int>(i % 4));
  }
  column->addWidget(fra);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(Button(adapter, include));
  buttons->addWidget(Button(adapter, remove));
  buttons->addStretch();
  column->addLayout(buttons);
  column->addStretch();
  return page;
}

QLayout* ButtonRow(ControlAdapter& adapter, const std::vector<Control*>& buttons) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (Control* c : buttons) {
    QPushButton* b = Button(adapter, *c);
    b->setVisible(c->Visible());
    row->addWidget(b);
  }
  return row;
}

void ShowInFront(QMdiSubWindow& w) {
  if (w.isMaximized()) w.showNormal();
  w.show();
  if (QMdiArea* area = w.mdiArea()) {
    area->window()->activateWindow();
    area->setActiveSubWindow(&w);
  }
  w.raise();
}

}  // namespace r6183::gui
