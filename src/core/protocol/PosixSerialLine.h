#pragma once
// A serial device of the operating system (/dev/ttyUSB0, /dev/ttyS0, a
// pseudo-terminal) driven through termios.
#include <termios.h>

#include <deque>
#include <string>

#include "protocol/SerialLine.h"

namespace r6183 {

// The driver's running counts of line faults.
struct LineCounters {
  int framing = 0, overrun = 0, parity = 0, bufferOverrun = 0;
};
// The faults whose counts grew from `before` to `after`, one event a kind.
std::vector<LineEvent> LineEventsBetween(const LineCounters& before, const LineCounters& after);

// Sets `tio` for raw bytes with the given settings and handshake; raises
// RuntimeError(InvalidProcedureCall) for settings a device can't take (mark or
// space parity, a baud rate without a speed constant).
void ConfigureTermios(termios& tio, const LineSettings& settings, Handshake handshake);

class PosixSerialLine final : public SerialLine {
 public:
  explicit PosixSerialLine(std::string device) : device_(std::move(device)) {}
  ~PosixSerialLine() override;
  PosixSerialLine(const PosixSerialLine&) = delete;
  PosixSerialLine& operator=(const PosixSerialLine&) = delete;

  // Raises RuntimeError: FileNotFound, PermissionDenied (naming the group that may
  // use the device, or saying it is in use), InvalidProcedureCall for settings the
  // device can't take, DeviceIoError otherwise.
  void Open(const LineSettings& settings, Handshake handshake) override;
  void Close() override;
  bool IsOpen() const override { return fd_ >= 0; }
  void Write(std::string_view bytes) override;
  int InputWaiting() override;
  std::optional<char> ReadByte() override;
  bool WaitForInput(std::chrono::milliseconds timeout) override;
  void DiscardInput() override;
  void DiscardOutput() override;
  void SetDTR(bool on) override;
  std::vector<LineEvent> TakeLineEvents() override;
  bool Vanished() const override { return vanished_; }

  const std::string& Device() const { return device_; }

 private:
  void Fill();
  void RequireOpen() const;
  bool ReadCounters(LineCounters& c) const;

  std::string device_;
  int fd_ = -1;
  bool vanished_ = false;
  bool pseudo_ = false;  // a pseudo-terminal: written bytes are with the other end at once
  int baud_ = 9600;
  bool counters_ = false;  // the driver keeps fault counts
  LineCounters last_;
  std::deque<char> input_;
};

}  // namespace r6183
