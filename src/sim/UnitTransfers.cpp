#include "sim/UnitTransfers.h"

#include <filesystem>
#include <stdexcept>

#include "database/Recordset.h"
#include "protocol/BorrowedLine.h"
#include "protocol/Messages.h"
#include "protocol/ModComm.h"
#include "shell/Conversions.h"
#include "shell/Prompter.h"
#include "shell/Session.h"
#include "sim/SimulatedUnit.h"
#include "sim/UnitMemory.h"

namespace r6183::sim {

namespace fs = std::filesystem;

// The message routines run in a private session of their own: its ModComm talks over an
// in-memory line to a collector that acknowledges every frame and keeps its message.
struct UnitTransfers::Impl {
  Impl(SimulatedUnit& u, UnitMemory& m, std::string o)
      : unit(u), memory(m), order(std::move(o)), session(AppDir("/nonexistent-r6183-sim"), prompter, clock) {
    auto lines = MemoryLine::Pair(clock);
    toolEnd = std::move(lines.first);
    collectorEnd = std::move(lines.second);
    collectorEnd->Open({}, Handshake::None);
    session.SetPump([this] { Collect(); });
    comm = std::make_unique<ModComm>(session, [this](int16_t) { return std::make_unique<BorrowedLine>(*toolEnd); });
    comm->Init_Comm(0);
    comm->dataFile.Open("/dev/null");
    comm->logFile.Open("/dev/null");
    messages = std::make_unique<Messages>(session, *comm);
  }

  void Collect() {
    while (auto c = collectorEnd->ReadByte()) {
      if (*c != '\r') {
        frame += *c;
        continue;
      }
      if (frame.size() > 3) unit.Send(frame.substr(0, frame.size() - 3));  // without the checksum
      ++sent;
      frame.clear();
      collectorEnd->Write(std::string(1, kAck));
    }
  }

  // R: every section of the memory, in the unit's order, then A.
  void SendAll() {
    sent = 0;
    Database db = memory.Open();
    {
      Recordset config = db.OpenRecordset("Config", RecordsetType::Snapshot);
      session.state.SystemConfig = config.IsEOF() ? 0 : CByte(config["System_Config"].GetValue());
    }
    for (char letter : order) {
      if (unknownLetters) unit.Send("Y" + std::string(1, letter) + "0000");
      switch (letter) {
        case 'X': messages->SendConfig(); break;
        case 'I': messages->SendClock(db); break;
        case 'D': messages->SendDip(db); break;
        case 'C': messages->SendClid(db); break;
        case 'G': messages->SendGroups(db); break;
        case 'P': messages->SendClassService(db); break;
        case 'W': messages->SendSched(db); break;
        case 'E': messages->SendEvents(db); break;
        case 'K': messages->SendCT(db); break;
        case 'N': messages->SendEmer(db); break;
        case 'M': messages->SendBGM(db); break;
        default: break;
      }
    }
    db.Close();
    unit.Send("A");
    ++sent;
  }

  // S: a fresh copy of the memory without its events, filled by what follows.
  void Begin() {
    End(false);
    staging = memory.Path().parent_path() / "receiving.mdb";
    fs::copy_file(memory.Path(), staging, fs::copy_options::overwrite_existing);
    {
      Database db = Database::Open(staging.string());
      db.Execute("DELETE FROM Event");
    }
    session.state.WorkDbPath = staging.string();
    session.state.SystemConfig = 0;
    messages->tables.Open_Tables(session);
    receiving = true;
  }

  void Take(const std::string& message) {
    if (!receiving) return;  // data outside a transfer is acknowledged and dropped
    comm->msg_str = message;
    switch (message[0]) {
      case 'X': messages->ReadConfig(); break;
      case 'D': messages->ReadDip(); break;
      case 'I': messages->REadClock(); break;
      case 'E': messages->ReadEvent(); break;
      case 'W': messages->ReadSched(); break;
      case 'K': messages->ReadCT(); break;
      case 'N': messages->ReadEmer(); break;
      case 'M': messages->ReadBGM(); break;
      case 'C': messages->ReadClid(); break;
      case 'G': messages->ReadGroup(); break;
      case 'P': messages->ReadClassService(); break;
      default: break;
    }
  }

  // A ends an S transfer: what arrived becomes the memory.
  void End(bool keep) {
    if (!receiving) return;
    messages->tables.Close_Tables();
    receiving = false;
    if (keep) memory.Load(staging);
    std::error_code ec;
    fs::remove(staging, ec);
  }

  SimulatedUnit& unit;
  UnitMemory& memory;
  std::string order;
  ScriptedPrompter prompter;
  ManualClock clock;
  Session session;
  std::unique_ptr<MemoryLine> toolEnd, collectorEnd;
  std::unique_ptr<ModComm> comm;
  std::unique_ptr<Messages> messages;
  std::string frame;
  int sent = 0;
  bool receiving = false;
  bool unknownLetters = false;
  fs::path staging;
};

UnitTransfers::UnitTransfers(SimulatedUnit& unit, UnitMemory& memory, std::string order)
    : impl_(std::make_unique<Impl>(unit, memory, std::move(order))) {
  Impl* i = impl_.get();
  unit.SetHandler('R', [i](const std::string&) { i->SendAll(); });
  unit.SetHandler('S', [i](const std::string&) { i->Begin(); });
  unit.SetHandler('A', [i](const std::string&) { i->End(true); });
  for (char letter : std::string("XDIEWKNMCGP"))
    unit.SetHandler(letter, [i](const std::string& m) { i->Take(m); });
}

UnitTransfers::~UnitTransfers() { impl_->End(false); }

void UnitTransfers::SendUnknownLetters(bool on) { impl_->unknownLetters = on; }

int UnitTransfers::LastSendCount() const { return impl_->sent; }
bool UnitTransfers::Receiving() const { return impl_->receiving; }

}  // namespace r6183::sim
