// Figures of the table store and the journal: what a start-up, an open and an
// error cost. Run: build/bench/bench_store
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "database/Database.h"
#include "database/DocumentChecks.h"
#include "database/DocumentDump.h"
#include "database/Recordset.h"
#include "shell/ErrorsMaintenance.h"
#include "shell/FileOps.h"
#include "BenchSession.h"

namespace fs = std::filesystem;
using namespace r6183;

namespace {
using bench::BenchSession;

void BM_LogError(benchmark::State& state) {
  BenchSession b;
  for (auto _ : state) b->journal().LogError(3021, "", "frmMenu", "frmMenu", "bench");
}
BENCHMARK(BM_LogError)->Unit(benchmark::kMicrosecond);

void BM_ValidDatabase(benchmark::State& state) {
  BenchSession b;
  const std::string path = b->state.DefaultDbPath;
  for (auto _ : state) benchmark::DoNotOptimize(ValidDatabase(*b, path));
}
BENCHMARK(BM_ValidDatabase)->Unit(benchmark::kMicrosecond);

void BM_CopyDocument(benchmark::State& state) {
  BenchSession b;
  const std::string work = (b.dir / "~TEMP").string();
  for (auto _ : state) benchmark::DoNotOptimize(ReplaceWithCopy(b->state.DefaultDbPath, work));
}
BENCHMARK(BM_CopyDocument)->Unit(benchmark::kMicrosecond);

void BM_WalkStations(benchmark::State& state) {
  BenchSession b;
  Database db = Database::Open(b->state.DefaultDbPath);
  for (auto _ : state) {
    Recordset rs = db.OpenRecordset("Clid");
    int64_t sum = 0;
    while (!rs.IsEOF()) {
      sum += rs["clid_station"].Number();
      rs.MoveNext();
    }
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(BM_WalkStations)->Unit(benchmark::kMicrosecond);

void BM_EditAllStations(benchmark::State& state) {
  BenchSession b;
  Database db = Database::Open(b->state.DefaultDbPath);
  for (auto _ : state) {
    db.BeginTrans();
    Recordset rs = db.OpenRecordset("Clid");
    while (!rs.IsEOF()) {
      rs.Edit();
      rs["archnum"] = "1234";
      rs.Update();
      rs.MoveNext();
    }
    db.CommitTrans();
  }
}
BENCHMARK(BM_EditAllStations)->Unit(benchmark::kMicrosecond);

void BM_DumpDocument(benchmark::State& state) {
  BenchSession b;
  Database db = Database::Open(b->state.DefaultDbPath);
  for (auto _ : state) {
    std::ostringstream out;
    DumpDocument(db, out);
    benchmark::DoNotOptimize(out.str().size());
  }
}
BENCHMARK(BM_DumpDocument)->Unit(benchmark::kMicrosecond);

void BM_CompactErrors(benchmark::State& state) {
  BenchSession b;
  for (int i = 0; i < 1000; ++i) b->journal().LogError(1, "filler entry", "m", "m", "r");
  for (auto _ : state) CompactErrors(*b);
}
BENCHMARK(BM_CompactErrors)->Unit(benchmark::kMillisecond);
}  // namespace

BENCHMARK_MAIN();
