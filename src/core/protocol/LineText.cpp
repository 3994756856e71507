#include "protocol/LineText.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include "shell/ErrorNumbers.h"
#include "shell/Utility.h"

namespace r6183 {

namespace {
// The characters of bytes 80 to 9F; 0 where the code page defines none. Bytes A0 to FF
// are the characters of the same number.
constexpr std::array<char32_t, 32> kHigh = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,       // 88
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,  // 98
};

constexpr char32_t kNotText = 0xFFFFFFFF;

// The character at `i` and its length in bytes; kNotText and 1 for a byte that does not
// start a well-formed UTF-8 sequence (overlong forms and surrogates included).
std::pair<char32_t, std::size_t> Decode(std::string_view s, std::size_t i) {
  const auto b = [&](std::size_t k) { return static_cast<unsigned char>(s[i + k]); };
  const unsigned char c = b(0);
  if (c < 0x80) return {c, 1};
  std::size_t len;
  char32_t cp, min;
  if (c >= 0xC2 && c <= 0xDF) len = 2, cp = c & 0x1F, min = 0x80;
  else if (c >= 0xE0 && c <= 0xEF) len = 3, cp = c & 0x0F, min = 0x800;
  else if (c >= 0xF0 && c <= 0xF4) len = 4, cp = c & 0x07, min = 0x10000;
  else return {kNotText, 1};
  if (i + len > s.size()) return {kNotText, 1};
  for (std::size_t k = 1; k < len; ++k) {
    if ((b(k) & 0xC0) != 0x80) return {kNotText, 1};
    cp = (cp << 6) | (b(k) & 0x3F);
  }
  if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return {kNotText, 1};
  return {cp, len};
}

// The byte of a printable character of the code page, or nothing.
std::optional<unsigned char> ByteOf(char32_t cp) {
  if (cp >= 0x20 && cp < 0x7F) return static_cast<unsigned char>(cp);
  if (cp >= 0xA0 && cp <= 0xFF) return static_cast<unsigned char>(cp);
  for (std::size_t k = 0; k < kHigh.size(); ++k)
    if (kHigh[k] != 0 && kHigh[k] == cp) return static_cast<unsigned char>(0x80 + k);
  return std::nullopt;
}

bool IsControl(char32_t cp) { return cp < 0x20 || (cp >= 0x7F && cp < 0xA0); }

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

std::string Hex(unsigned value) {
  char buf[12];
  std::snprintf(buf, sizeof buf, "%02X", value);
  return buf;
}
}  // namespace

std::string Uncarried::Shown() const {
  switch (kind) {
    case Kind::NotText:
      return "the byte " + Hex(static_cast<unsigned char>(character[0])) + ", which is not text";
    case Kind::Control: {
      const auto [cp, len] = Decode(character, 0);
      return "the control character " + Hex(static_cast<unsigned>(cp));
    }
    case Kind::OutsideCodePage: break;
  }
  return "\"" + character + "\"";
}

std::optional<Uncarried> FirstUncarried(std::string_view text) {
  std::size_t position = 0;
  for (std::size_t i = 0; i < text.size();) {
    const auto [cp, len] = Decode(text, i);
    ++position;
    std::optional<Uncarried::Kind> kind;
    if (cp == kNotText) kind = Uncarried::Kind::NotText;
    else if (IsControl(cp)) kind = Uncarried::Kind::Control;
    else if (!ByteOf(cp)) kind = Uncarried::Kind::OutsideCodePage;
    if (kind) return Uncarried{std::string(text.substr(i, len)), position, *kind};
    i += len;
  }
  return std::nullopt;
}

std::string ToLine(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto [cp, len] = Decode(text, i);
    const auto byte = cp == kNotText || IsControl(cp) ? std::nullopt : ByteOf(cp);
    if (!byte) {
      const Uncarried u = *FirstUncarried(text.substr(i));
      throw RuntimeError(err::InvalidProcedureCall,
                         "The line cannot carry " + u.Shown() + " in \"" + std::string(text) + "\"");
    }
    out += static_cast<char>(*byte);
    i += len;
  }
  return out;
}

std::string LineField(std::string_view text, std::size_t width) {
  // every character the line carries is one byte there, so characters count alike here
  return ToLine(PadRight(text, static_cast<uint8_t>(width)));
}

std::string FromLine(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() * 2);
  for (const char b : bytes) {
    const auto c = static_cast<unsigned char>(b);
    const char32_t cp = (c >= 0x80 && c <= 0x9F && kHigh[c - 0x80] != 0) ? kHigh[c - 0x80] : c;
    AppendUtf8(out, cp);
  }
  return out;
}

std::optional<std::string> LineTextRefusal(std::string_view text, std::string_view model) {
  const auto u = FirstUncarried(text);
  if (!u) return std::nullopt;
  return "The " + std::string(model) + " cannot show " + u->Shown() +
         ". Use only the letters, digits and signs of Western European languages.";
}

}  // namespace r6183
