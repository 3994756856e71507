#pragma once
// What makes a file a programming document, and the counts the tool keeps of it.
#include <cstdint>
#include <string>

namespace r6183 {

class Database;
class Session;

// True when the file has the shape of a programming document: 96 stations, 4 custom
// page groups, 6 schedules, at most 3 expansion boards, one clock definition, and the
// other tables present. Sets EventCount, SystemConfig and ClocksEnabled on the way.
// A failed step is journalled and the walk goes on, so a table missing from the
// first three checks makes the file invalid (by its count) while one missing among
// the last ones does not.
bool ValidDatabase(Session& session, const std::string& path);

// System_Config of the file; 3 when the process-wide SystemConfig is above 3.
// Logs and leaves with 0 on a failure.
int GetNumberofSysBoards(Session& session, const std::string& path);

// EventCount from the Event table of the given database.
void GetTotalEvents(Session& session, Database& db);

}  // namespace r6183
