// Clock definitions: positions in the catalogue, and the catalogue as the table yields it.
#include <gtest/gtest.h>

#include "core/editors/EditorTestSupport.h"
#include "options/ClockRules.h"

namespace r6183::test {
namespace {

const std::vector<ClockType> kCatalogue{{"Alpha", "No"}, {"Beta", "Yes"}, {"Gamma", "Yes"}};

TEST(ClockPosition, StoredTextAndListLine) {
  struct Case {
    std::string stored;
    int line;
    std::optional<std::string> name;
  } cases[] = {
      {"1", 0, "Alpha"}, {"3", 2, "Gamma"},       {"03", 2, "Gamma"},      {" 2", 1, "Beta"},
      {"4", 3, std::nullopt}, {"0", -1, std::nullopt}, {"", -1, std::nullopt}, {"x", -1, std::nullopt},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ClockListIndex(c.stored), c.line) << '"' << c.stored << '"';
    const auto at = ClockAt(kCatalogue, c.stored);
    EXPECT_EQ(at ? std::optional(at->name) : std::nullopt, c.name) << '"' << c.stored << '"';
  }
  EXPECT_EQ(ClockPositionText(0), "1");
  EXPECT_EQ(ClockPositionText(9), "10");
  EXPECT_EQ(ClockPositionOf(kCatalogue, "Gamma"), "3");
  EXPECT_EQ(ClockPositionOf(kCatalogue, "gamma"), std::nullopt);
}

TEST(ClockCatalogue, KeepsTheStoredOrderAndLooksUpCorrections) {
  EditorSession doc(
      "DELETE FROM Clocks; INSERT INTO Clocks (Cindex, CCorrected) VALUES ('Zulu', 'No'), ('Alpha', 'Yes'), "
      "('Mike', 'Maybe');");
  const auto catalogue = LoadClockCatalogue(doc->state.WorkDbPath);
  ASSERT_EQ(catalogue.size(), 3u);
  EXPECT_EQ(catalogue[0].name, "Zulu");
  EXPECT_EQ(catalogue[1].name, "Alpha");
  EXPECT_EQ(catalogue[2].corrected, "Maybe");
  EXPECT_EQ(LookUpCorrection(doc->state.WorkDbPath, "Alpha"), "Yes");
  EXPECT_EQ(LookUpCorrection(doc->state.WorkDbPath, "Nobody"), std::nullopt);
}

TEST(ClockCatalogue, EmptyTableGivesNoTypes) {
  EditorSession doc("DELETE FROM Clocks;");
  EXPECT_TRUE(LoadClockCatalogue(doc->state.WorkDbPath).empty());
}

}  // namespace
}  // namespace r6183::test
