// The Receive transfer against the simulated unit, in-process on a manual clock.
#include <gtest/gtest.h>

#include "LinkedUnit.h"
#include "protocol/ReceiveTransfer.h"

namespace r6183 {
namespace {

using test::Dump;

class ReceiveTransfer : public ::testing::Test, public test::LinkedUnit {};

TEST_F(ReceiveTransfer, TheUnitsProgrammingBecomesAnUntitledDocument) {
  mnuRx_Click(*t, *comm, progress);
  ASSERT_FALSE(t.prompter.Shown().empty());
  EXPECT_EQ(t.prompter.Shown().back().text, "Receive Data completed successfully.");
  EXPECT_EQ(t->state.CurrentFileName, "Untitled");
  EXPECT_EQ(t->menu.WindowCaption(), "Untitled - Title");
  EXPECT_EQ(t->state.SystemConfig, 2);
  EXPECT_EQ(t->state.EventCount, 1);
  EXPECT_TRUE(t->menu.Enabled("mnuFileClose"));
  // what the messages themselves make of the unit's programming: numbers and descriptions
  // padded with blanks, a one-character clock type with a leading "0", and nothing of the
  // stations beyond the two expansion boards (station 90)
  SQLite::Database(document, SQLite::OPEN_READWRITE)
      .exec("UPDATE Clid SET archnum = printf('%-4s', archnum), clid_string = printf('%-15s', clid_string) "
            "WHERE clid_station <= 72; UPDATE Clid SET archnum = '', clid_string = '' WHERE clid_station > 72;"
            "UPDATE ClockDef SET ClockA = '01', ClockB = '01'");
  EXPECT_EQ(Dump(t->state.WorkDbPath), Dump(document));
  EXPECT_EQ(progress.lines.front(), "Preparing to receive data...||1");
  EXPECT_EQ(progress.lines.back(), "Receiving data...|All Done|100");
  const std::string rx = test::ReadFile(t.dir.path() / "rx_data.txt");
  EXPECT_EQ(rx.rfind("Date - Time - 11/06/2001 09:30:", 0), 0u) << rx.substr(0, 40);
  EXPECT_NE(rx.find("\r\nX2"), std::string::npos);
  EXPECT_EQ(rx.find("\r\nK"), std::string::npos);  // K, N and I never reach the data file
}

}  // namespace
}  // namespace r6183
