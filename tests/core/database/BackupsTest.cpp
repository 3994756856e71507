// The backups folder: the newest 50 of each kind, in the order they were made.
#include <gtest/gtest.h>

#include "database/Backups.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

TEST(Backups, TheFiftyFirstOfAKindRemovesTheOldestOfThatKindOnly) {
  test::TestSession t;
  const std::string doc = t.dir.str("doc.mdb");
  test::WriteFile(doc, "a document");
  ASSERT_FALSE(KeepBackup(*t, doc, "send").empty());
  std::vector<std::string> receives;
  for (int i = 0; i < kBackupsKept + 1; ++i) {
    if (i % 2) t.clock.Advance(std::chrono::seconds(1));  // two in the same second now and then
    receives.push_back(KeepBackup(*t, doc, "receive"));
    ASSERT_FALSE(receives.back().empty());
  }
  const auto kept = ListBackups(t->appDir());
  ASSERT_EQ(kept.size(), static_cast<std::size_t>(kBackupsKept) + 1);
  EXPECT_FALSE(std::filesystem::exists(receives.front()));
  EXPECT_EQ(kept.front().path, receives.back());
  EXPECT_EQ(kept.back().kind, "send");
  EXPECT_TRUE(std::filesystem::exists(kept.back().path));
  // newest first, one after the other as they were made
  std::vector<std::string> expected(receives.rbegin(), receives.rend() - 1);
  std::vector<std::string> listed;
  for (const Backup& b : kept)
    if (b.kind == "receive") listed.push_back(b.path);
  EXPECT_EQ(listed, expected);
}

}  // namespace
}  // namespace r6183
