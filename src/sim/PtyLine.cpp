#include "sim/PtyLine.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace r6183::sim {

namespace {
[[noreturn]] void Fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }
}  // namespace

PtyLine::PtyLine() {
  master_ = posix_openpt(O_RDWR | O_NOCTTY);
  if (master_ < 0) Fail("posix_openpt");
  try {
    if (grantpt(master_) != 0) Fail("grantpt");
    if (unlockpt(master_) != 0) Fail("unlockpt");
    const char* name = ptsname(master_);
    if (!name) Fail("ptsname");
    devicePath_ = name;
    slave_ = ::open(name, O_RDWR | O_NOCTTY);
    if (slave_ < 0) Fail("open the device end");
    termios t{};
    if (tcgetattr(slave_, &t) != 0) Fail("tcgetattr");
    cfmakeraw(&t);
    cfsetispeed(&t, B9600);
    cfsetospeed(&t, B9600);
    if (tcsetattr(slave_, TCSANOW, &t) != 0) Fail("tcsetattr");
    if (fcntl(master_, F_SETFL, fcntl(master_, F_GETFL) | O_NONBLOCK) != 0) Fail("fcntl");
  } catch (...) {
    Close();
    throw;
  }
}

PtyLine::~PtyLine() { Close(); }

void PtyLine::Close() {
  if (master_ >= 0) ::close(master_);
  if (slave_ >= 0) ::close(slave_);
  master_ = slave_ = -1;
  buffer_.clear();
}

void PtyLine::Write(std::string_view bytes) {
  while (master_ >= 0 && !bytes.empty()) {
    const ssize_t n = ::write(master_, bytes.data(), bytes.size());
    if (n > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(n));
    } else if (n < 0 && (errno == EAGAIN || errno == EINTR)) {
      pollfd p{master_, POLLOUT, 0};
      ::poll(&p, 1, 50);
    } else {
      Fail("write");
    }
  }
}

void PtyLine::Fill() {
  if (master_ < 0) return;
  char chunk[256];
  for (;;) {
    const ssize_t n = ::read(master_, chunk, sizeof chunk);
    if (n <= 0) return;  // nothing waiting (EAGAIN), or no tool on the line (EIO)
    for (ssize_t i = 0; i < n; ++i)
      if (chunk[i] != '\0') buffer_ += chunk[i];
  }
}

int PtyLine::InputWaiting() {
  Fill();
  return static_cast<int>(buffer_.size());
}

std::optional<char> PtyLine::ReadByte() {
  if (buffer_.empty()) Fill();
  if (buffer_.empty()) return std::nullopt;
  const char c = buffer_.front();
  buffer_.erase(0, 1);
  return c;
}

bool PtyLine::WaitForInput(std::chrono::milliseconds timeout) {
  if (InputWaiting() > 0) return true;
  if (master_ < 0) return false;
  pollfd p{master_, POLLIN, 0};
  const int r = ::poll(&p, 1, static_cast<int>(timeout.count()));
  return r > 0 && (p.revents & POLLIN) && InputWaiting() > 0;
}

void PtyLine::DiscardInput() {
  Fill();
  buffer_.clear();
}

}  // namespace r6183::sim
