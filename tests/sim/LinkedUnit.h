#pragma once
// Shared by the transfer tests: the tool and the simulated unit linked in-process.
#include <SQLiteCpp/SQLiteCpp.h>

#include <optional>
#include <sstream>

#include "database/DocumentDump.h"
#include "protocol/BorrowedLine.h"
#include "protocol/ModComm.h"
#include "protocol/ProgressWindow.h"
#include "shell/MainMenu.h"
#include "sim/SimulatedModem.h"
#include "sim/SimulatedUnit.h"
#include "sim/UnitMemory.h"
#include "sim/UnitTransfers.h"
#include "support/TestSupport.h"

namespace r6183::test {

struct RecordingProgress : ProgressWindow {
  std::vector<std::string> lines;
  void WhatToDisplay(const std::string& a, const std::string& b, int p) override {
    lines.push_back(a + "|" + b + "|" + std::to_string(p));
  }
};

inline std::string Dump(const std::string& path) {
  Database db = Database::Open(path, {.readOnly = true});
  std::ostringstream out;
  DumpDocument(db, out);
  return out.str();
}

// The tool's session and ModComm on one end of an in-memory line, the simulated unit with
// a document in its memory on the other, both on the session's manual clock; with modem
// options, the unit sits behind a simulated modem.
class LinkedUnit {
 public:
  explicit LinkedUnit(sim::UnitOptions options = {}, std::optional<sim::ModemOptions> modemOptions = {}) {
    auto [tool, unit] = MemoryLine::Pair(t.clock);
    tool_ = std::move(tool);
    unitLine = std::move(unit);
    unitLine->Open({}, Handshake::None);
    document = t.dir.str("unit.mdb");
    std::filesystem::copy_file(test::StagedAppDir() / "DEFAULT", document);
    SQLite::Database(document, SQLite::OPEN_READWRITE)
        .exec("UPDATE Config SET System_Config = 2; UPDATE Clid SET archnum = '1234', clid_string = "
              "'Reception Desk ' WHERE clid_station = 30; UPDATE Clid SET archnum = '9999', clid_string = "
              "'Lost Station   ' WHERE clid_station = 90; INSERT INTO Event (Schedule, StartTime, Duration, Tone, "
              "PageGroup12) VALUES (2, '08:15', 20, 3, 1)");
    memory.Load(document);
    if (modemOptions) modemSim = std::make_unique<sim::SimulatedModem>(*unitLine, t.clock, *modemOptions);
    unitSim = std::make_unique<sim::SimulatedUnit>(modemSim ? modemSim->UnitSide() : *unitLine, t.clock, options);
    transfers = std::make_unique<sim::UnitTransfers>(*unitSim, memory);
    t->SetPump([this] {
      if (modemSim) modemSim->Poll();
      unitSim->Poll();
      if (modemSim) modemSim->Poll();
    });
    t->product.ProductTitle = "Title";
    Initialize(*t);
    comm = std::make_unique<ModComm>(*t, [this](int16_t) { return std::make_unique<BorrowedLine>(*tool_); });
  }

  test::TestSession t;
  std::unique_ptr<MemoryLine> tool_, unitLine;
  std::string document;
  sim::UnitMemory memory;
  std::unique_ptr<sim::SimulatedModem> modemSim;
  std::unique_ptr<sim::SimulatedUnit> unitSim;
  std::unique_ptr<sim::UnitTransfers> transfers;
  std::unique_ptr<ModComm> comm;
  RecordingProgress progress;
};

}  // namespace r6183::test
