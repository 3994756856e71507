#pragma once
// The unit's end of a pseudo-terminal pair. The program makes the pair, keeps the
// device end open in raw mode (so the line's settings hold while no tool is
// connected) and hands the tool the device path.
#include <string>

#include "protocol/SerialLine.h"

namespace r6183::sim {

class PtyLine final : public SerialLine {
 public:
  // Opens a new pair; raises std::system_error when the system refuses.
  PtyLine();
  ~PtyLine() override;
  PtyLine(const PtyLine&) = delete;
  PtyLine& operator=(const PtyLine&) = delete;

  // The device a tool opens, e.g. "/dev/pts/3".
  const std::string& DevicePath() const { return devicePath_; }

  void Open(const LineSettings&, Handshake) override {}
  void Close() override;
  bool IsOpen() const override { return master_ >= 0; }
  void Write(std::string_view bytes) override;
  int InputWaiting() override;
  std::optional<char> ReadByte() override;
  bool WaitForInput(std::chrono::milliseconds timeout) override;
  void DiscardInput() override;
  void DiscardOutput() override {}
  void SetDTR(bool) override {}

 private:
  void Fill();
  int master_ = -1, slave_ = -1;
  std::string devicePath_;
  std::string buffer_;
};

}  // namespace r6183::sim
