// The main window on the offscreen platform, with a scripted prompter and the simulated
// unit linked in-process.
#include <gtest/gtest.h>

#include <QAction>
#include <QGuiApplication>
#include <QMdiArea>
#include <QScreen>
#include <QTest>

#include "gui/editors/frmConfig.h"
#include "gui/protocol/frmMsgWait.h"
#include "gui/shell/frmMenu.h"
#include "gui/shell/frmSwitchBoard.h"
#include "shell/InstanceLock.h"
#include "shell/Settings.h"
#include "shell/SwitchBoard.h"
#include "sim/LinkedUnit.h"
#include "WhenModal.h"

namespace r6183::gui {
namespace {

class MainWindow : public ::testing::Test, public test::LinkedUnit {
 protected:
  // Loads a main window on the test's application directory; false when it refused.
  bool Start() {
    window = std::make_unique<frmMenu>(*t, *comm, lock, 1);
    if (!window->MDIForm_Load()) return false;
    window->show();
    return true;
  }
  // File > New, which shows the configuration window; it is left by Cancel.
  void New() {
    test::WhenModal<frmConfig>([this](frmConfig& w) {
      configShown = w.windowTitle().toStdString();
      w.model().cmdCancel.Press();
    });
    window->Click("mnuFileNew");
  }
  bool Enabled(const char* name) const { return window->Action(name)->isEnabled(); }
  const std::string& LastText() const { return t.prompter.Shown().back().text; }
  std::vector<std::string> Texts() const {
    std::vector<std::string> out;
    for (const auto& m : t.prompter.Shown()) out.push_back(m.text);
    return out;
  }

  InstanceLock lock{t.dir.str()};
  std::unique_ptr<frmMenu> window;
  std::string configShown;
};

TEST_F(MainWindow, MenuFollowsTheDocumentThroughNewAndClose) {
  ASSERT_TRUE(Start());
  EXPECT_EQ(window->windowTitle().toStdString(), "Orvane R-6183 Programming Tool");
  EXPECT_EQ(window->Action("mnuRx")->text().toStdString(), "&Receive data from R-6183");
  EXPECT_FALSE(window->Action("mnuSchedules")->isVisible());
  EXPECT_FALSE(window->Action("mnuDebug")->isVisible());
  // item, with no document, with one
  const std::tuple<const char*, bool, bool> states[] = {
      {"mnuFileNew", true, false},   {"mnuFileOpen", true, false},    {"mnuRx", true, false},
      {"mnuFileClose", false, true}, {"mnuFileSaveAs", false, true},  {"mnuPrint", false, true},
      {"mnuConfig", false, true},    {"mnuStation", false, true},     {"mnuPageGroup", false, true},
      {"mnuSysOpt", false, true},    {"mnuBGM", false, true},         {"mnuSwitchBoard", false, true},
      {"mnuFileSave", false, false}, {"mnuModemRelease", false, false}};
  for (const auto& [name, without, with] : states) EXPECT_EQ(Enabled(name), without) << name;
  New();
  EXPECT_EQ(configShown, "System Configuration");
  for (const auto& [name, without, with] : states) EXPECT_EQ(Enabled(name), with) << name << " after New";
  EXPECT_TRUE(window->switchBoard()->isVisible());
  EXPECT_TRUE(window->Action("mnuSwitchBoard")->isChecked());
  t.prompter.QueueAnswer(Answer::No);  // an untitled document: not saved
  window->Click("mnuFileClose");
  EXPECT_EQ(LastText(), "Do you want to save changes to Untitled?");
  for (const auto& [name, without, with] : states) EXPECT_EQ(Enabled(name), without) << name << " after Close";
  EXPECT_FALSE(window->switchBoard()->isVisible());
  EXPECT_EQ(window->windowTitle().toStdString(), "Orvane R-6183 Programming Tool");
}

TEST_F(MainWindow, ASecondInstanceIsRefusedAfterTheSplash) {
  InstanceLock first{t.dir.str()};
  ASSERT_TRUE(first.Acquire());
  EXPECT_FALSE(Start());
  EXPECT_EQ(window->splashesShown(), 1);
  EXPECT_EQ(LastText(), "'Orvane R-6183 Programming Tool' is already running.");
  first.Release();  // once the first has gone, the next one starts
  EXPECT_TRUE(Start());
}

TEST_F(MainWindow, AMissingTemplateStopsTheStartWithItsName) {
  std::filesystem::remove(t.dir.path() / "DEFAULT");
  EXPECT_FALSE(Start());
  EXPECT_EQ(Texts(), std::vector<std::string>{"File 'DEFAULT' was not found in the application directory. Make "
                                              "sure the application was properly installed."});
}

TEST_F(MainWindow, ACancelledShutdownKeepsTheDocumentButClosesThePort) {
  ASSERT_TRUE(Start());
  New();
  t->state.DatabaseDirty = 1;
  t.prompter.QueueAnswer(Answer::Cancel);
  window->Click("mnuFileClose");
  EXPECT_EQ(t->state.CurrentFileName, "Untitled");
  EXPECT_TRUE(Enabled("mnuFileClose"));
  EXPECT_TRUE(window->switchBoard()->isVisible());

  ASSERT_TRUE(comm->Init_Comm(0));
  t.prompter.QueueAnswer(Answer::Cancel);
  EXPECT_FALSE(window->close());
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(t->state.CurrentFileName, "Untitled");
  EXPECT_TRUE(std::filesystem::exists(t.dir.path() / "settings.ini"));
  EXPECT_FALSE(comm->PortOpen());
  EXPECT_TRUE(std::filesystem::exists(t.dir.path() / "errors.bak")) << "the journal was compacted";
}

TEST_F(MainWindow, ReceiveThenSendEndInTheirSuccessTexts) {
  ASSERT_TRUE(Start());
  window->Click("mnuRx");
  EXPECT_EQ(LastText(), "Receive Data completed successfully.");
  EXPECT_EQ(t->state.CurrentFileName, "Untitled");
  EXPECT_EQ(window->windowTitle().toStdString(), "Untitled - Orvane R-6183 Programming Tool");
  EXPECT_FALSE(window->progress().isVisible());
  EXPECT_EQ(t->forms.Find("frmMsgWait"), nullptr);
  for (const char* root : {"mnuFile", "mnuDate", "mnuHelp"}) EXPECT_TRUE(Enabled(root)) << root;
  EXPECT_TRUE(window->mdiArea()->isEnabled());

  memory.Load(test::StagedAppDir() / "DEFAULT");  // the unit forgets, the tool sends it back
  window->Click("mnuSend");
  EXPECT_EQ(LastText(), "Send data completed successfully.");
  EXPECT_FALSE(window->progress().isVisible());
  EXPECT_TRUE(Enabled("mnuFile"));
  const std::string unit = test::Dump(memory.Path().string());
  for (const char* fact : {"Config|2\n", "Clid|30|1234|Reception Desk \n", "Event|2|08:15|20|3|"})
    EXPECT_NE(unit.find(fact), std::string::npos) << fact;
}

// Accented descriptions come from the unit as the document's UTF-8; a description with a
// character the unit cannot show stops the Send with its message before the line is used.
TEST_F(MainWindow, AccentedStationsComeInAndOneTheUnitCannotShowStopsTheSend) {
  SQLite::Database(document, SQLite::OPEN_READWRITE)
      .exec("UPDATE Clid SET clid_string = 'Réception Désk' WHERE clid_station = 30");
  memory.Load(document);
  ASSERT_TRUE(Start());
  window->Click("mnuRx");
  ASSERT_EQ(LastText(), "Receive Data completed successfully.");
  EXPECT_NE(test::Dump(t->state.WorkDbPath).find("Clid|30|1234|Réception Désk \n"), std::string::npos);

  SQLite::Database(t->state.WorkDbPath, SQLite::OPEN_READWRITE)
      .exec("UPDATE Clid SET clid_string = 'Ωmega' WHERE clid_station = 31");
  const int frames = unitSim->Count().framesReceived;
  window->Click("mnuSend");
  EXPECT_EQ(LastText(), "Station 31 cannot be sent to the R-6183: its description \"Ωmega\" holds \"Ω\", which the "
                        "R-6183 cannot show.\n\nChange the description and send again. Nothing has been sent.");
  EXPECT_EQ(unitSim->Count().framesReceived, frames);
  EXPECT_FALSE(window->progress().isVisible());
  EXPECT_TRUE(Enabled("mnuFile"));
}

TEST_F(MainWindow, ReceiveFromASilentUnitFails) {
  unitSim->Options().faults.silentAfter = 1;
  ASSERT_TRUE(Start());
  window->Click("mnuRx");
  EXPECT_EQ(LastText(), "Error receiving data");
  EXPECT_TRUE(t->state.CurrentFileName.empty());
  EXPECT_EQ(test::Dump(t->state.WorkDbPath), test::Dump((test::StagedAppDir() / "DEFAULT").string()))
      << "the work copy is the template, nothing of a half transfer";
  EXPECT_FALSE(window->progress().isVisible());
  EXPECT_TRUE(Enabled("mnuFileNew"));
}

TEST_F(MainWindow, TheQuickMenuGoesInsideTheMainWindowWhenItsPlaceIsOffTheScreen) {
  test::WriteFile(t.dir.path() / "settings.ini",
                  "[System]\r\nSwitchBorad Top=600\r\nSwitchBorad Left=30000\r\nSwitchBorad Width=2670\r\n"
                  "SwitchBorad Heigth=3000\r\n");
  ASSERT_TRUE(Start());
  New();
  const QRect quick = window->switchBoard()->geometry(), main = window->frameGeometry();
  EXPECT_TRUE(main.contains(quick)) << quick.x() << "," << quick.y() << " " << quick.width() << "x" << quick.height()
                                    << " in " << main.x() << "," << main.y() << " " << main.width() << "x" << main.height();
  // closing it keeps its place for the next time
  window->Click("mnuSwitchBoard");
  EXPECT_FALSE(window->switchBoard()->isVisible());
  EXPECT_NE(test::ReadFile(t.dir.path() / "settings.ini").find("SwitchBorad Left=" + std::to_string(quick.x() * 15)),
            std::string::npos);
}

// The place is kept in twips; a pixel holds 15 of them, and a place that is no multiple
// of 15 must not creep at each load and save. A side the operator moves takes its pixels.
TEST_F(MainWindow, TheQuickMenuKeepsItsPlaceToTheTwipAcrossLoadsAndSaves) {
  const struct {
    TwipsRect saved;  // top, left, width, height
    QPoint moveBy;    // pixels, after the first load
    TwipsRect kept;
  } cases[] = {
      {{500, 500, 2670, 2500}, {}, {500, 500, 2670, 2500}},
      {{1007, 2003, 2670, 3001}, {}, {1007, 2003, 2670, 3001}},
      {{1007, 2003, 2670, 3001}, {10, 0}, {1007, (2003 / 15 + 10) * 15, 2670, 3001}},
  };
  ASSERT_TRUE(Start());
  New();
  ProcessState& st = t->state;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.saved.top);
    st.SwitchBoardTop = c.saved.top;
    st.SwitchBoardLeft = c.saved.left;
    st.SwitchBoardWidth = c.saved.width;
    st.SwitchBoardHeight = c.saved.height;
    PutSwitchBoardVal(*t);
    for (int round = 0; round < 3; ++round) {
      if (!window->switchBoard()->isVisible()) window->Click("mnuSwitchBoard");  // loads from the settings
      ASSERT_TRUE(window->switchBoard()->isVisible());
      if (round == 0) window->switchBoard()->move(window->switchBoard()->pos() + c.moveBy);
      window->Click("mnuSwitchBoard");  // unloads and saves
      st.SwitchBoardTop = st.SwitchBoardLeft = st.SwitchBoardWidth = st.SwitchBoardHeight = 0;
      getSwitchBoardValues(*t);
      EXPECT_EQ((TwipsRect{st.SwitchBoardTop, st.SwitchBoardLeft, st.SwitchBoardWidth, st.SwitchBoardHeight}), c.kept)
          << "round " << round << ": " << st.SwitchBoardTop << " " << st.SwitchBoardLeft << " " << st.SwitchBoardWidth
          << " " << st.SwitchBoardHeight;
    }
  }
}

}  // namespace
}  // namespace r6183::gui
