// The configuration, custom page group, audio and class of service windows' rules on a
// real work copy, driven through their controls as the operator drives the windows.
#include <gtest/gtest.h>

#include "core/editors/EditorTestSupport.h"
#include "editors/BgmModel.h"
#include "editors/ClassServiceModel.h"
#include "editors/ConfigModel.h"
#include "editors/PageModel.h"
#include "shell/MainMenu.h"
#include "shell/MenuModel.h"
#include "shell/WindowOpener.h"
#include "support/FakeForm.h"

namespace r6183::test {
namespace {

// Every group set on in the five tables, stations named, classes at 2, and three events:
// groups 1 and 5, only 6, only 16.
const std::string kFull =
    "UPDATE Config SET System_Config = 3;"
    "UPDATE Clid SET archnum = clid_station, clid_string = 'Room ' || clid_station;"
    "UPDATE ClassService SET Service = 2;"
    "INSERT INTO Event (Schedule, StartTime, PageGroup1, PageGroup5) VALUES (1, '08:00', 1, 1);"
    "INSERT INTO Event (Schedule, StartTime, PageGroup6) VALUES (1, '09:00', 1);"
    "INSERT INTO Event (Schedule, StartTime, PageGroup16) VALUES (2, '10:00', 1);" +
    [] {
      std::string sql;
      for (const char* table : {"PageGroup", "Bgm", "TonesPG", "EmergencyPG"}) {
        sql += std::string("UPDATE ") + table + " SET PageGroup1 = 1";
        for (int g = 2; g <= 16; ++g) sql += ", PageGroup" + std::to_string(g) + " = 1";
        sql += ";";
      }
      return sql;
    }();

// The groups set in a table's rows, as "1,2,..;" per row.
std::string Groups(EditorSession& doc, const std::string& table) {
  std::string cols = "PageGroup1";
  for (int g = 2; g <= 16; ++g) cols += " || PageGroup" + std::to_string(g);
  return doc.Peek("SELECT " + cols + " FROM " + table);
}
std::string Bits(int on, int count = 16) {
  std::string s;
  for (int g = 1; g <= count; ++g) s += g <= on ? '1' : '0';
  return s;
}

struct RecordingWindows : WindowOpener {
  void ShowModal(const std::string& name) override {
    shown.push_back("modal " + name);
    if (onModal) onModal();
  }
  void Show(const std::string& name) override { shown.push_back(name); }
  std::vector<std::string> shown;
  std::function<void()> onModal;
};

// OK in the configuration window with option `to` chosen, the shrink question answered `answer`.
void ChooseBoards(EditorSession& doc, int to, Answer answer = Answer::Yes) {
  ConfigModel w(*doc);
  w.Form_Load();
  w.optConfig.SetValue(to + 1);
  doc.t.prompter.QueueAnswer(answer);
  w.cmdOK.Press();
}

TEST(SystemConfiguration, ShrinkingClearsWhatTheRemovedBoardsLeave) {
  struct Case {
    int to;
    int stations, groups;  // what stays
    std::string events;
  } cases[] = {
      {0, 24, 4, "08:00\n"},
      {1, 48, 8, "08:00\n09:00\n"},
      {2, 72, 12, "08:00\n09:00\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.to);
    EditorSession doc(kFull);
    ASSERT_EQ(doc->state.SystemConfig, 3);
    ASSERT_EQ(doc->state.EventCount, 3);
    ChooseBoards(doc, c.to);
    EXPECT_EQ(doc.t.prompter.Shown().at(0).text, kShrinkQuestion);
    EXPECT_EQ(doc.t.prompter.Shown().at(0).title, "System Configuration");
    EXPECT_EQ(doc->state.SystemConfig, c.to);
    EXPECT_EQ(doc.Peek("SELECT System_Config FROM Config"), std::to_string(c.to) + "\n");
    EXPECT_EQ(doc->state.DatabaseDirty, 1);
    // emptied to empty strings, not blanks or nulls
    EXPECT_EQ(doc.Peek("SELECT count(*) FROM Clid WHERE archnum = '' AND clid_string = ''"),
              std::to_string(96 - c.stations) + "\n");
    EXPECT_EQ(doc.Peek("SELECT max(clid_station) FROM Clid WHERE archnum <> ''"), std::to_string(c.stations) + "\n");
    EXPECT_EQ(doc.Peek("SELECT group_concat(Service, '') FROM ClassService"),
              std::string(static_cast<std::size_t>(c.groups), '2') + std::string(16 - c.groups, '1') + "\n");
    for (const char* table : {"Bgm", "TonesPG", "EmergencyPG"}) EXPECT_EQ(Groups(doc, table), Bits(c.groups) + "\n") << table;
    const std::string row = Bits(c.groups) + "\n";
    EXPECT_EQ(Groups(doc, "PageGroup"), row + row + row + row);
    EXPECT_EQ(doc.Peek("SELECT StartTime FROM Event ORDER BY StartTime"), c.events);
    EXPECT_EQ(doc->state.EventCount, std::count(c.events.begin(), c.events.end(), '\n'));
  }
}

TEST(SystemConfiguration, NoAtTheShrinkQuestionLeavesEverything) {
  EditorSession doc(kFull + "UPDATE ClockDef SET ClockEnabled = 1;");
  ASSERT_EQ(doc->state.ClocksEnabled, 1);
  const std::string before = Groups(doc, "TonesPG") + doc.Peek("SELECT * FROM Clid") + doc.Peek("SELECT * FROM Event");
  ChooseBoards(doc, 0, Answer::No);
  EXPECT_EQ(doc->state.SystemConfig, 3);
  EXPECT_EQ(doc->state.ClocksEnabled, 1);
  EXPECT_EQ(doc->state.DatabaseDirty, 0);
  EXPECT_EQ(doc.Peek("SELECT System_Config FROM Config") + doc.Peek("SELECT ClockEnabled FROM ClockDef"), "3\n1\n");
  EXPECT_EQ(Groups(doc, "TonesPG") + doc.Peek("SELECT * FROM Clid") + doc.Peek("SELECT * FROM Event"), before);
}

TEST(SystemConfiguration, GrowingGivesTheNewGroupsTheTonesOnly) {
  EditorSession doc("INSERT INTO Event (Schedule, StartTime, PageGroup1) VALUES (1, '08:00', 1);");
  const std::string untouched = Groups(doc, "Bgm") + Groups(doc, "PageGroup") + doc.Peek("SELECT * FROM Event");
  ChooseBoards(doc, 2);
  EXPECT_TRUE(doc.t.prompter.Shown().empty());
  EXPECT_EQ(doc.Peek("SELECT System_Config FROM Config"), "2\n");
  for (const char* table : {"TonesPG", "EmergencyPG"}) EXPECT_EQ(Groups(doc, table), Bits(12) + "\n") << table;
  EXPECT_EQ(Groups(doc, "Bgm") + Groups(doc, "PageGroup") + doc.Peek("SELECT * FROM Event"), untouched);
}

TEST(SystemConfiguration, OkWithoutAChangeWritesOnlyAClockFlagThatWasOn) {
  for (const bool clockOn : {false, true}) {
    SCOPED_TRACE(clockOn);
    EditorSession doc(clockOn ? "UPDATE ClockDef SET ClockEnabled = 1;" : "");
    doc->menu.SetEnabled("mnuClocks", clockOn);
    ConfigModel w(*doc);
    w.Form_Load();
    EXPECT_FALSE(w.cbClock.Visible());
    EXPECT_FALSE(w.Frame1.Visible());
    EXPECT_EQ(w.optConfig.Value(), 1);
    w.cmdOK.Press();
    EXPECT_EQ(doc->state.DatabaseDirty, 0);
    EXPECT_EQ(doc->state.ClocksEnabled, 0);
    EXPECT_EQ(doc.Peek("SELECT ClockEnabled FROM ClockDef"), "0\n");
    EXPECT_FALSE(doc->menu.Item("mnuClocks").enabled);
    EXPECT_TRUE(doc.t.prompter.Shown().empty());
  }
}

// The menu entry over a set of loaded windows: the main one, then `others`.
struct ConfigMenu {
  ConfigMenu() {
    doc->product.ProductTitle = "Title";
    doc->SetWindowOpener(&windows);
    main = std::make_unique<FakeForm>(doc->forms, events, "frmMenu", "Main");
  }
  FakeForm& Add(const std::string& name, const std::string& caption, std::optional<bool> edits = false) {
    return *others.emplace_back(std::make_unique<FakeForm>(doc->forms, events, name, caption, edits));
  }
  EditorSession doc;
  RecordingWindows windows;
  std::vector<std::string> events;
  std::unique_ptr<FakeForm> main;
  std::vector<std::unique_ptr<FakeForm>> others;
};

TEST(SystemConfiguration, TheMenuAsksAndClosesTheOpenWindowsFirst) {
  using Lines = std::vector<std::string>;
  const Lines none;
  const std::string plain = ConfigQuestion(false), edits = ConfigQuestion(true);
  struct Case {
    const char* what;
    std::function<void(ConfigMenu&)> setup;
    std::vector<Answer> answers;
    Lines texts;  // the questions, in order
    bool opened;
  } cases[] = {
      {"main window alone", [](ConfigMenu&) {}, {}, {}, true},
      {"with the quick menu", [](ConfigMenu& m) { m.Add("frmSwitchBoard", "Programming Windows"); }, {}, {}, true},
      {"a transfer runs",
       [](ConfigMenu& m) {
         m.Add("frmSwitchBoard", "Programming Windows");
         m.Add("frmMsgWait", "Title");
       },
       {}, {}, false},
      {"an editor without edits, No",
       [](ConfigMenu& m) { m.Add("frmSched", "Master Clock Schedule 1"); }, {Answer::No}, {plain}, false},
      {"an editor without edits, Yes",
       [](ConfigMenu& m) { m.Add("frmSched", "Master Clock Schedule 1"); }, {Answer::Yes}, {plain}, true},
      {"edits accepted",
       [](ConfigMenu& m) {
         m.Add("frmPage", "Custom Page Groups", true);
         m.Add("frmSched", "Master Clock Schedule 1");
       },
       {Answer::Yes, Answer::Yes}, {edits, "Accept changes to Custom Page Groups?"}, true},
      {"closing cancelled",
       [](ConfigMenu& m) { m.Add("frmBgm", "Audio Connections", true); },
       {Answer::Yes, Answer::Cancel}, {edits, "Accept changes to Audio Connections?"}, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ConfigMenu m;
    c.setup(m);
    for (Answer a : c.answers) m.doc.t.prompter.QueueAnswer(a);
    mnuConfig_Click(*m.doc);
    const auto& shown = m.doc.t.prompter.Shown();
    Lines texts;
    for (const auto& s : shown) texts.push_back(s.text);
    EXPECT_EQ(texts, c.texts);
    if (shown.size() > 1) EXPECT_EQ(shown[1].title, "System Configuration");
    if (!shown.empty()) EXPECT_EQ(shown[0].title, "Title");
    const bool opened = !m.windows.shown.empty() && m.windows.shown[0] == "modal frmConfig";
    EXPECT_EQ(opened, c.opened);
    if (opened)
      for (int i = 1; i < m.doc->forms.Count(); ++i) EXPECT_EQ(m.doc->forms.At(i).Caption(), "Programming Windows");
  }
}

TEST(SystemConfiguration, TheQuickMenuComesBackAfterTheWindow) {
  ConfigMenu m;
  m.doc->menu.SetChecked("mnuSwitchBoard", true);
  mnuConfig_Click(*m.doc);
  EXPECT_EQ(m.windows.shown, (std::vector<std::string>{"modal frmConfig", "frmSwitchBoard", "frmMenu"}));
}

// --- custom page groups

TEST(CustomPageGroups, IncludeAllSetsThePresentGroupsOfTheTabInView) {
  EditorSession doc("UPDATE Config SET System_Config = 1;");
  PageModel w(*doc);
  w.Form_Load();
  for (int t = 0; t < 4; ++t) {
    EXPECT_TRUE(w.Box(t, 8).Enabled());
    EXPECT_FALSE(w.Box(t, 9).Enabled());
  }
  w.tabPageGroup_Click(2);
  EXPECT_TRUE(w.cmdInclude[2].Enabled());
  EXPECT_FALSE(w.cmdInclude[0].Enabled());
  w.cmdInclude[2].Press();
  EXPECT_TRUE(w.PageChanged);
  EXPECT_TRUE(doc->menu.Item("mnuFileSave").enabled);
  w.cmdOK.Press();
  EXPECT_EQ(doc->state.DatabaseDirty, 1);
  const std::string off = Bits(0) + "\n";
  EXPECT_EQ(Groups(doc, "PageGroup"), off + off + Bits(8) + "\n" + off);
}

TEST(CustomPageGroups, OnlyOkWrites) {
  const std::string sql = "UPDATE PageGroup SET PageGroup3 = 1, PageGroup16 = 1 WHERE DialCode = 1;";
  struct Case {
    bool ok;
    std::string row1;
  } cases[] = {{false, "0010000000000001"}, {true, "0000000000000000"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.ok);
    EditorSession doc(sql + "UPDATE Config SET System_Config = 0;");
    PageModel w(*doc);
    w.Form_Load();
    EXPECT_EQ(w.Box(1, 3).Value(), 1);
    EXPECT_EQ(w.Box(1, 16).Value(), 1);
    EXPECT_FALSE(w.PageChanged);
    // Remove All clears the groups of absent boards as well; an empty group is allowed
    w.tabPageGroup_Click(1);
    w.cmdRemove[1].Press();
    EXPECT_EQ(w.Box(1, 16).Value(), 0);
    (c.ok ? w.cmdOK : w.cmdCancel).Press();
    EXPECT_EQ(doc.Peek("SELECT " + std::string("PageGroup1") + [] {
                std::string s;
                for (int g = 2; g <= 16; ++g) s += " || PageGroup" + std::to_string(g);
                return s;
              }() + " FROM PageGroup WHERE DialCode = 1"),
              c.row1 + "\n");
    EXPECT_EQ(doc->state.DatabaseDirty, c.ok ? 1 : 0);
    // Save follows what was written
    EXPECT_EQ(doc->menu.Item("mnuFileSave").enabled, c.ok);
  }
}

// --- audio connections

TEST(AudioConnections, CancelDropsTheMusicButWritesTheTones) {
  struct Case {
    bool ok;
    std::string bgm, tones, emergency;
  } cases[] = {
      {false, Bits(0), "1101000000000000", "0000000000000000"},
      {true, "1111000000000000", "1101000000000000", "0000000000000000"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.ok);
    EditorSession doc("UPDATE EmergencyPG SET PageGroup16 = 1;");
    BgmModel w(*doc);
    w.Form_Load();
    EXPECT_FALSE(w.BgmChanged);
    for (int src = 0; src < 3; ++src) {
      EXPECT_TRUE(w.Box(src, 4).Enabled());
      EXPECT_FALSE(w.Box(src, 5).Enabled());
    }
    w.sets[BgmModel::Music].cmdInclude.Press();
    EXPECT_TRUE(w.BgmChanged);
    Control& third = w.Box(BgmModel::TimeTone, 3);
    third.SetValue(0);
    w.sets[BgmModel::Emergency].cmdRemove.Press();  // group 16 too, though absent
    (c.ok ? w.cmdOK : w.cmdCancel).Press();
    EXPECT_EQ(Groups(doc, "Bgm"), c.bgm + "\n");
    EXPECT_EQ(Groups(doc, "TonesPG"), c.tones + "\n");
    EXPECT_EQ(Groups(doc, "EmergencyPG"), c.emergency + "\n");
    EXPECT_EQ(doc->state.DatabaseDirty, c.ok ? 1 : 0);
  }
}

// --- class of service

TEST(ClassOfService, ChoicesAreWrittenForThePresentBoardsHoweverTheWindowCloses) {
  struct Case {
    const char* what;
    int boards;
    std::function<void(ClassServiceModel&)> close;
    std::string services;
    int dirty;
  } cases[] = {
      {"Close", 1, [](ClassServiceModel& w) { w.cmdOk.Press(); }, "1,2,1,1,1,1,1,0,-1,2,2,2,2,2,2,-1", 1},
      {"system box", 1, [](ClassServiceModel& w) { w.Form_Unload(); }, "1,2,1,1,1,1,1,0,-1,2,2,2,2,2,2,-1", 0},
      {"hidden Command1", 3, [](ClassServiceModel& w) { w.cmdCancel.Press(); }, "1,2,1,1,1,1,1,0,1,2,2,2,2,2,2,1", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EditorSession doc("UPDATE Config SET System_Config = " + std::to_string(c.boards) +
                      ";UPDATE ClassService SET Service = CASE \"Group\" WHEN 1 THEN -1 WHEN 9 THEN -1 WHEN 16 THEN "
                      "-1 WHEN 2 THEN 2 WHEN 8 THEN 2 ELSE CASE WHEN \"Group\" > 8 THEN 2 ELSE 1 END END;");
    ClassServiceModel w(*doc);
    w.Form_Load();
    EXPECT_FALSE(w.cmdCancel.Visible());
    EXPECT_EQ(w.cmdCancel.Text(), "Command1");
    EXPECT_EQ(w.Combo(1).Selected(), "Normal / Emergency");
    EXPECT_EQ(w.Combo(2).Selected(), "Emergency Only!");
    const int present = (c.boards + 1) * 4;
    EXPECT_TRUE(w.Combo(present).Enabled());
    if (present < 16) {
      EXPECT_FALSE(w.Combo(present + 1).Enabled());
      EXPECT_EQ(w.Combo(present + 1).ListIndex(), -1);
    }
    w.Combo(8).Choose(0);
    EXPECT_TRUE(w.ServiceChanged);
    EXPECT_TRUE(doc->menu.Item("mnuFileSave").enabled);
    c.close(w);
    EXPECT_EQ(doc.Peek("SELECT group_concat(Service) FROM (SELECT Service FROM ClassService ORDER BY \"Group\")"),
              c.services + "\n");
    EXPECT_EQ(doc->state.DatabaseDirty, c.dirty);
  }
}

}  // namespace
}  // namespace r6183::test
