#include "gui/shell/frmIntro.h"

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

#include "gui/shell/UnitPicture.h"
#include "shell/ProductIdentity.h"
#include "shell/Session.h"

namespace r6183::gui {

namespace {
QLabel* Line(QWidget* parent, const char* name, const std::string& text, int pointDelta, bool bold) {
  auto* l = new QLabel(QString::fromStdString(text), parent);
  l->setObjectName(name);
  l->setAlignment(Qt::AlignCenter);
  QFont f = l->font();
  f.setPointSize(f.pointSize() + pointDelta);
  f.setBold(bold);
  l->setFont(f);
  return l;
}
}  // namespace

frmIntro::frmIntro(const Session& session, QWidget* parent, int showMs)
    : QDialog(parent, Qt::SplashScreen | Qt::FramelessWindowHint) {
  setObjectName("frmIntro");
  const ProductIdentity& p = session.product;
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(24, 18, 24, 18);
  if (p.ProductCode == kProductIndex) {
    layout->addWidget(new UnitPicture(QString::fromStdString(p.ProductModel), this));
    layout->addWidget(Line(this, "lblModel", p.ProductModel, 10, true));
    layout->addWidget(Line(this, "lblTitle", p.ProductTitle, 3, true));
    layout->addWidget(Line(this, "lblVersion", p.ProductVersionText, 0, false));
    layout->addWidget(Line(this, "lblDate", p.ProductDate, 0, false));
    layout->addWidget(Line(this, "lblLegal", p.LegalNotice, -1, false));
  } else {
    layout->addWidget(Line(this, "lblUnknown", "The project name was not recognized by the system.", 2, true));
  }
  setStyleSheet("QDialog#frmIntro { background: #f4f5f7; border: 1px solid #5a6270; }");
  Timer1_ = new QTimer(this);
  Timer1_->setObjectName("Timer1");
  Timer1_->setSingleShot(true);
  Timer1_->setInterval(showMs);
  connect(Timer1_, &QTimer::timeout, this, &QDialog::accept);
}

void frmIntro::showEvent(QShowEvent* e) {
  QDialog::showEvent(e);
  Timer1_->start();
}

}  // namespace r6183::gui
