// Whole transfers through a call of the simulated modem, in-process on the manual clock:
// dial, Receive, Send, release, with the link state the menu carries.
#include <gtest/gtest.h>

#include "connectivity/Connection.h"
#include "connectivity/modModem.h"
#include "protocol/ReceiveTransfer.h"
#include "protocol/SendTransfer.h"
#include "sim/LinkedUnit.h"

namespace r6183::test {
namespace {

// The tool's end of a line without modem lines, as a pseudo-terminal is: DTR can't be set.
class NoDtrLine final : public SerialLine {
 public:
  explicit NoDtrLine(SerialLine& l) : l_(l) {}
  void Open(const LineSettings& s, Handshake h) override { l_.Open(s, h); }
  void Close() override { l_.Close(); }
  bool IsOpen() const override { return l_.IsOpen(); }
  void Write(std::string_view b) override { l_.Write(b); }
  int InputWaiting() override { return l_.InputWaiting(); }
  std::optional<char> ReadByte() override { return l_.ReadByte(); }
  bool WaitForInput(std::chrono::milliseconds t) override { return l_.WaitForInput(t); }
  void DiscardInput() override { l_.DiscardInput(); }
  void DiscardOutput() override { l_.DiscardOutput(); }
  void SetDTR(bool) override { throw RuntimeError(err::DeviceIoError, "cannot set DTR"); }

 private:
  SerialLine& l_;
};

// A Receive in one call, a Send in another; one release by DTR, the other by the escape.
TEST(ModemCall, TransfersRunThroughACallThenItIsReleased) {
  for (const bool dtr : {true, false}) {
    SCOPED_TRACE(dtr ? "DTR carried" : "no DTR: the escape");
    sim::ModemOptions o;
    o.dialDelay = std::chrono::milliseconds(3000);
    LinkedUnit link({}, o);
    if (!dtr)
      link.comm = std::make_unique<ModComm>(*link.t, [&](int16_t) { return std::make_unique<NoDtrLine>(*link.tool_); });
    modModem modem(*link.t, *link.comm, link.progress);
    SetLinkState(*link.t, false);

    ASSERT_TRUE(DialNumber(modem, "5551234"));
    EXPECT_TRUE(InCall(*link.t));
    EXPECT_EQ(link.modemSim->Number(), "5551234");
    std::string done;
    if (dtr) {
      mnuRx_Click(*link.t, *link.comm, link.progress);
      done = "Receive Data completed successfully.";
      EXPECT_EQ(link.t->state.SystemConfig, 2) << "the unit's programming came through the call";
    } else {
      link.t.prompter.QueueFile(link.document);  // Send asks for a document to open
      mnuSend_Click(*link.t, *link.comm, link.progress);
      done = "Send data completed successfully.";
      EXPECT_EQ(link.unitSim->Received().back(), "A");
    }
    EXPECT_EQ(link.t.prompter.Shown().back().text, done);

    const uint32_t before = link.t.clock.TickCount();
    mnuModemRelease_Click(modem);
    const uint32_t took = link.t.clock.TickCount() - before;
    link.t->pump();  // the modem reads the hang-up sent last
    EXPECT_FALSE(InCall(*link.t));
    EXPECT_EQ(link.modemSim->state(), sim::SimulatedModem::State::Command);
    // with DTR the first pass's "AT" finds the modem back in command state; without, the
    // "AT" goes to the unit and the escape needs its guard time
    if (dtr) EXPECT_LT(took, 4000u);
    else EXPECT_GE(took, 5000u);
    EXPECT_EQ(link.modemSim->Commands().back(), "ATH");
    EXPECT_EQ(link.t.prompter.Shown().back().text, done) << "released without a message";
  }
}

}  // namespace
}  // namespace r6183::test
