#pragma once
// The remote modem's setup: a window beside the main window, not modal, that walks the
// operator through the steps of RemoteModel. It shows the switch chart and the port window
// modally, and the modem command list beside it.
#include <QDialog>

#include "connectivity/RemoteSetup.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

namespace r6183 {
class modModem;
}

namespace r6183::gui {

class frmRemote : public QDialog {
  Q_OBJECT
 public:
  // Loaded at once; the caller shows it. It deletes itself when it closes.
  frmRemote(Session& session, modModem& modem, QWidget* parent);
  ~frmRemote() override;
  RemoteModel& model() { return model_; }

 protected:
  void closeEvent(QCloseEvent* e) override;
  void reject() override;

 private:
  void FitWidth();
  void Unload();

  Session& session_;
  modModem& modem_;
  RemoteModel model_;
  FormLink form_;
  ControlAdapter adapter_;
};

}  // namespace r6183::gui
