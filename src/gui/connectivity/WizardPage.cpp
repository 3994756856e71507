#include "gui/connectivity/WizardPage.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

#include "gui/editors/GroupBoxes.h"
#include "gui/shell/Centre.h"
#include "shell/Session.h"

namespace r6183::gui {

namespace {

// The computer: a monitor on its stand, in the unit square `u` from `top`.
void DrawComputer(QPainter& p, QPointF top, qreal u) {
  p.setPen(QPen(QColor(40, 44, 52), u * 0.12));
  p.setBrush(QColor(214, 218, 224));
  p.drawRoundedRect(QRectF(top.x(), top.y(), 9 * u, 7 * u), u * 0.4, u * 0.4);
  QLinearGradient screen(top, top + QPointF(0, 6 * u));
  screen.setColorAt(0, QColor(40, 90, 160));
  screen.setColorAt(1, QColor(20, 40, 90));
  p.setBrush(screen);
  p.drawRect(QRectF(top.x() + 0.7 * u, top.y() + 0.7 * u, 7.6 * u, 5.2 * u));
  p.setBrush(QColor(190, 194, 200));
  p.drawRect(QRectF(top.x() + 3.5 * u, top.y() + 7 * u, 2 * u, 1.2 * u));
  p.drawRoundedRect(QRectF(top.x() + 1.5 * u, top.y() + 8.2 * u, 6 * u, 0.8 * u), u * 0.2, u * 0.2);
}

// The unit: a dark cabinet with its display and lamps.
void DrawUnit(QPainter& p, QRectF box, qreal u) {
  p.setPen(QPen(QColor(30, 32, 36), u * 0.12));
  p.setBrush(QColor(70, 76, 86));
  p.drawRoundedRect(box, u * 0.4, u * 0.4);
  p.setBrush(QColor(18, 40, 28));
  p.drawRect(QRectF(box.left() + u * 0.6, box.top() + u * 0.6, box.width() * 0.4, box.height() * 0.35));
  p.setPen(Qt::NoPen);
  for (int i = 0; i < 12; ++i) {
    p.setBrush(i % 5 == 0 ? QColor(255, 176, 32) : QColor(30, 34, 38));
    p.drawEllipse(QPointF(box.left() + box.width() * 0.55 + (i % 6) * u * 0.7, box.top() + u * (1 + (i / 6) * 0.9)),
                  u * 0.25, u * 0.25);
  }
}

// A desktop modem: a flat case with its row of lights.
void DrawModem(QPainter& p, QRectF box, qreal u) {
  p.setPen(QPen(QColor(30, 32, 36), u * 0.12));
  p.setBrush(QColor(200, 196, 184));
  p.drawRoundedRect(box, u * 0.8, u * 0.8);
  p.setPen(Qt::NoPen);
  for (int i = 0; i < 6; ++i) {
    p.setBrush(i < 3 ? QColor(60, 220, 90) : QColor(120, 60, 60));
    p.drawEllipse(QPointF(box.left() + u * (1 + i * 0.9), box.bottom() - u * 0.8), u * 0.25, u * 0.25);
  }
}

void DrawCable(QPainter& p, QPointF from, QPointF to, qreal u) {
  p.setPen(QPen(QColor(30, 30, 30), u * 0.35, Qt::SolidLine, Qt::RoundCap));
  p.setBrush(Qt::NoBrush);
  QPainterPath path(from);
  path.cubicTo(from + QPointF(0, 3 * u), to - QPointF(0, 3 * u), to);
  p.drawPath(path);
}

}  // namespace

WizardPicture::WizardPicture(Subject subject, QString model, QWidget* parent)
    : QWidget(parent), subject_(subject), model_(std::move(model)) {
  setObjectName("imgWizard");
  setFixedSize(sizeHint());
}

void WizardPicture::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  QLinearGradient sky(0, 0, 0, height());
  sky.setColorAt(0, QColor(0, 96, 128));
  sky.setColorAt(1, QColor(0, 40, 64));
  p.fillRect(rect(), sky);
  const qreal u = width() / 13.0;
  const QPointF pc(2 * u, 1.2 * u);
  DrawComputer(p, pc, u);
  const QPointF port = pc + QPointF(4.5 * u, 9 * u);
  const QRectF below(1.5 * u, 14 * u, 10 * u, 3 * u);
  QFont f;
  f.setPixelSize(int(u * 0.9));
  f.setBold(true);
  p.setFont(f);
  switch (subject_) {
    case Subject::Choice: {
      // the unit by its cable, or a modem and the telephone line
      const QRectF unit(0.8 * u, 13.2 * u, 5.4 * u, 2.6 * u), modem(6.8 * u, 13.6 * u, 5.4 * u, 1.8 * u);
      DrawCable(p, port, unit.center() - QPointF(0, 1.3 * u), u);
      DrawCable(p, port, modem.center() - QPointF(0, 0.9 * u), u);
      DrawUnit(p, unit, u);
      DrawModem(p, modem, u);
      break;
    }
    case Subject::Unit:
      DrawCable(p, port, below.center() - QPointF(0, 1.5 * u), u);
      DrawUnit(p, below, u);
      p.setPen(Qt::white);
      p.drawText(QRectF(0, below.bottom() + 0.2 * u, width(), 1.4 * u), Qt::AlignCenter, model_);
      break;
    case Subject::Modem:
      DrawCable(p, port, below.center() - QPointF(0, 1.2 * u), u);
      DrawModem(p, below.adjusted(u, 0.6 * u, -u, -0.6 * u), u);
      break;
    case Subject::Ports: {
      // the sixteen ports, looked at one by one
      p.setPen(QPen(QColor(20, 20, 24), u * 0.08));
      for (int i = 0; i < 16; ++i) {
        const QRectF jack(u * (1.2 + (i % 8) * 1.35), u * (12 + (i / 8) * 2.2), u * 1.05, u * 1.6);
        p.setBrush(QColor(180, 184, 190));
        p.drawRoundedRect(jack, u * 0.15, u * 0.15);
      }
      p.setPen(QPen(QColor(240, 240, 240), u * 0.4));
      p.setBrush(QColor(255, 255, 255, 60));
      p.drawEllipse(QPointF(9.2 * u, 13 * u), 1.6 * u, 1.6 * u);
      p.drawLine(QPointF(10.4 * u, 14.2 * u), QPointF(12 * u, 15.8 * u));
      break;
    }
  }
}

WizardPage::WizardPage(Session& session, const char* name, const char* caption, WizardPicture::Subject picture,
                       QWidget* parent)
    : QDialog(parent), form_(session, *this, name) {
  setObjectName(name);
  setWindowTitle(caption);
  setModal(true);
  auto* pictureWidget = new WizardPicture(picture, QString::fromStdString(session.product.ProductModel));
  body_ = new QVBoxLayout;
  auto* top = new QHBoxLayout;
  top->addWidget(pictureWidget, 0, Qt::AlignTop);
  top->addSpacing(8);
  top->addLayout(body_, 1);
  column_ = new QVBoxLayout(this);
  column_->addLayout(top, 1);
  form_.FollowVisibility();
}

WizardPage::~WizardPage() = default;

void WizardPage::Finish(ControlAdapter& adapter, WizardButtons& buttons, Control& defaultButton) {
  buttons_ = &buttons;
  auto* rule = new QFrame;
  rule->setFrameShape(QFrame::HLine);
  rule->setFrameShadow(QFrame::Sunken);
  column_->addWidget(rule);
  column_->addLayout(ButtonRow(adapter, {&buttons.cmdPrev, &buttons.cmdNext, &buttons.cmdFinish, &buttons.cmdCancel}));
  for (auto* b : findChildren<QPushButton*>())
    b->setDefault(b->objectName() == QString::fromStdString(defaultButton.Name()));
  setMinimumWidth(480);
  adjustSize();
  CentreWindow(*this);
}

void WizardPage::reject() {
  if (buttons_ && buttons_->cmdCancel.Enabled()) buttons_->cmdCancel.Press();
}

}  // namespace r6183::gui
