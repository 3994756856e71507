// The Receive transfer against the simulated unit, in-process on a manual clock.
#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include <sstream>

#include "database/DocumentDump.h"
#include "protocol/BorrowedLine.h"
#include "protocol/ModComm.h"
#include "protocol/ProgressWindow.h"
#include "protocol/ReceiveTransfer.h"
#include "shell/MainMenu.h"
#include "sim/SimulatedUnit.h"
#include "sim/UnitMemory.h"
#include "sim/UnitTransfers.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

struct RecordingProgress : ProgressWindow {
  std::vector<std::string> lines;
  void WhatToDisplay(const std::string& a, const std::string& b, int p) override {
    lines.push_back(a + "|" + b + "|" + std::to_string(p));
  }
};

std::string Dump(const std::string& path) {
  Database db = Database::Open(path, {.readOnly = true});
  std::ostringstream out;
  DumpDocument(db, out);
  return out.str();
}

class ReceiveTransfer : public ::testing::Test {
 protected:
  explicit ReceiveTransfer(sim::UnitOptions options = {}) {
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
    unitSim = std::make_unique<sim::SimulatedUnit>(*unitLine, t.clock, options);
    transfers = std::make_unique<sim::UnitTransfers>(*unitSim, memory);
    t->SetPump([this] { unitSim->Poll(); });
    t->product.ProductTitle = "Title";
    Initialize(*t);
    comm = std::make_unique<ModComm>(*t, [this](int16_t) { return std::make_unique<BorrowedLine>(*tool_); });
  }

  test::TestSession t;
  std::unique_ptr<MemoryLine> tool_, unitLine;
  std::string document;
  sim::UnitMemory memory;
  std::unique_ptr<sim::SimulatedUnit> unitSim;
  std::unique_ptr<sim::UnitTransfers> transfers;
  std::unique_ptr<ModComm> comm;
  RecordingProgress progress;
};

TEST_F(ReceiveTransfer, TheUnitsProgrammingBecomesAnUntitledDocument) {
  mnuRx_Click(*t, *comm, progress);
  ASSERT_FALSE(t.prompter.Shown().empty());
  EXPECT_EQ(t.prompter.Shown().back().text, "Receive Data completed successfully.");
  EXPECT_EQ(t->state.CurrentFileName, "Untitled");
  EXPECT_EQ(t->menu.WindowCaption(), "Untitled - Title");
  EXPECT_EQ(t->state.SystemConfig, 2);
  EXPECT_EQ(t->state.EventCount, 1);
  EXPECT_TRUE(t->menu.Enabled("mnuFileClose"));
  // what the messages themselves make of the unit's programming: numbers and descriptions
  // padded with blanks, a one-character clock type with a leading "0", and nothing of the
  // stations beyond the two expansion boards (station 90)
  SQLite::Database(document, SQLite::OPEN_READWRITE)
      .exec("UPDATE Clid SET archnum = printf('%-4s', archnum), clid_string = printf('%-15s', clid_string) "
            "WHERE clid_station <= 72; UPDATE Clid SET archnum = '', clid_string = '' WHERE clid_station > 72;"
            "UPDATE ClockDef SET ClockA = '01', ClockB = '01'");
  EXPECT_EQ(Dump(t->state.WorkDbPath), Dump(document));
  EXPECT_EQ(progress.lines.front(), "Preparing to receive data...||1");
  EXPECT_EQ(progress.lines.back(), "Receiving data...|All Done|100");
  const std::string rx = test::ReadFile(t.dir.path() / "rx_data.txt");
  EXPECT_EQ(rx.rfind("Date - Time - 11/06/2001 09:30:", 0), 0u) << rx.substr(0, 40);
  EXPECT_NE(rx.find("\r\nX2"), std::string::npos);
  EXPECT_EQ(rx.find("\r\nK"), std::string::npos);  // K, N and I never reach the data file
}

TEST_F(ReceiveTransfer, ASilentUnitLeavesTheTemplateAndTheOldName) {
  t->state.CurrentFileName = "";
  unitSim->Options().faults.silentAfter = 1;  // answers H, then nothing
  mnuRx_Click(*t, *comm, progress);
  EXPECT_EQ(t.prompter.Shown().back().text, "Error receiving data");
  EXPECT_EQ(t->state.CurrentFileName, "");
  EXPECT_EQ(Dump(t->state.WorkDbPath), Dump((test::StagedAppDir() / "DEFAULT").string()));
}

}  // namespace
}  // namespace r6183
