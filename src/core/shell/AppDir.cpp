#include "shell/AppDir.h"

#include <unistd.h>

#include <cstdlib>

#include "shell/Text.h"

namespace r6183 {

namespace fs = std::filesystem;

std::optional<fs::path> FindNoCase(const fs::path& dir, std::string_view name) {
  std::error_code ec;
  if (fs::exists(dir / name, ec)) return dir / name;
  std::optional<fs::path> found;
  for (fs::directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec)) {
    const std::string entry = it->path().filename().string();
    if (EqualsNoCase(entry, name)) {
      // several spellings of one name: the first in name order wins, for a stable answer
      if (!found || entry < found->filename().string()) found = it->path();
    }
  }
  return found;
}

std::string ResolveNoCase(const std::string& path) {
  const fs::path p(path);
  auto dir = p.parent_path();
  if (dir.empty()) dir = ".";
  if (auto hit = FindNoCase(dir, p.filename().string()))
    return p.parent_path().empty() ? hit->filename().string() : hit->string();
  return path;
}

std::string AppDir::PathOf(std::string_view relative) const {
  // walk the relative path part by part, each part matched without regard to case
  fs::path result = dir_;
  bool exists = true;
  for (const auto& part : fs::path(relative)) {
    if (exists) {
      if (auto hit = FindNoCase(result, part.string())) {
        result = *hit;
        continue;
      }
      exists = false;
    }
    result /= part;
  }
  return result.string();
}

bool AppDir::Has(std::string_view relative) const {
  std::error_code ec;
  return fs::is_regular_file(PathOf(relative), ec);
}

fs::path AppDir::UserDataDir() {
  if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg) return fs::path(xdg) / "r6183";
  const char* home = std::getenv("HOME");
  return fs::path(home && *home ? home : ".") / ".local" / "share" / "r6183";
}

void AppDir::Seed(const fs::path& shareDir, const fs::path& target) {
  std::error_code ec;
  fs::create_directories(target, ec);
  for (fs::recursive_directory_iterator it(shareDir, ec), end; !ec && it != end; it.increment(ec)) {
    const fs::path rel = fs::relative(it->path(), shareDir, ec);
    const fs::path dest = target / rel;
    if (it->is_directory()) {
      fs::create_directories(dest, ec);
    } else if (!fs::exists(dest)) {
      fs::copy_file(it->path(), dest, ec);
      // installed files are read-only; the operator's copies must not be
      fs::permissions(dest, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add, ec);
    }
  }
}

AppDir AppDir::Locate(const fs::path& executable) {
  std::error_code ec;
  fs::path exe = fs::weakly_canonical(executable, ec);
  if (ec) exe = executable;
  const fs::path exeDir = exe.parent_path();
  if (FindNoCase(exeDir, "DEFAULT") && ::access(exeDir.c_str(), W_OK) == 0) return AppDir(exeDir);

  const fs::path user = UserDataDir();
  const fs::path share = exeDir.parent_path() / R6183_SHARE_SUBDIR;
  if (fs::is_directory(share, ec)) Seed(share, user);
  return AppDir(user);
}

}  // namespace r6183
