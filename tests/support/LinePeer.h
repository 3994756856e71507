#pragma once
// The unit's end of an in-memory line for protocol tests, and a borrowed line that
// lets a test keep the tool's end while the protocol opens and closes it.
#include <deque>
#include <memory>
#include <string>

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

// The test keeps the tool's end of the line; the protocol borrows it, so the line
// outlives a closed port.
struct LineRef : SerialLine {
  MemoryLine* l;
  explicit LineRef(MemoryLine* m) : l(m) {}
  void Open(const LineSettings& s, Handshake h) override { l->Open(s, h); }
  void Close() override { l->Close(); }
  bool IsOpen() const override { return l->IsOpen(); }
  void Write(std::string_view b) override { l->Write(b); }
  int InputWaiting() override { return l->InputWaiting(); }
  std::optional<char> ReadByte() override { return l->ReadByte(); }
  bool WaitForInput(std::chrono::milliseconds d) override { return l->WaitForInput(d); }
  void DiscardInput() override { l->DiscardInput(); }
  void DiscardOutput() override { l->DiscardOutput(); }
  void SetDTR(bool on) override { l->SetDTR(on); }
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
    comm = std::make_unique<ModComm>(*t, [this](int16_t) { return std::make_unique<LineRef>(tool_.get()); });
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
