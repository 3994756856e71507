#include "gui/connectivity/frmComPort.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "gui/editors/GroupBoxes.h"
#include "gui/shell/Centre.h"

namespace r6183::gui {

namespace {
QLabel* NamedLabel(const std::string& name) {
  auto* l = new QLabel;
  l->setObjectName(QString::fromStdString(name));
  return l;
}
}  // namespace

frmComPort::frmComPort(Session& session, ModComm& comm, std::vector<PortInfo> ports, QWidget* parent)
    : QDialog(parent), model_(session, comm, std::move(ports)), form_(session, *this, "frmComPort") {
  setObjectName("frmComPort");
  setWindowTitle(ComPortModel::kCaption);
  auto* label = NamedLabel("Label1");
  cboPort_ = new QComboBox;
  cboPort_->setObjectName("cboPort");
  label->setBuddy(cboPort_);
  auto* row = new QHBoxLayout;
  row->addWidget(label);
  row->addWidget(cboPort_, 1);
  auto* column = new QVBoxLayout(this);
  column->addLayout(row);
  column->addLayout(ButtonRow(adapter_, {&model_.cmdAuto, &model_.cmdOk, &model_.cmdCancel}));
  adapter_.Link(model_.Label1, label);

  // the list shows each number with its device; the choice is the number
  model_.cboPort.Mirror = [this](ListControl::Event e, int index) {
    const QSignalBlocker quiet(cboPort_);
    switch (e) {
      case ListControl::Event::Cleared: cboPort_->clear(); break;
      case ListControl::Event::Added:
        cboPort_->addItem(QString::fromStdString(model_.PortText(index)));
        cboPort_->setCurrentIndex(-1);
        break;
      case ListControl::Event::Selected: cboPort_->setCurrentIndex(index); break;
      default: break;
    }
  };
  connect(cboPort_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (index != model_.cboPort.ListIndex()) model_.cboPort.SetListIndex(index);
  });
  model_.CloseWindow = [this] { accept(); };
  model_.FocusPort = [this] { cboPort_->setFocus(); };
  model_.Form_Load();
  if (auto* ok = findChild<QPushButton*>("cmdOk")) ok->setDefault(true);
  form_.FollowVisibility();
  adjustSize();
  CentreWindow(*this);
}

frmComPort::~frmComPort() {
  disconnect(cboPort_, nullptr, this, nullptr);
  model_.cboPort.Mirror = nullptr;
  model_.CloseWindow = nullptr;
  model_.FocusPort = nullptr;
}

frmManConnect::frmManConnect(Session& session, modModem& modem, QWidget* parent)
    : QDialog(parent), model_(modem), form_(session, *this, "frmManConnect") {
  setObjectName("frmManConnect");
  setWindowTitle(ManConnectModel::kCaption);
  auto* column = new QVBoxLayout(this);
  for (Control* c : {&model_.Label1_0, &model_.Label1_1, &model_.Label1_2, &model_.Label2}) {
    QLabel* l = NamedLabel(c->Name());
    l->setWordWrap(true);
    column->addWidget(l);
    adapter_.Link(*c, l);
  }
  column->addLayout(ButtonRow(adapter_, {&model_.cmdConnect, &model_.cmdCancel}));
  model_.CloseWindow = [this] { accept(); };
  setMinimumWidth(420);
  form_.FollowVisibility();
}

frmManConnect::~frmManConnect() { model_.CloseWindow = nullptr; }

}  // namespace r6183::gui
