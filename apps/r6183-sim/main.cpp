// r6183-sim: a simulated control unit on a pseudo-terminal, optionally behind a
// simulated Hayes modem (or the modem alone). Prints the device path on the first line,
// then serves until SIGINT or SIGTERM.
#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "shell/AppDir.h"
#include "shell/Clock.h"
#include "sim/PtyLine.h"
#include "sim/SimulatedModem.h"
#include "sim/SimulatedUnit.h"
#include "sim/UnitMemory.h"
#include "sim/UnitTransfers.h"
#include "sim/WireTap.h"

namespace fs = std::filesystem;
using namespace r6183;

namespace {
volatile std::sig_atomic_t stopRequested = 0;
void OnSignal(int) { stopRequested = 1; }

void CatchStopSignals() {
  struct sigaction sa {};
  sa.sa_handler = OnSignal;
  sigemptyset(&sa.sa_mask);
  sigaction(SIGINT, &sa, nullptr);
  sigaction(SIGTERM, &sa, nullptr);
}

std::string RevisionField(const std::string& text) {
  try {
    return sim::UnitRevisions::Field(text);
  } catch (const std::exception&) {
    throw CLI::ValidationError("revision", "write it like 2.31 (or 0 for none)");
  }
}
}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"Simulated R-6183 control unit on a pseudo-terminal"};
  std::string revision = "2.31", mainRevision, thirdRevision = "0", link, load, save;
  int card1 = 0;
  sim::UnitOptions o;
  bool noDaylight = false;
  long clockOffset = 0;
  app.add_option("--revision", revision, "second CPU revision (and main, unless --main)")->capture_default_str();
  app.add_option("--main", mainRevision, "main CPU revision");
  app.add_option("--third", thirdRevision, "third CPU revision, 0 for none")->capture_default_str();
  app.add_option("--card1", card1, "first option card type, 0 for none")->check(CLI::Range(0, 9));
  app.add_flag("--clock-card", o.revisions.clockCard, "second option card is a clock card");
  app.add_flag("--no-daylight", noDaylight, "the unit has no daylight-saving function");
  app.add_flag("--daylight", o.daylightOn, "the daylight-saving adjustment starts on");
  app.add_option("--clock-offset", clockOffset, "seconds the unit's clock runs ahead of the host's");
  app.add_option("--nack-every", o.faults.nackEvery, "NACK every Nth received frame")->check(CLI::NonNegativeNumber);
  app.add_option("--nack-share", o.faults.nackShare, "NACK this share of frames at random")->check(CLI::Range(0.0, 1.0));
  app.add_option("--seed", o.faults.seed, "seed of the random NACKs");
  app.add_option("--silent-after", o.faults.silentAfter, "answer nothing after N frames")->check(CLI::NonNegativeNumber);
  app.add_option("--hang-up-after", o.faults.hangUpAfter, "hang up after N frames")->check(CLI::NonNegativeNumber);
  app.add_flag("--bad-checksum", o.faults.badChecksum, "send frames with a wrong checksum");
  app.add_flag("--garbage", o.faults.garbage, "send a line of noise before each frame");
  app.add_option("--ignore", o.faults.ignored, "answer nothing to frames of these letters");
  app.add_flag("--bad-clock", o.faults.badClock, "answer Q with month 13 until the clock is set");
  app.add_flag("--pace", o.pace, "take about 1.04 ms per byte, as at 9600 baud");
  app.add_option("--load", load, "start with the programming of this document")->check(CLI::ExistingFile);
  app.add_option("--save", save, "save the programming to this document on exit");
  std::string record, wireIn, wireOut;
  app.add_option("--record", record, "on exit, write the messages received to this file, one per line");
  app.add_option("--wire-in", wireIn, "copy every byte the unit reads to this file, as it comes");
  app.add_option("--wire-out", wireOut, "copy every byte the unit writes to this file, as it goes");
  app.add_option("--link", link, "also make a symbolic link here to the device");
  std::string order = sim::UnitTransfers::kDefaultOrder;
  app.add_option("--order", order, "the order in which R sends the sections (letters of XIDCGPWEKNM)")
      ->capture_default_str();
  bool unknownLetters = false;
  app.add_flag("--unknown-letters", unknownLetters, "R also sends messages of letters the tool does not know");
  bool modem = false;
  sim::ModemOptions mo;
  long dialDelay = mo.dialDelay.count(), guardTime = mo.guardTime.count();
  app.add_flag("--modem", modem, "a Hayes modem in front of the unit: AT commands, dialling, the escape, hang-up");
  app.add_option("--dial-delay", dialDelay, "milliseconds from a dial to its result")
      ->check(CLI::NonNegativeNumber)->capture_default_str();
  app.add_option("--guard-time", guardTime, "milliseconds of silence around the escape \"+++\"")
      ->check(CLI::NonNegativeNumber)->capture_default_str();
  app.add_option("--busy", mo.busy, "a number whose dial answers BUSY (repeatable)");
  app.add_option("--no-answer", mo.noAnswer, "a number whose dial answers NO CARRIER (repeatable)");
  app.add_flag("--no-dialtone", mo.noDialTone, "every dial answers NO DIAL TONE");
  app.add_option("--connect-speed", mo.connectSpeed, "the speed CONNECT reports")
      ->check(CLI::PositiveNumber)->capture_default_str();
  bool modemOnly = false;
  app.add_flag("--modem-only", modemOnly,
               "a modem alone, with no unit behind it and no telephone line (every dial finds no dial tone)");
  app.add_option("--deaf-lines", mo.deafLines, "the modem ignores its first N lines, as one still starting up")
      ->check(CLI::NonNegativeNumber);
  CLI11_PARSE(app, argc, argv);
  mo.dialDelay = std::chrono::milliseconds(dialDelay);
  mo.guardTime = std::chrono::milliseconds(guardTime);
  mo.pace = o.pace;
  if (modemOnly) {
    modem = true;
    mo.noDialTone = true;
  }

  try {
    o.revisions.second = RevisionField(revision);
    o.revisions.main = mainRevision.empty() ? o.revisions.second : RevisionField(mainRevision);
    o.revisions.third = thirdRevision == "0" ? "0000" : RevisionField(thirdRevision);
  } catch (const CLI::Error& e) {
    return app.exit(e);
  }
  o.revisions.card1 = static_cast<char>('0' + card1);
  o.daylightSupported = !noDaylight;

  try {
    sim::UnitMemory memory;
    if (!load.empty()) {
      memory.Load(load);
    } else if (auto tmpl = FindNoCase(fs::read_symlink("/proc/self/exe").parent_path(), "DEFAULT")) {
      memory.Load(*tmpl);
    }

    sim::PtyLine line;
    if (!link.empty()) {
      std::error_code ec;
      fs::remove(link, ec);  // an old link from an earlier run
      fs::create_symlink(line.DevicePath(), link);
    }
    CatchStopSignals();
    std::cout << line.DevicePath() << std::endl;

    SystemClock clock;
    // with a modem, the unit's line is the one behind it
    std::unique_ptr<sim::SimulatedModem> hayes;
    if (modem) hayes = std::make_unique<sim::SimulatedModem>(line, clock, mo);
    sim::WireTap tap(hayes ? hayes->UnitSide() : static_cast<SerialLine&>(line), wireIn, wireOut);
    sim::SimulatedUnit unit(tap, clock, o);
    unit.SetMemory(&memory);
    sim::UnitTransfers transfers(unit, memory, order);
    transfers.SendUnknownLetters(unknownLetters);
    unit.SetClockOffset(std::chrono::seconds(clockOffset));
    while (!stopRequested && !unit.HungUp()) {
      // bytes the modem has passed on and the unit has not read yet are not waited for
      if (!hayes || hayes->UnitSide().InputWaiting() == 0) line.WaitForInput(std::chrono::milliseconds(20));
      if (hayes) hayes->Poll();
      if (!modemOnly) unit.Poll();
      if (hayes) hayes->Poll();  // the unit's answer goes out at once
    }
    if (unit.HungUp()) std::cerr << "r6183-sim: hung up\n";

    if (!link.empty()) {
      std::error_code ec;
      if (fs::read_symlink(link, ec) == line.DevicePath()) fs::remove(link, ec);
    }
    if (!save.empty()) memory.Save(save);
    if (!record.empty()) {
      std::ofstream out(record);
      for (const auto& m : unit.Received()) out << m << '\n';
      if (!out) std::cerr << "r6183-sim: cannot write " << record << '\n';
    }
    const auto& c = unit.Count();
    std::cerr << "r6183-sim: " << c.framesReceived << " frames received, " << c.framesSent << " sent\n";
  } catch (const std::exception& e) {
    std::cerr << "r6183-sim: " << e.what() << '\n';
    return 1;
  }
  return 0;
}
