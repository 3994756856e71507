// r6183ctl export, import, diff and backups on copies of the sample site.
#include "CtlTest.h"

namespace r6183::test {
namespace {

class TextCommands : public CtlTest {
 protected:
  TextCommands() {
    fs::copy_file(StagedAppDir() / "sample.mdb", dir.path() / "site.mdb");
  }
  // r6183ctl ARGS, file names taken in the test's directory.
  Result Run(const std::string& args) { return Ctl(args); }
  // site.yaml with each (from, to) replaced once.
  void EditedText(const std::string& name, const std::vector<std::pair<std::string, std::string>>& edits) {
    std::string text = ReadFile(dir.path() / "site.yaml");
    for (const auto& [from, to] : edits) {
      const auto at = text.find(from);
      ASSERT_NE(at, std::string::npos) << from;
      text.replace(at, from.size(), to);
    }
    WriteFile(dir.path() / name, text);
  }
};

TEST_F(TextCommands, ExportThenImportGivesTheSameDocument) {
  ASSERT_EQ(Run("export site.mdb -o site.yaml").code, 0);
  EXPECT_EQ(Run("export site.mdb").out, ReadFile(dir.path() / "site.yaml"));
  const Result made = Run("import site.yaml back.mdb");
  ASSERT_EQ(made.code, 0) << made.err;
  EXPECT_EQ(Run("dump back.mdb").out, Run("dump site.mdb").out);
  EXPECT_EQ(Run("check back.mdb").code, 0);
  EXPECT_EQ(Run("import site.yaml back.mdb").code, 1) << "an existing file needs --force";
  EXPECT_EQ(Run("diff site.mdb site.yaml").code, 0);
}

TEST_F(TextCommands, AFaultyTextWritesNothingAndTellsEveryFault) {
  ASSERT_EQ(Run("export site.mdb -o site.yaml").code, 0);
  EditedText("bad.yaml", {{"arch: \"105\"", "arch: \"10\""},
                          {"clid: Nurse", "clid: \"Nurse Ωmega\""},
                          {"51: [11, 12]", "51: [11, 13]"},
                          {"{time: \"08:50\", relay: 2, duration: 3", "{time: \"08:00\", relay: 2, duration: 0"},
                          {"a: {type: Synchronous Wired 59 Minute, stored: \"03\"}", "a: Sundial"}});
  const Result r = Run("import bad.yaml out.mdb");
  EXPECT_EQ(r.code, 1);
  EXPECT_FALSE(fs::exists(dir.path() / "out.mdb"));
  for (const char* fault : {"bad.yaml:9:37: station 3, clid: The R-6183 cannot show \"Ω\"",
                            "bad.yaml:11:24: station 5, arch: 10 conflicts with 101 of station 1",
                            "bad.yaml:82:12: page group 13 is not in this system",
                            "bad.yaml:92:16: An event at this 'Start Time' is already scheduled.",
                            "bad.yaml:92:45: 'Tone Duration' must be between 1-59 seconds.",
                            "bad.yaml:163:6: unknown clock type \"Sundial\""})
    EXPECT_NE(r.err.find(fault), std::string::npos) << fault << " in\n" << r.err;
}

TEST_F(TextCommands, DiffTellsTheChangesAndItsExitCodeWhetherThereAreAny) {
  ASSERT_EQ(Run("export site.mdb -o site.yaml").code, 0);
  EditedText("changed.yaml", {{"arch: \"105\"", "arch: \"205\""},
                              {"      - {time: \"08:50\", relay: 2, duration: 3, groups: [2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12]}\n", ""},
                              {"Queue Tone: off", "Queue Tone: on"}});
  const struct {
    std::string args;
    int code;
    std::string out;
  } cases[] = {
      {"diff site.mdb changed.yaml", 1,
       "Station 5: Arch 105 -> 205\nSchedule 1: event 08:50 removed\nOption Queue Tone: off -> on\n"},
      {"diff changed.yaml site.yaml", 1,
       "Station 5: Arch 205 -> 105\nSchedule 1: event 08:50 added: relay 2, 3 sec, page groups 2,3,4,5,6,7,8,9,10,11,12\n"
       "Option Queue Tone: on -> off\n"},
      {"diff site.yaml site.mdb", 0, ""},
      {"diff site.mdb nothing.mdb", 2, ""},
  };
  for (const auto& c : cases) {
    const Result r = Run(c.args);
    EXPECT_EQ(r.code, c.code) << c.args << "\n" << r.err;
    EXPECT_EQ(r.out, c.out) << c.args;
  }
}

TEST_F(TextCommands, BackupsAreListedNewestFirst) {
  fs::create_directory(dir.path() / "app/backups");
  for (const char* name : {"2024-05-01_140322_receive.mdb", "2024-05-02_080000_send.mdb", "2024-05-01_140322_receive_2.mdb",
                           "notes.txt"})
    WriteFile(dir.path() / "app/backups" / name, "");
  const std::string b = dir.str("app/backups/");
  EXPECT_EQ(Run("backups").out, "2024-05-02 08:00:00\tsend\t" + b + "2024-05-02_080000_send.mdb\n" +
                                    "2024-05-01 14:03:22\treceive\t" + b + "2024-05-01_140322_receive_2.mdb\n" +
                                    "2024-05-01 14:03:22\treceive\t" + b + "2024-05-01_140322_receive.mdb\n");
}

}  // namespace
}  // namespace r6183::test
