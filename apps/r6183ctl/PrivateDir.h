#pragma once
// A private scratch directory that goes away with its object, so that commands can
// work on copies and never touch the operator's files or the desktop program's work copy.
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace r6183 {
class ModComm;
class Session;
}

namespace r6183::ctl {

class PrivateDir {
 public:
  PrivateDir() {
    std::string tmpl = (std::filesystem::temp_directory_path() / "r6183ctl-XXXXXX").string();
    if (!::mkdtemp(tmpl.data())) throw std::runtime_error("cannot make a temporary directory");
    path_ = tmpl;
  }
  ~PrivateDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
  }
  PrivateDir(const PrivateDir&) = delete;
  PrivateDir& operator=(const PrivateDir&) = delete;
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

// A copy of FILE in `dir`; raises with the reason when FILE can't be read.
std::string PrivateCopy(const std::string& file, const PrivateDir& dir);
// Copies `source` to `file` through a temporary name beside it and a rename, so that no
// half-written file is ever left; says why on failure.
bool WriteWhole(const std::string& source, const std::string& file);
// The line of a port number 1 to 16 or a device path; empty with a message when none.
std::string DeviceOf(Session& session, const std::string& port);
// After a command on a port: why the port could not be opened, when it could not.
void TellOpenFailure(const ModComm& comm, const std::string& port);
// Opens FILE as the Open command does, on a work copy in `dir`; false with the reason on stderr.
bool OpenDocument(Session& session, const std::string& file, const PrivateDir& dir);

}  // namespace r6183::ctl
