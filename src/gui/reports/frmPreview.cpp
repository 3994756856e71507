#include "gui/reports/frmPreview.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "gui/reports/PagePainter.h"
#include "gui/shell/Centre.h"

namespace r6183::gui {

namespace {
constexpr double kScreenDpi = 96;

QPushButton* Button(const char* name, const QString& caption) {
  auto* b = new QPushButton(caption);
  b->setObjectName(name);
  b->setAutoDefault(false);
  return b;
}
}  // namespace

frmPreview::frmPreview(const std::vector<ReportPage>& pages, QWidget* parent) : QDialog(parent), pages_(pages) {
  setObjectName("frmPreview");
  setWindowTitle("Print Preview");
  setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
  auto* column = new QWidget;
  column->setObjectName("fraPages");
  auto* stack = new QVBoxLayout(column);
  stack->setSpacing(12);
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    auto* label = new QLabel;
    label->setObjectName(QString("lblPage_%1").arg(i));
    label->setFrameShape(QFrame::Box);
    labels_.push_back(label);
    stack->addWidget(label, 0, Qt::AlignHCenter);
  }
  auto* scroll = new QScrollArea;
  scroll->setObjectName("scrPages");
  scroll->setBackgroundRole(QPalette::Dark);
  scroll->setWidget(column);
  scroll->setWidgetResizable(true);

  count_ = new QLabel(QString::number(pages_.size()) + (pages_.size() == 1 ? " page" : " pages"));
  count_->setObjectName("lblPages");
  auto* zoomIn = Button("cmdZoomIn", "Zoom &In");
  auto* zoomOut = Button("cmdZoomOut", "Zoom &Out");
  auto* close = Button("cmdClose", "&Close");
  close->setDefault(true);
  connect(zoomIn, &QPushButton::clicked, this, [this] { Zoom(1.25); });
  connect(zoomOut, &QPushButton::clicked, this, [this] { Zoom(0.8); });
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(count_);
  buttons->addStretch();
  buttons->addWidget(zoomOut);
  buttons->addWidget(zoomIn);
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(scroll, 1);
  layout->addLayout(buttons);

  Paint();
  const QRect area = ScreenArea(*this);
  const int width = labels_.empty() ? 600 : labels_.front()->sizeHint().width() + 100;  // margins and the scroll bar
  resize(std::min(width, area.width()), area.height() * 9 / 10);
  CentreWindow(*this, parent ? parent->window() : nullptr);
}

void frmPreview::Zoom(double factor) {
  zoom_ = std::clamp(zoom_ * factor, 0.4, 3.0);
  Paint();
}

void frmPreview::Paint() {
  const double ratio = devicePixelRatioF();
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    QImage image = PageImage(pages_[i], kScreenDpi * zoom_ * ratio);
    image.setDevicePixelRatio(ratio);
    labels_[i]->setPixmap(QPixmap::fromImage(image));
  }
}

}  // namespace r6183::gui
