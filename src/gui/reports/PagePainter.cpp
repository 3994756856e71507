#include "gui/reports/PagePainter.h"

#include <QFile>
#include <QFont>
#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <stdexcept>

namespace r6183::gui {

namespace {

// Ships with the program's dependencies; a missing family falls back to the default sans.
constexpr const char* kFamily = "DejaVu Sans";

Qt::Alignment Aligned(Align a) {
  switch (a) {
    case Align::Center:
      return Qt::AlignHCenter | Qt::AlignVCenter;
    case Align::Right:
      return Qt::AlignRight | Qt::AlignVCenter;
    case Align::Left:
      break;
  }
  return Qt::AlignLeft | Qt::AlignVCenter;
}

QPageSize PageSizeOf(const ReportPage& page) {
  return QPageSize(QSizeF(page.width, page.height), QPageSize::Point, QString(), QPageSize::FuzzyMatch);
}

}  // namespace

void PaintPage(QPainter& p, const ReportPage& page, double dpi) {
  const double k = dpi / 72.0;
  auto rect = [k](const BoxPt& b) { return QRectF(b.x * k, b.y * k, b.w * k, b.h * k); };
  // a font's point size counts in the device's own dots per inch
  const double deviceDpi = p.device() ? p.device()->logicalDpiY() : dpi;
  p.save();
  p.setRenderHint(QPainter::Antialiasing, true);
  p.setRenderHint(QPainter::TextAntialiasing, true);
  for (const Shade& s : page.shades) p.fillRect(rect(s.box), QColor::fromRgbF(s.grey, s.grey, s.grey));
  for (const Rule& r : page.rules) {
    // never thinner than a dot: a hairline comes and goes on a screen
    p.setPen(QPen(Qt::black, std::max(1.0, r.width * k), Qt::SolidLine, Qt::FlatCap));
    p.drawLine(QLineF(r.x1 * k, r.y1 * k, r.x2 * k, r.y2 * k));
  }
  p.setPen(Qt::black);
  for (const TextRun& t : page.texts) {
    QFont font(kFamily);
    // ligatures would turn "Office" into a glyph that a reader of the PDF can't search
    font.setStyleStrategy(QFont::PreferNoShaping);
    font.setPointSizeF(t.size * dpi / deviceDpi);
    font.setBold(t.bold);
    font.setItalic(t.italic);
    p.setFont(font);
    const QRectF box = rect(t.box);
    const QFontMetricsF metrics(font, p.device());
    const QString text = metrics.elidedText(QString::fromStdString(t.text), Qt::ElideRight, box.width());
    p.drawText(box, static_cast<int>(Aligned(t.align)), text);
  }
  p.restore();
}

QImage PageImage(const ReportPage& page, double dpi) {
  QImage image(qRound(page.width * dpi / 72.0), qRound(page.height * dpi / 72.0), QImage::Format_RGB32);
  image.setDotsPerMeterX(qRound(dpi / 0.0254));
  image.setDotsPerMeterY(qRound(dpi / 0.0254));
  image.fill(Qt::white);
  QPainter p(&image);
  PaintPage(p, page, dpi);
  p.end();
  return image;
}

void WritePdfFile(const std::string& path, const std::vector<ReportPage>& pages, const std::string& title) {
  const QString file = QString::fromStdString(path);
  {
    // the writer tells nothing of why it fails; the file does
    QFile probe(file);
    if (!probe.open(QIODevice::WriteOnly)) throw std::runtime_error(probe.errorString().toStdString());
  }
  if (pages.empty()) throw std::runtime_error("there is no page to write");
  QPdfWriter writer(file);
  writer.setTitle(QString::fromStdString(title));
  writer.setPageMargins(QMarginsF(0, 0, 0, 0));
  writer.setPageSize(PageSizeOf(pages.front()));
  QPainter p;
  if (!p.begin(&writer)) throw std::runtime_error("the PDF file could not be started");
  const double dpi = writer.resolution();
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (i > 0) {
      writer.setPageSize(PageSizeOf(pages[i]));
      writer.newPage();
    }
    PaintPage(p, pages[i], dpi);
  }
  if (!p.end()) throw std::runtime_error("the PDF file could not be finished");
}

PaperSize LocalePaper() {
  return QLocale::system().measurementSystem() == QLocale::ImperialUSSystem ? kLetter : kA4;
}

PaperSize PaperOf(const QPageSize& size) {
  const QSizeF mm = size.size(QPageSize::Millimeter);
  return {mm.width(), mm.height()};
}

}  // namespace r6183::gui
