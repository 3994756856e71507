#pragma once
// One running tool per application directory: an exclusive lock on a file there. The
// lock goes with the process, so an instance that crashed leaves nothing held.
#include <string>

namespace r6183 {

class InstanceLock {
 public:
  explicit InstanceLock(std::string dir) : dir_(std::move(dir)) {}
  ~InstanceLock();
  InstanceLock(const InstanceLock&) = delete;
  InstanceLock& operator=(const InstanceLock&) = delete;

  // True when this process holds the lock now (also when it already did). False when
  // another process holds it; a lock file that can't be made at all doesn't stop the tool.
  bool Acquire();
  void Release();

  static constexpr const char* kFileName = ".r6183.lock";

 private:
  std::string dir_;
  int fd_ = -1;
};

}  // namespace r6183
