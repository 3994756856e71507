#pragma once
// The rules of the custom page groups window (frmPage): which of the sixteen page groups
// each of the four custom groups on dial codes 50 to 53 includes. Nothing is written
// before OK.
#include <deque>
#include <functional>
#include <string>

#include "editors/Controls.h"
#include "editors/DataControl.h"

namespace r6183 {

class Session;

class PageModel {
 public:
  explicit PageModel(Session& session);
  PageModel(const PageModel&) = delete;
  PageModel& operator=(const PageModel&) = delete;

  static constexpr const char* kCaption = "Custom Page Groups";
  static constexpr const char* kTabs[4] = {"5&0", "5&1", "5&2", "5&3"};

  Control Label1{"Label1", ControlKind::Label, "Select Dial Code to access Custom Page Group definition :"};
  std::deque<Control> fraPageGroup;  // per tab "&Page Groups"
  std::deque<Control> chkPageGroup;  // tab t, group i+1: t*16+i
  std::deque<Control> cmdInclude;    // per tab "&Include All Groups"
  std::deque<Control> cmdRemove;     // per tab "&Remove All Groups"
  Control cmdOK{"cmdOK", ControlKind::Button, "OK"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};
  DataControl dtaPageGroup{"dtaPageGroup"};

  bool PageChanged = false;
  bool PageLoaded = false;
  int Tab() const { return tab_; }
  bool UncommittedChanges() const { return PageChanged; }
  // The box of tab t for group g (1-16).
  Control& Box(int t, int g) { return chkPageGroup[static_cast<std::size_t>(t * 16 + g - 1)]; }

  void Form_Load();
  // The operator chooses tab t.
  void tabPageGroup_Click(int t);
  void cmdInclude_Click(int t);
  void cmdRemove_Click(int t);
  void cmdOK_Click();
  // Closes the window without writing.
  void cmdCancel_Click();
  void Form_Unload();

  // Set by whoever shows the window.
  std::function<void()> CloseWindow;
  std::function<void(const std::string& control)> SetFocus;

 private:
  void Close();
  Session& s_;
  int tab_ = 0;
};

}  // namespace r6183
