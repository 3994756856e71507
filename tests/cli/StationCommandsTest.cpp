// r6183ctl's station commands on copies of the sample site: the lines of the numbering
// window, one station set through its rules, and auto numbering.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <sstream>

#include "CtlTest.h"

namespace r6183::test {
namespace {

class StationCommands : public CtlTest {
 protected:
  StationCommands() {
    fs::copy_file(StagedAppDir() / "sample.mdb", dir.path() / "site.mdb");
  }
  Result Run(const std::string& args) { return Ctl(args); }
  std::string Site() const { return Quoted("site.mdb"); }
  std::string Bytes() const { return CtlTest::Bytes("site.mdb"); }
  // The Clid rows of the dump.
  std::vector<std::string> ClidRows() { return DumpRows("site.mdb", "Clid|"); }
};

TEST_F(StationCommands, StationsPrintsTheLinesOfTheWindowAndLeavesTheFile) {
  const std::string before = Bytes();
  const Result r = Run("stations " + Site());
  ASSERT_EQ(r.code, 0) << r.err;
  std::istringstream in(r.out);
  std::vector<std::string> lines;
  for (std::string l; std::getline(in, l);) lines.push_back(l);
  ASSERT_EQ(lines.size(), 96u);
  EXPECT_EQ(lines[0], " 1\t101 \tFront Office   ");
  EXPECT_EQ(lines[59], "60\t160 \tRoom 160       ");
  EXPECT_EQ(lines[72], "73\t    \t               ");
  EXPECT_EQ(Bytes(), before);
}

TEST_F(StationCommands, AConflictIsListedAndChangesNothingUnlessTheConflictingNumbersMayGo) {
  const std::string before = Bytes();
  const Result refused = Run("station " + Site() + " 30 --arch 13");
  EXPECT_EQ(refused.code, 1);
  EXPECT_EQ(refused.out,
            "This Arch Number modification conflicts with existing Arch Numbers.\nStn\t#\n30\t13\nConflicts :\n"
            "31\t131 \n32\t132 \n33\t133 \n34\t134 \n35\t135 \n36\t136 \n37\t137 \n38\t138 \n39\t139 \n");
  EXPECT_EQ(Bytes(), before);

  const Result done = Run("station " + Site() + " 30 --arch 13 --clid ' Lab' --blank-conflicts");
  ASSERT_EQ(done.code, 0) << done.err;
  EXPECT_EQ(done.out.substr(0, done.out.find('\n')), "30\t13  \tLab            ");
  const auto rows = ClidRows();
  ASSERT_EQ(rows.size(), 96u);
  EXPECT_EQ(rows[29], "Clid|30|13  |Lab            ");
  EXPECT_EQ(rows[30], "Clid|31|    |Room 131       ") << "the number goes, the description stays";
  EXPECT_EQ(rows[38], "Clid|39|    |Room 139       ");
  EXPECT_EQ(rows[39], "Clid|40|140 |Room 140       ");
  EXPECT_EQ(rows[28], "Clid|29|129 |Room 129       ");
}

TEST_F(StationCommands, WrongStationsNumbersAndDescriptionsAreRefusedBeforeAnythingIsTouched) {
  const std::string before = Bytes();
  const struct {
    std::string args, err;
  } cases[] = {
      {"80 --arch 5", "r6183ctl: station 80 is not in this system: its boards have stations 1 to 72\n"},
      {"0 --arch 5", "r6183ctl: station 0 is not in this system: its boards have stations 1 to 72\n"},
      {"5 --arch 12a", "r6183ctl: --arch: takes up to 4 digits, got \"12a\"\n"},
      {"5 --arch 12345", "r6183ctl: --arch: takes up to 4 digits, got \"12345\"\n"},
      {"5 --clid 'Sixteen chars!!!'", "r6183ctl: --clid: takes up to 15 characters, got 16\n"},
      {"5 --clid 'Ωmega'",
       "r6183ctl: --clid: The R-6183 cannot show \"Ω\". Use only the letters, digits and signs of Western European "
       "languages.\n"},
  };
  for (const auto& c : cases) {
    const Result r = Run("station " + Site() + " " + c.args);
    EXPECT_EQ(r.code, 2) << c.args;
    EXPECT_EQ(r.err, c.err) << c.args;
  }
  EXPECT_EQ(Bytes(), before);
}

TEST_F(StationCommands, AutoNumberRefusesAsTheWindowDoesAndBlanksOnlyWhenAllowed) {
  // station 50 takes 16, which deletes the numbers 160 to 169 of stations 60 to 69
  ASSERT_EQ(Run("station " + Site() + " 50 --arch 16").code, 1);
  ASSERT_EQ(Run("station " + Site() + " 50 --arch 16 --blank-conflicts").code, 0);
  ASSERT_EQ(Run("station " + Site() + " 5 --arch 5").code, 0);
  const std::string numbered = Bytes();
  const struct {
    std::string args;
    std::string message;
  } refusals[] = {
      {"--station 40 --last 173", "Automatic Numbering: The auto numbering range exceeds the last valid station.\n"},
      {"--station 40 --last 140", "Automatic Numbering: Last Arch Number must be greater than starting arch number.\n"},
      {"--station 5 --last 50",
       "Automatic Numbering: Cannot perform auto numbering.\r\n\r\nArchitectural conflicts will occur.\n"},
      {"--station 60 --last 10",
       "Automatic Numbering: This function requires a defined Architectural Number.\n\nSelect 'Edit Station Entry' "
       "to define an Architectural Number for the current station.\n"},
      // 17 to 30 on stations 51 to 64: 17 begins the numbers of stations 70 to 72
      {"--station 50 --last 30",
       "Auto Numbering: Arch number conflicts with stations outside of auto-numbering range have been found.\n\n"
       "Save new Arch Numbers and delete arch numbers from conflicting stations?\n"},
  };
  for (const auto& c : refusals) {
    const Result r = Run("autonumber " + Site() + " " + c.args);
    EXPECT_EQ(r.code, 1) << c.args;
    EXPECT_EQ(r.err, c.message + "r6183ctl: " + dir.str("site.mdb") + " is unchanged\n") << c.args;
    EXPECT_EQ(Bytes(), numbered) << c.args;
  }

  const Result run = Run("autonumber " + Site() + " --station 50 --last 30 --blank-conflicts");
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_TRUE(run.out.starts_with("51\t17  \tRoom 151       \n")) << run.out;
  EXPECT_TRUE(run.out.ends_with("70\t    \tHall 10        \n71\t    \tHall 11        \n72\t    \tHall 12        \n"))
      << run.out;
  const auto rows = ClidRows();
  ASSERT_EQ(rows.size(), 96u);
  EXPECT_EQ(rows[50], "Clid|51|17  |Room 151       ");
  EXPECT_EQ(rows[63], "Clid|64|30  |Hall 4         ");
  EXPECT_EQ(rows[64], "Clid|65|    |Hall 5         ");
  EXPECT_EQ(rows[71], "Clid|72|    |Hall 12        ");
  EXPECT_EQ(rows[48], "Clid|49|149 |Room 149       ");
}

}  // namespace
}  // namespace r6183::test
