// Figures of the desktop program: the start of the main window (the start-up sequence
// without the splash window's fixed 1.8 s, up to the window on the screen), New with the
// quick menu, and the memory the process holds with a document open. Qt's offscreen
// platform unless QT_QPA_PLATFORM says otherwise. Run: build/bench/bench_startup
#include <QApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "BenchSession.h"
#include "database/DocumentCommands.h"
#include "gui/shell/frmMenu.h"
#include "protocol/ModComm.h"
#include "shell/InstanceLock.h"

using namespace r6183;

namespace {
long RssKiB() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind("VmRSS:", 0) == 0) return std::atol(line.c_str() + 6);
  return -1;
}

double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}
}  // namespace

int main(int argc, char** argv) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication app(argc, argv);
  constexpr int kRuns = 15;
  std::vector<double> start, open;
  long rssWithDocument = 0;
  for (int i = 0; i < kRuns; ++i) {
    bench::BenchSession b;
    ModComm comm(*b.session, [](int16_t) { return std::unique_ptr<SerialLine>(); });
    InstanceLock lock(b.dir.string());
    QElapsedTimer t;
    t.start();
    gui::frmMenu window(*b.session, comm, lock, 0);
    if (!window.MDIForm_Load()) {
      std::fprintf(stderr, "start-up refused\n");
      return 1;
    }
    window.show();
    QCoreApplication::processEvents();
    start.push_back(t.nsecsElapsed() / 1e6);
    b.prompter.QueueAnswer(Answer::No);
    t.restart();
    window.Click("mnuFileNew");
    QCoreApplication::processEvents();
    open.push_back(t.nsecsElapsed() / 1e6);
    rssWithDocument = std::max(rssWithDocument, RssKiB());
    b.session->state.DatabaseDirty = 0;
    b.prompter.QueueAnswer(Answer::No);
    window.close();
  }
  std::printf("main window up (start-up without the splash)  median %.1f ms over %d runs\n", Median(start), kRuns);
  std::printf("New with the quick menu                       median %.1f ms\n", Median(open));
  std::printf("resident memory with a document open          %.1f MiB\n", rssWithDocument / 1024.0);
  return 0;
}
