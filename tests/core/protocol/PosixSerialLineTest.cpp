// The serial line on a real pseudo-terminal: the test holds the master end, the line
// opens the slave device as it would open /dev/ttyUSB0.
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <thread>

#include "protocol/PosixSerialLine.h"
#include "shell/ErrorNumbers.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

const LineSettings k9600 = LineSettings::Parse("9600,n,8,1");

class PtyTest : public ::testing::Test {
 protected:
  PtyTest() {
    master = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (master < 0 || ::grantpt(master) != 0 || ::unlockpt(master) != 0) ADD_FAILURE() << "no pseudo-terminal";
    slave = ::ptsname(master);
    ::fcntl(master, F_SETFL, ::fcntl(master, F_GETFL) | O_NONBLOCK);
  }
  ~PtyTest() override { CloseMaster(); }
  void CloseMaster() {
    if (master >= 0) ::close(master);
    master = -1;
  }
  void Send(std::string_view bytes) { ASSERT_EQ(::write(master, bytes.data(), bytes.size()), ssize_t(bytes.size())); }
  // What the line sent, up to `count` bytes or until `limit` passes.
  std::string Receive(std::size_t count, milliseconds limit = 1000ms) {
    std::string got;
    const auto end = std::chrono::steady_clock::now() + limit;
    while (got.size() < count && std::chrono::steady_clock::now() < end) {
      pollfd p{master, POLLIN, 0};
      if (::poll(&p, 1, 20) <= 0) continue;
      char buf[4096];
      const ssize_t n = ::read(master, buf, sizeof buf);
      if (n > 0) got.append(buf, std::size_t(n));
    }
    return got;
  }
  // Everything the line has received after waiting until `count` bytes or a second.
  static std::string Drain(PosixSerialLine& line, int count) {
    for (int i = 0; i < 50 && line.InputWaiting() < count; ++i) line.WaitForInput(20ms);
    std::string got;
    while (auto c = line.ReadByte()) got += *c;
    return got;
  }
  std::string GroupOfSlave() const {
    struct stat st {};
    ::stat(slave.c_str(), &st);
    const group* g = ::getgrgid(st.st_gid);
    return g ? g->gr_name : std::to_string(st.st_gid);
  }

  int master = -1;
  std::string slave;
};

TEST_F(PtyTest, BytesTravelBothWaysAndReceivedNulBytesAreDropped) {
  PosixSerialLine line(slave);
  line.Open(k9600, Handshake::None);
  ASSERT_TRUE(line.IsOpen());
  EXPECT_FALSE(line.ReadByte());
  EXPECT_EQ(line.InputWaiting(), 0);

  line.Write(std::string("AT\0\r\n", 5));
  EXPECT_EQ(Receive(5), std::string("AT\0\r\n", 5)) << "NUL bytes are sent as they are";

  Send(std::string("\0x\0y\0\0z\xff", 8));
  EXPECT_TRUE(line.WaitForInput(1000ms));
  EXPECT_EQ(Drain(line, 4), "xyz\xff");
  EXPECT_FALSE(line.ReadByte());

  // more than the pseudo-terminal holds: the write waits for the far end to read
  const std::string big(100000, 'q');
  std::string far;
  std::thread reader([&] { far = Receive(big.size(), 5000ms); });
  line.Write(big);
  reader.join();
  EXPECT_EQ(far.size(), big.size());
}

TEST_F(PtyTest, WaitForInputTimesOutOnSilenceAndReturnsEarlyForInput) {
  PosixSerialLine line(slave);
  line.Open(k9600, Handshake::None);
  auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(line.WaitForInput(50ms));
  auto took = std::chrono::steady_clock::now() - start;
  EXPECT_GE(took, 45ms);
  EXPECT_LT(took, 1000ms);
  EXPECT_FALSE(line.Vanished());

  std::thread later([&] {
    std::this_thread::sleep_for(20ms);
    Send("k");
  });
  start = std::chrono::steady_clock::now();
  EXPECT_TRUE(line.WaitForInput(5000ms));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 2000ms);
  later.join();
  EXPECT_EQ(line.ReadByte(), 'k');

  // only NUL bytes: nothing to read, so the wait runs out
  Send(std::string(3, '\0'));
  EXPECT_FALSE(line.WaitForInput(50ms));
  EXPECT_EQ(line.InputWaiting(), 0);
}

TEST_F(PtyTest, DiscardInputDropsWhatWasReceivedAndWhatTheSystemHolds) {
  PosixSerialLine line(slave);
  line.Open(k9600, Handshake::None);
  Send("old");
  ASSERT_TRUE(line.WaitForInput(1000ms));
  Send("older");
  std::this_thread::sleep_for(30ms);
  line.DiscardInput();
  EXPECT_EQ(line.InputWaiting(), 0);
  Send("new");
  EXPECT_EQ(Drain(line, 3), "new");
}

TEST_F(PtyTest, ClosingTheFarEndMakesTheDeviceVanish) {
  const std::function<void(PosixSerialLine&)> notice[] = {
      [](PosixSerialLine& l) { EXPECT_FALSE(l.WaitForInput(50ms)); },
      [](PosixSerialLine& l) { EXPECT_EQ(l.InputWaiting(), 0); },
      [](PosixSerialLine& l) { EXPECT_FALSE(l.ReadByte()); },
  };
  for (std::size_t i = 0; i < std::size(notice); ++i) {
    SCOPED_TRACE(i);
    if (master < 0) {
      master = ::posix_openpt(O_RDWR | O_NOCTTY);
      ASSERT_TRUE(master >= 0 && ::grantpt(master) == 0 && ::unlockpt(master) == 0);
      slave = ::ptsname(master);
    }
    PosixSerialLine line(slave);
    line.Open(k9600, Handshake::None);
    CloseMaster();
    notice[i](line);
    EXPECT_TRUE(line.Vanished());
    EXPECT_FALSE(line.WaitForInput(10ms));
    EXPECT_THROW(line.Write("x"), RuntimeError);
  }
}

TEST_F(PtyTest, ModemLinesAndFaultCountsAreMissingOnAPseudoTerminal) {
  PosixSerialLine line(slave);
  EXPECT_THROW(line.SetDTR(true), RuntimeError) << "not open";
  line.Open(k9600, Handshake::None);
  for (const bool on : {true, false}) {
    try {
      line.SetDTR(on);
      ADD_FAILURE() << "SetDTR(" << on << ") passed";
    } catch (const RuntimeError& e) {
      EXPECT_NE(std::string(e.what()).find(std::strerror(ENOTTY)), std::string::npos) << e.what();
      EXPECT_NE(std::string(e.what()).find(slave), std::string::npos) << e.what();
    }
  }
  EXPECT_TRUE(line.TakeLineEvents().empty());
}

TEST_F(PtyTest, OpenAppliesLineSettingsAndHandshake) {
  // a pseudo-terminal keeps speed, stop bits and flow control; it forces 8 bits, no parity
  const struct {
    std::string settings;
    Handshake handshake;
    speed_t speed;
    bool twoStops, rtscts;
    std::string received;  // of "a\x13b\x11c"
  } cases[] = {
      {"9600,n,8,1", Handshake::None, B9600, false, false, "a\x13" "b\x11" "c"},
      {"19200,e,7,2", Handshake::RequestToSend, B19200, true, true, "a\x13" "b\x11" "c"},
      {"1200,o,8,1", Handshake::XonXoff, B1200, false, false, "abc"},
      {"115200,N,5,2", Handshake::Both, B115200, true, true, "abc"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.settings);
    PosixSerialLine line(slave);
    line.Open(LineSettings::Parse(c.settings), c.handshake);
    termios t{};
    ASSERT_EQ(::tcgetattr(master, &t), 0);  // the master reports the slave's settings
    EXPECT_EQ(::cfgetospeed(&t), c.speed);
    EXPECT_EQ(::cfgetispeed(&t), c.speed);
    EXPECT_EQ(bool(t.c_cflag & CSTOPB), c.twoStops);
    EXPECT_EQ(bool(t.c_cflag & CRTSCTS), c.rtscts);
    EXPECT_FALSE(t.c_lflag & (ICANON | ECHO | ISIG));
    EXPECT_FALSE(t.c_oflag & OPOST);
    Send("a\x13" "b\x11" "c\n\r");
    EXPECT_EQ(Drain(line, int(c.received.size()) + 2), c.received + "\n\r");
    line.Write("out\n");
    EXPECT_EQ(Receive(4), "out\n") << "output runs after XON, unchanged";
    line.Close();
    EXPECT_FALSE(line.IsOpen());
  }
}

TEST(ConfigureTermiosTest, SetsRawBytesWithTheGivenFraming) {
  termios cooked{};
  cooked.c_iflag = ICRNL | IXANY | IXON | ISTRIP;
  cooked.c_oflag = OPOST | ONLCR;
  cooked.c_lflag = ICANON | ECHO | ISIG | IEXTEN;
  cooked.c_cflag = CS7 | PARENB | PARODD | CSTOPB | CRTSCTS | HUPCL;
  cooked.c_cc[VMIN] = 1;
  const struct {
    std::string settings;
    Handshake handshake;
    tcflag_t size;
    bool parity, odd, twoStops, rtscts, xonxoff;
  } cases[] = {
      {"9600,n,8,1", Handshake::None, CS8, false, false, false, false, false},
      {"9600,e,7,2", Handshake::RequestToSend, CS7, true, false, true, true, false},
      {"2400,o,8,1", Handshake::XonXoff, CS8, true, true, false, false, true},
      {"57600,n,5,1", Handshake::Both, CS5, false, false, false, true, true},
      {"300,n,6,2", Handshake::None, CS6, false, false, true, false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.settings);
    termios t = cooked;
    ConfigureTermios(t, LineSettings::Parse(c.settings), c.handshake);
    EXPECT_EQ(t.c_cflag & CSIZE, c.size);
    EXPECT_EQ(bool(t.c_cflag & PARENB), c.parity);
    EXPECT_EQ(bool(t.c_cflag & PARODD), c.odd);
    EXPECT_EQ(bool(t.c_iflag & INPCK), c.parity) << "parity errors are checked when there is parity";
    EXPECT_EQ(bool(t.c_cflag & CSTOPB), c.twoStops);
    EXPECT_EQ(bool(t.c_cflag & CRTSCTS), c.rtscts);
    EXPECT_EQ(t.c_iflag & (IXON | IXOFF), c.xonxoff ? (IXON | IXOFF) : 0u);
    EXPECT_FALSE(t.c_iflag & (IXANY | ICRNL | ISTRIP));
    EXPECT_TRUE((t.c_cflag & CLOCAL) && (t.c_cflag & CREAD));
    EXPECT_FALSE(t.c_lflag & (ICANON | ECHO | ISIG | IEXTEN));
    EXPECT_FALSE(t.c_oflag & OPOST);
    EXPECT_EQ(t.c_cc[VMIN], 0);
    EXPECT_EQ(t.c_cc[VTIME], 0);
    EXPECT_EQ(t.c_cc[VSTART], 0x11);
    EXPECT_EQ(t.c_cc[VSTOP], 0x13);
  }
  for (const char* bad : {"9600,m,8,1", "9600,s,8,1", "12345,n,8,1", "76800,n,8,1"}) {
    termios t = cooked;
    EXPECT_THROW(ConfigureTermios(t, LineSettings::Parse(bad), Handshake::None), RuntimeError) << bad;
  }
}

TEST_F(PtyTest, OpenFailuresRaiseWithTheReason) {
  TempDir dir;
  WriteFile(dir.path() / "plain", "not a device");
  const struct {
    std::string device, settings;
    int16_t number;
    std::string text;
  } cases[] = {
      {"/dev/ttyNOSUCHPORT", "9600,n,8,1", err::FileNotFound, "/dev/ttyNOSUCHPORT"},
      {dir.str("none/ttyUSB0"), "9600,n,8,1", err::FileNotFound, "none/ttyUSB0"},
      {dir.str("plain"), "9600,n,8,1", err::DeviceIoError, "not a serial device"},
      {slave, "9600,m,8,1", err::InvalidProcedureCall, "parity"},
      {slave, "9600,s,8,1", err::InvalidProcedureCall, "parity"},
      {slave, "12345,n,8,1", err::InvalidProcedureCall, "12345"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.device + " " + c.settings);
    PosixSerialLine line(c.device);
    try {
      line.Open(LineSettings::Parse(c.settings), Handshake::None);
      ADD_FAILURE() << "opened";
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.number(), c.number);
      EXPECT_NE(std::string(e.what()).find(c.text), std::string::npos) << e.what();
    }
    EXPECT_FALSE(line.IsOpen());
  }
}

TEST_F(PtyTest, AnUnreadableDeviceNamesTheGroupThatMayUseIt) {
  TempDir owned;
  const std::string expected = slave + ": permission denied; members of group " + GroupOfSlave() + " may use it";
  ASSERT_EQ(::chmod(slave.c_str(), 0), 0);
  const bool ok = AsUnprivileged(owned.path(), [&] {
    try {
      PosixSerialLine(slave).Open(k9600, Handshake::None);
    } catch (const RuntimeError& e) {
      return e.number() == err::PermissionDenied && e.what() == expected;
    }
    return false;
  });
  EXPECT_TRUE(ok) << expected;
}

TEST_F(PtyTest, ASecondProgramFindsThePortBusy) {
  TempDir owned;
  PosixSerialLine first(slave);
  first.Open(k9600, Handshake::None);
  ASSERT_EQ(::chmod(slave.c_str(), 0666), 0);
  const bool ok = AsUnprivileged(owned.path(), [&] {
    try {
      PosixSerialLine(slave).Open(k9600, Handshake::None);
    } catch (const RuntimeError& e) {
      return e.number() == err::PermissionDenied && std::string(e.what()).find("busy") != std::string::npos;
    }
    return false;
  });
  EXPECT_TRUE(ok);
  first.Close();
  PosixSerialLine again(slave);
  EXPECT_NO_THROW(again.Open(k9600, Handshake::None)) << "free once the first closed it";
}

TEST(LineSettingsTest, ParsesTheSettingsText) {
  const struct {
    std::string text;
    int baud;
    char parity;
    int dataBits, stopBits;
  } good[] = {
      {"9600,n,8,1", 9600, 'n', 8, 1},
      {" 19200 , E , 7 , 2 ", 19200, 'e', 7, 2},
      {"300,O,5,1", 300, 'o', 5, 1},
      {"110,m,6,2", 110, 'm', 6, 2},
      {"1200,s,8,1", 1200, 's', 8, 1},
  };
  for (const auto& c : good) {
    SCOPED_TRACE(c.text);
    const LineSettings s = LineSettings::Parse(c.text);
    EXPECT_EQ(s.baud, c.baud);
    EXPECT_EQ(s.parity, c.parity);
    EXPECT_EQ(s.dataBits, c.dataBits);
    EXPECT_EQ(s.stopBits, c.stopBits);
  }
  for (const char* bad : {"", "9600", "9600,n,8", "9600,n,8,1,1", "9600,x,8,1", "9600,,8,1", "9600,nn,8,1",
                          "9600,n,9,1", "9600,n,4,1", "9600,n,8,0", "9600,n,8,3", "0,n,8,1", "-9600,n,8,1",
                          "96OO,n,8,1", "9600,n,8,1.5", "9600;n;8;1"}) {
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
  const LineCounters base{3, 5, 7, 9};
  const struct {
    LineCounters after;
    std::vector<LineEvent> events;
  } cases[] = {
      {{3, 5, 7, 9}, {}},
      {{4, 5, 7, 9}, {E::Framing}},
      {{3, 8, 7, 9}, {E::Overrun}},
      {{3, 5, 8, 9}, {E::Parity}},
      {{3, 5, 7, 10}, {E::ReceiveOverflow}},
      {{9, 9, 9, 99}, {E::Framing, E::Overrun, E::Parity, E::ReceiveOverflow}},
      {{0, 0, 0, 0}, {}},  // counts restarted by the driver
  };
  for (const auto& c : cases)
    EXPECT_EQ(LineEventsBetween(base, c.after), c.events)
        << c.after.framing << ',' << c.after.overrun << ',' << c.after.parity << ',' << c.after.bufferOverrun;
}

}  // namespace
}  // namespace r6183::test
