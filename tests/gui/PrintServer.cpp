#include "PrintServer.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

extern char** environ;

namespace r6183::gui::test {

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

void Write(const fs::path& p, const std::string& text) { std::ofstream(p) << text; }

// A poll of a condition that comes true within moments once it can.
void Breathe() { std::this_thread::sleep_for(std::chrono::milliseconds(50)); }

}  // namespace

void UseCupsServer(const std::string& server) {
  ::setenv("CUPS_SERVER", server.c_str(), 1);
  // The print client keeps the server it found first for the life of the process; have it
  // read the variable again (Qt's print support reaches the same library).
  if (void* cups = ::dlopen("libcups.so.2", RTLD_NOW))
    if (auto* set = reinterpret_cast<void (*)(const char*)>(::dlsym(cups, "cupsSetServer"))) set(nullptr);
}

PrintServer::PrintServer() {
  if (const char* p = std::getenv("CUPS_SERVER")) {
    previous_ = p;
    hadPrevious_ = true;
  }
  if (::geteuid() != 0) {
    failure_ = "printing through the PDF printer needs root: its backend runs as root";
    return;
  }
  // under /tmp: a socket path has room for about a hundred characters
  char tmpl[] = "/tmp/r6183-cups-XXXXXX";
  if (!::mkdtemp(tmpl)) {
    failure_ = "no temporary directory";
    return;
  }
  dir_ = tmpl;
  name_ = "r6183-" + dir_.filename().string().substr(std::string("r6183-cups-").size());
  socket_ = (dir_ / "cups.sock").string();
  ::chmod(dir_.c_str(), 0755);  // the filters run as lp
  for (const char* d : {"spool", "cache", "state", "log", "out", "tmp", "cups-pdf"}) fs::create_directory(dir_ / d);
  ::chmod((dir_ / "tmp").c_str(), 01777);
  const std::string d = dir_.string();
  Write(dir_ / "cups-files.conf", "ServerRoot " + d + "\nRequestRoot " + d + "/spool\nCacheDir " + d +
                                      "/cache\nStateDir " + d + "/state\nTempDir " + d + "/tmp\nErrorLog " + d +
                                      "/log/error_log\nAccessLog " + d + "/log/access_log\nPageLog " + d +
                                      "/log/page_log\nPrintcap " + d +
                                      "/printcap\nServerBin /usr/lib/cups\nDataDir /usr/share/cups\n"
                                      "FileDevice No\nUser lp\nGroup lp\nSystemGroup root\n");
  Write(dir_ / "cupsd.conf", "Listen " + socket_ +
                                 "\nBrowsing Off\nLogLevel info\nWebInterface No\nDefaultAuthType None\n"
                                 "<Location />\n  Order allow,deny\n  Allow all\n</Location>\n"
                                 "<Policy default>\n  <Limit All>\n    Order deny,allow\n  </Limit>\n</Policy>\n");
  backendConf_ = fs::path("/etc/cups") / ("cups-pdf-" + name_ + ".conf");
  Write(backendConf_, "Out " + d + "/out\nAnonDirName " + d + "/out\nSpool " + d + "/cups-pdf\nGSTmp " + d +
                          "/tmp\nLog " + d + "/log\nGrp root\n");
  if (!fs::exists(backendConf_)) {
    failure_ = "cannot write " + backendConf_.string();
    return;
  }

  const std::string out = d + "/log/cupsd.out";
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
  const std::string c = d + "/cupsd.conf", s = d + "/cups-files.conf";
  const char* argv[] = {"/usr/sbin/cupsd", "-f", "-c", c.c_str(), "-s", s.c_str(), nullptr};
  const int spawned = ::posix_spawn(&pid_, argv[0], &actions, nullptr, const_cast<char**>(argv), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) {
    pid_ = -1;
    failure_ = "cupsd could not be started (is the cups package installed?)";
    return;
  }
  // ready when the scheduler answers on its socket
  const auto end = Clock::now() + std::chrono::seconds(30);
  for (;;) {
    int status = 0;
    if (::waitpid(pid_, &status, WNOHANG) == pid_) {
      pid_ = -1;
      failure_ = "cupsd ended at its start:\n" + Log();
      return;
    }
    std::string answer;
    if (Command("lpstat -h " + socket_ + " -r", &answer) && answer.find("scheduler is running") != std::string::npos)
      break;
    if (Clock::now() > end) {
      failure_ = "cupsd did not answer within thirty seconds:\n" + Log();
      return;
    }
    Breathe();
  }
  std::string said;
  if (!Command("lpadmin -h " + socket_ + " -p " + kPrinter + " -E -v cups-pdf:/" + name_ +
                   " -P /usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd -o pdftops-renderer-default=pdftocairo",
               &said) ||
      !Command("lpadmin -h " + socket_ + " -d " + kPrinter, &said)) {
    failure_ = "the PDF printer could not be added: " + said;
    return;
  }
  UseCupsServer(socket_);
}

PrintServer::~PrintServer() {
  if (hadPrevious_) UseCupsServer(previous_);
  else ::unsetenv("CUPS_SERVER");
  if (pid_ > 0) {
    ::kill(pid_, SIGTERM);
    const auto end = Clock::now() + std::chrono::seconds(10);
    int status = 0;
    while (::waitpid(pid_, &status, WNOHANG) != pid_) {
      if (Clock::now() > end) {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, &status, 0);
        break;
      }
      Breathe();
    }
  }
  std::error_code ec;
  if (!backendConf_.empty()) fs::remove(backendConf_, ec);
  if (!dir_.empty()) fs::remove_all(dir_, ec);
}

bool PrintServer::Command(const std::string& command, std::string* output) {
  FILE* p = ::popen((command + " 2>&1").c_str(), "r");
  if (!p) return false;
  std::string out;
  char buf[1024];
  for (std::size_t n; (n = std::fread(buf, 1, sizeof buf, p)) > 0;) out.append(buf, n);
  const int status = ::pclose(p);
  if (output) *output = out;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::string PrintServer::Log() const {
  std::ostringstream all;
  for (const char* f : {"log/cupsd.out", "log/error_log"}) all << std::ifstream(dir_ / f).rdbuf();
  return all.str();
}

std::vector<fs::path> PrintServer::WaitForPdfs(std::size_t count) {
  const auto end = Clock::now() + std::chrono::seconds(90);
  std::vector<fs::path> files;
  for (;;) {
    files.clear();
    std::error_code ec;
    for (const auto& e : fs::directory_iterator(dir_ / "out", ec))
      if (e.path().extension() == ".pdf") files.push_back(e.path());
    std::string pending;
    Command("lpstat -h " + socket_ + " -o", &pending);
    if ((files.size() >= count && pending.empty()) || Clock::now() > end) break;
    Breathe();
  }
  // cups-pdf ends each name with its job number
  auto job = [](const fs::path& p) {
    const std::string s = p.stem().string();
    return std::atoi(s.substr(s.rfind('_') + 1).c_str());
  };
  std::sort(files.begin(), files.end(), [&](const fs::path& a, const fs::path& b) { return job(a) < job(b); });
  return files;
}

}  // namespace r6183::gui::test
