#include <gtest/gtest.h>

#include "shell/Timer.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

TEST(SleepTest, ZeroReturnsAtTheFirstLook) {
  TestSession ts;
  const uint32_t before = ts.clock.TickCount();
  Sleep(*ts, 0);
  Sleep(*ts, -4);
  EXPECT_EQ(ts.clock.TickCount(), before);
  EXPECT_EQ(ts.pumps, 0);
}

TEST(SleepTest, WaitsByTheClockAndLetsEventsRun) {
  TestSession ts;
  ts.clock.SetTick(0xFFFFF000u);  // the wait spans a wrap of the tick
  const uint32_t before = ts.clock.TickCount();
  Sleep(*ts, 2);
  const uint32_t waited = ts.clock.TickCount() - before;
  EXPECT_GE(waited, 2000u);
  EXPECT_LT(waited, 2010u);
  EXPECT_EQ(ts.pumps, 200);
}

TEST(TimerTest, MeasuresInTicksAcrossAWrap) {
  ManualClock clock;
  const struct {
    uint32_t start;
    uint32_t length;
  } cases[] = {{1000, 250}, {0xFFFFFF00u, 0x200}, {0xFFFFFFFFu, 2}};
  for (const auto& c : cases) {
    timer t(clock);
    clock.SetTick(c.start);
    t.StartTimer();
    clock.Advance(std::chrono::milliseconds(c.length));
    EXPECT_EQ(t.Elapsed(), c.length) << "running, from " << c.start;
    t.StopTimer();
    clock.Advance(std::chrono::milliseconds(5000));
    EXPECT_EQ(t.Elapsed(), c.length) << "stopped, from " << c.start;
    EXPECT_EQ(t.DebugTrace(), c.length);
  }
}

TEST(TimerTest, StartingAgainClearsTheStop) {
  ManualClock clock;
  timer t(clock);
  t.StartTimer();
  clock.Advance(std::chrono::milliseconds(100));
  t.StopTimer();
  t.StartTimer();
  clock.Advance(std::chrono::milliseconds(30));
  EXPECT_EQ(t.Elapsed(), 30u);
}

}  // namespace
}  // namespace r6183::test
