// r6183ctl run as a process on staged application directories.
#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <sstream>

#include "CtlTest.h"

namespace r6183::test {
namespace {

class CliTest : public CtlTest {
 protected:
  // r6183ctl COMMAND FILE, FILE in the test's directory.
  Result Run(const std::string& command, const std::string& file = "") {
    return Ctl(command + (file.empty() ? "" : " " + Quoted(file)));
  }
  // doc.mdb: a copy of the template changed by `sql`.
  void Document(const std::string& sql) {
    fs::copy_file(dir.path() / "app/DEFAULT", dir.path() / "doc.mdb",
                  fs::copy_options::overwrite_existing);
    SQLite::Database(dir.str("doc.mdb"), SQLite::OPEN_READWRITE).exec(sql);
  }
};

TEST_F(CliTest, CheckReportsValidityAndCountsAndNeverWritesTheFile) {
  const struct {
    std::string sql;  // "text": a text file
    int code;
    std::string out;
  } cases[] = {
      {"", 0, "valid\nEventCount=0\nSystemConfig=0\nClocksEnabled=0\nRev=02.00\n"},
      {"DELETE FROM Clid WHERE clid_station = 5", 1,
       "invalid\nEventCount=0\nSystemConfig=0\nClocksEnabled=0\nRev=02.00\n"},
      {"UPDATE Config SET System_Config = 4", 1,
       "invalid\nEventCount=0\nSystemConfig=4\nClocksEnabled=0\nRev=02.00\n"},
      {"INSERT INTO Event (Schedule) VALUES (1), (3); UPDATE Config SET System_Config = 2;"
       "UPDATE ClockDef SET ClockEnabled = 1; UPDATE Rev SET rev = '02.10'",
       0, "valid\nEventCount=2\nSystemConfig=2\nClocksEnabled=1\nRev=02.10\n"},
      {"text", 1, "invalid\nEventCount=0\nSystemConfig=0\nClocksEnabled=0\nRev=\n"},
  };
  for (const auto& c : cases) {
    if (c.sql == "text") WriteFile(dir.path() / "doc.mdb", "not a database at all");
    else Document(c.sql);
    const std::string before = ReadFile(dir.path() / "doc.mdb");
    const Result r = Run("check", "doc.mdb");
    EXPECT_EQ(r.code, c.code) << c.sql;
    EXPECT_EQ(r.out, c.out) << c.sql;
    EXPECT_EQ(ReadFile(dir.path() / "doc.mdb"), before) << c.sql;
  }
}

TEST_F(CliTest, NewMakesTheDocumentOfTheNewCommand) {
  const Result made = Run("new", "Fresh.mdb");
  ASSERT_EQ(made.code, 0) << made.err;
  EXPECT_EQ(made.out, "created " + dir.str("Fresh.mdb") + "\n");
  EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), {}), 4) << "app, std streams, Fresh.mdb";
  EXPECT_EQ(Run("check", "Fresh.mdb").code, 0);
  const Result dump = Run("dump", "Fresh.mdb");
  std::istringstream lines(dump.out);
  std::vector<std::string> v;
  for (std::string l; std::getline(lines, l);) v.push_back(l);
  ASSERT_EQ(v.size(), 139u) << dump.err;
  const std::pair<std::size_t, std::string> expected[] = {
      {0, "Config|0"}, {1, "ClockDef|0|1|1|0|0"}, {97, "Clid|96||"}, {102, "SchedDays|1|0|0|0|0|0|0|0"},
      // with no expansion board, New leaves only the main board's tone groups on
      {109, "TonesPG|1|1|1|1|0|0|0|0|0|0|0|0|0|0|0|0"},
      {110, "EmergencyPG|1|1|1|1|0|0|0|0|0|0|0|0|0|0|0|0"},
      {112, "ClassService|1|1"}, {128, "Rev|02.00"}};
  for (const auto& [i, line] : expected) EXPECT_EQ(v[i], line) << i;
  EXPECT_EQ(v[129].substr(0, 7), "Clocks|");
}

TEST_F(CliTest, DumpKeepsTextVerbatimAndOrdersEvents) {
  Document("UPDATE Clid SET archnum = '12  ', clid_string = 'Front Desk     ' WHERE clid_station = 1;"
           "INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup2) VALUES (2, '07:00', 5, 3, 1),"
           "(1, '12:30', 10, 1, 0), (1, '06:15', 59, 4, 1)");
  const Result r = Run("dump", "doc.mdb");
  ASSERT_EQ(r.code, 0);
  std::size_t at = r.out.find("\nClid|1|12  |Front Desk     \n");
  EXPECT_NE(at, std::string::npos);
  for (const char* event : {"Event|1|06:15|59|4|0|1|", "Event|1|12:30|10|1|0|0|", "Event|2|07:00|5|3|0|1|"}) {
    const std::size_t next = r.out.find(event);
    EXPECT_TRUE(next != std::string::npos && next > at) << event;
    at = next;
  }
}

TEST_F(CliTest, FailuresGoToStderrAndLeaveNoFileBehind) {
  WriteFile(dir.path() / "existing.mdb", "keep me");
  fs::create_directory(dir.path() / "locked");
  fs::permissions(dir.path() / "locked", fs::perms::owner_read | fs::perms::owner_exec);
  for (const auto& [command, file, code] :
       {std::tuple{"check", "none.mdb", 2}, {"dump", "none.mdb", 2}, {"dump", "existing.mdb", 2},
        {"new", "existing.mdb", 1}, {"", "", 106}}) {
    const Result r = Run(command, file);
    EXPECT_EQ(r.code, code) << command << " " << file;
    EXPECT_TRUE(r.out.empty() && !r.err.empty()) << r.out;
  }
  EXPECT_TRUE(AsUnprivileged(dir.path(), [&] {
    const Result r = Run("new", "locked/x.mdb");
    return r.code == 1 && r.out.empty() && !r.err.empty();
  })) << "new into a read-only directory";
  EXPECT_EQ(ReadFile(dir.path() / "existing.mdb"), "keep me");
  EXPECT_TRUE(fs::is_empty(dir.path() / "locked"));
  EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), {}), 5) << "app, std streams, existing, locked";
}

TEST_F(CliTest, ConvertKeepsTheOriginalBesideTheConvertedFile) {
  const fs::path samples = R6183_JET_SAMPLES;
  if (!fs::is_directory(samples)) GTEST_SKIP() << "no Jet samples at " << samples;
  for (const auto& [sample, format] : {std::pair{"testV1997.mdb", "Jet 3.0"}, std::pair{"test2V2000.mdb", "Jet 4.0"}}) {
    SCOPED_TRACE(sample);
    fs::copy_file(samples / sample, dir.path() / "old.mdb", fs::copy_options::overwrite_existing);
    fs::permissions(dir.path() / "old.mdb", fs::perms::owner_write, fs::perm_options::add);
    fs::remove(dir.path() / "old.OLD");
    EXPECT_EQ(Run("check", "old.mdb").out, std::string("older format (") + format + ")\n");
    EXPECT_EQ(Run("convert", "old.mdb").code, 1) << "without --yes the question is answered No";
    EXPECT_FALSE(fs::exists(dir.path() / "old.OLD"));
    const Result r = Run("convert --yes", "old.mdb");
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_NE(r.out.find("converted"), std::string::npos);
    EXPECT_TRUE(ReadFile(dir.path() / "old.OLD") == ReadFile(samples / sample));
    EXPECT_EQ(Run("check", "old.mdb").code, 0);
  }
}

TEST_F(CliTest, ConvertOfGarbageFailsAndKeepsTheFile) {
  std::string bytes(8192, '\0');
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>((i * 7919u) >> 3);
  WriteFile(dir.path() / "junk.mdb", bytes);
  const Result r = Run("convert --yes", "junk.mdb");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find(" is an invalid database."), std::string::npos);
  EXPECT_TRUE(ReadFile(dir.path() / "junk.mdb") == bytes);
  EXPECT_TRUE(ReadFile(dir.path() / "junk.OLD") == bytes);
  Document("");
  EXPECT_EQ(Run("convert", "doc.mdb").out, dir.str("doc.mdb") + " is a current document: nothing to convert\n");
}

// The checksum counts the bytes of the line: "é" is E9 there, not the two bytes of UTF-8
// (C3 A9, which would give 1B3).
TEST_F(CliTest, FramePrintsTheTextWithTheChecksumOfItsBytesOnTheLine) {
  for (const auto& [text, line] : {std::pair{"A", "A041\n"}, std::pair{"H", "H048\n"}, std::pair{"X0", "X0088\n"},
                                   std::pair{"'Cé'", "Cé12C\n"}, std::pair{"'C€'", "C€0C3\n"}}) {
    const Result r = Run(std::string("frame ") + text);
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, line);
  }
}

TEST_F(CliTest, FrameRefusesTextTheLineCannotCarry) {
  const struct {
    const char* text;
    const char* err;
  } cases[] = {
      {"'CΩ'", "r6183ctl: The R-6183 cannot show \"Ω\". Use only the letters, digits and signs of Western European "
               "languages.\n"},
      {"\"$(printf 'C\\tx')\"", "r6183ctl: The R-6183 cannot show the control character 09. Use only the letters, "
                                 "digits and signs of Western European languages.\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const Result r = Run(std::string("frame ") + c.text);
    EXPECT_EQ(r.code, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, c.err);
  }
}

TEST_F(CliTest, PortsListsSixteenNumbersWithTheDevicesOfTheSettings) {
  WriteFile(dir.path() / "app/settings.ini", "[Ports]\r\nCom 1=/dev/ttyFAKE\r\nCom 16=/dev/ttyLAST\r\n");
  const Result r = Run("ports");
  ASSERT_EQ(r.code, 0) << r.err;
  std::istringstream lines(r.out);
  std::vector<std::string> v;
  for (std::string l; std::getline(lines, l);) v.push_back(l);
  ASSERT_EQ(v.size(), 16u) << r.out;
  EXPECT_EQ(v[0], "1\t/dev/ttyFAKE\t");
  EXPECT_EQ(v[15], "16\t/dev/ttyLAST\t");
  for (std::size_t i = 1; i < 15; ++i) {
    // the rest depends on the machine: a found device or "-"
    const std::string start = std::to_string(i + 1) + "\t";
    EXPECT_EQ(v[i].rfind(start, 0), 0u) << v[i];
    const std::string device = v[i].substr(start.size(), v[i].find('\t', start.size()) - start.size());
    EXPECT_TRUE(device == "-" || (device.rfind("/dev/", 0) == 0 && device != "/dev/ttyFAKE")) << v[i];
  }
}

// Nothing on any port: the not-found text of each scan, exit 1, and the log written anew.
TEST_F(CliTest, FindWithNothingOnAnyPortSaysSo) {
  std::string ini = "[Ports]\r\n";
  for (int n = 1; n <= 16; ++n) ini += "Com " + std::to_string(n) + "=" + dir.str("absent" + std::to_string(n)) + "\r\n";
  WriteFile(dir.path() / "app/settings.ini", ini);
  const struct {
    const char* args;
    const char* out;
  } cases[] = {{"find", "Can't communcate with system on any port\n"}, {"find --modem", "Modem not found.\n"}};
  for (const auto& c : cases) {
    WriteFile(dir.path() / "app/log_file.txt", "an earlier transfer\r\n");
    const Result r = Run(c.args);
    EXPECT_EQ(r.code, 1) << r.err;
    EXPECT_EQ(r.out, c.out);
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(Bytes("app/log_file.txt").rfind("Date - Time - ", 0), 0u);
  }
}

}  // namespace
}  // namespace r6183::test
