#include "gui/reports/PrinterOutput.h"

#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>
#include <stdexcept>

#include "gui/reports/PagePainter.h"

namespace r6183::gui {

namespace {

std::string TitleOf(const std::vector<ReportPage>& pages) {
  return pages.empty() || pages.front().texts.empty() ? std::string() : pages.front().texts.front().text;
}

// The paper of a page, turned when the page is wider than high.
QPageLayout LayoutOf(const ReportPage& page) {
  const bool landscape = page.width > page.height;
  const QSizeF portrait = landscape ? QSizeF(page.height, page.width) : QSizeF(page.width, page.height);
  return QPageLayout(QPageSize(portrait, QPageSize::Point, QString(), QPageSize::FuzzyMatch),
                     landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(0, 0, 0, 0));
}

}  // namespace

std::string PrinterOutput::DefaultPrinter() { return QPrinterInfo::defaultPrinterName().toStdString(); }

PaperSize PrinterOutput::Paper() {
  const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
  if (printer.isNull()) return LocalePaper();
  const QPageSize size = printer.defaultPageSize();
  return size.isValid() ? PaperOf(size) : LocalePaper();
}

double PrinterOutput::PrinterMarginMm() {
  const QPrinterInfo info = QPrinterInfo::defaultPrinter();
  if (info.isNull()) return 0;
  QPrinter printer(info, QPrinter::HighResolution);
  QPageLayout layout = printer.pageLayout();
  layout.setUnits(QPageLayout::Millimeter);
  const QMarginsF m = layout.minimumMargins();
  return std::max({m.left(), m.top(), m.right(), m.bottom()});
}

void PrinterOutput::Print(const std::string& jobName, const std::vector<ReportPage>& pages) {
  if (pages.empty()) return;
  const QPrinterInfo info = QPrinterInfo::defaultPrinter();
  if (info.isNull()) throw std::runtime_error("there is no printer set up on this computer");
  QPrinter printer(info, QPrinter::HighResolution);
  printer.setDocName(QString::fromStdString(jobName));
  printer.setFullPage(true);
  printer.setPageLayout(LayoutOf(pages.front()));
  QPainter p;
  if (!p.begin(&printer))
    throw std::runtime_error("the printer " + info.printerName().toStdString() + " did not take the job");
  const double dpi = printer.resolution();
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (i > 0) {
      printer.setPageLayout(LayoutOf(pages[i]));
      printer.newPage();
    }
    PaintPage(p, pages[i], dpi);
  }
  if (!p.end() || printer.printerState() == QPrinter::Error)
    throw std::runtime_error("the printer " + info.printerName().toStdString() + " did not take the job");
}

void PrinterOutput::WritePdf(const std::string& path, const std::vector<ReportPage>& pages) {
  WritePdfFile(path, pages, TitleOf(pages));
}

}  // namespace r6183::gui
