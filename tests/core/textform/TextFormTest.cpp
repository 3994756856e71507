// The programming as text: a document comes back from its text unchanged, every fault of
// a text is told at its line and column, and the comparison speaks of what the unit holds.
#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include <sstream>

#include "database/Database.h"
#include "database/DocumentDump.h"
#include "support/TestSupport.h"
#include "textform/Differences.h"
#include "textform/TextForm.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;

std::string Dump(const std::string& path) {
  Database db = Database::Open(path, {.readOnly = true});
  std::ostringstream out;
  DumpDocument(db, out);
  return out.str();
}

std::string Template() { return (test::StagedAppDir() / "DEFAULT").string(); }

// A copy of `source` in `dir` changed by `sql`.
std::string Document(const test::TempDir& dir, const std::string& name, const std::string& sql,
                     const std::string& source = Template()) {
  const std::string doc = dir.str(name);
  fs::copy_file(source, doc);
  if (!sql.empty()) SQLite::Database(doc, SQLite::OPEN_READWRITE).exec(sql);
  return doc;
}

TextImport Read(const std::string& text) {
  return ReadProgrammingText(text, ReadProgramming(Template()), LoadClockCatalogue(Template()), "R-6183");
}

// 96 numbered and described stations, 256 events over the six schedules.
constexpr const char* kLargest =
    "UPDATE Config SET System_Config = 3;"
    "UPDATE Clid SET archnum = CAST(1000 + clid_station AS TEXT), clid_string = 'Station ' || clid_station;"
    "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 255)"
    " INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1, PageGroup16)"
    " SELECT i % 6 + 1, printf('%02d:%02d', i / 12, i % 60), i % 59 + 1, i % 4 + 1, 1, i % 2 FROM n;"
    "UPDATE SchedDays SET Sunday = (Schedule = 6), Monday = (Schedule = 1);"
    "UPDATE DipSwitch SET ThreeDigitDialPlan = 1, RingPattern = 1, ExtToneSource = 1;"
    "UPDATE ClassService SET Service = \"Group\" % 3; UPDATE PageGroup SET PageGroup16 = 1 WHERE DialCode = 3";

TEST(TextForm, ADocumentComesBackFromItsTextAsDumpShowsIt) {
  const struct {
    const char* name;
    std::string sql;
    std::string source = Template();
  } cases[] = {
      {"template", ""},
      {"sample site", "", (test::StagedAppDir() / "sample.mdb").string()},
      {"largest programming", kLargest},
      // as a Receive leaves it: every text filled with blanks, clock types in two digits
      {"received", std::string(kLargest) +
                       ";UPDATE Clid SET archnum = printf('%-4s', archnum), clid_string = printf('%-15s', clid_string);"
                       "UPDATE Clid SET archnum = '    ', clid_string = printf('%15s', '') WHERE clid_station > 90;"
                       "UPDATE ClockDef SET ClockEnabled = 1, ClockA = '07', ClockB = '10', Direction = '1', BCD_Type = '3'"},
      // texts no window writes: half-filled stations, a clock outside the catalogue, odd captions
      {"odd texts", "UPDATE Clid SET archnum = '12  ', clid_string = 'Hall' WHERE clid_station = 2;"
                    "UPDATE Clid SET archnum = '7', clid_string = 'Porch ' WHERE clid_station = 3;"
                    "UPDATE ClockDef SET ClockA = '0', ClockB = '4', Direction = '01', BCD_Type = ''"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    test::TempDir dir;
    const std::string doc = Document(dir, "doc.mdb", c.sql, c.source);
    std::vector<std::string> leftOut;
    const std::string text = ProgrammingText(ReadProgramming(doc), LoadClockCatalogue(doc), leftOut);
    EXPECT_TRUE(leftOut.empty());
    const TextImport read = Read(text);
    ASSERT_TRUE(read.refusals.empty()) << read.refusals.front().line << ": " << read.refusals.front().text << "\n"
                                       << text;
    const std::string back = Document(dir, "back.mdb", "");
    WriteProgramming(read.programming, back);
    EXPECT_EQ(Dump(back), Dump(doc)) << text;
  }
}

TEST(TextForm, EveryFaultIsToldAtItsLineAndColumn) {
  const std::string text =
      "boards: 2\n"
      "stations:\n"
      "  - {station: 3, arch: \"123\"}\n"
      "  - {station: 12, arch: \"12\"}\n"
      "  - {station: 13, clid: \"Ωmega\"}\n"
      "  - {station: 60, arch: \"600\"}\n"
      "schedules:\n"
      "  1:\n"
      "    events:\n"
      "      - {time: \"08:15\", relay: 1, duration: 5, groups: [1]}\n"
      "      - {time: \"8:15\", relay: 2, duration: 0, groups: [9]}\n"
      "clocks:\n"
      "  a: Sundial\n";
  const TextImport read = Read(text);
  std::vector<std::pair<int, int>> where;
  std::vector<std::string> what;
  for (const TextRefusal& r : read.refusals) {
    where.emplace_back(r.line, r.column);
    what.push_back(r.text.substr(0, r.text.find(';')));
  }
  EXPECT_EQ(where, (std::vector<std::pair<int, int>>{{4, 25}, {5, 25}, {6, 15}, {11, 16}, {11, 44}, {11, 56}, {13, 6}}));
  EXPECT_EQ(what, (std::vector<std::string>{
                      "station 12, arch: 12 conflicts with 123 of station 3",
                      "station 13, clid: The R-6183 cannot show \"Ω\". Use only the letters, digits and signs of Western "
                      "European languages.",
                      "station 60 is not in this system: its boards have stations 1 to 48",
                      "An event at this 'Start Time' is already scheduled.",
                      "'Tone Duration' must be between 1-59 seconds.",
                      "page group 9 is not in this system: its 2 boards have groups 1 to 8",
                      "unknown clock type \"Sundial\"",
                  }));
}

TEST(TextForm, The257thEventIsRefusedWhereItStands) {
  std::string text = "schedules:\n";
  for (int s = 1; s <= 6; ++s) {
    text += "  " + std::to_string(s) + ":\n    events:\n";
    for (int i = 0; i < (s == 6 ? 47 : 42); ++i)
      text += "      - {time: \"" + std::to_string(10 + i / 60) + ":" + std::to_string(10 + i % 50) +
              "\", relay: 1, duration: 5, groups: [1]}\n";
  }
  const TextImport read = Read(text);
  ASSERT_EQ(read.refusals.size(), 1u);
  EXPECT_EQ(read.refusals[0].line, 1 + 6 * 2 + 257);
  EXPECT_EQ(read.refusals[0].text, "a unit takes 256 events at most: this is the 257th");
}

TEST(TextForm, DifferencesSpeakOfWhatTheUnitHolds) {
  const Programming base = Read("boards: 3\nstations:\n  - {station: 5, arch: \"200\"}\n"
                                "schedules:\n  2:\n    events:\n      - {time: \"08:15\", duration: 3, groups: [1]}\n")
                               .programming;
  const auto catalogue = LoadClockCatalogue(Template());
  const struct {
    const char* name;
    std::function<void(Programming&)> change;
    std::vector<std::string> lines;
  } cases[] = {
      {"a station, an event and an option",
       [](Programming& p) {
         p.stations[4].archnum = "201";
         p.events.clear();
         p.dip[5] = 1;
       },
       {"Station 5: Arch 200 -> 201", "Schedule 2: event 08:15 removed", "Option Queue Tone: off -> on"}},
      {"what the messages make",
       [](Programming& p) {
         p.stations[4] = {"200 ", "               "};
         p.stations[80] = {"9999", "Lost"};  // beyond the three boards
         p.events[0].groups[15] = true;
         p.audio[0][12] = true;
         p.service[15] = 0;
         p.clockA = "01";
       },
       {}},
      {"another board",
       [](Programming& p) {
         p.systemConfig = 3;
         p.stations[80] = {"9999", "Lost"};
       },
       {"Boards: 3 -> 4", "Station 81: Arch (none) -> 9999", "Station 81: Description (none) -> \"Lost\""}},
      {"event, days, groups, service and clocks",
       [](Programming& p) {
         p.events[0].duration = 5;
         p.events[0].relay = 2;
         p.events.push_back({2, "09:00", 4, 3, {true}});
         p.days[1][3] = true;
         p.customGroups[1][2] = true;
         p.service[0] = 2;
         p.clockA = "3";
         p.bcdType = "1";
       },
       {"Custom group 51: page groups none -> 3", "Schedule 2: days none -> Wed",
        "Schedule 2: event 08:15: relay 1 -> 2, 3 -> 5 sec", "Schedule 2: event 09:00 added: relay 3, 4 sec, page groups 1",
        "Class of service, group 1 (stations 1 - 6): Normal / Emergency -> Emergency Only!",
        "Clock A: Minute Impulse 24V DC -> Synchronous Wired 59 Minute", "Clock BCD type: 12 Hour -> 24  Hour"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Programming changed = base;
    c.change(changed);
    EXPECT_EQ(Differences(base, changed, catalogue), c.lines);
  }
}

}  // namespace
}  // namespace r6183
