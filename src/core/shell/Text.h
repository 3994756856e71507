#pragma once
// Character-wise string operations on UTF-8 text: lengths and cuts count
// characters, never split a character, and treat invalid bytes as one character each.
#include <cstddef>
#include <string>
#include <string_view>

namespace r6183 {

std::size_t CharCount(std::string_view s);
// The first n characters (all of s when it is shorter).
std::string LeftChars(std::string_view s, std::size_t n);
// The last n characters.
std::string RightChars(std::string_view s, std::size_t n);
// n characters from the 1-based character position `start`; npos for the rest.
std::string MidChars(std::string_view s, std::size_t start, std::size_t n = std::string_view::npos);

std::string ToUpper(std::string_view s);  // ASCII letters only
std::string ToLower(std::string_view s);
bool EqualsNoCase(std::string_view a, std::string_view b);
std::string Trim(std::string_view s);  // blanks on both sides
std::string TrimRight(std::string_view s);
std::string TrimLeft(std::string_view s);

}  // namespace r6183
