// A whole Send of the largest programming through a call of the simulated modem
// (r6183-sim --modem --pace on a pseudo-terminal): the dial as the phone list dials, the
// Send in the call, Modem Release. Prints each part's time, the Send against the time its
// bytes need on the wire at 9600 baud, and the whole with and without the dial and the
// release; the same Send on the direct line beside it.
// Run: build/bench/bench_modem [dial delay in ms, default 1000]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "BenchSession.h"
#include "BenchSim.h"
#include "connectivity/Connection.h"
#include "connectivity/modModem.h"
#include "database/DocumentCommands.h"
#include "protocol/ModComm.h"
#include "protocol/ProgressWindow.h"
#include "protocol/SendTransfer.h"
#include "shell/MainMenu.h"

namespace fs = std::filesystem;
using namespace r6183;
using bench::BenchClock;

namespace {

double Since(BenchClock::time_point t) { return std::chrono::duration<double>(BenchClock::now() - t).count(); }

// The median time from the tool's write of a frame to the unit's answer, in ms.
double MedianAnswer(const std::vector<bench::FrameTimes>& frames, std::size_t from) {
  std::vector<double> ms;
  for (std::size_t i = from; i < frames.size(); ++i)
    if (frames[i].answered != BenchClock::time_point{})
      ms.push_back(std::chrono::duration<double, std::milli>(frames[i].answered - frames[i].written).count());
  if (ms.empty()) return 0;
  std::nth_element(ms.begin(), ms.begin() + ms.size() / 2, ms.end());
  return ms[ms.size() / 2];
}

struct Figures {
  double dial = 0, send = 0, release = 0, answerMs = 0;
  std::size_t sendBytes = 0, callBytes = 0;
  std::string dialText, sendText;
};

Figures Run(bool modem, int dialDelayMs) {
  bench::BenchSession b;
  Session& s = *b;
  s.product.ProductTitle = "Bench";
  s.product.ProductModel = "R-6183";
  Initialize(s);
  SetLinkState(s, false);
  const std::string site = (b.dir / "LARGEST.MDB").string();
  bench::MakeLargest((b.dir / "DEFAULT").string(), site);
  std::vector<std::string> options;
  if (modem) options = {"--modem", "--dial-delay", std::to_string(dialDelayMs)};
  bench::Sim sim(b.dir, options);
  bench::CountingLine* line = nullptr;
  ModComm comm(s, [&](int16_t) {
    auto l = std::make_unique<bench::CountingLine>(sim.device);
    line = l.get();
    return l;
  });
  ProgressWindow quiet;
  modModem hayes(s, comm, quiet);
  OpenDatabase(s, site);

  Figures f;
  if (modem) {
    const auto t0 = BenchClock::now();
    DialNumber(hayes, "5551234");
    f.dial = Since(t0);
    f.dialText = b.prompter.Shown().back().text;
  }
  const std::size_t before = line ? line->Bytes() : 0, firstFrame = line ? line->frames.size() : 0;
  const auto t1 = BenchClock::now();
  mnuSend_Click(s, comm, quiet);
  f.send = Since(t1);
  f.sendBytes = (line ? line->Bytes() : 0) - before;
  f.sendText = b.prompter.Shown().back().text;
  if (line) f.answerMs = MedianAnswer(line->frames, firstFrame);
  if (modem) {
    const auto t2 = BenchClock::now();
    mnuModemRelease_Click(hayes);
    f.release = Since(t2);
  }
  f.callBytes = line ? line->Bytes() : 0;
  comm.Exit_Comm();
  return f;
}

}  // namespace

int main(int argc, char** argv) {
  const int dialDelay = argc > 1 ? std::atoi(argv[1]) : 1000;
  const Figures direct = Run(false, dialDelay);
  const Figures call = Run(true, dialDelay);
  const double wire = bench::WireSeconds(call.sendBytes);
  std::printf("Direct line: %s\n", direct.sendText.c_str());
  std::printf("Modem call:  %s / %s\n", call.dialText.c_str(), call.sendText.c_str());
  std::printf("Send, direct      %6zu bytes  taken %6.2f s  wire %6.2f s  ratio %5.2f  (without the 1 s wait %5.2f)\n",
              direct.sendBytes, direct.send, bench::WireSeconds(direct.sendBytes),
              direct.send / bench::WireSeconds(direct.sendBytes),
              (direct.send - 1.0) / bench::WireSeconds(direct.sendBytes));
  std::printf("Send, in the call %6zu bytes  taken %6.2f s  wire %6.2f s  ratio %5.2f  (without the 1 s wait %5.2f)\n",
              call.sendBytes, call.send, wire, call.send / wire, (call.send - 1.0) / wire);
  std::printf("Median from a frame's write to its answer: direct %.2f ms, in the call %.2f ms\n", direct.answerMs,
              call.answerMs);
  std::printf("Dial (modem answers after %d ms) %6.2f s, release %6.2f s\n", dialDelay, call.dial, call.release);
  const double whole = call.dial + call.send + call.release;
  std::printf("Dial + Send + release %6.2f s: ratio to the Send's wire time %5.2f; all %zu bytes of the call "
              "need %6.2f s of wire\n",
              whole, whole / wire, call.callBytes, bench::WireSeconds(call.callBytes));
  return 0;
}
