#pragma once
// Small text helpers used all over the tool: fixed-width fields, leading zeroes,
// the file name part of a path, side-copy names and the digits-only key filter.
// Lengths count characters, not bytes.
#include <cstdint>
#include <string>
#include <string_view>

namespace r6183 {

// s followed by blanks, cut to n characters.
std::string PadRight(std::string_view s, uint8_t n);
// Blanks followed by s, cut to its last n characters.
std::string PadLeft(std::string_view s, uint8_t n);
// The value with leading zeroes, cut to its last n characters: (7, 3) is "007".
std::string LeadingZeroes(int64_t value, uint8_t n);
// A single character gets a "0" in front ("7" is "07"); anything else is unchanged.
std::string InsLeftZeroToOne(std::string_view s);

// The part of a path after its last '/' or '\', or the whole path without one.
std::string IncCircularCounter(std::string_view path);

// The name of a side copy of `path` with extension `ext`: the extension of the file
// name is replaced, or added when it has none; an empty path gives "~x." + ext.
std::string GetBackUpName(std::string_view path, std::string_view ext);

// Key filter of the number fields: any key other than backspace and the digits
// becomes 0 (swallowed).
void Allow_digits_only(int& keyAscii);

}  // namespace r6183
