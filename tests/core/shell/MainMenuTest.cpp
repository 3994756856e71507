#include <gtest/gtest.h>

#include <map>
#include <memory>

#include "shell/MainMenu.h"
#include "support/FakeForm.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

using Names = std::vector<std::string>;

struct Win {
  Win(std::string n, std::string c, std::optional<bool> e = std::nullopt, bool r = false, int t = -1)
      : name(std::move(n)), caption(std::move(c)), edits(e), refuse(r), takesAlong(t) {}
  std::string name, caption;
  std::optional<bool> edits;
  bool refuse;
  int takesAlong;  // index (in the list) of a window its unload closes too
};

// The main window ("Title") and then `wins`, oldest first.
struct Windows {
  Windows(Session& s, const std::vector<Win>& wins) {
    s.product.ProductTitle = "Title";
    forms.push_back(std::make_unique<FakeForm>(s.forms, "frmMenu", "Title", std::nullopt, &events));
    for (const Win& w : wins) {
      forms.push_back(std::make_unique<FakeForm>(s.forms, w.name, w.caption, w.edits, &events));
      forms.back()->refuseOk = w.refuse;
    }
    for (std::size_t i = 0; i < wins.size(); ++i)
      if (wins[i].takesAlong >= 0)
        forms[i + 1]->onUnload = [this, j = wins[i].takesAlong + 1] {
          if (forms[j]->loaded) forms[j]->Unload();
        };
  }
  static Names Captions(const Session& s) {
    Names out;
    for (int i = 0; i < s.forms.Count(); ++i) out.push_back(s.forms.At(i).Caption());
    return out;
  }
  Names events;
  std::vector<std::unique_ptr<FakeForm>> forms;
};

TEST(MenuModelTest, NotifiesOnlyRealChangesAndRejectsUnknownNames) {
  MenuModel m;
  Names seen;
  m.onChange = [&](const std::string& n) { seen.push_back(n); };
  for (bool on : {true, false}) m.SetEnabled("mnuFileSave", on);
  for (bool on : {false, true}) m.SetVisible("mnuFileArray_2", on);
  for (bool on : {false, true}) m.SetChecked("mnuSched1", on);
  for (const char* c : {"&Receive data from 6183", "x"}) m.SetCaption("mnuRx", c);
  for (int i = 0; i < 2; ++i) m.SetWindowCaption("T");
  EXPECT_EQ(seen, (Names{"mnuFileSave", "mnuFileArray_2", "mnuSched1", "mnuRx", ""}));

  const std::function<void()> unknown[] = {
      [&] { m.Item("mnuNone"); }, [&] { m.SetEnabled("mnufile", true); },
      [&] { m.SetVisible("mnuFileArray_5", true); }, [&] { m.SetCaption("", "x"); }};
  for (const auto& f : unknown) {
    try {
      f();
      ADD_FAILURE() << "no error";
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.number(), err::ItemNotFound);
    }
  }
}

TEST(MenuModelTest, NestsTheMenusAndHidesTheRecentFilesAtFirst) {
  MenuModel m;
  std::map<std::string, Names> children;  // by parent, "" for the roots
  Names seen, hidden;
  for (const MenuItem& i : m.Items()) {
    EXPECT_TRUE(i.parent.empty() || std::count(seen.begin(), seen.end(), i.parent)) << i.name;
    EXPECT_TRUE(i.enabled && !i.checked) << i.name;
    seen.push_back(i.name);
    children[i.parent].push_back(i.name);
    if (!i.visible) hidden.push_back(i.name);
  }
  EXPECT_EQ(children[""], (Names{"mnuFile", "mnuConfig", "mnuSchedules", "mnuStation", "mnuPageGroup",
                                 "mnuSysOpt", "mnuBGM", "mnuDate", "mnuWindow", "mnuHelp", "mnuDebug"}));
  EXPECT_EQ(children["mnuModem"],
            (Names{"mnuModemConnect", "mnuManualConnect", "mnuManConnDiv", "mnuModemRelease"}));
  EXPECT_EQ(children["mnuComSetup"], (Names{"mnuComPort", "mnuRemoteModem"}));
  EXPECT_EQ(hidden, (Names{"mnuFileArray_0", "mnuFileArray_1", "mnuFileArray_2", "mnuFileArray_3",
                           "mnuFileArray_4"}));
}

TEST(MainMenuTest, MenuStatesSetTheirItemsAndLeaveTheOthers) {
  const Names noDoc = {"mnuFileNew", "mnuFileOpen", "mnuRx", "mnuFileArray_1", "mnuFileArray_2",
                       "mnuFileArray_3", "mnuFileArray_4"};
  const Names doc = {"mnuConfig", "mnuSchedules", "mnuStation", "mnuPageGroup", "mnuSysOpt",
                     "mnuBGM", "mnuFileClose", "mnuFileSaveAs", "mnuPrint"};
  auto plus = [](Names a, const Names& b) { return a.insert(a.end(), b.begin(), b.end()), a; };
  const struct {
    void (*run)(Session&);
    int16_t clocks;
    Names on, off;
  } cases[] = {
      {Init_Menu_Options, 1, noDoc, plus(doc, {"mnuFileSave", "mnuSwitchBoard"})},
      {File_Menu_Options, 1, plus(doc, {"mnuClocks"}), noDoc},
      {File_Menu_Options, 0, doc, plus(noDoc, {"mnuClocks"})},
      {DisableAllRootMenus, 0, {}, {"mnuFile", "mnuDate", "mnuHelp"}},
      {InableAllRootMenus, 0, {"mnuFile", "mnuDate", "mnuHelp"}, {}},
  };
  for (const auto& c : cases) {
    for (int parity : {0, 1}) {  // both starting patterns, so "left alone" shows
      TestSession ts;
      ts->state.ClocksEnabled = c.clocks;
      const auto& items = ts->menu.Items();
      for (std::size_t k = 0; k < items.size(); ++k) ts->menu.SetEnabled(items[k].name, (k + parity) % 2);
      c.run(*ts);
      for (std::size_t k = 0; k < items.size(); ++k) {
        const std::string& n = items[k].name;
        const bool expected = std::count(c.on.begin(), c.on.end(), n)    ? true
                              : std::count(c.off.begin(), c.off.end(), n) ? false
                                                                           : (k + parity) % 2;
        EXPECT_EQ(items[k].enabled, expected) << n << " parity " << parity << " clocks " << c.clocks;
      }
    }
  }
}

TEST(MainMenuTest, GuardsCountWindowsAndMatchCaptionsAndNamesExactly) {
  const struct {
    std::vector<Win> wins;
    bool open, newOpen, save, close, help, closeAll;
    int progress;  // index of the window to keep in view, -1 for none
  } cases[] = {
      {{}, 0, 0, 0, 0, 0, 0, -1},
      {{{"frmDial", "Dialing Modem"}}, 0, 1, 0, 1, 1, 1, -1},
      {{{"frmDial", "Dialing modem"}}, 0, 0, 0, 0, 0, 0, -1},
      {{{"frmMsgWait", "Receiving"}}, 0, 0, 0, 0, 1, 0, 1},
      {{{"FRMMSGWAIT", "Receiving"}}, 0, 0, 0, 0, 0, 0, -1},
      {{{"frmA", "Title"}}, 0, 0, 0, 0, 0, 0, -1},
      {{{"frmA", "a"}, {"frmB", "Title"}}, 1, 0, 0, 0, 1, 0, -1},
      {{{"frmA", "a"}, {"frmDial", "Dialing Modem"}}, 1, 0, 1, 1, 0, 0, -1},
      {{{"frmA", "a"}, {"frmMsgWait", "Sending"}}, 0, 0, 0, 0, 1, 0, 2},
      {{{"frmDial", "Dialing Modem"}, {"frmA", "Title "}}, 0, 0, 0, 0, 0, 0, -1},
      {{{"frmA", "a"}, {"frmDial", "Dialing Modem"}, {"frmB", "b"}}, 0, 0, 0, 0, 0, 0, -1},
      {{{"frmA", "a"}, {"frmMsgWait", "Title"}, {"frmB", "b"}}, 0, 0, 0, 0, 0, 0, -1},
  };
  for (const auto& c : cases) {
    TestSession ts;
    Windows w(*ts, c.wins);
    const std::string row = testing::PrintToString(Windows::Captions(*ts));
    EXPECT_EQ(WindowOpenBlocked(*ts), c.open) << row;
    EXPECT_EQ(FileNewOpenBlocked(*ts), c.newOpen) << row;
    EXPECT_EQ(FileSaveBlocked(*ts), c.save) << row;
    EXPECT_EQ(FileCloseBlocked(*ts), c.close) << row;
    EXPECT_EQ(HelpBlocked(*ts), c.help) << row;
    EXPECT_EQ(CloseAllBlocked(*ts), c.closeAll) << row;
    EXPECT_EQ(ProgressWindowToKeepInView(*ts), c.progress < 0 ? nullptr : w.forms[c.progress].get()) << row;
  }
}

TEST(MainMenuTest, ProjectOptionsShowDebugByLevelAndNameTheModel) {
  for (int16_t level : {0, 2}) {
    TestSession ts;
    ts->state.DebugLevel = level;
    ts->product.ProductTitle = "The Title";
    ts->product.ProductModel = "M-9";
    ts->menu.SetVisible("mnuDebug", level == 0);
    EXPECT_TRUE(SetProjectOptions(*ts));
    const MenuModel& m = ts->menu;
    EXPECT_EQ(m.Visible("mnuDebug"), level != 0);
    EXPECT_FALSE(m.Visible("mnuSchedules") || m.Visible("mnuClocks") || m.Visible("mnudash11"));
    EXPECT_TRUE(m.Visible("mnuSched1") && m.Visible("mnuAllSched"));
    EXPECT_EQ(m.WindowCaption(), "The Title");
    EXPECT_EQ(m.Item("mnuRx").caption, "&Receive data from M-9");
    EXPECT_EQ(m.Item("mnuSend").caption, "Sen&d data to M-9");
  }
}

TEST(MainMenuTest, RecentFilesShowNumberedBySlot) {
  TestSession ts;
  ts->state.RecentFiles = {"/x/unused.mdb", "/d/a.mdb", "", "/d/c.mdb", ""};
  ts->menu.SetCaption("mnuFileArray_4", "&4 /d/old.mdb");  // an empty slot keeps its item
  ts->menu.SetVisible("mnuFileArray_4", true);
  DisplayFileArray(*ts);
  Names shown;
  for (int i = 0; i <= 4; ++i) {
    const MenuItem& item = ts->menu.Item(ArrayName("mnuFileArray", i));
    if (item.visible) shown.push_back(item.caption);
  }
  EXPECT_EQ(shown, (Names{"-", "&1 /d/a.mdb", "&3 /d/c.mdb", "&4 /d/old.mdb"}));
}

TEST(MainMenuTest, SaveIsEnabledWhileDirtyOrAWindowHoldsEdits) {
  const struct {
    int16_t dirty;
    bool before;
    std::vector<Win> wins;
    bool after;
  } cases[] = {
      {1, true, {}, true},
      {1, false, {{"frmA", "a", true}}, false},  // dirty: nothing is looked at
      {0, true, {}, false},
      {0, false, {{"frmA", "a", true}}, true},
      {0, true, {{"frmA", "a", std::nullopt}}, false},
      {0, true, {{"frmA", "a", false}}, false},
      {0, false, {{"FrmMenu", "a", true}}, false},
      {0, false, {{"frmA", "a", true}, {"frmB", "b", false}}, true},
  };
  for (const auto& c : cases) {
    TestSession ts;
    Windows w(*ts, c.wins);
    ts->state.DatabaseDirty = c.dirty;
    ts->menu.SetEnabled("mnuFileSave", c.before);
    UpdateFileSaveOpt(*ts);
    EXPECT_EQ(ts->menu.Enabled("mnuFileSave"), c.after) << testing::PrintToString(Windows::Captions(*ts));
  }
}

TEST(MainMenuTest, SaveOpenFormsSettlesNewestFirst) {
  const Win a{"frmA", "A", true}, b{"frmB", "B", true}, c{"frmC", "C", true};
  const struct {
    std::vector<Win> wins;
    int16_t acceptAll;
    std::vector<Answer> answers;
    Names events, left, asked;
    int16_t cancelled;
  } cases[] = {
      {{}, 1, {}, {}, {"Title"}, {}, 0},
      {{a, b, c}, 1, {}, {"C:top", "C:ok", "C:unload", "B:top", "B:ok", "B:unload", "A:top", "A:ok", "A:unload"},
       {"Title"}, {}, 0},
      {{a, b, c}, 0, {Answer::Yes, Answer::Cancel}, {"C:top", "C:ok", "C:unload", "B:top", "B:focus"},
       {"Title", "A", "B"}, {"C", "B"}, 1},
      {{a}, 0, {Answer::No}, {"A:top", "A:cancel", "A:unload"}, {"Title"}, {"A"}, 0},
      {{a, {"frmB", "B", true, true}}, 0, {Answer::Yes, Answer::Yes},
       {"B:top", "B:ok", "A:top", "A:ok", "A:unload"}, {"Title", "B"}, {"B", "A"}, 0},
      {{{"frmQuick", "Programming Windows"}, {"frmA", "A", false}, {"frmB", "B"}}, 0, {},
       {"B:top", "B:unload", "A:top", "A:unload", "Programming Windows:top"}, {"Title", "Programming Windows"}, {}, 0},
      {{a, {"frmB", "B", false}, {"frmC", "C", true, false, 1}}, 1, {},
       {"C:top", "C:ok", "C:unload", "B:unload", "A:top", "A:ok", "A:unload"}, {"Title"}, {}, 0},
  };
  for (const auto& t : cases) {
    TestSession ts;
    Windows w(*ts, t.wins);
    for (Answer ans : t.answers) ts.prompter.QueueAnswer(ans);
    ts->state.AcceptAllChanges = t.acceptAll;
    ts->state.SaveCancelled = 1;
    SaveOpenForms(*ts, "Save Changes");
    EXPECT_EQ(w.events, t.events);
    EXPECT_EQ(Windows::Captions(*ts), t.left);
    Names asked, expected;
    for (const ShownMessage& m : ts.prompter.Shown()) {
      EXPECT_TRUE(m.buttons == Buttons::YesNoCancel && m.icon == Icon::Question && m.title == "Save Changes");
      asked.push_back(m.text);
    }
    for (const std::string& caption : t.asked) expected.push_back("Accept changes to " + caption + "?");
    EXPECT_EQ(asked, expected);
    EXPECT_EQ(ts->state.SaveCancelled, t.cancelled);
    EXPECT_EQ(ts->state.AcceptAllChanges, 0);
    EXPECT_TRUE(JournalRows(*ts).empty());
  }
}

TEST(MainMenuTest, UnloadingAllAndCloseAll) {
  const std::vector<Win> usual = {{"frmQuick", "Programming Windows"}, {"frmA", "A", true}, {"frmB", "B"}};
  const std::vector<Win> dialing = {{"frmDial", "Dialing Modem"}};
  const struct {
    void (*run)(Session&);
    std::vector<Win> wins;
    Names left;
  } cases[] = {
      {UnloadAllForms, usual, {"Title"}},
      {mnuWindowCloseAll_Click, usual, {"Title", "Programming Windows"}},
      {UnloadAllForms, dialing, {"Title"}},
      {mnuWindowCloseAll_Click, dialing, {"Title", "Dialing Modem"}},
  };
  for (const auto& c : cases) {
    TestSession ts;
    Windows w(*ts, c.wins);
    c.run(*ts);
    EXPECT_EQ(Windows::Captions(*ts), c.left);
    EXPECT_EQ(w.forms[0]->unloads + w.forms[0]->oks + w.forms[0]->cancels, 0);
  }
}

TEST(MainMenuTest, InitializeResetsTheDocumentUnlessAFileIsMissing) {
  for (bool missing : {false, true}) {
    TestSession ts;
    ts->product.ProductTitle = "Title";
    if (missing) fs::remove(ts.dir.path() / "reports/clid.rpt");
    ProcessState& st = ts->state;
    st.CurrentFileName = "/d/a.mdb";
    st.EventCount = st.ClocksEnabled = st.DatabaseDirty = st.DateTimeActive = 1;
    st.SystemConfig = 3;
    ts->menu.SetEnabled("mnuFileNew", false);
    EXPECT_EQ(Initialize(*ts), !missing);
    EXPECT_EQ(ts->menu.WindowCaption(), "Title");
    EXPECT_EQ(ts.prompter.Shown().size(), missing ? 1u : 0u);
    EXPECT_EQ(ts->menu.Enabled("mnuFileNew"), !missing);
    EXPECT_EQ(ts->menu.Enabled("mnuConfig"), missing);
    EXPECT_EQ(st.CurrentFileName, missing ? "/d/a.mdb" : "");
    const int left = st.EventCount + st.ClocksEnabled + st.DatabaseDirty + st.DateTimeActive + st.SystemConfig;
    EXPECT_EQ(left, missing ? 7 : 0);
  }
}

}  // namespace
}  // namespace r6183::test
