// Backups of the transfers: one after each successful Receive and Send, none after a
// failed one, the newest 50 of each kind kept, and a backup that can't be written never
// stops the transfer.
#include <gtest/gtest.h>

#include "LinkedUnit.h"
#include "database/Backups.h"
#include "database/DocumentCommands.h"
#include "protocol/ReceiveTransfer.h"
#include "protocol/SendTransfer.h"

namespace r6183 {
namespace {

using test::Dump;

class Backups : public ::testing::Test, public test::LinkedUnit {
 protected:
  explicit Backups(sim::UnitOptions options = {}) : test::LinkedUnit(options) {}
  std::vector<Backup> Kept() { return ListBackups(t->appDir()); }
};

TEST_F(Backups, EachSuccessfulTransferKeepsWhatWentOverTheLine) {
  mnuRx_Click(*t, *comm, progress);
  ASSERT_EQ(t.prompter.Shown().back().text, "Receive Data completed successfully.");
  auto kept = Kept();
  ASSERT_EQ(kept.size(), 1u);
  EXPECT_EQ(kept[0].kind, "receive");
  const LocalDateTime now = t.clock.Now();  // the transfer's waits moved the session's clock
  char name[40];
  std::snprintf(name, sizeof name, "%04d-%02d-%02d_%02d%02d%02d_receive.mdb", now.year, now.month, now.day, now.hour,
                now.minute, now.second);
  EXPECT_EQ(std::filesystem::path(kept[0].path).filename(), name);
  EXPECT_EQ(Dump(kept[0].path), Dump(t->state.WorkDbPath));

  OpenDatabase(*t, document);
  mnuSend_Click(*t, *comm, progress);
  ASSERT_EQ(t.prompter.Shown().back().text, "Send data completed successfully.");
  kept = Kept();
  ASSERT_EQ(kept.size(), 2u);
  EXPECT_EQ(kept[0].kind, "send");
  EXPECT_EQ(Dump(kept[0].path), Dump(document));
}

class SilentUnitBackups : public Backups {
 protected:
  SilentUnitBackups() : Backups(sim::UnitOptions{.revisions = {}, .faults = {.silentAfter = 1}}) {}
};

TEST_F(SilentUnitBackups, AFailedReceiveKeepsNothing) {
  mnuRx_Click(*t, *comm, progress);
  EXPECT_EQ(t.prompter.Shown().back().text, "Error receiving data");
  EXPECT_TRUE(Kept().empty());
}

TEST_F(Backups, ABackupThatCannotBeWrittenIsJournalledAndTheReceiveStillSucceeds) {
  test::WriteFile(t->appDir().Dir() / "backups", "a file where the folder should be");
  mnuRx_Click(*t, *comm, progress);
  EXPECT_EQ(t.prompter.Shown().back().text, "Receive Data completed successfully.");
  EXPECT_EQ(t->state.CurrentFileName, "Untitled");
  const auto rows = test::JournalRows(*t);
  ASSERT_FALSE(rows.empty());
  EXPECT_EQ(rows.back().module, "modBackups");
  EXPECT_EQ(rows.back().routine, "KeepBackup");
}

}  // namespace
}  // namespace r6183
