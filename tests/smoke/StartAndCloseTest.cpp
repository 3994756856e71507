// The built program on a real X server (Xvfb): it starts on a fresh application
// directory, shows its main window, is photographed, and closes cleanly on SIGTERM.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "support/TestSupport.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

pid_t Spawn(const std::vector<std::string>& args, const std::vector<std::string>& env = {}) {
  const pid_t pid = ::fork();
  if (pid == 0) {
    for (const auto& e : env) ::putenv(const_cast<char*>(e.c_str()));
    std::vector<char*> argv;
    for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    ::execvp(argv[0], argv.data());
    ::_exit(127);
  }
  return pid;
}

// The exit status within `limit`, or -1 (the process is then killed).
int WaitFor(pid_t pid, std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  int status = 0;
  while (std::chrono::steady_clock::now() < end) {
    if (::waitpid(pid, &status, WNOHANG) == pid) return WIFEXITED(status) ? WEXITSTATUS(status) : 128;
    std::this_thread::sleep_for(20ms);
  }
  ::kill(pid, SIGKILL);
  ::waitpid(pid, nullptr, 0);
  return -1;
}

bool Eventually(const std::function<bool()>& f, std::chrono::milliseconds limit) {
  for (const auto end = std::chrono::steady_clock::now() + limit; std::chrono::steady_clock::now() < end;
       std::this_thread::sleep_for(50ms))
    if (f()) return true;
  return false;
}

// An X server of the test's own: Xvfb chooses a free display itself and writes its number
// to a pipe once it accepts connections (-displayfd), so no number is guessed and no
// socket is taken for a server that is not listening yet. Its output goes to a file that
// the test shows when the server does not come up.
class Xvfb {
 public:
  Xvfb() {
    int ready[2];
    if (::pipe2(ready, O_CLOEXEC) != 0) return;
    const std::string fd = std::to_string(ready[1]);
    output_ = log_.path() / "xvfb.log";
    pid_ = ::fork();
    if (pid_ == 0) {
      ::fcntl(ready[1], F_SETFD, 0);  // the server inherits the write end only
      const int out = ::open(output_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      if (out >= 0) {
        ::dup2(out, STDOUT_FILENO);
        ::dup2(out, STDERR_FILENO);
      }
      ::execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1280x800x24", "-nolisten", "tcp",
               static_cast<char*>(nullptr));
      ::_exit(127);
    }
    ::close(ready[1]);
    // the number arrives when the server is ready; an end of file means it died first
    std::string number;
    for (char c; number.find('\n') == std::string::npos;) {
      pollfd p{ready[0], POLLIN, 0};
      if (::poll(&p, 1, 60000) <= 0 || ::read(ready[0], &c, 1) != 1) break;
      number += c;
    }
    ::close(ready[0]);
    if (number.find('\n') == std::string::npos) {
      Stop();
      return;
    }
    display_ = ":" + number.substr(0, number.find('\n'));
  }
  ~Xvfb() { Stop(); }
  bool running() const { return !display_.empty(); }
  const std::string& display() const { return display_; }
  std::string output() const { return test::ReadFile(output_); }

 private:
  void Stop() {
    if (pid_ > 0) {
      ::kill(pid_, SIGTERM);
      WaitFor(pid_, 15s);
      pid_ = -1;
    }
  }
  test::TempDir log_;
  fs::path output_;
  pid_t pid_ = -1;
  std::string display_;
};

TEST(DesktopProgram, StartsShowsItsMainWindowAndClosesCleanly) {
  Xvfb x;
  ASSERT_TRUE(x.running()) << "Xvfb did not start:\n" << x.output();
  test::TempDir dir;
  test::CopyStagedAppDir(dir.path());
  const fs::path program = dir.path() / "r6183";
  fs::copy_file(R6183_APP_PATH, program);

  const auto started = std::chrono::steady_clock::now();
  const pid_t app = Spawn({program.string()}, {"DISPLAY=" + x.display(), "QT_QPA_PLATFORM=xcb"});
  const std::string title = "Orvane R-6183 Programming Tool";
  const std::string probe =
      "xwininfo -display " + x.display() + " -name '" + title + "' 2>/dev/null | grep -q IsViewable";
  ASSERT_TRUE(Eventually([&] { return std::system(probe.c_str()) == 0; }, 30s)) << "no main window";
  const auto shown = std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - started);
  std::cout << "main window shown after " << shown.count() << " ms\n";

  // photograph the screen of the X server once the window has painted itself
  {
    ::setenv("DISPLAY", x.display().c_str(), 1);
    int argc = 1;
    char name[] = "smoke";
    char* argv[] = {name, nullptr};
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    QGuiApplication viewer(argc, argv);
    QImage shot;
    const bool painted = Eventually(
        [&] {
          shot = viewer.primaryScreen()->grabWindow(0).toImage();
          return shot.width() > 0 && shot.pixel(shot.width() / 2, shot.height() / 2) != shot.pixel(2, 2);
        },
        30s);
    fs::create_directories(R6183_TEST_OUTPUT);
    ASSERT_TRUE(shot.save(QString::fromStdString(std::string(R6183_TEST_OUTPUT) + "/main-window.png")));
    EXPECT_TRUE(painted) << "the screen stayed blank";
  }

  ::kill(app, SIGTERM);
  EXPECT_EQ(WaitFor(app, 15s), 0);
  // the shutdown ran: the settings were written and the journal compacted
  EXPECT_TRUE(fs::exists(dir.path() / "settings.ini"));
  EXPECT_TRUE(fs::exists(dir.path() / "errors.bak"));
}

}  // namespace
}  // namespace r6183
