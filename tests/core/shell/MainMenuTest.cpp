#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "shell/MainMenu.h"
#include "support/FakeForm.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

using Names = std::vector<std::string>;

struct Win {
  std::string name, caption;
  std::optional<bool> edits = std::nullopt;
  bool refuse = false;
  int takesAlong = -1;  // index (in the list) of an older window its unload closes too
};

// The main window ("Title") and then `wins`, oldest first.
struct Windows {
  Windows(Session& s, const std::vector<Win>& wins) {
    s.product.ProductTitle = "Title";
    forms.push_back(std::make_unique<FakeForm>(s.forms, events, "frmMenu", "Title"));
    for (const Win& w : wins) {
      auto& f = forms.emplace_back(std::make_unique<FakeForm>(s.forms, events, w.name, w.caption, w.edits));
      f->refuseOk = w.refuse;
      if (w.takesAlong >= 0) f->onUnload = [g = forms[w.takesAlong + 1].get()] { g->Unload(); };
    }
  }
  Names events;
  std::vector<std::unique_ptr<FakeForm>> forms;
};

TEST(MainMenuTest, MenuStatesSetTheirItemsAndLeaveTheOthers) {
  const Names noDoc = {"mnuFileNew", "mnuFileOpen", "mnuRx", "mnuFileArray_1", "mnuFileArray_2",
                       "mnuFileArray_3", "mnuFileArray_4"};
  const Names doc = {"mnuConfig", "mnuSchedules", "mnuStation", "mnuPageGroup", "mnuSysOpt",
                     "mnuBGM", "mnuFileClose", "mnuFileSaveAs", "mnuPrint"};
  auto plus = [](Names a, const Names& b) { return a.insert(a.end(), b.begin(), b.end()), a; };
  const std::tuple<void (*)(Session&), int16_t, Names, Names> cases[] = {  // run, ClocksEnabled, on, off
      {Init_Menu_Options, 1, noDoc, plus(doc, {"mnuFileSave", "mnuSwitchBoard"})},
      {File_Menu_Options, 1, plus(doc, {"mnuClocks"}), noDoc},
      {File_Menu_Options, 0, doc, plus(noDoc, {"mnuClocks"})},
      {DisableAllRootMenus, 0, {}, {"mnuFile", "mnuDate", "mnuHelp"}},
      {InableAllRootMenus, 0, {"mnuFile", "mnuDate", "mnuHelp"}, {}},
  };
  for (const auto& [run, clocks, on, off] : cases)
    for (std::size_t parity : {0, 1}) {  // both starting patterns, so "left alone" shows
      TestSession ts;
      ts->state.ClocksEnabled = clocks;
      const auto& items = ts->menu.Items();
      for (std::size_t k = 0; k < items.size(); ++k) ts->menu.SetEnabled(items[k].name, (k + parity) % 2);
      run(*ts);
      for (std::size_t k = 0; k < items.size(); ++k) {
        const std::string& n = items[k].name;
        const bool expected = std::ranges::count(on, n) || (!std::ranges::count(off, n) && (k + parity) % 2);
        EXPECT_EQ(items[k].enabled, expected) << n << " parity " << parity << " clocks " << clocks;
      }
    }
}

// Each row also runs Close All, which closes every window but the main one and the quick
// menu unless blocked, and then the unloading of all windows but the main one.
TEST(MainMenuTest, GuardsCountWindowsAndMatchCaptionsAndNamesExactly) {
  using Blocked = std::array<bool, 6>;  // window open, new/open, save, close, help, close all
  const std::tuple<std::vector<Win>, Blocked, int> cases[] = {  // int: the window to keep in view
      {{}, {0, 0, 0, 0, 0, 0}, -1},
      {{{"frmDial", "Dialing Modem"}}, {0, 1, 0, 1, 1, 1}, -1},
      {{{"frmDial", "Dialing modem"}}, {0, 0, 0, 0, 0, 0}, -1},
      {{{"frmMsgWait", "Receiving"}}, {0, 0, 0, 0, 1, 0}, 1},
      {{{"FRMMSGWAIT", "Receiving"}}, {0, 0, 0, 0, 0, 0}, -1},
      {{{"frmA", "Title"}}, {0, 0, 0, 0, 0, 0}, -1},
      {{{"frmA", "a"}, {"frmB", "Title"}}, {1, 0, 0, 0, 1, 0}, -1},
      {{{"frmA", "a"}, {"frmDial", "Dialing Modem"}}, {1, 0, 1, 1, 0, 0}, -1},
      {{{"frmA", "a"}, {"frmMsgWait", "Sending"}}, {0, 0, 0, 0, 1, 0}, 2},
      {{{"frmDial", "Dialing Modem"}, {"frmA", "Title "}}, {0, 0, 0, 0, 0, 0}, -1},
      {{{"frmA", "a"}, {"frmDial", "Dialing Modem"}, {"frmB", "b"}}, {0, 0, 0, 0, 0, 0}, -1},
      {{{"frmA", "a"}, {"frmMsgWait", "Title"}, {"frmB", "b"}}, {0, 0, 0, 0, 0, 0}, -1},
      {{{"frmQuick", "Programming Windows"}, {"frmA", "a"}}, {0, 0, 0, 0, 0, 0}, -1},
  };
  for (int row = 0; const auto& [wins, blocked, progress] : cases) {
    SCOPED_TRACE(row++);
    TestSession ts;
    Windows w(*ts, wins);
    const Session& s = *ts;
    EXPECT_EQ(Blocked({WindowOpenBlocked(s), FileNewOpenBlocked(s), FileSaveBlocked(s), FileCloseBlocked(s),
                       HelpBlocked(s), CloseAllBlocked(s)}), blocked);
    EXPECT_EQ(ProgressWindowToKeepInView(s), progress < 0 ? nullptr : w.forms[progress].get());
    mnuWindowCloseAll_Click(*ts);
    const auto quick = std::ranges::count(wins, "Programming Windows", &Win::caption);
    EXPECT_EQ(s.forms.Count(), 1 + (blocked[5] ? std::ssize(wins) : quick));
    UnloadAllForms(*ts);
    EXPECT_TRUE(s.forms.Count() == 1 && &s.forms.At(0) == w.forms[0].get()) << "only the main window stays";
  }
}

TEST(MainMenuTest, ProjectOptionsAndRecentFilesSetTheMenuTexts) {
  TestSession ts;
  const MenuModel& m = ts->menu;
  ts->product.ProductTitle = "The Title";
  ts->product.ProductModel = "M-9";
  for (int16_t level : {0, 2, 0}) {
    ts->state.DebugLevel = level;
    EXPECT_TRUE(SetProjectOptions(*ts));
    EXPECT_EQ(m.Visible("mnuDebug"), level != 0) << level;
  }
  EXPECT_FALSE(m.Visible("mnuSchedules") || m.Visible("mnuClocks") || m.Visible("mnudash11"));
  EXPECT_EQ(m.WindowCaption(), "The Title");
  EXPECT_EQ(m.Item("mnuRx").caption, "&Receive data from M-9");
  EXPECT_EQ(m.Item("mnuSend").caption, "Sen&d data to M-9");
  EXPECT_EQ(m.Item("mnuManualConnect").caption, "Ma&nual  Connect");

  const auto shown = [&] {  // the recent files, numbered by slot
    Names out;
    for (const MenuItem& i : ts->menu.Items())
      if (i.name.starts_with("mnuFileArray_") && i.visible) out.push_back(i.caption);
    return out;
  };
  DisplayFileArray(*ts);
  EXPECT_EQ(shown(), Names{});  // none, not even the separator
  ts->state.RecentFiles = {"/x/unused.mdb", "/d/a.mdb", "", "/d/c.mdb", ""};
  DisplayFileArray(*ts);
  EXPECT_EQ(shown(), (Names{"-", "&1 /d/a.mdb", "&3 /d/c.mdb"}));
}

TEST(MainMenuTest, SaveIsEnabledWhileDirtyOrAWindowHoldsEdits) {
  const std::tuple<int16_t, bool, std::vector<Win>, bool> cases[] = {  // dirty, Save before, windows, after
      {1, true, {{"frmA", "a", false}}, true},
      {0, false, {{"frmA", "a", true}, {"frmB", "b", false}}, true},
      {0, true, {{"frmA", "a", std::nullopt}}, false},
  };
  for (const auto& [dirty, before, wins, after] : cases) {
    TestSession ts;
    Windows w(*ts, wins);
    ts->state.DatabaseDirty = dirty;
    ts->menu.SetEnabled("mnuFileSave", before);
    UpdateFileSaveOpt(*ts);
    EXPECT_EQ(ts->menu.Enabled("mnuFileSave"), after) << "dirty " << dirty << ", " << wins.size() << " windows";
  }
}

TEST(MainMenuTest, SaveOpenFormsSettlesNewestFirst) {
  const Win a{"frmA", "A", true}, b{"frmB", "B", true}, c{"frmC", "C", true};
  const std::string qA = "Accept changes to A?", qB = "Accept changes to B?", qC = "Accept changes to C?";
  // windows, AcceptAllChanges, answers; then the calls on the windows, the questions, SaveCancelled
  const std::tuple<std::vector<Win>, int16_t, std::vector<Answer>, Names, Names, int16_t> cases[] = {
      {{a, b, c}, 0, {Answer::No, Answer::Cancel}, {"C:top", "C:cancel", "C:unload", "B:top", "B:focus"}, {qC, qB}, 1},
      {{a, {"frmB", "B", true, true}}, 0, {Answer::Yes, Answer::Yes},  // B refuses its edits
       {"B:top", "B:ok", "A:top", "A:ok", "A:unload"}, {qB, qA}, 0},
      {{{"frmQuick", "Programming Windows"}, {"frmA", "A", false}, {"frmB", "B"}}, 0, {},
       {"B:top", "B:unload", "A:top", "A:unload", "Programming Windows:top"}, {}, 0},
      {{a, {"frmB", "B", false}, {"frmC", "C", true, false, 1}}, 1, {},  // C takes B along
       {"C:top", "C:ok", "C:unload", "B:unload", "A:top", "A:ok", "A:unload"}, {}, 0},
  };
  for (const auto& [wins, acceptAll, answers, events, questions, cancelled] : cases) {
    TestSession ts;
    Windows w(*ts, wins);
    for (Answer ans : answers) ts.prompter.QueueAnswer(ans);
    ts->state.AcceptAllChanges = acceptAll;
    ts->state.SaveCancelled = 1;
    SaveOpenForms(*ts, "Save Changes");
    EXPECT_EQ(w.events, events);  // a window leaves exactly when it unloads
    Names asked;  // each a Yes/No/Cancel question under the title
    for (const auto& [text, buttons, icon, title] : ts.prompter.Shown())
      asked.push_back(std::tie(buttons, icon, title) == std::tuple(Buttons::YesNoCancel, Icon::Question, "Save Changes")
                          ? text
                          : "(not such a question)");
    EXPECT_EQ(asked, questions);
    EXPECT_EQ(ts->state.SaveCancelled, cancelled);
    EXPECT_EQ(ts->state.AcceptAllChanges, 0);
    EXPECT_TRUE(JournalRows(*ts).empty());
  }
}

TEST(MainMenuTest, InitializeResetsTheDocumentUnlessAFileIsMissing) {
  for (bool missing : {false, true}) {
    TestSession ts;
    if (missing) fs::remove(ts.dir.path() / "reports/Clid.rpt");
    ProcessState& st = ts->state;
    st.CurrentFileName = "/d/a.mdb";
    st.EventCount = st.ClocksEnabled = st.DatabaseDirty = st.DateTimeActive = st.SystemConfig = 1;
    EXPECT_EQ(Initialize(*ts), !missing);
    EXPECT_EQ(ts.prompter.Shown().size(), missing ? 1u : 0u);
    EXPECT_EQ(ts->menu.Enabled("mnuConfig"), missing);
    EXPECT_EQ(st.CurrentFileName, missing ? "/d/a.mdb" : "");
    EXPECT_EQ(st.EventCount + st.ClocksEnabled + st.DatabaseDirty + st.DateTimeActive + st.SystemConfig,
              missing ? 5 : 0);
  }
}

}  // namespace
}  // namespace r6183::test
