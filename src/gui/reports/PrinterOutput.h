#pragma once
// Pages to the default printer of the print service (QPrinter) and into PDF files.
#include "reports/ReportControl.h"

namespace r6183::gui {

class PrinterOutput : public PageOutput {
 public:
  std::string DefaultPrinter() override;
  PaperSize Paper() override;
  double PrinterMarginMm() override;
  void Print(const std::string& jobName, const std::vector<ReportPage>& pages) override;
  void WritePdf(const std::string& path, const std::vector<ReportPage>& pages) override;
};

}  // namespace r6183::gui
