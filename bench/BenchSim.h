#pragma once
// Shared by the transfer benchmarks: r6183-sim paced at 9600 baud as a child process, the
// port that counts the bytes both ways and times the tool's frames, and the largest
// programming as a document.
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "Largest.h"
#include "protocol/PosixSerialLine.h"

extern char** environ;

namespace r6183::bench {

using BenchClock = std::chrono::steady_clock;

// One frame of the tool: when it was written, its size, when the answer came.
struct FrameTimes {
  BenchClock::time_point written, answered;
  std::size_t bytes = 0;
};

// The port, counting the bytes both ways and timing each frame the tool writes.
class CountingLine final : public SerialLine {
 public:
  explicit CountingLine(std::string device) : line_(std::move(device)) {}
  void Open(const LineSettings& s, Handshake h) override { line_.Open(s, h); }
  void Close() override { line_.Close(); }
  bool IsOpen() const override { return line_.IsOpen(); }
  void Write(std::string_view b) override {
    written += b.size();
    line_.Write(b);
    if (b.size() > 1) frames.push_back({BenchClock::now(), {}, b.size()});
  }
  int InputWaiting() override { return line_.InputWaiting(); }
  std::optional<char> ReadByte() override {
    auto c = line_.ReadByte();
    if (c) ++read;
    if (c && !frames.empty() && frames.back().answered == BenchClock::time_point{})
      frames.back().answered = BenchClock::now();
    return c;
  }
  bool WaitForInput(std::chrono::milliseconds t) override { return line_.WaitForInput(t); }
  void DiscardInput() override { line_.DiscardInput(); }
  void DiscardOutput() override { line_.DiscardOutput(); }
  void SetDTR(bool on) override { line_.SetDTR(on); }
  std::size_t Bytes() const { return written + read; }
  std::size_t written = 0, read = 0;
  std::vector<FrameTimes> frames;

 private:
  PosixSerialLine line_;
};

// r6183-sim --pace with more options, its device reached through a link in `dir`.
struct Sim {
  Sim(const std::filesystem::path& dir, std::vector<std::string> options = {}) {
    const std::string link = (dir / "unit").string();
    std::vector<std::string> args{R6183_SIM_PATH, "--pace", "--revision", "2.31", "--link", link};
    args.insert(args.end(), options.begin(), options.end());
    std::vector<char*> argv;
    for (auto& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t fa;
    posix_spawn_file_actions_init(&fa);
    posix_spawn_file_actions_addopen(&fa, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&fa, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn(&pid, R6183_SIM_PATH, &fa, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&fa);
    for (int i = 0; i < 500 && !std::filesystem::is_symlink(link); ++i) ::usleep(10000);
    device = link;
  }
  ~Sim() {
    ::kill(pid, SIGTERM);
    ::waitpid(pid, nullptr, 0);
  }
  pid_t pid = -1;
  std::string device;
};

// Seconds the bytes need on the wire at 9600 baud, 8N1.
inline double WireSeconds(std::size_t bytes) { return static_cast<double>(bytes) * 10.0 / 9600.0; }

}  // namespace r6183::bench
