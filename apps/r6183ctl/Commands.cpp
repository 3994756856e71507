#include "Commands.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "ConsolePrompter.h"
#include "PrivateDir.h"
#include "database/Database.h"
#include "database/DocumentChecks.h"
#include "database/DocumentCommands.h"
#include "database/DocumentDump.h"
#include "database/Recordset.h"
#include "database/TableSource.h"
#include "connectivity/CommResults.h"
#include "connectivity/modModem.h"
#include "protocol/DateTime.h"
#include "protocol/ModComm.h"
#include "protocol/PortMap.h"
#include "protocol/PosixSerialLine.h"
#include "protocol/ProgressWindow.h"
#include "protocol/ReceiveTransfer.h"
#include "protocol/Revisions.h"
#include "protocol/SendTransfer.h"
#include "database/ToneDefaults.h"
#include "editors/ScheduleScript.h"
#include "shell/Conversions.h"
#include "shell/FileOps.h"
#include "shell/Session.h"
#include "shell/Utility.h"

namespace r6183::ctl {

namespace fs = std::filesystem;

// A copy of FILE in `dir`; raises with the reason when FILE can't be read.
std::string PrivateCopy(const std::string& file, const PrivateDir& dir) {
  std::ifstream probe(file, std::ios::binary);
  if (!fs::is_regular_file(file) || !probe)
    throw std::runtime_error("cannot read " + file + ": " +
                             (fs::exists(file) ? "permission denied or not a file" : "no such file"));
  const std::string copy = dir / "document.mdb";
  fs::copy_file(file, copy);
  return copy;
}

// Copies `source` to `file` through a temporary name beside it and a rename, so that no
// half-written file is ever left; says why on failure.
bool WriteWhole(const std::string& source, const std::string& file) {
  const fs::path target = fs::absolute(file);
  const fs::path part = target.parent_path() / ("." + target.filename().string() + ".part");
  std::error_code ec;
  fs::copy_file(source, part, fs::copy_options::overwrite_existing, ec);
  if (!ec) fs::rename(part, target, ec);
  if (!ec) return true;
  std::cerr << "r6183ctl: cannot write " << file << ": " << ec.message() << '\n';
  fs::remove(part, ec);
  return false;
}

// The line of a port number 1 to 16 or a device path; empty with a message when none.
std::string DeviceOf(Session& session, const std::string& port) {
  try {
    return DeviceForPort(session.journal(), session.state.SettingsPath, port);
  } catch (const std::exception& e) {
    std::cerr << "r6183ctl: port " << port << ": " << e.what() << '\n';
    return {};
  }
}

// After a command on a port: why the port could not be opened, when it could not.
void TellOpenFailure(const ModComm& comm, const std::string& port) {
  if (!comm.OpenFailure().empty()) std::cerr << "r6183ctl: port " << port << ": " << comm.OpenFailure() << '\n';
}

namespace {

std::string RevOf(const std::string& path) {
  try {
    Database db = Database::Open(path, {.readOnly = true});
    Recordset rs = db.OpenRecordset("Rev", RecordsetType::Snapshot);
    return rs.IsEOF() ? std::string() : TextOf(rs["rev"].GetValue());
  } catch (...) {
    return {};
  }
}
}  // namespace

int Check(Session& session, const std::string& file) {
  PrivateDir dir;
  std::string copy;
  try {
    copy = PrivateCopy(file, dir);
  } catch (const std::exception& e) {
    std::cerr << "r6183ctl: " << e.what() << '\n';
    return 2;
  }
  if (const FileFormat f = DetectFormat(copy); f == FileFormat::Jet3 || f == FileFormat::Jet4) {
    std::cout << "older format (" << FormatName(f) << ")\n";
    return 1;
  }
  const bool valid = ValidDatabase(session, copy);
  const ProcessState& st = session.state;
  std::cout << (valid ? "valid" : "invalid") << '\n'
            << "EventCount=" << st.EventCount << '\n'
            << "SystemConfig=" << int(st.SystemConfig) << '\n'
            << "ClocksEnabled=" << (st.ClocksEnabled ? 1 : 0) << '\n'
            << "Rev=" << RevOf(copy) << '\n';
  return valid ? 0 : 1;
}

int Dump(Session&, const std::string& file) {
  PrivateDir dir;
  try {
    const std::string copy = PrivateCopy(file, dir);
    Database db = Database::Open(copy, {.readOnly = true});
    std::ostringstream text;
    DumpDocument(db, text);
    std::cout << text.str();
    return 0;
  } catch (const std::exception& e) {
    std::cerr << "r6183ctl: " << file << ": " << e.what() << '\n';
    return 2;
  }
}

int New(Session& session, const std::string& file, bool force) {
  if (fs::exists(file) && !force) {
    std::cerr << "r6183ctl: " << file << " exists (use --force to replace it)\n";
    return 1;
  }
  PrivateDir dir;
  // a private work copy, so that a running desktop program keeps its own
  session.state.WorkDbPath = dir / "~TEMP";
  if (!session.appDir().Has("DEFAULT") ||
      !ReplaceWithCopy(session.appDir().PathOf("DEFAULT"), session.state.WorkDbPath)) {
    std::cerr << "r6183ctl: Error opening Work database.\n";
    return 1;
  }
  UpdateData(session);
  if (!ValidDatabase(session, session.state.WorkDbPath)) {
    std::cerr << "r6183ctl: The default database does not exist.\n";
    return 1;
  }
  if (!WriteWhole(session.state.WorkDbPath, file)) return 1;
  std::cout << "created " << file << '\n';
  return 0;
}

}  // namespace r6183::ctl

namespace r6183::ctl {

int Convert(Session& session, const std::string& file) {
  PrivateDir dir;
  // a private work copy, so that a running desktop program keeps its own
  session.state.WorkDbPath = dir / "~TEMP";
  const FileFormat before = DetectFormat(file);
  OpenDatabase(session, file);
  const bool opened = session.state.CurrentFileName == file;
  if (!opened) {
    std::cerr << "r6183ctl: " << file << " was not opened\n";
    return 1;
  }
  if (before == FileFormat::Document)
    std::cout << file << " is a current document: nothing to convert\n";
  else
    std::cout << "converted " << file << " (" << FormatName(before) << "), the original kept as "
              << GetBackUpName(file, "OLD") << '\n';
  return 0;
}

}  // namespace r6183::ctl

namespace r6183::ctl {

namespace {
void PrintPort(const PortInfo& p) {
  std::cout << p.number << '\t' << (p.device.empty() ? "-" : p.device) << '\t' << p.description << '\n';
}
}  // namespace

int Ports(Session& session) {
  for (const PortInfo& p : MapPorts(session.journal(), session.state.SettingsPath, DiscoverPorts())) PrintPort(p);
  return 0;
}

int Find(Session& session, bool modem) {
  ModComm comm(session, [&session](int16_t port) -> std::unique_ptr<SerialLine> {
    return std::make_unique<PosixSerialLine>(
        DeviceForPort(session.journal(), session.state.SettingsPath, std::to_string(port)));
  });
  ProgressWindow quiet;
  modModem hayes(session, comm, quiet);
  CommResultsModel scan(session, comm, hayes);
  // a port the operator could have is named, as the journal names it
  scan.OnPortProbed = [&](int port) {
    if (comm.OpenFailureNumber() == err::PermissionDenied) TellOpenFailure(comm, std::to_string(port));
  };
  if (modem) scan.AutoFindModem();
  else scan.AutoFindComm();
  comm.Exit_Comm();
  const int32_t found = session.state.WizardFoundPort;
  if (found == kNoPortFound) {
    std::cout << scan.txtComport.Text() << '\n';
    return 1;
  }
  for (const PortInfo& p : MapPorts(session.journal(), session.state.SettingsPath, DiscoverPorts()))
    if (p.number == found) PrintPort(p);
  return 0;
}

}  // namespace r6183::ctl

namespace r6183::ctl {

int Revs(Session& session, const std::string& port) {
  const std::string device = DeviceOf(session, port);
  if (device.empty()) return 2;
  ModComm comm(session, [&](int16_t) { return std::make_unique<PosixSerialLine>(device); });
  try {
    comm.logFile.Rewrite(session, "log_file.txt");
  } catch (const std::exception& e) {
    std::cerr << "r6183ctl: " << e.what() << '\n';
  }
  RevisionLines lines;
  GetRevs(session, comm, lines);
  TellOpenFailure(comm, port);
  comm.logFile.Close();
  comm.Exit_Comm();
  for (const std::string& line : lines.Shown()) std::cout << line << '\n';
  return lines.RevLineStatus.empty() ? 0 : 1;
}

}  // namespace r6183::ctl

namespace r6183::ctl {

namespace {
// The progress window of the command line: one line per change.
struct PrintedProgress : ProgressWindow {
  void WhatToDisplay(const std::string& first, const std::string& second, int percent) override {
    Print(first + (second.empty() ? "" : " " + second) + PercentText(percent));
  }
  void SetPlainText(const std::string& text) override { Print(text); }
  void Print(const std::string& line) {
    if (line != last_) std::cout << line << '\n' << std::flush;
    last_ = line;
  }
  std::string last_;
};

}  // namespace

int ThroughCall(Session& session, ModComm& comm, ProgressWindow& progress, const std::string& dial,
                const std::function<int()>& run) {
  if (dial.empty()) return run();
  modModem modem(session, comm, progress);
  if (!DialNumber(modem, dial)) return 1;
  int code = run();
  if (!modem.ReleaseModem()) code = 1;
  return code;
}

int Receive(Session& session, const std::string& out, const std::string& port, bool force, const std::string& dial) {
  if (fs::exists(out) && !force) {
    std::cerr << "r6183ctl: " << out << " exists (use --force to replace it)\n";
    return 1;
  }
  const std::string device = DeviceOf(session, port);
  if (device.empty()) return 2;
  PrivateDir dir;
  session.state.WorkDbPath = dir / "~TEMP";  // a running desktop program keeps its own
  ModComm comm(session, [&](int16_t) { return std::make_unique<PosixSerialLine>(device); });
  PrintedProgress progress;
  const int code = ThroughCall(session, comm, progress, dial, [&] {
    mnuRx_Click(session, comm, progress);
    return session.state.CurrentFileName == "Untitled" ? 0 : 1;
  });
  TellOpenFailure(comm, port);
  comm.Exit_Comm();
  if (code != 0 || session.state.CurrentFileName != "Untitled") return 1;

  return WriteWhole(session.state.WorkDbPath, out) ? 0 : 1;
}

int Dial(Session& session, const std::string& number, const std::string& port) {
  const std::string device = DeviceOf(session, port);
  if (device.empty()) return 2;
  ModComm comm(session, [&](int16_t) { return std::make_unique<PosixSerialLine>(device); });
  PrintedProgress progress;
  modModem modem(session, comm, progress);
  const bool connected = DialNumber(modem, number);
  TellOpenFailure(comm, port);
  comm.Exit_Comm();  // the call outlives the port: closing it does not drop DTR
  return connected ? 0 : 1;
}

int Release(Session& session, const std::string& port) {
  const std::string device = DeviceOf(session, port);
  if (device.empty()) return 2;
  ModComm comm(session, [&](int16_t) { return std::make_unique<PosixSerialLine>(device); });
  PrintedProgress progress;
  modModem modem(session, comm, progress);
  const bool released = modem.ReleaseModem();
  TellOpenFailure(comm, port);
  comm.Exit_Comm();
  if (released) std::cout << "released\n";
  return released ? 0 : 1;
}

}  // namespace r6183::ctl

namespace r6183::ctl {

int Send(Session& session, const std::string& file, const std::string& port, const std::string& dial) {
  const std::string device = DeviceOf(session, port);
  if (device.empty()) return 2;
  PrivateDir dir;
  session.state.WorkDbPath = dir / "~TEMP";  // a running desktop program keeps its own
  OpenDatabase(session, file);
  if (session.state.CurrentFileName != file) {
    std::cerr << "r6183ctl: " << file << " was not opened\n";
    return 1;
  }
  ModComm comm(session, [&](int16_t) { return std::make_unique<PosixSerialLine>(device); });
  PrintedProgress progress;
  const int code = ThroughCall(session, comm, progress, dial, [&] {
    mnuSend_Click(session, comm, progress);
    const auto* console = dynamic_cast<const ConsolePrompter*>(&session.prompter());
    return console && console->Last() == "Send data completed successfully." ? 0 : 1;
  });
  TellOpenFailure(comm, port);
  comm.Exit_Comm();
  return code;
}

}  // namespace r6183::ctl

namespace r6183::ctl {

int DateTime(Session& session, const std::string& port, const std::string& set, const std::string& dst,
             const std::string& dial) {
  DateTimeBoxes wanted;
  if (!set.empty() && set != "now") {
    const auto boxes = BoxesOfText(set);
    if (!boxes) {
      std::cerr << "r6183ctl: --set wants \"mm/dd/yy hh:mm:ss\" (month 01-12, day 01-31, hour 00-23, minute and "
                   "second 00-59), got \""
                << set << "\"\n";
      return 2;
    }
    wanted = *boxes;
  }
  const std::string device = DeviceOf(session, port);
  if (device.empty()) return 2;
  ModComm comm(session, [&](int16_t) { return std::make_unique<PosixSerialLine>(device); });
  PrintedProgress progress;
  ProgressWindow quiet;
  int code = 1;
  const int call = ThroughCall(session, comm, progress, dial, [&] {
    mnuDate_Click(session, comm, quiet, [&] {
      const DateTimeBoxes b = BoxesOf(comm.msg_str);
      const auto& st = session.state;
      std::cout << "Date=" << b.month << '/' << b.day << '/' << b.year << '\n'
                << "Time=" << b.hour << ':' << b.minute << ':' << b.second << '\n'
                << "Daylight=" << (!st.DaylightSupported ? "not supported" : st.DaylightEnabled ? "on" : "off") << '\n';
      code = 0;
      if (set.empty() && dst.empty()) return;
      // "Update": the daylight switch where the unit has one, then the date and time
      DateTimeBoxes boxes = set.empty() ? b : wanted;
      if (set == "now") {
        const LocalDateTime n = session.clock().Now();
        auto two = [](int v) { return (v < 10 ? "0" : "") + std::to_string(v); };
        boxes = {two(n.month), two(n.day), two(n.year % 100), two(n.hour), two(n.minute), two(n.second)};
      }
      if (!st.DaylightSupported && !dst.empty()) std::cerr << "r6183ctl: the unit has no daylight-saving function\n";
      code = UpdateDateTime(session, comm, boxes, dst.empty() ? st.DaylightEnabled != 0 : dst == "on") ? 0 : 1;
    });
    return code;
  });
  if (call != 0) code = 1;
  TellOpenFailure(comm, port);
  comm.Exit_Comm();
  return code;
}

}  // namespace r6183::ctl

namespace r6183::ctl {

bool OpenDocument(Session& session, const std::string& file, const PrivateDir& dir) {
  session.state.WorkDbPath = dir / "~TEMP";  // a running desktop program keeps its own
  OpenDatabase(session, file);
  if (session.state.CurrentFileName == file) return true;
  std::cerr << "r6183ctl: " << file << " was not opened\n";
  return false;
}

int Events(Session& session, const std::string& file, int schedule) {
  PrivateDir dir;
  if (!OpenDocument(session, file, dir)) return 2;
  for (int n = 1; n <= 6; ++n) {
    if (schedule != 0 && n != schedule) continue;
    if (schedule == 0) std::cout << "Master Clock Schedule " << n << '\n';
    for (const std::string& line : ScheduleLines(session, n)) std::cout << line << '\n';
  }
  return 0;
}

int EventAdd(Session& session, const std::string& file, const EventRequest& request) {
  PrivateDir dir;
  if (!OpenDocument(session, file, dir)) return 2;
  std::string line, refusal;
  if (!ScriptAddEvent(session, request, line, refusal)) {
    if (!refusal.empty()) std::cerr << "r6183ctl: " << refusal << '\n';
    return 1;
  }
  if (!WriteWhole(session.state.WorkDbPath, file)) return 1;
  std::cout << line << '\n';
  return 0;
}

int EventDelete(Session& session, const std::string& file, int schedule, const std::string& time) {
  PrivateDir dir;
  if (!OpenDocument(session, file, dir)) return 2;
  std::string refusal;
  if (!ScriptDeleteEvent(session, schedule, time, refusal)) {
    std::cerr << "r6183ctl: " << refusal << '\n';
    return 1;
  }
  return WriteWhole(session.state.WorkDbPath, file) ? 0 : 1;
}

int Days(Session& session, const std::string& file, int schedule, const std::optional<std::string>& set) {
  std::optional<std::array<bool, 7>> days;
  if (set) {
    days = ParseDays(*set);
    if (!days) {
      std::cerr << "r6183ctl: --set wants days such as Mon,Tue (Sun to Sat), got \"" << *set << "\"\n";
      return 2;
    }
  }
  PrivateDir dir;
  if (!OpenDocument(session, file, dir)) return 2;
  if (!days) {
    std::cout << DaysText(ScheduleDays(session, schedule)) << '\n';
    return 0;
  }
  std::string refusal;
  if (!ScriptSetDays(session, schedule, *days, refusal)) {
    std::cerr << "r6183ctl: " << refusal << '\n';
    return 1;
  }
  return WriteWhole(session.state.WorkDbPath, file) ? 0 : 1;
}

int Options(Session& session, const std::string& file, const std::optional<std::string>& set) {
  PrivateDir dir;
  if (!OpenDocument(session, file, dir)) return 2;
  if (!set) {
    for (const std::string& line : SwitchLines(session)) std::cout << line << '\n';
    return 0;
  }
  std::string refusal;
  if (!ScriptSetOptions(session, *set, refusal)) {
    std::cerr << "r6183ctl: " << refusal << '\n';
    return 1;
  }
  return WriteWhole(session.state.WorkDbPath, file) ? 0 : 1;
}

int Clocks(Session& session, const std::string& file, const ClockRequest& request) {
  PrivateDir dir;
  if (!OpenDocument(session, file, dir)) return 2;
  if (!request.a && !request.b && !request.direction && !request.bcd) {
    for (const std::string& line : ClockLines(session)) std::cout << line << '\n';
    return 0;
  }
  std::string refusal;
  if (!ScriptSetClocks(session, request, refusal)) {
    std::cerr << "r6183ctl: " << refusal << '\n';
    return 1;
  }
  return WriteWhole(session.state.WorkDbPath, file) ? 0 : 1;
}

}  // namespace r6183::ctl
