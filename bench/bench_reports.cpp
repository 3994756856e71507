// The six reports the print window shows, of the largest programming (96 numbered and
// described stations on four boards, 256 events), into one PDF file as Save as PDF...
// writes it: layouts read, pages laid out from the work copy, pages painted by QPdfWriter.
// Median of 5 runs, with the part of each step. Run: build/bench/bench_reports
#include <QElapsedTimer>
#include <QGuiApplication>

#include <SQLiteCpp/SQLiteCpp.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "BenchSession.h"
#include "Largest.h"
#include "gui/reports/PagePainter.h"
#include "reports/PrintModel.h"

using namespace r6183;
namespace fs = std::filesystem;

namespace {
double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

struct PdfOnly : PageOutput {
  std::string DefaultPrinter() override { return {}; }
  PaperSize Paper() override { return kA4; }
  void Print(const std::string&, const std::vector<ReportPage>&) override {}
  void WritePdf(const std::string& path, const std::vector<ReportPage>& pages) override {
    gui::WritePdfFile(path, pages, "Reports");
  }
};
}  // namespace

int main(int argc, char** argv) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QGuiApplication app(argc, argv);
  constexpr int kRuns = 5;

  bench::BenchSession b;
  Session& s = *b;
  s.product.ProductTitle = "Bench";
  s.product.ProductCode = 1;
  const std::string site = (b.dir / "LARGEST.MDB").string();
  bench::MakeLargest((b.dir / "DEFAULT").string(), site,
                    "UPDATE PageGroup SET PageGroup1 = 1, PageGroup9 = 1, PageGroup16 = 1; UPDATE Bgm SET PageGroup13 = 1;");
  s.state.WorkDbPath = (b.dir / "~TEMP").string();
  fs::copy_file(site, s.state.WorkDbPath);
  s.state.CurrentFileName = site;

  PdfOnly output;
  std::vector<double> total, layout, painting;
  std::size_t pages = 0;
  const std::string pdf = (b.dir / "LARGEST.pdf").string();
  for (int run = 0; run < kRuns; ++run) {
    QElapsedTimer t;
    t.start();
    PrintModel model(s, output);
    model.Form_Load();
    model.cmdSelectAll.Press();
    const auto laid = model.TickedPages("bench");
    const double laidMs = static_cast<double>(t.nsecsElapsed()) / 1e6;
    if (!laid) {
      std::fprintf(stderr, "a layout was refused: %s\n", b.prompter.Shown().empty() ? "" : b.prompter.Shown().back().text.c_str());
      return 1;
    }
    output.WritePdf(pdf, *laid);
    const double allMs = static_cast<double>(t.nsecsElapsed()) / 1e6;
    total.push_back(allMs);
    layout.push_back(laidMs);
    painting.push_back(allMs - laidMs);
    pages = laid->size();
  }
  std::printf("Six reports of the largest programming to PDF (%zu pages, %ju bytes), median of %d runs:\n", pages,
              static_cast<uintmax_t>(fs::file_size(pdf)), kRuns);
  std::printf("  total %.1f ms (layouts read and pages laid out %.1f ms, pages painted into the PDF %.1f ms)\n",
              Median(total), Median(layout), Median(painting));
  std::printf("  the first run, with the fonts loaded: %.1f ms\n", total.front());
  return 0;
}
