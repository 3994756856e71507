#include "reports/ReportControl.h"

#include <algorithm>

#include "shell/Session.h"

namespace r6183 {

RenderOptions ReportControl::Options() const {
  RenderOptions o;
  o.paper = output_.Paper();
  o.marginMm = std::max(o.marginMm, output_.PrinterMarginMm());
  o.printedAt = s_.clock().Now();
  o.footer = s_.product.ProductTitle;
  return o;
}

std::vector<ReportPage> ReportControl::Pages() const {
  const ReportLayout layout = LoadLayout(ReportFileName, ShownName);
  return RenderReport(layout, DataFiles0, {Formulas0}, Options());
}

void ReportControl::SetAction(int action) {
  if (action != 1) return;
  status_ = 0;
  const ReportLayout layout = LoadLayout(ReportFileName, ShownName);
  const auto pages = RenderReport(layout, DataFiles0, {Formulas0}, Options());
  output_.Print(layout.title, pages);
  status_ = 1;
}

}  // namespace r6183
