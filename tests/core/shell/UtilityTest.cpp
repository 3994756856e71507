#include <gtest/gtest.h>

#include "shell/Utility.h"

namespace r6183 {
namespace {

const std::string e = "\xc3\xa9";  // one character, two bytes

TEST(UtilityTest, FixedWidthFieldsCountCharacters) {
  const struct {
    std::string s;
    uint8_t n;
    std::string right, left;
  } pads[] = {{"ab", 5, "ab   ", "   ab"}, {"abcdef", 3, "abc", "def"}, {"abc", 0, "", ""},
              {e + e + "x", 2, e + e, e + "x"}};
  for (const auto& c : pads) {
    EXPECT_EQ(PadRight(c.s, c.n), c.right) << c.s << "/" << int(c.n);
    EXPECT_EQ(PadLeft(c.s, c.n), c.left) << c.s << "/" << int(c.n);
  }
  for (const auto& [value, n, text] :
       {std::tuple<int, uint8_t, const char*>{7, 3, "007"}, {1234, 3, "234"}, {5, 0, ""}, {-5, 4, "00-5"}})
    EXPECT_EQ(LeadingZeroes(value, n), text) << value;
  for (const auto& [in, out] :
       {std::pair<std::string, std::string>{"7", "07"}, {"12", "12"}, {"", ""}, {e, "0" + e}})
    EXPECT_EQ(InsLeftZeroToOne(in), out) << in;
}

TEST(UtilityTest, FileNamePartAndSideCopyName) {
  for (const auto& [path, name] : {std::pair{"/home/op/site.mdb", "site.mdb"},
                                   {"C:\\Data/mixed\\x.mdb", "x.mdb"}, {"plain.mdb", "plain.mdb"},
                                   {"/home/op/", ""}})
    EXPECT_EQ(IncCircularCounter(path), name) << path;
  for (const auto& [path, backup] : {std::pair{"", "~x.Bak"}, {"/data/site.mdb", "/data/site.Bak"},
                                     {"/data/site.v2.mdb", "/data/site.v2.Bak"},
                                     {"/home/u/.local/r6183/errors", "/home/u/.local/r6183/errors.Bak"},
                                     {"C:\\My.Files\\errors", "C:\\My.Files\\errors.Bak"}})
    EXPECT_EQ(GetBackUpName(path, "Bak"), backup) << path;
}

TEST(UtilityTest, OnlyDigitsAndBackspacePass) {
  for (const auto& [key, after] :
       {std::pair<int, int>{'0', '0'}, {'9', '9'}, {8, 8}, {'a', 0}, {'/', 0}, {':', 0}, {-1, 0}}) {
    int k = key;
    Allow_digits_only(k);
    EXPECT_EQ(k, after) << key;
  }
}

}  // namespace
}  // namespace r6183
