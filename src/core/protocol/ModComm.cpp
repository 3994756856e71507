#include "protocol/ModComm.h"

#include <algorithm>
#include <cstdio>

#include "protocol/LineText.h"
#include "shell/Session.h"
#include "shell/Text.h"
#include "shell/Timer.h"
#include "shell/Utility.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "ModComm";
constexpr const char* kNotAnError = "Not An Error";
constexpr const char* kLineSettings = "9600,n,8,1";
constexpr uint32_t kCharWaitMs = 500;
constexpr std::size_t kReceiveField = 50;

Where In(std::string_view routine) { return Where{kModule, routine}; }

bool OneOf(char c, std::string_view set) { return c != '\0' && set.find(c) != std::string_view::npos; }

const char* LineEventText(LineEvent e) {
  switch (e) {
    case LineEvent::Framing: return "framing Error";
    case LineEvent::Overrun: return "Data Lost";
    case LineEvent::ReceiveOverflow: return "Recieve Buffer Overflow";
    case LineEvent::Parity: return "Parity Error";
    case LineEvent::TransmitFull: return "Transmit Buffer Full";
    case LineEvent::ConfigurationError: return "Unexpected Error Retrieving DCB";
  }
  return nullptr;
}
}  // namespace

int MessageLength(char letter) {
  switch (letter) {
    case 'R': case 'S': case 'H': case 'Q': case 'Z': case 'A': return 1;
    case 'J': return 15;
    case 'T': return 13;
    case 'U': return 3;
    case 'X': return 2;
    case 'D': case 'K': case 'N': case 'M': case 'P': return 17;
    case 'I': return 8;
    case 'E': return 26;
    case 'W': return 3;
    case 'C': return 22;
    case 'G': return 18;
    default: return 0;
  }
}

std::string FrameChecksum(std::string_view message) {
  unsigned sum = 0;
  for (unsigned char c : message) sum += c;
  char hex[8];
  std::snprintf(hex, sizeof hex, "%03X", sum & 0xFFFu);
  return hex;
}

ModComm::ModComm(Session& session, LineFactory factory) : s_(session), factory_(std::move(factory)) {}

void ModComm::Trace(const std::string& text, const char* procedure) {
  if (s_.state.TraceComm) s_.journal().LogError(0, FromLine(text), kNotAnError, kNotAnError, procedure);
}

bool ModComm::Init_Comm(int16_t handshaking) {
  if (PortOpen()) return true;
  if (s_.state.ComPortNumber < 1) s_.state.ComPortNumber = 1;
  return Open(s_.state.ComPortNumber, handshaking);
}

bool ModComm::OpenPort(int16_t port, int16_t handshaking) {
  Exit_Comm();
  return Open(std::max<int16_t>(port, 1), handshaking);
}

bool ModComm::Open(int16_t port, int16_t handshaking) {
  try {
    const LineSettings settings = LineSettings::Parse(kLineSettings);
    if (!line_) line_ = factory_(port);
    if (!line_) throw RuntimeError(err::BadFileNameOrNumber, "no device for port " + std::to_string(port));
    line_->Open(settings, static_cast<Handshake>(handshaking));
    line_->DiscardInput();
    // a modem wants DTR; a pseudo-terminal has no such line, and that is no failure
    quietly([&] { line_->SetDTR(true); });
    openFailure_ = {};
    commPort_ = port;
    handshaking_ = handshaking;
    return true;
  } catch (...) {
    openFailure_ = DescribeCurrentException();
    line_.reset();
    return false;
  }
}

void ModComm::Exit_Comm() {
  step(s_.journal(), In("Exit_Comm"), [&] {
    if (line_ && line_->IsOpen()) line_->Close();
  });
  line_.reset();
}

std::optional<std::string> ChecksumOf(std::string_view message) {
  int32_t sum = 0;
  for (unsigned char c : message) {
    sum += c;
    if (sum > INT16_MAX) return std::nullopt;
  }
  return FrameChecksum(message);
}

std::string ModComm::Compute_Checksum(const std::string& message) {
  if (auto sum = ChecksumOf(message)) return *sum;
  quietly([&] {
    logFile.PrintLine("ERROR " + std::to_string(err::Overflow) + " COMPUTING CHECK SUM (Compute_Checksum): " + message);
  });
  ExceptionsFlag = true;
  s_.journal().Log(err::Overflow, "", In("Bad CheckSum"));
  return {};
}

SerialLine& ModComm::OpenLine() {
  if (!line_ || !line_->IsOpen()) throw RuntimeError(err::PortNotOpen);
  return *line_;
}

void ModComm::MyPutStr(const std::string& text) {
  Journal& j = s_.journal();
  if (!PortOpen()) {
    // nothing to write to: one line in the journal rather than two failures
    s_.journal().Log(err::PortNotOpen, "", In("MyPutStr"));
    return;
  }
  step(j, In("MyPutStr"), [&] { line_->DiscardInput(); });
  step(j, In("MyPutStr"), [&] { line_->Write(text); });
  Trace("Transmitting = " + text, "MyPutStr");
}

void ModComm::OnComm() {
  if (!line_) return;
  for (LineEvent e : line_->TakeLineEvents())
    if (const char* text = LineEventText(e)) s_.journal().LogError(0, text, "frmMenu", "frmMenu", "OnComm");
}

std::string ModComm::MyGet1Char() {
  try {
    timer t(s_.clock());
    t.StartTimer();
    for (;;) {
      s_.pump();
      OnComm();
      SerialLine& line = OpenLine();
      if (line.InputWaiting() != 0) {
        const auto c = line.ReadByte();
        return c ? std::string(1, *c) : std::string();
      }
      t.StopTimer();
      const uint32_t elapsed = t.Elapsed();
      if (elapsed >= kCharWaitMs) return {};
      line.WaitForInput(std::chrono::milliseconds(std::min<uint32_t>(kCharWaitMs - elapsed, 10)));
    }
  } catch (...) {
    s_.journal().Log(DescribeCurrentException(), In("MyGet1Char"));
    return {};
  }
}

std::string ModComm::MyGetString() {
  try {
    std::string text;
    for (;;) {
      const std::string c = MyGet1Char();
      if (c.empty() || c == "\r") break;
      text += c;
      s_.pump();
    }
    Trace("Recieved Message = " + text, "Mygetstring");
    return text;
  } catch (...) {
    s_.journal().Log(DescribeCurrentException(), In("MyGetString"));
    return {};
  }
}

bool ModComm::Send_Msg(std::string& message) {
  try {
    message += Compute_Checksum(message);
    const char letter = message.empty() ? '\0' : message[0];
    if (!OneOf(letter, "QRTUZH")) dataFile.PrintLine(message);
    message += '\r';
    message += '\0';

    int nacks = 0, others = 0;
    bool acknowledged = false;
    OpenLine();
    line_->DiscardInput();
    line_->DiscardOutput();
    while (!acknowledged && nacks + others < 5) {
      line_->DiscardInput();
      line_->Write(message);
      Trace("Send Data Message = " + message, "Mygetstring");
      const std::string answer = Trim(MyGet1Char());
      int code = 22;
      if (answer.empty()) {
        Trace("Response => EMPTY String", "Mygetstring");
      } else {
        code = static_cast<unsigned char>(answer[0]);
        Trace("Response => Chr=" + answer + " Ascii=" + std::to_string(code), "Mygetstring");
      }
      if (code == kAck) acknowledged = true;
      else if (code == kNak) ++nacks;
      else ++others;
    }
    NoResponseFlag = others == 5;
    NakLimitFlag = nacks == 5;
    return acknowledged;
  } catch (...) {
    s_.journal().Log(DescribeCurrentException(), In("Send_Msg"));
    return false;
  }
}

bool ModComm::Receive_Msg(bool acceptNewer) {
  try {
    int invalid = 0;
    bool received = false, newer = false;
    while (!received && invalid < 5) {
      msg_str.clear();
      std::string field = MyGetString();  // bytes of the line: one a character
      field.resize(kReceiveField, ' ');
      Trace("Recieved Data Message = " + field, "Mygetstring");
      // the length comes from the trimmed text, the characters from the field as it came
      msg_str = field.substr(0, Trim(field).size());
      raw_msg_str = msg_str;
      const std::string local = msg_str;
      if (!s_.state.DateTimeActive && !msg_str.empty() && OneOf(msg_str[0], "MCXDEGWAP"))
        dataFile.PrintLine(msg_str);

      if (Valid_message()) {
        Trace("Valid Message", "Mygetstring");
        MyPutStr(std::string(1, kAck));
        logFile.PrintLine("Valid :  " + local);
        received = true;
      } else {
        Trace("Invalid Message", "Mygetstring");
        if (acceptNewer && NewHWnOldSW()) newer = true;
        ++invalid;
        logFile.PrintLine(std::to_string(invalid) + " - NACK:  " + local);
        if (newer) {
          MyPutStr(std::string(1, kAck));
          logFile.PrintLine("Ignore Message Due to Rev Conflicts");
          invalid = 5;
        } else {
          MyPutStr(std::string(1, kNak));
        }
      }
    }
    return received || newer;
  } catch (...) {
    s_.journal().Log(DescribeCurrentException(), In("Receive_Msg"));
    return false;
  }
}

bool ModComm::Valid_message() {
  try {
    if (msg_str.size() < 4) return false;
    const std::string received = msg_str.substr(msg_str.size() - 3);
    msg_str.erase(msg_str.size() - 3);
    const int length = MessageLength(msg_str[0]);
    if (length == 0 || static_cast<int>(msg_str.size()) != length) return false;
    const std::string computed = Compute_Checksum(msg_str);
    if (computed == received) return true;
    logFile.PrintLine("ERROR : CHECK SUM DOES NOT MATCH: " + msg_str + received +
                      ". The correct check sum is : " + computed);
    ExceptionsFlag = true;
    return false;
  } catch (...) {
    const ErrorInfo e = DescribeCurrentException();
    s_.journal().Log(e, In("Valid_message"));
    quietly([&] {
      logFile.PrintLine("ERROR " + std::to_string(e.number) + " VALIDATING MESSAGE (Valid_Message): " + msg_str +
                        e.description);
    });
    ExceptionsFlag = true;
    return false;
  }
}

bool ModComm::NewHWnOldSW() {
  bool newer = false;
  step(s_.journal(), In("NewHWnOldSW"), [&] {
    if (raw_msg_str.empty() || raw_msg_str[0] < 'A' || raw_msg_str[0] > 'Z') return;
    if (raw_msg_str.size() < 3) throw RuntimeError(err::InvalidProcedureCall);
    const std::string checksum = raw_msg_str.substr(raw_msg_str.size() - 3);
    newer = Compute_Checksum(raw_msg_str.substr(0, raw_msg_str.size() - 3)) == checksum;
  });
  return newer;
}

}  // namespace r6183
