#include "shell/Timer.h"

#include "shell/Clock.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::chrono::milliseconds kLookInterval{10};
}

void Sleep(Session& session, int16_t seconds) {
  Clock& clock = session.clock();
  const uint32_t start = clock.TickCount();
  const uint32_t wait = seconds > 0 ? static_cast<uint32_t>(seconds) * 1000u : 0u;
  while (clock.TickCount() - start < wait) {
    session.pump();
    clock.Pause(kLookInterval);
  }
}

void timer::StartTimer() {
  start_ = clock_.TickCount();
  stopped_ = false;
}

void timer::StopTimer() {
  stop_ = clock_.TickCount();
  stopped_ = true;
}

uint32_t timer::Elapsed() const {
  const uint32_t end = stopped_ ? stop_ : clock_.TickCount();
  return end - start_;
}

}  // namespace r6183
