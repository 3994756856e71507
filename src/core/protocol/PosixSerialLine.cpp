#include "protocol/PosixSerialLine.h"

#include <fcntl.h>
#include <grp.h>
#include <linux/serial.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "shell/ErrorNumbers.h"

namespace r6183 {

namespace {

using SteadyClock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kWriteLimit{2000};

std::string ErrnoText(int e) { return std::strerror(e); }

speed_t SpeedOf(int baud) {
  static const std::pair<int, speed_t> speeds[] = {
      {50, B50},         {75, B75},         {110, B110},       {134, B134},       {150, B150},
      {200, B200},       {300, B300},       {600, B600},       {1200, B1200},     {1800, B1800},
      {2400, B2400},     {4800, B4800},     {9600, B9600},     {19200, B19200},   {38400, B38400},
      {57600, B57600},   {115200, B115200}, {230400, B230400}, {460800, B460800}, {921600, B921600},
  };
  for (const auto& [b, s] : speeds)
    if (b == baud) return s;
  throw RuntimeError(err::InvalidProcedureCall, "unsupported baud rate " + std::to_string(baud));
}

tcflag_t DataBitsOf(int bits) {
  switch (bits) {
    case 5: return CS5;
    case 6: return CS6;
    case 7: return CS7;
    case 8: return CS8;
  }
  throw RuntimeError(err::InvalidProcedureCall, "unsupported data bits " + std::to_string(bits));
}

// The group of the device file, by name where it has one.
std::string GroupOf(const std::string& device) {
  struct stat st {};
  if (::stat(device.c_str(), &st) != 0) return {};
  if (const group* g = ::getgrgid(st.st_gid)) return g->gr_name;
  return std::to_string(st.st_gid);
}

[[noreturn]] void RaiseOpenError(const std::string& device, int e) {
  switch (e) {
    case ENOENT:
    case ENOTDIR:
    case ENXIO:
    case ENODEV:
      throw RuntimeError(err::FileNotFound, device + ": no such device");
    case EACCES:
    case EPERM: {
      const std::string group = GroupOf(device);
      throw RuntimeError(err::PermissionDenied,
                         device + ": permission denied" +
                             (group.empty() ? "" : "; members of group " + group + " may use it"));
    }
    case EBUSY:
      throw RuntimeError(err::PermissionDenied, device + ": busy, another program is using it");
  }
  throw RuntimeError(err::DeviceIoError, device + ": " + ErrnoText(e));
}

// The device end of a pseudo-terminal (the simulated unit, a modem emulator).
bool IsPseudoTerminal(int fd) {
  struct stat st {};
  if (::fstat(fd, &st) != 0 || !S_ISCHR(st.st_mode)) return false;
  const unsigned m = major(st.st_rdev);
  return m >= 136 && m <= 143;
}

bool IsGone(int e) { return e == EIO || e == ENXIO || e == ENODEV; }

}  // namespace

std::vector<LineEvent> LineEventsBetween(const LineCounters& before, const LineCounters& after) {
  std::vector<LineEvent> events;
  if (after.framing > before.framing) events.push_back(LineEvent::Framing);
  if (after.overrun > before.overrun) events.push_back(LineEvent::Overrun);
  if (after.parity > before.parity) events.push_back(LineEvent::Parity);
  if (after.bufferOverrun > before.bufferOverrun) events.push_back(LineEvent::ReceiveOverflow);
  return events;
}

void ConfigureTermios(termios& tio, const LineSettings& settings, Handshake handshake) {
  const speed_t speed = SpeedOf(settings.baud);
  const tcflag_t dataBits = DataBitsOf(settings.dataBits);
  tcflag_t parity = 0;
  switch (settings.parity) {
    case 'n': break;
    case 'e': parity = PARENB; break;
    case 'o': parity = PARENB | PARODD; break;
    default:
      throw RuntimeError(err::InvalidProcedureCall, std::string("unsupported parity ") + settings.parity);
  }
  if (settings.stopBits != 1 && settings.stopBits != 2)
    throw RuntimeError(err::InvalidProcedureCall, "unsupported stop bits " + std::to_string(settings.stopBits));

  ::cfmakeraw(&tio);
  // HUPCL off: closing the port never drops DTR, so a modem call outlives the program
  // that dialled it until it is released (r6183ctl dial, then send, then release)
  tio.c_cflag &= ~(CSIZE | PARENB | PARODD | CSTOPB | CRTSCTS | HUPCL);
  tio.c_cflag |= dataBits | parity | CLOCAL | CREAD;
  if (settings.stopBits == 2) tio.c_cflag |= CSTOPB;
  tio.c_iflag &= ~(IXON | IXOFF | IXANY | INPCK);
  if (parity) tio.c_iflag |= INPCK;
  if (handshake == Handshake::RequestToSend || handshake == Handshake::Both) tio.c_cflag |= CRTSCTS;
  if (handshake == Handshake::XonXoff || handshake == Handshake::Both) tio.c_iflag |= IXON | IXOFF;
  tio.c_cc[VSTART] = 0x11;
  tio.c_cc[VSTOP] = 0x13;
  tio.c_cc[VMIN] = 0;
  tio.c_cc[VTIME] = 0;
  ::cfsetispeed(&tio, speed);
  ::cfsetospeed(&tio, speed);
}

PosixSerialLine::~PosixSerialLine() { Close(); }

void PosixSerialLine::Open(const LineSettings& settings, Handshake handshake) {
  Close();
  vanished_ = false;
  termios tio{};
  ConfigureTermios(tio, settings, handshake);  // bad settings raise before the device is touched
  const int fd = ::open(device_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) RaiseOpenError(device_, errno);
  auto fail = [&](const std::string& text) {
    const int e = errno;
    ::close(fd);
    throw RuntimeError(err::DeviceIoError, device_ + ": " + text + " (" + ErrnoText(e) + ")");
  };
  if (::tcgetattr(fd, &tio) != 0) fail("not a serial device");
  ConfigureTermios(tio, settings, handshake);
  ::ioctl(fd, TIOCEXCL);  // no second program on the same port
  if (::tcsetattr(fd, TCSANOW, &tio) != 0) fail("cannot set the line settings");

  fd_ = fd;
  baud_ = settings.baud;
  pseudo_ = IsPseudoTerminal(fd);
  input_.clear();
  counters_ = ReadCounters(last_);
}

void PosixSerialLine::Close() {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
  input_.clear();
}

void PosixSerialLine::RequireOpen() const {
  if (fd_ < 0) throw RuntimeError(err::InvalidProcedureCall, device_ + ": the port is not open");
}

void PosixSerialLine::Fill() {
  if (fd_ < 0 || vanished_) return;
  char buf[512];
  for (;;) {
    const ssize_t n = ::read(fd_, buf, sizeof buf);
    if (n > 0) {
      for (ssize_t i = 0; i < n; ++i)
        if (buf[i] != '\0') input_.push_back(buf[i]);
      continue;
    }
    if (n < 0 && errno == EINTR) continue;
    if (n < 0 && IsGone(errno)) vanished_ = true;
    // a hung-up device may read as empty: ask whether it is still there
    pollfd p{fd_, POLLIN, 0};
    if (!vanished_ && ::poll(&p, 1, 0) > 0 && (p.revents & (POLLHUP | POLLERR | POLLNVAL))) vanished_ = true;
    return;
  }
}

int PosixSerialLine::InputWaiting() {
  Fill();
  return static_cast<int>(input_.size());
}

std::optional<char> PosixSerialLine::ReadByte() {
  if (input_.empty()) Fill();
  if (input_.empty()) return std::nullopt;
  const char c = input_.front();
  input_.pop_front();
  return c;
}

bool PosixSerialLine::WaitForInput(std::chrono::milliseconds timeout) {
  Fill();
  if (!input_.empty()) return true;
  if (fd_ < 0 || vanished_) return false;
  const auto deadline = SteadyClock::now() + timeout;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - SteadyClock::now());
    pollfd p{fd_, POLLIN, 0};
    const int r = ::poll(&p, 1, static_cast<int>(std::max<long long>(0, left.count())));
    if (r < 0 && errno == EINTR) continue;
    if (r < 0) return false;
    if (r > 0) {
      Fill();
      if (p.revents & (POLLHUP | POLLERR | POLLNVAL)) vanished_ = true;
      if (!input_.empty()) return true;
      if (vanished_) return false;
    }
    if (left.count() <= 0) return false;
  }
}

void PosixSerialLine::Write(std::string_view bytes) {
  RequireOpen();
  if (vanished_) throw RuntimeError(err::DeviceIoError, device_ + ": the device has gone");
  const auto deadline = SteadyClock::now() + kWriteLimit;
  while (!bytes.empty()) {
    const ssize_t n = ::write(fd_, bytes.data(), bytes.size());
    if (n > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(n));
      continue;
    }
    const int e = n < 0 ? errno : EAGAIN;
    if (e == EINTR) continue;
    if (e != EAGAIN && e != EWOULDBLOCK) {
      if (IsGone(e)) vanished_ = true;
      throw RuntimeError(err::DeviceIoError, device_ + ": write failed: " + ErrnoText(e));
    }
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - SteadyClock::now());
    if (left.count() <= 0) throw RuntimeError(err::DeviceIoError, device_ + ": write timed out");
    pollfd p{fd_, POLLOUT, 0};
    ::poll(&p, 1, static_cast<int>(left.count()));
  }
}

void PosixSerialLine::DiscardInput() {
  if (fd_ >= 0) ::tcflush(fd_, TCIFLUSH);
  input_.clear();
}

void PosixSerialLine::DiscardOutput() {
  // Every Write hands over a whole message, so what is still queued is bytes on their way, not
  // stale ones: give them the time the wire needs and drop only what is stuck behind the
  // handshake. A pseudo-terminal has no wire: what was written already sits with the other end,
  // and flushing there would take back an ACK that the other end has not read yet.
  if (fd_ < 0 || pseudo_) return;
  const auto deadline = SteadyClock::now() + std::chrono::milliseconds(20);
  int queued = 0;
  if (::ioctl(fd_, TIOCOUTQ, &queued) == 0 && queued > 0) {
    const auto wire = std::chrono::milliseconds(1 + queued * 10 * 1000 / std::max(1, baud_));
    while (SteadyClock::now() < deadline + wire && ::ioctl(fd_, TIOCOUTQ, &queued) == 0 && queued > 0)
      ::poll(nullptr, 0, 1);
  }
  ::tcflush(fd_, TCOFLUSH);
}

void PosixSerialLine::SetDTR(bool on) {
  RequireOpen();
  int bits = TIOCM_DTR;
  if (::ioctl(fd_, on ? TIOCMBIS : TIOCMBIC, &bits) != 0)
    throw RuntimeError(err::DeviceIoError, device_ + ": cannot set DTR: " + ErrnoText(errno));
}

bool PosixSerialLine::ReadCounters(LineCounters& c) const {
  serial_icounter_struct ic{};
  if (fd_ < 0 || ::ioctl(fd_, TIOCGICOUNT, &ic) != 0) return false;
  c = {ic.frame, ic.overrun, ic.parity, ic.buf_overrun};
  return true;
}

std::vector<LineEvent> PosixSerialLine::TakeLineEvents() {
  LineCounters now;
  if (!counters_ || !ReadCounters(now)) return {};
  auto events = LineEventsBetween(last_, now);
  last_ = now;
  return events;
}

}  // namespace r6183
