#include <gtest/gtest.h>

#include <array>

#include "protocol/PortMap.h"
#include "shell/ErrorNumbers.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

const std::string kById = "/dev/serial/by-id/";
using Found = std::vector<DiscoveredPort>;
DiscoveredPort Usb(std::string dev, std::string byId, std::string text) {
  return {std::move(dev), PortTransport::Usb, byId.empty() ? "" : kById + byId, std::move(text)};
}

// Found on the machine, deliberately out of order.
const Found kFound = {{"/dev/ttyS10", PortTransport::Native, "", "S10"}, Usb("/dev/ttyUSB1", "usb-Beta", "Beta"),
                      {"/dev/ttyS2", PortTransport::Native, "", "S2"}, Usb("/dev/ttyACM0", "", "Modem"),
                      Usb("/dev/ttyUSB0", "usb-Alpha", "Alpha"), {"/dev/rfcomm0", PortTransport::Bluetooth, "", "BT"}};

TEST(PortMapTest, SettingsFirstThenFoundDevicesUsbFirst) {
  std::string full = "[Ports]\n", fullRows;  // 14 numbers set: two left for the six found
  for (int n = 1; n <= 14; ++n) {
    full += "Com " + std::to_string(n) + "=/dev/t" + std::to_string(n) + "\n";
    fullRows += "/dev/t" + std::to_string(n) + " |";
  }
  const struct {
    std::string settings;  // "": no settings file
    Found found;
    std::string rows;  // "DEVICE DESCRIPTION|" of ports 1 on, up to the last with a device
  } cases[] = {
      {"", kFound,
       "/dev/ttyUSB0 Alpha|/dev/ttyUSB1 Beta|/dev/ttyACM0 Modem|/dev/rfcomm0 BT|/dev/ttyS2 S2|/dev/ttyS10 S10|"},
      // other sections and malformed keys ignored; names and blanks are loose; empty values free
      {"[Other]\nCom 1=/dev/X\n[ports]\r\n com 3 = /dev/ttyUSB1 \r\nCOM 4=\r\nCom 0=/a\nCom 17=/b\nCom1=/c\n", kFound,
       "/dev/ttyUSB0 Alpha|/dev/ttyACM0 Modem|/dev/ttyUSB1 Beta|/dev/rfcomm0 BT|/dev/ttyS2 S2|/dev/ttyS10 S10|"},
      // an unknown device is kept; a by-id name claims its device
      {"[Ports]\nCom 3=/dev/ttyFAKE\nCom 9=" + kById + "usb-Alpha\n", kFound,
       "/dev/ttyUSB1 Beta|/dev/ttyACM0 Modem|/dev/ttyFAKE |/dev/rfcomm0 BT|/dev/ttyS2 S2|/dev/ttyS10 S10|||" + kById +
           "usb-Alpha Alpha|"},
      {full, kFound, fullRows + "/dev/ttyUSB0 Alpha|/dev/ttyUSB1 Beta|"},
      // adapters go by their stable by-id names (numbers by value), not by kernel names
      {"",
       {Usb("/dev/ttyUSB0", "usb-Zeta", "Z"), {"/dev/ttyS1", PortTransport::Native, "", "S1"},
        Usb("/dev/ttyUSB2", "usb-Acme_10", "A10"), Usb("/dev/ttyUSB1", "usb-Acme_9", "A9"),
        Usb("/dev/ttyUSB10", "", "U10"), Usb("/dev/ttyUSB9", "", "U9")},
       "/dev/ttyUSB1 A9|/dev/ttyUSB2 A10|/dev/ttyUSB0 Z|/dev/ttyUSB9 U9|/dev/ttyUSB10 U10|/dev/ttyS1 S1|"},
  };
  TestSession ts;
  const std::string path = ts.dir.str("ports.ini");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.settings);
    if (c.settings.empty()) fs::remove(path);
    else WriteFile(path, c.settings);
    const auto ports = MapPorts(ts->journal(), path, c.found);
    ASSERT_EQ(ports.size(), std::size_t(kPortCount));
    std::string rows, tail;
    for (const PortInfo& p : ports) {
      EXPECT_EQ(p.number, &p - &ports[0] + 1);
      tail += p.device.empty() ? "|" : p.device + " " + p.description + "|";
      if (!p.device.empty()) rows += std::exchange(tail, "");
    }
    EXPECT_EQ(rows, c.rows);
  }
  EXPECT_TRUE(JournalRows(*ts).empty()) << "a missing file or section is no error";
}

TEST(PortMapTest, DeviceForPortTakesANumberOrAPath) {
  std::vector<PortInfo> ports;
  for (int n = 1; n <= kPortCount; ++n) ports.push_back({n, n <= 2 ? "/dev/ttyUSB" + std::to_string(n) : "", ""});
  EXPECT_EQ(DeviceForPort(ports, " 2 "), "/dev/ttyUSB2");
  EXPECT_EQ(DeviceForPort(ports, "/dev/ttyS7"), "/dev/ttyS7");
  for (const char* bad : {"3", "0", "17", "", "1x", "ttyUSB0"}) {
    try {
      DeviceForPort(ports, bad);
      ADD_FAILURE() << "accepted: " << bad;
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.number(), err::BadFileNameOrNumber) << bad;
    }
  }
}

TEST(PortMapTest, UsbDescriptionNamesMakerProductAndSerial) {
  const std::array<std::string, 5> cases[] = {  // maker, product, serial, fallback, text
      {"Acme", "USB Serial", "A1B2", "x", "Acme USB Serial (A1B2)"},
      {"", "USB Serial", "", "x", "USB Serial"},
      {"", "", "A1B2", "cable", "cable (A1B2)"},
      {"", "", "", "", ""}};
  for (const auto& c : cases) EXPECT_EQ(DescribeUsb(c[0], c[1], c[2], c[3]), c[4]) << c[4];
}

}  // namespace
}  // namespace r6183::test
