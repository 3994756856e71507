#include "shell/FileOps.h"

#include "shell/ErrorNumbers.h"
#include "shell/Journal.h"
#include "shell/Labels.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183 {

namespace fs = std::filesystem;

namespace {

constexpr int kRemovePasses = 5;

char Fold(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

// Bytes of the UTF-8 character starting at s[i] (1 for a stray byte).
std::size_t CharLength(std::string_view s, std::size_t i) {
  std::size_t n = 1;
  if (static_cast<unsigned char>(s[i]) >= 0xC0)
    while (i + n < s.size() && (static_cast<unsigned char>(s[i + n]) & 0xC0) == 0x80) ++n;
  return n;
}

bool HasWildcards(std::string_view name) {
  return name.find_first_of("*?") != std::string_view::npos;
}

// A path that names something other than a directory, link or not.
bool Present(const fs::path& p) {
  std::error_code ec;
  const fs::file_status st = fs::symlink_status(p, ec);
  if (st.type() == fs::file_type::not_found) return false;
  return st.type() != fs::file_type::directory;  // unknown (no access) counts as present
}

bool IsRegular(const fs::path& p) {
  std::error_code ec;
  return fs::is_regular_file(p, ec);
}

}  // namespace

bool WildcardMatch(std::string_view pattern, std::string_view name) {
  std::size_t p = 0, n = 0;
  std::size_t starP = std::string_view::npos, starN = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      starP = p++;
      starN = n;
    } else if (p < pattern.size() && pattern[p] == '?') {
      ++p;
      n += CharLength(name, n);
    } else if (p < pattern.size() && Fold(pattern[p]) == Fold(name[n])) {
      ++p;
      ++n;
    } else if (starP != std::string_view::npos) {
      // let the last '*' take one more character and try again
      p = starP + 1;
      starN += CharLength(name, starN);
      n = starN;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

std::vector<fs::path> MatchingFiles(std::string_view pathOrPattern) {
  std::vector<fs::path> found;
  try {
    const auto sep = pathOrPattern.find_last_of('/');
    const std::string_view name =
        sep == std::string_view::npos ? pathOrPattern : pathOrPattern.substr(sep + 1);
    if (name.empty()) return found;
    fs::path dir = ".";
    if (sep == 0)
      dir = "/";
    else if (sep != std::string_view::npos)
      dir = fs::path(pathOrPattern.substr(0, sep));

    const bool wild = HasWildcards(name);
    if (!wild && IsRegular(dir / name)) {
      found.push_back(dir / name);
      return found;
    }
    const bool extensionOptional = name.size() >= 2 && name.substr(name.size() - 2) == ".*";
    const std::string_view bare = extensionOptional ? name.substr(0, name.size() - 2) : name;

    std::error_code ec;
    for (fs::directory_iterator it(dir, ec), end; !ec && it != end; it.increment(ec)) {
      const std::string entry = it->path().filename().string();
      const bool hit = wild ? (WildcardMatch(name, entry) ||
                               (extensionOptional && entry.find('.') == std::string::npos &&
                                WildcardMatch(bare, entry)))
                            : EqualsNoCase(entry, name);
      if (hit && IsRegular(it->path())) found.push_back(it->path());
    }
  } catch (...) {
    found.clear();
  }
  return found;
}

bool IsFile(std::string_view pathOrPattern) {
  try {
    return !MatchingFiles(pathOrPattern).empty();
  } catch (...) {
    return false;
  }
}

void RemoveFile(Session& session, std::string_view pathOrPattern) {
  step(session.journal(), Where{labels::Utility, "RemoveFile"}, [&] {
    if (!IsFile(pathOrPattern)) return;
    for (const auto& match : MatchingFiles(pathOrPattern)) {
      std::error_code ec;
      fs::remove(match, ec);
    }
    if (IsFile(pathOrPattern))
      session.journal().LogError(err::PathFileAccessError,
                                 "File " + std::string(pathOrPattern) + " did not delete.",
                                 labels::Unknown, labels::Utility, "RemoveFile");
  });
}

bool fcnRemoveFile(const fs::path& path) {
  try {
    for (int pass = 0; pass < kRemovePasses; ++pass) {
      if (!Present(path)) return true;
      std::error_code ec;
      fs::remove(path, ec);
      if (!Present(path)) return true;
    }
  } catch (...) {
  }
  return false;
}

bool ReplaceWithCopy(const fs::path& source, const fs::path& target) {
  try {
    std::error_code ec;
    if (fs::equivalent(source, target, ec) && !ec) return IsRegular(target);
    if (!fcnRemoveFile(target)) return false;
    if (IsRegular(source)) fs::copy_file(source, target, ec);
    return IsRegular(target);
  } catch (...) {
    return false;
  }
}

}  // namespace r6183
