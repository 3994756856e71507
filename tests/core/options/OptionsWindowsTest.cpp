// The options and clocks windows' rules on a real work copy, driven through their
// controls as the operator drives the windows.
#include <gtest/gtest.h>

#include <optional>

#include "core/editors/EditorTestSupport.h"
#include "support/FakeForm.h"
#include "options/ClockModel.h"
#include "options/DipChart.h"
#include "options/DipModel.h"
#include "shell/MenuModel.h"

namespace r6183::test {
namespace {

const char* kDipRow =
    "SELECT LowStn21, QueueTone, PriorityGlobal, PriorityOverride, RingPattern, ExtToneSource FROM DipSwitch";
const char* kClockRow = "SELECT ClockA, ClockB, Direction, BCD_Type FROM ClockDef";

// The option of a group that is set, counted from 0; -1 for none.
int Chosen(const Control& group) { return group.Value() - 1; }

TEST(SystemOptions, StoredRingPatternSelectsItsButton) {
  struct Case {
    int stored;
    int option;
    const char* caption;
  } cases[] = {{0, 0, " American"}, {1, 1, " Dutch"}, {2, 2, " British"}};
  for (const Case& c : cases) {
    EditorSession doc("UPDATE DipSwitch SET RingPattern = " + std::to_string(c.stored) + ";");
    DipModel dip(*doc);
    dip.Form_Load();
    EXPECT_EQ(Chosen(dip.optRingPattern), c.option) << c.stored;
    EXPECT_STREQ(RingPatternCaption(Chosen(dip.optRingPattern)), c.caption);
    EXPECT_EQ(dip.lblRingPattern.Text(), std::to_string(c.stored));
    EXPECT_FALSE(dip.OptionsChanged) << "loading marks nothing";
    dip.Form_Unload();
  }
}

TEST(SystemOptions, HiddenFieldsShowThroughTheirGroups) {
  EditorSession doc("UPDATE DipSwitch SET PriorityGlobal = 1, ExtToneSource = 0, PrivacyTone = 1;");
  DipModel dip(*doc);
  dip.Form_Load();
  EXPECT_EQ(Chosen(dip.optPriority), 1);
  EXPECT_EQ(Chosen(dip.optToneSource), 0);
  EXPECT_EQ(dip.chkPrivacyTone.Value(), 1);
  EXPECT_FALSE(dip.chkPriorityGlobal.Visible());
  dip.Form_Unload();
}

// What a way of closing the window does to the row, the dirty flag and Save.
TEST(SystemOptions, ClosingWritesOnlyThroughOk) {
  struct Case {
    const char* name;
    void (*edit)(DipModel&);
    bool ok;
    std::string row;
    bool dirty;
  } cases[] = {
      {"ok without a change", [](DipModel&) {}, true, "0|0|0|0|0|0\n", false},
      {"ok after a tick", [](DipModel& d) { d.chkQueueTone.SetValue(1); }, true, "0|1|0|0|0|0\n", true},
      {"ok after the options", [](DipModel& d) {
         d.optRingPattern.SetValue(3);  // " British"
         d.optPriority.SetValue(2);
         d.optToneSource.SetValue(2);
       },
       true, "0|0|1|0|2|1\n", true},
      {"cancel after an option", [](DipModel& d) { d.optRingPattern.SetValue(2); }, false, "0|0|0|0|0|0\n", false},
      {"cancel after a tick", [](DipModel& d) { d.chkLowStation[0].SetValue(1); }, false, "0|0|0|0|0|0\n", false},
  };
  for (const Case& c : cases) {
    EditorSession doc;
    DipModel dip(*doc);
    dip.Form_Load();
    c.edit(dip);
    (c.ok ? dip.cmdOk : dip.cmdCancel).Press();
    EXPECT_FALSE(dip.Loaded()) << c.name;
    EXPECT_EQ(doc.Peek(kDipRow), c.row) << c.name;
    EXPECT_EQ(doc->state.DatabaseDirty != 0, c.dirty) << c.name;
    EXPECT_EQ(doc->menu.Enabled("mnuFileSave"), c.dirty) << c.name;
  }
}

TEST(SystemOptions, ChangeEnablesSaveAtOnceAndCancelShowsTheStoredValueAgain) {
  EditorSession doc("UPDATE DipSwitch SET RingPattern = 1;");
  doc->menu.SetEnabled("mnuFileSave", false);  // a document just opened
  DipModel dip(*doc);
  dip.Form_Load();
  EXPECT_FALSE(doc->menu.Enabled("mnuFileSave"));
  dip.optRingPattern.SetValue(1);  // " American"
  EXPECT_TRUE(dip.OptionsChanged);
  EXPECT_TRUE(dip.UncommittedChanges());
  EXPECT_TRUE(doc->menu.Enabled("mnuFileSave"));
  dip.cmdCancel.Press();
  EXPECT_EQ(Chosen(dip.optRingPattern), 1) << "the stored Dutch is back in the controls";
  EXPECT_FALSE(doc->menu.Enabled("mnuFileSave"));

  dip.Form_Load();
  EXPECT_EQ(Chosen(dip.optRingPattern), 1);
  dip.Form_Unload();
}

TEST(SystemOptions, ChartShowsTheUnsavedChoices) {
  EditorSession doc;
  DipModel dip(*doc);
  dip.Form_Load();
  dip.chkQueueTone.SetValue(1);
  dip.optRingPattern.SetValue(2);  // " Dutch"
  DipChart chart(*doc);
  int shown = 0;
  dip.ShowChart = [&] {
    ++shown;
    chart.Form_Load(dip);
  };
  dip.cmdDipswitch.Press();
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(chart.lblSwitch[5].Text(), "ON");
  EXPECT_EQ(chart.shpOn[5], DipChart::kWhite);
  EXPECT_EQ(chart.shpOff[5], DipChart::kBlack);
  EXPECT_EQ(chart.lblSwitch[6].Text(), "OFF");
  EXPECT_EQ(chart.shpOff[6], DipChart::kWhite);
  EXPECT_EQ(chart.shpOn[6], DipChart::kBlack);
  EXPECT_EQ(chart.lblSwitch[4].Text(), "") << "switch 5 shows neither";
  EXPECT_EQ(chart.shpOn[4], DipChart::kAsDesigned);
  EXPECT_EQ(chart.lblSwitch[13].Text(), "OFF");
  EXPECT_EQ(chart.lblSwitch[14].Text(), "ON");
  EXPECT_FALSE(dip.OptionsAccepted) << "the chart changes nothing";
  dip.cmdCancel.Press();
  EXPECT_EQ(doc.Peek(kDipRow), "0|0|0|0|0|0\n");
}

TEST(SystemOptions, MenuDoesNothingDuringATransferOrADial) {
  struct Opener : WindowOpener {
    std::vector<std::string> asked;
    void ShowModal(const std::string& name) override { asked.push_back(name); }
  };
  struct Case {
    const char* busy;  // caption of the third loaded window, or none
    std::vector<std::string> asked;
  } cases[] = {
      {nullptr, {"frmDip", "frmClock"}},
      {"Title", {"frmClock"}},
      {"Dialing Modem", {"frmClock"}},
      {"Events - Schedule 1", {"frmDip", "frmClock"}},
  };
  for (const Case& c : cases) {
    EditorSession doc;
    Opener opener;
    doc->SetWindowOpener(&opener);
    std::vector<std::string> events;
    FakeForm main(doc->forms, events, "frmMenu", "Title");
    FakeForm second(doc->forms, events, "frmSched", "Master Clock Schedule 1");
    std::optional<FakeForm> third;
    if (c.busy) third.emplace(doc->forms, events, "frmMsgWait", c.busy);
    mnuSysOpt_Click(*doc);
    mnuClocks_Click(*doc);
    EXPECT_EQ(opener.asked, c.asked) << (c.busy ? c.busy : "idle");
    doc->SetWindowOpener(nullptr);
  }
}

TEST(Clocks, StoredPositionShowsItsRowAndCorrection) {
  struct Case {
    std::string a, b;
    int lineA, lineB;
    std::string correctionA;
  } cases[] = {
      {"3", "1", 2, 0, "Yes"},
      {"03", "08", 2, 7, "Yes"},
      {"1", "10", 0, 9, "No"},
  };
  for (const Case& c : cases) {
    EditorSession doc("UPDATE ClockDef SET ClockA = '" + c.a + "', ClockB = '" + c.b +
                      "', Direction = '1', BCD_Type = '3';");
    const std::string third = doc.Peek("SELECT Cindex FROM Clocks LIMIT 1 OFFSET 2");
    ClockModel clock(*doc);
    clock.Form_Load();
    EXPECT_EQ(clock.cbClockA.ListCount(), 10);
    EXPECT_EQ(clock.cbClockA.ListIndex(), c.lineA) << c.a;
    EXPECT_EQ(clock.cbClockB.ListIndex(), c.lineB) << c.b;
    if (c.lineA == 2) EXPECT_EQ(clock.cbClockA.Selected() + "\n", third);
    EXPECT_EQ(clock.lblCorrection.Text(), c.correctionA);
    EXPECT_EQ(Chosen(clock.optDirection), 1);
    EXPECT_EQ(Chosen(clock.optBCDType), 3);
    EXPECT_FALSE(clock.OptionsChanged);
    clock.cmdOk.Press();
    EXPECT_EQ(doc.Peek(kClockRow), c.a + "|" + c.b + "|1|3\n") << "nothing was changed";
    EXPECT_EQ(doc->state.DatabaseDirty, 0);
  }
}

TEST(Clocks, ClosingWritesPositionsOnlyThroughOk) {
  struct Case {
    const char* name;
    void (*edit)(ClockModel&);
    bool ok;
    std::string row;
    bool dirty;
  } cases[] = {
      {"pick without opening the list", [](ClockModel& c) { c.PickClockA(4); }, true, "5|1|0|0\n", false},
      {"open the list and pick", [](ClockModel& c) {
         c.cbClockB_DropDown();
         c.PickClockB(9);
       },
       true, "1|10|0|0\n", true},
      {"open the list only", [](ClockModel& c) { c.cbClockA_DropDown(); }, true, "1|1|0|0\n", true},
      {"options", [](ClockModel& c) {
         c.optDirection.SetValue(2);
         c.optBCDType.SetValue(2);
       },
       true, "1|1|1|1\n", true},
      {"cancel after a pick", [](ClockModel& c) {
         c.cbClockA_DropDown();
         c.PickClockA(6);
         c.optBCDType.SetValue(4);
       },
       false, "1|1|0|0\n", false},
  };
  for (const Case& c : cases) {
    EditorSession doc;
    ClockModel clock(*doc);
    clock.Form_Load();
    c.edit(clock);
    (c.ok ? clock.cmdOk : clock.cmdCancel).Press();
    EXPECT_EQ(doc.Peek(kClockRow), c.row) << c.name;
    EXPECT_EQ(doc->state.DatabaseDirty != 0, c.dirty) << c.name;
  }
}

TEST(Clocks, CancelRestoresTheHiddenLabels) {
  EditorSession doc("UPDATE ClockDef SET ClockA = '2', ClockB = '4', Direction = '0', BCD_Type = '1';");
  ClockModel clock(*doc);
  clock.Form_Load();
  clock.cbClockA_DropDown();
  clock.PickClockA(7);
  clock.optDirection.SetValue(2);
  EXPECT_EQ(clock.txtclockA.Text(), "8");
  EXPECT_EQ(clock.txtDirection.Text(), "1");
  EXPECT_TRUE(doc->menu.Enabled("mnuFileSave"));
  clock.cmdCancel.Press();
  EXPECT_EQ(clock.txtclockA.Text(), "2");
  EXPECT_EQ(clock.txtDirection.Text(), "0");
  EXPECT_EQ(clock.cbClockA.ListIndex(), 1);
  EXPECT_FALSE(doc->menu.Enabled("mnuFileSave"));
  EXPECT_EQ(doc.Peek(kClockRow), "2|4|0|1\n");

  clock.Form_Load();  // opened again: the lists are filled anew and show the row
  EXPECT_EQ(clock.cbClockA.ListIndex(), 1);
  EXPECT_EQ(clock.cbClockB.ListIndex(), 3);
  EXPECT_EQ(Chosen(clock.optBCDType), 1);
  clock.cmdCancel.Press();
}

TEST(Clocks, EmptyCatalogueLeavesTheWindowUsable) {
  EditorSession doc("DELETE FROM Clocks;");
  ClockModel clock(*doc);
  clock.Form_Load();
  EXPECT_EQ(clock.cbClockA.ListCount(), 0);
  EXPECT_EQ(clock.cbClockB.ListCount(), 0);
  EXPECT_TRUE(clock.Loaded());
  clock.optBCDType.SetValue(3);
  clock.cmdOk.Press();
  EXPECT_FALSE(clock.Loaded());
  EXPECT_EQ(doc.Peek("SELECT BCD_Type FROM ClockDef"), "2\n");
}

}  // namespace
}  // namespace r6183::test
