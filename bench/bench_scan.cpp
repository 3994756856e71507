// The real-time cost of Auto Find's scan: sixteen ports mapped to pseudo-terminals, the first
// fifteen silent, on port 16 the simulated unit (r6183-sim --pace), or for the modem's scan
// a modem alone (r6183-sim --modem-only --pace). The scan is run as the wizard's last page
// runs it; its time is set against the sum of the protocol's time-outs on the silent ports
// (five tries of 500 ms for the date question, 3 s for a modem's "OK") and the time of the
// probe that finds port 16 on its own.
// Run: build/bench/bench_scan
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "BenchSession.h"
#include "BenchSim.h"
#include "connectivity/CommResults.h"
#include "connectivity/Connection.h"
#include "connectivity/modModem.h"
#include "protocol/ModComm.h"
#include "protocol/PortMap.h"
#include "protocol/PosixSerialLine.h"
#include "protocol/ProgressWindow.h"
#include "shell/MainMenu.h"

using namespace r6183;
using bench::BenchClock;

namespace {

// A pseudo-terminal nobody answers on.
struct SilentPty {
  SilentPty() {
    master = ::posix_openpt(O_RDWR | O_NOCTTY);
    ::grantpt(master);
    ::unlockpt(master);
    device = ::ptsname(master);
  }
  ~SilentPty() { ::close(master); }
  int master = -1;
  std::string device;
};

double Seconds(BenchClock::duration d) { return std::chrono::duration<double>(d).count(); }

struct Figures {
  double total = 0, found = 0, slowestSilent = 0, fastestSilent = 1e9;
  std::string text;
};

Figures Run(bool modem) {
  bench::BenchSession b;
  Session& s = *b;
  s.product.ProductModel = "R-6183";
  Initialize(s);
  std::vector<std::string> options;
  if (modem) options = {"--modem-only"};
  bench::Sim sim(b.dir, options);
  std::vector<std::unique_ptr<SilentPty>> silent;
  std::string ini = "[Ports]\r\n";
  for (int n = 1; n < kPortCount; ++n) {
    silent.push_back(std::make_unique<SilentPty>());
    ini += "Com " + std::to_string(n) + "=" + silent.back()->device + "\r\n";
  }
  ini += "Com 16=" + sim.device + "\r\n";
  FILE* f = std::fopen(s.state.SettingsPath.c_str(), "wb");
  std::fputs(ini.c_str(), f);
  std::fclose(f);

  ModComm comm(s, [&s](int16_t port) -> std::unique_ptr<SerialLine> {
    return std::make_unique<PosixSerialLine>(DeviceForPort(s.journal(), s.state.SettingsPath, std::to_string(port)));
  });
  ProgressWindow quiet;
  modModem hayes(s, comm, quiet);
  Figures fig;

  // the probe of port 16 alone
  s.state.ComPortNumber = 16;
  comm.logFile.Open((b.dir / "probe.txt").string());
  auto t0 = BenchClock::now();
  const bool there = modem ? comm.Init_Comm(2) && hayes.CheckForModem(16) == 0 : CheckDate(s, comm);
  fig.found = Seconds(BenchClock::now() - t0);
  comm.logFile.Close();
  comm.Exit_Comm();
  if (!there) std::fprintf(stderr, "port 16 alone: nothing found\n");

  s.state.WizardByModem = modem ? 1 : 0;
  CommResultsModel scan(s, comm, hayes);
  auto last = BenchClock::now();
  scan.OnPortProbed = [&](int port) {
    const auto now = BenchClock::now();
    if (port < kPortCount) {
      fig.slowestSilent = std::max(fig.slowestSilent, Seconds(now - last));
      fig.fastestSilent = std::min(fig.fastestSilent, Seconds(now - last));
    }
    last = now;
  };
  t0 = BenchClock::now();
  scan.Timer1_Timer();
  fig.total = Seconds(BenchClock::now() - t0);
  fig.text = scan.txtComport.Text();
  return fig;
}

void Print(const char* name, const Figures& f, double timeout) {
  const double sum = 15 * timeout;
  std::printf("%s: %s\n", name, f.text.c_str());
  std::printf("  whole scan %6.2f s; 15 silent ports x %.1f s = %5.2f s of time-outs, port 16 alone %5.3f s\n", f.total,
              timeout, sum, f.found);
  std::printf("  ratio to the time-outs %.3f (with port 16's probe %.3f); a silent port %.3f to %.3f s; overhead "
              "%.0f ms a port\n",
              f.total / sum, f.total / (sum + f.found), f.fastestSilent, f.slowestSilent,
              (f.total - sum - f.found) * 1000 / 16);
}

}  // namespace

int main() {
  Print("Direct connect", Run(false), 2.5);
  Print("Connect by modem", Run(true), 3.0);
  return 0;
}
