#pragma once
// A report layout: the declarative file in reports/ that says what a report prints (its
// title, the heading made of the formula the program hands in, and blocks of text and
// tables drawn from the record sources of the document). The format is told in
// docs/REPORTS.md. A file that does not follow it is refused with the line and the reason.
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "reports/ReportPage.h"

namespace r6183 {

enum class CellFormat { Text, Mark, YesNo, List };

struct LayoutColumn {
  std::string caption;
  std::string field;
  double widthMm = 20;
  Align align = Align::Left;
  CellFormat format = CellFormat::Text;
  std::vector<std::string> list;  // the texts of List, by value from 0
  std::string span;               // the caption over a run of mark columns
  int pageGroup = 0;              // a mark column of page group n (Marks=... Installed)
};

struct LayoutBlock {
  enum class Kind { Table, Text };
  Kind kind = Kind::Table;
  int line = 0;                   // where the block starts in its file
  std::string caption;
  std::string source;
  std::vector<std::string> only;  // fields a row must have true (not empty, not 0)
  std::string order;              // field to sort by, empty: the source's order
  std::string group;              // template of the group header, empty: no groups
  std::vector<LayoutColumn> columns;
  std::vector<std::string> text;  // Text blocks: template lines, once per row
  std::string empty;              // printed when no row is left
};

struct ReportLayout {
  std::string file;  // as named to the parser
  int format = 0;
  std::string title;
  std::string heading;  // template of the line under the title; its fields are formulas
  bool landscape = false;
  std::vector<LayoutBlock> blocks;
};

// A layout that cannot be used: the file, the line (0 for the whole file) and the reason.
class LayoutError : public std::runtime_error {
 public:
  LayoutError(const std::string& file, int line, const std::string& reason);
  const std::string& file() const { return file_; }
  int line() const { return line_; }
  const std::string& reason() const { return reason_; }

 private:
  std::string file_;
  int line_;
  std::string reason_;
};

// Reads the text of a layout; `file` names it in errors. Raises LayoutError.
ReportLayout ParseLayout(std::string_view text, const std::string& file);
// Reads the layout file at `path`; `shown` is how errors name it (the path when empty).
ReportLayout LoadLayout(const std::string& path, const std::string& shown = {});

// The names between braces in a template ("Schedule {Schedule}: {days}"); raises
// std::invalid_argument for an unclosed or empty brace.
std::vector<std::string> TemplateFields(std::string_view tmpl);

}  // namespace r6183
