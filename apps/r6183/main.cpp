// r6183: the desktop program. The main window's load is the start of the process and
// its unload the end.
#include <QApplication>
#include <QSocketNotifier>

#include <sys/socket.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <string_view>

#include "gui/shell/GuiPrompter.h"
#include "gui/shell/frmMenu.h"
#include "protocol/ModComm.h"
#include "protocol/PortMap.h"
#include "protocol/PosixSerialLine.h"
#include "shell/AppDir.h"
#include "shell/Clock.h"
#include "shell/InstanceLock.h"
#include "shell/Session.h"

using namespace r6183;

namespace {
int stopPipe[2] = {-1, -1};
void OnStopSignal(int) { [[maybe_unused]] const auto n = ::write(stopPipe[1], "x", 1); }

// SIGTERM and SIGINT (a logout, a service manager) close the main window as the operator
// would, so the document is asked about and the settings are kept.
void CloseOnStopSignals(QWidget& main) {
  if (::socketpair(AF_UNIX, SOCK_STREAM, 0, stopPipe) != 0) return;
  auto* notifier = new QSocketNotifier(stopPipe[0], QSocketNotifier::Read, &main);
  QObject::connect(notifier, &QSocketNotifier::activated, &main, [&main] {
    char c;
    [[maybe_unused]] const auto n = ::read(stopPipe[0], &c, 1);
    main.close();
  });
  struct sigaction sa {};
  sa.sa_handler = OnStopSignal;
  sigemptyset(&sa.sa_mask);
  sa.sa_flags = SA_RESTART;
  sigaction(SIGTERM, &sa, nullptr);
  sigaction(SIGINT, &sa, nullptr);
}
}  // namespace

int main(int argc, char** argv) {
  // answered before any window or display is needed
  for (int i = 1; i < argc; ++i)
    if (std::string_view(argv[i]) == "--version") {
      std::printf("r6183 %s\n", R6183_VERSION);
      return 0;
    }
  QApplication app(argc, argv);
  QApplication::setApplicationName("r6183");
  const AppDir dir = AppDir::Locate("/proc/self/exe");
  gui::GuiPrompter prompter;
  SystemClock clock;
  Session session(dir, prompter, clock, [] { QCoreApplication::processEvents(); });
  // the port of the settings, mapped to its device when the line is opened
  ModComm comm(session, [&session](int16_t port) -> std::unique_ptr<SerialLine> {
    return std::make_unique<PosixSerialLine>(
        DeviceForPort(session.journal(), session.state.SettingsPath, std::to_string(port)));
  });
  InstanceLock instance(dir.DirString());
  gui::frmMenu main(session, comm, instance);
  prompter.SetParent(&main);
  CloseOnStopSignals(main);
  if (!main.MDIForm_Load()) return 1;
  main.show();
  return QApplication::exec();
}
