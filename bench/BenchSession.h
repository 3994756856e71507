#pragma once
// A session of the benchmarks: a scratch copy of the staged application directory
// (without documents and work copies), a real clock, and no windows.
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <string>

#include "shell/Session.h"

namespace r6183::bench {

struct BenchSession {
  BenchSession() {
    namespace fs = std::filesystem;
    std::string tmpl = (fs::temp_directory_path() / "r6183-bench-XXXXXX").string();
    dir = ::mkdtemp(tmpl.data());
    const fs::path staged(R6183_STAGED_APPDIR);
    for (const auto& e : fs::recursive_directory_iterator(staged)) {
      const auto rel = fs::relative(e.path(), staged);
      const std::string name = rel.filename().string();
      if (e.is_directory()) fs::create_directories(dir / rel);
      else if (!name.ends_with(".mdb") && name.find('~') == std::string::npos) fs::copy_file(e.path(), dir / rel);
    }
    session = std::make_unique<Session>(AppDir(dir), prompter, clock);
  }
  ~BenchSession() { std::filesystem::remove_all(dir); }
  Session& operator*() { return *session; }
  Session* operator->() { return session.get(); }

  std::filesystem::path dir;
  ScriptedPrompter prompter;
  SystemClock clock;
  std::unique_ptr<Session> session;
};

}  // namespace r6183::bench
