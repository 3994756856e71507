#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <set>

#include "database/DocumentCommands.h"
#include "database/ImportData.h"
#include "DbTestSupport.h"
#include "shell/MainMenu.h"
#include "shell/Text.h"

namespace r6183 {
namespace {

namespace fs = std::filesystem;
using test::MakeDb;
using test::Peek;

struct RecordingWindows : WindowOpener {
  std::vector<std::string> shown;
  void ShowModal(const std::string& name) override { shown.push_back("modal " + name); }
  void Show(const std::string& name) override { shown.push_back(name); }
};

class Documents : public ::testing::Test {
 protected:
  Documents() {
    t->product.ProductTitle = "Title";
    t->product.ProductModel = "R-6183";
    t->SetWindowOpener(&windows);
    Initialize(*t);
  }
  std::string Doc(const std::string& name, const std::string& sql = {}) {
    const std::string path = docs.str(name);
    fs::copy_file(test::StagedAppDir() / "DEFAULT", path, fs::copy_options::overwrite_existing);
    if (!sql.empty()) MakeDb(path, sql);
    return path;
  }
  std::vector<std::string> Texts() const {
    std::vector<std::string> v;
    for (const auto& m : t.prompter.Shown()) v.push_back(m.text);
    return v;
  }
  bool Open() { return !t->state.CurrentFileName.empty(); }

  test::TestSession t;
  test::TempDir docs;
  RecordingWindows windows;
};

const std::string kRequired = " is required by the Programming Tool and cannot be selected.";

TEST_F(Documents, OpenRefusesTheProgramsOwnFilesUnderAnyCase) {
  const std::string app = t.dir.str();
  test::WriteFile(docs.path() / "MoDeM", "x");
  for (const std::string& path : {app + "/default", app + "/~Temp", app + "/./DEFAULT",
                                  docs.str("MoDeM"), docs.str("phonelst"), docs.str("DPHONELST"), docs.str("dmodem")}) {
    SCOPED_TRACE(path);
    t.prompter.Clear();
    OpenDatabase(*t, path);
    ASSERT_EQ(t.prompter.Shown().size(), 1u);
    EXPECT_EQ(t.prompter.Shown()[0].text, path + "\n" + kRequired);
    EXPECT_EQ(t.prompter.Shown()[0].title, "Open database");
    EXPECT_FALSE(Open());
  }
}

TEST_F(Documents, OpenWorksOnACopyAndBringsTheMenuAlong) {
  const std::string path = Doc("site.mdb",
                               "UPDATE Config SET System_Config = 1; UPDATE TonesPG SET PageGroup8 = 1, PageGroup9 = 1;"
                               "UPDATE ClockDef SET ClockEnabled = 1; INSERT INTO Event (Schedule) VALUES (2)");
  const std::string before = test::ReadFile(path);
  OpenDatabase(*t, path);
  EXPECT_TRUE(Texts().empty());
  EXPECT_EQ(t->state.CurrentFileName, path);
  EXPECT_EQ(t->menu.WindowCaption(), "Title - " + path);
  EXPECT_EQ(t->state.RecentFiles[1], path);
  EXPECT_EQ(t->menu.Item("mnuFileArray_1").caption, "&1 " + path);
  EXPECT_EQ((std::vector<bool>{t->menu.Enabled("mnuFileClose"), t->menu.Enabled("mnuFileNew"),
                               t->menu.Enabled("mnuClocks"), t->menu.Checked("mnuSwitchBoard")}),
            (std::vector<bool>{true, false, true, true}));
  EXPECT_EQ(t->state.EventCount, 1);
  EXPECT_EQ(windows.shown, std::vector<std::string>{"frmSwitchBoard"});
  // the groups of the absent boards are cleared in the work copy, never in the file
  EXPECT_EQ(Peek(t->state.WorkDbPath, "SELECT PageGroup8 || PageGroup9 FROM TonesPG"), "10");
  EXPECT_TRUE(test::ReadFile(path) == before);
}

TEST_F(Documents, AReadOnlyFileOpensButIsNotSavedOver) {
  const std::string path = Doc("ro.mdb");
  fs::permissions(path, fs::perms::owner_read | fs::perms::group_read);
  OpenDatabase(*t, path);
  ASSERT_EQ(t->state.CurrentFileName, path);
  mnuFileSave_Click(*t);
  EXPECT_EQ(Texts(), std::vector<std::string>{path + " is in Read-Only mode.  Unable to save to a Read-Only File.\n"
                                                     "Try saveing to a different file that is not Read-Only."});
  EXPECT_TRUE(t->state.SaveCancelled);
  EXPECT_TRUE(test::ReadFile(path) == test::ReadFile(test::StagedAppDir() / "DEFAULT"));
}

TEST_F(Documents, ANewerFileWarnsOpensAndIsStampedAtSave) {
  const std::string path = Doc("new.mdb", "UPDATE Rev SET rev = '02.10'");
  OpenDatabase(*t, path);
  EXPECT_EQ(Texts(), std::vector<std::string>{
                         "R-6183 Programming Tool may not support all programmed features.\n"
                         "Upgrade the R-6183 Programming Tool  to prevent receiving\nthis message in the future."});
  EXPECT_EQ(t->state.CurrentFileName, path);
  mnuFileSave_Click(*t);
  EXPECT_EQ(Peek(path, "SELECT rev FROM Rev"), "02.00");
  EXPECT_FALSE(t->menu.Enabled("mnuFileSave"));
}

// Files that are no current document: each ends in its own message, nothing is lost.
TEST_F(Documents, BadFilesEndInTheirMessagesAndLoseNothing) {
  std::mt19937 rng(6183);
  std::string random(8192, '\0');
  for (char& c : random) c = static_cast<char>(rng());
  const std::string jetHeader = std::string("\x00\x01\x00\x00Standard Jet DB\x00\x01", 21) + std::string(4075, '\0');
  const std::string truncated = test::ReadFile(test::StagedAppDir() / "DEFAULT").substr(0, 2048);
  const std::string question = " was generated by an older version of the programming.";
  struct Case {
    const char* name;
    std::string bytes;
    Answer answer;
    std::optional<bool> backup;  // nothing: either way
    std::string lastMessage;
  };
  const Case cases[] = {
      {"empty, conversion declined", "", Answer::No, false, question},
      {"zeros", std::string(4096, '\0'), Answer::Yes, true, "\n is an invalid database."},
      {"random bytes", random, Answer::Yes, true, "\n is an invalid database."},
      {"a Jet header and zeros", jetHeader, Answer::Yes, true, "\n is an invalid database."},
      {"a truncated document", truncated, Answer::Yes, std::nullopt, "\n is an invalid database."},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    t.prompter.Clear();
    const std::string path = docs.str("bad.mdb");
    test::WriteFile(path, c.bytes);
    fs::remove(docs.str("bad.OLD"));
    t.prompter.QueueAnswer(c.answer);
    OpenDatabase(*t, path);
    EXPECT_FALSE(Open());
    ASSERT_FALSE(Texts().empty());
    EXPECT_NE(Texts().back().find(c.lastMessage), std::string::npos) << Texts().back();
    EXPECT_TRUE(test::ReadFile(path) == c.bytes);
    if (c.backup) {
      EXPECT_EQ(fs::exists(docs.str("bad.OLD")), *c.backup);
    }
    if (fs::exists(docs.str("bad.OLD"))) {
      EXPECT_TRUE(test::ReadFile(docs.str("bad.OLD")) == c.bytes);
    }
    EXPECT_FALSE(fs::exists(t->state.WorkDbPath));
  }
}

TEST_F(Documents, OpenOfAMissingReadOnlyOrLockedFile) {
  t->state.RecentFiles[1] = docs.str("gone.mdb");
  OpenDatabase(*t, docs.str("gone.mdb"));
  EXPECT_EQ(Texts().back(), docs.str("gone.mdb") + "\n does not exist.");

  // an older file that is read-only is not converted
  const std::string ro = docs.str("ro.mdb");
  test::WriteFile(ro, std::string(4096, '\0'));
  fs::permissions(ro, fs::perms::owner_read);
  OpenDatabase(*t, ro);
  EXPECT_EQ(Texts().back(), ro + " is in Read-Only mode.  In order to\nopen this file you must turn the Read-Only mode off.");

  // an older file in a folder that can't be written: no backup can be made
  const std::string folder = t.dir.str("locked"), locked = folder + "/old.mdb";
  fs::create_directory(folder);
  test::WriteFile(locked, std::string(4096, '\0'));
  fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
  t.prompter.QueueAnswer(Answer::Yes);
  EXPECT_TRUE(test::AsUnprivileged(t.dir.path(), [&] {
    OpenDatabase(*t, locked);
    return Texts().back() == "Backup File " + folder +
                                 "/old.OLD can not be created.\n\nPlease make sure disk is not write protected.";
  }));
  EXPECT_TRUE(test::ReadFile(locked) == std::string(4096, '\0'));
  EXPECT_FALSE(Open());
}

TEST_F(Documents, ConversionPoursAForeignFileIntoTheTemplate) {
  // a document of another maker of SQLite files: no mark, same tables, some rows
  const std::string path = Doc("foreign.mdb",
                               "PRAGMA application_id = 0; UPDATE Clid SET archnum = '200' WHERE clid_station = 3;"
                               "INSERT INTO Event (Schedule, StartTime, Duration, Tone) VALUES (4, '07:30', 9, 2);"
                               "DELETE FROM PageGroup; CREATE TABLE MSysJunk (a); CREATE TABLE Bgm2 (x)");
  const std::string original = test::ReadFile(path);
  t.prompter.QueueAnswer(Answer::Yes);
  OpenDatabase(*t, path);
  EXPECT_EQ(t->state.CurrentFileName, path);
  EXPECT_TRUE(test::ReadFile(docs.str("foreign.OLD")) == original);
  EXPECT_FALSE(OldAccess(*t, path));
  EXPECT_EQ(Peek(path, "SELECT archnum FROM Clid WHERE clid_station = 3"), "200");
  EXPECT_EQ(Peek(path, "SELECT StartTime || Duration || Tone FROM Event WHERE Schedule = 4"), "07:3092");
  // an empty source table leaves the template's rows
  EXPECT_EQ(Peek(path, "SELECT count(*) FROM PageGroup"), "4");
}

TEST_F(Documents, ImportSkipsSystemTablesAndRefusesOtherLayouts) {
  const std::string src = Doc("src.mdb", "ALTER TABLE Rev ADD COLUMN extra; UPDATE Rev SET rev = '01.00';"
                                         "CREATE TABLE MSysObjects (Id); INSERT INTO MSysObjects VALUES (1)");
  const std::string dst = Doc("dst.mdb");
  EXPECT_TRUE(ImportData(*t, src, dst));
  EXPECT_EQ(Texts(), std::vector<std::string>{"Invalid Database"});
  EXPECT_EQ(Peek(dst, "SELECT rev FROM Rev"), "02.00");
  EXPECT_EQ(Peek(dst, "SELECT count(*) FROM sqlite_master WHERE name = 'MSysObjects'"), "0");
  EXPECT_FALSE(ImportData(*t, docs.str("none.mdb"), dst));
}

TEST_F(Documents, SaveAsTakesCapitalsAndRefusesOtherExtensionsAndProgramFiles) {
  mnuFileNew_Click(*t);
  ASSERT_EQ(t->state.CurrentFileName, "Untitled");
  for (const std::string& name : {docs.str("site.txt"), t->state.WorkDbPath, docs.str("site")})
    t.prompter.QueueFile(name);
  mnuFileSave_Click(*t);  // an untitled document goes to Save As
  const std::string saved = docs.str("SITE.MDB");
  EXPECT_EQ(Texts(), (std::vector<std::string>{docs.str("SITE.TXT") + "\nThe above filename is invalid.",
                                               t->state.WorkDbPath + "\n" + kRequired}));
  EXPECT_EQ(t.prompter.FileChoices().at(0).initialName, "Untitled.mdb");
  EXPECT_EQ(t.prompter.FileChoices().at(0).filter, "Database Files (*.mdb)|*.mdb");
  EXPECT_EQ(t->state.CurrentFileName, saved);
  EXPECT_EQ(t->state.RecentFiles[1], saved);
  EXPECT_EQ(t->menu.WindowCaption(), "Title - " + saved);
  EXPECT_EQ(Peek(saved, "SELECT count(*) FROM Clid"), "96");
}

// The name typed is upper-cased; the question, the read-only check and the write all
// concern that one file, and a file whose name differs only in case counts as it.
TEST_F(Documents, SaveAsAsksAboutTheFileItWritesWhateverTheCaseTyped) {
  struct Case {
    const char* name;
    std::vector<std::string> present;  // files in the folder before, each holding its own name
    bool readOnly;                     // the first of them
    std::string typed;
    std::optional<Answer> answer;      // nothing: no question
    std::string asked;                 // the file the question names
    std::set<std::string> after;       // the folder afterwards
    std::string document;              // the file that holds the document, if any
    std::string refused;               // the file a refusal to write names, if any
  };
  const std::string replace = " already exists.\nDo you want to replace it?";
  const std::string protectedText = " is write protected.\n\nPlease remove the protection or save to another file.";
  const Case cases[] = {
      {"capitals there, declined", {"SITE.MDB"}, false, "site.mdb", Answer::No, "SITE.MDB", {"SITE.MDB"}, "", ""},
      {"capitals there, replaced", {"SITE.MDB"}, false, "site.mdb", Answer::Yes, "SITE.MDB", {"SITE.MDB"}, "SITE.MDB", ""},
      {"small letters there", {"site.mdb"}, false, "Site.Mdb", Answer::Yes, "site.mdb", {"SITE.MDB"}, "SITE.MDB", ""},
      {"both there", {"SITE.MDB", "site.mdb"}, false, "site.mdb", Answer::Yes, "SITE.MDB", {"SITE.MDB", "site.mdb"},
       "SITE.MDB", ""},
      {"read-only", {"SITE.MDB"}, true, "site", Answer::Yes, "SITE.MDB", {"SITE.MDB"}, "", "SITE.MDB"},
      {"nothing there", {"other.mdb"}, false, "site.mdb", std::nullopt, "", {"other.mdb", "SITE.MDB"}, "SITE.MDB", ""},
  };
  mnuFileNew_Click(*t);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    test::TempDir folder;
    for (const auto& f : c.present) test::WriteFile(folder.path() / f, f);
    if (c.readOnly) fs::permissions(folder.path() / c.present[0], fs::perms::owner_read);
    t.prompter.Clear();
    t.prompter.QueueFile(folder.str(c.typed));
    if (c.answer) t.prompter.QueueAnswer(*c.answer);
    if (c.answer == Answer::No) t.prompter.QueueFile(std::nullopt);  // the chooser comes back: cancelled
    mnuFileSaveAs_Click(*t);

    EXPECT_FALSE(t.prompter.FileChoices().at(0).confirmOverwrite) << "the chooser asks about the name as typed";
    std::vector<std::string> expected;
    if (c.answer) expected.push_back(folder.str(c.asked) + replace);
    if (!c.refused.empty()) expected.push_back("File " + folder.str(c.refused) + protectedText);
    EXPECT_EQ(Texts(), expected);
    if (c.answer && !t.prompter.Shown().empty()) {
      const auto& q = t.prompter.Shown()[0];
      EXPECT_TRUE(q.title == "Save As" && q.buttons == Buttons::YesNo && q.icon == Icon::Exclamation);
    }
    std::set<std::string> after;
    for (const auto& e : fs::directory_iterator(folder.path())) after.insert(e.path().filename().string());
    EXPECT_EQ(after, c.after);
    // what was not replaced is as it was
    for (const auto& f : c.after)
      if (f != c.document && std::count(c.present.begin(), c.present.end(), f)) {
        EXPECT_EQ(test::ReadFile(folder.path() / f), f);
      }
    if (!c.document.empty()) {
      EXPECT_EQ(Peek(folder.str(c.document), "SELECT count(*) FROM Clid"), "96");
      EXPECT_EQ(t->state.CurrentFileName, folder.str(c.document));
      EXPECT_FALSE(t->state.SaveCancelled);
    } else {
      EXPECT_TRUE(t->state.SaveCancelled);
    }
  }
}

TEST_F(Documents, CloseAsksForUntitledAlwaysAndForACleanNamedDocumentNever) {
  struct Case {
    const char* name;
    bool untitled, dirty;
    Answer answer;
    bool asked, closed;
  };
  const Case cases[] = {
      {"clean named", false, false, Answer::Yes, false, true},
      {"dirty named, No", false, true, Answer::No, true, true},
      {"dirty named, Cancel", false, true, Answer::Cancel, true, false},
      {"untitled, No", true, false, Answer::No, true, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    t.prompter.Clear();
    if (c.untitled) mnuFileNew_Click(*t);
    else OpenDatabase(*t, Doc("named.mdb"));
    t->state.DatabaseDirty = c.dirty;
    const std::string name = t->state.CurrentFileName;
    if (c.asked) t.prompter.QueueAnswer(c.answer);
    const bool exited = mnuExit_Click(*t);
    EXPECT_EQ(exited, c.closed);
    EXPECT_EQ(!t.prompter.Shown().empty(), c.asked);
    if (c.asked) {
      EXPECT_EQ(Texts().back(), "Do you want to save changes to " + name + "?");
    }
    EXPECT_EQ(Open(), !c.closed);
    EXPECT_EQ(fs::exists(t->state.WorkDbPath), !c.closed);
    if (!c.closed) mnuFileClose_Click(*t);
  }
}

TEST_F(Documents, NewNeedsTheTemplate) {
  mnuFileNew_Click(*t);
  EXPECT_EQ(t->menu.WindowCaption(), "Title - Untitled");
  EXPECT_EQ(windows.shown, (std::vector<std::string>{"modal frmConfig", "frmSwitchBoard"}));
  EXPECT_EQ(Peek(t->state.WorkDbPath, "SELECT PageGroup5 FROM EmergencyPG"), "0");
  // Close takes the store's side files with the work copy, whatever their case
  for (const char* side : {"~TEMP-journal", "~temp-wal", "~Temp.ldb"}) test::WriteFile(t.dir.path() / side, "x");
  t.prompter.QueueAnswer(Answer::No);
  mnuFileClose_Click(*t);
  for (const auto& e : fs::directory_iterator(t.dir.path()))
    EXPECT_NE(ToUpper(e.path().filename().string()).rfind("~TEMP", 0), 0u) << e.path();

  fs::remove(t->state.DefaultDbPath);
  mnuFileNew_Click(*t);
  EXPECT_EQ(Texts().back(), "Error opening Work database.");
  EXPECT_FALSE(Open());
}

}  // namespace
}  // namespace r6183
