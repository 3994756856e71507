#include <gtest/gtest.h>

#include "shell/Timer.h"
#include "support/TestSupport.h"

namespace r6183::test {
namespace {

TEST(TimerTest, SleepWaitsByTheClockAndLetsEventsRun) {
  for (const auto& [seconds, pumps] : {std::pair<int16_t, uint32_t>{0, 0}, {-4, 0}, {2, 200}}) {
    TestSession ts;
    ts.clock.SetTick(0xFFFFFF00u);  // the wait spans a wrap of the tick
    Sleep(*ts, seconds);
    EXPECT_EQ((ts.clock.TickCount() - 0xFFFFFF00u) / 10, pumps) << seconds;  // a look every 10 ms
    EXPECT_EQ(ts.pumps, static_cast<int>(pumps)) << seconds;
  }
}

TEST(TimerTest, MeasuresInTicksAcrossAWrapAndRestartsAfresh) {
  ManualClock clock;
  for (const auto& [start, length] : {std::pair{1000u, 250u}, {0xFFFFFF00u, 0x200u}, {0xFFFFFFFEu, 2u}}) {
    timer t(clock);
    clock.SetTick(start - 100);
    t.StartTimer();
    clock.Advance(std::chrono::milliseconds(50));
    t.StopTimer();
    clock.SetTick(start);
    t.StartTimer();  // clears the stop
    clock.Advance(std::chrono::milliseconds(length));
    EXPECT_EQ(t.Elapsed(), length) << "running, from " << start;
    t.StopTimer();
    clock.Advance(std::chrono::milliseconds(5000));
    EXPECT_EQ(t.Elapsed(), length) << "stopped, from " << start;
  }
}

}  // namespace
}  // namespace r6183::test
