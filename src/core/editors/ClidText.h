#pragma once
// What a CLID description may hold: it goes on the line as 15 characters of the line's
// 8-bit code, one byte a character, so the entry field and the command line take only
// characters that code has, and count them as the unit does.
#include <optional>
#include <string>
#include <string_view>

namespace r6183 {

// The message for a description holding a character the line cannot carry, naming the
// character; nothing when all of it can go to the unit `model`.
std::optional<std::string> ClidTextRefusal(std::string_view text, std::string_view model);

// Characters as the unit counts them: one a character of the line's code.
std::size_t ClidLength(std::string_view text);

}  // namespace r6183
