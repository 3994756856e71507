// The start and the end of the program against a recording main window.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "protocol/BorrowedLine.h"
#include "protocol/ModComm.h"
#include "shell/InstanceLock.h"
#include "shell/ProcessState.h"
#include "shell/StartUp.h"
#include "shell/SwitchBoard.h"
#include "support/TestSupport.h"

namespace r6183 {
namespace {

// Sizes in twips; what the program did to the window, in order.
struct RecordingHost : MainWindowHost {
  int32_t screenH = 11520, screenW = 15360, h = 9000, w = 12000;
  std::vector<std::string> calls;
  int32_t DesignHeight() const override { return 9000; }
  int32_t DesignWidth() const override { return 12000; }
  int32_t ScreenHeight() const override { return screenH; }
  int32_t ScreenWidth() const override { return screenW; }
  int32_t Height() const override { return h; }
  int32_t Width() const override { return w; }
  void Maximise() override { calls.push_back("maximise"); }
  void Resize(int32_t height, int32_t width) override {
    calls.push_back("resize " + std::to_string(height) + "x" + std::to_string(width));
  }
  void CenterScreen() override { calls.push_back("centre"); }
  void SetIcon(const std::string&) override { calls.push_back("icon"); }
  void SetHourglass(bool on) override { calls.push_back(on ? "hourglass" : "pointer"); }
  void ShowSplash() override { calls.push_back("splash"); }
};

class StartUp : public ::testing::Test {
 protected:
  bool Load() { return MDIForm_Load(*t, host, lock); }
  std::vector<std::string> Texts() const {
    std::vector<std::string> out;
    for (const auto& m : t.prompter.Shown()) out.push_back(m.text);
    return out;
  }
  test::TestSession t;
  RecordingHost host;
  InstanceLock lock{t.dir.str()};
};

TEST_F(StartUp, WindowSizeFollowsTheSettingsAndTheScreen) {
  struct Case {
    const char* settings;
    int32_t screenH, screenW;
    const char* sizing;
  };
  const Case cases[] = {
      {"", 11520, 15360, "resize 9000x12000"},                                   // nothing saved: as it is
      {"MDI Height=7000\r\nMDI Width=9000\r\n", 11520, 15360, "resize 7000x9000"},
      {"MDI Height=4000\r\nMDI Width=9000\r\n", 11520, 15360, "resize 9000x9000"},  // under half: not applied
      {"MDI Height=7000\r\nMDI Width=9000\r\n", 7200, 9600, "maximise"},          // 640 by 480
      {"MDI Height=7000\r\nMDI Width=9000\r\n", 7200, 12000, "resize 7000x9000"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.settings);
    test::WriteFile(t.dir.path() / "settings.ini", std::string("[System]\r\n") + c.settings);
    host = {};
    host.screenH = c.screenH;
    host.screenW = c.screenW;
    ASSERT_TRUE(Load());
    ASSERT_GE(host.calls.size(), 2u);
    EXPECT_EQ(host.calls[0], c.sizing);
    EXPECT_EQ(host.calls[1], "centre");
    lock.Release();
  }
}

TEST_F(StartUp, ASecondInstanceShowsTheSplashThenStops) {
  InstanceLock first{t.dir.str()};
  ASSERT_TRUE(first.Acquire());
  EXPECT_FALSE(Load());
  EXPECT_EQ(host.calls, (std::vector<std::string>{"resize 9000x12000", "centre", "icon", "hourglass", "splash",
                                                  "pointer"}));
  EXPECT_EQ(Texts(), std::vector<std::string>{"'Orvane R-6183 Programming Tool' is already running."});
  EXPECT_TRUE(t->menu.Enabled("mnuFileNew")) << "the menu was set up before the refusal";
}

TEST_F(StartUp, ALostJournalComesBackFromABackupOrEndsTheStart) {
  // copies that can't be used are folders of that name
  struct Case {
    bool bakUsable, oldUsable, starts;
  };
  for (const Case c : {Case{false, true, true}, Case{true, false, true}, Case{false, false, false}}) {
    SCOPED_TRACE(std::to_string(c.bakUsable) + std::to_string(c.oldUsable));
    const auto errors = t.dir.path() / "errors";
    for (const char* side : {"errors.bak", "errors.old"}) std::filesystem::remove_all(t.dir.path() / side);
    if (c.bakUsable) std::filesystem::copy_file(errors, t.dir.path() / "errors.bak");
    else std::filesystem::create_directory(t.dir.path() / "errors.bak");
    if (c.oldUsable) std::filesystem::copy_file(errors, t.dir.path() / "errors.old");
    else std::filesystem::create_directory(t.dir.path() / "errors.old");
    std::filesystem::remove(errors);
    t.prompter.Clear();
    t->product = {};
    EXPECT_EQ(Load(), c.starts);
    lock.Release();
    EXPECT_EQ(std::filesystem::is_regular_file(errors), c.starts);
    if (!c.starts) {
      ASSERT_EQ(t.prompter.Shown().size(), 1u);
      EXPECT_EQ(t.prompter.Shown()[0].text, "Errors Database is corrupt");
      EXPECT_EQ(t.prompter.Shown()[0].title, "") << "the product is not known yet";
    }
  }
}

TEST_F(StartUp, ShutdownClosesThePortAndCompactsTheJournalEvenWhenCancelled) {
  auto [tool, unit] = MemoryLine::Pair(t.clock);
  unit->Open({}, Handshake::None);
  ModComm comm(*t, [&](int16_t) { return std::make_unique<BorrowedLine>(*tool); });
  ASSERT_TRUE(Load());
  struct Case {
    bool document, pending, released;
    std::vector<Answer> answers;
    bool cancel;
    std::vector<std::string> texts;
  };
  const std::string save = "Do you want to save changes to Untitled?";
  const Case cases[] = {
      {false, false, true, {}, false, {}},
      {true, false, true, {Answer::Cancel}, true, {save}},
      {false, true, true, {}, false, {"Modem is being Released. "}},
      {false, false, false, {Answer::No}, true, {"Modem Release Unsuccessful. Shut down anyway?"}},
      {false, false, false, {Answer::Yes}, false, {"Modem Release Unsuccessful. Shut down anyway?"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.texts.empty() ? "plain" : c.texts.back());
    t.prompter.Clear();
    std::filesystem::remove(t.dir.path() / "settings.ini");
    std::filesystem::remove(t.dir.path() / "errors.bak");
    if (c.document) {
      t->state.CurrentFileName = "Untitled";
      t->menu.SetEnabled("mnuFileClose", true);
    }
    t->state.ModemReleasePending = c.pending;
    t->menu.SetEnabled("mnuModemRelease", !c.pending);
    for (Answer a : c.answers) t.prompter.QueueAnswer(a);
    ASSERT_TRUE(comm.Init_Comm(0));
    host.h = 7500;
    const bool cancel = MDIForm_QueryUnload(*t, host, comm, {.release = [&] { return c.released; }, .releaseCommand = {}});
    EXPECT_EQ(cancel, c.cancel);
    EXPECT_EQ(Texts(), c.texts);
    EXPECT_FALSE(comm.PortOpen());
    EXPECT_NE(test::ReadFile(t.dir.path() / "settings.ini").find("MDI Height=7500"), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(t.dir.path() / "errors.bak"));
    t->state.CurrentFileName.clear();
    t->menu.SetEnabled("mnuFileClose", false);
  }
}

// The lock goes with its process, however that ends.
TEST(InstanceLock, HeldWhileTheOtherProcessRunsAndFreeWhenItIsKilled) {
  test::TempDir dir;
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t other = ::fork();
  if (other == 0) {
    InstanceLock held(dir.str());
    const char c = held.Acquire() ? '1' : '0';
    [[maybe_unused]] const auto n = ::write(ready[1], &c, 1);
    ::pause();
    ::_exit(0);
  }
  char c = 0;
  ASSERT_EQ(::read(ready[0], &c, 1), 1);
  EXPECT_EQ(c, '1');
  InstanceLock mine(dir.str());
  EXPECT_FALSE(mine.Acquire());
  ::kill(other, SIGKILL);
  ::waitpid(other, nullptr, 0);
  EXPECT_TRUE(mine.Acquire());
  ::close(ready[0]);
  ::close(ready[1]);
}

TEST(SwitchBoardPlace, OnTheScreenAsSavedWithinItsLimitsElseInsideTheMainWindow) {
  const TwipsRect main{1500, 3000, 12000, 9000};
  auto place = [&](TwipsRect saved) {
    ProcessState st;
    st.SwitchBoardTop = saved.top;
    st.SwitchBoardLeft = saved.left;
    st.SwitchBoardWidth = saved.width;
    st.SwitchBoardHeight = saved.height;
    return SwitchBoardPlace(st, 15360, 11520, main);
  };
  EXPECT_EQ(place({0, 0, 0, 0}), (TwipsRect{500, 500, 2670, 2500}));
  EXPECT_EQ(place({1200, 2000, 4000, 3100}), (TwipsRect{1200, 2000, 2670, 3100}));
  // a right or bottom edge beyond the screen: inside the main window, at the fixed width
  for (const TwipsRect off : {TwipsRect{1200, 14000, 2670, 3000}, TwipsRect{10000, 200, 2670, 3000}}) {
    const TwipsRect r = place(off);
    EXPECT_EQ(r.width, 2670);
    EXPECT_GE(r.height, 2500);
    EXPECT_TRUE(r.left >= main.left && r.left + r.width <= main.left + main.width && r.top >= main.top &&
                r.top + r.height <= main.top + main.height)
        << r.left << "," << r.top << " " << r.width << "x" << r.height;
  }
  EXPECT_EQ(SwitchBoardResized({0, 0, 1000, 900}), (TwipsRect{0, 0, 2670, 2500}));
  ProcessState st;
  EXPECT_EQ(SwitchBoardEntries(st).size(), 11u);
  st.ClocksEnabled = 1;
  EXPECT_EQ(SwitchBoardEntries(st)[6], "Clock");
}

}  // namespace
}  // namespace r6183
