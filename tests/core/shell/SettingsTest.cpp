#include <gtest/gtest.h>

#include <vector>

#include "JournalRows.h"
#include "shell/Settings.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

using Recent = std::array<std::string, 5>;

class SettingsTest : public ::testing::Test {
 protected:
  std::string Path() { return ts->state.SettingsPath; }
  // Forgets every value but the paths.
  void ForgetValues() {
    ProcessState fresh;
    fresh.SettingsPath = ts->state.SettingsPath;
    fresh.ErrorsDbPath = ts->state.ErrorsDbPath;
    ts->state = fresh;
  }
  TestSession ts;
};

TEST_F(SettingsTest, APortOutside1To16ReadsAs1) {
  const struct {
    const char* text;
    int16_t port;
  } cases[] = {{"0", 1}, {"17", 1}, {"-3", 1}, {"16", 16}, {"1", 1}, {"9", 9}, {"COM2", 1}};
  for (const auto& c : cases) {
    WriteFile(Path(), std::string("[System]\r\nCom Port=") + c.text + "\r\n");
    ReadIniFile(*ts);
    EXPECT_EQ(ts->state.ComPortNumber, c.port) << c.text;
  }
}

TEST_F(SettingsTest, WithoutASettingsFileEverythingReadsEmptyAndSavingCreatesIt) {
  auto& st = ts->state;
  st.ComPortNumber = st.DebugLevel = 4;
  st.MdiHeight = 1;
  st.RecentFiles = {"", "x", "y", "z", "w"};
  ReadIniFile(*ts);
  EXPECT_EQ(std::vector<int32_t>({st.ComPortNumber, st.DebugLevel, st.MdiHeight, st.MdiWidth}),
            std::vector<int32_t>({1, 0, 0, 0}));
  EXPECT_EQ(st.RecentFiles, Recent{});
  SaveIniFile(*ts);
  EXPECT_EQ(ReadFile(Path()),
            "[System]\r\nCom Port=1\r\nMDI Height=0\r\nMDI Width=0\r\n\r\n"
            "[Last Files]\r\nFile 1=\r\nFile 2=\r\nFile 3=\r\nFile 4=\r\n");
  EXPECT_TRUE(JournalRows(*ts).empty());
}

TEST_F(SettingsTest, SaveThenReadGivesTheSameValuesButNeverWritesTheDebugLevel) {
  WriteFile(Path(), "[System]\r\nDebug=3\r\n");
  auto& st = ts->state;
  st.ComPortNumber = 12;
  st.DebugLevel = 9;
  st.MdiHeight = 8000;
  st.MdiWidth = 11000;
  st.RecentFiles = {"", "/home/op/one.mdb", "C:\\two.mdb", "", "four.mdb"};
  SaveIniFile(*ts);
  EXPECT_EQ(ReadFile(Path()),
            "[System]\r\nDebug=3\r\nCom Port=12\r\nMDI Height=8000\r\nMDI Width=11000\r\n\r\n"
            "[Last Files]\r\nFile 1=/home/op/one.mdb\r\nFile 2=C:\\two.mdb\r\nFile 3=\r\n"
            "File 4=four.mdb\r\n");
  const ProcessState saved = st;
  ForgetValues();
  ReadIniFile(*ts);
  EXPECT_EQ(std::vector<int32_t>({st.ComPortNumber, st.DebugLevel, st.MdiHeight, st.MdiWidth}),
            std::vector<int32_t>({12, 3, 8000, 11000}));
  EXPECT_EQ(st.RecentFiles, saved.RecentFiles);
}

TEST_F(SettingsTest, SwitchBoardValuesUseTheOldKeyNames) {
  auto& st = ts->state;
  st.SwitchBoardTop = 100;
  st.SwitchBoardLeft = 200;
  st.SwitchBoardWidth = 3000;
  st.SwitchBoardHeight = 4000;
  PutSwitchBoardVal(*ts);
  EXPECT_EQ(ReadFile(Path()),
            "[System]\r\nSwitchBorad Top=100\r\nSwitchBorad Left=200\r\n"
            "SwitchBorad Width=3000\r\nSwitchBorad Heigth=4000\r\n");
  ForgetValues();
  getSwitchBoardValues(*ts);
  EXPECT_EQ(std::vector<int32_t>(
                {st.SwitchBoardTop, st.SwitchBoardLeft, st.SwitchBoardWidth, st.SwitchBoardHeight}),
            std::vector<int32_t>({100, 200, 3000, 4000}));
}

TEST(UpdateFileArrayTest, KeepsTheMostRecentFirst) {
  const struct {
    const char* name;
    Recent before;
    const char* opened;
    Recent after;
  } cases[] = {
      {"third moves to the top", {"", "a", "b", "c", "d"}, "c", {"", "c", "a", "b", "d"}},
      {"first stays", {"", "a", "b", "c", "d"}, "a", {"", "a", "b", "c", "d"}},
      {"a new name drops the oldest", {"", "a", "b", "c", "d"}, "e", {"", "e", "a", "b", "c"}},
      {"another case is another file", {"", "a", "B", "c", "d"}, "b", {"", "b", "a", "B", "c"}},
      {"slot 0 is never used", {"x", "a", "b", "", ""}, "x", {"x", "x", "a", "b", ""}},
  };
  for (const auto& c : cases) {
    Recent recent = c.before;
    UpdateFileArray(recent, c.opened);
    EXPECT_EQ(recent, c.after) << c.name;
  }
}

}  // namespace
}  // namespace r6183::test
