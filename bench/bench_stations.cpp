// Figures of station numbering on the largest system: an auto-numbering run over all 96
// stations, a run of 48 whose every number deletes a conflicting one outside it, and the
// conflict search over a full table. Each run starts from a fresh work copy; medians of
// the repetitions are printed. Run: build/bench/bench_stations
#include <benchmark/benchmark.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include <filesystem>

#include "BenchSession.h"
#include "database/DocumentChecks.h"
#include "editors/AutoModel.h"
#include "editors/ClidModel.h"
#include "editors/StationList.h"

namespace fs = std::filesystem;
using namespace r6183;

namespace {

struct Bench : bench::BenchSession {
  // `numbers`: SQL giving the stations their numbers in the prepared document.
  explicit Bench(const std::string& numbers) {
    session->product.ProductTitle = "Bench";
    prepared = (dir / "PREPARED.MDB").string();
    fs::copy_file(dir / "DEFAULT", prepared);
    SQLite::Database(prepared, SQLite::OPEN_READWRITE)
        .exec("BEGIN; UPDATE Config SET System_Config = 3;"
              "UPDATE Clid SET clid_string = printf('%-15s', 'Station ' || clid_station);" +
              numbers + "COMMIT");
    session->state.WorkDbPath = (dir / "~TEMP").string();
  }
  // A fresh work copy of the prepared document and the numbering window loaded on it.
  std::unique_ptr<ClidModel> Load() {
    fs::copy_file(prepared, session->state.WorkDbPath, fs::copy_options::overwrite_existing);
    ValidDatabase(*session, session->state.WorkDbPath);
    auto m = std::make_unique<ClidModel>(*session);
    m->ShowAutoWindow = [this](AutoModel& a) {
      a.CloseWindow = [] {};
      a.txtStopArchnum.SetText(last);
      a.cmdOk.Press();
    };
    m->Form_Load();
    return m;
  }
  void Auto(ClidModel& m, int station) {
    m.ShowTab(BoardOf(station));
    m.lstClid[BoardOf(station)].SetListIndex(PlaceOnBoard(station));
    m.cmdAuto[BoardOf(station)].Press();
  }
  std::string prepared;
  std::string last;
};

// Numbers 1000 to 1095 on all 96 stations, where every other station holds a number that
// conflicts with one of the run's (1 followed by its own station number, as 10 or 1011).
void BM_AutoNumberAll96(benchmark::State& state) {
  Bench b("UPDATE Clid SET archnum = CASE WHEN clid_station % 2 = 0 THEN printf('%-4s', '1' || clid_station) "
          "ELSE '' END; UPDATE Clid SET archnum = '1000' WHERE clid_station = 1;");
  b.last = "1095";
  for (auto _ : state) {
    state.PauseTiming();
    auto m = b.Load();
    state.ResumeTiming();
    b.Auto(*m, 1);
    state.PauseTiming();
    if (!m->ClidChanged) state.SkipWithError("no run");
    m->cmdCancel.Press();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_AutoNumberAll96)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(15)->ReportAggregatesOnly(true);

// Numbers 100 to 147 on stations 1 to 48; stations 49 to 96 hold 100 to 147 too, so
// that each number of the run deletes one outside it, after one question.
void BM_AutoNumber48AgainstConflicts(benchmark::State& state) {
  Bench b("UPDATE Clid SET archnum = printf('%-4d', 100 + (clid_station - 1) % 48);"
          "UPDATE Clid SET archnum = '' WHERE clid_station BETWEEN 2 AND 48;");
  b.last = "147";
  for (auto _ : state) {
    state.PauseTiming();
    auto m = b.Load();
    b.prompter.Clear();
    state.ResumeTiming();
    b.Auto(*m, 1);
    state.PauseTiming();
    if (b.prompter.Shown().size() != 1) state.SkipWithError("not one question");
    m->cmdCancel.Press();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_AutoNumber48AgainstConflicts)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(15)
    ->ReportAggregatesOnly(true);

// 96 numbers 1001 to 1096: the number 10 conflicts with all 95 other stations.
void BM_FindConflictsFullTable(benchmark::State& state) {
  Bench b("UPDATE Clid SET archnum = CAST(1000 + clid_station AS TEXT);");
  auto m = b.Load();
  for (auto _ : state) {
    if (!m->Find_Conflicts("1", "10") || m->Conflicts.size() != 95) state.SkipWithError("not 95 conflicts");
  }
}
BENCHMARK(BM_FindConflictsFullTable)->Unit(benchmark::kMillisecond)->Repetitions(15)->ReportAggregatesOnly(true);

}  // namespace

BENCHMARK_MAIN();
