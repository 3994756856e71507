#include "editors/ClidText.h"

#include <cstdint>

#include "shell/Text.h"

namespace r6183 {

namespace {
// The characters that Windows-1252 puts at 0x80 to 0x9F; the five holes of that range
// carry nothing.
constexpr char32_t kHigh[] = {0x20AC, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030,
                              0x0160, 0x2039, 0x0152, 0x017D, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
                              0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x017E, 0x0178};

bool InCodePage(char32_t c) {
  if (c >= 0x20 && c < 0x7F) return true;
  if (c >= 0xA0 && c <= 0xFF) return true;
  for (char32_t h : kHigh)
    if (c == h) return true;
  return false;
}

// The next character of UTF-8 text at `i`, or nothing for a byte that begins none.
std::optional<char32_t> Next(std::string_view s, std::size_t& i) {
  const auto b = static_cast<unsigned char>(s[i]);
  int extra = b < 0x80 ? 0 : (b & 0xE0) == 0xC0 ? 1 : (b & 0xF0) == 0xE0 ? 2 : (b & 0xF8) == 0xF0 ? 3 : -1;
  if (extra < 0 || i + static_cast<std::size_t>(extra) >= s.size()) {
    ++i;
    return std::nullopt;
  }
  char32_t c = extra == 0 ? b : b & (0x3F >> extra);
  for (int k = 1; k <= extra; ++k) {
    const auto cont = static_cast<unsigned char>(s[i + static_cast<std::size_t>(k)]);
    if ((cont & 0xC0) != 0x80) {
      ++i;
      return std::nullopt;
    }
    c = (c << 6) | (cont & 0x3F);
  }
  constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
  if (c < kLeast[extra]) {  // a longer form than the character needs is no text
    ++i;
    return std::nullopt;
  }
  i += static_cast<std::size_t>(extra) + 1;
  return c;
}

std::string Hex2(unsigned v) {
  static const char* hex = "0123456789ABCDEF";
  return {hex[(v >> 4) & 15], hex[v & 15]};
}
}  // namespace

std::optional<std::string> ClidTextRefusal(std::string_view text, std::string_view model) {
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t at = i;
    const auto c = Next(text, i);
    if (c && InCodePage(*c)) continue;
    std::string shown;
    if (!c) shown = "the byte " + Hex2(static_cast<unsigned char>(text[at])) + ", which is not text,";
    else if (*c < 0x20 || *c == 0x7F) shown = "the control character " + Hex2(static_cast<unsigned>(*c));
    else shown = "\"" + std::string(text.substr(at, i - at)) + "\"";
    return "The " + std::string(model) + " cannot show " + shown +
           ". A CLID description may hold letters, digits and signs of the Western European character set only.";
  }
  return std::nullopt;
}

std::size_t ClidLength(std::string_view text) { return CharCount(text); }

}  // namespace r6183
