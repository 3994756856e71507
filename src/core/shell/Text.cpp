#include "shell/Text.h"

#include <algorithm>
#include <vector>

namespace r6183 {

namespace {
// Byte offsets at which each character starts, plus the end.
std::vector<std::size_t> CharStarts(std::string_view s) {
  std::vector<std::size_t> starts;
  starts.reserve(s.size() + 1);
  std::size_t i = 0;
  while (i < s.size()) {
    starts.push_back(i);
    const auto c = static_cast<unsigned char>(s[i]);
    std::size_t len = 1;
    if (c >= 0xF0 && c <= 0xF4) len = 4;
    else if (c >= 0xE0) len = (c >= 0xF0) ? 1 : 3;
    else if (c >= 0xC2) len = 2;
    // accept the sequence only if its continuation bytes are there
    if (len > 1) {
      if (i + len > s.size()) len = 1;
      else
        for (std::size_t k = 1; k < len; ++k)
          if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) { len = 1; break; }
    }
    i += len;
  }
  starts.push_back(s.size());
  return starts;
}

char Upper(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }
char Lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }
}  // namespace

std::size_t CharCount(std::string_view s) { return CharStarts(s).size() - 1; }

std::string LeftChars(std::string_view s, std::size_t n) {
  const auto st = CharStarts(s);
  const std::size_t count = st.size() - 1;
  return std::string(s.substr(0, st[std::min(n, count)]));
}

std::string RightChars(std::string_view s, std::size_t n) {
  const auto st = CharStarts(s);
  const std::size_t count = st.size() - 1;
  return std::string(s.substr(st[count - std::min(n, count)]));
}

std::string MidChars(std::string_view s, std::size_t start, std::size_t n) {
  const auto st = CharStarts(s);
  const std::size_t count = st.size() - 1;
  if (start < 1) start = 1;
  if (start > count) return {};
  const std::size_t first = start - 1;
  const std::size_t last = (n == std::string_view::npos || n > count - first) ? count : first + n;
  return std::string(s.substr(st[first], st[last] - st[first]));
}

std::string ToUpper(std::string_view s) {
  std::string r(s);
  std::transform(r.begin(), r.end(), r.begin(), Upper);
  return r;
}

std::string ToLower(std::string_view s) {
  std::string r(s);
  std::transform(r.begin(), r.end(), r.begin(), Lower);
  return r;
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return Lower(x) == Lower(y); });
}

std::string TrimLeft(std::string_view s) {
  const auto p = s.find_first_not_of(' ');
  return p == std::string_view::npos ? std::string() : std::string(s.substr(p));
}

std::string TrimRight(std::string_view s) {
  const auto p = s.find_last_not_of(' ');
  return p == std::string_view::npos ? std::string() : std::string(s.substr(0, p + 1));
}

std::string Trim(std::string_view s) { return TrimLeft(TrimRight(s)); }

}  // namespace r6183
