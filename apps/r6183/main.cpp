// r6183: the desktop program. The main window's load is the start of the process and
// its unload the end.
#include <QApplication>

#include <memory>

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

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("r6183");
  const AppDir dir = AppDir::Locate("/proc/self/exe");
  gui::GuiPrompter prompter;
  SystemClock clock;
  Session session(dir, prompter, clock, [] { QCoreApplication::processEvents(); });
  // the port of the settings, mapped to its device when the line is opened
  ModComm comm(session, [&session](int16_t port) -> std::unique_ptr<SerialLine> {
    const auto ports = MapPorts(session.journal(), session.state.SettingsPath, DiscoverPorts());
    return std::make_unique<PosixSerialLine>(DeviceForPort(ports, std::to_string(port)));
  });
  InstanceLock instance(dir.DirString());
  gui::frmMenu main(session, comm, instance);
  prompter.SetParent(&main);
  if (!main.MDIForm_Load()) return 1;
  main.show();
  return QApplication::exec();
}
