#pragma once
// The serial port as the protocol uses it: open with fixed line settings and a
// handshake, write bytes, read what has arrived, wait a bounded time for more, throw
// away what is waiting, drive DTR. NUL bytes from the line never reach the reader.
#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace r6183 {

class Clock;

// "9600,n,8,1"
struct LineSettings {
  int baud = 9600;
  char parity = 'n';
  int dataBits = 8;
  int stopBits = 1;
  static LineSettings Parse(std::string_view text);  // raises RuntimeError(5) on bad text
};

enum class Handshake : int16_t { None = 0, XonXoff = 1, RequestToSend = 2, Both = 3 };

// Line faults the driver reports, with the event codes of the protocol's journal texts.
enum class LineEvent : int16_t {
  Framing = 1004,
  Overrun = 1006,
  ReceiveOverflow = 1008,
  Parity = 1009,
  TransmitFull = 1010,
  ConfigurationError = 1011,
};

class SerialLine {
 public:
  virtual ~SerialLine() = default;
  // Raises RuntimeError (with the reason) when the device can't be opened.
  virtual void Open(const LineSettings& settings, Handshake handshake) = 0;
  virtual void Close() = 0;
  virtual bool IsOpen() const = 0;
  virtual void Write(std::string_view bytes) = 0;
  // Bytes received and not yet read (NUL bytes are not counted: they are dropped).
  virtual int InputWaiting() = 0;
  // The next received byte, if one is waiting; never blocks.
  virtual std::optional<char> ReadByte() = 0;
  // Waits up to `timeout` for input; true when some is waiting.
  virtual bool WaitForInput(std::chrono::milliseconds timeout) = 0;
  virtual void DiscardInput() = 0;
  virtual void DiscardOutput() = 0;
  // Raises RuntimeError where the device has no modem lines (a pseudo-terminal).
  virtual void SetDTR(bool on) = 0;
  // Line faults seen since the last call.
  virtual std::vector<LineEvent> TakeLineEvents() { return {}; }
  // True once the device has gone away (a USB adapter unplugged, the far end of a
  // pseudo-terminal closed).
  virtual bool Vanished() const { return false; }
  // The DTR line as the far end drives it, seen from this end (a modem watches its
  // terminal's DTR); nothing where the line does not carry it (a device, a
  // pseudo-terminal).
  virtual std::optional<bool> PeerDtr() const { return std::nullopt; }
};

// Two ends of an in-memory line for fast tests: what one end writes, the other
// reads. Waiting for input advances the given clock instead of sleeping.
class MemoryLine final : public SerialLine {
 public:
  // Makes a connected pair on one clock.
  static std::pair<std::unique_ptr<MemoryLine>, std::unique_ptr<MemoryLine>> Pair(Clock& clock);

  void Open(const LineSettings& settings, Handshake handshake) override;
  void Close() override { open_ = false; }
  bool IsOpen() const override { return open_; }
  void Write(std::string_view bytes) override;
  int InputWaiting() override { return static_cast<int>(input_.size()); }
  std::optional<char> ReadByte() override;
  bool WaitForInput(std::chrono::milliseconds timeout) override;
  void DiscardInput() override { input_.clear(); }
  void DiscardOutput() override {}
  void SetDTR(bool on) override { dtr_ = on; }
  bool Dtr() const { return dtr_; }
  std::optional<bool> PeerDtr() const override {
    return peer_ ? std::optional<bool>(peer_->dtr_) : std::nullopt;
  }

  // What this end has written, for tests that look at the raw bytes.
  const std::string& Written() const { return written_; }
  void ClearWritten() { written_.clear(); }
  // Refuses the next Open, as a busy port would.
  void FailOpen(bool fail) { failOpen_ = fail; }
  int OpenCount() const { return opens_; }

 private:
  explicit MemoryLine(Clock& clock) : clock_(clock) {}
  Clock& clock_;
  MemoryLine* peer_ = nullptr;
  std::deque<char> input_;
  std::string written_;
  bool open_ = false, dtr_ = false, failOpen_ = false;
  int opens_ = 0;
};

}  // namespace r6183
