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
#include "shell/Session.h"

namespace fs = std::filesystem;
using namespace r6183;

namespace {
struct BenchSession {
  BenchSession() {
    std::string tmpl = (fs::temp_directory_path() / "r6183-bench-XXXXXX").string();
    dir = ::mkdtemp(tmpl.data());
    for (const char* f : {"DEFAULT", "errors"})
      fs::copy_file(fs::path(R6183_STAGED_APPDIR) / f, dir / f);
    session = std::make_unique<Session>(AppDir(dir), prompter, clock);
  }
  ~BenchSession() { fs::remove_all(dir); }
  fs::path dir;
  ScriptedPrompter prompter;
  SystemClock clock;
  std::unique_ptr<Session> session;
};

void BM_LogError(benchmark::State& state) {
  BenchSession b;
  for (auto _ : state) b.session->journal().LogError(3021, "", "frmMenu", "frmMenu", "bench");
}
BENCHMARK(BM_LogError)->Unit(benchmark::kMicrosecond);

void BM_ValidDatabase(benchmark::State& state) {
  BenchSession b;
  const std::string path = b.session->state.DefaultDbPath;
  for (auto _ : state) benchmark::DoNotOptimize(ValidDatabase(*b.session, path));
}
BENCHMARK(BM_ValidDatabase)->Unit(benchmark::kMicrosecond);

void BM_CopyDocument(benchmark::State& state) {
  BenchSession b;
  const std::string work = (b.dir / "~TEMP").string();
  for (auto _ : state) benchmark::DoNotOptimize(ReplaceWithCopy(b.session->state.DefaultDbPath, work));
}
BENCHMARK(BM_CopyDocument)->Unit(benchmark::kMicrosecond);

void BM_WalkStations(benchmark::State& state) {
  BenchSession b;
  Database db = Database::Open(b.session->state.DefaultDbPath);
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
  Database db = Database::Open(b.session->state.DefaultDbPath);
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
  Database db = Database::Open(b.session->state.DefaultDbPath);
  for (auto _ : state) {
    std::ostringstream out;
    DumpDocument(db, out);
    benchmark::DoNotOptimize(out.str().size());
  }
}
BENCHMARK(BM_DumpDocument)->Unit(benchmark::kMicrosecond);

void BM_CompactErrors(benchmark::State& state) {
  BenchSession b;
  for (int i = 0; i < 1000; ++i) b.session->journal().LogError(1, "filler entry", "m", "m", "r");
  for (auto _ : state) CompactErrors(*b.session);
}
BENCHMARK(BM_CompactErrors)->Unit(benchmark::kMillisecond);
}  // namespace

BENCHMARK_MAIN();
