#include <gtest/gtest.h>

#include "shell/IniFile.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

const std::string kText =
    "[System]\r\nCom Port=2\r\nMDI Width=9600\r\nModem Init=AT&F\r\n\r\n; last ones\r\n"
    "[Printer]\r\nOrientation = 2\r\n";

class IniFileTest : public ::testing::Test {
 protected:
  void SetUp() override { ini.SetFileName(path); }
  INIClass& In(const std::string& section) {
    ini.SetSectionName(section);
    return ini;
  }
  TestSession ts;
  std::string path = ts.dir.str("settings.ini");
  INIClass ini{ts->journal()};
};

TEST_F(IniFileTest, ReadsWithoutRegardToCaseOrBlanksAndCutsTo127Characters) {
  const std::string quirks =
      "[S]\n  Plain   =  some text  \nDouble=\"  quoted  \"\nSingle='x'\nMixed=\"x'\nLone=\"\n"
      ";Commented=1\nNoEquals\nTab\t=\tv\t\nEmpty=\n[S]\nLater=1\n";
  std::string e128;  // 128 two-byte characters
  for (int i = 0; i < 128; ++i) e128 += "\xc3\xa9";
  const struct {
    std::string text;
    const char *section, *key;
    std::string value;
  } cases[] = {
      {kText, "SYSTEM", "mdi width", "9600"},  {kText, "  Printer ", " ORIENTATION ", "2"},
      {kText, "Printer", "Com Port", ""},      {kText, "Missing", "Com Port", ""},
      {quirks, "S", "Plain", "some text"},     {quirks, "S", "Double", "  quoted  "},
      {quirks, "S", "Single", "x"},            {quirks, "S", "Mixed", "\"x'"},
      {quirks, "S", "Lone", "\""},             {quirks, "S", "Commented", ""},
      {quirks, "S", "NoEquals", ""},           {quirks, "S", "Tab", "v"},
      {quirks, "S", "Empty", ""},              {quirks, "S", "Later", ""},  // only the first [S]
      {"[L]\nK=" + std::string(127, 'b'), "L", "K", std::string(127, 'b')},
      {"[L]\nK=" + std::string(128, 'c'), "L", "K", std::string(127, 'c')},
      {"[L]\nK=" + e128, "L", "K", e128.substr(0, 254)},
  };
  for (const auto& c : cases) {
    WriteFile(path, c.text);
    EXPECT_EQ(In(c.section).ReadString_From_INI(c.key), c.value) << c.section << "/" << c.key;
  }
}

TEST_F(IniFileTest, WritingChangesOnlyWhatItMustAndKeepsTheLineEnds) {
  const auto with = [](std::string s, const std::string& from, const std::string& to) {
    return s.replace(s.find(from), from.size(), to);
  };
  const struct {
    std::string before;
    const char *section, *key;
    std::string after;
  } cases[] = {
      {kText, "system", "MDI WIDTH", with(kText, "MDI Width=9600", "MDI Width=7")},
      {kText, "Printer", "orientation", with(kText, "Orientation = 2", "Orientation=7")},
      {kText, "System", "Language", with(kText, "AT&F\r\n", "AT&F\r\nLanguage=7\r\n")},
      {kText, "Modem", "Speed", kText + "\r\n[Modem]\r\nSpeed=7\r\n"},
      {"[S]\nDebug=1\n\n[Other]\nA=1\n", "S", "K", "[S]\nDebug=1\nK=7\n\n[Other]\nA=1\n"},
      {"[Other]\r\nA=1\r\n\r\n", "S", "K", "[Other]\r\nA=1\r\n\r\n[S]\r\nK=7\r\n"},
      {"[S]\r\nK=1", "S", "K", "[S]\r\nK=7"},
      {"[S]\r\nDebug=1", "S", "K", "[S]\r\nDebug=1\r\nK=7\r\n"},
      {"[S]\n[Other]\n", "S", "K", "[S]\nK=7\n[Other]\n"},
      {"", "S", "K", "[S]\r\nK=7\r\n"},
  };
  const auto entries = [&] { return std::distance(fs::directory_iterator(ts.dir.path()), {}); };
  const auto before = entries();
  for (const auto& c : cases) {
    WriteFile(path, c.before);
    In(c.section).WriteINI(c.key, "7");
    EXPECT_EQ(ReadFile(path), c.after) << c.before;
  }
  EXPECT_EQ(entries(), before + 1) << "a temporary file stayed behind";
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);  // a private file stays private
  In("S").WriteINI("K", "8");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

// What is written reads back as it was: values a read would trim or unquote go in
// quotes, every other value as it stands.
TEST_F(IniFileTest, AWrittenValueReadsBackUnchanged) {
  const struct {
    std::string file, value, line;
  } cases[] = {
      {"[S]\r\nK=1\r\n", "/home/op/a b.mdb", "K=/home/op/a b.mdb"},
      {"[S]\r\nK=1\r\n", "it's \"here\"", "K=it's \"here\""},
      {"[S]\r\nK=1\r\n", "/sites/a.mdb ", "K=\"/sites/a.mdb \""},
      {"[S]\r\nK=1\r\n", "\tx", "K=\"\tx\""},
      {"[S]\r\nK=1\r\n", "\"x\"", "K=\"\"x\"\""},
      {"[S]\r\nK=1\r\n", "'x'", "K=\"'x'\""},
      {"[S]\r\nK=1\r\n", "\"", "K=\""},
      {"[S]\n", "x\r", "K=\"x\r\""},  // a new line of a file that ends its lines in LF
  };
  for (const auto& c : cases) {
    WriteFile(path, c.file);
    In("S").WriteINI("K", c.value);
    EXPECT_EQ(In("S").ReadString_From_INI("K"), c.value);
    EXPECT_NE(ReadFile(path).find(c.line), std::string::npos) << ReadFile(path);
  }
}

TEST_F(IniFileTest, IntegersTakeTheLeadingNumberAndOverflowIsJournalled) {
  for (const auto& [text, value] :
       {std::pair<const char*, int16_t>{"12abc", 12}, {"abc", 0}, {"  -5", -5}, {"+7", 7}, {"3.9", 3},
        {"32767", 32767}, {"-32768", -32768}, {"32768", 0}, {"-32769", 0}, {"99999999999999999999999", 0}}) {
    WriteFile(path, std::string("[S]\r\nN=") + text + "\r\n");
    EXPECT_EQ(In("s").ReadINT_From_INI("n"), value) << text;
  }
  const JournalRow overflow{err::Overflow, "Overflow", "INIClass", "INIClass", "ReadINT_From_INI"};
  EXPECT_EQ(JournalRows(*ts), std::vector<JournalRow>(3, overflow));
}

TEST_F(IniFileTest, FailuresArePassedOverAndNeverReplaceAFile) {
  WriteFile(path, kText);
  fs::permissions(path, fs::perms::owner_write);
  EXPECT_TRUE(AsUnprivileged(ts.dir.path(), [&] {
    In("System").WriteINI("Com Port", "4");
    return In("System").ReadString_From_INI("Com Port").empty();
  }));
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(ReadFile(path), kText);
  ini.SetFileName(ts.dir.str("no such dir/settings.ini"));
  In("System").WriteINI("Com Port", "2");
  EXPECT_EQ(In("System").ReadString_From_INI("Com Port"), "");
  EXPECT_TRUE(JournalRows(*ts).empty());
}

}  // namespace
}  // namespace r6183::test
