#include <gtest/gtest.h>
#include <unistd.h>

#include "JournalRows.h"
#include "shell/IniFile.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

// settings.ini as an earlier installation left it.
const std::string kOldSettings =
    "[System]\r\nCom Port=2\r\nDebug=0\r\nMDI Height=7200\r\nMDI Width=9600\r\n"
    "SwitchBorad Top=1200\r\nSwitchBorad Left=300\r\nSwitchBorad Width=6000\r\n"
    "SwitchBorad Heigth=4500\r\nModem Init=AT&F\r\n"
    "\r\n"
    "; documents opened last\r\n"
    "[Last Files]\r\nFile 1=C:\\Program Files\\R6183\\Site A.mdb\r\nFile 2=C:\\Data\\lobby.mdb\r\n"
    "File 3=A:\\backup.mdb\r\nFile 4=\r\n"
    "\r\n"
    "[Printer]\r\nOrientation = 2\r\n";

class IniFileTest : public ::testing::Test {
 protected:
  IniFileTest() : ini(ts->journal()), path(ts.dir.str("settings.ini")) { ini.SetFileName(path); }
  std::string Read(const std::string& section, const std::string& key) {
    ini.SetSectionName(section);
    return ini.ReadString_From_INI(key);
  }
  int16_t ReadInt(const std::string& section, const std::string& key) {
    ini.SetSectionName(section);
    return ini.ReadINT_From_INI(key);
  }
  void Write(const std::string& section, const std::string& key, const std::string& value) {
    ini.SetSectionName(section);
    ini.WriteINI(key, value);
  }
  std::string Bytes() const { return ReadFile(path); }

  TestSession ts;
  INIClass ini;
  std::string path;
};

TEST_F(IniFileTest, ReadsAFileOfAnEarlierInstallation) {
  WriteFile(path, kOldSettings);
  const struct {
    const char *section, *key, *value;
  } cases[] = {
      {"System", "SwitchBorad Heigth", "4500"},
      {"Last Files", "File 1", "C:\\Program Files\\R6183\\Site A.mdb"},
      {"Last Files", "File 4", ""},
      {"Printer", "Orientation", "2"},
      {"SYSTEM", "com port", "2"},
      {"  Last Files ", " FILE 2 ", "C:\\Data\\lobby.mdb"},
      {"System", "File 1", ""},  // a key of another section
      {"Missing", "Com Port", ""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Read(c.section, c.key), c.value) << c.section << "/" << c.key;
  EXPECT_EQ(ReadInt("system", "MDI WIDTH"), 9600);
}

TEST_F(IniFileTest, WritingTheSameValuesBackKeepsEveryByte) {
  WriteFile(path, kOldSettings);
  for (const char* key : {"Com Port", "Debug", "MDI Height", "MDI Width", "SwitchBorad Top",
                          "SwitchBorad Left", "SwitchBorad Width", "SwitchBorad Heigth"})
    Write("System", key, Read("System", key));
  for (const char* key : {"File 1", "File 2", "File 3", "File 4"})
    Write("Last Files", key, Read("Last Files", key));
  EXPECT_EQ(Bytes(), kOldSettings);
}

TEST_F(IniFileTest, WritingChangesOnlyWhatItMust) {
  const auto with = [](std::string s, const std::string& from, const std::string& to) {
    return s.replace(s.find(from), from.size(), to);
  };
  const struct {
    const char *section, *key, *value;
    std::string after;
  } cases[] = {
      {"system", "MDI WIDTH", "12000", with(kOldSettings, "MDI Width=9600", "MDI Width=12000")},
      {"Printer", "orientation", "1", with(kOldSettings, "Orientation = 2", "Orientation=1")},
      {"System", "Language", "EN", with(kOldSettings, "AT&F\r\n", "AT&F\r\nLanguage=EN\r\n")},
      {"Modem", "Speed", "9600", kOldSettings + "\r\n[Modem]\r\nSpeed=9600\r\n"},
  };
  for (const auto& c : cases) {
    WriteFile(path, kOldSettings);
    Write(c.section, c.key, c.value);
    EXPECT_EQ(Bytes(), c.after) << c.key;
  }
  int settingsFiles = 0;  // and no temporary file stays behind
  for (const auto& e : fs::directory_iterator(ts.dir.path()))
    settingsFiles += e.path().filename().string().rfind("settings.ini", 0) == 0;
  EXPECT_EQ(settingsFiles, 1);
}

TEST_F(IniFileTest, KeepsTheLineEndsOfTheFile) {
  const struct {
    std::string before, after;
  } cases[] = {
      {"[System]\nDebug=1\n\n[Other]\nA=1\n", "[System]\nDebug=1\nCom Port=3\n\n[Other]\nA=1\n"},
      {"[Other]\nA=1\n", "[Other]\nA=1\n\n[System]\nCom Port=3\n"},
      {"[System]\r\nCom Port=1", "[System]\r\nCom Port=3"},
      {"[System]\r\nDebug=1", "[System]\r\nDebug=1\r\nCom Port=3\r\n"},
      {"[System]\n[Other]\n", "[System]\nCom Port=3\n[Other]\n"},
      {"[Other]\r\nA=1\r\n\r\n", "[Other]\r\nA=1\r\n\r\n[System]\r\nCom Port=3\r\n"},
      {"[s]\nA=1\n[T]\n[SYSTEM]\nB=2\n", "[s]\nA=1\n[T]\n[SYSTEM]\nB=2\nCom Port=3\n"},
      {"", "[System]\r\nCom Port=3\r\n"},
  };
  for (const auto& c : cases) {
    WriteFile(path, c.before);
    Write("System", "Com Port", "3");
    EXPECT_EQ(Bytes(), c.after) << c.before;
  }
}

TEST_F(IniFileTest, ValuesLoseBlanksAndMatchingQuotes) {
  WriteFile(path,
            "[S]\n  Plain   =  some text  \nDouble=\"  quoted  \"\nSingle='x'\nMixed=\"x'\n"
            "Lone=\"\n;Commented=1\nNoEquals\nTab\t=\tv\t\n[S]\nLater=1\n");
  const struct {
    const char *key, *value;
  } cases[] = {
      {"Plain", "some text"}, {"Double", "  quoted  "}, {"Single", "x"},  {"Mixed", "\"x'"},
      {"Lone", "\""},         {"Commented", ""},        {"NoEquals", ""}, {"Tab", "v"},
      {"Later", ""}};
  for (const auto& c : cases) EXPECT_EQ(Read("S", c.key), c.value) << c.key;
}

TEST_F(IniFileTest, LongTextsAreCutTo127Characters) {
  std::string e128;  // 128 two-byte characters
  for (int i = 0; i < 128; ++i) e128 += "\xc3\xa9";
  const struct {
    std::string value, read;
  } cases[] = {{std::string(127, 'b'), std::string(127, 'b')},
               {std::string(128, 'c'), std::string(127, 'c')},
               {std::string(300, 'd'), std::string(127, 'd')},
               {e128, e128.substr(0, 254)}};
  for (const auto& c : cases) {
    WriteFile(path, "[S]\r\nK=" + c.value + "\r\n");
    EXPECT_EQ(Read("S", "K"), c.read) << c.value.size() << " bytes";
  }
}

TEST_F(IniFileTest, IntegerReadTakesTheLeadingNumberAndJournalsOverflow) {
  const struct {
    const char* text;
    int16_t value;
    bool overflow;
  } cases[] = {{"12abc", 12, false},
               {"abc", 0, false},
               {"", 0, false},
               {"  -5", -5, false},
               {"+7", 7, false},
               {"3.9", 3, false},
               {"32767", 32767, false},
               {"-32768", -32768, false},
               {"32768", 0, true},
               {"-32769", 0, true},
               {"99999999999999999999999", 0, true}};
  std::size_t overflows = 0;
  for (const auto& c : cases) {
    WriteFile(path, std::string("[S]\r\nN=") + c.text + "\r\n");
    EXPECT_EQ(ReadInt("S", "N"), c.value) << c.text;
    overflows += c.overflow;
    const auto rows = JournalRows(*ts);
    ASSERT_EQ(rows.size(), overflows) << c.text;
    if (c.overflow) {
      EXPECT_EQ(rows.back().number, err::Overflow);
      EXPECT_EQ(rows.back().module, "INIClass");
      EXPECT_EQ(rows.back().routine, "ReadINT_From_INI");
    }
  }
}

TEST_F(IniFileTest, AMissingFileReadsEmptyAndAMissingDirectoryIsPassedOver) {
  EXPECT_EQ(ReadInt("System", "Com Port"), 0);
  EXPECT_EQ(Read("System", "Com Port"), "");
  EXPECT_FALSE(fs::exists(path));
  ini.SetFileName(ts.dir.str("no such dir/settings.ini"));
  Write("System", "Com Port", "2");
  EXPECT_EQ(Read("System", "Com Port"), "");
  EXPECT_TRUE(JournalRows(*ts).empty());
}

TEST_F(IniFileTest, AFileThatCannotBeReadIsNeverReplaced) {
  WriteFile(path, kOldSettings);
  fs::permissions(path, fs::perms::owner_write);
  AsUnprivileged(ts.dir.path(), [&] {
    Write("System", "Com Port", "4");
    return true;
  });
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(Bytes(), kOldSettings);
}

}  // namespace
}  // namespace r6183::test
