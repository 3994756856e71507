#pragma once
// Time as the tool sees it: a millisecond tick for waits, the local date and time
// for the journal and the transfer logs, and a short pause that the waits loop on.
// The manual clock lets tests of slow or silent peers run without real waiting.
#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace r6183 {

// Lets pending user-interface events run; empty outside the desktop program.
using Pump = std::function<void()>;

struct LocalDateTime {
  int year = 2000, month = 1, day = 1, hour = 0, minute = 0, second = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  // Milliseconds since an arbitrary start, wrapping at 32 bits like a tick count.
  virtual uint32_t TickCount() const = 0;
  virtual LocalDateTime Now() const = 0;
  // Gives up the processor for about `ms` milliseconds.
  virtual void Pause(std::chrono::milliseconds ms) = 0;
  // Microseconds since an arbitrary start, for what must keep time finer than a tick.
  virtual uint64_t MicroTicks() const { return uint64_t{TickCount()} * 1000; }
  // Gives up the processor until MicroTicks() reaches `micros` (whole ticks here).
  virtual void PauseUntil(uint64_t micros) {
    if (const uint64_t now = MicroTicks(); micros > now)
      Pause(std::chrono::milliseconds((micros - now + 999) / 1000));
  }
};

class SystemClock final : public Clock {
 public:
  uint32_t TickCount() const override;
  LocalDateTime Now() const override;
  void Pause(std::chrono::milliseconds ms) override;
  uint64_t MicroTicks() const override;
  void PauseUntil(uint64_t micros) override;
};

// A clock that moves only when told to, or by the pauses taken on it.
class ManualClock final : public Clock {
 public:
  explicit ManualClock(LocalDateTime start = {2001, 11, 6, 9, 30, 0}) : now_(start) {}
  uint32_t TickCount() const override { return tick_; }
  LocalDateTime Now() const override { return now_; }
  void Pause(std::chrono::milliseconds ms) override { Advance(ms); }
  void Advance(std::chrono::milliseconds ms);
  void SetNow(const LocalDateTime& t) { now_ = t; }
  void SetTick(uint32_t t) { tick_ = t; }

 private:
  uint32_t tick_ = 1000;
  uint64_t subSecondMs_ = 0;
  LocalDateTime now_;
};

// "mm/dd/yyyy" and "hh:mm", the forms of the journal.
std::string FormatJournalDate(const LocalDateTime& t);
std::string FormatJournalTime(const LocalDateTime& t);

}  // namespace r6183
