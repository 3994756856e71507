#pragma once
// A line that forwards to another one owned elsewhere, for a ModComm that must not own
// its line (the line outlives a closed port).
#include "protocol/SerialLine.h"

namespace r6183 {

class BorrowedLine final : public SerialLine {
 public:
  explicit BorrowedLine(SerialLine& line) : l_(line) {}
  void Open(const LineSettings& s, Handshake h) override { l_.Open(s, h); }
  void Close() override { l_.Close(); }
  bool IsOpen() const override { return l_.IsOpen(); }
  void Write(std::string_view bytes) override { l_.Write(bytes); }
  int InputWaiting() override { return l_.InputWaiting(); }
  std::optional<char> ReadByte() override { return l_.ReadByte(); }
  bool WaitForInput(std::chrono::milliseconds timeout) override { return l_.WaitForInput(timeout); }
  void DiscardInput() override { l_.DiscardInput(); }
  void DiscardOutput() override { l_.DiscardOutput(); }
  void SetDTR(bool on) override { l_.SetDTR(on); }
  std::vector<LineEvent> TakeLineEvents() override { return l_.TakeLineEvents(); }
  bool Vanished() const override { return l_.Vanished(); }
  std::optional<bool> PeerDtr() const override { return l_.PeerDtr(); }

 private:
  SerialLine& l_;
};

}  // namespace r6183
