#include "shell/Conversions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "core/database/DbTestSupport.h"

namespace r6183 {
namespace {

using test::ErrorOf;

TEST(ConversionsTest, ValReadsTheLeadingNumberAndIsNumericWantsTheWholeText) {
  const std::tuple<const char*, double, bool> cases[] = {
      {"9600/ARQ", 9600, false}, {" 1 2 3", 123, false}, {"\t\n42\r\n", 42, true}, {"\r5", 0, true},
      {"A", 0, false},          {"", 0, false},         {"True", 0, false},     {"-4.5abc", -4.5, false},
      {"- 3", -3, false},       {"--1", 0, false},      {"1e3", 1000, true},    {"1E-2", 0.01, true},
      {"2d2", 200, true},       {"1e+", 1, false},      {"12 e 3x", 12000, false}, {"1e-400", 0, true},
      {".5", 0.5, true},        {".", 0, false},        {"1.2.3", 1.2, false},  {"&h1f", 31, true},
      {"&O17", 15, true},       {"&HFFFF", -1, true},   {"&HFFFF&", 65535, true}, {"&H10000", 65536, true},
      {"&HFFFFFFFF", -1, true}, {"&H", 0, false},       {"&O8", 0, false},
  };
  for (const auto& [text, val, numeric] : cases) {
    EXPECT_DOUBLE_EQ(Val(text), val) << '"' << text << '"';
    EXPECT_EQ(IsNumeric(text), numeric) << '"' << text << '"';
  }
  for (const char* text : {"1e400", "&H100000000"}) {
    EXPECT_EQ(ErrorOf([&] { Val(text); }), err::Overflow) << text;
    EXPECT_FALSE(IsNumeric(text)) << text;
  }
}

TEST(ConversionsTest, CheckedConversionsRoundHalfEvenAndRaise) {
  struct Case {
    Value in;
    double out;  // when error is 0
    int16_t error;
  };
  using Convert = double (*)(const Value&);
  const std::tuple<const char*, Convert, std::vector<Case>> groups[] = {
      {"CInt", [](const Value& v) -> double { return CInt(v); },
       {{Value(2.5), 2, 0}, {Value(3.5), 4, 0}, {Value(-3.5), -4, 0}, {Value(2.6), 3, 0},
        {Value(" -7 "), -7, 0}, {Value("&HFFFF"), -1, 0}, {Value(32767), 32767, 0},
        {Value(-32768.5), -32768, 0}, {Value(32767.5), 0, err::Overflow}, {Value(32768), 0, err::Overflow},
        {Value(-32769), 0, err::Overflow}, {Value("40000"), 0, err::Overflow},
        {Value(std::nan("")), 0, err::Overflow}, {Value(), 0, err::InvalidUseOfNull},
        {Value("12a"), 0, err::TypeMismatch}, {Value("True"), 0, err::TypeMismatch},
        {Value(Value::Bytes{1}), 0, err::TypeMismatch}}},
      {"CLng", [](const Value& v) -> double { return CLng(v); },
       {{Value(2147483647LL), 2147483647, 0}, {Value("100000"), 100000, 0},
        {Value(2147483647.5), 0, err::Overflow}}},
      {"CByte", [](const Value& v) -> double { return CByte(v); },
       {{Value(254.5), 254, 0}, {Value(-0.5), 0, 0}, {Value(255.5), 0, err::Overflow},
        {Value(-1), 0, err::Overflow}}},
      {"CDbl", [](const Value& v) { return CDbl(v); },
       {{Value(" 1.25 "), 1.25, 0}, {Value("x1"), 0, err::TypeMismatch}}},
      {"CBool", [](const Value& v) -> double { return CBool(v); },
       {{Value(" TRUE "), 1, 0}, {Value("false"), 0, 0}, {Value("-1"), 1, 0}, {Value("0.0"), 0, 0},
        {Value(0.25), 1, 0}, {Value(), 0, err::InvalidUseOfNull}, {Value("yes"), 0, err::TypeMismatch}}},
  };
  for (const auto& [name, convert, cases] : groups) {
    for (const auto& c : cases) {
      double got = 0;
      EXPECT_EQ(ErrorOf([&] { got = convert(c.in); }), c.error) << name << '(' << TextOf(c.in) << ')';
      EXPECT_EQ(got, c.error == 0 ? c.out : 0) << name << '(' << TextOf(c.in) << ')';
    }
  }
}

TEST(ConversionsTest, TextTruthAndNumberOfAValue) {
  const std::tuple<Value, const char*, bool, double> cases[] = {
      {Value(-3), "-3", true, -3},          {Value(2.0), "2", true, 2},        {Value(-0.0), "0", false, 0},
      {Value(0.0001), "0.0001", true, 0.0001}, {Value(1e-5), "1E-05", true, 1e-5},
      {Value(1.5e-7), "1.5E-07", true, 1.5e-7}, {Value(1e15), "1E+15", true, 1e15},
      {Value(123456789012345.0), "123456789012345", true, 123456789012345.0},
      {Value(0.1 + 0.2), "0.30000000000000004", true, 0.1 + 0.2},
      {Value("abc"), "abc", false, 0},      {Value("true"), "true", true, 0}, {Value("5"), "5", true, 5},
      {Value("9600/ARQ"), "9600/ARQ", false, 9600}, {Value(Value::Bytes{'7'}), "7", false, 7},
  };
  for (const auto& [in, text, isTrue, number] : cases) {
    EXPECT_EQ(CStr(in), text);
    EXPECT_EQ(TextOf(in), text);
    EXPECT_EQ(IsTrue(in), isTrue) << text;
    EXPECT_EQ(NumberOf(in), number) << text;
  }
  // Null: an error where a value is needed, empty, false and 0 where the field is read leniently
  EXPECT_EQ(ErrorOf([] { CStr(Value()); }), err::InvalidUseOfNull);
  EXPECT_EQ(std::tuple(TextOf(Value()), IsTrue(Value()), NumberOf(Value())),
            std::tuple(std::string(), false, 0.0));
}

}  // namespace
}  // namespace r6183
