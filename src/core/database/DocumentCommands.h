#pragma once
// The File commands: the life of the one document the operator works on. Whatever is
// opened is copied to the work copy "~TEMP" in the application directory; editors and
// transfers act on that copy; Save copies it back over the file.
#include <string>

namespace r6183 {

class Session;

void mnuFileNew_Click(Session& session);
void mnuFileOpen_Click(Session& session);
void OpenDatabase(Session& session, const std::string& path);
void mnuFileSave_Click(Session& session);
void mnuFileSaveAs_Click(Session& session);
void mnuFileClose_Click(Session& session);
// Closes the document if one is open; true when the main window may now unload
// (false after a cancelled close).
bool mnuExit_Click(Session& session);

// True when the file is not a document of the current format: a database of the
// earlier version, a foreign SQLite file, or anything that does not open.
bool OldAccess(Session& session, const std::string& path);

// Removes the work copy and the store's side files ("~temp.*", "~temp-journal", ...)
// from the work copy's directory.
void RemoveWorkFiles(Session& session);

inline constexpr const char* kUntitled = "Untitled";
inline constexpr const char* kDatabaseFilter = "Database Files (*.mdb)|*.mdb";

}  // namespace r6183
