// The Send transfer against the simulated unit, in-process on a manual clock.
#include <gtest/gtest.h>

#include "LinkedUnit.h"
#include "database/Database.h"
#include "database/DocumentCommands.h"
#include "protocol/SendTransfer.h"

namespace r6183 {
namespace {

using test::Dump;

class SendTransfer : public ::testing::Test, public test::LinkedUnit {
 protected:
  explicit SendTransfer(sim::UnitOptions options = {}) : test::LinkedUnit(options) {
    t->product.ProductModel = "R-6183";
    // a full system whose fields need no padding on the wire
    site = t.dir.str("site.mdb");
    std::filesystem::copy_file(test::StagedAppDir() / "DEFAULT", site);
    SQLite::Database(site, SQLite::OPEN_READWRITE)
        .exec("UPDATE Config SET System_Config = 3; UPDATE ClockDef SET ClockA = '04', ClockB = '11';"
              "UPDATE Clid SET archnum = printf('%04d', 3000 + clid_station), clid_string = printf('Desk %-10d', clid_station);"
              "UPDATE SchedDays SET Tuesday = (Schedule = 3);"
              "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup7) VALUES (3, '10:00', 45, 2, 1);"
              "UPDATE ClassService SET Service = 2 WHERE \"Group\" = 16");
    OpenDatabase(*t, site);
  }
  std::string site;
};

TEST_F(SendTransfer, TheDocumentBecomesTheUnitsProgramming) {
  mnuSend_Click(*t, *comm, progress);
  EXPECT_EQ(t.prompter.Shown().back().text, "Send data completed successfully.");
  EXPECT_EQ(Dump(memory.Path().string()), Dump(site));
  EXPECT_EQ(progress.lines.front(), "Preparing to send data...||1");
  EXPECT_EQ(progress.lines.at(1), "Sending Data:|Events|3");
  EXPECT_EQ(progress.lines.back(), "Finished||100");
  const std::string tx = test::ReadFile(t.dir.path() / "tx_data.txt");
  EXPECT_EQ(tx.rfind("Date - Time - ", 0), 0u);
  EXPECT_NE(tx.find("\r\nX3"), std::string::npos);
  EXPECT_EQ(tx.find("\r\nH"), std::string::npos);  // the handshake is no programming data
}

// A station text the line cannot carry stops the Send before anything goes to the unit,
// with a message that names the station, the field and the character.
TEST_F(SendTransfer, RefusesAStationTextTheLineCannotCarryBeforeAnythingIsSent) {
  const struct {
    const char* sql;
    const char* text;
  } cases[] = {
      {"UPDATE Clid SET clid_string = 'Salle Ωmega' WHERE clid_station = 12",
       "Station 12 cannot be sent to the R-6183: its description \"Salle Ωmega\" holds \"Ω\", which the R-6183 "
       "cannot show.\n\nChange the description and send again. Nothing has been sent."},
      {"UPDATE Clid SET archnum = '3' || char(9) || '1' WHERE clid_station = 40",
       "Station 40 cannot be sent to the R-6183: its Architectural Number \"3\t1\" holds the control character 09, "
       "which the R-6183 cannot show.\n\nChange the Architectural Number and send again. Nothing has been sent."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.sql);
    Database::Open(t->state.WorkDbPath).Handle().exec(c.sql);
    mnuSend_Click(*t, *comm, progress);
    EXPECT_EQ(t.prompter.Shown().back().text, c.text);
    EXPECT_EQ(unitSim->Count().framesReceived, 0);
    EXPECT_FALSE(std::filesystem::exists(t.dir.path() / "tx_data.txt"));
    EXPECT_TRUE(progress.lines.empty());
    EXPECT_TRUE(t->menu.Enabled("mnuFile"));
    Database::Open(t->state.WorkDbPath).Handle().exec("UPDATE Clid SET clid_string = '', archnum = ''");
  }
  // what is cut off at fifteen characters needs no carrying
  Database::Open(t->state.WorkDbPath).Handle().exec(
      "UPDATE Clid SET clid_string = 'Fifteen letterséΩ' WHERE clid_station = 1");
  mnuSend_Click(*t, *comm, progress);
  EXPECT_EQ(t.prompter.Shown().back().text, "Send data completed successfully.");
}

class SendToAnOldUnit : public SendTransfer {
 protected:
  static sim::UnitOptions Old() {
    sim::UnitOptions o;
    o.revisions.second = o.revisions.main = "0150";
    return o;
  }
  SendToAnOldUnit() : SendTransfer(Old()) {}
};

TEST_F(SendToAnOldUnit, WarnsAndSendsNothingOnNo) {
  t.prompter.QueueAnswer(Answer::No);
  mnuSend_Click(*t, *comm, progress);
  EXPECT_EQ(t.prompter.Shown().back().text,
            "R-6183 System may not support all programmed features.\r\n\r\nUpgrade the R-6183 System Software to "
            "prevent receiving\r\nthis message in the future.\r\n\r\nContinue? ");
  EXPECT_FALSE(std::filesystem::exists(t.dir.path() / "tx_data.txt"));
  EXPECT_TRUE(t->menu.Enabled("mnuFile"));
}

}  // namespace
}  // namespace r6183
