// r6183ctl's options and clocks commands on a document on disk.
#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "CtlTest.h"

namespace r6183::test {
namespace {

class OptionsCommands : public CtlTest {
 protected:
  OptionsCommands() {
    fs::copy_file(dir.path() / "app/DEFAULT", dir.path() / "doc.mdb");
    SQLite::Database(dir.str("doc.mdb"), SQLite::OPEN_READWRITE)
        .exec("UPDATE DipSwitch SET LowStn22 = 1, RingPattern = 1;"
              "UPDATE ClockDef SET ClockEnabled = 1, ClockA = '03', ClockB = '10', Direction = '1', BCD_Type = '1'");
  }
  // r6183ctl COMMAND doc.mdb ARGS
  Result Run(const std::string& command, const std::string& args = "") { return Ctl(command, "doc.mdb", args); }
  std::string Row(const std::string& sql) {
    SQLite::Database db(dir.str("doc.mdb"), SQLite::OPEN_READONLY);
    SQLite::Statement st(db, sql);
    st.executeStep();
    std::string out;
    for (int i = 0; i < st.getColumnCount(); ++i) out += (i ? "|" : "") + st.getColumn(i).getString();
    return out;
  }
  std::string Doc() const { return Bytes("doc.mdb"); }
};

TEST_F(OptionsCommands, OptionsPrintsTheChart) {
  const Result r = Run("options");
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(r.out,
            "1\t  Low Priority Station 21\tOFF\n2\t  Low Priority Station 22\tON\n"
            "3\t  Low Priority Station 23\tOFF\n4\t  Low Priority Station 24\tOFF\n5\t  3 Digit Dial Plan\t\n"
            "6\t  Queue Tone\tOFF\n7\t  Dial Tone\tOFF\n8\t  Handsfree Alert Tone\tOFF\n9\t  Page Alert Tone\tOFF\n"
            "10\t  Ringback Tone\tOFF\n11\t  Privacy Tone\tOFF\n12\t  Priority Global\tOFF\n"
            "13\t  Override External \tOFF\n14\t  Ring Pattern\tOFF\n15\t\tON\n16\t  Tone Source\tOFF\n");
}

TEST_F(OptionsCommands, SetChangesTheFields) {
  const Result r = Run("options", "--set QueueTone=1,RingPattern=2,PriorityGlobal=1,LowStn22=0");
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(Row("SELECT LowStn22, QueueTone, PriorityGlobal, RingPattern FROM DipSwitch"), "0|1|1|2");
}

TEST_F(OptionsCommands, ClocksPrintsAndSetsByName) {
  const Result shown = Run("clocks");
  EXPECT_EQ(shown.code, 0) << shown.err;
  EXPECT_EQ(shown.out,
            "Clock A\tSynchronous Wired 59 Minute\tCorrected: Yes\nClock B\tFree Running 12 Hour\tCorrected: No\n"
            "Direction\tOutput\nBCD Type\t24  Hour\n");
  const Result set = Run("clocks", "--b 'Second Impulse' --direction input --bcd 2");
  EXPECT_EQ(set.code, 0) << set.err;
  EXPECT_EQ(Row("SELECT ClockA, ClockB, Direction, BCD_Type FROM ClockDef"), "03|6|0|2");
}

TEST_F(OptionsCommands, RefusalsSayWhyAndLeaveTheFileAsItWas) {
  const struct {
    std::string command, args, err;
  } cases[] = {
      {"options", "--set Bogus=1", "unknown option \"Bogus\""},
      {"options", "--set RingPattern=3", "RingPattern wants 0 to 2, got \"3\""},
      {"options", "--set QueueTone=1,DialTone=2", "DialTone wants 0 to 1, got \"2\""},
      {"options", "--set QueueTone", "QueueTone wants 0 to 1, got \"\""},
      {"clocks", "--a 'No Such Clock'", "unknown clock type \"No Such Clock\""},
      {"clocks", "--a 'Second Impulse' --direction sideways", "--direction wants input or output"},
      {"clocks", "--bcd 4", "--bcd wants 0 to 3"},
  };
  const std::string before = Doc();
  for (const auto& c : cases) {
    const Result r = Run(c.command, c.args);
    EXPECT_EQ(r.code, 1) << c.args;
    EXPECT_NE(r.err.find(c.err), std::string::npos) << c.args << ": " << r.err;
    EXPECT_EQ(Doc(), before) << c.args;
  }
}

}  // namespace
}  // namespace r6183::test
