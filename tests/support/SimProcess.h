#pragma once
// r6183-sim as a child process on a real pseudo-terminal: started with its options, its
// device path read from its first line, killed when the test ends whatever happens.
#include <string>
#include <vector>

#include <sys/types.h>

namespace r6183::test {

class SimProcess {
 public:
  // Starts `program` with `args`; the device path is known when this returns (empty when
  // the program did not print it within a few seconds).
  SimProcess(const std::string& program, const std::vector<std::string>& args);
  ~SimProcess();
  SimProcess(const SimProcess&) = delete;
  SimProcess& operator=(const SimProcess&) = delete;

  const std::string& device() const { return device_; }
  // Asks the program to stop (SIGTERM); its exit status within a few seconds, or -1.
  int Stop();

 private:
  pid_t pid_ = -1;
  int out_ = -1;
  std::string device_;
};

// A pseudo-terminal whose far end nobody answers: a port with no unit on it.
class SilentPty {
 public:
  SilentPty();
  ~SilentPty();
  const std::string& device() const { return device_; }

 private:
  int master_ = -1;
  std::string device_;
};

}  // namespace r6183::test
