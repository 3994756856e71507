#include "gui/connectivity/frmCommWarning.h"

#include <QLabel>
#include <QVBoxLayout>

#include "shell/Session.h"

namespace r6183::gui {

frmCommWarning::frmCommWarning(Session& session, QWidget* parent)
    : WizardPage(session, kCommWarningPage, CommWarningModel::kCaption,
                 session.state.WizardByModem == 1 ? WizardPicture::Subject::Modem : WizardPicture::Subject::Unit,
                 parent),
      model_(session) {
  auto* text = new QLabel;
  text->setObjectName("Label1");
  text->setWordWrap(true);
  Body()->addWidget(text);
  Body()->addStretch();
  adapter_.Link(model_.Label1, text);
  model_.CloseWindow = [this] { accept(); };
  model_.Form_Load();
  Finish(adapter_, model_, model_.cmdNext);
}

frmCommWarning::~frmCommWarning() { model_.CloseWindow = nullptr; }

}  // namespace r6183::gui
