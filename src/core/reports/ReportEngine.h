#pragma once
// The report engine: a layout, the database it reads and the formulas the program hands in
// become pages. Every page carries the title and the heading at its top and a footer with
// the date of printing and its number; a table that does not fit goes on over the next
// pages with its caption, column headings and group repeated.
#include <map>
#include <string>
#include <vector>

#include "reports/ReportLayout.h"
#include "reports/ReportPage.h"
#include "shell/Clock.h"

namespace r6183 {

struct PaperSize {
  double widthMm = 210;
  double heightMm = 297;
};
inline constexpr PaperSize kA4{210, 297};
inline constexpr PaperSize kLetter{215.9, 279.4};

struct RenderOptions {
  PaperSize paper = kA4;  // as the printer or the locale has it; a landscape layout turns it
  double marginMm = 15;   // at least the printer's own margins
  LocalDateTime printedAt;
  std::string footer;     // the middle of the footer: the product's title
};

// The formula definitions "Name = 'text'" by name. A definition without its quotes takes
// the text after "=" as it stands.
std::map<std::string, std::string> ParseFormulas(const std::vector<std::string>& definitions);

// Lays out the report on the database at `dbPath` (opened read-only). Raises what the
// store raises when the file can't be read as a programming document.
std::vector<ReportPage> RenderReport(const ReportLayout& layout, const std::string& dbPath,
                                     const std::vector<std::string>& formulas, const RenderOptions& options);

// A template with its fields filled from `value` ("{name}" -> value("name")).
std::string FillTemplate(const std::string& tmpl, const std::function<std::string(const std::string&)>& value);

}  // namespace r6183
