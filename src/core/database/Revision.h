#pragma once
// The revision of a document's format, in table Rev as "02.00". Every saved file is
// stamped with the program's revision; a newer file opens with a warning.
#include <string>

namespace r6183 {

class Session;

// Stamps the work copy with the program's revision.
void UpdateRev(Session& session);

// Warns when the file's revision is newer, as text, than the program's.
void VerifyRev(Session& session, const std::string& path);

}  // namespace r6183
