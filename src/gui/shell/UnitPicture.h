#pragma once
// The product drawn by the program: the front panel of the control unit, for the
// splash window and the About window.
#include <QWidget>

namespace r6183::gui {

class UnitPicture : public QWidget {
 public:
  explicit UnitPicture(QString model, QWidget* parent = nullptr);
  QSize sizeHint() const override { return {360, 150}; }

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  QString model_;
};

}  // namespace r6183::gui
