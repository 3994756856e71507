#include "connectivity/modModem.h"

#include <cmath>

#include "protocol/ModComm.h"
#include "protocol/ProgressWindow.h"
#include "shell/Conversions.h"
#include "shell/Session.h"
#include "shell/Timer.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "modModem";
constexpr uint32_t kOkWaitMs = 3000;
constexpr uint32_t kConnectWaitMs = 30000;
constexpr std::size_t kReplyField = 50;
constexpr const char* kNotAnError = "Not An Error";

Where In(std::string_view routine) { return Where{kModule, routine}; }

bool Holds(const std::string& line, const char* text) { return line.find(text) != std::string::npos; }

// A received line as the 50-character buffer holds it: cut, or filled with blanks.
std::string Field50(std::string line) {
  line.resize(kReplyField, ' ');
  return line;
}
}  // namespace

modModem::modModem(Session& session, ModComm& comm, ProgressWindow& progress)
    : s_(session), comm_(comm), progress_(progress) {}

void modModem::SetDTR(bool on, const char* routine) {
  // a pseudo-terminal has no DTR: journalled, and the routine goes on
  step(s_.journal(), In(routine), [&] {
    SerialLine* line = comm_.Line();
    if (!line) throw RuntimeError(err::PortNotOpen);
    line->SetDTR(on);
  });
}

bool modModem::GetOK(int16_t) {
  bool ok = false;
  step(s_.journal(), In("GetOK"), [&] {
    const uint32_t start = s_.clock().TickCount();
    do {
      if (Holds(comm_.MyGetString(), "OK")) {
        ok = true;
        return;
      }
    } while (comm_.PortOpen() && s_.clock().TickCount() - start < kOkWaitMs);
  });
  return ok;
}

int16_t modModem::ModemAttention(int16_t port) {
  int16_t result = 0;
  step(s_.journal(), In("ModemAttention"), [&] {
    auto fresh = [&] {
      if (SerialLine* line = comm_.Line()) {
        line->DiscardInput();
        line->DiscardOutput();
      }
    };
    for (int pass = 0; pass < 2; ++pass) {
      SetDTR(false, "ModemAttention");
      Sleep(s_, 1);
      SetDTR(true, "ModemAttention");
      Sleep(s_, 1);
      for (const char* command : {at::kAttention, at::kEscape, at::kVerbose}) {
        fresh();
        comm_.MyPutStr(command);
        if (GetOK(port)) return;
      }
    }
    result = -1;
  });
  return result;
}

int16_t modModem::ModemInit(int16_t port) {
  int16_t result = 0;  // a fault leaves it at 0, which reads as success
  step(s_.journal(), In("ModemInit"), [&] {
    comm_.MyPutStr(at::kFactory);
    Sleep(s_, 1);
    comm_.MyPutStr(at::kAttention);
    comm_.MyPutStr(at::kSetup);
    if (!GetOK(port)) result = -1;
  });
  return result;
}

int16_t modModem::CheckForModem(int16_t port) {
  int16_t result = 0;
  step(s_.journal(), In("CheckForModem"), [&] {
    comm_.MyPutStr(at::kFactory);
    if (!GetOK(port)) result = -1;
  });
  return result;
}

int16_t modModem::Dial(int16_t port, const std::string& number) {
  int16_t result = 0;
  step(s_.journal(), In("Dial"), [&] {
    if (ModemAttention(port) == -1) {
      result = -1;
      return;
    }
    Sleep(s_, 1);
    // tone dialling; commas and prefixes go as they stand
    comm_.MyPutStr(at::kDialPrefix + number + "\r");
  });
  return result;
}

int16_t modModem::GetConnectStr(int16_t) {
  int16_t result = modem::kNoResult;
  step(s_.journal(), In("GetConnectStr"), [&] {
    const uint32_t start = s_.clock().TickCount();
    std::string line;
    for (;;) {
      line = comm_.MyGetString();
      // the order of the tests decides: a lost carrier counts here as a carrier
      if (Holds(line, "CARRIER")) {
        result = modem::kCarrier;
        return;
      }
      if (Holds(line, "CONNECT")) break;
      if (Holds(line, "BUSY")) {
        result = modem::kBusy;
        return;
      }
      if (Holds(line, "NO DIAL TONE")) {
        result = modem::kNoDialTone;
        return;
      }
      s_.pump();
      if (!comm_.PortOpen() || s_.clock().TickCount() - start >= kConnectWaitMs) return;
    }
    result = modem::kConnect;
    // the number 8 characters on from the start of "CONNECT": "9600/ARQ" is 9600, none is 0
    const std::size_t at = line.find("CONNECT") + 8;
    ConnectSpeed = CLng(Value(Val(at < line.size() ? std::string_view(line).substr(at) : std::string_view())));
    if (ConnectSpeed != 9600) {
      // the link has no speed conversion: the modem must give the line at exactly 9600
      s_.journal().LogError(0, "Modem Connect error.  Baud Rate <> 9600.", kModule, kModule, "GetConnectStr");
      result = modem::kWrongSpeed;
      return;
    }
    if (s_.state.TraceAT) {
      for (const std::string& text : {"Connect Speed = " + std::to_string(ConnectSpeed),
                                      std::string("Connect Settings = ") + ModComm::Settings(),
                                      "Connect Comport = " + std::to_string(comm_.CommPort()),
                                      "Connect Handshaking = " + std::to_string(comm_.Handshaking())})
        s_.journal().LogError(0, text, kNotAnError, kNotAnError, "GetConnectStr");
    }
  });
  return result;
}

int16_t modModem::ModemConnect(int16_t port) {
  int16_t result = 0;
  step(s_.journal(), In("ModemConnect"), [&] {
    // a carrier (1) and a connect (2) both read as success
    const int16_t code = GetConnectStr(port);
    result = code < 0 ? code : 0;
  });
  return result;
}

int32_t modModem::ModemGetConnectSpeed(int16_t) { return ConnectSpeed; }

bool modModem::ConnectModem(const std::string& number) {
  bool connected = false;
  WindowOpener& win = s_.windows();
  const int16_t port = s_.state.ComPortNumber;
  // the hourglass was the main window's own: it is not carried over the message boxes
  auto tell = [&](const std::string& text) {
    win.SetHourglass(false);
    s_.Message(text);
  };
  step(s_.journal(), In("ConnectModem"), [&] {
    win.SetHourglass(true);
    win.EnableMain(false);
    progress_.Show();
    progress_.SetModemComm();
    progress_.SetPlainText("Status: Initializing...");
    if (ModemInit(port) != 0) {
      win.EnableMain(true);
      progress_.Unload();
      tell("Modem could not be initialized.");
      return;
    }
    progress_.SetPlainText("Status: Dialing...");
    if (Dial(port, number) == -1) {
      win.EnableMain(true);
      progress_.Unload();
      tell("Modem not responding");
      return;
    }
    const int16_t result = ModemConnect(port);
    ModemGetConnectSpeed(port);
    win.EnableMain(true);
    progress_.Unload();
    switch (result) {
      case 0:
        tell("Modem connected successfully.");
        SetLinkState(s_, true);
        connected = true;
        break;
      case modem::kNoResult:
        tell("Modem connection failed.");
        win.SetHourglass(true);
        ReleaseModem();  // the only result that hangs up
        break;
      case modem::kNotResponding: tell("Modem not responding."); break;
      case modem::kNoDialTone: tell("No dial tone."); break;
      case modem::kBusy: tell("Number dialed busy."); break;
      case modem::kWrongSpeed: tell("Modem connect error."); break;
      default: tell("response = " + std::to_string(result)); break;
    }
  });
  win.SetHourglass(false);
  return connected;
}

bool modModem::ReleaseModem() {
  bool released = false;
  step(s_.journal(), In("ReleaseModem"), [&] {
    // after a cancelled shutdown the port is closed while the call stands
    if (!comm_.Init_Comm(static_cast<int16_t>(Handshake::RequestToSend)) ||
        ModemAttention(s_.state.ComPortNumber) == -1) {
      s_.Message("Modem does not respond.");
      return;
    }
    comm_.Line()->DiscardInput();
    comm_.MyPutStr(at::kHangUp);  // its reply is not read
    released = true;
    SetLinkState(s_, false);
  });
  return released;
}

bool modModem::FiveLinesHoldOK() {
  for (int i = 0; i < 5; ++i)
    if (Holds(Field50(comm_.MyGetString()), "OK")) return true;
  return false;
}

bool modModem::SendModemCommand(const std::string& command, int16_t) {
  bool ok = false;
  step(s_.journal(), In("SendModemCommand"), [&] {
    comm_.msg_str = "AT" + command + "\r";
    if (SerialLine* line = comm_.Line()) line->DiscardOutput();
    comm_.MyPutStr(comm_.msg_str);
    ok = FiveLinesHoldOK();
  });
  return ok;
}

bool modModem::SetModemDefaults(const std::string& command) {
  bool ok = false;
  step(s_.journal(), In("SetModemDefaults"), [&] {
    comm_.msg_str = "AT" + command + "\r";
    if (SerialLine* line = comm_.Line()) line->DiscardInput();
    comm_.MyPutStr(comm_.msg_str);
    ok = FiveLinesHoldOK();
  });
  return ok;
}

bool modModem::InitComm_Remote() {
  step(s_.journal(), In("InitComm_Remote"), [&] {
    if (s_.state.RemoteComPort < 1) s_.state.RemoteComPort = 1;
    comm_.OpenPort(s_.state.RemoteComPort, static_cast<int16_t>(Handshake::RequestToSend));
  });
  return true;
}

void modModem::ExitComm_Remote() {
  step(s_.journal(), In("ExitComm_Remote"), [&] {
    if (comm_.PortOpen()) comm_.Exit_Comm();
  });
}

bool modModem::TestConnections() {
  bool ok = false;
  WindowOpener& win = s_.windows();
  step(s_.journal(), Where{"ModModem", "TestConnections"}, [&] {
    win.SetHourglass(true);
    progress_.Show();
    progress_.SetModemComm();
    progress_.ChangeCaption("Test Connection");
    progress_.SetPlainText("Status: Initializing Port...");
    InitComm_Remote();
    progress_.SetPlainText("Status: Testing Connection...");
    auto ask = [&](const char* command) {
      if (SerialLine* line = comm_.Line()) line->DiscardInput();
      comm_.MyPutStr(command);
    };
    ask(at::kAttention);
    ok = FiveLinesHoldOK();
    if (!ok) {
      ask("\r");
      ask(at::kFactory);
      ok = FiveLinesHoldOK();
    }
  });
  win.SetHourglass(false);
  progress_.Unload();
  return ok;
}

bool InCall(const Session& s) { return s.menu.Enabled("mnuModemRelease"); }

void SetLinkState(Session& s, bool inCall) {
  s.menu.SetEnabled("mnuModemRelease", inCall);
  s.menu.SetEnabled("mnuModemConnect", !inCall);
  s.menu.SetEnabled("mnuManualConnect", !inCall);
}

bool DialNumber(modModem& modem, const std::string& number) {
  Session& s = modem.session();
  modem.comm().Init_Comm(static_cast<int16_t>(Handshake::RequestToSend));
  Sleep(s, 1);
  return modem.ConnectModem(number);
}

}  // namespace r6183
