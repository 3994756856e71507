#include "sim/SimulatedUnit.h"

#include <cstdio>
#include <ctime>
#include <stdexcept>

#include "protocol/ModComm.h"

namespace r6183::sim {

namespace {
constexpr int kMaxTries = 5;
constexpr std::size_t kMaxLine = 256;  // a runaway line is cut here

std::time_t ToTimeT(const LocalDateTime& t) {
  std::tm tm{};
  tm.tm_year = t.year - 1900;
  tm.tm_mon = t.month - 1;
  tm.tm_mday = t.day;
  tm.tm_hour = t.hour;
  tm.tm_min = t.minute;
  tm.tm_sec = t.second;
  return timegm(&tm);
}

std::string TwoDigits(int v) {
  char buf[4];
  std::snprintf(buf, sizeof buf, "%02d", v % 100);
  return buf;
}

int Digits(const std::string& s, std::size_t pos) {
  const char a = s[pos], b = s[pos + 1];
  if (a < '0' || a > '9' || b < '0' || b > '9') return -1;
  return (a - '0') * 10 + (b - '0');
}
}  // namespace

LocalDateTime AddSeconds(const LocalDateTime& t, std::chrono::seconds s) {
  const std::time_t v = ToTimeT(t) + static_cast<std::time_t>(s.count());
  std::tm tm{};
  gmtime_r(&v, &tm);
  return {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec};
}

std::chrono::seconds SecondsBetween(const LocalDateTime& a, const LocalDateTime& b) {
  return std::chrono::seconds(static_cast<long long>(ToTimeT(b) - ToTimeT(a)));
}

std::string UnitRevisions::Field(std::string_view revision) {
  const auto dot = revision.find('.');
  const std::string_view major = revision.substr(0, dot);
  const std::string_view minor = dot == std::string_view::npos ? "" : revision.substr(dot + 1);
  auto digits = [](std::string_view d) {
    for (char c : d)
      if (c < '0' || c > '9') return false;
    return true;
  };
  if (major.empty() || major.size() > 2 || minor.size() != 2 || !digits(major) || !digits(minor))
    throw std::invalid_argument("a revision is written like 2.31");
  return std::string(2 - major.size(), '0') + std::string(major) + std::string(minor);
}

std::string UnitRevisions::JMessage() const {
  return "J" + second + main + third + std::string(1, card1) + (clockCard ? "1" : "0");
}

SimulatedUnit::SimulatedUnit(SerialLine& line, Clock& clock, UnitOptions options)
    : line_(line), clock_(clock), options_(std::move(options)), random_(options_.faults.seed) {}

void SimulatedUnit::SetHandler(char letter, Handler handler) { handlers_[letter] = std::move(handler); }

void SimulatedUnit::Send(std::string message) { outbox_.push_back(std::move(message)); }

void SimulatedUnit::Poll() {
  if (hungUp_) return;
  while (auto c = line_.ReadByte()) {
    PaceBytes(1);
    TakeByte(*c);
    if (hungUp_) return;
  }
  if (tries_ > 0 && clock_.TickCount() - sentAt_ >= static_cast<uint32_t>(options_.ackWait.count()))
    OnAnswer('\0');  // no answer in time counts as a refusal
  if (tries_ == 0 && !outbox_.empty()) Transmit();
}

void SimulatedUnit::HangUp() {
  hungUp_ = true;
  outbox_.clear();
  tries_ = 0;
  line_.Close();
}

LocalDateTime SimulatedUnit::UnitTime() const { return AddSeconds(clock_.Now(), offset_); }

void SimulatedUnit::SetUnitTime(const LocalDateTime& t) {
  offset_ = SecondsBetween(clock_.Now(), t);
  clockSet_ = true;
}

void SimulatedUnit::TakeByte(char c) {
  if (c == '\0') return;
  if (c == kAck || c == kNak) {
    OnAnswer(c);
    return;
  }
  if (c == '\r') {
    PaceBytes(1);  // the NUL the tool sends behind every CR, which the line drops
    std::string frame;
    frame.swap(pending_);
    OnFrame(frame);
    return;
  }
  if (pending_.size() < kMaxLine) pending_ += c;
}

bool SimulatedUnit::Refuses(int n) {
  const Faults& f = options_.faults;
  if (f.nackEvery > 0 && n % f.nackEvery == 0) return true;
  if (f.nackShare > 0.0) return std::uniform_real_distribution<double>(0.0, 1.0)(random_) < f.nackShare;
  return false;
}

bool SimulatedUnit::Knows(char letter) const {
  // Revisions before 2.00 have neither the revision nor the daylight message.
  if (options_.revisions.Pre200() && (letter == 'H' || letter == 'Z')) return false;
  if (handlers_.count(letter)) return true;
  return letter != 'J' && MessageLength(letter) > 0;
}

void SimulatedUnit::OnFrame(const std::string& frame) {
  const int n = ++count_.framesReceived;
  const Faults& f = options_.faults;
  if (f.silentAfter > 0 && n > f.silentAfter) return;
  if (!frame.empty() && f.ignored.find(frame[0]) != std::string::npos) return;
  if (Refuses(n)) {
    Answer(kNak);
  } else {
    bool valid = frame.size() >= 4;
    std::string message;
    if (valid) {
      message = frame.substr(0, frame.size() - 3);
      const std::string sum = frame.substr(frame.size() - 3);
      valid = MessageLength(message[0]) == static_cast<int>(message.size()) && Knows(message[0]) &&
              FrameChecksum(message) == sum;
    }
    if (!valid) {
      Answer(kNak);
    } else {
      Answer(kAck);
      received_.push_back(message);
      Dispatch(message);
    }
  }
  if (f.hangUpAfter > 0 && n >= f.hangUpAfter) HangUp();
}

void SimulatedUnit::Answer(char control) {
  WriteRaw(std::string(1, control));
  ++(control == kAck ? count_.acksSent : count_.naksSent);
}

void SimulatedUnit::Dispatch(const std::string& m) {
  if (auto h = handlers_.find(m[0]); h != handlers_.end()) {
    h->second(m);
    return;
  }
  switch (m[0]) {
    case 'H':
      Send(options_.revisions.JMessage());
      break;
    case 'Q': {
      const LocalDateTime t = UnitTime();
      const bool impossible = options_.faults.badClock && !clockSet_;
      Send("T" + TwoDigits(t.hour) + TwoDigits(t.minute) + TwoDigits(t.second) +
           (impossible ? "13" : TwoDigits(t.month)) + TwoDigits(t.day) + TwoDigits(t.year));
      break;
    }
    case 'Z':
      Send(std::string("U") + (options_.daylightOn ? "1" : "0") + (options_.daylightSupported ? "1" : "0"));
      break;
    case 'T': {
      LocalDateTime t;
      t.hour = Digits(m, 1);
      t.minute = Digits(m, 3);
      t.second = Digits(m, 5);
      t.month = Digits(m, 7);
      t.day = Digits(m, 9);
      const int year = Digits(m, 11);
      // A field that is not two digits leaves the clock as it is.
      if (t.hour < 0 || t.minute < 0 || t.second < 0 || t.month < 0 || t.day < 0 || year < 0) break;
      t.year = 2000 + year;
      SetUnitTime(t);
      break;
    }
    case 'U':
      options_.daylightOn = m[1] == '1';
      break;
    default:
      break;  // accepted and kept; R, S and the data letters hook in through SetHandler
  }
}

void SimulatedUnit::Transmit() {
  const std::string& message = outbox_.front();
  std::string sum = FrameChecksum(message);
  if (options_.faults.badChecksum) sum[2] = sum[2] == '0' ? '1' : '0';
  if (options_.faults.garbage && tries_ == 0) {
    static constexpr std::string_view kNoise = "#$%&*+~?!@";
    std::string noise;
    const int len = std::uniform_int_distribution<int>(3, 8)(random_);
    for (int i = 0; i < len; ++i)
      noise += kNoise[std::uniform_int_distribution<std::size_t>(0, kNoise.size() - 1)(random_)];
    WriteRaw(noise + "\r");
  }
  WriteRaw(message + sum + "\r");
  ++tries_;
  ++count_.framesSent;
  sentAt_ = clock_.TickCount();
}

void SimulatedUnit::OnAnswer(char control) {
  if (tries_ == 0) return;  // nothing waits for an answer
  if (control == kAck) {
    outbox_.pop_front();
    tries_ = 0;
    return;
  }
  if (tries_ < kMaxTries) {
    Transmit();
    return;
  }
  // Five tries without ACK: the unit drops what it was sending.
  ++count_.sendsFailed;
  outbox_.clear();
  tries_ = 0;
}

void SimulatedUnit::WriteRaw(const std::string& bytes) {
  WaitForTheLine();  // what crossed the line before is on the wire until then
  line_.Write(bytes);
  PaceBytes(bytes.size());
}

void SimulatedUnit::PaceBytes(std::size_t n) {
  if (!options_.pace) return;
  // within a few milliseconds of the schedule the line has been busy all along, and the
  // delay is the pause's or the reader's, not the line's
  constexpr uint64_t kSlackUs = 3000;
  const uint64_t now = clock_.MicroTicks();
  if (lineFreeAtUs_ + kSlackUs < now) lineFreeAtUs_ = now;
  lineFreeAtUs_ += n * kByteUs;
}

void SimulatedUnit::WaitForTheLine() {
  if (options_.pace) clock_.PauseUntil(lineFreeAtUs_);
}

}  // namespace r6183::sim
