#pragma once
// The application directory: settings, the shipped databases, the journal, the
// lists, the work copy, the transfer logs, reports and help. File names inside it
// are matched without regard to case.
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace r6183 {

class AppDir {
 public:
  AppDir() = default;
  explicit AppDir(std::filesystem::path dir) : dir_(std::move(dir)) {}

  const std::filesystem::path& Dir() const { return dir_; }
  std::string DirString() const { return dir_.string(); }

  // The path of `relative` ("Errors", "reports/Bgm.rpt") inside the directory: the
  // existing entry whose name matches without regard to case, or, when none does,
  // the name as given.
  std::string PathOf(std::string_view relative) const;
  bool Has(std::string_view relative) const;

  // Where the programs find their directory: the directory of the executable when it
  // holds DEFAULT and can be written; otherwise the per-user data directory, seeded
  // from the installed share directory with whatever it lacks.
  static AppDir Locate(const std::filesystem::path& executable);
  // The per-user data directory ($XDG_DATA_HOME/r6183 or ~/.local/share/r6183).
  static std::filesystem::path UserDataDir();
  // Copies every shipped file that `target` lacks; existing files are kept.
  static void Seed(const std::filesystem::path& shareDir, const std::filesystem::path& target);

 private:
  std::filesystem::path dir_;
};

// The entry of `dir` whose name equals `name` without regard to case, exact match first.
std::optional<std::filesystem::path> FindNoCase(const std::filesystem::path& dir,
                                                std::string_view name);

// `path` itself when it exists, else the entry of its directory whose name matches
// without regard to case, else `path` unchanged.
std::string ResolveNoCase(const std::string& path);

}  // namespace r6183
