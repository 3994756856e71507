#pragma once
// The error journal as the debug window lists it, and its emptying.
#include <string>
#include <vector>

namespace r6183 {

class Session;

// One row of the journal, as text: a missing number reads "0", a missing text blank.
struct JournalLine {
  std::string number;
  std::string description;
  std::string dateTime;  // errdate " @ " errTime
  std::string function;
  std::string module;
  bool operator==(const JournalLine&) const = default;
};

// All rows from the first, letting events run after each. Nothing when the errors
// file is missing; a failure is journalled under `LoadGrid` of frmDebug.
std::vector<JournalLine> ReadJournalLines(Session& session);

// Deletes every row of the journal, when the errors file is there; a failure is
// journalled under `cmdClear` of frmDebug.
void ClearJournal(Session& session);

}  // namespace r6183
