#pragma once
// A line that passes everything through to another and copies the bytes as they cross:
// what the unit reads to one file, what it writes to another. The copies are the wire's
// own bytes, untouched by any message routine, for checks that must not trust those.
#include <fstream>
#include <string>

#include "protocol/SerialLine.h"

namespace r6183::sim {

class WireTap final : public SerialLine {
 public:
  // An empty path copies nothing in that direction; raises std::runtime_error when a file
  // can't be written.
  WireTap(SerialLine& line, const std::string& readPath, const std::string& writtenPath);

  void Open(const LineSettings& s, Handshake h) override { l_.Open(s, h); }
  void Close() override { l_.Close(); }
  bool IsOpen() const override { return l_.IsOpen(); }
  void Write(std::string_view bytes) override;
  int InputWaiting() override { return l_.InputWaiting(); }
  std::optional<char> ReadByte() override;
  bool WaitForInput(std::chrono::milliseconds timeout) override { return l_.WaitForInput(timeout); }
  void DiscardInput() override;
  void DiscardOutput() override { l_.DiscardOutput(); }
  void SetDTR(bool on) override { l_.SetDTR(on); }
  std::vector<LineEvent> TakeLineEvents() override { return l_.TakeLineEvents(); }
  bool Vanished() const override { return l_.Vanished(); }
  std::optional<bool> PeerDtr() const override { return l_.PeerDtr(); }

 private:
  SerialLine& l_;
  std::ofstream read_, written_;
};

}  // namespace r6183::sim
