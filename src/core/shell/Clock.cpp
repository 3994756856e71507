#include "shell/Clock.h"

#include <cstdio>
#include <ctime>
#include <thread>

namespace r6183 {

uint32_t SystemClock::TickCount() const {
  using namespace std::chrono;
  return static_cast<uint32_t>(
      duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

LocalDateTime SystemClock::Now() const {
  const std::time_t t = std::time(nullptr);
  std::tm tm{};
  localtime_r(&t, &tm);
  return {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec};
}

void SystemClock::Pause(std::chrono::milliseconds ms) { std::this_thread::sleep_for(ms); }

uint64_t SystemClock::MicroTicks() const {
  using namespace std::chrono;
  return static_cast<uint64_t>(duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count());
}

void SystemClock::PauseUntil(uint64_t micros) {
  std::this_thread::sleep_until(std::chrono::steady_clock::time_point(std::chrono::microseconds(micros)));
}

void ManualClock::Advance(std::chrono::milliseconds ms) {
  tick_ += static_cast<uint32_t>(ms.count());
  subSecondMs_ += static_cast<uint64_t>(ms.count());
  const auto seconds = static_cast<long>(subSecondMs_ / 1000);
  subSecondMs_ %= 1000;
  if (seconds == 0) return;
  std::tm tm{};
  tm.tm_year = now_.year - 1900;
  tm.tm_mon = now_.month - 1;
  tm.tm_mday = now_.day;
  tm.tm_hour = now_.hour;
  tm.tm_min = now_.minute;
  tm.tm_sec = now_.second + static_cast<int>(seconds);
  tm.tm_isdst = 0;
  timegm(&tm);  // normalises the fields
  now_ = {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec};
}

std::string FormatJournalDate(const LocalDateTime& t) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "%02d/%02d/%04d", t.month, t.day, t.year);
  return buf;
}

std::string FormatJournalTime(const LocalDateTime& t) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "%02d:%02d", t.hour, t.minute);
  return buf;
}

}  // namespace r6183
