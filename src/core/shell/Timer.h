#pragma once
// Waiting and measuring on the session's clock.
#include <cstdint>

namespace r6183 {

class Clock;
class Session;

// Waits `seconds` by the clock's tick, letting events run while it waits. Zero or
// less returns at the first look at the clock.
void Sleep(Session& session, int16_t seconds);

// A stopwatch in clock ticks (milliseconds). The tick wraps at 32 bits; the
// differences stay right across a wrap.
class timer {
 public:
  explicit timer(Clock& clock) : clock_(clock) {}

  void StartTimer();  // starts afresh, clearing the stop
  void StopTimer();
  // Stop minus start; while not stopped, the present tick minus start.
  uint32_t Elapsed() const;
  uint32_t DebugTrace() const { return Elapsed(); }

 private:
  Clock& clock_;
  uint32_t start_ = 0;
  uint32_t stop_ = 0;
  bool stopped_ = false;  // a stop at tick 0 is a stop all the same
};

}  // namespace r6183
