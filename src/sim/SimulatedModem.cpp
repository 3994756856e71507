#include "sim/SimulatedModem.h"

#include <algorithm>
#include <cctype>
#include <deque>

namespace r6183::sim {

namespace {
constexpr uint64_t kByteUs = 1042;  // 10 bits at 9600 baud
constexpr std::size_t kMaxCommandLine = 255;

// Numeric result codes of the verbose texts.
constexpr int kOk = 0, kConnect = 1, kNoCarrier = 3, kError = 4, kNoDialTone = 6, kBusy = 7, kConnect9600 = 12;

std::string Upper(std::string s) {
  for (char& c : s) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return s;
}

bool Listed(const std::vector<std::string>& list, const std::string& number) {
  return std::find(list.begin(), list.end(), number) != list.end();
}
}  // namespace

// The unit's side: what the modem passes on in a call waits here for the unit to read.
class SimulatedModem::UnitLine final : public SerialLine {
 public:
  explicit UnitLine(SimulatedModem& modem) : m_(modem) {}
  void Open(const LineSettings&, Handshake) override { open_ = true; }
  void Close() override {
    // the unit hung up: so does the modem
    open_ = false;
    if (m_.InCall()) m_.HangUp("NO CARRIER");
  }
  bool IsOpen() const override { return open_; }
  void Write(std::string_view bytes) override { m_.FromUnit(bytes); }
  int InputWaiting() override { return static_cast<int>(input.size()); }
  std::optional<char> ReadByte() override {
    if (input.empty()) return std::nullopt;
    const char c = input.front();
    input.pop_front();
    return c;
  }
  bool WaitForInput(std::chrono::milliseconds) override { return !input.empty(); }
  void DiscardInput() override { input.clear(); }
  void DiscardOutput() override {}
  void SetDTR(bool) override {}

  std::deque<char> input;

 private:
  SimulatedModem& m_;
  bool open_ = true;
};

SimulatedModem::SimulatedModem(SerialLine& terminal, Clock& clock, ModemOptions options)
    : terminal_(terminal), clock_(clock), options_(std::move(options)), unitLine_(std::make_unique<UnitLine>(*this)) {}

SimulatedModem::~SimulatedModem() = default;

SerialLine& SimulatedModem::UnitSide() { return *unitLine_; }

void SimulatedModem::Poll() {
  while (const auto c = terminal_.ReadByte()) {
    if (options_.pace && state_ != State::Online) lineFreeAtUs_ = std::max(lineFreeAtUs_, clock_.MicroTicks()) + kByteUs;
    switch (state_) {
      case State::Online:
        TakeOnlineByte(*c, clock_.TickCount());
        break;
      case State::Dialing:
        // any key ends a dial
        state_ = State::Command;
        Result("NO CARRIER", kNoCarrier);
        break;
      default:
        TakeCommandByte(*c);
        break;
    }
  }
  // a drop of DTR hangs up (where the line carries DTR at all)
  if (const auto dtr = terminal_.PeerDtr()) {
    if (dtr_.value_or(false) && !*dtr && state_ != State::Command) HangUp("NO CARRIER");
    dtr_ = dtr;
  }
  const uint32_t now = clock_.TickCount();
  if (state_ == State::Dialing && now - dialEndsAt_ < 0x80000000u) EndDial();
  if (state_ == State::Online && pluses_ > 0 && now - lastPlusAt_ >= options_.guardTime.count()) {
    if (pluses_ == 3) {
      // "+++" with silence before and after: back to commands, the call held
      pluses_ = 0;
      state_ = State::OnlineCommand;
      Result("OK", kOk);
    } else {
      ToUnit(std::string(static_cast<std::size_t>(pluses_), '+'));
      pluses_ = 0;
    }
  }
}

void SimulatedModem::TakeOnlineByte(char c, uint32_t now) {
  const auto guard = static_cast<uint32_t>(options_.guardTime.count());
  const bool escapeGoesOn = pluses_ > 0 ? now - lastPlusAt_ < guard : now - lastByteAt_ >= guard;
  lastByteAt_ = now;
  if (c == '+' && pluses_ < 3 && escapeGoesOn) {
    ++pluses_;
    lastPlusAt_ = now;
    return;
  }
  // not an escape after all: the pluses held back were data
  if (pluses_ > 0) ToUnit(std::string(static_cast<std::size_t>(pluses_), '+'));
  pluses_ = 0;
  ToUnit(std::string(1, c));
}

void SimulatedModem::TakeCommandByte(char c) {
  // a modem still starting up: nothing comes back, and the line is lost
  if (deafened_ < options_.deafLines) {
    if (c == '\r') ++deafened_;
    return;
  }
  if (echo_) Reply(std::string(1, c));
  if (c == '\r') {
    std::string line;
    line.swap(line_);
    Execute(line);
  } else if (c == '\b' || c == 127) {
    if (!line_.empty()) line_.pop_back();
  } else if (c != '\n' && line_.size() < kMaxCommandLine) {
    line_ += c;
  }
}

void SimulatedModem::ResetSettings() {
  echo_ = true;
  verbose_ = true;
  quiet_ = false;
}

void SimulatedModem::Execute(const std::string& text) {
  // a command starts at "AT"; whatever came before it is not looked at
  const std::string upper = Upper(text);
  const std::size_t start = upper.find("AT");
  if (start == std::string::npos) return;
  const std::string line = text.substr(start);
  commands_.push_back(line);
  const std::string cmd = Upper(line.substr(2));
  std::size_t i = 0;
  auto number = [&] {
    int v = 0;
    while (i < cmd.size() && std::isdigit(static_cast<unsigned char>(cmd[i]))) v = v * 10 + (cmd[i++] - '0');
    return v;
  };
  while (i < cmd.size()) {
    const char c = cmd[i++];
    switch (c) {
      case ' ':
        break;
      case 'D': {
        if (InCall()) {
          Result("ERROR", kError);
          return;
        }
        // the rest of the line is the dial string; T and P only choose tone or pulse
        std::string dialled = line.substr(2 + i);
        while (!dialled.empty() && std::string_view(" TPtp").find(dialled.front()) != std::string_view::npos)
          dialled.erase(0, 1);
        StartDial(dialled);
        return;  // the result comes when the dial ends
      }
      case 'H':
        number();
        if (state_ != State::Command) HangUp(nullptr);
        break;
      case 'O':
        number();
        if (state_ != State::OnlineCommand) {
          Result("NO CARRIER", kNoCarrier);
          return;
        }
        state_ = State::Online;
        lastByteAt_ = clock_.TickCount();
        Result(("CONNECT " + std::to_string(options_.connectSpeed)).c_str(), kConnect);
        return;
      case 'Z':
        number();
        ResetSettings();
        break;
      case 'E': echo_ = number() != 0; break;
      case 'V': verbose_ = number() != 0; break;
      case 'Q': quiet_ = number() != 0; break;
      case 'S':
        number();
        if (i < cmd.size() && cmd[i] == '=') {
          ++i;
          number();
        } else if (i < cmd.size() && cmd[i] == '?') {
          ++i;
          if (!quiet_) Reply("\r\n000\r\n");
        }
        break;
      case '&':
        if (i < cmd.size() && cmd[i++] == 'F') ResetSettings();
        number();
        break;
      case '\\':
      case '%':
        if (i < cmd.size()) ++i;
        number();
        break;
      case '+':  // an extended command runs to the next ';'
        while (i < cmd.size() && cmd[i] != ';') ++i;
        if (i < cmd.size()) ++i;
        break;
      case 'B': case 'C': case 'I': case 'L': case 'M': case 'N': case 'W': case 'X': case 'Y':
        number();
        break;
      default:
        Result("ERROR", kError);
        return;
    }
  }
  Result("OK", kOk);
}

void SimulatedModem::StartDial(std::string number) {
  number_ = std::move(number);
  state_ = State::Dialing;
  dialEndsAt_ = clock_.TickCount() + static_cast<uint32_t>(options_.dialDelay.count());
}

void SimulatedModem::EndDial() {
  state_ = State::Command;
  if (options_.noDialTone) return Result("NO DIAL TONE", kNoDialTone);
  if (Listed(options_.busy, number_)) return Result("BUSY", kBusy);
  if (Listed(options_.noAnswer, number_)) return Result("NO CARRIER", kNoCarrier);
  state_ = State::Online;
  ++calls_;
  pluses_ = 0;
  lastByteAt_ = clock_.TickCount();
  unitLine_->input.clear();
  const int speed = options_.connectSpeed;
  Result(("CONNECT " + std::to_string(speed)).c_str(), speed == 9600 ? kConnect9600 : kConnect);
}

void SimulatedModem::HangUp(const char* result) {
  state_ = State::Command;
  pluses_ = 0;
  if (result) Result(result, kNoCarrier);
}

void SimulatedModem::Result(const char* verbose, int numeric) {
  if (quiet_) return;
  Reply(verbose_ ? "\r\n" + std::string(verbose) + "\r\n" : std::to_string(numeric) + "\r");
}

void SimulatedModem::Reply(const std::string& bytes) {
  if (options_.pace) {
    clock_.PauseUntil(lineFreeAtUs_);
    lineFreeAtUs_ = std::max(lineFreeAtUs_, clock_.MicroTicks()) + bytes.size() * kByteUs;
  }
  terminal_.Write(bytes);
}

void SimulatedModem::ToUnit(const std::string& bytes) { unitLine_->input.insert(unitLine_->input.end(), bytes.begin(), bytes.end()); }

void SimulatedModem::FromUnit(std::string_view bytes) {
  // the unit's side carries nothing without a call, nor while the modem takes commands
  if (state_ == State::Online) terminal_.Write(bytes);
}

}  // namespace r6183::sim
