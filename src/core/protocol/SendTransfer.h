#pragma once
// The Send transfer: the whole work copy to the unit in twelve fixed stages.
#include <string>

namespace r6183 {

class ModComm;
class ProgressWindow;
class Session;

// The menu command: settles open editors, asks for a document when none is open, warns
// about a unit older than the message set, then sends.
void mnuSend_Click(Session& s, ModComm& comm, ProgressWindow& progress);

// The twelve stages; true when the transfer counts as done.
bool Send_Data(Session& s, ModComm& comm, ProgressWindow& progress);

}  // namespace r6183
