#pragma once
// The commands of r6183ctl. Each returns the process exit code.
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "editors/ScheduleScript.h"
#include "options/OptionsScript.h"

namespace r6183 {
class ModComm;
class ProgressWindow;
class Session;
}

namespace r6183::ctl {

// valid / invalid and the counts; 0 valid, 1 invalid, 2 unreadable. FILE is never written.
int Check(Session& session, const std::string& file);
// Every programming table, one line a row; 0 on success, 2 unreadable.
int Dump(Session& session, const std::string& file);
// A new document as the New command makes it, written to FILE; 0 on success.
int New(Session& session, const std::string& file, bool force);
// Opens FILE as the Open command does, converting a file of the older format; 0 when
// FILE is a valid document afterwards.
int Convert(Session& session, const std::string& file);
// The sixteen port numbers, a line each: NUMBER, DEVICE ("-" for none) and
// DESCRIPTION, tab-separated; 0.
int Ports(Session& session);
// Scans ports 1 to 16 as Auto Find does, for the unit or (`modem`) for a modem, and prints
// the port found as `Ports` prints it, or the not-found text; 0 found, 1 not.
int Find(Session& session, bool modem);
// Asks the unit on PORT (1 to 16, or a device path) for its revisions and prints the
// lines the About window lists; 0 when the unit answered.
int Revs(Session& session, const std::string& port);
// The commands on a port take `dial`: when it is not empty they run through a modem call
// to that number, dialled as the phone list dials and released at the end; a call that
// does not stand, or a release that fails, ends in 1.
// With a number to dial, `run` goes through a modem call to it, released at the end; a
// call that does not stand runs nothing, and a release that fails makes the exit code 1.
int ThroughCall(Session& session, ModComm& comm, ProgressWindow& progress, const std::string& dial,
                const std::function<int()>& run);
// Runs the Receive command on PORT and saves the received document as OUT; 0 on
// "Receive Data completed successfully.".
int Receive(Session& session, const std::string& out, const std::string& port, bool force, const std::string& dial);
// Opens FILE as a document and runs the Send command on PORT; 0 on "Send data completed
// successfully.".
int Send(Session& session, const std::string& file, const std::string& port, const std::string& dial);
// Reads the unit's date, time and daylight switch and prints them; with `set` ("mm/dd/yy
// hh:mm:ss" or "now") and/or `dst` ("on"/"off") sends them as "Update" does.
int DateTime(Session& session, const std::string& port, const std::string& set, const std::string& dst,
             const std::string& dial);
// Dials NUMBER through the modem on PORT as the phone list does; the call stands after the
// program ends. 0 on "Modem connected successfully.".
int Dial(Session& session, const std::string& number, const std::string& port);
// Hangs up the modem on PORT as Modem Release does; 0 when released.
int Release(Session& session, const std::string& port);

// The 96 lines of the numbering window; 0, or 2 when FILE is no document.
int Stations(Session& session, const std::string& file);
// Sets the number and/or the description of `station` as the station window's OK does. A
// conflict lists the conflicting stations and leaves FILE as it was (1), unless
// `blankConflicts` answers Yes to it.
int Station(Session& session, const std::string& file, int station, const std::optional<std::string>& arch,
            const std::optional<std::string>& clid, bool blankConflicts);
// Auto numbering from `station` to the number `last`; the first-conflict question takes
// the prompter's answer. 0 when the run was made, 1 when refused or cancelled.
int AutoNumber(Session& session, const std::string& file, int station, const std::string& last);
// The event lines of one schedule (or of all six, each after its window's caption), as the
// schedule window lists them; 0, or 2 when FILE does not open.
int Events(Session& session, const std::string& file, int schedule);
// Adds an event as the schedule and event windows do and saves FILE; 0 when the event was
// saved, 1 with the window's message on stderr and FILE unchanged when it was refused.
int EventAdd(Session& session, const std::string& file, const EventRequest& request);
// Deletes the event at the time from the schedule and saves FILE; 1 when there is none.
int EventDelete(Session& session, const std::string& file, int schedule, const std::string& time);
// Prints the active days of the schedule ("Mon,Tue"), or with `set` makes them those days
// and saves FILE; 1 when a day is active in another schedule.
// The option switches of FILE as the chart shows them, or with `set` ("QueueTone=1") changed.
int Options(Session& session, const std::string& file, const std::optional<std::string>& set);
// The clock definitions of FILE, or with any part of `request` set, changed.
int Clocks(Session& session, const std::string& file, const ClockRequest& request);
int Days(Session& session, const std::string& file, int schedule, const std::optional<std::string>& set);

// The configuration of FILE, or with `boards` (1 to 4) changed as OK in the configuration
// window does; a smaller system asks first, and the prompter's No (without --yes) leaves
// FILE as it was (1).
int Config(Session& session, const std::string& file, std::optional<int> boards);
// The four custom page groups, a line per dial code; 0, or 2 when FILE does not open.
int Groups(Session& session, const std::string& file);
// The custom page group on `dial` made exactly `groups` and OK; 1 with the reason and FILE
// unchanged for a group beyond the configuration.
int Group(Session& session, const std::string& file, int dial, const std::vector<int>& groups);
struct AudioRequest {
  std::string source;  // bgm, time or emergency
  std::vector<int> groups;
};
// The page groups of the three audio sources, or with `request` one source changed.
int Audio(Session& session, const std::string& file, const std::optional<AudioRequest>& request);
// The class of service of the sixteen groups, or with (group, level) one changed.
int Service(Session& session, const std::string& file, std::optional<std::pair<int, int>> groupLevel);

// FILE's programming as YAML, to OUT or stdout; what lies beyond the boards is left out
// with a word on stderr. 0, or 2 when FILE is no document of this version.
int Export(Session& session, const std::string& file, const std::string& out);
// A document made from the YAML file TEXT through the windows' rules, written to OUT; 1
// with every refusal as TEXT:LINE:COLUMN on stderr, and nothing written, when one is refused.
int Import(Session& session, const std::string& text, const std::string& out, bool force);
// The differences between two programmings (documents or YAML files), a line each; 0
// when equal, 1 when not, 2 when one can't be read.
int Diff(Session& session, const std::string& a, const std::string& b);
// Receives the unit's programming on PORT into a private document and compares FILE
// with it; 0 when the unit holds FILE's programming, 1 with the differences, 2 when
// nothing came.
int Verify(Session& session, const std::string& file, const std::string& port, const std::string& dial);
// The automatic backups of the transfers, newest first: date and time, kind, path.
int Backups(Session& session);
// Renders the reports of FILE (by default the six the print window shows; `only` names them
// as "Bgm,Clid") with the print window's heading into the PDF file `pdf`, on the locale's
// paper unless `paper` is "a4" or "letter"; 0 when it was written, 1 when a layout was
// refused or the file could not be written, 2 when FILE is no document or a name unknown.
int Report(Session& session, const std::string& file, const std::string& pdf, const std::string& only,
           const std::string& paper);

}  // namespace r6183::ctl
