#pragma once
// The program refuses to run without its files: the template, the journal, the
// operator's lists (made from the shipped ones at first use) and the nine reports.
#include <string>

namespace r6183 {

class Session;

// True when the application directory holds `name`; otherwise tells the operator
// which file is missing (a folder shown with a backslash) and returns false.
bool CheckFile(Session& session, const std::string& name);

// DEFAULT and Errors are always both checked; from the lists on, the first missing
// file ends the check. A missing "phonelst" or "modem" is made from its shipped copy.
bool CheckRequiredFiles(Session& session);

}  // namespace r6183
