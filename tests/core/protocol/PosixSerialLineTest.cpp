// The serial line on a real pseudo-terminal: the test holds the master end, the line
// opens the slave device as it would open /dev/ttyUSB0.
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <termios.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "protocol/PosixSerialLine.h"
#include "shell/ErrorNumbers.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

const LineSettings k9600 = LineSettings::Parse("9600,n,8,1");

class PtyTest : public ::testing::Test {
 protected:
  PtyTest() { line.Open(k9600, Handshake::None); }
  static int OpenMaster() {
    const int fd = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (fd < 0 || ::grantpt(fd) != 0 || ::unlockpt(fd) != 0) throw std::runtime_error("no pseudo-terminal");
    return fd;
  }
  ~PtyTest() override { ::close(master); }
  void Send(std::string_view bytes) { ASSERT_EQ(::write(master, bytes.data(), bytes.size()), ssize_t(bytes.size())); }
  // What the line sent, up to `count` bytes or a second.
  std::string Receive(std::size_t count) {
    std::string got;
    for (const auto end = Clock::now() + 1s; got.size() < count && Clock::now() < end;) {
      pollfd p{master, POLLIN, 0};
      char buf[64];
      const ssize_t n = ::poll(&p, 1, 20) > 0 ? ::read(master, buf, sizeof buf) : 0;
      if (n > 0) got.append(buf, std::size_t(n));
    }
    return got;
  }

  int master = OpenMaster();
  std::string slave = ::ptsname(master);
  PosixSerialLine line{slave};
};

TEST_F(PtyTest, BytesTravelBothWaysNulBytesAreDroppedAndSilenceIsBounded) {
  EXPECT_FALSE(line.ReadByte());
  line.Write(std::string("AT\0\r\n", 5));
  EXPECT_EQ(Receive(5), std::string("AT\0\r\n", 5)) << "NUL bytes are sent as they are";

  Send(std::string("\0x\0y\0\0z\xff", 8));
  ASSERT_TRUE(line.WaitForInput(1000ms));
  for (int i = 0; i < 50 && line.InputWaiting() < 4; ++i) line.WaitForInput(20ms);
  std::string got;
  while (auto c = line.ReadByte()) got += *c;
  EXPECT_EQ(got, "xyz\xff");

  Send(std::string(3, '\0'));  // only NUL bytes: silence, and the wait is bounded
  const auto start = Clock::now();
  EXPECT_FALSE(line.WaitForInput(50ms));
  EXPECT_GE(Clock::now() - start, 45ms);
  EXPECT_LT(Clock::now() - start, 1000ms);
  EXPECT_EQ(line.InputWaiting(), 0);
  EXPECT_FALSE(line.Vanished());
}

TEST_F(PtyTest, ClosingTheFarEndMakesTheDeviceVanish) {
  ::close(master);
  master = -1;
  EXPECT_FALSE(line.ReadByte());
  EXPECT_TRUE(line.Vanished());
  const auto start = Clock::now();
  EXPECT_FALSE(line.WaitForInput(1000ms));
  EXPECT_LT(Clock::now() - start, 500ms) << "no wait on a vanished device";
  EXPECT_THROW(line.Write("x"), RuntimeError);
}

TEST_F(PtyTest, SetDtrRaisesWhereThereIsNoModemLine) {
  EXPECT_THROW(PosixSerialLine(slave).SetDTR(true), RuntimeError) << "not open";
  try {
    line.SetDTR(true);
    ADD_FAILURE() << "SetDTR passed";
  } catch (const RuntimeError& e) {
    EXPECT_EQ(e.what(), slave + ": cannot set DTR: " + std::strerror(ENOTTY));
  }
  EXPECT_TRUE(line.TakeLineEvents().empty());
}

TEST_F(PtyTest, OpenFailuresRaiseWithTheReason) {
  TempDir dir;
  WriteFile(dir.path() / "plain", "not a device");
  const struct {
    std::string device, settings;
    int16_t number;
    std::string text;
  } cases[] = {
      {dir.str("none/ttyUSB0"), "9600,n,8,1", err::FileNotFound, "none/ttyUSB0"},
      {dir.str("plain"), "9600,n,8,1", err::DeviceIoError, "not a serial device"},
      {slave, "9600,m,8,1", err::InvalidProcedureCall, "parity"},
      {slave, "12345,n,8,1", err::InvalidProcedureCall, "12345"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.device + " " + c.settings);
    PosixSerialLine other(c.device);
    try {
      other.Open(LineSettings::Parse(c.settings), Handshake::None);
      ADD_FAILURE() << "opened";
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.number(), c.number);
      EXPECT_NE(std::string(e.what()).find(c.text), std::string::npos) << e.what();
    }
  }
}

// As an operator: a device without permission names the group that may use it; one
// another program holds is busy until it closes.
TEST_F(PtyTest, OpenAsAnOperatorNamesTheGroupOrTheBusyPort) {
  struct stat st {};
  ASSERT_EQ(::stat(slave.c_str(), &st), 0);
  const group* g = ::getgrgid(st.st_gid);
  const std::string group = g ? g->gr_name : std::to_string(st.st_gid);
  auto openAs = [&](const std::string& expected) {
    TempDir owned;
    return AsUnprivileged(owned.path(), [&] {
      try {
        PosixSerialLine(slave).Open(k9600, Handshake::None);
      } catch (const RuntimeError& e) {
        return e.number() == err::PermissionDenied && std::string(e.what()).find(expected) != std::string::npos;
      }
      return false;
    });
  };
  ASSERT_EQ(::chmod(slave.c_str(), 0), 0);
  EXPECT_TRUE(openAs(slave + ": permission denied; members of group " + group + " may use it"));
  ASSERT_EQ(::chmod(slave.c_str(), 0666), 0);
  EXPECT_TRUE(openAs("busy"));
  line.Close();
  EXPECT_NO_THROW(PosixSerialLine(slave).Open(k9600, Handshake::None)) << "free once the first closed it";
}

TEST(LineSettingsTest, ParsesTheSettingsText) {
  const struct {
    std::string text;
    int baud;
    char parity;
    int dataBits, stopBits;
  } good[] = {{" 19200 , E , 7 , 2 ", 19200, 'e', 7, 2}, {"300,O,5,1", 300, 'o', 5, 1}, {"110,m,6,2", 110, 'm', 6, 2}};
  for (const auto& c : good) {
    const LineSettings s = LineSettings::Parse(c.text);
    EXPECT_EQ(std::tie(s.baud, s.parity, s.dataBits, s.stopBits), std::tie(c.baud, c.parity, c.dataBits, c.stopBits))
        << c.text;
  }
  for (const char* bad : {"", "9600,n,8", "9600,n,8,1,1", "9600,x,8,1", "9600,nn,8,1", "9600,n,9,1", "9600,n,4,1",
                          "9600,n,8,3", "0,n,8,1", "96OO,n,8,1", "9600,n,8,1.5"}) {
    try {
      LineSettings::Parse(bad);
      ADD_FAILURE() << "parsed: " << bad;
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.number(), err::InvalidProcedureCall) << bad;
    }
  }
}

TEST(LineEventsTest, ReportsEachFaultWhoseCountGrew) {
  using E = LineEvent;
  const struct {
    LineCounters after;  // of 3, 5, 7, 9
    std::vector<LineEvent> events;
  } cases[] = {
      {{3, 5, 7, 9}, {}},          {{4, 5, 7, 9}, {E::Framing}},          {{3, 8, 7, 9}, {E::Overrun}},
      {{3, 5, 8, 9}, {E::Parity}}, {{3, 5, 7, 10}, {E::ReceiveOverflow}}, {{0, 0, 0, 0}, {}},  // driver restarted
      {{9, 9, 9, 99}, {E::Framing, E::Overrun, E::Parity, E::ReceiveOverflow}},
  };
  for (const auto& c : cases)
    EXPECT_EQ(LineEventsBetween({3, 5, 7, 9}, c.after), c.events)
        << c.after.framing << ',' << c.after.overrun << ',' << c.after.parity << ',' << c.after.bufferOverrun;
}

// The unit's line is 9600,n,8,1 with no flow control; a wrong bit here silences a real unit.
TEST(ConfigureTermios, SetsSpeedFramingAndFlowControl) {
  struct Case {
    const char* settings;
    Handshake handshake;
    tcflag_t size, parity;
    bool twoStops, rtsCts, xonXoff;
  };
  const Case cases[] = {
      {"9600,n,8,1", Handshake::None, CS8, 0, false, false, false},
      {"9600,e,7,2", Handshake::RequestToSend, CS7, PARENB, true, true, false},
      {"9600,o,8,1", Handshake::XonXoff, CS8, PARENB | PARODD, false, false, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.settings);
    termios tio{};
    ConfigureTermios(tio, LineSettings::Parse(c.settings), c.handshake);
    EXPECT_EQ(cfgetospeed(&tio), B9600);
    EXPECT_EQ(cfgetispeed(&tio), B9600);
    EXPECT_EQ(tio.c_cflag & CSIZE, c.size);
    EXPECT_EQ(tio.c_cflag & (PARENB | PARODD), c.parity);
    EXPECT_EQ((tio.c_cflag & CSTOPB) != 0, c.twoStops);
    EXPECT_EQ((tio.c_cflag & CRTSCTS) != 0, c.rtsCts);
    EXPECT_EQ((tio.c_iflag & IXON) != 0, c.xonXoff);
    EXPECT_TRUE(tio.c_cflag & CLOCAL);
    EXPECT_FALSE(tio.c_lflag & ICANON);  // raw: bytes as they come
  }
}

}  // namespace
}  // namespace r6183::test
