// Export and import of the largest programming (3 expansion boards, 96 numbered and
// described stations, 256 events) as r6183ctl runs them: the document read and its YAML
// written; the YAML read through the rules and a document made from the template.
// Run: build/bench/bench_text
#include <benchmark/benchmark.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include <filesystem>

#include "BenchSession.h"
#include "Largest.h"
#include "options/ClockRules.h"
#include "textform/TextForm.h"

namespace fs = std::filesystem;
using namespace r6183;

namespace {
struct Largest : bench::BenchSession {
  Largest() {
    templ = (dir / "DEFAULT").string();
    document = (dir / "LARGEST.MDB").string();
    bench::MakeLargest(templ, document);
    std::vector<std::string> leftOut;
    text = ProgrammingText(ReadProgramming(document), LoadClockCatalogue(document), leftOut);
  }
  std::string templ, document, text;
};

void BM_ExportLargest(benchmark::State& state) {
  Largest b;
  for (auto _ : state) {
    std::vector<std::string> leftOut;
    benchmark::DoNotOptimize(ProgrammingText(ReadProgramming(b.document), LoadClockCatalogue(b.document), leftOut));
  }
  state.counters["bytes"] = static_cast<double>(b.text.size());
}
BENCHMARK(BM_ExportLargest)->Unit(benchmark::kMillisecond)->Repetitions(9)->ReportAggregatesOnly(true);

void BM_ImportLargest(benchmark::State& state) {
  Largest b;
  const std::string out = (b.dir / "out.mdb").string();
  for (auto _ : state) {
    const TextImport read = ReadProgrammingText(b.text, ReadProgramming(b.templ), LoadClockCatalogue(b.templ), "R-6183");
    if (!read.refusals.empty()) state.SkipWithError(read.refusals.front().text.c_str());
    fs::copy_file(b.templ, out, fs::copy_options::overwrite_existing);
    WriteProgramming(read.programming, out, true);
  }
}
BENCHMARK(BM_ImportLargest)->Unit(benchmark::kMillisecond)->Repetitions(9)->ReportAggregatesOnly(true);
}  // namespace

BENCHMARK_MAIN();
