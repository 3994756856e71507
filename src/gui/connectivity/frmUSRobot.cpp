#include "gui/connectivity/frmUSRobot.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/editors/GroupBoxes.h"
#include "gui/shell/Centre.h"

namespace r6183::gui {

frmUSRobot::frmUSRobot(Session& session, QWidget* parent)
    : QDialog(parent), model_(session), form_(session, *this, "frmUSRobot") {
  setObjectName("frmUSRobot");
  setWindowTitle(USRobotModel::kCaption);
  auto* instruction = new QLabel;
  instruction->setObjectName("lbl_instruction");
  adapter_.Link(model_.lbl_instruction, instruction);
  auto* chart = new QGridLayout;
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  for (int i = 0; i < 8; ++i) {
    auto* name = new QLabel;
    name->setObjectName(QString::fromStdString(model_.lbl_sw[i].Name()));
    auto* position = new QLineEdit;
    position->setObjectName(QString::fromStdString(model_.txt_sw[i].Name()));
    position->setReadOnly(true);
    position->setFocusPolicy(Qt::NoFocus);
    position->setFont(fixed);
    name->setBuddy(position);
    adapter_.Link(model_.lbl_sw[i], name);
    adapter_.Link(model_.txt_sw[i], position);
    chart->addWidget(name, i, 0);
    chart->addWidget(position, i, 1);
  }
  auto* column = new QVBoxLayout(this);
  column->addWidget(instruction);
  column->addLayout(chart);
  column->addLayout(ButtonRow(adapter_, {&model_.cmd_Ok}));
  if (auto* ok = findChild<QPushButton*>("cmd_Ok")) ok->setDefault(true);
  model_.CloseWindow = [this] { accept(); };
  form_.FollowVisibility();
  adjustSize();
  CentreWindow(*this, parent);
}

frmUSRobot::~frmUSRobot() { model_.CloseWindow = nullptr; }

}  // namespace r6183::gui
