#include "shell/Conversions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

#include "shell/ErrorNumbers.h"

namespace r6183 {
namespace {

int16_t ErrorOf(const std::function<void()>& f) {
  try {
    f();
  } catch (const RuntimeError& e) {
    return e.number();
  }
  return 0;
}

struct ValCase {
  const char* text;
  double expected;
};

TEST(ConversionsTest, ValReadsTheLeadingNumber) {
  const ValCase cases[] = {
      {"9600/ARQ", 9600},  {" 1 2 3", 123},   {"\t\n42", 42},       {"A", 0},
      {"", 0},             {"-4.5abc", -4.5}, {"+7", 7},            {"- 3", -3},
      {"1e3", 1000},       {"1E-2", 0.01},    {"2d2", 200},         {"1e", 1},
      {"1e+", 1},          {".5", 0.5},       {"5.", 5},            {".", 0},
      {"1.2.3", 1.2},      {"--1", 0},        {"&H1F", 31},         {"&h1f", 31},
      {"&O17", 15},        {"&HFFFF", -1},    {"&HFFFF&", 65535},   {"&H10000", 65536},
      {"&HFFFFFFFF", -1},  {"&H", 0},         {"&O8", 0},           {"&HG", 0},
      {"12 e 3x", 12000},  {"\r5", 0},        {"1e-400", 0},        {"0x10", 0},
  };
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(Val(c.text), c.expected) << '"' << c.text << '"';
}

TEST(ConversionsTest, ValOverflowRaises) {
  EXPECT_EQ(ErrorOf([] { Val("1e400"); }), err::Overflow);
  EXPECT_EQ(ErrorOf([] { Val("&H100000000"); }), err::Overflow);
}

TEST(ConversionsTest, IsNumericWantsTheWholeText) {
  const std::pair<const char*, bool> cases[] = {
      {"12", true},   {" 12 ", true},  {"-1.5", true}, {"1e5", true},  {".5", true},
      {"&H1F", true}, {"", false},     {" ", false},   {"-", false},   {"1e", false},
      {"12a", false}, {"1 2", false},  {"abc", false}, {"True", false}, {"\t7\r\n", true},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(IsNumeric(text), expected) << '"' << text << '"';
}

TEST(ConversionsTest, RoundHalfEven) {
  const std::pair<double, double> cases[] = {
      {2.5, 2},   {3.5, 4},   {-2.5, -2}, {-3.5, -4}, {0.5, 0},
      {1.5, 2},   {2.4, 2},   {2.6, 3},   {-2.6, -3}, {1e15 + 0.5, 1e15},
  };
  for (const auto& [in, out] : cases) EXPECT_EQ(RoundHalfEven(in), out) << in;
}

struct IntCase {
  Value in;
  int64_t expected;  // used when error is 0
  int16_t error;
};

TEST(ConversionsTest, CIntRoundsAndChecks) {
  const IntCase cases[] = {
      {Value(2.5), 2, 0},          {Value(3.5), 4, 0},          {Value("12"), 12, 0},
      {Value(" -7 "), -7, 0},      {Value("2.5"), 2, 0},        {Value("&HFFFF"), -1, 0},
      {Value(32767), 32767, 0},    {Value(-32768), -32768, 0},  {Value(32767.5), 0, err::Overflow},
      {Value(-32768.5), -32768, 0}, {Value(32768), 0, err::Overflow},
      {Value(-32769), 0, err::Overflow}, {Value("40000"), 0, err::Overflow},
      {Value(), 0, err::InvalidUseOfNull}, {Value("12a"), 0, err::TypeMismatch},
      {Value("True"), 0, err::TypeMismatch}, {Value(Value::Bytes{1}), 0, err::TypeMismatch},
      {Value(std::nan("")), 0, err::Overflow},
  };
  for (const auto& c : cases) {
    int16_t got = 0;
    const auto e = ErrorOf([&] { got = CInt(c.in); });
    EXPECT_EQ(e, c.error) << CStr(c.in.IsNull() ? Value("Null") : c.in);
    if (c.error == 0) {
      EXPECT_EQ(got, c.expected);
    }
  }
}

TEST(ConversionsTest, CLngAndCByteRanges) {
  EXPECT_EQ(CLng(Value(2147483647LL)), 2147483647);
  EXPECT_EQ(CLng(Value(-2.5)), -2);
  EXPECT_EQ(CLng(Value("100000")), 100000);
  EXPECT_EQ(ErrorOf([] { CLng(Value(2147483648LL)); }), err::Overflow);
  EXPECT_EQ(ErrorOf([] { CLng(Value(2147483647.5)); }), err::Overflow);

  EXPECT_EQ(CByte(Value(255)), 255);
  EXPECT_EQ(CByte(Value(-0.5)), 0);
  EXPECT_EQ(CByte(Value(254.5)), 254);
  EXPECT_EQ(ErrorOf([] { CByte(Value(256)); }), err::Overflow);
  EXPECT_EQ(ErrorOf([] { CByte(Value(-1)); }), err::Overflow);
  EXPECT_EQ(ErrorOf([] { CByte(Value(255.5)); }), err::Overflow);
}

TEST(ConversionsTest, CDbl) {
  EXPECT_DOUBLE_EQ(CDbl(Value(" 1.25 ")), 1.25);
  EXPECT_DOUBLE_EQ(CDbl(Value(3)), 3.0);
  EXPECT_EQ(ErrorOf([] { CDbl(Value()); }), err::InvalidUseOfNull);
  EXPECT_EQ(ErrorOf([] { CDbl(Value("x1")); }), err::TypeMismatch);
}

TEST(ConversionsTest, CBool) {
  const std::pair<Value, bool> cases[] = {
      {Value("True"), true},  {Value("TRUE"), true}, {Value(" false "), false},
      {Value("0"), false},    {Value("-1"), true},   {Value("0.0"), false},
      {Value(2), true},       {Value(0), false},     {Value(-0.0), false},
      {Value(0.25), true},
  };
  for (const auto& [in, out] : cases) EXPECT_EQ(CBool(in), out) << TextOf(in);
  EXPECT_EQ(ErrorOf([] { CBool(Value()); }), err::InvalidUseOfNull);
  EXPECT_EQ(ErrorOf([] { CBool(Value("yes")); }), err::TypeMismatch);
}

TEST(ConversionsTest, CStr) {
  const std::pair<Value, std::string> cases[] = {
      {Value(12), "12"},         {Value(-3), "-3"},         {Value(2.5), "2.5"},
      {Value(2.0), "2"},         {Value(0.1), "0.1"},       {Value(-0.0), "0"},
      {Value(100000.0), "100000"}, {Value(1e20), "1E+20"},  {Value(1.5e-7), "1.5E-07"},
      {Value(0.0001), "0.0001"}, {Value(1e-5), "1E-05"},    {Value(123456789012345.0), "123456789012345"},
      {Value(1e15), "1E+15"},    {Value(-2.75), "-2.75"},   {Value(0.1 + 0.2), "0.30000000000000004"},
      {Value("abc"), "abc"},     {Value(true), "1"},
  };
  for (const auto& [in, out] : cases) EXPECT_EQ(CStr(in), out);
  EXPECT_EQ(ErrorOf([] { CStr(Value()); }), err::InvalidUseOfNull);
}

TEST(ConversionsTest, LenientFieldReadings) {
  // IsTrue: Null and texts that are no truth value are false
  EXPECT_FALSE(IsTrue(Value()));
  EXPECT_FALSE(IsTrue(Value("abc")));
  EXPECT_TRUE(IsTrue(Value("true")));
  EXPECT_TRUE(IsTrue(Value("5")));
  EXPECT_TRUE(IsTrue(Value(1)));
  EXPECT_FALSE(IsTrue(Value(0.0)));

  EXPECT_EQ(TextOf(Value()), "");
  EXPECT_EQ(TextOf(Value(7)), "7");
  EXPECT_EQ(TextOf(Value(Value::Bytes{'h', 'i'})), "hi");

  EXPECT_EQ(NumberOf(Value()), 0);
  EXPECT_EQ(NumberOf(Value("9600/ARQ")), 9600);
  EXPECT_EQ(NumberOf(Value("x")), 0);
  EXPECT_DOUBLE_EQ(NumberOf(Value(1.5)), 1.5);
}

}  // namespace
}  // namespace r6183
