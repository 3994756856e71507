#pragma once
// A private folder for the files a fuzz target writes at every run, removed at exit. It
// lies in memory where the machine offers /dev/shm, since the settings are synced to
// the disk at each write and a disk would bring the runs down to a few a second.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace r6183::fuzz {

class ScratchDir {
 public:
  ScratchDir() {
    namespace fs = std::filesystem;
    std::error_code ec;
    const fs::path shm = "/dev/shm";
    const fs::path base = fs::is_directory(shm, ec) && ::access(shm.c_str(), W_OK) == 0 ? shm : fs::temp_directory_path();
    std::string tmpl = (base / "r6183-fuzz-XXXXXX").string();
    if (!::mkdtemp(tmpl.data())) std::abort();
    path_ = tmpl;
  }
  ~ScratchDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
  }
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace r6183::fuzz
