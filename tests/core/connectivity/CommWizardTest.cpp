// The communications wizard: its page loop driven through the port window's Auto Find,
// and the scan of its last page over sixteen in-memory ports, on the manual clock.
#include <gtest/gtest.h>

#include <deque>

#include "PortsFixture.h"
#include "connectivity/CommWizard.h"
#include "connectivity/Connection.h"

namespace r6183::test {
namespace {

// The operator of the wizard: on each page shown, the next of `presses` ("next", "prev",
// "finish", "cancel", "modem" = choose Connect by Modem and go on). The last page scans
// as its timer would before its button is pressed.
struct WizardOperator : WindowOpener {
  WizardOperator(Session& s, Ports16& ports) : s(s), ports(ports) {}
  void ShowModal(const std::string& name) override {
    shown.push_back(name);
    const std::string press = presses.empty() ? "cancel" : presses.front();
    if (!presses.empty()) presses.pop_front();
    if (name == kCommTypePage) {
      CommTypeModel page(s);
      page.Form_Load();
      if (press == "modem") page.optType.SetValue(1);
      Press(page, press == "modem" ? "next" : press);
    } else if (name == kCommWarningPage) {
      CommWarningModel page(s);
      page.Form_Load();
      warning = page.Label1.Text();
      Press(page, press);
    } else if (name == kCommResultsPage) {
      CommResultsModel page(s, *ports.comm, *ports.hayes);
      page.ProgressBar1.OnChange = [&] { bar.push_back(page.ProgressBar1.Value()); };
      page.Form_Load();
      page.Timer1_Timer();
      result = page.txtComport.Text();
      Press(page, press);
    }
  }
  static void Press(WizardButtons& page, const std::string& press) {
    Control& b = press == "next" ? page.cmdNext : press == "prev" ? page.cmdPrev
                 : press == "finish" ? page.cmdFinish : page.cmdCancel;
    EXPECT_TRUE(b.Enabled()) << press;
    if (b.Enabled()) b.Press();
  }
  Session& s;
  Ports16& ports;
  std::deque<std::string> presses;
  std::vector<std::string> shown;
  std::string warning, result;
  std::vector<int> bar;
};

class CommWizard : public ::testing::Test {
 protected:
  CommWizard() {
    t->product.ProductBrand = "Brand";
    t->product.ProductModel = "R-6183";
  }
  TestSession t;
};

// Auto Find in the port window, through the wizard's pages: what each way through leaves
// in the list, and the setting untouched until OK.
TEST_F(CommWizard, AutoFindPutsOnlyAFoundPortIntoTheList) {
  const std::string T = kCommTypePage, W = kCommWarningPage, R = kCommResultsPage;
  const std::map<int, Peer> unitOn16{{1, Peer::Silent}, {2, Peer::Refused}, {3, Peer::Modem}, {16, Peer::Unit}};
  const std::map<int, Peer> modemOn3{{1, Peer::Silent}, {3, Peer::Modem}, {16, Peer::Unit}};
  struct Case {
    const char* name;
    std::map<int, Peer> peers;
    std::vector<std::string> presses, pages;
    int32_t found;  // WizardFoundPort
    int list;       // the port the list shows afterwards
    const char* result;
  };
  const Case cases[] = {
      {"cancel on page 1", unitOn16, {"cancel"}, {T}, 5, 5, ""},
      {"cancel on page 2", unitOn16, {"next", "cancel"}, {T, W}, 5, 5, ""},
      {"back from 2 to 1, then cancel", unitOn16, {"next", "prev", "cancel"}, {T, W, T}, 5, 5, ""},
      {"the unit on port 16", unitOn16, {"next", "next", "finish"}, {T, W, R}, 16, 16, "R-6183 System found on Com16:"},
      {"nothing found", {{1, Peer::Silent}, {4, Peer::Modem}}, {"next", "next", "finish"}, {T, W, R},
       kNoPortFound, 5, "Can't communcate with system on any port"},
      {"a modem on port 3", modemOn3, {"modem", "next", "finish"}, {T, W, R}, 3, 3, "Modem found on Com3:"},
      {"no modem", {{1, Peer::Silent}, {16, Peer::Unit}}, {"modem", "next", "finish"}, {T, W, R}, kNoPortFound, 5,
       "Modem not found."},
      {"back from the results, then cancel", unitOn16, {"next", "next", "prev", "cancel"}, {T, W, R, W},
       kNoPortFound, 5, "R-6183 System found on Com16:"},
      {"cancel after a scan that found", unitOn16, {"next", "next", "cancel"}, {T, W, R}, kNoPortFound, 5,
       "R-6183 System found on Com16:"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    TestSession fresh;
    Session& s = *fresh;
    s.product.ProductModel = "R-6183";
    Ports16 ports(fresh, c.peers);
    WizardOperator op(s, ports);
    op.presses.assign(c.presses.begin(), c.presses.end());
    s.SetWindowOpener(&op);
    s.state.ComPortNumber = 5;
    ComPortModel window(s, *ports.comm, {});
    window.Form_Load();
    ASSERT_TRUE(window.cmdAuto.Enabled());
    window.cmdAuto.Press();
    EXPECT_EQ(op.shown, c.pages);
    EXPECT_EQ(s.state.WizardFoundPort, c.found);
    EXPECT_EQ(s.state.WizardAborted, c.presses.back() == "finish" ? 0 : 1);
    EXPECT_EQ(op.result, c.result);
    EXPECT_EQ(window.cboPort.ListIndex(), c.list - 1);
    EXPECT_EQ(s.state.ComPortNumber, 5) << "the scan leaves the port as it found it";
    EXPECT_FALSE(ports.comm->PortOpen());
    window.cmdOk.Press();
    EXPECT_EQ(s.state.ComPortNumber, c.list) << "OK takes the choice";
  }
}

TEST_F(CommWizard, TheWarningNamesWhatMustBeConnected) {
  Ports16 ports(t, {});
  for (const bool modem : {false, true}) {
    WizardOperator op(*t, ports);
    op.presses = {modem ? "modem" : "next", "cancel"};
    t->SetWindowOpener(&op);
    RunCommWizard(*t);
    EXPECT_EQ(op.warning, modem ? "Please make sure you have already installed your modem.  If your modem is external, "
                                  "please make sure it is turned on and properly connected to the PC."
                                : "Please make sure the Brand R-6183 system is plugged in and properly connected to the PC.");
  }
}

// The bar rises by 6 a port and reaches 100 only at the end; each port costs what its
// probe's time-outs cost; the log is written anew; a port refused is journalled, an
// absent one is not.
TEST_F(CommWizard, TheScanGoesThroughThePortsInOrder) {
  struct Case {
    const char* name;
    std::map<int, Peer> peers;
    bool modem;
    std::vector<int> opened;  // lines asked for
    uint32_t minMs, maxMs;    // of the manual clock
    const char* refusal;      // the routine that journals the refused port
  };
  const Case cases[] = {
      // two silent ports: five tries of half a second each
      {"unit on 4", {{1, Peer::Silent}, {2, Peer::Refused}, {3, Peer::Silent}, {4, Peer::Unit}}, false,
       {1, 2, 3, 4}, 5000, 5100, "AutoFinDComm"},
      // every modem probe that hears nothing waits its 3 seconds
      {"modem on 16", {{2, Peer::Silent}, {5, Peer::Refused}, {9, Peer::Unit}, {16, Peer::Modem}}, true,
       {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, 6000, 6100, "AutoFindMdem"},
      {"nothing", {{7, Peer::Silent}}, false, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, 2500, 2600,
       nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    TestSession fresh;
    Ports16 ports(fresh, c.peers);
    CommResultsModel page(*fresh, *ports.comm, *ports.hayes);
    std::vector<int> bar;
    std::vector<std::string> percent;
    page.ProgressBar1.OnChange = [&] { bar.push_back(page.ProgressBar1.Value()); };
    page.Label1.OnChange = [&] { percent.push_back(page.Label1.Text()); };
    fresh->state.WizardByModem = c.modem ? 1 : 0;
    fresh->state.ComPortNumber = 9;
    ports.comm->logFile.Open(fresh.dir.str("log_file.txt"));
    ports.comm->logFile.PrintLine("an earlier transfer");
    const uint32_t before = fresh.clock.TickCount();
    page.Timer1_Timer();
    const uint32_t took = fresh.clock.TickCount() - before;
    EXPECT_GE(took, c.minMs);
    EXPECT_LT(took, c.maxMs);
    EXPECT_EQ(ports.opened, c.opened);
    std::vector<int> expected;  // from 0
    for (int n : c.opened) expected.push_back(6 * n);
    expected.push_back(100);
    EXPECT_EQ(bar, expected);
    EXPECT_EQ(percent.front(), "0 %");
    EXPECT_EQ(percent.at(percent.size() - 2), std::to_string(6 * c.opened.back()) + " %");
    EXPECT_EQ(percent.back(), "100 %");
    EXPECT_EQ(fresh->state.ComPortNumber, 9);
    EXPECT_FALSE(ports.comm->PortOpen());
    EXPECT_FALSE(ports.comm->logFile.IsOpen());
    EXPECT_TRUE(page.cmdFinish.Enabled());
    EXPECT_TRUE(page.cmdPrev.Enabled());
    const std::string log = ReadFile(fresh.dir.path() / "log_file.txt");
    EXPECT_EQ(log.rfind("Date - Time - ", 0), 0u) << log;
    std::vector<std::string> journal;
    for (const JournalRow& r : JournalRows(*fresh)) journal.push_back(r.module + "/" + r.routine + ": " + r.description);
    EXPECT_EQ(journal, c.refusal ? std::vector<std::string>{std::string("frmCommResults/") + c.refusal +
                                                            ": the port is in use"}
                                 : std::vector<std::string>{});
  }
}

// A unit that only ever answers impossible dates keeps the probe asking; Cancel ends the
// page at once and the scan at its next question.
TEST_F(CommWizard, CancelDuringTheScanEndsIt) {
  Ports16 ports(t, {{1, Peer::Silent}, {2, Peer::BadClock}, {3, Peer::Unit}});
  CommResultsModel page(*t, *ports.comm, *ports.hayes);
  bool closed = false;
  page.CloseWindow = [&] { closed = true; };
  ports.onPump = [&] {
    if (ports.questions == 3 && !closed) page.cmdCancel.Press();
  };
  t->state.ComPortNumber = 2;
  t->state.WizardFoundPort = 2;
  page.Timer1_Timer();
  EXPECT_TRUE(closed);
  EXPECT_LE(ports.questions, 4);
  EXPECT_EQ(ports.opened, (std::vector<int>{1, 2}));
  EXPECT_EQ(t->state.WizardDone, 1);
  EXPECT_EQ(t->state.WizardFoundPort, kNoPortFound);
  EXPECT_EQ(page.txtComport.Text(), "");
  EXPECT_NE(page.ProgressBar1.Value(), 100);
  EXPECT_EQ(t->state.ComPortNumber, 2);
  EXPECT_FALSE(ports.comm->PortOpen());
}

}  // namespace
}  // namespace r6183::test
