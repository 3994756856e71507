#pragma once
// The Hayes modem on the port of the link: initialisation, attention, dialling, the
// result of a dial, hang-up and single setup commands. Once a call stands the protocol
// runs over it unchanged. The routines keep their two senses of result: GetOK,
// ConnectModem and ReleaseModem give true for success; ModemInit, CheckForModem,
// ModemAttention and Dial give 0 for success and -1 for failure.
#include <cstdint>
#include <string>

namespace r6183 {

class ModComm;
class ProgressWindow;
class Session;

// Result codes of GetConnectStr (and, negative, of ModemConnect).
namespace modem {
inline constexpr int16_t kConnect = 2;         // "CONNECT" with the number 9600
inline constexpr int16_t kCarrier = 1;         // "CARRIER", whatever stands before it
inline constexpr int16_t kNoResult = -1;       // nothing useful within 30 seconds
inline constexpr int16_t kNotResponding = -2;  // handled by the callers; nothing yields it
inline constexpr int16_t kNoDialTone = -3;
inline constexpr int16_t kBusy = -4;
inline constexpr int16_t kWrongSpeed = -10;  // "CONNECT" at another speed than 9600
}  // namespace modem

// The commands as sent; each ends in CR.
namespace at {
inline constexpr const char* kFactory = "AT&F\r";
inline constexpr const char* kAttention = "AT\r";
inline constexpr const char* kSetup = "ATE1V1Q0\r";
inline constexpr const char* kEscape = "+++";
inline constexpr const char* kVerbose = "ATV1Q0\r";
inline constexpr const char* kDialPrefix = "ATDT";
inline constexpr const char* kHangUp = "ATH\r";
inline constexpr const char* kManualConnect = "ATX1D\r";
}  // namespace at

class modModem {
 public:
  // The modem on the port `comm` holds; `progress` is the progress window that the
  // connection and the test show.
  modModem(Session& session, ModComm& comm, ProgressWindow& progress);

  // The number parsed from the last "CONNECT" line.
  int32_t ConnectSpeed = 0;

  // Initialises, dials and reads the result, with the progress window up and the main
  // window disabled; shows the result's message. True when the call stands, and the
  // menu is then in the state of a call.
  bool ConnectModem(const std::string& number);
  // Gets the modem's attention and hangs up; the menu goes back to the direct state.
  // False, with "Modem does not respond.", when the modem gave no attention.
  bool ReleaseModem();
  // "AT" + command; true when an "OK" came within five lines.
  bool SendModemCommand(const std::string& command, int16_t port);
  bool SetModemDefaults(const std::string& command);
  // The port of a remote modem's setup, opened afresh with request-to-send handshaking.
  bool InitComm_Remote();
  void ExitComm_Remote();
  // Whether a modem answers on the port of the remote setup.
  bool TestConnections();

  // The port arguments are kept for the routines' shape; they all work on the open port.
  int16_t Dial(int16_t port, const std::string& number);
  int16_t ModemConnect(int16_t port);
  int16_t ModemAttention(int16_t port);
  int32_t ModemGetConnectSpeed(int16_t port);
  int16_t ModemInit(int16_t port);
  int16_t CheckForModem(int16_t port);
  bool GetOK(int16_t port);
  int16_t GetConnectStr(int16_t port);

  Session& session() { return s_; }
  ModComm& comm() { return comm_; }
  ProgressWindow& progress() { return progress_; }

 private:
  // Up to five lines (each as a 50-character field); true at the first holding "OK".
  bool FiveLinesHoldOK();
  void SetDTR(bool on, const char* routine);

  Session& s_;
  ModComm& comm_;
  ProgressWindow& progress_;
};

// The link states that the Modem menu carries: a call stands exactly while Modem
// Release is enabled.
bool InCall(const Session& s);
// In a call: Modem Release enabled, Modem Connect and Manual Connect disabled; direct:
// the other way round.
void SetLinkState(Session& s, bool inCall);

// The dial of the phone list: the port opened with request-to-send handshaking, a
// second's pause, then ConnectModem. True when the call stands.
bool DialNumber(modModem& modem, const std::string& number);

}  // namespace r6183
