// The station list line, the conflict rule and its searches, and the checks of an
// auto-numbering run, on real work copies.
#include <gtest/gtest.h>

#include <map>

#include "core/editors/StationsFixture.h"
#include "editors/AutoModel.h"
#include "editors/StationList.h"

namespace r6183::test {
namespace {

TEST(StationRulesTest, ALineIsReadBackByPositionWhateverItsFieldsHold) {
  const struct {
    int station;
    std::string archnum, clid;  // as the table holds them
    std::string line;
    StationLine parsed;
  } cases[] = {
      {1, "101 ", "Front Office   ", " 1\t101 \tFront Office   ", {"1", "101", "Front Office"}},
      {96, "", "", "96\t    \t               ", {"96", "", ""}},
      {7, "2", "Gym", " 7\t2   \tGym            ", {"7", "2", "Gym"}},
      // accented letters count as one character each: the description keeps its place
      {12, "1234", "Café Étoile", "12\t1234\tCafé Étoile    ", {"12", "1234", "Café Étoile"}},
      {30, "10", "Exactly fifteen", "30\t10  \tExactly fifteen", {"30", "10", "Exactly fifteen"}},
      // a longer description from an older file is cut to what the line shows
      {5, "5", "A description too long", " 5\t5   \tA description t", {"5", "5", "A description t"}},
  };
  for (const auto& c : cases) {
    const std::string line = ClidLine(c.station, c.archnum, c.clid);
    EXPECT_EQ(line, c.line) << c.station;
    const StationLine p = ParseClidLine(line);
    EXPECT_EQ(p.station, c.parsed.station) << c.station;
    EXPECT_EQ(p.archnum, c.parsed.archnum) << c.station;
    EXPECT_EQ(p.clid, c.parsed.clid) << c.station;
  }
}

TEST(StationRulesTest, NumbersConflictWhenEqualOrOneBeginsTheOther) {
  const struct {
    const char *a, *b;
    bool conflict;
  } cases[] = {{"12", "12", true},   {"12", "123", true},   {"1234", "12", true}, {"12", "112", false},
               {"12", "2", false},   {"", "12", false},     {"", "", false},      {"2", "20", true},
               {"20", "2000", true}, {"200", "201", false}, {"0", "01", true},    {"01", "1", false}};
  for (const auto& c : cases) EXPECT_EQ(NumbersConflict(c.a, c.b), c.conflict) << c.a << " / " << c.b;
}

TEST(StationRulesTest, TheConflictSearchListsWhatBeginsWithTheNumberThenOnePrefixALength) {
  const struct {
    const char* what;
    std::map<int, std::string> numbers;
    std::string station, archnum;
    Lines expected;  // conflict lines: station in two, tab, number as stored
  } cases[] = {
      {"a station keeping its own number", {{5, "200"}}, "5", "200", {}},
      {"another station with the same number", {{5, "200"}, {9, "200"}}, "5", "200", {" 9\t200 "}},
      {"2 against 20 and 2000", {{3, "20"}, {7, "2000"}}, "1", "2", {" 3\t20  ", " 7\t2000"}},
      {"2000 against 2, 20 and 200: shortest prefix first", {{10, "2"}, {4, "20"}, {6, "200"}}, "1", "2000",
       {"10\t2   ", " 4\t20  ", " 6\t200 "}},
      {"two stations with 2 and a new 20: only the first", {{3, "2"}, {8, "2"}}, "1", "20", {" 3\t2   "}},
      {"beginning ones in station order before the prefixes", {{3, "2"}, {8, "2"}, {12, "201"}, {2, "20"}}, "1", "20",
       {" 2\t20  ", "12\t201 ", " 3\t2   "}},
      {"12 is no prefix of 112, and 2 none of 12", {{2, "112"}, {3, "2"}}, "1", "12", {}},
      {"an empty number conflicts with nothing", {{2, "5"}}, "1", "", {}},
  };
  for (const auto& c : cases) {
    Numbering n(NumbersSql(c.numbers));
    EXPECT_EQ(n.clid.Find_Conflicts(c.station, c.archnum), !c.expected.empty()) << c.what;
    Lines got;
    for (const ConflictEntry& e : n.clid.Conflicts) got.push_back(ConflictLine(e));
    EXPECT_EQ(got, c.expected) << c.what;
  }
}

TEST(StationRulesTest, AnAutoRunIsCheckedForItsLastStationThenItsDirectionThenItsPrefixes) {
  const std::string exceeds = "The auto numbering range exceeds the last valid station.";
  const std::string notAbove = "Last Arch Number must be greater than starting arch number.";
  const std::string prefixes = "Cannot perform auto numbering.\r\n\r\nArchitectural conflicts will occur.";
  const struct {
    int config;
    std::string station, start, stop;
    std::string refusal;  // empty: accepted
    std::string stopStation;
  } cases[] = {
      {0, "1", "100", "123", "", "24"},
      {0, "1", "100", "124", exceeds, ""},
      {1, "20", "500", "528", "", "48"},  // into the first expansion board
      {1, "20", "500", "529", exceeds, ""},
      {3, "1", "5", "50", prefixes, ""},
      {3, "1", "5", "49", "", "45"},
      {3, "1", "9", "89", "", "81"},
      {3, "1", "9", "90", prefixes, ""},
      {3, "1", "0123", "0150", "", "28"},  // four digits: no prefix check; numbers go on without the zero
      {0, "3", "100", "100", notAbove, ""},
      {0, "3", "100", "99", notAbove, ""},
      {0, "3", "100", "", notAbove, ""},
      {0, "24", "100", "50", notAbove, ""},  // going down stays on the board: the second check speaks
      {0, "24", "5", "60", exceeds, ""},     // the first check speaks before the third
  };
  for (const auto& c : cases) {
    const std::string what = c.station + ": " + c.start + " to " + c.stop + " on " + std::to_string(c.config);
    Numbering n("UPDATE Config SET System_Config = " + std::to_string(c.config));
    AutoModel a(*n.doc, n.clid);
    std::vector<std::string> focus;
    bool closed = false;
    a.SetFocus = [&](const std::string& name) { focus.push_back(name); };
    a.CloseWindow = [&] { closed = true; };
    a.Start(c.station, c.start);
    EXPECT_EQ(a.txtStopArchnum.Text(), c.start) << what;
    TypeInto(a.txtStopArchnum, c.stop);
    a.cmdOk.Press();
    if (c.refusal.empty()) {
      EXPECT_TRUE(closed) << what;
      EXPECT_EQ(n.clid.StopStation, c.stopStation) << what;
      EXPECT_TRUE(n.doc.Texts().empty()) << what;
      continue;
    }
    EXPECT_FALSE(closed) << what;
    ASSERT_EQ(n.doc.Texts(), Lines{c.refusal}) << what;
    const ShownMessage& m = n.doc.t.prompter.Shown().back();
    EXPECT_EQ(m.title, "Automatic Numbering");
    EXPECT_EQ(m.icon, Icon::Exclamation);
    EXPECT_EQ(a.txtStopArchnum.Text(), c.start) << what << ": the start number again, for another try";
    EXPECT_EQ(focus, Lines{"txtStopArchnum"}) << what;
    a.cmdCancel.Press();
    EXPECT_TRUE(closed);
    EXPECT_EQ(n.clid.StopStation, "") << what;
  }
}

TEST(StationRulesTest, TheLastNumberTakesDigitsOnlyAndNoMoreThanFour) {
  Numbering n;
  AutoModel a(*n.doc, n.clid);
  a.Start("1", "100");
  TypeInto(a.txtStopArchnum, "1a2-3");
  EXPECT_EQ(a.txtStopArchnum.Text(), "123");
  a.txtStopArchnum.SetText("98x7654");  // pasted
  EXPECT_EQ(a.txtStopArchnum.Text(), "9876");
}

}  // namespace
}  // namespace r6183::test
