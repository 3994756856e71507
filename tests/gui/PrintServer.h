#pragma once
// A print service of the test's own: cupsd started on a private configuration, spool and
// socket in a temporary directory, with one PDF printer as the default whose files land in
// that directory. No system-wide print service, port or queue is used or changed; the
// process talks to this server only (CUPS_SERVER), and the server is stopped and its
// directory removed at the end.
//
// The PDF printer's backend (cups-pdf) reads its settings from a file in /etc/cups named
// after its device: each server writes its own, named after its directory, and removes it
// again. The backend runs as root, so the tests that print need root.
#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace r6183::gui::test {

// Points the print client of this process at `server` (a socket path or host:port).
void UseCupsServer(const std::string& server);

class PrintServer {
 public:
  PrintServer();
  ~PrintServer();
  PrintServer(const PrintServer&) = delete;
  PrintServer& operator=(const PrintServer&) = delete;

  // Empty when the server is up with its printer as the default; otherwise why not.
  const std::string& Failure() const { return failure_; }
  const std::string& Socket() const { return socket_; }
  // Waits (up to ninety seconds) until `count` PDF files are there and no job is pending;
  // the files, in the order of their jobs.
  std::vector<std::filesystem::path> WaitForPdfs(std::size_t count);

  static constexpr const char* kPrinter = "R6183PDF";

 private:
  bool Command(const std::string& command, std::string* output = nullptr);
  std::string Log() const;

  std::filesystem::path dir_;
  std::string name_;
  std::string socket_;
  std::filesystem::path backendConf_;
  pid_t pid_ = -1;
  std::string failure_;
  std::string previous_;
  bool hadPrevious_ = false;
};

}  // namespace r6183::gui::test
