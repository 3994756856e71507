#pragma once
// The rules of the main window that do not need a window: its two menu states, the
// gating of the root menus during transfers, the return to the state with no
// document, the recent files in the File menu, and the guards that keep a second
// operation out while a transfer or a modem dial is under way.
#include <string>

namespace r6183 {

class Form;
class Session;

// Guards. True means: the command does nothing now.
// Window-opening commands: exactly three windows loaded and index 2 captioned with the
// product's title (a transfer in progress) or "Dialing Modem".
bool WindowOpenBlocked(const Session& s);
// New and Open: two windows loaded and index 1 captioned "Dialing Modem".
bool FileNewOpenBlocked(const Session& s);
// Save and Save As: three loaded and index 2 captioned "Dialing Modem".
bool FileSaveBlocked(const Session& s);
// Close: either of the two above.
bool FileCloseBlocked(const Session& s);
// Help contents: three loaded and index 2 captioned with the title or named
// "frmMsgWait", or two loaded and index 1 named "frmMsgWait" or captioned "Dialing Modem".
bool HelpBlocked(const Session& s);
// The transfers and the handshake: with two or three windows loaded, the last one is
// captioned "Dialing Modem".
bool DialingModem(const Session& s);
// Close All: two loaded and index 1 captioned "Dialing Modem".
bool CloseAllBlocked(const Session& s);
// The progress window when it must be kept in view (three loaded and index 2 named
// "frmMsgWait", or two and index 1), else null.
Form* ProgressWindowToKeepInView(const Session& s);

// The menu with no document open, and with one open.
void Init_Menu_Options(Session& s);
void File_Menu_Options(Session& s);
// Gate and ungate the File, Date/Time and Help menus around transfers.
void DisableAllRootMenus(Session& s);
void InableAllRootMenus(Session& s);

// Back to the state with no document. False when a required file is missing: the
// caller must end the process.
bool Initialize(Session& s);

// The menu and caption of the product: the debug menu, the hidden schedule and clock
// items, the transfer captions. Always true.
bool SetProjectOptions(Session& s);

// Shows the recent files in the File menu.
void DisplayFileArray(Session& s);

// Keeps Save enabled exactly while the work copy is dirty or a window holds edits.
void UpdateFileSaveOpt(Session& s);

// Settles the edits of every open window, newest first, asking under `title` unless
// the operator has already accepted all changes. Sets SaveCancelled when the operator
// cancels; afterwards only the main window and the quick menu are left.
void SaveOpenForms(Session& s, const std::string& title);

// Unloads every window but the main one, newest first.
void UnloadAllForms(Session& s);

// Close All: as above, but the quick menu ("Programming Windows") stays.
void mnuWindowCloseAll_Click(Session& s);

}  // namespace r6183
