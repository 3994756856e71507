#include "support/TestSupport.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace r6183::test {

TempDir::TempDir() {
  std::string tmpl = (fs::temp_directory_path() / "r6183-test-XXXXXX").string();
  if (!::mkdtemp(tmpl.data())) throw std::runtime_error("cannot make a temporary directory");
  path_ = tmpl;
}

TempDir::~TempDir() {
  std::error_code ec;
  // make anything a test protected writable again so that it can go
  fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
  for (fs::recursive_directory_iterator it(path_, ec), end; !ec && it != end; it.increment(ec))
    fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
  fs::remove_all(path_, ec);
}

std::string PdfText(const fs::path& pdf) {
  const std::string command = "pdftotext -layout -enc UTF-8 '" + pdf.string() + "' - 2>/dev/null";
  std::string out;
  if (FILE* p = ::popen(command.c_str(), "r")) {
    char buf[4096];
    for (std::size_t n; (n = std::fread(buf, 1, sizeof buf, p)) > 0;) out.append(buf, n);
    ::pclose(p);
  }
  return out;
}

fs::path StagedAppDir() { return fs::path(R6183_STAGED_APPDIR); }

void CopyStagedAppDir(const fs::path& target) {
  const fs::path src = StagedAppDir();
  for (const char* name : {"DEFAULT", "errors", "Dphonelst", "Dmodem", "r6183.ico"})
    fs::copy_file(src / name, target / name, fs::copy_options::overwrite_existing);
  for (const char* folder : {"reports", "help"})
    fs::copy(src / folder, target / folder, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
}

void WriteFile(const fs::path& p, const std::string& bytes) {
  std::ofstream(p, std::ios::binary | std::ios::trunc) << bytes;
}

std::string ReadFile(const fs::path& p) {
  std::ifstream in(p, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

namespace {
void ChownTree(const fs::path& root, uid_t id) {
  std::error_code ec;
  (void)::lchown(root.c_str(), id, id);
  for (fs::recursive_directory_iterator it(root, ec), end; !ec && it != end; it.increment(ec))
    (void)::lchown(it->path().c_str(), id, id);
}
}  // namespace

bool AsUnprivileged(const fs::path& owned, const std::function<bool()>& fn) {
  if (::geteuid() != 0) return fn();
  constexpr uid_t kNobody = 65534;
  ChownTree(owned, kNobody);
  std::fflush(nullptr);
  const pid_t pid = ::fork();
  if (pid == 0) {
    bool ok = false;
    try {
      ok = ::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0 && fn();
    } catch (...) {
    }
    std::_Exit(ok ? 0 : 1);
  }
  int status = 0;
  const bool waited = pid > 0 && ::waitpid(pid, &status, 0) == pid;
  ChownTree(owned, 0);
  return waited && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TestSession::TestSession() {
  CopyStagedAppDir(dir.path());
  session = std::make_unique<Session>(AppDir(dir.path()), prompter, clock, [this] { ++pumps; });
}

std::vector<JournalRow> JournalRows(const std::string& errorsDb) {
  SQLite::Database db(errorsDb, SQLite::OPEN_READONLY);
  SQLite::Statement q(db, "SELECT errno, errdesc, errmodule, ErrProgram, errfcn, errdate, errTime "
                          "FROM \"Error\" ORDER BY rowid");
  std::vector<JournalRow> rows;
  const auto text = [&](int i) { return q.getColumn(i).getString(); };
  while (q.executeStep())
    rows.push_back({q.getColumn(0).getInt(), text(1), text(2), text(3), text(4), text(5), text(6)});
  return rows;
}

}  // namespace r6183::test
