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

class DateTime : public ::testing::Test, public test::LinkedUnit {
 protected:
  // Runs the command; what the date window would show, or nothing when it did not open.
  std::optional<DateTimeBoxes> Run() {
    std::optional<DateTimeBoxes> shown;
    mnuDate_Click(*t, *comm, progress, [&] { shown = BoxesOf(comm->msg_str); });
    return shown;
  }
};

TEST_F(DateTime, AClockThatMakesNoSenseIsSetFromThePcAndReadAgain) {
  unitSim->Options().faults.badClock = true;
  const auto boxes = Run();
  ASSERT_TRUE(boxes);
  // the manual clock of the session stands at 11/06/2001 09:30
  EXPECT_EQ(boxes->month + "/" + boxes->day + "/" + boxes->year, "11/06/01");
  EXPECT_EQ(boxes->hour + ":" + boxes->minute, "09:30");
  EXPECT_EQ(t->state.DateTimeActive, 0);
  EXPECT_TRUE(t->menu.Enabled("mnuDate"));
}

TEST_F(DateTime, AUnitWithoutDaylightGetsNoUOnUpdate) {
  unitSim->Options().daylightSupported = false;
  auto boxes = Run();
  ASSERT_TRUE(boxes);
  EXPECT_EQ(t->state.DaylightSupported, 0);
  boxes->day = TwoDigitBox("7");
  EXPECT_TRUE(UpdateDateTime(*t, *comm, *boxes, true));
  for (const auto& m : unitSim->Received()) EXPECT_NE(m[0], 'U') << m;
  EXPECT_EQ(unitSim->UnitTime().day, 7);
  EXPECT_TRUE(UpdateDateTime(*t, *comm, {"02", "29", "24", "13", "45", "00"}, false));
  const LocalDateTime set = unitSim->UnitTime();
  EXPECT_EQ((std::vector<int>{set.year, set.month, set.day, set.hour, set.minute}),
            (std::vector<int>{2024, 2, 29, 13, 45}));
  // and the next Date/Time reads it back
  const auto again = Run();
  ASSERT_TRUE(again);
  EXPECT_EQ(again->month + "/" + again->day + "/" + again->year, "02/29/24");
}

TEST_F(DateTime, DaylightIsReadFromTheUnit) {
  unitSim->Options().daylightOn = true;
  ASSERT_TRUE(Run());
  EXPECT_EQ(t->state.DaylightSupported, 1);
  EXPECT_EQ(t->state.DaylightEnabled, 1);
  // "Update" with the box cleared switches the unit's adjustment off
  ASSERT_TRUE(UpdateDateTime(*t, *comm, BoxesOf(comm->msg_str), false));
  EXPECT_FALSE(unitSim->DaylightOn());
}

TEST_F(DateTime, NoUnitIsRefusedWithItsText) {
  unitSim->Options().faults.silentAfter = 1;
  EXPECT_FALSE(Run());
  EXPECT_EQ(t.prompter.Shown().back().text,
            "Cannot perform 'Set System Date and Time'.\n\rCommunications not established.");
  EXPECT_EQ(t->state.DateTimeActive, 0);
}

}  // namespace
}  // namespace r6183
