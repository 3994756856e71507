#include "gui/shell/UnitPicture.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace r6183::gui {

UnitPicture::UnitPicture(QString model, QWidget* parent) : QWidget(parent), model_(std::move(model)) {
  setObjectName("imgProduct");
  setMinimumSize(300, 125);
}

void UnitPicture::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  const QRectF area = QRectF(rect()).adjusted(6, 6, -6, -6);
  const qreal unit = std::min(area.width() / 36.0, area.height() / 15.0);
  const QRectF box(area.center().x() - 18 * unit, area.center().y() - 7.5 * unit, 36 * unit, 15 * unit);

  // the cabinet: a 19-inch unit with its rack ears
  QLinearGradient metal(box.topLeft(), box.bottomLeft());
  metal.setColorAt(0, QColor(92, 99, 110));
  metal.setColorAt(1, QColor(48, 53, 61));
  p.setPen(QPen(QColor(30, 32, 36), unit * 0.15));
  p.setBrush(metal);
  p.drawRoundedRect(box, unit * 0.6, unit * 0.6);
  p.setBrush(QColor(70, 76, 86));
  for (qreal x : {box.left() + unit * 0.4, box.right() - unit * 1.6}) {
    const QRectF ear(x, box.top() + unit * 0.6, unit * 1.2, box.height() - unit * 1.2);
    p.drawRoundedRect(ear, unit * 0.3, unit * 0.3);
    p.setBrush(QColor(25, 27, 30));
    for (qreal y : {ear.top() + unit * 1.5, ear.bottom() - unit * 1.5})
      p.drawEllipse(QPointF(ear.center().x(), y), unit * 0.3, unit * 0.3);
    p.setBrush(QColor(70, 76, 86));
  }

  // the display with the time
  const QRectF display(box.left() + unit * 3, box.top() + unit * 2, unit * 11, unit * 4.2);
  p.setBrush(QColor(18, 40, 28));
  p.drawRoundedRect(display, unit * 0.3, unit * 0.3);
  QFont mono("DejaVu Sans Mono");
  mono.setPixelSize(std::max(6, int(unit * 1.9)));
  mono.setBold(true);
  p.setFont(mono);
  p.setPen(QColor(120, 255, 160));
  p.drawText(display, Qt::AlignCenter, "08:15:00");

  // the model plate
  QFont sans;
  sans.setPixelSize(std::max(6, int(unit * 1.5)));
  sans.setBold(true);
  p.setFont(sans);
  p.setPen(QColor(235, 235, 240));
  p.drawText(QRectF(box.left() + unit * 3, box.top() + unit * 7, unit * 11, unit * 2), Qt::AlignLeft | Qt::AlignVCenter,
             model_);

  // the station lamps: four boards of 24 stations
  for (int board = 0; board < 4; ++board) {
    for (int i = 0; i < 24; ++i) {
      const qreal x = box.left() + unit * (16 + (i % 12) * 1.45);
      const qreal y = box.top() + unit * (2.2 + board * 2.4 + (i / 12) * 1.0);
      const bool lit = (i * 7 + board * 5) % 11 == 0 || (board == 0 && i < 3);
      p.setPen(Qt::NoPen);
      p.setBrush(lit ? QColor(255, 176, 32) : QColor(30, 34, 38));
      p.drawEllipse(QPointF(x, y), unit * 0.32, unit * 0.32);
    }
  }

  // the loudspeaker grille and the serial port
  p.setPen(QPen(QColor(28, 30, 34), unit * 0.25));
  for (int i = 0; i < 5; ++i) {
    const qreal y = box.top() + unit * (10 + i * 0.8);
    p.drawLine(QPointF(box.left() + unit * 3, y), QPointF(box.left() + unit * 9, y));
  }
  p.setPen(QPen(QColor(20, 20, 24), unit * 0.15));
  p.setBrush(QColor(180, 184, 190));
  QPainterPath port;
  const QRectF db9(box.left() + unit * 10.5, box.top() + unit * 10.3, unit * 3.5, unit * 1.6);
  port.moveTo(db9.topLeft());
  port.lineTo(db9.topRight());
  port.lineTo(db9.right() - unit * 0.4, db9.bottom());
  port.lineTo(db9.left() + unit * 0.4, db9.bottom());
  port.closeSubpath();
  p.drawPath(port);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(60, 220, 90));
  p.drawEllipse(QPointF(box.right() - unit * 3.2, box.bottom() - unit * 2), unit * 0.45, unit * 0.45);
}

}  // namespace r6183::gui
