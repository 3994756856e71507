#pragma once
// The messages that carry the programming, one routine pair a section: a send routine
// reads the working database and hands its message to Send_Msg; a read routine takes
// the message in msg_str and writes it into the recordsets a Receive transfer holds.
// Send routines report through TransferFailed, read routines through ExceptionsFlag
// and the log file; a run-time error is logged and journalled, never raised.
#include <functional>
#include <string>
#include <string_view>

#include "database/Database.h"
#include "database/Recordset.h"

namespace r6183 {

class ModComm;
class Session;

// The recordsets a Receive transfer holds for its length: dynasets on the work copy.
class ProtocolTables {
 public:
  void Open_Tables(Session& session);
  // Closes in the fixed order; ClassService goes with the database.
  void Close_Tables();

  Database db;
  Recordset Bgm, EmergencyPG, TonesPG, ClockDef, Clid, Config, DipSwitch, Event, PageGroup, SchedDays,
      ClassService;

 private:
  Session* s_ = nullptr;
};

class Messages {
 public:
  // First line, second line and percent of the progress window.
  using Progress = std::function<void(const std::string& first, const std::string& second, int percent)>;

  Messages(Session& session, ModComm& comm) : s_(session), comm_(comm) {}

  ProtocolTables tables;
  Progress ShowProgress;

  // X, D, I
  void SendConfig();
  void SendDip(Database& db);
  void SendClock(Database& db);
  void ReadConfig();
  void ReadDip();
  void REadClock();

  // E, W, K, N, M
  void SendEvents(Database& db);
  void SendSched(Database& db);
  void SendCT(Database& db);
  void SendEmer(Database& db);
  void SendBGM(Database& db);
  void ReadEvent();
  void ReadSched();
  void ReadCT();
  void ReadEmer();
  void ReadBGM();

  // C, G, P
  void SendClid(Database& db);
  void SendGroups(Database& db);
  void SendClassService(Database& db);
  void ReadClid();
  void ReadGroup();
  void ReadClassService();

 private:
  // Runs a read routine's body; on an error logs "ERROR ", the number, `literal` and
  // msg_str, sets ExceptionsFlag and journals under `routine`.
  void Reading(std::string_view routine, std::string_view literal, const std::function<void()>& body);
  // Runs a send routine's body; on an error logs " SENDING MESSAGE (name): " with the
  // message built so far, sets ExceptionsFlag and journals under `routine`.
  void Sending(std::string_view routine, std::string_view name, const std::function<void()>& body);
  // Sends msg_str; a failure sets TransferFailed when `reportFailure`.
  bool Send(bool reportFailure = true);
  // n characters of msg_str from position `pos` (1 is the letter), as UTF-8 for the
  // tables; missing ones read as empty.
  std::string At(std::size_t pos, std::size_t n = 1) const;
  void SendTones(Database& db, const char* table, char letter);
  void ReadTones(Recordset& rs);

  Session& s_;
  ModComm& comm_;
};

}  // namespace r6183
