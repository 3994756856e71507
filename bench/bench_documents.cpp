// Figures of the File commands on the largest programming: 96 numbered and described
// stations and 256 events. Run: build/bench/bench_documents
#include <benchmark/benchmark.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include <filesystem>

#include "database/DocumentCommands.h"
#include "shell/MainMenu.h"
#include "shell/Session.h"

namespace fs = std::filesystem;
using namespace r6183;

namespace {
struct Bench {
  Bench() {
    std::string tmpl = (fs::temp_directory_path() / "r6183-bench-XXXXXX").string();
    dir = ::mkdtemp(tmpl.data());
    for (const auto& e : fs::recursive_directory_iterator(R6183_STAGED_APPDIR)) {
      const auto rel = fs::relative(e.path(), R6183_STAGED_APPDIR);
      if (e.is_directory()) fs::create_directories(dir / rel);
      else if (!rel.string().ends_with(".mdb") && rel.string().find('~') == std::string::npos)
        fs::copy_file(e.path(), dir / rel);
    }
    session = std::make_unique<Session>(AppDir(dir), prompter, clock);
    session->product.ProductTitle = "Bench";
    Initialize(*session);
    document = (dir / "LARGEST.MDB").string();
    fs::copy_file(dir / "DEFAULT", document);
    SQLite::Database db(document, SQLite::OPEN_READWRITE);
    db.exec("BEGIN; UPDATE Config SET System_Config = 3;"
            "UPDATE Clid SET archnum = CAST(1000 + clid_station AS TEXT), clid_string = 'Station ' || clid_station;"
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 255)"
            " INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1, PageGroup16)"
            " SELECT i % 6 + 1, printf('%02d:%02d', i / 12, i % 60), i % 59 + 1, i % 4 + 1, 1, i % 2 FROM n;"
            "COMMIT");
  }
  ~Bench() { fs::remove_all(dir); }
  fs::path dir;
  std::string document;
  ScriptedPrompter prompter;
  SystemClock clock;
  std::unique_ptr<Session> session;
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
