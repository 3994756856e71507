#include "support/TestSupport.h"

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>

namespace r6183::test {

TempDir::TempDir() {
  std::random_device rd;
  const auto base = fs::temp_directory_path();
  for (int i = 0; i < 100; ++i) {
    auto p = base / ("r6183-test-" + std::to_string(rd()));
    if (fs::create_directory(p)) {
      path_ = p;
      return;
    }
  }
  throw std::runtime_error("cannot make a temporary directory");
}

TempDir::~TempDir() {
  std::error_code ec;
  // make anything a test protected writable again so that it can go
  for (auto it = fs::recursive_directory_iterator(path_, ec); it != fs::recursive_directory_iterator();
       it.increment(ec))
    fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
  fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
  fs::remove_all(path_, ec);
}

fs::path StagedAppDir() { return fs::path(R6183_STAGED_APPDIR); }

void CopyStagedAppDir(const fs::path& target) {
  const fs::path src = StagedAppDir();
  for (const char* name : {"DEFAULT", "errors", "Dphonelst", "Dmodem", "r6183.ico"})
    fs::copy_file(src / name, target / name, fs::copy_options::overwrite_existing);
  fs::create_directories(target / "reports");
  for (const auto& e : fs::directory_iterator(src / "reports"))
    fs::copy_file(e.path(), target / "reports" / e.path().filename(),
                  fs::copy_options::overwrite_existing);
}

void WriteFile(const fs::path& p, const std::string& bytes) {
  std::ofstream out(p, std::ios::binary | std::ios::trunc);
  out << bytes;
}

std::string ReadFile(const fs::path& p) {
  std::ifstream in(p, std::ios::binary);
  std::stringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

namespace {
void ChownTree(const fs::path& root, uid_t uid, gid_t gid) {
  std::error_code ec;
  (void)::lchown(root.c_str(), uid, gid);
  for (auto it = fs::recursive_directory_iterator(root, ec); !ec && it != fs::recursive_directory_iterator();
       it.increment(ec))
    (void)::lchown(it->path().c_str(), uid, gid);
}
}  // namespace

bool AsUnprivileged(const fs::path& owned, const std::function<bool()>& fn) {
  if (::geteuid() != 0) return fn();
  constexpr uid_t kNobody = 65534;
  ChownTree(owned, kNobody, kNobody);
  std::fflush(nullptr);
  const pid_t pid = ::fork();
  if (pid == 0) {
    bool ok = false;
    if (::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0) {
      try {
        ok = fn();
      } catch (...) {
      }
    }
    std::_Exit(ok ? 0 : 1);
  }
  int status = 0;
  const bool waited = pid > 0 && ::waitpid(pid, &status, 0) == pid;
  ChownTree(owned, 0, 0);
  return waited && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TestSession::TestSession() {
  CopyStagedAppDir(dir.path());
  session = std::make_unique<Session>(AppDir(dir.path()), prompter, clock, [this] { ++pumps; });
}

}  // namespace r6183::test
