// The built program on a real X server (Xvfb): it starts on a fresh application
// directory, shows its main window, is photographed, and closes cleanly on SIGTERM.
#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>

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

class Xvfb {
 public:
  Xvfb() {
    for (int n = 90 + ::getpid() % 50; n < 200 && pid_ < 0; ++n) {
      if (fs::exists("/tmp/.X11-unix/X" + std::to_string(n)) || fs::exists("/tmp/.X" + std::to_string(n) + "-lock"))
        continue;
      display_ = ":" + std::to_string(n);
      pid_ = Spawn({"Xvfb", display_, "-screen", "0", "1280x800x24", "-nolisten", "tcp"});
      if (!Eventually([&] { return fs::exists("/tmp/.X11-unix/X" + std::to_string(n)); }, 5s)) {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
        pid_ = -1;
      }
    }
  }
  ~Xvfb() {
    if (pid_ > 0) {
      ::kill(pid_, SIGTERM);
      WaitFor(pid_, 5s);
    }
  }
  bool running() const { return pid_ > 0; }
  const std::string& display() const { return display_; }

 private:
  pid_t pid_ = -1;
  std::string display_;
};

TEST(DesktopProgram, StartsShowsItsMainWindowAndClosesCleanly) {
  Xvfb x;
  ASSERT_TRUE(x.running()) << "Xvfb did not start";
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

  // photograph the screen of the X server
  std::this_thread::sleep_for(500ms);
  {
    ::setenv("DISPLAY", x.display().c_str(), 1);
    int argc = 1;
    char name[] = "smoke";
    char* argv[] = {name, nullptr};
    ::setenv("QT_QPA_PLATFORM", "xcb", 1);
    QGuiApplication viewer(argc, argv);
    const QImage shot = viewer.primaryScreen()->grabWindow(0).toImage();
    fs::create_directories(R6183_TEST_OUTPUT);
    ASSERT_TRUE(shot.save(QString::fromStdString(std::string(R6183_TEST_OUTPUT) + "/main-window.png")));
    // the window is there: not a blank screen
    EXPECT_GT(shot.width(), 0);
    EXPECT_NE(shot.pixel(shot.width() / 2, shot.height() / 2), shot.pixel(2, 2));
  }

  ::kill(app, SIGTERM);
  EXPECT_EQ(WaitFor(app, 15s), 0);
  // the shutdown ran: the settings were written and the journal compacted
  EXPECT_TRUE(fs::exists(dir.path() / "settings.ini"));
  EXPECT_TRUE(fs::exists(dir.path() / "errors.bak"));
}

}  // namespace
}  // namespace r6183
