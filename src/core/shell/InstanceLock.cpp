#include "shell/InstanceLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace r6183 {

InstanceLock::~InstanceLock() { Release(); }

bool InstanceLock::Acquire() {
  if (fd_ >= 0) return true;
  const std::string path = dir_ + "/" + kFileName;
  const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (fd < 0) return true;  // a read-only directory: nothing to lock, nothing to refuse
  if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
    const int e = errno;
    ::close(fd);
    return e != EWOULDBLOCK;
  }
  fd_ = fd;
  return true;
}

void InstanceLock::Release() {
  if (fd_ < 0) return;
  ::flock(fd_, LOCK_UN);
  ::close(fd_);
  fd_ = -1;
}

}  // namespace r6183
