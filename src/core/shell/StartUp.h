#pragma once
// The start and the end of the program as the main window runs them: its load, its
// query-unload and its unload, in their fixed order. What needs a real window (sizes,
// the splash, the pointer) comes from the host, so the order itself is core's.
#include <cstdint>
#include <functional>
#include <string>

namespace r6183 {

class InstanceLock;
class ModComm;
class Session;

// The main window as start-up and shutdown see it. Sizes are in twips.
class MainWindowHost {
 public:
  virtual ~MainWindowHost() = default;
  virtual int32_t DesignHeight() const = 0;
  virtual int32_t DesignWidth() const = 0;
  virtual int32_t ScreenHeight() const = 0;
  virtual int32_t ScreenWidth() const = 0;
  virtual int32_t Height() const = 0;
  virtual int32_t Width() const = 0;
  virtual void Maximise() = 0;
  virtual void Resize(int32_t height, int32_t width) = 0;
  virtual void CenterScreen() = 0;
  virtual void SetIcon(const std::string& path) = 0;
  virtual void SetHourglass(bool on) = 0;
  virtual void ShowSplash() = 0;  // returns when the splash window has gone
};

// The modem calls of shutdown: release the line, and the Modem Release command.
struct ModemRelease {
  std::function<bool()> release;        // true when released
  std::function<void()> releaseCommand; // the menu's Modem Release
};

// The main window's load. False when the process must end now (no journal to be had, a
// required file missing, another instance running); the caller ends it.
bool MDIForm_Load(Session& s, MainWindowHost& host, InstanceLock& instance);

// The main window asked to close: closes the document (the operator may cancel), writes
// the settings, releases the modem, closes the port and compacts the journal; the last
// steps run even after a cancel. True when the window must stay.
bool MDIForm_QueryUnload(Session& s, MainWindowHost& host, ModComm& comm, const ModemRelease& modem);

// The main window's unload: the modem once more, then the port.
void MDIForm_Unload(Session& s, ModComm& comm, const ModemRelease& modem);

inline constexpr const char* kModemTitle = "System Configuration";

}  // namespace r6183
