#pragma once
// A Hayes modem in front of the simulated unit. Towards the tool it has a command state
// (echo, verbose or numeric results, setup commands answered "OK"), dials ("ATDT"), takes
// over a line by hand ("ATX1D"), answers after a delay with CONNECT, BUSY, NO DIAL TONE or
// NO CARRIER, and in a call passes every byte both ways. "+++" between two guard times
// brings it back to command state with the call held; "ATO" returns to it, "ATH" and a
// drop of DTR (where the line carries it) hang up. The unit behind it reads and writes
// UnitSide(), which carries bytes only while a call stands.
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "protocol/SerialLine.h"
#include "shell/Clock.h"

namespace r6183::sim {

struct ModemOptions {
  std::chrono::milliseconds dialDelay{1000};   // from the dial to its result
  std::chrono::milliseconds guardTime{1000};   // of the escape, before and after "+++"
  std::vector<std::string> busy;               // numbers that answer BUSY
  std::vector<std::string> noAnswer;           // numbers that answer NO CARRIER
  bool noDialTone = false;                     // every dial finds no dial tone
  int connectSpeed = 9600;                     // the speed CONNECT reports
  int deafLines = 0;                           // lines ignored at first, echo and all
  bool pace = false;                           // its own bytes at 9600 baud
};

class SimulatedModem {
 public:
  enum class State { Command, Dialing, Online, OnlineCommand };

  // `terminal` is the line to the tool (the modem's serial port).
  SimulatedModem(SerialLine& terminal, Clock& clock, ModemOptions options = {});
  ~SimulatedModem();
  SimulatedModem(const SimulatedModem&) = delete;
  SimulatedModem& operator=(const SimulatedModem&) = delete;

  // The unit's line behind the modem.
  SerialLine& UnitSide();
  // Reads what the tool sent, answers commands, ends a dial whose time has come, and
  // recognises the escape. Never blocks longer than its pacing.
  void Poll();

  State state() const { return state_; }
  bool InCall() const { return state_ == State::Online || state_ == State::OnlineCommand; }
  // The command lines received ("ATDT5551234"), oldest first, and the number of the call.
  const std::vector<std::string>& Commands() const { return commands_; }
  const std::string& Number() const { return number_; }
  int Calls() const { return calls_; }
  ModemOptions& Options() { return options_; }

 private:
  class UnitLine;
  friend class UnitLine;

  void TakeCommandByte(char c);
  void TakeOnlineByte(char c, uint32_t now);
  void Execute(const std::string& line);
  void StartDial(std::string number);
  void EndDial();
  void HangUp(const char* result);
  void Result(const char* verbose, int numeric);
  void Reply(const std::string& bytes);
  void ToUnit(const std::string& bytes);
  void FromUnit(std::string_view bytes);
  void ResetSettings();

  SerialLine& terminal_;
  Clock& clock_;
  ModemOptions options_;
  std::unique_ptr<UnitLine> unitLine_;
  State state_ = State::Command;
  std::string line_;  // the command line being typed
  bool echo_ = true, verbose_ = true, quiet_ = false;
  std::string number_;
  uint32_t dialEndsAt_ = 0;
  int calls_ = 0;
  std::vector<std::string> commands_;
  int deafened_ = 0;  // lines ignored so far
  // the escape: the time of the last byte from the tool, the pluses held back
  uint32_t lastByteAt_ = 0;
  uint32_t lastPlusAt_ = 0;
  int pluses_ = 0;
  std::optional<bool> dtr_;
  uint64_t lineFreeAtUs_ = 0;
};

}  // namespace r6183::sim
