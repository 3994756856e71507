// A whole Send and a whole Receive of the largest programming (3 expansion boards, 96
// numbered and described stations, 256 events) against r6183-sim paced at 9600 baud on a
// pseudo-terminal. Prints, for each, the time taken, the time its bytes need on the wire
// at 9600 baud 8N1, and their ratio, with and without the command's fixed one-second wait.
// Then the timeline of a frame of the Send: from the tool's write to the unit's ACK, and
// from that ACK to the tool's next write, medians over the frames, beside the wire time.
// Run: build/bench/bench_transfers
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <algorithm>
#include <vector>

#include "BenchSession.h"
#include "BenchSim.h"
#include "database/DocumentCommands.h"
#include "protocol/ModComm.h"
#include "protocol/PosixSerialLine.h"
#include "protocol/ProgressWindow.h"
#include "protocol/ReceiveTransfer.h"
#include "protocol/SendTransfer.h"
#include "shell/MainMenu.h"

namespace fs = std::filesystem;
using namespace r6183;

namespace {
using clock = bench::BenchClock;
using bench::CountingLine;
using bench::FrameTimes;

void Report(const char* what, double seconds, std::size_t bytes) {
  const double wire = static_cast<double>(bytes) * 10.0 / 9600.0;
  std::printf("%-8s %6zu bytes  taken %6.2f s  wire %6.2f s  ratio %5.2f  | without the 1 s wait: %6.2f s  ratio %5.2f\n",
              what, bytes, seconds, wire, seconds / wire, seconds - 1.0, (seconds - 1.0) / wire);
}

double Median(std::vector<double> v) {
  if (v.empty()) return 0.0;
  std::nth_element(v.begin(), v.begin() + v.size() / 2, v.end());
  return v[v.size() / 2];
}

// Medians over the frames of the longest kind (the stations' C frames on a Send).
void Timeline(const std::vector<FrameTimes>& frames) {
  std::size_t longest = 0;
  for (const auto& f : frames) longest = std::max(longest, f.bytes);
  std::vector<double> toAnswer, toNext;
  for (std::size_t i = 0; i + 1 < frames.size(); ++i) {
    if (frames[i].bytes != longest || frames[i].answered == clock::time_point{}) continue;
    toAnswer.push_back(std::chrono::duration<double, std::milli>(frames[i].answered - frames[i].written).count());
    toNext.push_back(std::chrono::duration<double, std::milli>(frames[i + 1].written - frames[i].answered).count());
  }
  double answering = 0, between = 0, worst = 0, wireAll = 0;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    if (frames[i].answered == clock::time_point{}) continue;
    const double a = std::chrono::duration<double, std::milli>(frames[i].answered - frames[i].written).count();
    answering += a;
    worst = std::max(worst, a - static_cast<double>(frames[i].bytes + 1) * 10.0 / 9.6);
    wireAll += static_cast<double>(frames[i].bytes + 1) * 10.0 / 9.6;
    if (i + 1 < frames.size())
      between += std::chrono::duration<double, std::milli>(frames[i + 1].written - frames[i].answered).count();
  }
  std::printf("All %zu frames: writes to answers %.0f ms for %.0f ms of wire (worst frame %.1f ms over), "
              "answers to next writes %.0f ms\n",
              frames.size(), answering, wireAll, worst, between);
  const double wire = static_cast<double>(longest + 1) * 10.0 / 9.6;
  std::printf("Frame of %zu bytes (%zu frames): write to answer %.2f ms, answer to next write %.2f ms; "
              "wire time of frame and answer %.2f ms\n",
              longest, toAnswer.size(), Median(toAnswer), Median(toNext), wire);
}
}  // namespace

int main() {
  bench::BenchSession b;
  Session& s = *b;
  s.product.ProductTitle = "Bench";
  s.product.ProductModel = "R-6183";
  Initialize(s);
  const std::string site = (b.dir / "LARGEST.MDB").string();
  bench::MakeLargest((b.dir / "DEFAULT").string(), site);
  bench::Sim sim(b.dir);
  ProgressWindow quiet;
  CountingLine* line = nullptr;
  ModComm comm(s, [&](int16_t) {
    auto l = std::make_unique<CountingLine>(sim.device);
    line = l.get();
    return l;
  });
  OpenDatabase(s, site);
  auto t0 = clock::now();
  mnuSend_Click(s, comm, quiet);
  const double send = std::chrono::duration<double>(clock::now() - t0).count();
  const std::size_t sendBytes = line ? line->written + line->read : 0;
  const std::vector<FrameTimes> sendFrames = line ? line->frames : std::vector<FrameTimes>{};
  std::printf("Send:    %s\n", b.prompter.Shown().back().text.c_str());

  b.prompter.QueueAnswer(Answer::No);
  mnuFileClose_Click(s);
  comm.Exit_Comm();
  t0 = clock::now();
  mnuRx_Click(s, comm, quiet);
  const double receive = std::chrono::duration<double>(clock::now() - t0).count();
  const std::size_t receiveBytes = line ? line->written + line->read : 0;
  std::printf("Receive: %s\n", b.prompter.Shown().back().text.c_str());

  Report("Send", send, sendBytes);
  Report("Receive", receive, receiveBytes);
  Timeline(sendFrames);
  return 0;
}
