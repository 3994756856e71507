// Arbitrary bytes as a report layout: refused with a LayoutError, or read and laid out on
// the template without any other failure; every page keeps to its paper.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "ScratchDir.h"
#include "reports/ReportEngine.h"
#include "reports/ReportLayout.h"

using namespace r6183;

namespace {
struct Template {
  Template() {
    const char* source = std::getenv("R6183_TEMPLATE");
    path = (dir.path() / "DEFAULT").string();
    std::filesystem::copy_file(source ? source : R6183_TEMPLATE, path);
  }
  fuzz::ScratchDir dir;
  std::string path;
};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Template doc;
  ReportLayout layout;
  try {
    layout = ParseLayout(std::string_view(reinterpret_cast<const char*>(data), size), "fuzz.rpt");
  } catch (const LayoutError&) {
    return 0;
  }
  RenderOptions options;
  options.paper = {100, 80};  // small paper: many pages, columns narrowed
  const auto pages = RenderReport(layout, doc.path, {"Database = 'x'"}, options);
  if (pages.empty()) std::abort();
  for (const ReportPage& p : pages)
    for (const TextRun& t : p.texts)
      if (t.box.x < 0 || t.box.x + t.box.w > p.width + 0.01) std::abort();
  return 0;
}
