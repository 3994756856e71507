#pragma once
// What the three pages of the communications wizard share: the picture at the left, the
// page's own controls beside it, and the frame of buttons below (< Previous, Next >,
// Finish, Cancel). Escape and the window's close box are the page's Cancel. Each page owns
// its model and, after it, the adapter of its controls.
#include <QDialog>

#include "connectivity/CommWizard.h"
#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"

class QVBoxLayout;

namespace r6183::gui {

// The picture of a page: the computer and what it is to find.
class WizardPicture : public QWidget {
 public:
  enum class Subject { Choice, Unit, Modem, Ports };
  WizardPicture(Subject subject, QString model, QWidget* parent = nullptr);
  QSize sizeHint() const override { return {150, 230}; }

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  Subject subject_;
  QString model_;
};

class WizardPage : public QDialog {
  Q_OBJECT
 public:
  // `name` is the window's control name.
  WizardPage(Session& session, const char* name, const char* caption, WizardPicture::Subject picture,
             QWidget* parent);
  ~WizardPage() override;

 protected:
  void reject() override;
  // Where the page puts its own controls.
  QVBoxLayout* Body() const { return body_; }
  // Once the page's controls are in: the frame of buttons (`defaultButton` is the one Enter
  // presses), the size, the place.
  void Finish(ControlAdapter& adapter, WizardButtons& buttons, Control& defaultButton);

  FormLink form_;

 private:
  WizardButtons* buttons_ = nullptr;
  QVBoxLayout* column_ = nullptr;
  QVBoxLayout* body_ = nullptr;
};

}  // namespace r6183::gui
