#include <gtest/gtest.h>

#include <tuple>

#include "shell/Settings.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

using Recent = std::array<std::string, 5>;

auto Numbers(ProcessState& st) {
  return std::tie(st.ComPortNumber, st.DebugLevel, st.MdiHeight, st.MdiWidth, st.SwitchBoardTop,
                  st.SwitchBoardLeft, st.SwitchBoardWidth, st.SwitchBoardHeight);
}

TEST(SettingsTest, AFileOfAnEarlierInstallationRoundTripsByteForByte) {
  const std::string old =
      "[System]\r\nCom Port=2\r\nDebug=1\r\nMDI Height=7200\r\nMDI Width=9600\r\n"
      "SwitchBorad Top=1200\r\nSwitchBorad Left=300\r\nSwitchBorad Width=6000\r\n"
      "SwitchBorad Heigth=4500\r\nModem Init=AT&F\r\n\r\n; documents opened last\r\n"
      "[Last Files]\r\nFile 1=C:\\Program Files\\R6183\\Site A.mdb\r\nFile 2=/home/op/lobby.mdb\r\n"
      "File 3=A:\\backup.mdb\r\nFile 4=\r\n\r\n[Printer]\r\nOrientation = 2\r\n";
  TestSession ts;
  WriteFile(ts->state.SettingsPath, old);
  ReadIniFile(*ts);
  getSwitchBoardValues(*ts);
  EXPECT_EQ(Numbers(ts->state), std::tuple(2, 1, 7200, 9600, 1200, 300, 6000, 4500));
  EXPECT_EQ(ts->state.RecentFiles, (Recent{"", "C:\\Program Files\\R6183\\Site A.mdb",
                                           "/home/op/lobby.mdb", "A:\\backup.mdb", ""}));
  SaveIniFile(*ts);
  PutSwitchBoardVal(*ts);
  EXPECT_EQ(ReadFile(ts->state.SettingsPath), old);
  EXPECT_TRUE(JournalRows(*ts).empty());
}

TEST(SettingsTest, APortOutside1To16ReadsAs1) {
  TestSession ts;
  for (const auto& [text, port] : {std::pair{"0", 1}, {"2", 2}, {"16", 16}, {"17", 1}, {"COM2", 1}}) {
    WriteFile(ts->state.SettingsPath, std::string("[System]\r\nCom Port=") + text + "\r\n");
    ReadIniFile(*ts);
    EXPECT_EQ(ts->state.ComPortNumber, port) << text;
  }
}

TEST(SettingsTest, WithoutAFileAllReadsEmptyAndSavingMakesItButNeverWritesTheDebugLevel) {
  TestSession ts;
  auto& st = ts->state;
  Numbers(st) = std::tuple(4, 4, 4, 4, 4, 4, 4, 4);
  st.RecentFiles = {"", "x", "y", "z", "w"};
  ReadIniFile(*ts);
  getSwitchBoardValues(*ts);
  EXPECT_EQ(Numbers(st), std::tuple(1, 0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(st.RecentFiles, Recent{});
  Numbers(st) = std::tuple(12, 9, 8000, 11000, 1, 2, 3, 4);
  st.RecentFiles = {"", "/home/op/one.mdb", "C:\\two.mdb", "", "four.mdb"};
  SaveIniFile(*ts);
  PutSwitchBoardVal(*ts);
  EXPECT_EQ(ReadFile(st.SettingsPath),
            "[System]\r\nCom Port=12\r\nMDI Height=8000\r\nMDI Width=11000\r\nSwitchBorad Top=1\r\n"
            "SwitchBorad Left=2\r\nSwitchBorad Width=3\r\nSwitchBorad Heigth=4\r\n\r\n[Last Files]\r\n"
            "File 1=/home/op/one.mdb\r\nFile 2=C:\\two.mdb\r\nFile 3=\r\nFile 4=four.mdb\r\n");
}

TEST(SettingsTest, TheRecentFilesKeepTheMostRecentFirst) {
  const struct {
    Recent before;
    const char* opened;
    Recent after;
  } cases[] = {
      {{"", "a", "b", "c", "d"}, "c", {"", "c", "a", "b", "d"}},  // moves up
      {{"", "a", "b", "c", "d"}, "a", {"", "a", "b", "c", "d"}},
      {{"", "a", "b", "c", "d"}, "e", {"", "e", "a", "b", "c"}},  // the oldest drops out
      {{"", "a", "B", "c", "d"}, "b", {"", "b", "a", "B", "c"}},  // another case, another file
      {{"x", "a", "b", "", ""}, "x", {"x", "x", "a", "b", ""}},   // slot 0 is never used
  };
  for (const auto& c : cases) {
    Recent recent = c.before;
    UpdateFileArray(recent, c.opened);
    EXPECT_EQ(recent, c.after) << c.opened;
  }
}

}  // namespace
}  // namespace r6183::test
