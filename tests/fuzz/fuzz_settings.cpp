// Arbitrary bytes as the settings file, through the life it has in the program: read at
// start, written back at exit, read at the next start. Whatever the first start read
// must come back at the second, the debug level (never written) included.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "ScratchDir.h"
#include "shell/Clock.h"
#include "shell/Prompter.h"
#include "shell/Session.h"
#include "shell/Settings.h"
#include "shell/Text.h"

using namespace r6183;

namespace {

struct Read {
  int32_t port, debug, height, width, top, left, boardWidth, boardHeight;
  std::array<std::string, 5> recent;
  bool operator==(const Read&) const = default;
};

struct Bench {
  Bench() : session(AppDir(dir.path()), prompter, clock) {}

  Read Start() {
    ProcessState& st = session.state;
    st.ComPortNumber = st.DebugLevel = st.MdiHeight = st.MdiWidth = -1;
    st.SwitchBoardTop = st.SwitchBoardLeft = st.SwitchBoardWidth = st.SwitchBoardHeight = -1;
    st.RecentFiles.fill("?");
    ReadIniFile(session);
    getSwitchBoardValues(session);
    return {st.ComPortNumber,   st.DebugLevel,      st.MdiHeight,        st.MdiWidth,         st.SwitchBoardTop,
            st.SwitchBoardLeft, st.SwitchBoardWidth, st.SwitchBoardHeight, st.RecentFiles};
  }

  fuzz::ScratchDir dir;
  ScriptedPrompter prompter;
  ManualClock clock;
  Session session;
};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Bench bench;
  const std::string path = bench.session.state.SettingsPath;
  if (std::FILE* f = std::fopen(path.c_str(), "wb")) {
    std::fwrite(data, 1, size, f);
    std::fclose(f);
  }
  Read first = bench.Start();
  if (first.port < 1 || first.port > 16) __builtin_trap();
  for (std::size_t i = 1; i < first.recent.size(); ++i)
    if (CharCount(first.recent[i]) > 127) __builtin_trap();

  SaveIniFile(bench.session);
  PutSwitchBoardVal(bench.session);
  if (!(bench.Start() == first)) __builtin_trap();
  return 0;
}
