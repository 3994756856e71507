#pragma once
// The splash window: the product, its title, legal notice, date and version, for a
// moment at start-up.
#include <QDialog>

namespace r6183 {
class Session;
}

class QTimer;

namespace r6183::gui {

class frmIntro : public QDialog {
  Q_OBJECT
 public:
  // `showMs`: how long it stays once shown.
  frmIntro(const Session& session, QWidget* parent, int showMs = 1800);

 protected:
  void showEvent(QShowEvent* e) override;

 private:
  QTimer* Timer1_;
};

}  // namespace r6183::gui
