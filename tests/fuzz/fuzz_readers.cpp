// Arbitrary messages into every message reader, as Process_Msg hands them over: the
// first byte picks the reader, the rest is the message after its letter. The readers
// write into a work copy of the template that stays open across runs.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "ScratchDir.h"
#include "protocol/Messages.h"
#include "protocol/ModComm.h"
#include "shell/Clock.h"
#include "shell/Prompter.h"
#include "shell/Session.h"

using namespace r6183;

namespace {
struct Bench {
  Bench() : session(AppDir("/nonexistent-r6183-fuzz"), prompter, clock), comm(session, {}), messages(session, comm) {
    namespace fs = std::filesystem;
    const char* source = std::getenv("R6183_TEMPLATE");
    fs::copy_file(source ? source : R6183_TEMPLATE, dir.path() / "~TEMP");
    session.state.WorkDbPath = (dir.path() / "~TEMP").string();
    comm.logFile.Open("/dev/null");
    comm.dataFile.Open("/dev/null");
    messages.tables.Open_Tables(session);
    // the file is thrown away: no waiting for the disk
    messages.tables.db.Execute("PRAGMA synchronous = OFF");
    messages.tables.db.Execute("PRAGMA journal_mode = MEMORY");
  }
  fuzz::ScratchDir dir;  // removed at exit
  ScriptedPrompter prompter;
  ManualClock clock;
  Session session;
  ModComm comm;
  Messages messages;
};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Bench bench;
  if (size == 0 || size > 60) return 0;
  static const char kLetters[] = "XDIEWKNMCGP";
  const char letter = kLetters[data[0] % (sizeof kLetters - 1)];
  bench.comm.msg_str = std::string(1, letter) + std::string(reinterpret_cast<const char*>(data + 1), size - 1);
  Messages& m = bench.messages;
  switch (letter) {
    case 'X': m.ReadConfig(); break;
    case 'D': m.ReadDip(); break;
    case 'I': m.REadClock(); break;
    case 'E': m.ReadEvent(); break;
    case 'W': m.ReadSched(); break;
    case 'K': m.ReadCT(); break;
    case 'N': m.ReadEmer(); break;
    case 'M': m.ReadBGM(); break;
    case 'C': m.ReadClid(); break;
    case 'G': m.ReadGroup(); break;
    case 'P': m.ReadClassService(); break;
  }
  // the board count only ever comes from a digit
  if (bench.session.state.SystemConfig > 9) __builtin_trap();
  return 0;
}
