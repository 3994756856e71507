#pragma once
// Registry look-ups. This platform keeps no registry, so every look-up finds
// nothing; callers treat that as "not installed".
#include <cstdint>
#include <string>
#include <string_view>

namespace r6183 {

enum class RegistryHive : uint32_t {
  ClassesRoot = 0x80000000u,
  CurrentUser = 0x80000001u,
  LocalMachine = 0x80000002u,
  Users = 0x80000003u,
};

// The text of a value; always empty here.
std::string GetRegString(RegistryHive hive, std::string_view key, std::string_view valueName);

// The text of a value from its buffer and the length the look-up reported, which
// counts the closing null: more than 1 gives the first length - 1 characters,
// anything else gives an empty text.
std::string RegValueText(std::string_view buffer, uint32_t reportedLength);

}  // namespace r6183
