#include "shell/Conversions.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "shell/ErrorNumbers.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

struct Parsed {
  double value = 0;
  std::size_t used = 0;  // characters taken; 0 when there is no number
};

// "&H..." or "&O...": up to 16 bits reads as an Integer, up to 32 bits as a Long
// (so &HFFFF is -1), a trailing "&" forces a Long.
Parsed ParseRadix(std::string_view s) {
  Parsed p;
  if (s.size() < 3 || s[0] != '&') return p;
  const char kind = s[1];
  int base = 0;
  if (kind == 'H' || kind == 'h') base = 16;
  else if (kind == 'O' || kind == 'o') base = 8;
  else return p;

  std::size_t i = 2;
  uint64_t v = 0;
  int digits = 0;
  for (; i < s.size(); ++i) {
    const int d = HexDigit(s[i]);
    if (d < 0 || d >= base) break;
    v = v * base + d;
    if (v > std::numeric_limits<uint32_t>::max()) throw RuntimeError(err::Overflow);
    ++digits;
  }
  if (digits == 0) return p;
  bool asLong = false;
  if (i < s.size() && s[i] == '&') {
    asLong = true;
    ++i;
  }
  if (!asLong && v <= 0xFFFF) p.value = static_cast<int16_t>(static_cast<uint16_t>(v));
  else p.value = static_cast<int32_t>(static_cast<uint32_t>(v));
  p.used = i;
  return p;
}

// A decimal number at the start of s: sign, digits, point, digits, exponent (E or D).
Parsed ParseDecimal(std::string_view s) {
  Parsed p;
  std::string clean;
  std::size_t i = 0;
  bool negative = false;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) {
    negative = s[i] == '-';
    ++i;
  }
  int mantissaDigits = 0;
  while (i < s.size() && IsDigit(s[i])) {
    clean += s[i++];
    ++mantissaDigits;
  }
  if (i < s.size() && s[i] == '.') {
    std::size_t j = i + 1;
    std::string frac;
    while (j < s.size() && IsDigit(s[j])) frac += s[j++];
    if (mantissaDigits > 0 || !frac.empty()) {
      clean += '.';
      clean += frac;
      mantissaDigits += static_cast<int>(frac.size());
      i = j;
    }
  }
  if (mantissaDigits == 0) return p;

  bool negativeExponent = false;
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
    std::size_t j = i + 1;
    std::string exp = "e";
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) {
      negativeExponent = s[j] == '-';
      exp += s[j++];
    }
    const std::size_t digitsAt = j;
    while (j < s.size() && IsDigit(s[j])) exp += s[j++];
    if (j > digitsAt) {
      clean += exp;
      i = j;
    }
  }

  double v = 0;
  const auto r = std::from_chars(clean.data(), clean.data() + clean.size(), v);
  if (r.ec == std::errc::result_out_of_range) {
    if (!negativeExponent) throw RuntimeError(err::Overflow);
    v = 0;  // too small: zero
  }
  p.value = negative ? -v : v;
  p.used = i;
  return p;
}

Parsed ParseNumber(std::string_view s) {
  if (!s.empty() && s[0] == '&') return ParseRadix(s);
  return ParseDecimal(s);
}

std::string_view TrimBlanks(std::string_view s) {
  auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
  while (!s.empty() && blank(s.front())) s.remove_prefix(1);
  while (!s.empty() && blank(s.back())) s.remove_suffix(1);
  return s;
}

// The value of a text that must be a number; Type mismatch otherwise.
double NumericText(std::string_view text) {
  const auto t = TrimBlanks(text);
  const Parsed p = ParseNumber(t);
  if (p.used == 0 || p.used != t.size()) throw RuntimeError(err::TypeMismatch);
  return p.value;
}

std::string BytesText(const Value::Bytes& b) { return std::string(b.begin(), b.end()); }

// Any value as a double for the checked conversions.
double CheckedNumber(const Value& v) {
  if (v.IsNull()) throw RuntimeError(err::InvalidUseOfNull);
  if (v.IsInteger()) return static_cast<double>(v.Integer());
  if (v.IsReal()) return v.Real();
  if (v.IsText()) return NumericText(v.Text());
  throw RuntimeError(err::TypeMismatch);
}

template <class T>
T CheckedInteger(const Value& v) {
  constexpr auto lo = std::numeric_limits<T>::min();
  constexpr auto hi = std::numeric_limits<T>::max();
  if (v.IsInteger()) {
    const int64_t i = v.Integer();
    if (i < lo || i > hi) throw RuntimeError(err::Overflow);
    return static_cast<T>(i);
  }
  const double r = RoundHalfEven(CheckedNumber(v));
  if (std::isnan(r) || r < static_cast<double>(lo) || r > static_cast<double>(hi))
    throw RuntimeError(err::Overflow);
  return static_cast<T>(r);
}

}  // namespace

double Val(std::string_view text) {
  std::string s;
  s.reserve(text.size());
  for (char c : text)
    if (!IsBlank(c)) s += c;
  return ParseNumber(s).value;
}

bool IsNumeric(std::string_view text) {
  try {
    NumericText(text);
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

double RoundHalfEven(double d) {
  if (!std::isfinite(d)) return d;
  if (std::fabs(d - std::trunc(d)) == 0.5) return 2.0 * std::round(d / 2.0);
  return std::round(d);
}

int16_t CInt(const Value& v) { return CheckedInteger<int16_t>(v); }
int32_t CLng(const Value& v) { return CheckedInteger<int32_t>(v); }
uint8_t CByte(const Value& v) { return CheckedInteger<uint8_t>(v); }
double CDbl(const Value& v) { return CheckedNumber(v); }

bool CBool(const Value& v) {
  if (v.IsText()) {
    const auto t = TrimBlanks(v.Text());
    if (EqualsNoCase(t, "True")) return true;
    if (EqualsNoCase(t, "False")) return false;
  }
  return CheckedNumber(v) != 0;
}

std::string CStr(const Value& v) {
  if (v.IsNull()) throw RuntimeError(err::InvalidUseOfNull);
  if (v.IsInteger()) return std::to_string(v.Integer());
  if (v.IsText()) return v.Text();
  if (v.IsBytes()) return BytesText(v.ByteData());
  const double d = v.Real();
  if (d == 0) return "0";  // no "-0"
  // shortest digits that read back the same; plain notation in the runtime's range
  char buf[400];
  const double a = std::fabs(d);
  const auto format = (a >= 1e-4 && a < 1e15) ? std::chars_format::fixed : std::chars_format::scientific;
  const auto r = std::to_chars(buf, buf + sizeof buf, d, format);
  std::string s(buf, r.ptr);
  for (char& c : s)
    if (c == 'e') c = 'E';
  return s;
}

bool IsTrue(const Value& v) {
  if (v.IsNull() || v.IsBytes()) return false;
  if (v.IsInteger()) return v.Integer() != 0;
  if (v.IsReal()) return v.Real() != 0;
  try {
    return CBool(v);
  } catch (const RuntimeError&) {
    return false;  // a text that is neither a number nor True/False
  }
}

std::string TextOf(const Value& v) { return v.IsNull() ? std::string() : CStr(v); }

double NumberOf(const Value& v) {
  if (v.IsNull()) return 0;
  if (v.IsInteger()) return static_cast<double>(v.Integer());
  if (v.IsReal()) return v.Real();
  if (v.IsText()) return Val(v.Text());
  return Val(BytesText(v.ByteData()));
}

}  // namespace r6183
