// The configuration, custom page group, audio and class of service windows on the
// offscreen platform, driven by mouse and keys through their control names.
#include <QComboBox>
#include <QPushButton>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QTabWidget>

#include "EditorWindows.h"
#include "Pictures.h"
#include "WhenModal.h"
#include "gui/editors/frmBgm.h"
#include "gui/editors/frmClassService.h"
#include "gui/editors/frmConfig.h"
#include "gui/editors/frmPage.h"

namespace r6183::gui::test {
namespace {

class ConfigWindows : public EditorWindowsTest {
 protected:
  template <class W>
  W* Editor() {
    for (QMdiSubWindow* sub : window->mdiArea()->subWindowList())
      if (auto* w = qobject_cast<W*>(sub); w && w->isVisible()) return w;
    return nullptr;
  }
  template <class W>
  W* Open(const std::string& entry) {
    window->QuickMenu(entry);
    Settle();
    W* w = Editor<W>();
    EXPECT_NE(w, nullptr) << entry;
    if (w) EXPECT_TRUE(WaitFor([w] { return w->isActiveWindow(); }));
    return w;
  }
  std::string Peek(const std::string& query) {
    SQLite::Database db(t->state.WorkDbPath, SQLite::OPEN_READONLY);
    SQLite::Statement st(db, query);
    std::string out;
    while (st.executeStep()) out += st.getColumn(0).getString() + "\n";
    return out;
  }
  std::string Groups(const std::string& table, const std::string& where = "") {
    std::string cols = "PageGroup1";
    for (int g = 2; g <= 16; ++g) cols += " || PageGroup" + std::to_string(g);
    return Peek("SELECT " + cols + " FROM " + table + where);
  }
  std::vector<bool> Enabled(QWidget& w, const QString& base, int from, int count) {
    std::vector<bool> out;
    for (int i = from; i < from + count; ++i) out.push_back(Ctl<QWidget>(w, base + "_" + QString::number(i))->isEnabled());
    return out;
  }
};

TEST_F(ConfigWindows, CustomPageGroupsByKeysAndMouse) {
  Start();
  OpenDocument("UPDATE Config SET System_Config = 1;");
  auto* w = Open<frmPage>("Custom Page Groups");
  ASSERT_NE(w, nullptr);
  EXPECT_EQ(w->windowTitle(), "Custom Page Groups");
  auto* tabs = Ctl<QTabWidget>(*w, "tabPageGroup");
  EXPECT_EQ(tabs->tabText(2), "5&2");
  EXPECT_EQ(Enabled(*w, "chkPageGroup", 32, 16), std::vector<bool>({1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0}));
  // Alt+2 brings dial code 52; its Include button takes its present groups
  QTest::keyClick(w->widget(), Qt::Key_2, Qt::AltModifier);
  EXPECT_EQ(tabs->currentIndex(), 2);
  EXPECT_FALSE(Ctl<QWidget>(*w, "cmdInclude_0")->isEnabled());
  QTest::keyClick(w->widget(), Qt::Key_I, Qt::AltModifier);
  EXPECT_TRUE(window->Action("mnuFileSave")->isEnabled());
  Click(Ctl<QWidget>(*w, "cmdOK"));
  Settle();
  EXPECT_EQ(Editor<frmPage>(), nullptr);
  EXPECT_EQ(Groups("PageGroup"), "0000000000000000\n0000000000000000\n1111111100000000\n0000000000000000\n");
  EXPECT_EQ(t->state.DatabaseDirty, 1);
}

TEST_F(ConfigWindows, AudioConnectionsCancelKeepsTheToneTabs) {
  Start();
  OpenDocument("");
  auto* w = Open<frmBgm>("Audio Connections");
  ASSERT_NE(w, nullptr);
  auto* tabs = Ctl<QTabWidget>(*w, "SSTab1");
  EXPECT_EQ(tabs->tabText(0) + "|" + tabs->tabText(1) + "|" + tabs->tabText(2), "BGM|Time Tone|Emergency");
  EXPECT_EQ(Enabled(*w, "chkCTPageGroup", 3, 2), std::vector<bool>({true, false}));
  Click(Ctl<QWidget>(*w, "cmdInclude"));
  tabs->setCurrentIndex(1);
  Settle();
  Click(Ctl<QWidget>(*w, "chkCTPageGroup_1"));
  tabs->setCurrentIndex(2);
  Settle();
  Click(Ctl<QWidget>(*w, "cmdERemove"));
  EXPECT_TRUE(window->Action("mnuFileSave")->isEnabled());
  Click(Ctl<QWidget>(*w, "cmdCancel"));
  Settle();
  EXPECT_EQ(Editor<frmBgm>(), nullptr);
  EXPECT_EQ(Groups("Bgm"), "0000000000000000\n");
  EXPECT_EQ(Groups("TonesPG"), "1011000000000000\n");
  EXPECT_EQ(Groups("EmergencyPG"), "0000000000000000\n");
  EXPECT_EQ(t->state.DatabaseDirty, 0);
}

TEST_F(ConfigWindows, ClassOfServiceKeepsAChoiceMadeByKeysWhenClosedByItsSystemBox) {
  Start();
  OpenDocument("UPDATE ClassService SET Service = -1 WHERE \"Group\" = 2;");
  auto* w = Open<frmClassService>("Class Of Service");
  ASSERT_NE(w, nullptr);
  EXPECT_FALSE(Ctl<QWidget>(*w, "cmdCancel")->isVisible());
  EXPECT_EQ(Ctl<QPushButton>(*w, "cmdOk")->text(), "Close");
  auto* second = Ctl<QComboBox>(*w, "cboServGroup_1");
  EXPECT_EQ(second->currentText(), "Normal / Emergency");
  EXPECT_EQ(Enabled(*w, "cboServGroup", 3, 2), std::vector<bool>({true, false}));
  auto* first = Ctl<QComboBox>(*w, "cboServGroup_0");
  first->setFocus();
  QTest::keyClick(first, Qt::Key_Down);
  EXPECT_EQ(first->currentText(), "Emergency Only!");
  EXPECT_TRUE(window->Action("mnuFileSave")->isEnabled());
  w->close();
  Settle();
  EXPECT_EQ(Peek("SELECT Service FROM ClassService ORDER BY \"Group\" LIMIT 5"), "2\n1\n1\n1\n1\n");
  EXPECT_EQ(t->state.DatabaseDirty, 0);
}

// The operator shrinks the sample site to its main board while two schedule windows and the
// custom page groups (with edits) are open.
TEST_F(ConfigWindows, ShrinkingTheSampleSiteToTheMainBoard) {
  Start();
  OpenDocument("INSERT INTO Event (Schedule, StartTime, PageGroup5, PageGroup16) VALUES (1, '23:58', 1, 1);",
               StagedAppDir() / "sample.mdb");
  Schedule(1);
  Schedule(2);
  auto* page = Open<frmPage>("Custom Page Groups");
  ASSERT_NE(page, nullptr);
  Click(Ctl<QWidget>(*page, "chkPageGroup_0"));
  const int events = t->state.EventCount;
  ASSERT_EQ(Peek("SELECT count(*) FROM Event WHERE StartTime = '23:58'"), "1\n");

  t.prompter.QueueAnswer(Answer::Yes);  // close the open windows
  t.prompter.QueueAnswer(Answer::Yes);  // accept the page group edits
  t.prompter.QueueAnswer(Answer::Yes);  // remove the boards
  std::string configPicture;
  WhenModal<frmConfig>([&](frmConfig& w) {
    Click(Ctl<QWidget>(w, "optConfig_0"));
    EXPECT_FALSE(Ctl<QWidget>(w, "cbClock")->isVisible());
    configPicture = SavePicture({&w}, "system-configuration-main-board.png");
    QTest::keyClick(&w, Qt::Key_Return);
  });
  window->Click("mnuConfig");
  Settle();
  const auto texts = Texts();
  ASSERT_EQ(texts.size(), 3u);
  EXPECT_EQ(texts[0], ConfigQuestion(true));
  EXPECT_EQ(texts[1], "Accept changes to Custom Page Groups?");
  EXPECT_EQ(texts[2], kShrinkQuestion);
  EXPECT_EQ(t->state.SystemConfig, 0);
  EXPECT_EQ(Peek("SELECT System_Config FROM Config"), "0\n");
  EXPECT_EQ(Peek("SELECT count(*) FROM Event WHERE StartTime = '23:58'"), "0\n");
  EXPECT_EQ(t->state.EventCount, std::stoi(Peek("SELECT count(*) FROM Event")));
  EXPECT_LT(t->state.EventCount, events);
  EXPECT_EQ(Groups("PageGroup", " LIMIT 1").substr(0, 1), "1") << "the accepted edit";
  for (QMdiSubWindow* sub : window->mdiArea()->subWindowList()) EXPECT_FALSE(sub->isVisible());

  auto* bgm = Open<frmBgm>("Audio Connections");
  ASSERT_NE(bgm, nullptr);
  EXPECT_EQ(Enabled(*bgm, "chkPageGroup", 0, 6), std::vector<bool>({1, 1, 1, 1, 0, 0}));
  EXPECT_FALSE(configPicture.empty());
  EXPECT_FALSE(SavePicture({bgm}, "audio-connections-main-board.png").empty());
  bgm->close();
  auto* groups = Open<frmPage>("Custom Page Groups");
  ASSERT_NE(groups, nullptr);
  EXPECT_EQ(Enabled(*groups, "chkPageGroup", 2, 4), std::vector<bool>({1, 1, 0, 0}));
}

}  // namespace
}  // namespace r6183::gui::test
