#include "reports/ReportEngine.h"

#include <algorithm>
#include <cstdlib>
#include <functional>

#include "database/Database.h"
#include "reports/ReportSources.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

// Sizes of the page in points.
constexpr double kTitleSize = 16, kTitleHeight = 24;
constexpr double kHeadingSize = 9, kHeadingHeight = 14;
constexpr double kCaptionSize = 11, kCaptionHeight = 20;
constexpr double kHeaderSize = 8.5, kHeaderLine = 15;
constexpr double kGroupSize = 9.5, kGroupHeight = 18;
constexpr double kCellSize = 9, kRowHeight = 14;
constexpr double kTextSize = 10, kTextHeight = 15;
constexpr double kFooterSize = 8, kFooterHeight = 16;
constexpr double kCellInset = 3;
constexpr double kBlockGap = 12;
constexpr double kOuterRule = 0.75, kInnerRule = 0.4;

double Number(const std::string& s, bool& ok) {
  const std::string t = Trim(s);
  char* end = nullptr;
  const double d = std::strtod(t.c_str(), &end);
  ok = !t.empty() && end && *end == '\0';
  return d;
}

// Numbers in numeric order, then texts without regard to case; empty values last.
bool Before(const std::string& a, const std::string& b) {
  if (a.empty() != b.empty()) return b.empty();
  bool na = false, nb = false;
  const double x = Number(a, na), y = Number(b, nb);
  if (na && nb) return x < y;
  if (na != nb) return na;
  return ToLower(a) < ToLower(b);
}

std::string Cell(const LayoutColumn& c, const std::string& value) {
  switch (c.format) {
    case CellFormat::Mark:
      return IsTicked(value) ? "X" : "";
    case CellFormat::YesNo:
      return IsTicked(value) ? "Yes" : "No";
    case CellFormat::List: {
      bool ok = false;
      const double d = Number(value, ok);
      const auto i = static_cast<long>(d);
      if (ok && d == static_cast<double>(i) && i >= 0 && i < static_cast<long>(c.list.size()))
        return c.list[static_cast<std::size_t>(i)];
      return value;
    }
    case CellFormat::Text:
      break;
  }
  return value;
}

class Composer {
 public:
  Composer(const ReportLayout& layout, const RenderOptions& o, std::map<std::string, std::string> formulas)
      : layout_(layout), options_(o), formulas_(std::move(formulas)) {
    double w = o.paper.widthMm, h = o.paper.heightMm;
    if (layout.landscape != (w > h)) std::swap(w, h);
    width_ = w * kPointsPerMm;
    height_ = h * kPointsPerMm;
    margin_ = std::max(0.0, o.marginMm) * kPointsPerMm;
    left_ = margin_;
    right_ = width_ - margin_;
    bottom_ = height_ - margin_ - kFooterHeight - 6;
  }

  std::vector<ReportPage> Run(Database& db) {
    const DocumentFacts facts = ReadFacts(db);
    NewPage();
    for (const LayoutBlock& b : layout_.blocks) {
      SourceRows rows = LoadSource(db, b.source, facts);
      Filter(b, rows);
      if (b.kind == LayoutBlock::Kind::Text) TextBlock(b, rows);
      else Table(b, rows, facts);
    }
    Footers();
    return std::move(pages_);
  }

 private:
  ReportPage& Page() { return pages_.back(); }
  double ContentWidth() const { return right_ - left_; }

  void Text(double x, double y, double w, double h, std::string text, double size, bool bold, Align align,
            bool italic = false) {
    if (text.empty()) return;
    Page().texts.push_back({{x, y, w, h}, std::move(text), size, bold, italic, align});
  }
  void Line(double x1, double y1, double x2, double y2, double width = 0.5) {
    Page().rules.push_back({x1, y1, x2, y2, width});
  }

  void NewPage() {
    pages_.push_back({});
    Page().width = width_;
    Page().height = height_;
    y_ = margin_;
    Text(left_, y_, ContentWidth(), kTitleHeight, layout_.title, kTitleSize, true, Align::Left);
    y_ += kTitleHeight;
    const std::string heading = FillTemplate(layout_.heading, [this](const std::string& name) {
      for (const auto& [k, v] : formulas_)
        if (EqualsNoCase(k, name)) return v;
      return std::string();
    });
    Text(left_, y_, ContentWidth(), kHeadingHeight, heading, kHeadingSize, false, Align::Left);
    y_ += kHeadingHeight + 2;
    Line(left_, y_, right_, y_, 1);
    y_ += 10;
  }

  bool Fits(double h) const { return y_ + h <= bottom_; }

  void Filter(const LayoutBlock& b, SourceRows& rows) const {
    std::vector<int> only;
    for (const std::string& f : b.only) only.push_back(rows.Index(f));
    std::erase_if(rows.rows, [&](const std::vector<std::string>& r) {
      return std::any_of(only.begin(), only.end(), [&](int i) { return i < 0 || !IsTicked(r[static_cast<std::size_t>(i)]); });
    });
    if (!b.order.empty()) {
      const int i = rows.Index(b.order);
      if (i >= 0)
        std::stable_sort(rows.rows.begin(), rows.rows.end(), [i](const auto& x, const auto& y) {
          return Before(x[static_cast<std::size_t>(i)], y[static_cast<std::size_t>(i)]);
        });
    }
  }

  static std::string Fill(const std::string& tmpl, const SourceRows& rows, const std::vector<std::string>& row) {
    return FillTemplate(tmpl, [&](const std::string& name) {
      const int i = rows.Index(name);
      return i < 0 ? std::string() : row[static_cast<std::size_t>(i)];
    });
  }

  void Caption(const std::string& caption, bool continued) {
    if (caption.empty()) return;
    Text(left_, y_, ContentWidth(), kCaptionHeight, caption + (continued ? " (continued)" : ""), kCaptionSize, true,
         Align::Left);
    y_ += kCaptionHeight;
  }

  void TextBlock(const LayoutBlock& b, const SourceRows& rows) {
    if (!Fits(kCaptionHeight + kTextHeight)) NewPage();
    Caption(b.caption, false);
    for (const auto& row : rows.rows)
      for (const std::string& line : b.text) {
        if (!Fits(kTextHeight)) NewPage();
        Text(left_, y_, ContentWidth(), kTextHeight, Fill(line, rows, row), kTextSize, false, Align::Left);
        y_ += kTextHeight;
      }
    y_ += kBlockGap;
  }

  struct Placed {
    const LayoutColumn* column;
    int index;  // in the source's fields
    double x, w;
  };

  void Table(const LayoutBlock& b, const SourceRows& rows, const DocumentFacts& facts) {
    std::vector<Placed> cols;
    double total = 0;
    for (const LayoutColumn& c : b.columns) {
      if (c.pageGroup > facts.InstalledGroups()) continue;
      cols.push_back({&c, rows.Index(c.field), 0, c.widthMm * kPointsPerMm});
      total += cols.back().w;
    }
    const double scale = total > ContentWidth() ? ContentWidth() / total : 1.0;
    double x = left_;
    for (Placed& p : cols) {
      p.x = x;
      p.w *= scale;
      x += p.w;
    }
    const double tableRight = x;
    const bool spans = std::any_of(cols.begin(), cols.end(), [](const Placed& p) { return !p.column->span.empty(); });
    const double headerHeight = kHeaderLine * (spans ? 2 : 1);

    if (rows.rows.empty()) {
      if (!Fits(kCaptionHeight + kTextHeight)) NewPage();
      Caption(b.caption, false);
      Text(left_, y_, ContentWidth(), kTextHeight, b.empty, kCellSize, false, Align::Left, true);
      y_ += kTextHeight + kBlockGap;
      return;
    }

    // the column borders of a band of the table; a span's caption is not cut by them
    auto borders = [&](double top, double h, bool spanRow) {
      for (std::size_t i = 0; i < cols.size(); ++i) {
        const std::string& span = cols[i].column->span;
        if (spanRow && i > 0 && !span.empty() && cols[i - 1].column->span == span) continue;
        Line(cols[i].x, top, cols[i].x, top + h, i == 0 ? kOuterRule : kInnerRule);
      }
      Line(tableRight, top, tableRight, top + h, kOuterRule);
    };
    auto header = [&](bool continued) {
      Caption(b.caption, continued);
      Line(left_, y_, tableRight, y_, kOuterRule);
      Page().shades.push_back({{left_, y_, tableRight - left_, headerHeight}, 0.85});
      for (std::size_t i = 0; i < cols.size(); ++i) {
        const Placed& p = cols[i];
        const std::string& span = p.column->span;
        if (spans && !span.empty() && (i == 0 || cols[i - 1].column->span != span)) {
          double w = 0;
          for (std::size_t j = i; j < cols.size() && cols[j].column->span == span; ++j) w += cols[j].w;
          Text(p.x, y_, w, kHeaderLine, span, kHeaderSize, true, Align::Center);
          Line(p.x, y_ + kHeaderLine, p.x + w, y_ + kHeaderLine, kInnerRule);
        }
        const double top = spans && !span.empty() ? y_ + kHeaderLine : y_;
        const double h = spans && span.empty() ? headerHeight : kHeaderLine;
        Text(p.x + kCellInset, top, p.w - 2 * kCellInset, h, p.column->caption, kHeaderSize, true, p.column->align);
      }
      if (spans) {
        borders(y_, kHeaderLine, true);
        borders(y_ + kHeaderLine, kHeaderLine, false);
      } else {
        borders(y_, headerHeight, false);
      }
      y_ += headerHeight;
      Line(left_, y_, tableRight, y_, kOuterRule);
    };
    auto closeSegment = [&] { Line(left_, y_, tableRight, y_, kOuterRule); };
    auto groupHeader = [&](const std::string& text, bool continued) {
      Page().shades.push_back({{left_, y_, tableRight - left_, kGroupHeight}, 0.93});
      Text(left_ + kCellInset, y_, tableRight - left_ - 2 * kCellInset, kGroupHeight,
           text + (continued ? " (continued)" : ""), kGroupSize, true, Align::Left);
      Line(left_, y_, tableRight, y_, kInnerRule);
      Line(left_, y_, left_, y_ + kGroupHeight, kOuterRule);
      Line(tableRight, y_, tableRight, y_ + kGroupHeight, kOuterRule);
      y_ += kGroupHeight;
      Line(left_, y_, tableRight, y_, kInnerRule);
    };

    const double captionHeight = b.caption.empty() ? 0 : kCaptionHeight;
    const double groupHeight = b.group.empty() ? 0 : kGroupHeight;
    if (!Fits(captionHeight + headerHeight + groupHeight + kRowHeight)) NewPage();
    header(false);
    std::string group;
    bool first = true;
    int band = 0;
    for (const auto& row : rows.rows) {
      if (!b.group.empty()) {
        const std::string g = Fill(b.group, rows, row);
        if (first || g != group) {
          if (!Fits(kGroupHeight + kRowHeight)) {
            closeSegment();
            NewPage();
            header(true);
          }
          group = g;
          groupHeader(group, false);
          band = 0;
        }
      }
      first = false;
      if (!Fits(kRowHeight)) {
        closeSegment();
        NewPage();
        header(true);
        if (!b.group.empty()) groupHeader(group, true);
      }
      if (band++ % 2 == 1) Page().shades.push_back({{left_, y_, tableRight - left_, kRowHeight}, 0.96});
      borders(y_, kRowHeight, false);
      for (const Placed& p : cols) {
        const std::string value = p.index < 0 ? std::string() : row[static_cast<std::size_t>(p.index)];
        Text(p.x + kCellInset, y_, p.w - 2 * kCellInset, kRowHeight, Cell(*p.column, value), kCellSize, false,
             p.column->align);
      }
      y_ += kRowHeight;
    }
    closeSegment();
    y_ += kBlockGap;
  }

  void Footers() {
    const int count = static_cast<int>(pages_.size());
    const double top = height_ - margin_ - kFooterHeight;
    const std::string printed =
        "Printed " + FormatJournalDate(options_.printedAt) + " " + FormatJournalTime(options_.printedAt);
    for (int i = 0; i < count; ++i) {
      ReportPage& p = pages_[static_cast<std::size_t>(i)];
      p.rules.push_back({left_, top, right_, top, 0.5});
      const double third = ContentWidth() / 3;
      p.texts.push_back({{left_, top + 2, third, kFooterHeight - 2}, printed, kFooterSize, false, false, Align::Left});
      if (!options_.footer.empty())
        p.texts.push_back(
            {{left_ + third, top + 2, third, kFooterHeight - 2}, options_.footer, kFooterSize, false, false, Align::Center});
      p.texts.push_back({{right_ - third, top + 2, third, kFooterHeight - 2},
                         "Page " + std::to_string(i + 1) + " of " + std::to_string(count), kFooterSize, false, false,
                         Align::Right});
    }
  }

  const ReportLayout& layout_;
  const RenderOptions& options_;
  std::map<std::string, std::string> formulas_;
  std::vector<ReportPage> pages_;
  double width_ = 0, height_ = 0, margin_ = 0, left_ = 0, right_ = 0, bottom_ = 0;
  double y_ = 0;
};

}  // namespace

std::string FillTemplate(const std::string& tmpl, const std::function<std::string(const std::string&)>& value) {
  std::string out;
  for (std::size_t i = 0; i < tmpl.size(); ++i) {
    const std::size_t close = tmpl[i] == '{' ? tmpl.find('}', i) : std::string::npos;
    if (close == std::string::npos) {
      out += tmpl[i];
      continue;
    }
    out += value(Trim(std::string_view(tmpl).substr(i + 1, close - i - 1)));
    i = close;
  }
  return out;
}

std::map<std::string, std::string> ParseFormulas(const std::vector<std::string>& definitions) {
  std::map<std::string, std::string> out;
  for (const std::string& d : definitions) {
    const std::size_t eq = d.find('=');
    if (eq == std::string::npos) continue;
    const std::string name = Trim(std::string_view(d).substr(0, eq));
    std::string value = Trim(std::string_view(d).substr(eq + 1));
    if (value.size() >= 2 && value.front() == '\'' && value.back() == '\'') value = value.substr(1, value.size() - 2);
    if (!name.empty()) out[name] = value;
  }
  return out;
}

std::vector<ReportPage> RenderReport(const ReportLayout& layout, const std::string& dbPath,
                                     const std::vector<std::string>& formulas, const RenderOptions& options) {
  OpenOptions readOnly;
  readOnly.readOnly = true;
  Database db = Database::Open(dbPath, readOnly);
  Composer composer(layout, options, ParseFormulas(formulas));
  auto pages = composer.Run(db);
  db.Close();
  return pages;
}

std::string PageText(const ReportPage& page) {
  std::string out;
  for (const TextRun& t : page.texts) out += t.text + "\n";
  return out;
}

}  // namespace r6183
