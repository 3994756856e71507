// The numbering, station, conflict and auto-numbering windows' rules on a real work copy,
// driven through their controls as the operator drives the windows.
#include <gtest/gtest.h>

#include "core/editors/StationsFixture.h"
#include "shell/MainMenu.h"
#include "shell/Text.h"
#include "support/FakeForm.h"

namespace r6183::test {
namespace {

// Every station numbered 100 + its number, with a description, as a site in service.
const std::string kSite =
    "UPDATE Config SET System_Config = 3; UPDATE Clid SET archnum = printf('%-4d', 100 + clid_station), "
    "clid_string = printf('%-15s', 'Room ' || clid_station);";

TEST(StationWindowsTest, TheBoardsOfTheConfigurationAreOpenTheOthersCanBeVisitedButDoNothing) {
  for (int config = 0; config <= 3; ++config) {
    SCOPED_TRACE(config);
    Numbering n("UPDATE Config SET System_Config = " + std::to_string(config));
    EXPECT_EQ(n.AllLines().size(), 96u);
    EXPECT_EQ(n.clid.lstClid[3].List(23), "96\t    \t               ");
    EXPECT_EQ(n.clid.lstClid[0].ListIndex(), 0);
    for (int b = 0; b < 4; ++b) {
      EXPECT_EQ(n.clid.lstClid[b].Enabled(), b <= config) << b;
      EXPECT_EQ(n.clid.lblStations[b].Enabled(), b <= config) << b;
      EXPECT_EQ(n.clid.cmdEdit[b].Enabled(), b == 0) << b;
    }
    for (int b : {1, 2, 3, 0}) {
      n.clid.ShowTab(b);
      for (int other = 0; other < 4; ++other) {
        const bool active = other == b && b <= config;
        EXPECT_EQ(n.clid.cmdEdit[other].Enabled(), active) << b << "/" << other;
        EXPECT_EQ(n.clid.cmdDelete[other].Enabled(), active) << b << "/" << other;
        EXPECT_EQ(n.clid.cmdAuto[other].Enabled(), active) << b << "/" << other;
      }
      EXPECT_EQ(n.clid.lstClid[b].ListIndex(), b <= config ? 0 : -1) << b;
    }
  }
}

TEST(StationWindowsTest, OkSavesTheNumberAndDescriptionAsTheLineWillCarryThem) {
  const struct {
    std::string arch, clid;    // typed
    std::string row, line;     // then in the table and the list
  } cases[] = {
      {"", "Gym", "5|    |Gym            \n", " 5\t    \tGym            "},
      {"42", "   Library", "5|42  |Library        \n", " 5\t42  \tLibrary        "},
      {"1234", "Exactly fifteen", "5|1234|Exactly fifteen\n", " 5\t1234\tExactly fifteen"},
      {"12a3-45", "Sixteen chars!!!", "5|1234|Sixteen chars!!\n", " 5\t1234\tSixteen chars!!"},
      {"7", "Café", "5|7   |Café           \n", " 5\t7   \tCafé           "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.arch + "/" + c.clid);
    Numbering n;
    n.Edit(5, [&](StationModel& st) {
      EXPECT_EQ(st.Caption(), "Station 5");
      EXPECT_EQ(n.focus, Lines{"txtArchnum"});
      TypeInto(st.txtArchnum, c.arch);
      TypeInto(st.txtClid, c.clid);
      st.cmdOk.Press();
    });
    EXPECT_FALSE(n.stationLeftOpen);
    EXPECT_TRUE(n.conflictsShown.empty()) << "an empty number conflicts with nothing";
    EXPECT_EQ(n.doc.Peek("SELECT clid_station, archnum, clid_string FROM Clid WHERE clid_station = 5"), c.row);
    EXPECT_EQ(n.clid.lstClid[0].List(4), c.line);
    EXPECT_EQ(n.clid.lstClid[0].ListIndex(), 4);
    EXPECT_TRUE(n.clid.ClidChanged);
    EXPECT_TRUE(n.doc->menu.Enabled("mnuFileSave"));
    EXPECT_EQ(n.doc->state.DatabaseDirty, 0) << "until OK of the numbering window";
  }
}

TEST(StationWindowsTest, ADescriptionTheLineCannotCarryIsRefusedWithItsReason) {
  Numbering n;
  n.Edit(5, [&](StationModel& st) {
    TypeInto(st.txtClid, "Ab", false);
    st.txtClid.SetText("AbΩ");  // typed through the keyboard's composition, or pasted
    EXPECT_EQ(st.txtClid.Text(), "Ab");
    st.cmdOk.Press();
  });
  ASSERT_EQ(n.doc.Texts().size(), 1u);
  EXPECT_NE(n.doc.Texts()[0].find("cannot show \"Ω\""), std::string::npos) << n.doc.Texts()[0];
  EXPECT_EQ(n.doc.Peek("SELECT clid_string FROM Clid WHERE clid_station = 5"), "Ab             \n");
}

TEST(StationWindowsTest, TheConflictReplyDecidesWhatOkSaves) {
  const std::string sql = NumbersSql({{2, "100"}, {3, "101"}, {4, "2"}}) +
                          "UPDATE Clid SET clid_string = 'Principal' WHERE clid_station = 2;";
  const struct {
    int reply;
    bool open;
    std::string s2, s3, s10;  // rows of the stations afterwards
  } cases[] = {
      {conflict_reply::Yes, false, "2|    |Principal\n", "3|    |\n", "10|10  |Lab            \n"},
      {conflict_reply::No, false, "2|100 |Principal\n", "3|101 |\n", "10||\n"},
      {conflict_reply::Cancel, true, "2|100 |Principal\n", "3|101 |\n", "10||\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.reply);
    Numbering n(sql);
    const Lines before = n.AllLines();
    n.replies = {c.reply};
    n.Edit(10, [&](StationModel& st) {
      TypeInto(st.txtArchnum, "10");
      TypeInto(st.txtClid, "Lab");
      st.cmdOk.Press();
    });
    EXPECT_EQ(n.conflictsShown, std::vector<Lines>{Lines({" 2\t100 ", " 3\t101 "})});
    EXPECT_EQ(n.conflictHeads, Lines{"10 10"});
    EXPECT_EQ(n.stationLeftOpen, c.open);
    auto row = [&](int s) {
      return n.doc.Peek("SELECT clid_station, archnum, clid_string FROM Clid WHERE clid_station = " +
                        std::to_string(s));
    };
    EXPECT_EQ(row(2), c.s2);
    EXPECT_EQ(row(3), c.s3);
    EXPECT_EQ(row(10), c.s10);
    EXPECT_EQ(n.Number(4), "2   ") << "2 neither begins nor is begun by 10";
    if (c.reply == conflict_reply::Yes) {
      EXPECT_TRUE(n.clid.ClidChanged);
      EXPECT_EQ(n.clid.lstClid[0].List(1), " 2\t    \tPrincipal      ") << "the lists are rebuilt";
      EXPECT_EQ(n.clid.lstClid[0].ListIndex(), 9);
    } else {
      EXPECT_FALSE(n.clid.ClidChanged);
      EXPECT_EQ(n.AllLines(), before);
    }
  }
}

TEST(StationWindowsTest, AfterCancelAtTheConflictTheOperatorTriesAnotherNumber) {
  Numbering n(NumbersSql({{2, "100"}}));
  n.replies = {conflict_reply::Cancel};
  n.Edit(10, [&](StationModel& st) {
    TypeInto(st.txtArchnum, "1");
    st.cmdOk.Press();
    EXPECT_TRUE(st.Loaded());
    TypeInto(st.txtArchnum, "30");
    st.cmdOk.Press();
  });
  EXPECT_FALSE(n.stationLeftOpen);
  EXPECT_EQ(n.conflictsShown.size(), 1u);
  EXPECT_EQ(n.Number(10), "30  ");
  EXPECT_EQ(n.Number(2), "100 ");
}

TEST(StationWindowsTest, MovesWalkTheBoardAndStepBackOverItsStartOnly) {
  Numbering n("UPDATE Config SET System_Config = 1");
  const struct {
    int button;
    int station, listPos, selected;
  } steps[] = {
      {1, 24, -1, -1},  // over the start of the board into the main board, with no line to select
      {1, 23, -2, -1}, {2, 24, -1, -1}, {2, 25, 0, 0}, {3, 48, 23, 23},
      {2, 48, 23, 23},  // the end of the board is a bound
      {0, 25, 0, 0},
  };
  n.Edit(25, [&](StationModel& st) {
    EXPECT_EQ(st.BoardTab, 1);
    EXPECT_EQ(st.FirstStation, 25);
    EXPECT_EQ(st.LastStation, 48);
    for (const auto& s : steps) {
      st.cmdMove[s.button].Press();
      EXPECT_EQ(st.lblStation.Text(), std::to_string(s.station)) << s.button;
      EXPECT_EQ(st.Caption(), "Station " + std::to_string(s.station));
      EXPECT_EQ(st.ListPos, s.listPos) << s.station;
      EXPECT_EQ(n.clid.lstClid[1].ListIndex(), s.selected) << s.station;
      EXPECT_EQ(n.focus.back(), "txtClid");
    }
  });
  Numbering main;
  main.Edit(1, [&](StationModel& st) {
    st.cmdMove[1].Press();
    EXPECT_EQ(st.lblStation.Text(), "1") << "the start of the table";
  });
}

TEST(StationWindowsTest, AMoveSavesWhatWasTypedAndATypedDescriptionForcesTheSave) {
  const std::string sql = NumbersSql({{2, "100"}, {3, "101"}, {11, "911"}});
  const struct {
    std::string what, arch, clid;
    int reply;  // of the conflict window when it comes
    bool asked;
    std::string s10, s2;
  } cases[] = {
      {"a number, Yes", "10", "", conflict_reply::Yes, true, "10|10  |               \n", "    "},
      {"a number, No", "10", "", conflict_reply::No, true, "10||\n", "100 "},
      {"a number, Cancel", "10", "", conflict_reply::Cancel, true, "10||\n", "100 "},
      {"a number and a description, No", "10", "Lab", conflict_reply::No, true, "10|10  |Lab            \n", "    "},
      {"a description only", "", "Lab", 0, false, "10|    |Lab            \n", "100 "},
      {"nothing", "", "", 0, false, "10||\n", "100 "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Numbering n(sql);
    if (c.reply) n.replies = {c.reply};
    n.Edit(10, [&](StationModel& st) {
      if (!c.arch.empty()) TypeInto(st.txtArchnum, c.arch);
      if (!c.clid.empty()) TypeInto(st.txtClid, c.clid);
      st.cmdMove[2].Press();
      EXPECT_EQ(st.lblStation.Text(), "11");
      EXPECT_EQ(st.txtArchnum.Text(), "911");
      EXPECT_TRUE(st.Loaded());
    });
    EXPECT_EQ(n.conflictsShown.size(), c.asked ? 1u : 0u);
    EXPECT_EQ(n.doc.Peek("SELECT clid_station, archnum, clid_string FROM Clid WHERE clid_station = 10"), c.s10);
    EXPECT_EQ(n.Number(2), c.s2);
    EXPECT_EQ(n.Number(3), c.s2 == "    " ? "    " : "101 ");
  }
}

TEST(StationWindowsTest, AConflictRefusedOnOneMoveIsNotBlankedByTheNextSave) {
  Numbering n(NumbersSql({{2, "100"}}));
  n.replies = {conflict_reply::No};
  n.Edit(10, [&](StationModel& st) {
    TypeInto(st.txtArchnum, "10");
    st.cmdMove[2].Press();
    TypeInto(st.txtClid, "Lab");
    st.cmdMove[2].Press();
    EXPECT_EQ(st.lblStation.Text(), "12");
  });
  EXPECT_EQ(n.Number(2), "100 ");
  EXPECT_EQ(n.doc.Peek("SELECT clid_string FROM Clid WHERE clid_station = 11"), "Lab            \n");
}

TEST(StationWindowsTest, StationsSavedByMovingAreChangesOfTheWindowThatOkKeepsAndCancelTakesBack) {
  for (const bool ok : {true, false}) {
    SCOPED_TRACE(ok);
    Numbering n;
    const std::string before = n.Table();
    n.Edit(1, [&](StationModel& st) {
      TypeInto(st.txtArchnum, "300");
      st.cmdMove[2].Press();
      st.cmdCancel.Press();  // forgets only the station on screen
    });
    EXPECT_EQ(n.Number(1), "300 ");
    EXPECT_TRUE(n.clid.UncommittedChanges());
    (ok ? n.clid.cmdOk : n.clid.cmdCancel).Press();
    EXPECT_FALSE(n.clid.Loaded());
    EXPECT_EQ(n.doc->state.DatabaseDirty, ok ? 1 : 0);
    EXPECT_EQ(n.doc->menu.Enabled("mnuFileSave"), ok);
    if (!ok) {
      EXPECT_EQ(n.Table(), before);
    }
  }
}

TEST(StationWindowsTest, DeleteBlanksNumberAndDescriptionAndKeepsTheLine) {
  Numbering n(kSite);
  n.Select(29);
  n.clid.cmdDelete[1].Press();
  EXPECT_TRUE(n.doc.Texts().empty()) << "no question";
  EXPECT_EQ(n.clid.lstClid[1].List(4), "29\t    \t               ");
  EXPECT_EQ(n.clid.lstClid[1].ListCount(), 24);
  EXPECT_EQ(n.clid.lstClid[1].List(5), "30\t130 \tRoom 30        ");
  EXPECT_EQ(n.doc.Peek("SELECT archnum, clid_string FROM Clid WHERE clid_station = 29"), "    |               \n");
  EXPECT_TRUE(n.clid.ClidChanged);
  EXPECT_TRUE(n.doc->menu.Enabled("mnuFileSave"));
}

TEST(StationWindowsTest, AutoNumberingGivesTheRunItsNumbersAndBlanksConflictsOutsideOnce) {
  const struct {
    std::string what, sql;
    int station;
    std::string last;
    std::vector<std::pair<int, std::string>> expected;  // station, number afterwards
    int questions;
  } cases[] = {
      {"into the next board", "UPDATE Config SET System_Config = 1;" + NumbersSql({{20, "500"}, {22, "7"}}), 20,
       "509", {{20, "500 "}, {21, "501 "}, {22, "502 "}, {25, "505 "}, {29, "509 "}, {30, ""}}, 0},
      {"conflicts outside the run", NumbersSql({{1, "100"}, {30, "10"}, {40, "1030"}, {41, "2"}, {42, "104"}}), 1, "104",
       {{2, "101 "}, {5, "104 "}, {30, "    "}, {40, "    "}, {41, "2   "}, {42, "    "}}, 1},
      {"leading zeros go", NumbersSql({{1, "0123"}}), 1, "0126", {{1, "0123"}, {2, "124 "}, {4, "126 "}}, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Numbering n(c.sql);
    n.Auto(c.station, c.last);
    EXPECT_EQ(n.doc.Texts().size(), static_cast<std::size_t>(c.questions));
    if (c.questions) {
      const ShownMessage& q = n.doc.t.prompter.Shown()[0];
      EXPECT_EQ(q.title, "Auto Numbering");
      EXPECT_EQ(q.buttons, Buttons::OkCancel);
    }
    for (const auto& [station, number] : c.expected) EXPECT_EQ(n.Number(station), number) << station;
    for (const auto& [station, number] : c.expected)
      EXPECT_EQ(ParseClidLine(n.clid.lstClid[BoardOf(station)].List(PlaceOnBoard(station))).archnum, Trim(number))
          << "line of " << station;
    EXPECT_EQ(n.clid.lstClid[BoardOf(c.station)].ListIndex(), PlaceOnBoard(c.station));
    EXPECT_EQ(n.focus.back(), "lstClid_" + std::to_string(BoardOf(c.station)));
    EXPECT_TRUE(n.clid.ClidChanged);
  }
}

TEST(StationWindowsTest, CancelAtTheConflictQuestionLeavesTableAndLinesAsTheyWere) {
  Numbering n(kSite + NumbersSql({{60, "12"}}));
  const std::string before = n.Table();
  const Lines lines = n.AllLines();
  n.doc.t.prompter.QueueAnswer(Answer::Cancel);
  n.Auto(10, "130");  // 120 begins with 12
  EXPECT_EQ(n.doc.Texts().size(), 1u);
  EXPECT_EQ(n.Table(), before);
  EXPECT_EQ(n.AllLines(), lines);
  EXPECT_FALSE(n.clid.ClidChanged);
}

TEST(StationWindowsTest, AutoNumberingNeedsANumberToStartFromAndDoesNothingWhenCancelled) {
  Numbering n(NumbersSql({{3, "300"}}));
  const std::string before = n.Table();
  n.Auto(2, "310");
  EXPECT_EQ(n.autoShown, 0);
  EXPECT_EQ(n.doc.Texts(), Lines{"This function requires a defined Architectural Number.\n\nSelect 'Edit Station "
                                 "Entry' to define an Architectural Number for the current station."});
  n.Select(3);
  n.autoScript = [](AutoModel& a) {
    TypeInto(a.txtStopArchnum, "310");
    a.cmdCancel.Press();
  };
  n.clid.cmdAuto[0].Press();
  EXPECT_EQ(n.autoShown, 1);
  EXPECT_EQ(n.Table(), before);
  EXPECT_FALSE(n.clid.ClidChanged);
}

TEST(StationWindowsTest, CancelOfTheNumberingWindowPutsBackEveryRowOfItsOpening) {
  Numbering n(kSite);
  const std::string before = n.Table();
  n.replies = {conflict_reply::Yes};
  n.Edit(50, [](StationModel& st) {
    TypeInto(st.txtArchnum, "10");  // blanks 100 to 109
    TypeInto(st.txtClid, "Hall");
    st.cmdOk.Press();
  });
  n.Auto(50, "19");  // 11 to 19 on stations 51 to 59: 110 to 196 blanked
  n.Select(80);
  n.clid.cmdDelete[3].Press();
  EXPECT_EQ(n.Number(1), "    ");
  EXPECT_EQ(n.Number(70), "    ");
  ASSERT_NE(n.Table(), before);
  n.clid.cmdCancel.Press();
  EXPECT_EQ(n.Table(), before);
  EXPECT_FALSE(n.doc->menu.Enabled("mnuFileSave"));
  EXPECT_EQ(n.doc->state.DatabaseDirty, 0);
}

// The numbering window among the loaded windows, as the desktop program registers it.
struct ClidForm : Form {
  explicit ClidForm(Numbering& n) : n(n) { n.doc->forms.Add(this); }
  ~ClidForm() override { n.doc->forms.Remove(this); }
  std::string Name() const override { return "frmClid"; }
  std::string Caption() const override { return ClidModel::kCaption; }
  std::optional<bool> UncommittedChanges() const override { return n.clid.UncommittedChanges(); }
  void PressOk() override { n.clid.cmdOk.Press(); }
  void PressCancel() override { n.clid.cmdCancel.Press(); }
  void Unload() override {}
  Numbering& n;
};

TEST(StationWindowsTest, ASaveAsksAboutTheOpenWindowAndYesKeepsNoTakesBack) {
  for (const Answer a : {Answer::Yes, Answer::No}) {
    Numbering n(kSite);
    std::vector<std::string> events;
    FakeForm main(n.doc->forms, events, "frmMenu", "main");
    ClidForm form(n);
    const std::string before = n.Table();
    n.Select(7);
    n.clid.cmdDelete[0].Press();
    n.clid.CloseWindow = [&] {
      n.clid.Form_Unload();
      n.doc->forms.Remove(&form);
    };
    n.doc.t.prompter.QueueAnswer(a);
    SaveOpenForms(*n.doc, "Save File");
    EXPECT_EQ(n.doc.Texts(), Lines{"Accept changes to Architectural Number and CLID Programming?"});
    EXPECT_EQ(n.doc->state.SaveCancelled, 0);
    EXPECT_FALSE(n.clid.Loaded());
    EXPECT_EQ(n.doc->state.DatabaseDirty, a == Answer::Yes ? 1 : 0);
    EXPECT_EQ(n.Table() == before, a == Answer::No);
  }
}

}  // namespace
}  // namespace r6183::test
