#include "gui/connectivity/frmRemote.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "connectivity/modModem.h"
#include "gui/connectivity/frmComPort.h"
#include "gui/connectivity/frmUSRobot.h"
#include "gui/editors/GroupBoxes.h"
#include "gui/shell/Centre.h"
#include "gui/shell/Twips.h"
#include "protocol/PortMap.h"
#include "shell/Session.h"

namespace r6183::gui {

namespace {
QLabel* TextLabel(Control& c, ControlAdapter& adapter) {
  auto* l = new QLabel;
  l->setObjectName(QString::fromStdString(c.Name()));
  l->setWordWrap(true);
  adapter.Link(c, l);
  return l;
}
}  // namespace

frmRemote::frmRemote(Session& session, modModem& modem, QWidget* parent)
    : QDialog(parent), session_(session), modem_(modem), model_(session, modem), form_(session, *this, "frmRemote") {
  setObjectName("frmRemote");
  setWindowTitle(RemoteModel::kCaption);
  setModal(false);
  setAttribute(Qt::WA_DeleteOnClose);
  auto* command = new QLineEdit;
  command->setObjectName("txtCommand");
  auto* commandLabel = new QLabel;
  commandLabel->setObjectName("lblCommand");
  commandLabel->setBuddy(command);
  adapter_.Link(model_.lblCommand, commandLabel);
  adapter_.Link(model_.txtCommand, command);
  auto* commandRow = new QHBoxLayout;
  commandRow->addWidget(commandLabel);
  commandRow->addWidget(command, 1);
  auto* column = new QVBoxLayout(this);
  column->addWidget(TextLabel(model_.lbl1, adapter_));
  column->addWidget(TextLabel(model_.lbl2, adapter_));
  column->addLayout(commandRow);
  column->addWidget(TextLabel(model_.lbl3, adapter_));
  column->addStretch();
  column->addLayout(ButtonRow(adapter_, {&model_.cmdYes, &model_.cmdNo, &model_.cmdOk, &model_.cmdCancel}));

  model_.HideWindow = [this] { hide(); };
  model_.ShowWindow = [this] {
    show();
    raise();
    activateWindow();
  };
  model_.CloseWindow = [this] { close(); };
  model_.Resized = [this] { FitWidth(); };
  model_.ShowChart = [this](const SwitchChart& chart) {
    frmUSRobot w(session_, parentWidget());
    w.model().Initialize(chart);
    w.exec();
  };
  model_.ShowPortChoice = [this] {
    frmComPort w(session_, modem_.comm(), MapPorts(session_.journal(), session_.state.SettingsPath, DiscoverPorts()),
                 parentWidget());
    // the wizard isn't offered here
    w.model().cmdAuto.SetEnabled(false);
    w.exec();
  };

  form_.Load();
  model_.Form_Load();
  FitWidth();
  CentreWindow(*this, parent);
}

frmRemote::~frmRemote() {
  for (auto* hook : {&model_.HideWindow, &model_.ShowWindow, &model_.CloseWindow, &model_.Resized,
                     &model_.ShowPortChoice})
    *hook = nullptr;
  model_.ShowChart = nullptr;
  Unload();
}

void frmRemote::FitWidth() {
  setFixedWidth(ToPixels(model_.Width));
  adjustSize();
}

void frmRemote::Unload() {
  model_.Form_Unload();
  form_.Leave();
}

void frmRemote::closeEvent(QCloseEvent* e) {
  // the close box unloads the window at any step (a dialog's own would ask reject())
  Unload();
  e->accept();
}

void frmRemote::reject() {
  // Escape is Cancel where the step offers it
  if (model_.cmdCancel.Visible() && model_.cmdCancel.Enabled()) model_.cmdCancel.Press();
}

}  // namespace r6183::gui
