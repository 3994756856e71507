// Figures of the File commands on the largest programming: 96 numbered and described
// stations and 256 events. Run: build/bench/bench_documents
#include <benchmark/benchmark.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include <filesystem>

#include "database/DocumentCommands.h"
#include "shell/MainMenu.h"
#include "BenchSession.h"
#include "Largest.h"

namespace fs = std::filesystem;
using namespace r6183;

namespace {
struct Bench : bench::BenchSession {
  Bench() {
    session->product.ProductTitle = "Bench";
    Initialize(*session);
    document = (dir / "LARGEST.MDB").string();
    bench::MakeLargest((dir / "DEFAULT").string(), document);
  }
  std::string document;
};

void BM_OpenLargest(benchmark::State& state) {
  Bench b;
  for (auto _ : state) {
    OpenDatabase(*b.session, b.document);
    state.PauseTiming();
    if (b.session->state.CurrentFileName != b.document) state.SkipWithError("did not open");
    mnuFileClose_Click(*b.session);
    state.ResumeTiming();
  }
}
BENCHMARK(BM_OpenLargest)->Unit(benchmark::kMillisecond);

void BM_SaveLargest(benchmark::State& state) {
  Bench b;
  OpenDatabase(*b.session, b.document);
  for (auto _ : state) {
    b.session->state.DatabaseDirty = 1;
    mnuFileSave_Click(*b.session);
  }
}
BENCHMARK(BM_SaveLargest)->Unit(benchmark::kMillisecond);
}  // namespace

BENCHMARK_MAIN();
