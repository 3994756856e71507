#pragma once
// rptPrint, the report control of the print window: it is given a layout file, the
// database the report reads and the heading formula, and runs the report to the default
// printer. The pages themselves go out through a PageOutput: the desktop program's printer
// and PDF writer, r6183ctl's PDF writer, or a recorder in tests.
#include <string>
#include <vector>

#include "reports/ReportEngine.h"
#include "reports/ReportPage.h"

namespace r6183 {

class Session;

class PageOutput {
 public:
  virtual ~PageOutput() = default;
  // The name of the default printer; empty when the machine has none.
  virtual std::string DefaultPrinter() = 0;
  // The paper of the default printer, or the locale's (A4 or Letter) without one.
  virtual PaperSize Paper() = 0;
  // The widest of the printer's unprintable margins, in millimetres.
  virtual double PrinterMarginMm() { return 0; }
  // One job on the default printer, under `jobName`; raises with the reason when the
  // print service does not take it.
  virtual void Print(const std::string& jobName, const std::vector<ReportPage>& pages) = 0;
  // The pages into one PDF file; raises with the reason when it can't be written.
  virtual void WritePdf(const std::string& path, const std::vector<ReportPage>& pages) = 0;
};

class ReportControl {
 public:
  ReportControl(Session& session, PageOutput& output) : s_(session), output_(output) {}

  std::string ReportFileName;  // path of the layout
  std::string DataFiles0;      // the database the report reads
  std::string Formulas0;       // "Database = '...'"
  // How the layout file is named in a refusal (its path when empty).
  std::string ShownName;

  // 1 runs the report to the default printer: the job is handed to the print service
  // before this returns, and Status is then 1.
  void SetAction(int action);
  // 0 while no job has begun, above 0 from then on.
  int Status() const { return status_; }

  // The pages of the report as it stands; raises LayoutError for a damaged layout.
  std::vector<ReportPage> Pages() const;
  RenderOptions Options() const;
  PageOutput& Output() { return output_; }

 private:
  Session& s_;
  PageOutput& output_;
  int status_ = 0;
};

}  // namespace r6183
