#include "support/SimProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

namespace r6183::test {

SimProcess::SimProcess(const std::string& program, const std::vector<std::string>& args) {
  int pipeFds[2];
  if (::pipe(pipeFds) != 0) return;
  pid_ = ::fork();
  if (pid_ == 0) {
    ::dup2(pipeFds[1], STDOUT_FILENO);
    ::close(pipeFds[0]);
    ::close(pipeFds[1]);
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    ::execv(program.c_str(), argv.data());
    ::_exit(127);
  }
  ::close(pipeFds[1]);
  out_ = pipeFds[0];
  // the first line is the device path
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  std::string line;
  while (line.find('\n') == std::string::npos && std::chrono::steady_clock::now() < end) {
    pollfd p{out_, POLLIN, 0};
    if (::poll(&p, 1, 100) <= 0) continue;
    char c;
    if (::read(out_, &c, 1) != 1) break;
    line += c;
  }
  if (line.find('\n') != std::string::npos) device_ = line.substr(0, line.find('\n'));
}

int SimProcess::Stop() {
  if (pid_ <= 0) return -1;
  ::kill(pid_, SIGTERM);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  int status = 0;
  while (std::chrono::steady_clock::now() < end) {
    if (::waitpid(pid_, &status, WNOHANG) == pid_) {
      pid_ = -1;
      return status;
    }
    ::usleep(10000);
  }
  return -1;
}

SimProcess::~SimProcess() {
  if (pid_ > 0) {
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
  }
  if (out_ >= 0) ::close(out_);
}

SilentPty::SilentPty() {
  master_ = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0) return;
  if (const char* name = ::ptsname(master_)) device_ = name;
}

SilentPty::~SilentPty() {
  if (master_ >= 0) ::close(master_);
}

}  // namespace r6183::test
