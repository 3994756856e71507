#pragma once
// The control unit's side of the serial protocol. It reads frames from a SerialLine,
// checks them as the unit does, answers ACK or NACK, and sends its own frames with
// up to five tries each. Poll() does whatever is due and returns at once, so the unit
// runs in-process beside the tool (the tool's pump calls it) or in its own loop.
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "protocol/SerialLine.h"
#include "shell/Clock.h"

namespace r6183::sim {

class UnitMemory;

// Firmware revisions as the J message carries them ("0231" is 2.31) and the option cards.
struct UnitRevisions {
  std::string second = "0231";
  std::string main = "0231";
  std::string third = "0000";  // none
  char card1 = '0';            // '1' or '2'; anything else is no card
  bool clockCard = false;

  // "2.31" -> "0231", "11.05" -> "1105"; raises std::invalid_argument on other text.
  static std::string Field(std::string_view revision);
  bool Pre200() const { return second < "0200"; }
  std::string JMessage() const;
};

// Line faults the unit can be told to show.
struct Faults {
  int nackEvery = 0;        // NACK every Nth received frame (0: never)
  double nackShare = 0.0;   // NACK this share of received frames at random
  uint32_t seed = 1;        // of the random NACKs
  int silentAfter = 0;      // answer nothing after this many frames (0: never)
  int hangUpAfter = 0;      // hang up after this many frames (0: never)
  bool badChecksum = false; // the frames it sends carry a wrong checksum
  bool garbage = false;     // a line of noise goes before each frame it sends
  bool badClock = false;    // answers Q with month 13 until a T sets the clock
  std::string ignored = {}; // letters whose frames get no answer at all
};

struct UnitOptions {
  UnitRevisions revisions;
  Faults faults;
  bool daylightSupported = true;
  bool daylightOn = false;
  bool pace = false;  // about 1.04 ms per byte each way, as at 9600 baud
  std::chrono::milliseconds ackWait{1000};
};

class SimulatedUnit {
 public:
  // Called with a valid received message (letter and payload, checksum removed).
  using Handler = std::function<void(const std::string& message)>;

  SimulatedUnit(SerialLine& line, Clock& clock, UnitOptions options = {});

  // Reads what has arrived, answers it, moves the outgoing frame along. Never blocks
  // longer than the pacing of the bytes it handles.
  void Poll();

  // Replaces the unit's own handling of a letter (R and S hook in here).
  void SetHandler(char letter, Handler handler);
  // Queues a message (letter and payload) to send after those already waiting.
  void Send(std::string message);
  // Nothing queued and nothing waiting for its answer.
  bool Idle() const { return outbox_.empty(); }

  // Stops answering for good and closes the line.
  void HangUp();
  bool HungUp() const { return hungUp_; }

  // The unit's clock runs at an offset from the host's.
  LocalDateTime UnitTime() const;
  void SetUnitTime(const LocalDateTime& t);
  std::chrono::seconds ClockOffset() const { return offset_; }
  void SetClockOffset(std::chrono::seconds offset) { offset_ = offset; }
  bool DaylightOn() const { return options_.daylightOn; }

  UnitOptions& Options() { return options_; }
  void SetMemory(UnitMemory* memory) { memory_ = memory; }
  UnitMemory* Memory() const { return memory_; }

  // What has happened so far, for tests and the program's summary.
  struct Counters {
    int framesReceived = 0, acksSent = 0, naksSent = 0;
    int framesSent = 0, sendsFailed = 0;
  };
  const Counters& Count() const { return count_; }
  // Valid messages received, oldest first.
  const std::vector<std::string>& Received() const { return received_; }

 private:
  void TakeByte(char c);
  void OnFrame(const std::string& frame);
  bool Refuses(int frameNumber);
  bool Knows(char letter) const;
  void Answer(char control);
  void Dispatch(const std::string& message);
  void Transmit();
  void OnAnswer(char control);
  void WriteRaw(const std::string& bytes);
  // Pacing keeps the time at which the line is next free: each byte read or written takes
  // its wire time from there, and the unit waits for that time before it writes, in one
  // pause. The schedule is absolute, so a pause that oversleeps a little delays that answer
  // but not the frames after it.
  void PaceBytes(std::size_t n);
  void WaitForTheLine();
  static constexpr uint64_t kByteUs = 1042;  // 10 bits at 9600 baud

  SerialLine& line_;
  Clock& clock_;
  UnitOptions options_;
  UnitMemory* memory_ = nullptr;
  std::map<char, Handler> handlers_;
  std::string pending_;
  std::vector<std::string> received_;
  std::deque<std::string> outbox_;  // front is in flight once tries_ > 0
  int tries_ = 0;
  uint32_t sentAt_ = 0;
  std::chrono::seconds offset_{0};
  bool clockSet_ = false;
  bool hungUp_ = false;
  uint64_t lineFreeAtUs_ = 0;
  std::mt19937 random_;
  Counters count_;
};

// Adds seconds to a date and time, with the calendar's carries.
LocalDateTime AddSeconds(const LocalDateTime& t, std::chrono::seconds s);
// Seconds from a to b.
std::chrono::seconds SecondsBetween(const LocalDateTime& a, const LocalDateTime& b);

}  // namespace r6183::sim
