// The date and time exchange against the simulated unit, in-process on a manual clock.
#include <gtest/gtest.h>

#include "LinkedUnit.h"
#include "protocol/DateTime.h"

namespace r6183 {
namespace {

TEST(DateTimeText, EveryTwoDigitYearPassesAndOnlyTheRestCanFail) {
  const std::pair<const char*, bool> cases[] = {
      {"12/31/99 23:59:59", true}, {"1/1/00 0:0:0", true},     {"2/29/00 12:00:00", true},
      {"2/29/01 12:00:00", false}, {"13/01/05 10:00:00", false}, {"04/31/05 10:00:00", false},
      {"01/01/05 24:00:00", false}, {"01/01/05 10:60:00", false}, {"1/1/5 1:2:3", true},
      {"01/0a/05 10:00:00", false}, {"01/01/05", false},
  };
  for (const auto& [text, valid] : cases) EXPECT_EQ(ValidMdyyDateTime(text), valid) << text;
  EXPECT_TRUE(BoxValid("07", DateBoxRange(1)));
  EXPECT_FALSE(BoxValid("13", DateBoxRange(0)));
  EXPECT_TRUE(BoxValid("00", DateBoxRange(2)));
  EXPECT_EQ(TwoDigitBox("7"), "07");
}

// Typed on the command line, the text is checked box by box as the window checks it: a
// day that the month does not have still goes to the unit as it stands.
TEST(DateTimeText, TypedTextIsCheckedBoxByBox) {
  const std::pair<const char*, const char*> cases[] = {
      {"04/31/26 10:00:00", "04|31|26|10|00|00"}, {"02/29/25 23:59:59", "02|29|25|23|59|59"},
      {"12/01/00 00:00:00", "12|01|00|00|00|00"}, {"13/01/26 10:00:00", ""}, {"00/10/26 10:00:00", ""},
      {"12/32/26 10:00:00", ""}, {"12/00/26 10:00:00", ""}, {"12/01/26 24:00:00", ""}, {"12/01/26 10:60:00", ""},
      {"1/5/26 10:00:00", ""}, {"12/01/26 10:00", ""}, {"12-01-26 10:00:00", ""}, {"1a/01/26 10:00:00", ""},
      {"+1/01/26 10:00:00", ""}, {" 1/01/26 10:00:00", ""},
  };
  for (const auto& [text, boxes] : cases) {
    const auto b = BoxesOfText(text);
    const std::string got =
        b ? b->month + "|" + b->day + "|" + b->year + "|" + b->hour + "|" + b->minute + "|" + b->second : "";
    EXPECT_EQ(got, boxes) << text;
  }
}

class DateTime : public ::testing::Test, public test::LinkedUnit {
 protected:
  // Runs the command; what the date window would show, or nothing when it did not open.
  std::optional<DateTimeBoxes> Run() {
    std::optional<DateTimeBoxes> shown;
    mnuDate_Click(*t, *comm, progress, [&] { shown = BoxesOf(comm->msg_str); });
    return shown;
  }
};

TEST_F(DateTime, NoUnitIsRefusedWithItsText) {
  unitSim->Options().faults.silentAfter = 1;
  EXPECT_FALSE(Run());
  EXPECT_EQ(t.prompter.Shown().back().text,
            "Cannot perform 'Set System Date and Time'.\n\rCommunications not established.");
  EXPECT_EQ(t->state.DateTimeActive, 0);
}

}  // namespace
}  // namespace r6183
