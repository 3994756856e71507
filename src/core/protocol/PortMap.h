#pragma once
// Port numbers 1 to 16 as the operator picks them, each mapped to a device: the
// [Ports] section of the settings file first ("Com 3=/dev/ttyUSB1"), then the
// devices found on the machine, USB adapters first.
#include <string>
#include <vector>

namespace r6183 {

class Journal;

inline constexpr int kPortCount = 16;

enum class PortTransport { Native, Usb, Bluetooth };

// A serial device found on the machine.
struct DiscoveredPort {
  std::string device;  // /dev/ttyUSB0
  PortTransport transport = PortTransport::Native;
  std::string byId;  // its /dev/serial/by-id link, if any
  std::string description;
};

struct PortInfo {
  int number = 0;
  std::string device;  // empty: no device
  std::string description;
  bool operator==(const PortInfo&) const = default;
};

// The sixteen ports, numbers 1 to 16 in order.
std::vector<PortInfo> MapPorts(Journal& journal, const std::string& settingsPath,
                               const std::vector<DiscoveredPort>& discovered);

// The serial devices of this machine, in no particular order.
std::vector<DiscoveredPort> DiscoverPorts();

// The text of a USB adapter: manufacturer, product and serial number, as far as known;
// `fallback` when none is.
std::string DescribeUsb(const std::string& manufacturer, const std::string& product,
                        const std::string& serial, const std::string& fallback);

// The device of a port given as a number 1 to 16, or a device path ("/dev/ttyS0") as
// is. Raises RuntimeError(BadFileNameOrNumber) for other text or a number with no device.
std::string DeviceForPort(const std::vector<PortInfo>& ports, const std::string& port);
// The same, over the ports of the settings file and of this machine as they are now.
std::string DeviceForPort(Journal& journal, const std::string& settingsPath, const std::string& port);

}  // namespace r6183
