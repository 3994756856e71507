#pragma once
// The unit's end of an in-memory line for protocol tests, and a session whose ModComm
// talks to it.
#include <deque>
#include <memory>
#include <string>

#include "protocol/BorrowedLine.h"
#include "protocol/ModComm.h"
#include "protocol/SerialLine.h"
#include "support/TestSupport.h"

namespace r6183::test {

// The unit's end of an in-memory line: each frame or control byte it receives is
// answered with the next scripted reply ("" is silence).
struct Peer {
  MemoryLine* line = nullptr;
  std::deque<std::string> replies;
  std::string received;
  void Poll() {
    bool event = false;
    while (auto c = line->ReadByte()) {
      received += *c;
      if (*c == '\r' || *c == kAck || *c == kNak) event = true;
    }
    if (event && !replies.empty()) {
      line->Write(replies.front());
      replies.pop_front();
    }
  }
};


// A session whose ModComm talks over an in-memory line to a scripted peer, with the
// transfer's data file (tx_data.txt) and log file open.
class LinkedComm {
 public:
  LinkedComm() {
    auto [tool, unit] = MemoryLine::Pair(t.clock);
    toolEnd = tool.get();
    unitLine = std::move(unit);
    unitLine->Open({}, Handshake::None);
    peer.line = unitLine.get();
    t->SetPump([this] { peer.Poll(); });
    tool_ = std::move(tool);
    comm = std::make_unique<ModComm>(*t, [this](int16_t) { return std::make_unique<BorrowedLine>(*tool_); });
    comm->Init_Comm(0);
    comm->dataFile.Open(t.dir.str("tx_data.txt"));
    comm->logFile.Open(t.dir.str("log_file.txt"));
  }
  std::string DataFile() { comm->dataFile.Close(); return test::ReadFile(t.dir.path() / "tx_data.txt"); }
  std::string LogFile() { comm->logFile.Close(); return test::ReadFile(t.dir.path() / "log_file.txt"); }
  uint32_t Tick() { return t.clock.TickCount(); }

  test::TestSession t;
  MemoryLine* toolEnd = nullptr;
  std::unique_ptr<MemoryLine> tool_;
  std::unique_ptr<MemoryLine> unitLine;
  Peer peer;
  std::unique_ptr<ModComm> comm;
};

}  // namespace r6183::test
