#include "shell/Settings.h"

#include <gtest/gtest.h>

#include "JournalRows.h"
#include "shell/IniFile.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

using Recent = std::array<std::string, 5>;

class SettingsTest : public ::testing::Test {
 protected:
  std::string Path() { return ts->state.SettingsPath; }
  std::string ReadKey(const std::string& section, const std::string& key) {
    INIClass ini(ts->journal());
    ini.SetFileName(Path());
    ini.SetSectionName(section);
    return ini.ReadString_From_INI(key);
  }
  // Forgets every value but the paths.
  void ForgetValues() {
    ProcessState fresh;
    fresh.SettingsPath = ts->state.SettingsPath;
    fresh.ErrorsDbPath = ts->state.ErrorsDbPath;
    ts->state = fresh;
  }
  TestSession ts;
};

TEST_F(SettingsTest, ReadsSystemValuesAndRecentFiles) {
  WriteFile(Path(),
            "[System]\r\nCom Port=3\r\nDebug=2\r\nMDI Height=7200\r\nMDI Width=9600\r\n"
            "[Last Files]\r\nFile 1=C:\\a.mdb\r\nFile 2=/b.mdb\r\nFile 4=d.mdb\r\n");
  ReadIniFile(*ts);
  const auto& st = ts->state;
  EXPECT_EQ(st.ComPortNumber, 3);
  EXPECT_EQ(st.DebugLevel, 2);
  EXPECT_EQ(st.MdiHeight, 7200);
  EXPECT_EQ(st.MdiWidth, 9600);
  EXPECT_EQ(st.RecentFiles, (Recent{"", "C:\\a.mdb", "/b.mdb", "", "d.mdb"}));
}

TEST_F(SettingsTest, APortOutside1To16ReadsAs1) {
  const struct {
    const char* text;
    int16_t port;
  } cases[] = {{"0", 1}, {"17", 1}, {"-3", 1}, {"16", 16}, {"1", 1}, {"9", 9}, {"COM2", 1}, {"", 1}};
  for (const auto& c : cases) {
    WriteFile(Path(), std::string("[System]\r\nCom Port=") + c.text + "\r\n");
    ts->state.ComPortNumber = 5;
    ReadIniFile(*ts);
    EXPECT_EQ(ts->state.ComPortNumber, c.port) << c.text;
  }
}

TEST_F(SettingsTest, WithoutASettingsFileEverythingReadsEmptyAndSavingCreatesIt) {
  ASSERT_FALSE(fs::exists(Path()));
  auto& st = ts->state;
  st.DebugLevel = 4;
  st.MdiHeight = 1;
  st.RecentFiles = {"", "x", "y", "z", "w"};
  ReadIniFile(*ts);
  EXPECT_EQ(st.ComPortNumber, 1);
  EXPECT_EQ(st.DebugLevel, 0);
  EXPECT_EQ(st.MdiHeight, 0);
  EXPECT_EQ(st.MdiWidth, 0);
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
  EXPECT_EQ(ReadKey("System", "Debug"), "3");

  const ProcessState saved = st;
  ForgetValues();
  ReadIniFile(*ts);
  EXPECT_EQ(st.ComPortNumber, saved.ComPortNumber);
  EXPECT_EQ(st.DebugLevel, 3);
  EXPECT_EQ(st.MdiHeight, saved.MdiHeight);
  EXPECT_EQ(st.MdiWidth, saved.MdiWidth);
  EXPECT_EQ(st.RecentFiles, saved.RecentFiles);
}

TEST_F(SettingsTest, SwitchBoardValuesUseTheOldKeyNames) {
  auto& st = ts->state;
  st.SwitchBoardTop = 100;
  st.SwitchBoardLeft = 200;
  st.SwitchBoardWidth = 3000;
  st.SwitchBoardHeight = 4000;
  PutSwitchBoardVal(*ts);
  EXPECT_EQ(ReadKey("System", "SwitchBorad Top"), "100");
  EXPECT_EQ(ReadKey("System", "SwitchBorad Left"), "200");
  EXPECT_EQ(ReadKey("System", "SwitchBorad Width"), "3000");
  EXPECT_EQ(ReadKey("System", "SwitchBorad Heigth"), "4000");

  ForgetValues();
  getSwitchBoardValues(*ts);
  EXPECT_EQ(st.SwitchBoardTop, 100);
  EXPECT_EQ(st.SwitchBoardLeft, 200);
  EXPECT_EQ(st.SwitchBoardWidth, 3000);
  EXPECT_EQ(st.SwitchBoardHeight, 4000);
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
      {"last moves to the top", {"", "a", "b", "c", "d"}, "d", {"", "d", "a", "b", "c"}},
      {"a new name drops the oldest", {"", "a", "b", "c", "d"}, "e", {"", "e", "a", "b", "c"}},
      {"another case is another file", {"", "a", "B", "c", "d"}, "b", {"", "b", "a", "B", "c"}},
      {"into an empty list", {"", "", "", "", ""}, "a", {"", "a", "", "", ""}},
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
