#include "gui/connectivity/frmCommType.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace r6183::gui {

frmCommType::frmCommType(Session& session, QWidget* parent)
    : WizardPage(session, kCommTypePage, CommTypeModel::kCaption, WizardPicture::Subject::Choice, parent),
      model_(session) {
  auto* prompt = new QLabel;
  prompt->setObjectName("Label4");
  auto* type = new QLabel;
  type->setObjectName("Label3");
  auto* modem = new QRadioButton(CommTypeModel::kModemText);
  modem->setObjectName("chkModem");
  auto* direct = new QRadioButton(CommTypeModel::kCommText);
  direct->setObjectName("chkComm");
  auto* options = new QVBoxLayout;
  options->addWidget(modem);
  options->addWidget(direct);
  auto* row = new QHBoxLayout;
  row->addWidget(type, 0, Qt::AlignTop);
  row->addLayout(options, 1);
  Body()->addWidget(prompt);
  Body()->addSpacing(12);
  Body()->addLayout(row);
  Body()->addStretch();
  adapter_.Link(model_.Label4, prompt);
  adapter_.Link(model_.Label3, type);
  adapter_.Link(model_.optType, {modem, direct});
  model_.CloseWindow = [this] { accept(); };
  model_.Form_Load();
  Finish(adapter_, model_, model_.cmdNext);
}

frmCommType::~frmCommType() { model_.CloseWindow = nullptr; }

}  // namespace r6183::gui
