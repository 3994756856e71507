#include <gtest/gtest.h>

#include <deque>

#include "protocol/ModComm.h"
#include "support/LinePeer.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

using test::Peer;
const std::string kAckS(1, kAck), kNakS(1, kNak);

class ModCommTest : public ::testing::Test, public test::LinkedComm {};

TEST_F(ModCommTest, ChecksumIsTheSumModulo4096InThreeUpperCaseDigits) {
  const std::pair<std::string, std::string> cases[] = {
      {"A", "041"}, {"", "000"}, {"AB", "083"}, {"U12", "0B8"}, {std::string(20, '\xff'), "3EC"},
      {std::string(50, 'z'), "7D4"}};
  for (const auto& [text, sum] : cases) EXPECT_EQ(comm->Compute_Checksum(text), sum) << text;
  // a sum beyond 16 bits is trapped: empty, noted, journalled
  EXPECT_EQ(comm->Compute_Checksum(std::string(200, '\xff')), "");
  EXPECT_TRUE(comm->ExceptionsFlag);
  EXPECT_EQ(test::JournalRows(*t).at(0).routine, "Bad CheckSum");
}

TEST_F(ModCommTest, ValidMessageStripsTheChecksumAndChecksLengthAndSum) {
  struct Case {
    std::string frame;
    bool valid;
    std::string left;
    bool logged;
  };
  const Case cases[] = {
      {"A041", true, "A", false},
      {"A04", false, "A04", false},          // too short: nothing stripped
      {"X0089", false, "X0", true},          // wrong checksum
      {"U120b8", false, "U12", true},        // lower-case digit is a mismatch
      {"X00" + comm->Compute_Checksum("X00"), false, "X00", false},  // wrong length for X
      {"B" + comm->Compute_Checksum("B"), false, "B", false},        // a letter never accepted
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.frame);
    comm->msg_str = c.frame;
    comm->ExceptionsFlag = false;
    EXPECT_EQ(comm->Valid_message(), c.valid);
    EXPECT_EQ(comm->msg_str, c.left);
    EXPECT_EQ(comm->ExceptionsFlag, c.logged);
  }
  EXPECT_EQ(LogFile(),
            "ERROR : CHECK SUM DOES NOT MATCH: X0089. The correct check sum is : 088\r\n"
            "ERROR : CHECK SUM DOES NOT MATCH: U120b8. The correct check sum is : 0B8\r\n");
}

TEST_F(ModCommTest, SendMsgRetriesFiveTimesAndTellsNakFromSilence) {
  struct Case {
    std::vector<std::string> answers;
    bool ok, nakLimit, noResponse;
    int tries;
  };
  const Case cases[] = {
      {{kAckS}, true, false, false, 1},
      {{kNakS, kNakS, kAckS}, true, false, false, 3},
      {{kNakS, kNakS, kNakS, kNakS, kNakS}, false, true, false, 5},
      {{"", "", "", "", ""}, false, false, true, 5},
      {{"x", " ", "?", "x", "x"}, false, false, true, 5},
      {{kNakS, kNakS, kNakS, kNakS, ""}, false, false, false, 5},
  };
  for (const auto& c : cases) {
    peer.replies.assign(c.answers.begin(), c.answers.end());
    peer.received.clear();
    toolEnd->ClearWritten();
    std::string msg = "X0";
    const uint32_t start = Tick();
    EXPECT_EQ(comm->Send_Msg(msg), c.ok);
    EXPECT_EQ(comm->NakLimitFlag, c.nakLimit);
    EXPECT_EQ(comm->NoResponseFlag, c.noResponse);
    std::string frames;
    for (int i = 0; i < c.tries; ++i) frames += std::string("X0088\r\0", 7);
    EXPECT_EQ(toolEnd->Written(), frames);
    if (c.noResponse && c.answers[0].empty()) {
      EXPECT_GE(Tick() - start, 2500u);  // five tries of 500 ms each
    }
  }
  std::string lines;  // one line per message, however often it went out
  for (const auto& c : cases) lines += "X0088\r\n", (void)c;
  EXPECT_EQ(DataFile(), lines);
}

TEST_F(ModCommTest, SendMsgKeepsHandshakeLettersOutOfTheDataFileAndNeedsItForTheRest) {
  peer.replies = {kAckS, kAckS};
  std::string h = "H";
  EXPECT_TRUE(comm->Send_Msg(h));
  EXPECT_EQ(h, std::string("H048\r\0", 6));
  EXPECT_EQ(DataFile(), "");
  std::string x = "X1";  // the data file is closed now: printing fails, the send is refused
  EXPECT_FALSE(comm->Send_Msg(x));
  EXPECT_EQ(test::JournalRows(*t).back().routine, "Send_Msg");
}

TEST_F(ModCommTest, ReceiveMsgAnswersEachLineAsItDeserves) {
  const std::string a041 = "A041\r";
  const std::string y = "Y12" + comm->Compute_Checksum("Y12") + "\r";
  // bytes of Windows-1252: each one character, whatever UTF-8 would make of them
  std::string pairs = "E";
  for (int i = 0; i < 25; ++i) pairs += "\xC3\xA9";
  const std::string station = "C07101 Caf\xE9 cr\xE8me     ", c = station + comm->Compute_Checksum(station) + "\r";
  struct Case {
    const char* name;
    std::vector<std::string> lines;  // what the unit sends, one per turn
    bool acceptNewer;
    bool ok;
    std::string answers;  // ACK/NACK bytes the tool sent
    std::string msg;
  };
  const Case cases[] = {
      {"good", {a041}, false, true, kAckS, "A"},
      {"bad, then good", {"A042\r", a041}, false, true, kNakS + kAckS, "A"},
      {"silence", {"", "", "", "", ""}, false, false, std::string(5, kNak), ""},
      {"NUL and trailing garbage-free", {std::string("A0\0" "41\r", 6)}, false, true, kAckS, "A"},
      {"leading blanks shorten from the end", {"  A041\r", a041}, false, true, kNakS + kAckS, "A"},
      {"beyond 50 characters", {std::string(52, 'E') + "\r", a041}, false, true, kNakS + kAckS, "A"},
      {"beyond 50 bytes", {pairs + "\r", a041}, false, true, kNakS + kAckS, "A"},
      {"a byte above 7F", {c}, false, true, kAckS, station},
      {"unknown letter from newer firmware", {y}, true, true, kAckS, "Y12"},
      {"unknown letter, not accepted", {y, y, y, y, y}, false, false, std::string(5, kNak), ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    unitLine->Write(c.lines.front());
    peer.replies.assign(c.lines.begin() + 1, c.lines.end());
    peer.received.clear();
    EXPECT_EQ(comm->Receive_Msg(c.acceptNewer), c.ok);
    peer.Poll();  // the last answer, sent after the last look at the line
    EXPECT_EQ(peer.received, c.answers);
    if (c.ok) {
      EXPECT_EQ(comm->msg_str, c.msg);
    }
  }
  const std::string log = LogFile();
  EXPECT_NE(log.find("1 - NACK:  A042\r\nValid :  A041\r\n"), std::string::npos);
  EXPECT_NE(log.find("1 - NACK:  " + y.substr(0, 6) + "\r\nIgnore Message Due to Rev Conflicts\r\n"), std::string::npos);
  EXPECT_NE(log.find("1 - NACK:    A0\r\n"), std::string::npos);
  // the logs are UTF-8: the unit's bytes as the characters they stand for
  std::string shown = "E";
  for (int i = 0; i < 24; ++i) shown += "Ã©";
  shown += "Ã";
  EXPECT_NE(log.find("1 - NACK:  " + shown + "\r\n"), std::string::npos) << log;
  const std::string sum = c.substr(22, 3);
  EXPECT_NE(log.find("Valid :  C07101 Café crème     " + sum + "\r\n"), std::string::npos) << log;
  // only the data letters reach the data file
  EXPECT_EQ(DataFile(), "A041\r\nA042\r\nA041\r\nA041\r\nA041\r\n" + std::string(50, 'E') + "\r\nA041\r\n" + shown +
                            "\r\nA041\r\nC07101 Café crème     " + sum + "\r\n");
}

TEST_F(ModCommTest, TraceLinesGoToTheJournalOnlyWhenAsked) {
  peer.replies = {kAckS};
  std::string h = "H";
  comm->Send_Msg(h);
  EXPECT_TRUE(test::JournalRows(*t).empty());
  t->state.TraceComm = 1;
  peer.replies = {""};
  std::string q = "Q";
  comm->Send_Msg(q);
  const auto rows = test::JournalRows(*t);
  ASSERT_GE(rows.size(), 2u);
  EXPECT_EQ(rows[0].description.rfind("Send Data Message = Q051\r", 0), 0u);
  EXPECT_EQ(rows[0].routine, "Mygetstring");
  EXPECT_EQ(rows[0].module, "Not An Error");
  EXPECT_EQ(rows[1].description, "Response => EMPTY String");
}

// A port that can't be opened is reported to nobody: the caller says what it wants, and
// can have the reason.
TEST_F(ModCommTest, InitCommOpensOnceAndLeavesABusyPortToTheCaller) {
  EXPECT_TRUE(comm->Init_Comm(0));
  EXPECT_TRUE(comm->Init_Comm(0));
  EXPECT_EQ(toolEnd->OpenCount(), 1);
  EXPECT_EQ(comm->OpenFailure(), "");
  comm->Exit_Comm();
  EXPECT_FALSE(comm->PortOpen());
  const auto journalled = test::JournalRows(*t).size();
  toolEnd->FailOpen(true);
  EXPECT_FALSE(comm->Init_Comm(0));
  EXPECT_EQ(test::JournalRows(*t).size(), journalled);
  EXPECT_NE(comm->OpenFailure(), "");
  toolEnd->FailOpen(false);
  EXPECT_TRUE(comm->Init_Comm(0));
  EXPECT_EQ(comm->OpenFailure(), "");
}

}  // namespace
}  // namespace r6183
