#pragma once
// Helpers of the test programs: temporary directories that clean up after
// themselves, application directories staged from the build, sessions on them, and
// the journal read back.
#include <filesystem>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

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

// The pristine shipped files of the build (DEFAULT, errors, lists, reports, icon), not
// the application directory that programs run from the build tree change.
fs::path StagedAppDir();
// Copies the shipped files into `target`, an application directory for a test.
void CopyStagedAppDir(const fs::path& target);

void WriteFile(const fs::path& p, const std::string& bytes);
// The text of a PDF file as pdftotext reads it, the columns of a line kept apart by blanks;
// empty when it can't be read.
std::string PdfText(const fs::path& pdf);
std::string ReadFile(const fs::path& p);

// Runs `fn` as an unprivileged user when the tests run as root, since root writes,
// reads and deletes where an operator can't; `owned` (a test's own directory) is
// handed to that user meanwhile. Runs `fn` directly otherwise. Returns its result.
bool AsUnprivileged(const fs::path& owned, const std::function<bool()>& fn);

// A session on a fresh copy of the staged application directory, with a scripted
// prompter and a manual clock; `pumps` counts the events it let run.
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

// One row of the error journal; date and time default to the start of the test clock.
struct JournalRow {
  int number = 0;
  std::string description, module, program, routine, date = "11/06/2001", time = "09:30";
  bool operator==(const JournalRow&) const = default;
  friend void PrintTo(const JournalRow& r, std::ostream* os) {
    *os << r.number << '|' << r.description << '|' << r.module << '|' << r.program << '|' << r.routine
        << '|' << r.date << '|' << r.time;
  }
};
// The rows of an errors database, oldest first.
std::vector<JournalRow> JournalRows(const std::string& errorsDb);
inline std::vector<JournalRow> JournalRows(Session& s) { return JournalRows(s.state.ErrorsDbPath); }

}  // namespace r6183::test
