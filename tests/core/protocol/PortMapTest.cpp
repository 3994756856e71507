#include <gtest/gtest.h>

#include "protocol/PortMap.h"
#include "shell/ErrorNumbers.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

const std::string kById = "/dev/serial/by-id/";

// Found on the machine, deliberately out of order.
const std::vector<DiscoveredPort> kFound = {
    {"/dev/ttyS10", PortTransport::Native, "", "ttyS10"},
    {"/dev/ttyUSB1", PortTransport::Usb, kById + "usb-Beta_Adapter-if00-port0", "Beta"},
    {"/dev/ttyS2", PortTransport::Native, "", "ttyS2"},
    {"/dev/ttyACM0", PortTransport::Usb, "", "Modem"},
    {"/dev/ttyUSB0", PortTransport::Usb, kById + "usb-Alpha_Cable-if00-port0", "Alpha"},
    {"/dev/rfcomm0", PortTransport::Bluetooth, "", "Phone"},
};

// "DEVICE DESCRIPTION" of each of the sixteen ports, "" where there is no device.
std::vector<std::string> Rows(const std::vector<PortInfo>& ports) {
  std::vector<std::string> rows;
  for (std::size_t i = 0; i < ports.size(); ++i) {
    EXPECT_EQ(ports[i].number, int(i) + 1);
    rows.push_back(ports[i].device.empty() ? ports[i].description : ports[i].device + " " + ports[i].description);
  }
  return rows;
}

std::vector<std::string> Padded(std::vector<std::string> rows) {
  rows.resize(kPortCount);
  return rows;
}

TEST(PortMapTest, SettingsFirstThenFoundDevicesUsbFirst) {
  std::vector<DiscoveredPort> twice = kFound;
  twice.push_back(kFound[1]);
  twice.push_back(kFound[2]);
  const struct {
    std::string settings;  // "none": no settings file
    std::vector<DiscoveredPort> found;
    std::vector<std::string> rows;
  } cases[] = {
      {"none", kFound,
       {"/dev/ttyUSB0 Alpha", "/dev/ttyUSB1 Beta", "/dev/ttyACM0 Modem", "/dev/rfcomm0 Phone", "/dev/ttyS2 ttyS2",
        "/dev/ttyS10 ttyS10"}},
      {"none", {}, {}},
      {"[Other]\nCom 1=/dev/ttyX\n[Ports]\nCom 0=/dev/ttyY\nCom 17=/dev/ttyZ\nCom1=/dev/ttyW\n", kFound,
       {"/dev/ttyUSB0 Alpha", "/dev/ttyUSB1 Beta", "/dev/ttyACM0 Modem", "/dev/rfcomm0 Phone", "/dev/ttyS2 ttyS2",
        "/dev/ttyS10 ttyS10"}},
      {"[Ports]\nCom 1=/dev/ttyS10\n", kFound,
       {"/dev/ttyS10 ttyS10", "/dev/ttyUSB0 Alpha", "/dev/ttyUSB1 Beta", "/dev/ttyACM0 Modem", "/dev/rfcomm0 Phone",
        "/dev/ttyS2 ttyS2"}},
      {"[Ports]\nCom 3=/dev/ttyFAKE\nCom 16=" + kById + "usb-Alpha_Cable-if00-port0\n", kFound,
       {"/dev/ttyUSB1 Beta", "/dev/ttyACM0 Modem", "/dev/ttyFAKE ", "/dev/rfcomm0 Phone", "/dev/ttyS2 ttyS2",
        "/dev/ttyS10 ttyS10", "", "", "", "", "", "", "", "", "", kById + "usb-Alpha_Cable-if00-port0 Alpha"}},
      {"[ports]\r\n com 2 = /dev/ttyUSB1 \r\nCOM 4=\r\n", kFound,
       {"/dev/ttyUSB0 Alpha", "/dev/ttyUSB1 Beta", "/dev/ttyACM0 Modem", "/dev/rfcomm0 Phone", "/dev/ttyS2 ttyS2",
        "/dev/ttyS10 ttyS10"}},
      {"[Ports]\nCom 5=/dev/ttyS2\nCom 6=/dev/ttyS2\n", twice,
       {"/dev/ttyUSB0 Alpha", "/dev/ttyUSB1 Beta", "/dev/ttyACM0 Modem", "/dev/rfcomm0 Phone", "/dev/ttyS2 ttyS2",
        "/dev/ttyS2 ttyS2", "/dev/ttyS10 ttyS10"}},
      {"[Ports]\nCom 1=/dev/ttyA\nCom 2=/dev/ttyB\nCom 3=/dev/ttyC\nCom 4=/dev/ttyD\nCom 5=/dev/ttyE\n"
       "Com 6=/dev/ttyF\nCom 7=/dev/ttyG\nCom 8=/dev/ttyH\nCom 9=/dev/ttyI\nCom 10=/dev/ttyJ\nCom 11=/dev/ttyK\n"
       "Com 12=/dev/ttyL\n",
       kFound,
       {"/dev/ttyA ", "/dev/ttyB ", "/dev/ttyC ", "/dev/ttyD ", "/dev/ttyE ", "/dev/ttyF ", "/dev/ttyG ",
        "/dev/ttyH ", "/dev/ttyI ", "/dev/ttyJ ", "/dev/ttyK ", "/dev/ttyL ", "/dev/ttyUSB0 Alpha",
        "/dev/ttyUSB1 Beta", "/dev/ttyACM0 Modem", "/dev/rfcomm0 Phone"}},
  };
  TestSession ts;
  const std::string path = ts.dir.str("ports.ini");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.settings);
    if (c.settings == "none") fs::remove(path);
    else WriteFile(path, c.settings);
    EXPECT_EQ(Rows(MapPorts(ts->journal(), path, c.found)), Padded(c.rows));
  }
  EXPECT_TRUE(JournalRows(*ts).empty()) << "a missing file or section is no error";
}

TEST(PortMapTest, FreeNumbersTakeUsbAdaptersByTheirStableNames) {
  // by-id names, not kernel names, decide: ttyUSB numbers change with plugging order
  const std::vector<DiscoveredPort> found = {
      {"/dev/ttyUSB0", PortTransport::Usb, kById + "usb-Zeta-if00", "Z"},
      {"/dev/ttyS1", PortTransport::Native, "", ""},
      {"/dev/ttyUSB2", PortTransport::Usb, kById + "usb-Acme_10-if00", "A10"},
      {"/dev/ttyUSB1", PortTransport::Usb, kById + "usb-Acme_9-if00", "A9"},
      {"/dev/ttyUSB10", PortTransport::Usb, "", "no link"},
      {"/dev/ttyUSB9", PortTransport::Usb, "", "no link"},
      {"/dev/ttyS0", PortTransport::Native, "", ""},
  };
  TestSession ts;
  std::vector<std::string> devices;
  for (const PortInfo& p : MapPorts(ts->journal(), ts.dir.str("none.ini"), found))
    if (!p.device.empty()) devices.push_back(p.device);
  EXPECT_EQ(devices, (std::vector<std::string>{"/dev/ttyUSB1", "/dev/ttyUSB2", "/dev/ttyUSB0", "/dev/ttyUSB9",
                                               "/dev/ttyUSB10", "/dev/ttyS0", "/dev/ttyS1"}));
}

TEST(PortMapTest, DeviceForPortTakesANumberOrAPath) {
  std::vector<PortInfo> ports;
  for (int n = 1; n <= kPortCount; ++n) ports.push_back({n, n <= 2 ? "/dev/ttyUSB" + std::to_string(n) : "", ""});
  const std::pair<std::string, std::string> good[] = {
      {"1", "/dev/ttyUSB1"}, {" 2 ", "/dev/ttyUSB2"}, {"/dev/ttyS7", "/dev/ttyS7"}, {"/tmp/fake", "/tmp/fake"}};
  for (const auto& [port, device] : good) EXPECT_EQ(DeviceForPort(ports, port), device) << port;
  for (const char* bad : {"3", "16", "0", "17", "-1", "", "one", "1x", "dev/ttyS0", "ttyUSB0"}) {
    try {
      DeviceForPort(ports, bad);
      ADD_FAILURE() << "accepted: " << bad;
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.number(), err::BadFileNameOrNumber) << bad;
    }
  }
}

TEST(PortMapTest, UsbDescriptionNamesMakerProductAndSerial) {
  const struct {
    std::string manufacturer, product, serial, fallback, text;
  } cases[] = {
      {"Acme", "USB Serial", "A1B2", "x", "Acme USB Serial (A1B2)"},
      {"Acme", "", "", "x", "Acme"},
      {"", "USB Serial", "", "x", "USB Serial"},
      {"", "", "A1B2", "cable", "cable (A1B2)"},
      {"", "", "", "cable", "cable"},
      {"", "", "", "", ""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(DescribeUsb(c.manufacturer, c.product, c.serial, c.fallback), c.text) << c.text;
}

}  // namespace
}  // namespace r6183::test
