#include "shell/Utility.h"

#include "shell/Text.h"

namespace r6183 {

namespace {
constexpr int kBackspace = 8;

std::size_t AfterLastSeparator(std::string_view path) {
  const auto sep = path.find_last_of("/\\");
  return sep == std::string_view::npos ? 0 : sep + 1;
}
}  // namespace

std::string PadRight(std::string_view s, uint8_t n) {
  return LeftChars(std::string(s) + std::string(n, ' '), n);
}

std::string PadLeft(std::string_view s, uint8_t n) {
  return RightChars(std::string(n, ' ') + std::string(s), n);
}

std::string LeadingZeroes(int64_t value, uint8_t n) {
  return RightChars(std::string(n, '0') + std::to_string(value), n);
}

std::string InsLeftZeroToOne(std::string_view s) {
  if (CharCount(s) == 1) return "0" + std::string(s);
  return std::string(s);
}

std::string IncCircularCounter(std::string_view path) {
  return std::string(path.substr(AfterLastSeparator(path)));
}

std::string GetBackUpName(std::string_view path, std::string_view ext) {
  if (path.empty()) return "~x." + std::string(ext);
  const std::size_t nameStart = AfterLastSeparator(path);
  const auto dot = path.find_last_of('.');
  if (dot == std::string_view::npos || dot < nameStart)
    return std::string(path) + "." + std::string(ext);
  return std::string(path.substr(0, dot + 1)) + std::string(ext);
}

void Allow_digits_only(int& keyAscii) {
  if (keyAscii != kBackspace && (keyAscii < '0' || keyAscii > '9')) keyAscii = 0;
}

}  // namespace r6183
