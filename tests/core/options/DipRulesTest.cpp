// The switch chart's rules: where each option stands on the main board's switches.
#include <gtest/gtest.h>

#include "options/DipRules.h"

namespace r6183::test {
namespace {

using Positions = std::array<std::optional<bool>, kSwitches>;

TEST(RingPattern, StoredNumbersAreNotTheScreenOrder) {
  // top to bottom on the window, and what each button stores
  std::vector<std::string> shown;
  for (int pattern : kRingPatternScreenOrder) shown.push_back(RingPatternCaption(pattern));
  EXPECT_EQ(shown, (std::vector<std::string>{" American", " British", " Dutch"}));
  EXPECT_STREQ(RingPatternCaption(ring::Dutch), " Dutch");
  EXPECT_EQ(ring::Dutch, 1);
  EXPECT_EQ(ring::British, 2);
}

TEST(RingPattern, TwoSwitchesByTheStoredText) {
  struct Case {
    std::string text;
    std::optional<std::pair<bool, bool>> switches;
  } cases[] = {
      {"0", std::pair{false, false}}, {"1", std::pair{false, true}}, {"2", std::pair{true, false}},
      {"3", std::nullopt},            {"", std::nullopt},            {" 1", std::nullopt},
      {"01", std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(RingPatternSwitches(c.text), c.switches) << '"' << c.text << '"';
}

TEST(SwitchChart, EachOptionOnItsOwnSwitch) {
  // one option set at a time: exactly its switch goes ON, all others that the chart
  // sets stay OFF, and switch 5 is never touched
  struct Case {
    const char* option;
    void (*set)(DipValues&);
    int switchOn;
  } cases[] = {
      {"station 21", [](DipValues& v) { v.lowStation[0] = 1; }, 1},
      {"station 24", [](DipValues& v) { v.lowStation[3] = 1; }, 4},
      {"queue tone", [](DipValues& v) { v.queueTone = 1; }, 6},
      {"dial tone", [](DipValues& v) { v.dialTone = 1; }, 7},
      {"handsfree", [](DipValues& v) { v.hfAlertTone = 1; }, 8},
      {"page alert", [](DipValues& v) { v.pageAlertTone = 1; }, 9},
      {"ringback", [](DipValues& v) { v.ringbackTone = 1; }, 10},
      {"privacy", [](DipValues& v) { v.privacyTone = 1; }, 11},
      {"priority global", [](DipValues& v) { v.priorityGlobal = 1; }, 12},
      {"override", [](DipValues& v) { v.priorityOverride = 1; }, 13},
      {"british", [](DipValues& v) { v.ringPattern = "2"; }, 14},
      {"dutch", [](DipValues& v) { v.ringPattern = "1"; }, 15},
      {"external tone", [](DipValues& v) { v.extToneSource = 1; }, 16},
  };
  for (const Case& c : cases) {
    DipValues v;
    c.set(v);
    const Positions p = SwitchPositions(v);
    for (int n = 1; n <= kSwitches; ++n) {
      const auto& at = p[static_cast<std::size_t>(n - 1)];
      if (n == 5) EXPECT_FALSE(at.has_value()) << c.option;
      else EXPECT_EQ(at, std::optional<bool>(n == c.switchOn)) << c.option << ", switch " << n;
    }
  }
}

TEST(SwitchChart, OnlyOneIsOnAndUnknownPatternsLeaveTheirRows) {
  DipValues v;
  v.lowStation = {2, -1, 1, 0};  // anything but 1 is OFF
  v.ringPattern = "7";
  const Positions p = SwitchPositions(v);
  EXPECT_EQ(p[0], false);
  EXPECT_EQ(p[1], false);
  EXPECT_EQ(p[2], true);
  EXPECT_FALSE(p[13].has_value());
  EXPECT_FALSE(p[14].has_value());
}

TEST(SwitchChart, RowLabelsKeepTheirBlanks) {
  EXPECT_STREQ(SwitchLabel(1), "  Low Priority Station 21");
  EXPECT_STREQ(SwitchLabel(5), "  3 Digit Dial Plan");
  EXPECT_STREQ(SwitchLabel(13), "  Override External ");
  EXPECT_STREQ(SwitchLabel(14), "  Ring Pattern");
  EXPECT_STREQ(SwitchLabel(15), "");
  EXPECT_STREQ(SwitchLabel(16), "  Tone Source");
}

}  // namespace
}  // namespace r6183::test
