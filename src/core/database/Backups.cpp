#include "database/Backups.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <regex>

#include "shell/AppDir.h"
#include "shell/Journal.h"
#include "shell/Session.h"

namespace r6183 {

namespace fs = std::filesystem;

namespace {

constexpr Where kKeep{"modBackups", "KeepBackup"};

std::string Stamp(const LocalDateTime& t) {
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d_%02d%02d%02d", t.year, t.month, t.day, t.hour, t.minute, t.second);
  return text;
}

// "2024-05-01_140322_receive.mdb", and "_receive_2.mdb" for a second one in the same second.
std::optional<Backup> Parse(const fs::path& file) {
  static const std::regex name(R"((\d{4})-(\d{2})-(\d{2})_(\d{2})(\d{2})(\d{2})_(receive|send)(_\d+)?\.mdb)");
  std::smatch m;
  const std::string n = file.filename().string();
  if (!std::regex_match(n, m, name)) return std::nullopt;
  auto at = [&m](int i) { return std::stoi(m[i].str()); };
  return Backup{file.string(), m[7].str(), {at(1), at(2), at(3), at(4), at(5), at(6)}};
}

// Newest first: by the name's time, then by its number within the second.
bool Newer(const Backup& a, const Backup& b) {
  const std::string na = fs::path(a.path).filename().string(), nb = fs::path(b.path).filename().string();
  if (na.substr(0, 17) != nb.substr(0, 17)) return na > nb;
  return na.size() != nb.size() ? na.size() > nb.size() : na > nb;
}

}  // namespace

std::string KeepBackup(Session& s, const std::string& document, std::string_view kind) {
  std::string kept;
  step(s.journal(), kKeep, [&] {
    const fs::path dir = s.appDir().PathOf(kBackupsDir);
    fs::create_directories(dir);
    const std::string base = Stamp(s.clock().Now()) + "_" + std::string(kind);
    fs::path target = dir / (base + ".mdb");
    for (int n = 2; fs::exists(target); ++n) target = dir / (base + "_" + std::to_string(n) + ".mdb");
    fs::copy_file(document, target);
    kept = target.string();
  });
  if (kept.empty()) return kept;
  step(s.journal(), kKeep, [&] {
    std::vector<Backup> same;
    for (const Backup& b : ListBackups(s.appDir()))
      if (b.kind == kind) same.push_back(b);
    for (std::size_t i = kBackupsKept; i < same.size(); ++i) fs::remove(same[i].path);
  });
  return kept;
}

std::vector<Backup> ListBackups(const AppDir& dir) {
  std::vector<Backup> out;
  std::error_code ec;
  for (fs::directory_iterator it(dir.PathOf(kBackupsDir), ec), end; !ec && it != end; it.increment(ec))
    if (const auto b = Parse(it->path()); b && it->is_regular_file()) out.push_back(*b);
  std::sort(out.begin(), out.end(), Newer);
  return out;
}

}  // namespace r6183
