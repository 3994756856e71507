#pragma once
// A page of a report as the engine lays it out: shaded boxes, ruled lines and text runs,
// placed in points (1/72 inch) from the top-left corner of the paper. The desktop program
// paints the same pages on a printer, into a PDF and on the preview.
#include <string>
#include <vector>

namespace r6183 {

inline constexpr double kPointsPerMm = 72.0 / 25.4;

enum class Align { Left, Center, Right };

struct BoxPt {
  double x = 0, y = 0, w = 0, h = 0;
};

// Text set in `box`, vertically centred, cut short with an ellipsis by the painter when it
// does not fit the box's width.
struct TextRun {
  BoxPt box;
  std::string text;
  double size = 9;  // points
  bool bold = false;
  bool italic = false;
  Align align = Align::Left;
};

struct Rule {
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  double width = 0.5;  // points
};

// A filled box; grey 0 is black, 1 white.
struct Shade {
  BoxPt box;
  double grey = 0.9;
};

struct ReportPage {
  double width = 0, height = 0;  // the paper, points
  std::vector<Shade> shades;     // painted first
  std::vector<Rule> rules;
  std::vector<TextRun> texts;    // painted last
};

// The text of a page, run by run, a line each: what a reader of the printed page sees.
std::string PageText(const ReportPage& page);

}  // namespace r6183
