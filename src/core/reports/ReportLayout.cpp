#include "reports/ReportLayout.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "reports/ReportSources.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

constexpr double kMaxWidthMm = 400;

std::vector<std::string> Split(std::string_view s, char sep) {
  std::vector<std::string> out;
  std::size_t from = 0;
  for (;;) {
    const std::size_t at = s.find(sep, from);
    out.push_back(Trim(s.substr(from, at == std::string_view::npos ? std::string_view::npos : at - from)));
    if (at == std::string_view::npos) return out;
    from = at + 1;
  }
}

std::string Quoted(std::string_view s) { return "\"" + std::string(s) + "\""; }

// A field a line refers to, checked once the block's source is known.
struct FieldUse {
  int line;
  std::string field;
};

class Parser {
 public:
  Parser(std::string_view text, std::string file) : text_(text), file_(std::move(file)) {}

  ReportLayout Run() {
    if (text_.find('\0') != std::string_view::npos) Fail(0, "this is not a report layout (it holds binary data)");
    if (text_.substr(0, 3) == "\xEF\xBB\xBF") text_.remove_prefix(3);
    layout_.file = file_;
    layout_.heading = "Database: {Database}";
    std::istringstream in{std::string(text_)};
    std::string raw;
    int lineNo = 0;
    while (std::getline(in, raw)) {
      ++lineNo;
      if (!raw.empty() && raw.back() == '\r') raw.pop_back();
      const std::string line = Trim(raw);
      if (line.empty() || line[0] == '#' || line[0] == ';') continue;
      if (line.front() == '[') {
        Section(lineNo, line);
        continue;
      }
      const std::size_t eq = line.find('=');
      if (eq == std::string::npos) Fail(lineNo, "a line must be [Section] or Key=Value, not " + Quoted(line));
      Entry(lineNo, Trim(line.substr(0, eq)), Trim(line.substr(eq + 1)));
    }
    EndBlock();
    if (!sawReport_) Fail(0, "the [Report] section is missing");
    if (layout_.format != 1) Fail(formatLine_, "Format=1 is the only format this program reads");
    if (layout_.title.empty()) Fail(0, "the report has no Title");
    if (layout_.blocks.empty()) Fail(0, "the report has no [Table] or [Text] section");
    CheckTemplate(headingLine_, layout_.heading, nullptr);
    return std::move(layout_);
  }

 private:
  [[noreturn]] void Fail(int line, const std::string& reason) const { throw LayoutError(file_, line, reason); }

  void Section(int line, const std::string& text) {
    if (text.back() != ']') Fail(line, "a section name must end with ], not " + Quoted(text));
    const std::string name = Trim(std::string_view(text).substr(1, text.size() - 2));
    EndBlock();
    if (EqualsNoCase(name, "Report")) {
      if (sawReport_) Fail(line, "a layout has one [Report] section");
      sawReport_ = true;
      section_ = "Report";
      return;
    }
    if (!sawReport_) Fail(line, "the layout must begin with its [Report] section");
    if (!EqualsNoCase(name, "Table") && !EqualsNoCase(name, "Text"))
      Fail(line, "unknown section " + Quoted(text) + "; a layout has [Report], [Table] and [Text]");
    section_ = EqualsNoCase(name, "Table") ? "Table" : "Text";
    block_ = LayoutBlock{};
    block_.kind = section_ == "Table" ? LayoutBlock::Kind::Table : LayoutBlock::Kind::Text;
    block_.line = line;
    inBlock_ = true;
    uses_.clear();
    templates_.clear();
  }

  void Entry(int line, const std::string& key, const std::string& value) {
    if (section_.empty()) Fail(line, "the layout must begin with its [Report] section");
    auto is = [&](const char* k) { return EqualsNoCase(key, k); };
    if (section_ == "Report") {
      if (is("Format")) {
        char* end = nullptr;
        errno = 0;
        const long v = std::strtol(value.c_str(), &end, 10);
        if (value.empty() || *end || errno) Fail(line, "Format must be a number, not " + Quoted(value));
        layout_.format = static_cast<int>(v);
        formatLine_ = line;
      } else if (is("Title")) {
        layout_.title = value;
      } else if (is("Heading")) {
        layout_.heading = value;
        headingLine_ = line;
      } else if (is("Orientation")) {
        if (EqualsNoCase(value, "Portrait")) layout_.landscape = false;
        else if (EqualsNoCase(value, "Landscape")) layout_.landscape = true;
        else Fail(line, "Orientation is Portrait or Landscape, not " + Quoted(value));
      } else {
        Fail(line, "unknown key " + Quoted(key) + " in [Report]; it takes Format, Title, Heading, Orientation");
      }
      return;
    }
    const bool table = section_ == "Table";
    if (is("Caption")) {
      block_.caption = value;
    } else if (is("Source")) {
      block_.source = value;
      sourceLine_ = line;
    } else if (is("Only")) {
      for (const std::string& f : Split(value, ',')) {
        if (f.empty()) Fail(line, "Only names the fields a row must have ticked, as Only=installed");
        block_.only.push_back(f);
        uses_.push_back({line, f});
      }
    } else if (table && is("Order")) {
      block_.order = value;
      uses_.push_back({line, value});
    } else if (table && is("Group")) {
      block_.group = value;
      templates_.push_back({line, value});
    } else if (table && is("Column")) {
      Column(line, value);
    } else if (table && is("Marks")) {
      Marks(line, value);
    } else if (table && is("Empty")) {
      block_.empty = value;
    } else if (!table && is("Text")) {
      block_.text.push_back(value);
      templates_.push_back({line, value});
    } else {
      Fail(line, "unknown key " + Quoted(key) + " in [" + section_ + "]; it takes " +
                     (table ? "Caption, Source, Only, Order, Group, Column, Marks, Empty" : "Caption, Source, Only, Text"));
    }
  }

  double Width(int line, const std::string& text) const {
    char* end = nullptr;
    errno = 0;
    const double w = std::strtod(text.c_str(), &end);
    if (text.empty() || *end || errno || !(w > 0) || w > kMaxWidthMm)
      Fail(line, "a width is millimetres from 1 to 400, not " + Quoted(text));
    return w;
  }

  void Column(int line, const std::string& value) {
    const auto parts = Split(value, '|');
    if (parts.size() < 3 || parts.size() > 5)
      Fail(line, "a column is Caption | field | width [| Left, Center or Right [| format]], not " + Quoted(value));
    LayoutColumn c;
    c.caption = parts[0];
    c.field = parts[1];
    c.widthMm = Width(line, parts[2]);
    if (parts.size() > 3 && !parts[3].empty()) {
      if (EqualsNoCase(parts[3], "Left")) c.align = Align::Left;
      else if (EqualsNoCase(parts[3], "Center") || EqualsNoCase(parts[3], "Centre")) c.align = Align::Center;
      else if (EqualsNoCase(parts[3], "Right")) c.align = Align::Right;
      else Fail(line, "a column is aligned Left, Center or Right, not " + Quoted(parts[3]));
    }
    if (parts.size() > 4 && !parts[4].empty()) {
      const std::string& f = parts[4];
      if (EqualsNoCase(f, "Text")) c.format = CellFormat::Text;
      else if (EqualsNoCase(f, "Mark")) c.format = CellFormat::Mark;
      else if (EqualsNoCase(f, "YesNo")) c.format = CellFormat::YesNo;
      else if (f.size() > 5 && EqualsNoCase(f.substr(0, 5), "List:")) {
        c.format = CellFormat::List;
        c.list = Split(std::string_view(f).substr(5), ';');
      } else {
        Fail(line, "a column's format is Text, Mark, YesNo or List:first;second;..., not " + Quoted(f));
      }
    }
    if (c.field.empty()) Fail(line, "the column " + Quoted(c.caption) + " names no field");
    uses_.push_back({line, c.field});
    block_.columns.push_back(std::move(c));
  }

  void Marks(int line, const std::string& value) {
    const auto parts = Split(value, '|');
    if (parts.size() < 4 || parts.size() > 5)
      Fail(line, "marks are Caption | field prefix | first-last | width [| Installed], not " + Quoted(value));
    const std::string& range = parts[2];
    const std::size_t dash = range.find('-');
    int first = 0, last = 0;
    if (dash != std::string::npos) {
      char* e1 = nullptr;
      char* e2 = nullptr;
      const std::string a = Trim(range.substr(0, dash)), b = Trim(range.substr(dash + 1));
      first = static_cast<int>(std::strtol(a.c_str(), &e1, 10));
      last = static_cast<int>(std::strtol(b.c_str(), &e2, 10));
      if (a.empty() || b.empty() || *e1 || *e2) first = last = 0;
    }
    if (first < 1 || last < first || last > 99) Fail(line, "the marks run from a first to a last number, as 1-16, not " + Quoted(range));
    const double w = Width(line, parts[3]);
    bool installed = false;
    if (parts.size() == 5) {
      if (!EqualsNoCase(parts[4], "Installed")) Fail(line, "the last part of Marks can only be Installed, not " + Quoted(parts[4]));
      installed = true;
    }
    for (int n = first; n <= last; ++n) {
      LayoutColumn c;
      c.caption = std::to_string(n);
      c.field = parts[1] + std::to_string(n);
      c.widthMm = w;
      c.align = Align::Center;
      c.format = CellFormat::Mark;
      c.span = parts[0];
      c.pageGroup = installed ? n : 0;
      uses_.push_back({line, c.field});
      block_.columns.push_back(std::move(c));
    }
  }

  void CheckTemplate(int line, const std::string& tmpl, const SourceInfo* source) const {
    std::vector<std::string> names;
    try {
      names = TemplateFields(tmpl);
    } catch (const std::invalid_argument& e) {
      Fail(line, e.what() + std::string(" in ") + Quoted(tmpl));
    }
    if (!source) return;
    for (const std::string& n : names)
      if (!HasField(*source, n)) Fail(line, "the source " + source->name + " has no field " + Quoted(n));
  }

  void EndBlock() {
    if (!inBlock_) return;
    inBlock_ = false;
    if (block_.source.empty()) Fail(block_.line, "the [" + section_ + "] section names no Source");
    const SourceInfo* source = FindSource(block_.source);
    if (!source) {
      std::string known;
      for (const SourceInfo& s : ReportSources()) known += (known.empty() ? "" : ", ") + s.name;
      Fail(sourceLine_, "unknown source " + Quoted(block_.source) + "; the sources are " + known);
    }
    block_.source = source->name;
    for (const FieldUse& u : uses_)
      if (!HasField(*source, u.field)) Fail(u.line, "the source " + source->name + " has no field " + Quoted(u.field));
    for (const FieldUse& t : templates_) CheckTemplate(t.line, t.field, source);
    if (block_.kind == LayoutBlock::Kind::Table && block_.columns.empty())
      Fail(block_.line, "the [Table] section has no Column");
    if (block_.kind == LayoutBlock::Kind::Text && block_.text.empty())
      Fail(block_.line, "the [Text] section has no Text");
    layout_.blocks.push_back(std::move(block_));
  }

  std::string_view text_;
  std::string file_;
  ReportLayout layout_;
  std::string section_;
  bool sawReport_ = false;
  bool inBlock_ = false;
  int formatLine_ = 0;
  int headingLine_ = 0;
  int sourceLine_ = 0;
  LayoutBlock block_;
  std::vector<FieldUse> uses_;
  std::vector<FieldUse> templates_;
};

}  // namespace

LayoutError::LayoutError(const std::string& file, int line, const std::string& reason)
    : std::runtime_error(file + (line > 0 ? ", line " + std::to_string(line) : std::string()) + ": " + reason),
      file_(file),
      line_(line),
      reason_(reason) {}

std::vector<std::string> TemplateFields(std::string_view tmpl) {
  std::vector<std::string> out;
  for (std::size_t i = 0; i < tmpl.size(); ++i) {
    if (tmpl[i] == '}') throw std::invalid_argument("a } without its {");
    if (tmpl[i] != '{') continue;
    const std::size_t close = tmpl.find('}', i);
    const std::size_t nested = tmpl.find('{', i + 1);
    if (close == std::string_view::npos || (nested != std::string_view::npos && nested < close))
      throw std::invalid_argument("a { without its }");
    const std::string name = Trim(tmpl.substr(i + 1, close - i - 1));
    if (name.empty()) throw std::invalid_argument("{} names no field");
    out.push_back(name);
    i = close;
  }
  return out;
}

ReportLayout ParseLayout(std::string_view text, const std::string& file) { return Parser(text, file).Run(); }

ReportLayout LoadLayout(const std::string& path, const std::string& shown) {
  const std::string name = shown.empty() ? path : shown;
  std::ifstream in(path, std::ios::binary);
  if (!in) throw LayoutError(name, 0, "the file cannot be read");
  std::ostringstream bytes;
  bytes << in.rdbuf();
  if (in.bad()) throw LayoutError(name, 0, "the file cannot be read");
  const std::string text = bytes.str();
  if (text.size() > 1 << 20) throw LayoutError(name, 0, "this is not a report layout (it is larger than a megabyte)");
  return ParseLayout(text, name);
}

}  // namespace r6183
