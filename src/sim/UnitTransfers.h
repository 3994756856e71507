#pragma once
// The unit's side of the two whole transfers, built on the tool's own message routines
// (the messages read the same both ways): on R the unit sends its whole programming
// and A; on S it takes every message that follows into a fresh copy of its memory,
// which replaces the memory when A arrives.
#include <memory>
#include <string>

namespace r6183::sim {

class SimulatedUnit;
class UnitMemory;

class UnitTransfers {
 public:
  // The order in which R sends the sections; each letter once. X first by default.
  static constexpr const char* kDefaultOrder = "XIDCGPWEKNM";

  UnitTransfers(SimulatedUnit& unit, UnitMemory& memory, std::string order = kDefaultOrder);

  // A unit newer than 2.00 may send messages the tool does not know: with this set, R
  // sends one ("Y" and a payload) before each section.
  void SendUnknownLetters(bool on);
  ~UnitTransfers();
  UnitTransfers(const UnitTransfers&) = delete;
  UnitTransfers& operator=(const UnitTransfers&) = delete;

  // Messages of the last R, in the order sent (A included).
  int LastSendCount() const;
  // An S transfer has started and not yet ended with A.
  bool Receiving() const;

  struct Impl;

 private:
  std::unique_ptr<Impl> impl_;
};

}  // namespace r6183::sim
