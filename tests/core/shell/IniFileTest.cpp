#include "shell/IniFile.h"

#include <gtest/gtest.h>

#include "JournalRows.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

// settings.ini as an earlier installation left it.
const std::string kOldSettings =
    "[System]\r\n"
    "Com Port=2\r\n"
    "Debug=0\r\n"
    "MDI Height=7200\r\n"
    "MDI Width=9600\r\n"
    "SwitchBorad Top=1200\r\n"
    "SwitchBorad Left=300\r\n"
    "SwitchBorad Width=6000\r\n"
    "SwitchBorad Heigth=4500\r\n"
    "Modem Init=AT&F\r\n"
    "\r\n"
    "; documents opened last\r\n"
    "[Last Files]\r\n"
    "File 1=C:\\Program Files\\R6183\\Site A.mdb\r\n"
    "File 2=C:\\Data\\lobby.mdb\r\n"
    "File 3=A:\\backup.mdb\r\n"
    "File 4=\r\n"
    "\r\n"
    "[Printer]\r\n"
    "Orientation = 2\r\n";

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
    const char* section;
    const char* key;
    const char* value;
  } cases[] = {
      {"System", "Com Port", "2"},
      {"System", "MDI Height", "7200"},
      {"System", "SwitchBorad Heigth", "4500"},
      {"System", "Modem Init", "AT&F"},
      {"Last Files", "File 1", "C:\\Program Files\\R6183\\Site A.mdb"},
      {"Last Files", "File 3", "A:\\backup.mdb"},
      {"Last Files", "File 4", ""},
      {"Printer", "Orientation", "2"},
      {"SYSTEM", "com port", "2"},          // case of section and key does not matter
      {"  Last Files ", " FILE 2 ", "C:\\Data\\lobby.mdb"},
      {"System", "File 1", ""},             // a key of another section
      {"Missing", "Com Port", ""},
      {"System", "Missing", ""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Read(c.section, c.key), c.value) << c.section << " / " << c.key;
  EXPECT_EQ(ReadInt("System", "SwitchBorad Width"), 6000);
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

TEST_F(IniFileTest, ChangingAValueChangesOnlyItsLine) {
  WriteFile(path, kOldSettings);
  Write("system", "MDI WIDTH", "12000");  // the file's own spelling stays
  std::string expected = kOldSettings;
  expected.replace(expected.find("MDI Width=9600"), 14, "MDI Width=12000");
  EXPECT_EQ(Bytes(), expected);

  Write("Printer", "orientation", "1");  // blanks around '=' go
  expected.replace(expected.find("Orientation = 2"), 15, "Orientation=1");
  EXPECT_EQ(Bytes(), expected);
}

TEST_F(IniFileTest, AMissingKeyGoesAfterTheLastKeyOfItsSection) {
  WriteFile(path, kOldSettings);
  Write("System", "Language", "EN");
  std::string expected = kOldSettings;
  const std::string last = "Modem Init=AT&F\r\n";
  expected.insert(expected.find(last) + last.size(), "Language=EN\r\n");
  EXPECT_EQ(Bytes(), expected);
  EXPECT_EQ(Read("System", "Language"), "EN");
}

TEST_F(IniFileTest, AMissingSectionGoesAtTheEndAfterAnEmptyLine) {
  WriteFile(path, kOldSettings);
  Write("Modem", "Speed", "9600");
  EXPECT_EQ(Bytes(), kOldSettings + "\r\n[Modem]\r\nSpeed=9600\r\n");
}

TEST_F(IniFileTest, KeepsTheLineEndsOfTheFile) {
  const struct {
    const char* name;
    std::string before;
    std::string after;
  } cases[] = {
      {"LF file, new key", "[System]\nDebug=1\n\n[Other]\nA=1\n",
       "[System]\nDebug=1\nCom Port=3\n\n[Other]\nA=1\n"},
      {"LF file, new section", "[Other]\nA=1\n", "[Other]\nA=1\n\n[System]\nCom Port=3\n"},
      {"no final line end", "[System]\r\nCom Port=1", "[System]\r\nCom Port=3"},
      {"no final line end, new key", "[System]\r\nDebug=1", "[System]\r\nDebug=1\r\nCom Port=3\r\n"},
      {"section without keys", "[System]\n[Other]\n", "[System]\nCom Port=3\n[Other]\n"},
      {"ends with an empty line", "[Other]\r\nA=1\r\n\r\n",
       "[Other]\r\nA=1\r\n\r\n[System]\r\nCom Port=3\r\n"},
      {"empty file", "", "[System]\r\nCom Port=3\r\n"},
  };
  for (const auto& c : cases) {
    WriteFile(path, c.before);
    Write("System", "Com Port", "3");
    EXPECT_EQ(Bytes(), c.after) << c.name;
  }
}

TEST_F(IniFileTest, ANewFileIsCreatedWithCrlf) {
  Write("Last Files", "File 1", "/home/op/site.mdb");
  EXPECT_EQ(Bytes(), "[Last Files]\r\nFile 1=/home/op/site.mdb\r\n");
}

TEST_F(IniFileTest, WritingLeavesNoTemporaryFileBehind) {
  WriteFile(path, kOldSettings);
  Write("System", "Com Port", "4");
  Write("New", "Key", "v");
  int settingsFiles = 0;
  for (const auto& e : fs::directory_iterator(ts.dir.path()))
    if (e.path().filename().string().rfind("settings.ini", 0) == 0) ++settingsFiles;
  EXPECT_EQ(settingsFiles, 1);
}

TEST_F(IniFileTest, ValuesLoseBlanksAndMatchingQuotes) {
  WriteFile(path,
            "[S]\n"
            "  Plain   =  some text  \n"
            "Double=\"  quoted  \"\n"
            "Single='x'\n"
            "Mixed=\"x'\n"
            "Lone=\"\n"
            ";Commented=1\n"
            "NoEquals\n"
            "Tab\t=\tv\t\n");
  const struct {
    const char* key;
    const char* value;
  } cases[] = {{"Plain", "some text"}, {"Double", "  quoted  "}, {"Single", "x"},
               {"Mixed", "\"x'"},      {"Lone", "\""},         {"Commented", ""},
               {";Commented", ""},     {"NoEquals", ""},       {"Tab", "v"}};
  for (const auto& c : cases) EXPECT_EQ(Read("S", c.key), c.value) << c.key;
}

TEST_F(IniFileTest, OnlyTheFirstSectionOfANameCounts) {
  WriteFile(path, "[S]\nA=1\n[T]\nA=2\n[s]\nA=3\nB=4\n");
  EXPECT_EQ(Read("S", "A"), "1");
  EXPECT_EQ(Read("S", "B"), "");
  Write("S", "B", "5");
  EXPECT_EQ(Bytes(), "[S]\nA=1\nB=5\n[T]\nA=2\n[s]\nA=3\nB=4\n");
}

TEST_F(IniFileTest, LongTextsAreCutTo127Characters) {
  const std::string u = "\xc3\xa9";  // one character, two bytes
  std::string u128;
  for (int i = 0; i < 128; ++i) u128 += u;
  const struct {
    std::string value;
    std::string read;
  } cases[] = {
      {std::string(126, 'a'), std::string(126, 'a')},
      {std::string(127, 'b'), std::string(127, 'b')},
      {std::string(128, 'c'), std::string(127, 'c')},
      {std::string(300, 'd'), std::string(127, 'd')},
      {u128, u128.substr(0, 127 * u.size())},
  };
  for (const auto& c : cases) {
    WriteFile(path, "[S]\r\nK=" + c.value + "\r\n");
    EXPECT_EQ(Read("S", "K"), c.read) << c.value.size() << " bytes";
  }
}

TEST_F(IniFileTest, IntegerReadTakesTheLeadingNumber) {
  const struct {
    const char* text;
    int16_t value;
  } cases[] = {{"12", 12},       {"12abc", 12},       {"abc", 0},      {"", 0},
               {"  -5", -5},     {"+7", 7},           {"3.9", 3},      {"-", 0},
               {"32767", 32767}, {"-32768", -32768},  {"007", 7},      {"1 2", 1}};
  for (const auto& c : cases) {
    WriteFile(path, std::string("[S]\r\nN=") + c.text + "\r\n");
    EXPECT_EQ(ReadInt("S", "N"), c.value) << '"' << c.text << '"';
  }
  EXPECT_TRUE(JournalRows(*ts).empty());
}

TEST_F(IniFileTest, AnIntegerBeyond16BitsIsJournalledAsOverflowAndReadsZero) {
  const char* texts[] = {"32768", "-32769", "70000", "99999999999999999999999"};
  for (const char* text : texts) {
    WriteFile(path, std::string("[S]\r\nN=") + text + "\r\n");
    EXPECT_EQ(ReadInt("S", "N"), 0) << text;
  }
  const auto rows = JournalRows(*ts);
  ASSERT_EQ(rows.size(), std::size(texts));
  for (const auto& row : rows) {
    EXPECT_EQ(row.number, err::Overflow);
    EXPECT_EQ(row.description, "Overflow");
    EXPECT_EQ(row.module, "INIClass");
    EXPECT_EQ(row.routine, "ReadINT_From_INI");
  }
}

TEST_F(IniFileTest, AMissingFileReadsAsZeroAndEmpty) {
  EXPECT_EQ(ReadInt("System", "Com Port"), 0);
  EXPECT_EQ(Read("System", "Com Port"), "");
  EXPECT_FALSE(fs::exists(path));
  EXPECT_TRUE(JournalRows(*ts).empty());
}

TEST_F(IniFileTest, AnUnwritableDirectoryIsPassedOverQuietly) {
  ini.SetFileName(ts.dir.str("no such dir/settings.ini"));
  Write("System", "Com Port", "2");
  EXPECT_EQ(Read("System", "Com Port"), "");
  EXPECT_TRUE(JournalRows(*ts).empty());
}

}  // namespace
}  // namespace r6183::test
