#pragma once
// Helpers of the test programs: temporary directories that clean up after
// themselves, application directories staged from the build, and sessions on them.
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "shell/Clock.h"
#include "shell/Prompter.h"
#include "shell/Session.h"

namespace r6183::test {

namespace fs = std::filesystem;

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  const fs::path& path() const { return path_; }
  std::string str(const std::string& name = {}) const {
    return name.empty() ? path_.string() : (path_ / name).string();
  }

 private:
  fs::path path_;
};

// The application directory that the build staged (DEFAULT, errors, lists, reports).
fs::path StagedAppDir();
// Copies the staged application directory's files into `target`.
void CopyStagedAppDir(const fs::path& target);

void WriteFile(const fs::path& p, const std::string& bytes);

// Runs `fn` as an unprivileged user when the tests run as root, since root writes,
// reads and deletes where an operator can't; `owned` (a test's own directory) is
// handed to that user meanwhile. Runs `fn` directly otherwise. Returns its result.
bool AsUnprivileged(const fs::path& owned, const std::function<bool()>& fn);
std::string ReadFile(const fs::path& p);

// A session on a fresh copy of the staged application directory, with a scripted
// prompter and a manual clock.
struct TestSession {
  TestSession();
  TempDir dir;
  ScriptedPrompter prompter;
  ManualClock clock;
  int pumps = 0;
  std::unique_ptr<Session> session;
  Session& operator*() { return *session; }
  Session* operator->() { return session.get(); }
};

}  // namespace r6183::test
