// The unit's whole transfers, in-process: the tool's own routines on one end of an
// in-memory line, the simulated unit on the other.
#include <gtest/gtest.h>

#include "LinkedUnit.h"
#include "protocol/Messages.h"

namespace r6183 {
namespace {

// A document whose fields need no padding on the wire, so what comes back is equal.
const char* kProgramming =
    "UPDATE Config SET System_Config = 3;"
    "UPDATE ClockDef SET ClockEnabled = 1, ClockA = '03', ClockB = '10', Direction = '1', BCD_Type = '2';"
    "UPDATE Clid SET archnum = printf('%04d', 2000 + clid_station), clid_string = printf('Station %-7d', clid_station);"
    "UPDATE PageGroup SET PageGroup1 = 1, PageGroup16 = DialCode % 2;"
    "UPDATE SchedDays SET Monday = (Schedule = 1), Friday = (Schedule = 5);"  // a day runs one schedule
    "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup3) VALUES"
    " (1, '07:30', 10, 1, 1), (1, '12:00', 59, 4, 0), (6, '23:59', 1, 2, 1);"
    "UPDATE TonesPG SET PageGroup12 = 1; UPDATE EmergencyPG SET PageGroup16 = 1; UPDATE Bgm SET PageGroup2 = 1;"
    "UPDATE DipSwitch SET QueueTone = 1, RingPattern = 2; UPDATE ClassService SET Service = \"Group\" % 3;";

using test::Dump;

// The unit starts from the template; `site` is what the tool sends it.
class UnitTransfers : public ::testing::Test, public test::LinkedUnit {
 protected:
  UnitTransfers() {
    memory.Load(test::StagedAppDir() / "DEFAULT");
    site = t.dir.str("site.mdb");
    std::filesystem::copy_file(test::StagedAppDir() / "DEFAULT", site);
    SQLite::Database(site, SQLite::OPEN_READWRITE).exec(kProgramming);
    comm->Init_Comm(0);
    comm->dataFile.Open(t.dir.str("data.txt"));
    comm->logFile.Open(t.dir.str("log.txt"));
  }

  // What the tool's Send transfer does, stage by stage, from `path`.
  void SendDocument(const std::string& path) {
    Messages m(*t, *comm);
    Database db = Database::Open(path);
    t->state.SystemConfig = 3;
    std::string s = "S";
    ASSERT_TRUE(comm->Send_Msg(s));
    m.SendConfig(); m.SendDip(db); m.SendClock(db); m.SendClid(db); m.SendGroups(db); m.SendClassService(db);
    m.SendSched(db); m.SendEvents(db); m.SendCT(db); m.SendEmer(db); m.SendBGM(db);
    std::string a = "A";
    ASSERT_TRUE(comm->Send_Msg(a));
    EXPECT_FALSE(comm->transfer.TransferFailed);
  }

  // R: the letters of what the unit sends, until A.
  std::string ReceiveAll(bool acceptNewer = false) {
    std::string r = "R", letters;
    if (!comm->Send_Msg(r)) return "no answer to R";
    for (int i = 0; i < 300 && comm->Receive_Msg(acceptNewer); ++i) {
      letters += comm->msg_str[0];
      if (comm->msg_str == "A") break;
    }
    return letters;
  }

  std::string site;
};

TEST_F(UnitTransfers, ASentDocumentBecomesTheUnitsMemoryAndComesBackWhole) {
  SendDocument(site);
  EXPECT_TRUE(test::JournalRows(*t).empty());
  EXPECT_FALSE(transfers->Receiving());
  EXPECT_EQ(Dump(memory.Path().string()), Dump(site));

  const std::string expected = "XID" + std::string(96, 'C') + "GGGGP" + std::string(7, 'W') + "EEEKNMA";
  EXPECT_EQ(ReceiveAll(), expected);
  EXPECT_EQ(transfers->LastSendCount(), static_cast<int>(expected.size()));
}

TEST_F(UnitTransfers, UnknownLettersPassOnlyWhenTheToolAcceptsNewerUnits) {
  transfers->SendUnknownLetters(true);
  const std::string all = ReceiveAll(true);
  EXPECT_EQ(all.substr(0, 6), "YXYIYD");
  EXPECT_EQ(all.back(), 'A');
  // refused five times, the first unknown frame ends the exchange
  EXPECT_EQ(ReceiveAll(false), "");
}

TEST_F(UnitTransfers, AnUnfinishedSendLeavesTheMemoryAsItWas) {
  const std::string before = Dump(memory.Path().string());
  Messages m(*t, *comm);
  Database db = Database::Open(site);
  std::string s = "S";
  ASSERT_TRUE(comm->Send_Msg(s));
  t->state.SystemConfig = 3;
  m.SendConfig();
  m.SendClid(db);
  EXPECT_TRUE(transfers->Receiving());
  transfers.reset();  // the unit is switched off before A
  EXPECT_EQ(Dump(memory.Path().string()), before);
}

}  // namespace
}  // namespace r6183
