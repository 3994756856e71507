// The rules of an event's fields that need no window.
#include <gtest/gtest.h>

#include "editors/EventEntry.h"

namespace r6183 {
namespace {

TEST(EventEntryTest, TheListLineKeepsItsColumnsWhereTheSchedulesReadThem) {
  std::array<bool, kPageGroups> groups{};
  groups[0] = groups[2] = groups[15] = true;
  const std::string line = EventLine("08:15", Value(2), Value(5), groups);
  EXPECT_EQ(line, "08:15\tRelay 2\t5 sec\t1,3,16");
  EXPECT_EQ(LineStartTime(line), "08:15");
  EXPECT_EQ(LineRelay(line), 2);
  EXPECT_EQ(LineDuration(line), 5) << "a one-digit duration comes with the following blank";
  const std::string two = EventLine("23:59", Value(4), Value(59), {});
  EXPECT_EQ(two, "23:59\tRelay 4\t59 sec\t");
  EXPECT_EQ(LineDuration(two), 59);
  EXPECT_EQ(LineStartTime(""), "");
}

TEST(EventEntryTest, LeavingTheStartTimeRewritesWhatWasTyped) {
  const struct {
    const char* typed;
    const char* shown;
    bool valid;
  } cases[] = {
      {"7", "00:07", true},      {"7:5", "07:05", true},   {"930", "09:30", true},   {"", "00:00", true},
      {"12345", "23:45", true},  {"123:45", "23:45", true}, {"7:", "07:00", true},   {":5", "00:05", true},
      {"23:59", "23:59", true},  {"24:00", "24:00", false}, {"960", "09:60", false}, {"2400", "24:00", false},
      {"1:2:3", "1:2:3", false}, {"::", "::", false},
  };
  for (const auto& c : cases) {
    const StartTimeRewrite r = RewriteStartTime(c.typed);
    EXPECT_EQ(r.text, c.shown) << c.typed;
    EXPECT_EQ(r.time.has_value(), c.valid) << c.typed;
  }
}

TEST(EventEntryTest, OnlyDigitsColonAndBackspaceReachTheStartTime) {
  for (int key = 1; key < 128; ++key) {
    int k = key;
    StartTimeKey(k);
    const bool passes = key == 8 || key == ':' || (key >= '0' && key <= '9');
    EXPECT_EQ(k, passes ? key : 0) << key;
  }
}

TEST(EventEntryTest, TheMinuteBarCarriesIntoTheHourButNeverWrapsTheDay) {
  const struct {
    const char* before;  // time shown before the step
    int minuteBar;       // where the step put the minute bar
    const char* after;
  } cases[] = {
      {"23:59", kMinuteBarMin, "23:59"},  // up from the last minute of the day
      {"00:00", kMinuteBarMax, "00:00"},  // down from the first
      {"10:59", kMinuteBarMin, "11:00"},
      {"11:00", kMinuteBarMax, "10:59"},
      {"10:30", -31, "10:31"},
  };
  for (const auto& c : cases) {
    const auto t = ParseStartTime(c.before);
    ASSERT_TRUE(t) << c.before;
    EXPECT_EQ(TimeOfBars(MinuteBarMoved(-t->hour, c.minuteBar)), c.after) << c.before << " " << c.minuteBar;
  }
}

TEST(EventEntryTest, DurationTextSetsTheFlagOnlyForNumbers) {
  const struct {
    const char* text;
    std::optional<bool> bad;
    std::optional<int> bar;
  } cases[] = {
      {"1", false, -1}, {"59", false, -59}, {"05", false, -5}, {"60", true, {}},
      {"0", true, {}},  {"", {}, {}},       {"x", {}, {}},
  };
  for (const auto& c : cases) {
    const DurationChange d = DurationTextChanged(c.text);
    EXPECT_EQ(d.bad, c.bad) << c.text;
    EXPECT_EQ(d.bar, c.bar) << c.text;
  }
  EXPECT_EQ(DurationOfBar(-7), "7");
}

TEST(EventEntryTest, TheRefusalListsTheFailedChecksInItsOrder) {
  EXPECT_EQ(CannotSaveText(true, true, true, true),
            "Cannot save current event:\nStart Time format must be 'hh:mm'.\n"
            "- An event at this 'Start Time' is already scheduled.\n"
            "- 'Tone Duration' must be between 1-59 seconds.\n- Must select a 'Page Group'.");
  EXPECT_EQ(CannotSaveText(false, false, true, false),
            "Cannot save current event:\n- 'Tone Duration' must be between 1-59 seconds.");
}

}  // namespace
}  // namespace r6183
