#pragma once
// The Receive transfer: the whole programming of the unit into the work copy, which
// becomes a new document named "Untitled".
#include <cstdint>
#include <string>

namespace r6183 {

class Messages;
class ModComm;
class ProgressWindow;
class Session;

// The menu command: log file, revisions, the transfer, and the update of a file from an
// older unit.
void mnuRx_Click(Session& s, ModComm& comm, ProgressWindow& progress);

// Replaces the work copy by the template and fills it from the unit. True when the unit
// said it was done (A).
bool Receive_Data(Session& s, ModComm& comm, ProgressWindow& progress, const std::string& unitRevision);

// Hands the message in msg_str to its read routine and moves the progress along.
void Process_Msg(Session& s, ModComm& comm, Messages& messages, ProgressWindow& progress, int16_t& clidCount);

}  // namespace r6183
