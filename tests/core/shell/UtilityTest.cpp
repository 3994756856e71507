#include <gtest/gtest.h>

#include "shell/Utility.h"

namespace r6183 {
namespace {

const std::string e = "\xc3\xa9";  // one character, two bytes

TEST(UtilityTest, Padding) {
  const struct {
    std::string s;
    uint8_t n;
    std::string right, left;
  } cases[] = {{"ab", 5, "ab   ", "   ab"},
               {"abcdef", 3, "abc", "def"},
               {"", 2, "  ", "  "},
               {"abc", 0, "", ""},
               {e + e + "x", 2, e + e, e + "x"}};
  for (const auto& c : cases) {
    EXPECT_EQ(PadRight(c.s, c.n), c.right) << c.s << "/" << int(c.n);
    EXPECT_EQ(PadLeft(c.s, c.n), c.left) << c.s << "/" << int(c.n);
  }
}

TEST(UtilityTest, LeadingZeroesAndOneZero) {
  const struct {
    int64_t value;
    uint8_t n;
    const char* text;
  } cases[] = {{7, 3, "007"}, {1234, 3, "234"}, {0, 2, "00"}, {5, 0, ""}, {-5, 4, "00-5"}};
  for (const auto& c : cases) EXPECT_EQ(LeadingZeroes(c.value, c.n), c.text) << c.value;

  const struct {
    std::string in, out;
  } ones[] = {{"7", "07"}, {"12", "12"}, {"", ""}, {e, "0" + e}};
  for (const auto& c : ones) EXPECT_EQ(InsLeftZeroToOne(c.in), c.out) << c.in;
}

TEST(UtilityTest, FileNamePartAndBackUpName) {
  const struct {
    const char *path, *name;
  } names[] = {{"/home/op/site.mdb", "site.mdb"},
               {"C:\\Data/mixed\\x.mdb", "x.mdb"},
               {"plain.mdb", "plain.mdb"},
               {"/home/op/", ""}};
  for (const auto& c : names) EXPECT_EQ(IncCircularCounter(c.path), c.name) << c.path;

  const struct {
    const char *path, *backup;
  } backups[] = {
      {"", "~x.Bak"},
      {"/data/site.mdb", "/data/site.Bak"},
      {"/data/site", "/data/site.Bak"},
      {"/home/u/.local/share/r6183/errors", "/home/u/.local/share/r6183/errors.Bak"},
      {"C:\\My.Files\\errors", "C:\\My.Files\\errors.Bak"},
      {"/data/site.v2.mdb", "/data/site.v2.Bak"},
  };
  for (const auto& c : backups) EXPECT_EQ(GetBackUpName(c.path, "Bak"), c.backup) << c.path;
}

TEST(UtilityTest, OnlyDigitsAndBackspacePass) {
  const struct {
    int key, after;
  } cases[] = {{'0', '0'}, {'9', '9'}, {8, 8}, {'a', 0}, {'/', 0}, {':', 0}, {13, 0}, {-1, 0}};
  for (const auto& c : cases) {
    int key = c.key;
    Allow_digits_only(key);
    EXPECT_EQ(key, c.after) << c.key;
  }
}

}  // namespace
}  // namespace r6183
