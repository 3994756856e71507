#pragma once
// The tool's settings in settings.ini: the port, the debug level, the main window
// size, the switchboard window place and the four most recent files.
#include <array>
#include <string>

namespace r6183 {

class Session;

// Reads port, debug level and window size from section "System", puts a port
// outside 1 to 16 back to 1, then reads the recent files.
void ReadIniFile(Session& session);
// Writes port and window size (never the debug level), then the recent files.
void SaveIniFile(Session& session);

// The recent files, section "Last Files", keys "File 1" to "File 4".
void GetFileArray(Session& session);
void PutFileArray(Session& session);

// The switchboard window's place and size.
void getSwitchBoardValues(Session& session);
void PutSwitchBoardVal(Session& session);

// Puts `name` at the top of the recent files: a name already listed (same spelling,
// same case) moves up, a new one pushes the oldest out. Slots 1 to 4 are used.
void UpdateFileArray(std::array<std::string, 5>& recent, const std::string& name);

}  // namespace r6183
