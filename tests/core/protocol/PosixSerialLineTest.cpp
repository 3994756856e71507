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
#include <functional>
#include <stdexcept>
#include <utility>

#include "protocol/PosixSerialLine.h"
#include "shell/ErrorNumbers.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

const LineSettings k9600 = LineSettings::Parse("9600,n,8,1");

// The number and text of what `f` raised; 0 when it raised nothing.
std::pair<int16_t, std::string> Raised(const std::function<void()>& f) {
  try {
    f();
  } catch (const RuntimeError& e) {
    return {e.number(), e.what()};
  }
  return {0, {}};
}

class PtyTest : public ::testing::Test {
 protected:
  PtyTest() { line.Open(k9600, Handshake::None); }
  ~PtyTest() override { ::close(master); }
  void Send(std::string_view bytes) { ASSERT_EQ(::write(master, bytes.data(), bytes.size()), ssize_t(bytes.size())); }

  int master = [] {
    const int fd = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (fd < 0 || ::grantpt(fd) != 0 || ::unlockpt(fd) != 0) throw std::runtime_error("no pseudo-terminal");
    return fd;
  }();
  std::string slave = ::ptsname(master);
  PosixSerialLine line{slave};
};

TEST_F(PtyTest, BytesTravelBothWaysWithoutNulsUntilTheFarEndCloses) {
  EXPECT_FALSE(line.ReadByte());
  line.Write(std::string("AT\0\r\n", 5));
  std::string sent;  // what the line sent, or as much as came within a second
  for (const auto end = Clock::now() + 30s; sent.size() < 5 && Clock::now() < end;) {
    pollfd p{master, POLLIN, 0};
    char buf[64];
    const ssize_t n = ::poll(&p, 1, 20) > 0 ? ::read(master, buf, sizeof buf) : 0;
    if (n > 0) sent.append(buf, std::size_t(n));
  }
  EXPECT_EQ(sent, std::string("AT\0\r\n", 5)) << "NUL bytes are sent as they are";

  Send(std::string("\0x\0y\0\0z\xff", 8));
  std::string got;  // the bytes may come in pieces: read until the four are there
  for (const auto end = Clock::now() + 30s; got.size() < 4 && Clock::now() < end;) {
    line.WaitForInput(20ms);
    while (auto c = line.ReadByte()) got += *c;
  }
  EXPECT_EQ(got, "xyz\xff");

  Send(std::string(3, '\0'));  // only NUL bytes: silence, and the wait is bounded
  auto start = Clock::now();
  EXPECT_FALSE(line.WaitForInput(50ms));
  EXPECT_GE(Clock::now() - start, 45ms);
  EXPECT_EQ(line.InputWaiting(), 0);
  EXPECT_FALSE(line.Vanished());

  ::close(std::exchange(master, -1));  // the far end closes: the device vanishes
  EXPECT_FALSE(line.ReadByte());
  EXPECT_TRUE(line.Vanished());
  start = Clock::now();  // a wait of a minute would be waited out on a live line
  EXPECT_FALSE(line.WaitForInput(60s));
  EXPECT_LT(Clock::now() - start, 30s) << "no wait on a vanished device";
  EXPECT_THROW(line.Write("x"), RuntimeError);
}

// Refusals raise with the error number and a text naming the reason.
// Before each frame the tool drops stale input and output. Stale input is the unit's; but an
// ACK the tool has just written is on its way and must reach the unit even if it has not
// read it yet.
TEST_F(PtyTest, DiscardingDropsStaleInputButNotWhatWasWritten) {
  Send("stale\r");
  ASSERT_TRUE(line.WaitForInput(30s));
  line.Write("\x06");
  line.DiscardOutput();
  line.DiscardInput();
  EXPECT_EQ(line.InputWaiting(), 0);
  pollfd p{master, POLLIN, 0};
  char c = 0;
  ASSERT_EQ(::poll(&p, 1, 30000), 1);
  ASSERT_EQ(::read(master, &c, 1), 1);
  EXPECT_EQ(c, '\x06');
}

TEST_F(PtyTest, FailuresRaiseWithTheReason) {
  TempDir dir;
  WriteFile(dir.path() / "plain", "not a device");
  const auto open = [](const std::string& device, const char* settings) -> std::function<void()> {
    return [=] { PosixSerialLine(device).Open(LineSettings::Parse(settings), Handshake::None); };
  };
  const std::tuple<std::function<void()>, int16_t, std::string> cases[] = {
      {open(dir.str("none/ttyUSB0"), "9600,n,8,1"), err::FileNotFound, "none/ttyUSB0: no such device"},
      {open(dir.str("plain"), "9600,n,8,1"), err::DeviceIoError, "not a serial device"},
      {open(slave, "9600,m,8,1"), err::InvalidProcedureCall, "parity"},
      {open(slave, "12345,n,8,1"), err::InvalidProcedureCall, "12345"},
      {[&] { PosixSerialLine(slave).SetDTR(true); }, err::InvalidProcedureCall, "not open"},
      {[&] { line.SetDTR(true); }, err::DeviceIoError, slave + ": cannot set DTR: " + std::strerror(ENOTTY)},
  };
  for (const auto& [run, number, text] : cases) {
    const auto [n, what] = Raised(run);
    EXPECT_EQ(n, number) << text;
    EXPECT_NE(what.find(text), std::string::npos) << what;
  }
  EXPECT_TRUE(line.TakeLineEvents().empty()) << "a pseudo-terminal counts no faults";
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
      const auto [number, text] = Raised([&] { PosixSerialLine(slave).Open(k9600, Handshake::None); });
      return number == err::PermissionDenied && text.find(expected) != std::string::npos;
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
  const std::tuple<std::string, int, char, int, int> good[] = {
      {" 19200 , E , 7 , 2 ", 19200, 'e', 7, 2}, {"300,O,5,1", 300, 'o', 5, 1}, {"110,m,6,2", 110, 'm', 6, 2}};
  for (const auto& [text, baud, parity, dataBits, stopBits] : good) {
    const LineSettings s = LineSettings::Parse(text);
    EXPECT_EQ(std::tie(s.baud, s.parity, s.dataBits, s.stopBits), std::tie(baud, parity, dataBits, stopBits)) << text;
  }
  for (const char* bad : {"", "9600,n,8", "9600,n,8,1,1", "9600,x,8,1", "9600,nn,8,1", "9600,n,9,1", "9600,n,4,1",
                          "9600,n,8,3", "0,n,8,1", "96OO,n,8,1", "9600,n,8,1.5"})
    EXPECT_EQ(Raised([&] { LineSettings::Parse(bad); }).first, err::InvalidProcedureCall) << bad;
}

TEST(LineEventsTest, ReportsEachFaultWhoseCountGrew) {
  using E = LineEvent;
  const std::pair<LineCounters, std::vector<LineEvent>> cases[] = {  // counts after 3, 5, 7, 9
      {{3, 5, 7, 9}, {}},          {{4, 5, 7, 9}, {E::Framing}},          {{3, 8, 7, 9}, {E::Overrun}},
      {{3, 5, 8, 9}, {E::Parity}}, {{3, 5, 7, 10}, {E::ReceiveOverflow}}, {{0, 0, 0, 0}, {}},  // driver restarted
      {{9, 9, 9, 99}, {E::Framing, E::Overrun, E::Parity, E::ReceiveOverflow}},
  };
  for (const auto& [after, events] : cases)
    EXPECT_EQ(LineEventsBetween({3, 5, 7, 9}, after), events)
        << after.framing << ',' << after.overrun << ',' << after.parity << ',' << after.bufferOverrun;
}

// The unit's line is 9600,n,8,1 with no flow control; a wrong bit here silences a real unit.
TEST(ConfigureTermios, SetsSpeedFramingAndFlowControl) {
  const struct {
    const char* settings;
    Handshake handshake;
    tcflag_t size, parity;
    bool twoStops, rtsCts, xonXoff;
  } cases[] = {
      {"9600,n,8,1", Handshake::None, CS8, 0, false, false, false},
      {"9600,e,7,2", Handshake::RequestToSend, CS7, PARENB, true, true, false},
      {"9600,o,8,1", Handshake::XonXoff, CS8, PARENB | PARODD, false, false, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.settings);
    termios tio{};
    tio.c_cflag = HUPCL;  // as a serial device comes
    ConfigureTermios(tio, LineSettings::Parse(c.settings), c.handshake);
    EXPECT_EQ(cfgetospeed(&tio), B9600);
    EXPECT_EQ(cfgetispeed(&tio), B9600);
    EXPECT_EQ(tio.c_cflag & CSIZE, c.size);
    EXPECT_EQ(tio.c_cflag & (PARENB | PARODD), c.parity);
    EXPECT_EQ((tio.c_cflag & CSTOPB) != 0, c.twoStops);
    EXPECT_EQ((tio.c_cflag & CRTSCTS) != 0, c.rtsCts);
    EXPECT_EQ((tio.c_iflag & IXON) != 0, c.xonXoff);
    EXPECT_TRUE(tio.c_cflag & CLOCAL);
    EXPECT_FALSE(tio.c_cflag & HUPCL);  // closing the port leaves a modem call standing
    EXPECT_FALSE(tio.c_lflag & ICANON);  // raw: bytes as they come
  }
}

}  // namespace
}  // namespace r6183::test
