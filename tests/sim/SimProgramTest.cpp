#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "protocol/ModComm.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

using namespace std::chrono;

// Reads from fd until `done` says so or the deadline passes.
template <class Done>
std::string ReadUntil(int fd, milliseconds limit, Done done) {
  std::string got;
  const auto end = steady_clock::now() + limit;
  while (!done(got)) {
    const auto left = duration_cast<milliseconds>(end - steady_clock::now()).count();
    if (left <= 0) break;
    pollfd p{fd, POLLIN, 0};
    if (::poll(&p, 1, static_cast<int>(left)) <= 0) continue;
    char buf[64];
    const ssize_t n = ::read(fd, buf, sizeof buf);
    if (n <= 0) break;
    got.append(buf, static_cast<std::size_t>(n));
  }
  return got;
}

// The program as a child process; killed at the end whatever happens.
struct Child {
  pid_t pid = -1;
  int out = -1;
  ~Child() {
    if (pid > 0) {
      ::kill(pid, SIGKILL);
      ::waitpid(pid, nullptr, 0);
    }
    if (out >= 0) ::close(out);
  }
  // The exit status within the limit, or -1.
  int Wait(milliseconds limit) {
    const auto end = steady_clock::now() + limit;
    int status = 0;
    while (steady_clock::now() < end) {
      if (::waitpid(pid, &status, WNOHANG) == pid) {
        pid = -1;
        return status;
      }
      ::usleep(10000);
    }
    return -1;
  }
};

TEST(SimProgram, ServesTheRevisionHandshakeOnItsDeviceAndStopsOnSigterm) {
  test::TempDir dir;
  const std::string link = dir.str("unit");
  std::filesystem::create_symlink("/nonexistent", link);  // a stale link from an earlier run

  int pipeFds[2];
  ASSERT_EQ(::pipe(pipeFds), 0);
  Child child;
  child.pid = ::fork();
  ASSERT_GE(child.pid, 0);
  if (child.pid == 0) {
    ::dup2(pipeFds[1], 1);
    ::close(pipeFds[0]);
    ::execl(R6183_SIM_PATH, R6183_SIM_PATH, "--revision", "2.31", "--third", "1.02", "--card1", "2",
            "--clock-card", "--link", link.c_str(), static_cast<char*>(nullptr));
    ::_exit(127);
  }
  ::close(pipeFds[1]);
  child.out = pipeFds[0];

  const std::string first =
      ReadUntil(child.out, seconds(10), [](const std::string& s) { return s.find('\n') != std::string::npos; });
  ASSERT_NE(first.find('\n'), std::string::npos) << "no device path: " << first;
  const std::string device = first.substr(0, first.find('\n'));
  EXPECT_EQ(std::filesystem::read_symlink(link).string(), device);

  const int fd = ::open(link.c_str(), O_RDWR | O_NOCTTY);
  ASSERT_GE(fd, 0);
  termios t{};
  ASSERT_EQ(::tcgetattr(fd, &t), 0);
  ::cfmakeraw(&t);
  ASSERT_EQ(::tcsetattr(fd, TCSANOW, &t), 0);
  ASSERT_EQ(::write(fd, "H048\r\0", 6), 6);
  const std::string answer =
      ReadUntil(fd, seconds(5), [](const std::string& s) { return s.size() > 1 && s.back() == '\r'; });
  const std::string j = "J0231023101022" "1";
  EXPECT_EQ(answer, std::string(1, kAck) + j + FrameChecksum(j) + "\r");
  ASSERT_EQ(::write(fd, "\x06", 1), 1);
  ::close(fd);

  ASSERT_EQ(::kill(child.pid, SIGTERM), 0);
  const int status = child.Wait(seconds(10));
  ASSERT_NE(status, -1) << "the program did not stop";
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_FALSE(std::filesystem::is_symlink(link));
}

}  // namespace
}  // namespace r6183
