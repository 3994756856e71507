// The station numbering windows in the main window, on documents on disk, driven by the
// operator's keys and clicks: the numbering window, the station window, the conflict
// window and the auto-numbering window.
#include <sys/wait.h>

#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

#include <sstream>

#include "EditorWindows.h"
#include "Pictures.h"
#include "gui/editors/frmAuto.h"
#include "gui/editors/frmClid.h"
#include "gui/editors/frmConflict.h"
#include "gui/editors/frmStation.h"
#include "gui/shell/frmSwitchBoard.h"

namespace r6183::gui::test {
namespace {

class StationWindows : public EditorWindowsTest {
 protected:
  frmClid* Open() {
    window->Action("mnuArchNum")->trigger();
    Settle();
    frmClid* w = window->clid();
    EXPECT_NE(w, nullptr);
    return w;
  }
  static QWidget& Content(frmClid* w) { return *w->widget(); }
  static QListWidget* List(frmClid* w, int board) {
    return Ctl<QListWidget>(Content(w), QString("lstClid_%1").arg(board));
  }
  static QStringList Lines(QListWidget* list) {
    QStringList out;
    for (int i = 0; list && i < list->count(); ++i) out << list->item(i)->text();
    return out;
  }
  static void DoubleClickLine(QListWidget* list, int row) {
    const QPoint at = list->visualItemRect(list->item(row)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
  }
  template <class W>
  std::shared_ptr<bool> When(std::function<void(W&)> script) {
    return r6183::test::WhenModal<W>(std::move(script));
  }
  // Waits for the script to have run and the modal windows to have closed; the main window is
  // active again afterwards, as the window manager makes it after a dialog.
  bool Finished(const std::shared_ptr<bool>& done) {
    QElapsedTimer waited;
    waited.start();
    while (!*done || QApplication::activeModalWidget()) {
      if (waited.elapsed() > 30000) return false;
      QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    window->activateWindow();
    return QTest::qWaitForWindowActive(window.get());
  }
  // Typing text the key names do not cover (accented letters, other scripts), a key a character.
  static void TypeText(QWidget* w, const QString& text) {
    for (const QChar ch : text) {
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(ch));
      QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(ch));
      QApplication::sendEvent(w, &press);
      QApplication::sendEvent(w, &release);
    }
  }
  // r6183ctl ARGS on an application directory of its own; its standard output.
  std::string RunCtl(const std::string& args) {
    const fs::path app = t.dir.path() / "ctl";
    if (!fs::exists(app)) {
      fs::create_directory(app);
      CopyStagedAppDir(app);
    }
    const std::string out = t.dir.str("ctl.out");
    const std::string cmd =
        std::string("'") + R6183CTL_PATH + "' --appdir '" + app.string() + "' " + args + " >'" + out + "' 2>/dev/null";
    EXPECT_EQ(std::system(cmd.c_str()), 0) << args;
    return ReadFile(out);
  }
  static std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string l; std::getline(in, l);) lines.push_back(l);
    return lines;
  }
};

TEST_F(StationWindows, ShowTheSampleSiteBoardByBoardWithItsCaptionsAndKeys) {
  Start();
  OpenDocument("", StagedAppDir() / "sample.mdb");
  frmClid* w = Open();
  ASSERT_NE(w, nullptr);
  EXPECT_EQ(w->windowTitle().toStdString(), "Architectural Number and CLID Programming");
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), w);
  ASSERT_NE(t->forms.Find("frmClid"), nullptr);
  QWidget& c = Content(w);
  auto* tabs = Ctl<QTabWidget>(c, "tabClid");
  const char* captions[] = {"&Main Board", "Expansion &1", "Expansion &2", "Expansion &3"};
  for (int b = 0; b < 4; ++b) EXPECT_EQ(tabs->tabText(b).toStdString(), captions[b]);
  EXPECT_EQ(Ctl<QLabel>(c, "lblStations_2")->text().toStdString(), "Program Stations 49 - 72 :");
  const std::pair<const char*, const char*> buttons[] = {{"cmdEdit_0", "&Edit Station Entry..."},
                                                         {"cmdDelete_0", "&Delete Station Entry"},
                                                         {"cmdAuto_0", "&Auto Numbering..."},
                                                         {"cmdOk", "OK"},
                                                         {"cmdCancel", "Cancel"}};
  for (const auto& [name, caption] : buttons)
    EXPECT_EQ(Ctl<QAbstractButton>(c, name)->text().toStdString(), caption) << name;
  for (const char* head : {"Arch #", "CLID Description"})
    EXPECT_TRUE(std::ranges::any_of(c.findChildren<QLabel*>(), [&](QLabel* l) { return l->text() == head; })) << head;
  EXPECT_EQ(Lines(List(w, 0)).size(), 24);
  EXPECT_EQ(List(w, 0)->item(0)->text().toStdString(), " 1\t101 \tFront Office   ");
  EXPECT_EQ(List(w, 0)->currentRow(), 0);
  EXPECT_EQ(QApplication::focusWidget(), List(w, 0));
  // three boards in the sample site: the fourth can be visited, and does nothing
  QTest::keyClick(window.get(), Qt::Key_3, Qt::AltModifier);
  EXPECT_EQ(tabs->currentIndex(), 3);
  EXPECT_FALSE(List(w, 3)->isEnabled());
  EXPECT_FALSE(Ctl(c, "lblStations_3")->isEnabled());
  EXPECT_FALSE(Ctl(c, "cmdEdit_3")->isEnabled());
  QTest::keyClick(window.get(), Qt::Key_2, Qt::AltModifier);
  EXPECT_TRUE(Ctl(c, "cmdAuto_2")->isEnabled());
  EXPECT_EQ(List(w, 2)->currentRow(), 0);
  EXPECT_EQ(QApplication::focusWidget(), List(w, 2));
  // the quick menu's entry brings the same window to the front
  window->QuickMenu("ArchNumber / CLID");
  EXPECT_EQ(window->clid(), w);
  EXPECT_EQ(window->mdiArea()->subWindowList().count(w), 1);
}

TEST_F(StationWindows, AnInstallerNumbersTheSampleSiteAndTheSavedFileHoldsExactlyThat) {
  Start();
  OpenDocument("", StagedAppDir() / "sample.mdb");
  const std::vector<std::string> before = LinesOf(RunCtl("dump '" + document + "'"));
  frmClid* w = Open();
  ASSERT_NE(w, nullptr);
  QListWidget* main = List(w, 0);

  // station 1 takes 100: Enter on its line, the number typed, Enter for OK
  const auto done1 = When<frmStation>([](frmStation& st) {
    EXPECT_EQ(st.windowTitle().toStdString(), "Station 1");
    auto* arch = Ctl<QLineEdit>(st, "txtArchnum");
    EXPECT_EQ(QApplication::focusWidget(), arch);
    EXPECT_EQ(arch->text().toStdString(), "101");
    EXPECT_EQ(Ctl<QLineEdit>(st, "txtClid")->text().toStdString(), "Front Office");
    QTest::keyClicks(arch, "100");
    QTest::keyClick(arch, Qt::Key_Return);
  });
  QTest::keyClick(main, Qt::Key_Return);
  ASSERT_TRUE(Finished(done1));
  EXPECT_EQ(main->item(0)->text().toStdString(), " 1\t100 \tFront Office   ");

  // stations 1 to 24 numbered from 100 by auto numbering: Alt+A, the last number, Enter
  const auto done2 = When<frmAuto>([](frmAuto& a) {
    EXPECT_EQ(Ctl<QLabel>(a, "lblStartStation")->text().toStdString(), "1");
    EXPECT_EQ(Ctl<QLabel>(a, "lblStartArchnum")->text().toStdString(), "100");
    auto* stop = Ctl<QLineEdit>(a, "txtStopArchnum");
    EXPECT_EQ(QApplication::focusWidget(), stop);
    EXPECT_EQ(stop->selectedText().toStdString(), "100");
    QTest::keyClicks(stop, "123");
    QTest::keyClick(stop, Qt::Key_Return);
  });
  QTest::keyClick(window.get(), Qt::Key_A, Qt::AltModifier);
  ASSERT_TRUE(Finished(done2));
  EXPECT_TRUE(t.prompter.Shown().empty()) << "no conflict outside the run";
  EXPECT_EQ(main->item(23)->text().toStdString(), "24\t123 \tRoom 124       ");
  EXPECT_EQ(main->currentRow(), 0);

  // station 30 takes 10, and Yes to the conflict with stations 1 to 10
  QTest::keyClick(window.get(), Qt::Key_1, Qt::AltModifier);
  QListWidget* first = List(w, 1);
  QStringList conflicts;
  const auto done3 = When<frmStation>([&](frmStation& st) {
    EXPECT_EQ(st.windowTitle().toStdString(), "Station 30");
    QTest::keyClicks(Ctl<QLineEdit>(st, "txtArchnum"), "10");
    (void)When<frmConflict>([&](frmConflict& c) {
      EXPECT_EQ(c.windowTitle().toStdString(), "Arch Number Conflicts");
      EXPECT_EQ(Ctl<QLabel>(c, "lblStation")->text().toStdString(), "30");
      EXPECT_EQ(Ctl<QLabel>(c, "lblArchnum")->text().toStdString(), "10");
      conflicts = Lines(Ctl<QListWidget>(c, "lstConflict"));
      Click(Ctl(c, "cmdYes"));
    });
    Click(Ctl(st, "cmdOk"));
  });
  DoubleClickLine(first, 5);
  ASSERT_TRUE(Finished(done3));
  EXPECT_EQ(conflicts, (QStringList{" 1\t100 ", " 2\t101 ", " 3\t102 ", " 4\t103 ", " 5\t104 ", " 6\t105 ",
                                    " 7\t106 ", " 8\t107 ", " 9\t108 ", "10\t109 "}));
  EXPECT_EQ(first->item(5)->text().toStdString(), "30\t10  \tRoom 130       ");
  EXPECT_EQ(main->item(9)->text().toStdString(), "10\t    \tRoom 110       ");
  EXPECT_EQ(first->currentRow(), 5);

  // a second change, to station 31, given up with Escape
  const auto done4 = When<frmStation>([](frmStation& st) {
    EXPECT_EQ(st.windowTitle().toStdString(), "Station 31");
    QTest::keyClicks(Ctl<QLineEdit>(st, "txtArchnum"), "55");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClicks(Ctl<QLineEdit>(st, "txtClid"), "Changed");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  });
  QTest::keyClick(first, Qt::Key_Down);
  QTest::keyClick(window.get(), Qt::Key_E, Qt::AltModifier);
  ASSERT_TRUE(Finished(done4));
  EXPECT_EQ(first->item(6)->text().toStdString(), "31\t131 \tRoom 131       ");

  // OK, then the file saved with Ctrl+S
  Click(Ctl(Content(w), "cmdOk"));
  Settle();
  EXPECT_FALSE(w->isVisible());
  EXPECT_EQ(t->forms.Find("frmClid"), nullptr);
  EXPECT_EQ(t->state.DatabaseDirty, 1);
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_FALSE(window->Action("mnuFileSave")->isEnabled());
  EXPECT_TRUE(t.prompter.Shown().empty());

  std::vector<std::string> expected;
  for (const std::string& line : before) {
    int station = 0;
    if (line.starts_with("Clid|")) station = std::stoi(line.substr(5));
    const std::string clid = line.substr(line.find_last_of('|') + 1);
    if (station >= 1 && station <= 10) expected.push_back("Clid|" + std::to_string(station) + "|    |" + clid);
    else if (station >= 11 && station <= 24)
      expected.push_back("Clid|" + std::to_string(station) + "|" + std::to_string(99 + station) + " |" + clid);
    else if (station == 30) expected.push_back("Clid|30|10  |" + clid);
    else expected.push_back(line);
  }
  EXPECT_EQ(LinesOf(RunCtl("dump '" + document + "'")), expected);
  EXPECT_EQ(JournalRows(*t), std::vector<JournalRow>{}) << "no step failed on the way";
}

TEST_F(StationWindows, ASaveAsksAboutTheOpenWindowAndNoPutsTheStationsBack) {
  Start();
  OpenDocument("", StagedAppDir() / "sample.mdb");
  const std::string before = RunCtl("dump '" + document + "'");
  frmClid* w = Open();
  ASSERT_NE(w, nullptr);
  Click(Ctl(Content(w), "cmdDelete_0"));  // station 1, without a question
  EXPECT_EQ(List(w, 0)->item(0)->text().toStdString(), " 1\t    \t               ");
  // Alt+D is the button's here, not the Date/Time menu's
  QTest::keyClick(List(w, 0), Qt::Key_Down);
  QTest::keyClick(List(w, 0), Qt::Key_D, Qt::AltModifier);
  EXPECT_EQ(List(w, 0)->item(1)->text().toStdString(), " 2\t    \t               ");
  EXPECT_TRUE(t.prompter.Shown().empty());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_TRUE(window->Action("mnuFileSave")->isEnabled());
  t.prompter.QueueAnswer(Answer::No);
  window->Click("mnuFileSave");
  EXPECT_EQ(Texts(), std::vector<std::string>{"Accept changes to Architectural Number and CLID Programming?"});
  EXPECT_FALSE(w->isVisible());
  EXPECT_EQ(RunCtl("dump '" + document + "'"), before);
}

TEST_F(StationWindows, TheFieldsTakeWhatTheLineCarriesAndARefusedRunKeepsTheWindowForAnotherTry) {
  Start();
  OpenDocument("", StagedAppDir() / "sample.mdb");
  frmClid* w = Open();
  ASSERT_NE(w, nullptr);
  const auto done5 = When<frmStation>([](frmStation& st) {
    auto* arch = Ctl<QLineEdit>(st, "txtArchnum");
    QTest::keyClicks(arch, "1x2-34567");
    EXPECT_EQ(arch->text().toStdString(), "1234");
    auto* clid = Ctl<QLineEdit>(st, "txtClid");
    clid->setFocus();
    Settle();
    EXPECT_EQ(clid->selectedText().toStdString(), "Principal") << "the focus selects the whole text";
    TypeText(clid, QString::fromUtf8("Café Ω 1234567890"));
    EXPECT_EQ(clid->text().toStdString(), "Café  123456789") << "Ω refused, fifteen characters at most";
    Click(Ctl(st, "cmdCancel"));
  });
  QTest::keyClick(List(w, 0), Qt::Key_Down);
  QTest::keyClick(List(w, 0), Qt::Key_Return);
  ASSERT_TRUE(Finished(done5));
  ASSERT_FALSE(t.prompter.Shown().empty());
  EXPECT_NE(t.prompter.Shown()[0].text.find("\"Ω\""), std::string::npos);
  t.prompter.Clear();

  const auto done6 = When<frmAuto>([](frmAuto& a) {
    auto* stop = Ctl<QLineEdit>(a, "txtStopArchnum");
    QTest::keyClicks(stop, "200");  // station 2 + 98: beyond the 72 stations of the site
    QTest::keyClick(stop, Qt::Key_Return);
    EXPECT_TRUE(a.isVisible());
    EXPECT_EQ(stop->text().toStdString(), "102");
    EXPECT_EQ(stop->selectedText().toStdString(), "102");
    EXPECT_EQ(QApplication::focusWidget(), stop);
    QTest::keyClick(stop, Qt::Key_Escape);
  });
  Click(Ctl(Content(w), "cmdAuto_0"));
  ASSERT_TRUE(Finished(done6));
  EXPECT_EQ(Texts(), std::vector<std::string>{"The auto numbering range exceeds the last valid station."});
  EXPECT_EQ(List(w, 0)->item(2)->text().toStdString(), " 3\t103 \tNurse          ");
  EXPECT_FALSE(w->model().ClidChanged);
}

TEST_F(StationWindows, PictureOfTheMainBoardAndAConflict) {
  Start();
  window->resize(900, 640);
  OpenDocument("", StagedAppDir() / "sample.mdb");
  window->switchBoard()->hide();
  frmClid* w = Open();
  ASSERT_NE(w, nullptr);
  w->move(8, 8);
  Settle();
  std::string path;
  const auto done7 = When<frmStation>([&](frmStation& st) {
    QTest::keyClicks(Ctl<QLineEdit>(st, "txtArchnum"), "10");
    (void)When<frmConflict>([&](frmConflict& c) {
      path = SavePicture({window.get(), &c}, "stations-main-board-and-conflict.png");
      Click(Ctl(c, "cmdNo"));
    });
    Click(Ctl(st, "cmdOk"));
  });
  DoubleClickLine(List(w, 0), 11);  // station 12 takes 10: stations 1 to 10 conflict
  ASSERT_TRUE(Finished(done7));
  ASSERT_FALSE(path.empty());
  EXPECT_GT(fs::file_size(path), 10000u);
  EXPECT_EQ(List(w, 0)->item(11)->text().toStdString(), "12\t112 \tRoom 112       ") << "No saves nothing";
}

}  // namespace
}  // namespace r6183::gui::test
