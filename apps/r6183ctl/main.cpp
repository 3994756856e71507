// r6183ctl: the command-line companion of the programming tool, for scripted work,
// service technicians and tests.
#include <CLI/CLI.hpp>

#include <QGuiApplication>
#include <QLoggingCategory>

#include <iostream>
#include <sstream>

#include "Commands.h"
#include "ConsolePrompter.h"
#include "editors/ConfigScript.h"
#include "protocol/LineText.h"
#include "protocol/ModComm.h"
#include "shell/AppDir.h"
#include "shell/ErrorsMaintenance.h"
#include "shell/ProductIdentity.h"
#include "shell/Session.h"

int main(int argc, char** argv) {
  using namespace r6183;
  CLI::App app{"R-6183 Programming Tool, command line"};
  app.require_subcommand(1);
  std::string appdir;
  app.add_option("--appdir", appdir, "application directory (default: as the tool finds it)");

  std::string file;
  bool force = false;
  auto* check = app.add_subcommand("check", "tell whether FILE is a valid programming document");
  check->add_option("FILE", file)->required();
  auto* dump = app.add_subcommand("dump", "print every programming table of FILE, a line a row");
  dump->add_option("FILE", file)->required();
  auto* make = app.add_subcommand("new", "write a new programming document to FILE");
  make->add_option("FILE", file)->required();
  make->add_flag("--force", force, "replace FILE when it exists");

  bool yes = false;
  auto* convert = app.add_subcommand("convert", "open FILE as the Open command does, converting an older file");
  convert->add_option("FILE", file)->required();
  convert->add_flag("--yes", yes, "answer Yes to the question whether to convert");

  std::string text;
  auto* frame = app.add_subcommand("frame", "print TEXT with the checksum of its bytes on the line (without CR and NUL)");
  frame->add_option("TEXT", text)->required();
  auto* ports = app.add_subcommand("ports", "list the port numbers 1 to 16 and their devices");
  bool findModem = false;
  auto* findCmd = app.add_subcommand("find", "scan ports 1 to 16 for the unit as Auto Find does; print the port found");
  findCmd->add_flag("--modem", findModem, "look for a modem (\"OK\" to AT&F) instead of the unit");
  std::string port;
  std::string dialNumber;
  const char* dialHelp = "run through a modem call to this number, released at the end";
  auto* dialCmd = app.add_subcommand("dial", "dial NUMBER through the modem on PORT; the call stands until released");
  dialCmd->add_option("NUMBER", dialNumber)->required();
  dialCmd->add_option("--port", port, "port number 1 to 16, or a device path")->required();
  auto* releaseCmd = app.add_subcommand("release", "hang up the modem call on PORT");
  releaseCmd->add_option("--port", port, "port number 1 to 16, or a device path")->required();
  auto* revs = app.add_subcommand("revs", "ask the unit for the revisions of its processors and option cards");
  revs->add_option("--port", port, "port number 1 to 16, or a device path")->required();
  auto* receive = app.add_subcommand("receive", "receive the unit's programming on PORT and save it as OUT");
  receive->add_option("OUT", file)->required();
  receive->add_option("--port", port, "port number 1 to 16, or a device path")->required();
  receive->add_flag("--force", force, "replace OUT when it exists");
  receive->add_option("--dial", dialNumber, dialHelp);
  auto* send = app.add_subcommand("send", "send the programming document FILE to the unit on PORT");
  send->add_option("FILE", file)->required();
  send->add_option("--port", port, "port number 1 to 16, or a device path")->required();
  send->add_flag("--yes", yes, "answer Yes to the warning about a unit older than 2.00");
  send->add_option("--dial", dialNumber, dialHelp);

  std::string setTime, dst;
  bool setNow = false;
  auto* datetime = app.add_subcommand("datetime", "read, and with --set or --dst set, the unit's date, time and daylight switch");
  datetime->add_option("--port", port, "port number 1 to 16, or a device path")->required();
  auto* setOpt = datetime->add_option("--set", setTime, "send this date and time: \"mm/dd/yy hh:mm:ss\"");
  datetime->add_flag("--set-now", setNow, "send the PC's date and time")->excludes(setOpt);
  datetime->add_option("--dst", dst, "switch the daylight-saving adjustment on or off")->check(CLI::IsMember({"on", "off"}));
  datetime->add_option("--dial", dialNumber, dialHelp);

  int stationNumber = 0;
  std::optional<std::string> archnum, clidText;
  std::string lastArch;
  bool blankConflicts = false;
  auto* stations = app.add_subcommand("stations", "print the 96 station lines of FILE as the numbering window lists them");
  stations->add_option("FILE", file)->required();
  auto* station = app.add_subcommand("station", "set the Architectural Number and/or CLID description of station N");
  station->add_option("FILE", file)->required();
  station->add_option("N", stationNumber, "station 1 to 96")->required();
  station->add_option("--arch", archnum, "the number: up to 4 digits, empty to clear it");
  station->add_option("--clid", clidText, "the description: up to 15 characters");
  station->add_flag("--blank-conflicts", blankConflicts, "save despite conflicts, deleting the conflicting numbers");
  auto* autonumber = app.add_subcommand("autonumber", "number the stations from N on, one up each, to the number LAST");
  autonumber->add_option("FILE", file)->required();
  autonumber->add_option("--station", stationNumber, "the first station, which has its number already")->required();
  autonumber->add_option("--last", lastArch, "the last number of the run")->required();
  autonumber->add_flag("--blank-conflicts", blankConflicts, "delete the numbers of stations outside the run that conflict");
  int schedule = 0;
  std::string time, duration, groups, days;
  int relay = 0;
  auto* events = app.add_subcommand("events", "print the event lines of FILE as the schedule windows list them");
  events->add_option("FILE", file)->required();
  events->add_option("--schedule", schedule, "only this schedule, 1 to 6")->check(CLI::Range(1, 6));
  auto* event = app.add_subcommand("event", "add or delete an event of FILE as the schedule and event windows do");
  event->require_subcommand(1);
  auto* eventAdd = event->add_subcommand("add", "add an event and save FILE");
  eventAdd->add_option("FILE", file)->required();
  eventAdd->add_option("--schedule", schedule, "schedule 1 to 6")->required()->check(CLI::Range(1, 6));
  eventAdd->add_option("--time", time, "start time as typed: hh:mm, h:m, hmm")->required();
  auto* relayOpt = eventAdd->add_option("--relay", relay, "relay 1 to 4")->check(CLI::Range(1, 4));
  auto* durationOpt = eventAdd->add_option("--duration", duration, "seconds, 1 to 59");
  auto* groupsOpt = eventAdd->add_option("--groups", groups, "page groups, as 1,3,16");
  auto* eventDelete = event->add_subcommand("delete", "delete the event at the time and save FILE");
  eventDelete->add_option("FILE", file)->required();
  eventDelete->add_option("--schedule", schedule, "schedule 1 to 6")->required()->check(CLI::Range(1, 6));
  eventDelete->add_option("--time", time, "start time, hh:mm")->required();
  std::string optionsSet, clockA, clockB, clockDirection;
  int clockBcd = 0;
  auto* optionsCmd = app.add_subcommand("options", "print, or with --set change, the option switches of FILE");
  optionsCmd->add_option("FILE", file)->required();
  auto* setOptions = optionsCmd->add_option("--set", optionsSet, "fields to change, as QueueTone=1,RingPattern=2");
  auto* clocksCmd = app.add_subcommand("clocks", "print, or with --a --b --direction --bcd change, the clocks of FILE");
  clocksCmd->add_option("FILE", file)->required();
  auto* clockAOpt = clocksCmd->add_option("--a", clockA, "clock type of clock A, by name");
  auto* clockBOpt = clocksCmd->add_option("--b", clockB, "clock type of clock B, by name");
  auto* directionOpt = clocksCmd->add_option("--direction", clockDirection, "input or output");
  auto* bcdOpt = clocksCmd->add_option("--bcd", clockBcd, "BCD type 0 to 3");
  auto* daysCmd = app.add_subcommand("days", "print, or with --set change, the active days of a schedule of FILE");
  daysCmd->add_option("FILE", file)->required();
  daysCmd->add_option("--schedule", schedule, "schedule 1 to 6")->required()->check(CLI::Range(1, 6));
  auto* setDays = daysCmd->add_option("--set", days, "the active days, as Mon,Tue; \"\" for none");

  int boards = 0, dial = 0, serviceGroup = 0, level = 0;
  std::string source, groupList;
  auto* configCmd = app.add_subcommand("config", "print, or with --boards change, the system configuration of FILE");
  configCmd->add_option("FILE", file)->required();
  auto* boardsOpt = configCmd->add_option("--boards", boards, "1 (Main Board) to 4 (Main Board + Expansion 1, 2, 3)");
  configCmd->add_flag("--yes", yes, "answer Yes to removing boards, which clears their programming");
  auto* groupsCmd = app.add_subcommand("groups", "print the custom page groups of FILE, a line per dial code");
  groupsCmd->add_option("FILE", file)->required();
  auto* groupCmd = app.add_subcommand("group", "set the page groups of the custom page group on a dial code");
  groupCmd->add_option("FILE", file)->required();
  groupCmd->add_option("--dial", dial, "dial code 50 to 53")->required();
  groupCmd->add_option("--set", groupList, "page groups, as 1,2,5; \"\" for none")->required();
  auto* audioCmd = app.add_subcommand("audio", "print, or with --source and --set change, the audio connections of FILE");
  audioCmd->add_option("FILE", file)->required();
  auto* sourceOpt = audioCmd->add_option("--source", source, "bgm, time or emergency")
                        ->check(CLI::IsMember({"bgm", "time", "emergency"}));
  auto* audioSetOpt = audioCmd->add_option("--set", groupList, "page groups, as 1,2; \"\" for none");
  sourceOpt->needs(audioSetOpt);
  audioSetOpt->needs(sourceOpt);
  auto* serviceCmd = app.add_subcommand("service", "print, or with --group and --level change, the class of service");
  serviceCmd->add_option("FILE", file)->required();
  auto* serviceGroupOpt = serviceCmd->add_option("--group", serviceGroup, "group 1 to 16");
  auto* levelOpt = serviceCmd->add_option("--level", level,
                                          "0 Normal Only, 1 Normal / Emergency, 2 Emergency Only!");
  serviceGroupOpt->needs(levelOpt);
  levelOpt->needs(serviceGroupOpt);

  std::string second, output;
  auto* exportCmd = app.add_subcommand("export", "write the programming of FILE as YAML");
  exportCmd->add_option("FILE", file)->required();
  exportCmd->add_option("-o,--output", output, "write it to this file instead of stdout");
  auto* importCmd = app.add_subcommand("import", "make the document OUT from a YAML file, through the windows' rules");
  importCmd->add_option("TEXT", text, "the YAML file")->required();
  importCmd->add_option("OUT", output, "the document to write")->required();
  importCmd->add_flag("--force", force, "replace OUT when it exists");
  auto* diffCmd = app.add_subcommand("diff", "print the differences between two programmings (documents or YAML files)");
  diffCmd->add_option("A", file)->required();
  diffCmd->add_option("B", second)->required();
  auto* verifyCmd = app.add_subcommand("verify", "receive the unit's programming on PORT and compare FILE with it");
  verifyCmd->add_option("FILE", file)->required();
  verifyCmd->add_option("--port", port, "port number 1 to 16, or a device path")->required();
  verifyCmd->add_option("--dial", dialNumber, dialHelp);
  auto* backupsCmd = app.add_subcommand("backups", "list the backups kept after each Receive and Send");
  std::string pdf, only, paper;
  auto* report = app.add_subcommand("report", "render the reports of FILE into one PDF with the print window's heading");
  report->add_option("FILE", file)->required();
  report->add_option("--pdf", pdf, "the PDF file to write")->required();
  report->add_option("--only", only, "the reports by file name, as Bgm,Clid (default: the six the print window shows)");
  report->add_option("--paper", paper, "a4 or letter (default: the locale's)")->check(CLI::IsMember({"a4", "letter"}));

  CLI11_PARSE(app, argc, argv);

  // Report pages are painted with QtGui, which needs its application object; no window
  // is ever shown, so the offscreen platform serves wherever the command runs.
  std::unique_ptr<QGuiApplication> painting;
  if (*report) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QLoggingCategory::setFilterRules("default.warning=false");  // Qt's remarks on the environment
    // the program's name alone: Qt would take a document named like one of its options
    static int qtArgc = 1;
    static char* qtArgv[] = {argv[0], nullptr};
    painting = std::make_unique<QGuiApplication>(qtArgc, qtArgv);
  }

  if (*frame) {
    // TEXT as a person types it (UTF-8); the checksum counts the bytes of the line
    if (const auto refusal = LineTextRefusal(text, IdentityFor(kProductIndex, 0).ProductModel)) {
      std::cerr << "r6183ctl: " << *refusal << '\n';
      return 1;
    }
    const auto sum = ChecksumOf(ToLine(text));
    if (!sum) {
      std::cerr << "r6183ctl: the checksum of TEXT overflows\n";
      return 1;
    }
    std::cout << text << *sum << '\n';
    return 0;
  }

  try {
    AppDir dir = appdir.empty() ? AppDir::Locate("/proc/self/exe") : AppDir(appdir);
    if (!std::filesystem::is_directory(dir.Dir())) {
      std::cerr << "r6183ctl: no application directory at " << dir.DirString() << '\n';
      return 2;
    }
    ctl::ConsolePrompter prompter(yes || blankConflicts);
    SystemClock clock;
    Session session(dir, prompter, clock);
    ctl::ConsoleWindows windows(dir.DirString());
    session.SetWindowOpener(&windows);
    RestoreErrorsDatabase(session);
    AA_Sys_WhoAmi(session);

    if (*check) return ctl::Check(session, file);
    if (*dump) return ctl::Dump(session, file);
    if (*make) return ctl::New(session, file, force);
    if (*convert) return ctl::Convert(session, file);
    if (*ports) return ctl::Ports(session);
    if (*findCmd) return ctl::Find(session, findModem);
    if (*revs) return ctl::Revs(session, port);
    if (*dialCmd) return ctl::Dial(session, dialNumber, port);
    if (*releaseCmd) return ctl::Release(session, port);
    if (*receive) return ctl::Receive(session, file, port, force, dialNumber);
    if (*send) return ctl::Send(session, file, port, dialNumber);
    if (*stations) return ctl::Stations(session, file);
    if (*station) return ctl::Station(session, file, stationNumber, archnum, clidText, blankConflicts);
    if (*autonumber) return ctl::AutoNumber(session, file, stationNumber, lastArch);
    if (*datetime) return ctl::DateTime(session, port, setNow ? "now" : setTime, dst, dialNumber);
    if (*events) return ctl::Events(session, file, schedule);
    if (*eventAdd) {
      EventRequest request{schedule, time, std::nullopt, std::nullopt, std::nullopt};
      if (*relayOpt) request.relay = relay;
      if (*durationOpt) request.duration = duration;
      if (*groupsOpt) {
        request.groups.emplace();
        std::istringstream list(groups);
        for (std::string g; std::getline(list, g, ',');) {
          if (g.find_first_not_of(" 0123456789") != std::string::npos || g.find_first_of("0123456789") == std::string::npos) {
            std::cerr << "r6183ctl: --groups wants page group numbers, as 1,3,16, got \"" << groups << "\"\n";
            return 2;
          }
          request.groups->push_back(std::stoi(g));
        }
      }
      return ctl::EventAdd(session, file, request);
    }
    if (*eventDelete) return ctl::EventDelete(session, file, schedule, time);
    if (*optionsCmd) return ctl::Options(session, file, *setOptions ? std::optional<std::string>(optionsSet) : std::nullopt);
    if (*clocksCmd) {
      ClockRequest request;
      if (*clockAOpt) request.a = clockA;
      if (*clockBOpt) request.b = clockB;
      if (*directionOpt) request.direction = clockDirection;
      if (*bcdOpt) request.bcd = clockBcd;
      return ctl::Clocks(session, file, request);
    }
    if (*configCmd) return ctl::Config(session, file, *boardsOpt ? std::optional<int>(boards) : std::nullopt);
    if (*groupsCmd) return ctl::Groups(session, file);
    if (*groupCmd || (*audioCmd && *audioSetOpt)) {
      const auto groups = ParseGroups(groupList);
      if (!groups) {
        std::cerr << "r6183ctl: --set wants page group numbers, as 1,2,5, got \"" << groupList << "\"\n";
        return 2;
      }
      if (*groupCmd) return ctl::Group(session, file, dial, *groups);
      return ctl::Audio(session, file, ctl::AudioRequest{source, *groups});
    }
    if (*audioCmd) return ctl::Audio(session, file, std::nullopt);
    if (*serviceCmd)
      return ctl::Service(session, file, *serviceGroupOpt ? std::optional(std::pair{serviceGroup, level}) : std::nullopt);
    if (*exportCmd) return ctl::Export(session, file, output);
    if (*importCmd) return ctl::Import(session, text, output, force);
    if (*diffCmd) return ctl::Diff(session, file, second);
    if (*verifyCmd) return ctl::Verify(session, file, port, dialNumber);
    if (*backupsCmd) return ctl::Backups(session);
    if (*report) return ctl::Report(session, file, pdf, only, paper);
    if (*daysCmd) return ctl::Days(session, file, schedule, *setDays ? std::optional<std::string>(days) : std::nullopt);
  } catch (const std::exception& e) {
    std::cerr << "r6183ctl: " << e.what() << '\n';
    return 2;
  }
  return 2;
}
