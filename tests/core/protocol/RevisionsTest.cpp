#include <gtest/gtest.h>

#include "protocol/Revisions.h"
#include "support/FakeForm.h"
#include "support/LinePeer.h"

namespace r6183 {
namespace {

const std::string kAckS(1, kAck), kNakS(1, kNak);

std::string Frame(const std::string& message) { return message + *ChecksumOf(message) + "\r"; }

class Revisions : public ::testing::Test, public test::LinkedComm {};

TEST_F(Revisions, GoodPreAndUnknownUnits) {
  struct Case {
    const char* name;
    std::vector<std::string> replies;  // to H, then to the tool's answer to J
    std::vector<std::string> lines;
    std::string rxText, txText;
  };
  const std::string tool = "Programming Tool: \tRev 2.00";
  const Case cases[] = {
      {"2.31 with both cards", {kAckS + Frame("J023102311105" "21")},
       {tool, "Main CPU: \tRev 2.31", "Second CPU: \tRev 2.31", "Third CPU: \tRev 11.05",
        "First Option Card: \tType 2", "Second Option Card: \tType CLOCK"},
       " 2.31", "2.31"},
      {"no third CPU, no cards", {kAckS + Frame("J10050200000000")},
       {tool, "Main CPU: \tRev 2.00", "Second CPU: \tRev 10.05"}, "10.05", "10.05"},
      {"older than 2.00: H refused", {kNakS, kNakS, kNakS, kNakS, kNakS},
       {tool, "Main CPU: \tPre 2.00", "Second CPU: \tPre 2.00"}, "0.00", "0.00"},
      {"J that fails its check", {kAckS + "J0231023100001X999\r", "", "", "", ""},
       {tool, "Main CPU: \tPre 2.00", "Second CPU: \tPre 2.00"}, " 2.00", "2.00"},
      // a valid answer of another letter is read at the places of the revisions
      {"a valid U in place of J", {kAckS + Frame("U10")},
       {tool, "Main CPU: \tRev .", "Second CPU: \tRev 10.", "Third CPU: \tRev ."}, "v 10.", "v 10."},
      {"no unit", {"", "", "", "", ""},
       {tool, "Main CPU: \tUnknown", "Second CPU: \tUnknown", "Third CPU: \tUnknown", "** Not Communicating **"},
       "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    peer.replies.assign(c.replies.begin(), c.replies.end());
    t->state.DateTimeActive = 1;
    RevisionLines lines;
    lines.RevLineCard1 = "stale";
    GetRevs(*t, *comm, lines);
    EXPECT_EQ(lines.Shown(), c.lines);
    EXPECT_EQ(UnitRevisionText(*comm, lines, false), c.rxText);
    EXPECT_EQ(UnitRevisionText(*comm, lines, true), c.txText);
    EXPECT_EQ(t->state.DateTimeActive, 0);
    peer.Poll();
  }
}

TEST_F(Revisions, NothingHappensWhileAModemIsDialled) {
  std::vector<std::string> events;
  test::FakeForm main(t->forms, events, "frmMenu", "Title"), dial(t->forms, events, "frmDial", "Dialing Modem");
  RevisionLines lines;
  lines.RevLineMain = "kept";
  t->state.DateTimeActive = 1;
  GetRevs(*t, *comm, lines);
  EXPECT_EQ(lines.RevLineMain, "kept");
  EXPECT_EQ(t->state.DateTimeActive, 1);
  EXPECT_TRUE(toolEnd->Written().empty());
}

}  // namespace
}  // namespace r6183
