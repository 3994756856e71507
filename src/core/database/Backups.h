#pragma once
// Automatic backups of what went over the line: the programming a Receive brought and
// the document a Send sent, kept as backups/YYYY-MM-DD_hhmmss_receive.mdb (_send.mdb)
// in the application directory, the newest 50 of each. A backup that can't be written
// is journalled and never stops a transfer.
#include <string>
#include <string_view>
#include <vector>

#include "shell/Clock.h"

namespace r6183 {

class AppDir;
class Session;

inline constexpr int kBackupsKept = 50;
inline constexpr const char* kBackupsDir = "backups";

// Copies `document` as a backup of kind "receive" or "send", named by the session's clock,
// and removes the oldest of that kind beyond kBackupsKept. The path of the backup, or
// empty when it failed (the failure is in the journal).
std::string KeepBackup(Session& s, const std::string& document, std::string_view kind);

struct Backup {
  std::string path, kind;
  LocalDateTime when;
};
// The backups in the application directory, newest first; files of other names are passed over.
std::vector<Backup> ListBackups(const AppDir& dir);

}  // namespace r6183
