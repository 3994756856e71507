// Figures of the configuration editors on the largest programming (four boards, 96 numbered
// stations, 256 events of which half call only groups of the expansions, every custom group and audio source full): shrinking it to the Main
// Board with its question answered Yes (the removed boards' stations, groups and events
// cleared), and one OK each in the custom page group, audio and class of service windows.
// Each run starts from a fresh work copy. Run: build/bench/bench_config
#include <benchmark/benchmark.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include <filesystem>
#include <functional>

#include "BenchSession.h"
#include "Largest.h"
#include "database/DocumentChecks.h"
#include "editors/ConfigScript.h"
#include "shell/MainMenu.h"

namespace fs = std::filesystem;
using namespace r6183;

namespace {

struct Bench : bench::BenchSession {
  Bench() {
    session->product.ProductTitle = "Bench";
    Initialize(*session);
    prepared = (dir / "LARGEST.MDB").string();
    std::string all;
    for (int g = 1; g <= 16; ++g) all += (g > 1 ? ", " : "") + std::string("PageGroup") + std::to_string(g) + " = 1";
    // half the events call only group 16, of the third expansion
    bench::MakeLargest((dir / "DEFAULT").string(), prepared,
                       "UPDATE PageGroup SET " + all + "; UPDATE Bgm SET " + all + "; UPDATE TonesPG SET " + all +
                           "; UPDATE EmergencyPG SET " + all + "; UPDATE Event SET PageGroup1 = rowid % 2, PageGroup16 = 1");
    session->state.WorkDbPath = (dir / "~TEMP").string();
  }
  // A fresh work copy of the prepared document, checked and counted as an open does.
  void Fresh() {
    fs::copy_file(prepared, session->state.WorkDbPath, fs::copy_options::overwrite_existing);
    ValidDatabase(*session, session->state.WorkDbPath);
  }
  void Run(benchmark::State& state, const std::function<bool(std::string&)>& change) {
    for (auto _ : state) {
      state.PauseTiming();
      Fresh();
      state.ResumeTiming();
      std::string refusal;
      if (!change(refusal)) state.SkipWithError(refusal.c_str());
    }
  }
  std::string prepared;
};

void BM_ShrinkToMainBoard(benchmark::State& state) {
  Bench b;
  b.Run(state, [&](std::string& refusal) {
    b.prompter.QueueAnswer(Answer::Yes);
    const bool made = ScriptSetConfig(*b.session, 1, refusal);
    if (made && b.session->state.EventCount != 128) {
      refusal = "the removed boards' events stayed";
      return false;
    }
    return made;
  });
}
BENCHMARK(BM_ShrinkToMainBoard)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(15)->ReportAggregatesOnly(true);

void BM_CustomPageGroupOk(benchmark::State& state) {
  Bench b;
  b.Run(state, [&](std::string& refusal) { return ScriptSetGroup(*b.session, 52, {1, 5, 9, 13}, refusal); });
}
BENCHMARK(BM_CustomPageGroupOk)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(15)->ReportAggregatesOnly(true);

void BM_AudioConnectionsOk(benchmark::State& state) {
  Bench b;
  b.Run(state, [&](std::string& refusal) { return ScriptSetAudio(*b.session, "emergency", {2, 4, 6}, refusal); });
}
BENCHMARK(BM_AudioConnectionsOk)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(15)->ReportAggregatesOnly(true);

void BM_ClassOfServiceClose(benchmark::State& state) {
  Bench b;
  b.Run(state, [&](std::string& refusal) { return ScriptSetService(*b.session, 16, 2, refusal); });
}
BENCHMARK(BM_ClassOfServiceClose)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(15)->ReportAggregatesOnly(true);

}  // namespace

BENCHMARK_MAIN();
