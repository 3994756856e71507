// The revision handshake over a real pseudo-terminal against the simulated unit, through
// the tool's own serial line and through r6183ctl.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "protocol/ModComm.h"
#include "protocol/PosixSerialLine.h"
#include "protocol/Revisions.h"
#include "support/SimProcess.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

std::vector<std::string> RevsOn(const std::string& device, RevisionLines& lines, std::string& rv) {
  test::TestSession t;
  SystemClock clock;
  Session session(AppDir(t.dir.path()), t.prompter, clock);
  ModComm comm(session, [&](int16_t) { return std::make_unique<PosixSerialLine>(device); });
  comm.logFile.Open(t.dir.str("log_file.txt"));
  GetRevs(session, comm, lines);
  rv = UnitRevisionText(comm, lines, false);
  comm.Exit_Comm();
  return lines.Shown();
}

TEST(RevisionsOverAPty, TheUnitsRevisionDecidesTheLines) {
  const std::string tool = "Programming Tool: \tRev 2.00";
  struct Case {
    std::vector<std::string> args;
    std::vector<std::string> lines;
    std::string rv;
  };
  const Case cases[] = {
      {{"--revision", "2.31", "--card1", "1", "--clock-card"},
       {tool, "Main CPU: \tRev 2.31", "Second CPU: \tRev 2.31", "First Option Card: \tType 1",
        "Second Option Card: \tType CLOCK"},
       " 2.31"},
      {{"--revision", "1.50"}, {tool, "Main CPU: \tPre 2.00", "Second CPU: \tPre 2.00"}, "0.00"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.args[1]);
    test::SimProcess sim(R6183_SIM_PATH, c.args);
    ASSERT_FALSE(sim.device().empty());
    RevisionLines lines;
    std::string rv;
    EXPECT_EQ(RevsOn(sim.device(), lines, rv), c.lines);
    EXPECT_EQ(rv, c.rv);
    EXPECT_EQ(sim.Stop(), 0);
  }
}

TEST(RevisionsOverAPty, NoUnitIsNotCommunicating) {
  test::SilentPty nobody;
  ASSERT_FALSE(nobody.device().empty());
  RevisionLines lines;
  std::string rv;
  EXPECT_EQ(RevsOn(nobody.device(), lines, rv),
            (std::vector<std::string>{"Programming Tool: \tRev 2.00", "Main CPU: \tUnknown", "Second CPU: \tUnknown",
                                      "Third CPU: \tUnknown", "** Not Communicating **"}));
  EXPECT_EQ(rv, "");
}

TEST(RevisionsOverAPty, CtlRevsOnAMappedPort) {
  test::TempDir dir;
  test::CopyStagedAppDir(dir.path());
  const std::string link = dir.str("unit");
  std::filesystem::create_symlink("/nonexistent", link);  // a stale link from an earlier run
  test::SimProcess sim(R6183_SIM_PATH, {"--revision", "2.05", "--third", "1.10", "--link", link});
  ASSERT_FALSE(sim.device().empty());
  EXPECT_EQ(std::filesystem::read_symlink(link).string(), sim.device());
  test::WriteFile(dir.path() / "settings.ini", "[Ports]\r\nCom 3=" + link + "\r\n");
  const std::string out = dir.str("out");
  const std::string cmd = std::string("'") + R6183CTL_PATH + "' --appdir '" + dir.str() + "' revs --port 3 >'" +
                          out + "' 2>&1";
  const int status = std::system(cmd.c_str());
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(test::ReadFile(out),
            "Programming Tool: \tRev 2.00\nMain CPU: \tRev 2.05\nSecond CPU: \tRev 2.05\nThird CPU: \tRev 1.10\n");
  // the exchange is in the log of the application directory
  EXPECT_NE(test::ReadFile(dir.path() / "log_file.txt").find("Valid :  J0205"), std::string::npos);
  EXPECT_EQ(sim.Stop(), 0);  // SIGTERM ends it cleanly, and its link goes with it
  EXPECT_FALSE(std::filesystem::is_symlink(link));

  // once the unit is gone, the port can't be opened: the command says why, the journal
  // keeps nothing of it (the tool's routine leaves that to its caller)
  const auto journalled = test::JournalRows(dir.str("errors")).size();
  EXPECT_EQ(WEXITSTATUS(std::system(cmd.c_str())), 1);
  const std::string printed = test::ReadFile(out);
  EXPECT_NE(printed.find("** Not Communicating **"), std::string::npos) << printed;
  EXPECT_NE(printed.find("r6183ctl: port 3: "), std::string::npos) << printed;
  EXPECT_EQ(test::JournalRows(dir.str("errors")).size(), journalled);
}

}  // namespace
}  // namespace r6183
