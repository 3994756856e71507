// Arbitrary bytes from the line into the receive path: a frame reader that must
// answer everything with ACK or NACK and never crash or hang.
// First byte: bit 0 the accept-newer flag, bit 1 the date and time exchange.
#include <cstddef>
#include <cstdint>
#include <string>

#include "protocol/ModComm.h"
#include "protocol/SerialLine.h"
#include "shell/Clock.h"
#include "shell/Prompter.h"
#include "shell/Session.h"

using namespace r6183;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  static ScriptedPrompter prompter;
  ManualClock clock;
  // no journal file: a logged error costs nothing here
  Session session(AppDir("/nonexistent-r6183-fuzz"), prompter, clock);
  session.state.DateTimeActive = (data[0] & 2) ? 1 : 0;
  const bool acceptNewer = data[0] & 1;

  auto lines = MemoryLine::Pair(clock);
  std::unique_ptr<MemoryLine> tool = std::move(lines.first), unit = std::move(lines.second);
  MemoryLine* toolEnd = tool.get();
  unit->Open({}, Handshake::None);
  unit->Write(std::string(reinterpret_cast<const char*>(data + 1), size - 1));
  ModComm comm(session, [&](int16_t) { return std::move(tool); });
  if (!comm.Init_Comm(0)) return 0;
  comm.dataFile.Open("/dev/null");
  comm.logFile.Open("/dev/null");

  // read until the line is drained; each call takes at most five lines
  for (int turn = 0; turn < 64 && toolEnd->InputWaiting() > 0; ++turn) {
    comm.Receive_Msg(acceptNewer);
    if (comm.msg_str.size() > 50) __builtin_trap();
  }
  // every answer the tool gave is a single ACK or NACK
  for (unsigned char c : toolEnd->Written())
    if (c != kAck && c != kNak) __builtin_trap();
  return 0;
}
