#pragma once
// The bottom of the device protocol: the port, single characters and whole lines,
// the frame around every message (letter, payload, three hexadecimal checksum digits,
// CR, NUL), the stop-and-wait exchange with ACK (6) and NACK (21), and the check of
// every received frame.
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <string>
#include <string_view>

#include "protocol/SerialLine.h"
#include "protocol/TransferFile.h"
#include "shell/ErrorNumbers.h"

namespace r6183 {

class Session;

inline constexpr char kAck = 6;
inline constexpr char kNak = 21;

// Length (letter and payload) of each letter accepted from the unit; 0 for a letter
// that is never accepted.
int MessageLength(char letter);

// The three-digit checksum of a message (letter and payload): the sum of its
// character codes modulo 4096 in upper-case hexadecimal. Nothing when the sum does not
// fit in 16 signed bits.
std::optional<std::string> ChecksumOf(std::string_view message);

// How a transfer and its message routines report.
struct TransferFlags {
  bool TransferFailed = false;  // Send_Msg or Receive_Msg gave up
  bool TransferDone = false;    // the transfer reached its A
};

// The checksum as the unit computes it, of any length: the sum modulo 4096.
std::string FrameChecksum(std::string_view message);

class ModComm {
 public:
  // Makes the line for a port number when the port is first opened.
  using LineFactory = std::function<std::unique_ptr<SerialLine>(int16_t port)>;

  ModComm(Session& session, LineFactory factory);

  // The message in hand, and the received text as it came (checksum included).
  std::string msg_str;
  std::string raw_msg_str;
  bool NoResponseFlag = false;
  bool NakLimitFlag = false;
  bool ExceptionsFlag = false;
  TransferFlags transfer;

  // File number 1 (the data file of a transfer) and number 2 (the log file).
  TransferFile dataFile;
  TransferFile logFile;

  // Opens the port if it is closed. A failure is reported to nobody: the caller decides
  // what to say, and may use OpenFailure() for the reason.
  bool Init_Comm(int16_t handshaking);
  // Closes the port and opens `port` (raised to 1 when below) with the handshake, whatever
  // was open before: the port of a remote modem's setup. False as Init_Comm.
  bool OpenPort(int16_t port, int16_t handshaking);
  // Why the last Init_Comm could not open the port (a busy port, a missing device, the
  // group that grants access); empty once a port is open.
  const std::string& OpenFailure() const { return openFailure_.description; }
  // Its error number: FileNotFound for a missing device, PermissionDenied for a busy port or
  // one the operator may not use; 0 once a port is open.
  int16_t OpenFailureNumber() const { return openFailure_.number; }
  void Exit_Comm();
  bool PortOpen() const { return line_ && line_->IsOpen(); }
  SerialLine* Line() { return line_.get(); }
  // What the open port was opened with: its number, "9600,n,8,1", the handshake.
  int16_t CommPort() const { return commPort_; }
  static constexpr const char* Settings() { return "9600,n,8,1"; }
  int16_t Handshaking() const { return handshaking_; }

  std::string Compute_Checksum(const std::string& message);
  void MyPutStr(const std::string& text);
  std::string MyGet1Char();
  std::string MyGetString();
  bool Send_Msg(std::string& message);
  bool Receive_Msg(bool acceptNewer);
  bool Valid_message();
  // A frame refused by Valid_message that is still a well-formed frame of newer
  // firmware: a letter A to Z and a matching checksum.
  bool NewHWnOldSW();

  // Journals the line faults the driver reported since the last look.
  void OnComm();

 private:
  void Trace(const std::string& text, const char* procedure);
  bool Open(int16_t port, int16_t handshaking);
  // The open line; raises PortNotOpen when the port is closed.
  SerialLine& OpenLine();
  Session& s_;
  LineFactory factory_;
  std::unique_ptr<SerialLine> line_;
  ErrorInfo openFailure_;
  int16_t commPort_ = 0;
  int16_t handshaking_ = 0;
};

}  // namespace r6183
