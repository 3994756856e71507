#pragma once
// Keeping the journal file healthy: the restore of a lost errors database at
// start-up, the integrity check, and the compaction with its two side copies at
// shutdown (errors -> errors.bak, rotated through errors.old).
#include <string>

namespace r6183 {

class Session;

inline constexpr const char* kErrorsCorruptText = "Errors Database is corrupt";

// When the errors database is missing, copies the "Bak" side copy over it, and when
// that is missing or fails, the "old" one. False when no copy succeeded.
bool RestoreErrorsDatabase(Session& session);

// Checks a database file for damage and rebuilds it when it can; raises when the file
// is not a sound database afterwards.
void RepairDatabase(const std::string& path);

// Compacts the journal through errors.bak and rotates errors.old; each failure is
// journalled with its text and ends the routine.
void CompactErrors(Session& session);

}  // namespace r6183
