// r6183ctl: the command-line companion of the programming tool, for scripted work,
// service technicians and tests.
#include <CLI/CLI.hpp>

#include <iostream>

#include "Commands.h"
#include "ConsolePrompter.h"
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
  std::string port;
  auto* revs = app.add_subcommand("revs", "ask the unit for the revisions of its processors and option cards");
  revs->add_option("--port", port, "port number 1 to 16, or a device path")->required();
  auto* receive = app.add_subcommand("receive", "receive the unit's programming on PORT and save it as OUT");
  receive->add_option("OUT", file)->required();
  receive->add_option("--port", port, "port number 1 to 16, or a device path")->required();
  receive->add_flag("--force", force, "replace OUT when it exists");
  auto* send = app.add_subcommand("send", "send the programming document FILE to the unit on PORT");
  send->add_option("FILE", file)->required();
  send->add_option("--port", port, "port number 1 to 16, or a device path")->required();
  send->add_flag("--yes", yes, "answer Yes to the warning about a unit older than 2.00");

  std::string setTime, dst;
  bool setNow = false;
  auto* datetime = app.add_subcommand("datetime", "read, and with --set or --dst set, the unit's date, time and daylight switch");
  datetime->add_option("--port", port, "port number 1 to 16, or a device path")->required();
  auto* setOpt = datetime->add_option("--set", setTime, "send this date and time: \"mm/dd/yy hh:mm:ss\"");
  datetime->add_flag("--set-now", setNow, "send the PC's date and time")->excludes(setOpt);
  datetime->add_option("--dst", dst, "switch the daylight-saving adjustment on or off")->check(CLI::IsMember({"on", "off"}));

  CLI11_PARSE(app, argc, argv);

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
    ctl::ConsolePrompter prompter(yes);
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
    if (*revs) return ctl::Revs(session, port);
    if (*receive) return ctl::Receive(session, file, port, force);
    if (*send) return ctl::Send(session, file, port);
    if (*datetime) return ctl::DateTime(session, port, setNow ? "now" : setTime, dst);
  } catch (const std::exception& e) {
    std::cerr << "r6183ctl: " << e.what() << '\n';
    return 2;
  }
  return 2;
}
