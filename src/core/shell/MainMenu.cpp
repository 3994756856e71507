#include "shell/MainMenu.h"

#include <algorithm>
#include <span>

#include "shell/Labels.h"
#include "shell/RequiredFiles.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183 {

namespace {
constexpr Where kInitMenu{labels::frmMenu, "Init_Menu_opt"};
constexpr Where kFileMenu{labels::frmMenu, "File_Menu_Options"};
constexpr Where kDisableRoots{labels::frmMenu, "DisableAllRootMenus"};
constexpr Where kEnableRoots{labels::frmMenu, "InableAllRootMenus"};
constexpr Where kInitialize{labels::frmMenu, "Initialize"};
constexpr Where kSaveOpen{labels::frmMenu, "SaveOpenForms"};
constexpr Where kSaveOpt{labels::frmMenu, "UpdateFileSaveOpt"};
constexpr Where kFileArray{labels::frmMenu, "DisplayFileArray"};
constexpr Where kProjectOpt{labels::frmMenu, "SetProjectOptions"};
constexpr Where kUnloadAll{labels::frmMenu, "UnloadAllForms"};
constexpr Where kCloseAll{labels::frmMenu, "mnuWindowCloseAll_Click"};

// Built-in switches: this product has no schedules menu and no clocks.
constexpr bool kHideSchedules = true;
constexpr bool kHideClocks = true;

const std::string kDialing = "Dialing Modem";
const std::string kMsgWait = "frmMsgWait";
const std::string kQuickMenu = "Programming Windows";

// Menus that have to be opened on a document, and the File items that go with it.
constexpr const char* kDocumentMenus[] = {
    "mnuConfig", "mnuSchedules", "mnuStation",    "mnuPageGroup", "mnuSysOpt",
    "mnuBGM",    "mnuFileClose", "mnuFileSaveAs", "mnuPrint"};
// Items that only make sense without a document.
constexpr const char* kNoDocumentItems[] = {
    "mnuFileNew",     "mnuFileOpen",    "mnuRx",         "mnuFileArray_1",
    "mnuFileArray_2", "mnuFileArray_3", "mnuFileArray_4"};
// Root menus gated during transfers.
constexpr const char* kGatedMenus[] = {"mnuFile", "mnuDate", "mnuHelp"};

void SetAll(MenuModel& menu, std::span<const char* const> names, bool on) {
  for (const char* n : names) menu.SetEnabled(n, on);
}

// Walks the windows but the main one, newest first. Windows may leave the registry
// on the way (more than one at a time), so the index is held to the count.
template <class F>
void WalkNewestFirst(Session& s, const Where& where, F&& f) {
  for (int i = s.forms.Count() - 1; i >= 1; --i) {
    i = std::min(i, s.forms.Count() - 1);
    if (i < 1) break;
    bool stop = false;
    step(s.journal(), where, [&] { stop = f(s.forms.At(i)); });
    if (stop) return;
  }
}
}  // namespace

bool WindowOpenBlocked(const Session& s) {
  return s.forms.CaptionAt(3, 2, s.product.ProductTitle) || s.forms.CaptionAt(3, 2, kDialing);
}

bool FileNewOpenBlocked(const Session& s) { return s.forms.CaptionAt(2, 1, kDialing); }

bool FileSaveBlocked(const Session& s) { return s.forms.CaptionAt(3, 2, kDialing); }

bool FileCloseBlocked(const Session& s) { return FileNewOpenBlocked(s) || FileSaveBlocked(s); }

bool HelpBlocked(const Session& s) {
  return s.forms.CaptionAt(3, 2, s.product.ProductTitle) || s.forms.NameAt(3, 2, kMsgWait) ||
         s.forms.NameAt(2, 1, kMsgWait) || s.forms.CaptionAt(2, 1, kDialing);
}

bool CloseAllBlocked(const Session& s) { return s.forms.CaptionAt(2, 1, kDialing); }

Form* ProgressWindowToKeepInView(const Session& s) {
  if (s.forms.NameAt(3, 2, kMsgWait)) return &s.forms.At(2);
  if (s.forms.NameAt(2, 1, kMsgWait)) return &s.forms.At(1);
  return nullptr;
}

void Init_Menu_Options(Session& s) {
  step(s.journal(), kInitMenu, [&] {
    SetAll(s.menu, kDocumentMenus, false);
    s.menu.SetEnabled("mnuFileSave", false);
    s.menu.SetEnabled("mnuSwitchBoard", false);
    SetAll(s.menu, kNoDocumentItems, true);
  });
}

void File_Menu_Options(Session& s) {
  step(s.journal(), kFileMenu, [&] {
    SetAll(s.menu, kDocumentMenus, true);
    s.menu.SetEnabled("mnuClocks", s.state.ClocksEnabled != 0);
    SetAll(s.menu, kNoDocumentItems, false);
  });
}

void DisableAllRootMenus(Session& s) {
  step(s.journal(), kDisableRoots, [&] { SetAll(s.menu, kGatedMenus, false); });
}

void InableAllRootMenus(Session& s) {
  step(s.journal(), kEnableRoots, [&] { SetAll(s.menu, kGatedMenus, true); });
}

bool Initialize(Session& s) {
  step(s.journal(), kInitialize, [&] { s.menu.SetWindowCaption(s.product.ProductTitle); });
  bool filesThere = true;
  step(s.journal(), kInitialize, [&] { filesThere = CheckRequiredFiles(s); });
  if (!filesThere) return false;
  Init_Menu_Options(s);
  ProcessState& st = s.state;
  st.CurrentFileName.clear();
  st.EventCount = 0;
  st.SystemConfig = 0;
  st.ClocksEnabled = 0;
  st.DatabaseDirty = 0;
  st.DateTimeActive = 0;
  return true;
}

bool SetProjectOptions(Session& s) {
  step(s.journal(), kProjectOpt, [&] {
    MenuModel& m = s.menu;
    m.SetVisible("mnuDebug", s.state.DebugLevel != 0);
    if (kHideSchedules) m.SetVisible("mnuSchedules", false);
    if (kHideClocks) {
      m.SetVisible("mnuClocks", false);
      m.SetVisible("mnudash11", false);
    }
    m.SetWindowCaption(s.product.ProductTitle);
    m.SetCaption("mnuRx", "&Receive data from " + s.product.ProductModel);
    m.SetCaption("mnuSend", "Sen&d data to " + s.product.ProductModel);
  });
  return true;
}

void DisplayFileArray(Session& s) {
  for (int slot = 1; slot <= 4; ++slot) {
    const std::string& path = s.state.RecentFiles[static_cast<std::size_t>(slot)];
    if (path.empty()) continue;
    step(s.journal(), kFileArray, [&] {
      const std::string item = ArrayName("mnuFileArray", slot);
      s.menu.SetVisible("mnuFileArray_0", true);
      s.menu.SetCaption(item, "&" + std::to_string(slot) + " " + path);
      s.menu.SetVisible(item, true);
    });
  }
}

void UpdateFileSaveOpt(Session& s) {
  if (s.state.DatabaseDirty != 0) return;
  step(s.journal(), kSaveOpt, [&] { s.menu.SetEnabled("mnuFileSave", false); });
  WalkNewestFirst(s, kSaveOpt, [&](Form& f) {
    if (ToUpper(f.Name()) != "FRMMENU" && f.UncommittedChanges().value_or(false))
      s.menu.SetEnabled("mnuFileSave", true);
    return false;
  });
}

void SaveOpenForms(Session& s, const std::string& title) {
  ProcessState& st = s.state;
  st.SaveCancelled = 0;
  WalkNewestFirst(s, kSaveOpen, [&](Form& f) {
    f.BringToTop();
    if (!f.UncommittedChanges().value_or(false)) {
      if (f.Caption() != kQuickMenu) f.Unload();
      return false;
    }
    if (st.AcceptAllChanges != 0) {
      f.PressOk();
      return false;
    }
    const Answer a = s.prompter().Message("Accept changes to " + f.Caption() + "?",
                                          Buttons::YesNoCancel, Icon::Question, title);
    if (a == Answer::Yes) {
      f.PressOk();
    } else if (a == Answer::No) {
      f.PressCancel();
    } else {
      st.SaveCancelled = 1;
      st.AcceptAllChanges = 0;
      f.SetFocus();
      return true;
    }
    return false;
  });
  st.AcceptAllChanges = 0;
}

void UnloadAllForms(Session& s) {
  WalkNewestFirst(s, kUnloadAll, [](Form& f) {
    f.Unload();
    return false;
  });
}

void mnuWindowCloseAll_Click(Session& s) {
  if (CloseAllBlocked(s)) return;
  WalkNewestFirst(s, kCloseAll, [](Form& f) {
    if (f.Caption() != kQuickMenu) f.Unload();
    return false;
  });
}

bool DialingModem(const Session& s) {
  const int n = s.forms.Count();
  return (n == 2 || n == 3) && s.forms.At(n - 1).Caption() == "Dialing Modem";
}

}  // namespace r6183
