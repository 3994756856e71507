#include "shell/Registry.h"

#include "shell/Text.h"

namespace r6183 {

std::string GetRegString(RegistryHive, std::string_view, std::string_view) { return {}; }

std::string RegValueText(std::string_view buffer, uint32_t reportedLength) {
  if (reportedLength <= 1) return {};
  return LeftChars(buffer, reportedLength - 1);
}

}  // namespace r6183
