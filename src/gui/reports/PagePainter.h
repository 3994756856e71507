#pragma once
// Paints the pages of the report engine with QPainter: on a printer, into a PDF and into
// the pictures of the preview. Needs QtGui only, so that r6183ctl can write PDF files
// without the desktop program's windows.
#include <QImage>
#include <QPageSize>

#include <string>
#include <vector>

#include "reports/ReportEngine.h"
#include "reports/ReportPage.h"

class QPaintDevice;
class QPainter;

namespace r6183::gui {

// Paints `page` with its paper's top-left corner at the painter's origin, on a device of
// `dpi` dots per inch.
void PaintPage(QPainter& painter, const ReportPage& page, double dpi);

// The page as a picture of `dpi` dots per inch, on white.
QImage PageImage(const ReportPage& page, double dpi);

// Writes the pages into one PDF file (each page on its own paper size); raises
// std::runtime_error with the reason when the file can't be written.
void WritePdfFile(const std::string& path, const std::vector<ReportPage>& pages, const std::string& title);

// The paper of the locale: Letter where the measurement system is American, A4 elsewhere.
PaperSize LocalePaper();
PaperSize PaperOf(const QPageSize& size);

}  // namespace r6183::gui
