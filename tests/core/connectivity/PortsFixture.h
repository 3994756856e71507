#pragma once
// Sixteen ports on in-memory lines for the port scan, each with a peer of its own on the
// session's manual clock: nothing, a port that refuses to open, silence, a unit that
// answers the date question (or only with impossible dates), a modem.
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ModemFixture.h"
#include "connectivity/CommResults.h"
#include "protocol/ModComm.h"

namespace r6183::test {

enum class Peer { Absent, Refused, Silent, Unit, BadClock, Modem };

class Ports16 {
 public:
  Ports16(TestSession& t, const std::map<int, Peer>& peers) : t_(t) {
    for (const auto& [port, kind] : peers) {
      auto [tool, far] = MemoryLine::Pair(t.clock);
      Port& p = ports_[port];
      p.kind = kind;
      p.tool = std::move(tool);
      p.far = std::move(far);
      p.far->Open({}, Handshake::None);
      p.tool->FailOpen(kind == Peer::Refused);
      p.modem.line = p.far.get();
    }
    t->SetPump([this] { Poll(); });
    comm = std::make_unique<ModComm>(*t, [this](int16_t port) -> std::unique_ptr<SerialLine> {
      opened.push_back(port);
      const auto it = ports_.find(port);
      if (it == ports_.end() || it->second.kind == Peer::Absent) return nullptr;
      return std::make_unique<BorrowedLine>(*it->second.tool);
    });
    hayes = std::make_unique<modModem>(*t, *comm, progress);
  }

  // Answers what each peer has heard; also runs `onPump` (a test's operator).
  void Poll() {
    ++pumps;
    for (auto& [n, p] : ports_) {
      if (p.kind == Peer::Modem) {
        p.modem.Poll();
        continue;
      }
      while (auto b = p.far->ReadByte()) {
        if (p.kind != Peer::Unit && p.kind != Peer::BadClock) continue;
        p.heard += *b;
        if (*b != '\r') continue;
        if (p.heard.find("Q051") != std::string::npos && ++questions < 1000)
          p.far->Write(std::string(1, kAck) + Frame(p.kind == Peer::Unit ? "T093015110601" : "T093015130601"));
        p.heard.clear();
      }
    }
    if (onPump) onPump();
  }

  static std::string Frame(const std::string& m) { return m + FrameChecksum(m) + "\r"; }

  std::unique_ptr<ModComm> comm;
  std::unique_ptr<modModem> hayes;
  ProgressWindow progress;
  std::vector<int> opened;  // the ports whose line was asked for, in order
  int questions = 0;        // date questions answered
  int pumps = 0;
  std::function<void()> onPump;

 private:
  struct Port {
    Peer kind = Peer::Absent;
    std::unique_ptr<MemoryLine> tool, far;
    ScriptedModem modem;
    std::string heard;
  };
  TestSession& t_;
  std::map<int, Port> ports_;
};

}  // namespace r6183::test
