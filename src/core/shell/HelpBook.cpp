#include "shell/HelpBook.h"

#include <filesystem>

#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

bool IsHelpFileName(const std::string& name) {
  const std::string ext = ToUpper(std::filesystem::path(name).extension().string());
  return ext == ".CHM" || ext == ".HLP";
}

}  // namespace

std::string HelpBookPath(const Session& session) {
  if (!IsHelpFileName(session.product.HelpFileName)) return {};
  constexpr const char* kIndex = "help/index.html";
  if (!session.appDir().Has(kIndex)) return {};
  return session.appDir().PathOf(kIndex);
}

}  // namespace r6183
