#include "protocol/Messages.h"

#include "protocol/LineText.h"
#include "protocol/ModComm.h"
#include "shell/ErrorNumbers.h"
#include "shell/Journal.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "ModComm";
}  // namespace

void ProtocolTables::Open_Tables(Session& session) {
  s_ = &session;
  const Where where{kModule, "Open_Tables"};
  Journal& j = session.journal();
  if (!step(j, where, [&] { db = Database::Open(session.state.WorkDbPath); })) return;
  const std::pair<Recordset*, const char*> sets[] = {
      {&Bgm, "Bgm"},       {&EmergencyPG, "EmergencyPG"}, {&TonesPG, "TonesPG"},     {&ClockDef, "ClockDef"},
      {&Clid, "Clid"},     {&Config, "Config"},           {&DipSwitch, "DipSwitch"}, {&Event, "Event"},
      {&PageGroup, "PageGroup"}, {&SchedDays, "SchedDays"}, {&ClassService, "ClassService"}};
  for (const auto& set : sets)
    step(j, where, [&] { *set.first = db.OpenRecordset(set.second, RecordsetType::Dynaset); });
}

void ProtocolTables::Close_Tables() {
  auto close = [&] {
    for (Recordset* rs :
         {&EmergencyPG, &TonesPG, &ClockDef, &Bgm, &Clid, &Config, &DipSwitch, &Event, &PageGroup, &SchedDays})
      rs->Close();
    db.Close();
    // not closed by name: it goes with the database
    ClassService = Recordset();
  };
  if (s_) step(s_->journal(), Where{kModule, "Close_Tables"}, close);
  else quietly(close);
}

void Messages::Reading(std::string_view routine, std::string_view literal, const std::function<void()>& body) {
  try {
    body();
  } catch (...) {
    const ErrorInfo e = DescribeCurrentException();
    quietly([&] {
      comm_.logFile.PrintLine("ERROR " + std::to_string(e.number) + std::string(literal) + comm_.msg_str);
    });
    comm_.ExceptionsFlag = true;
    s_.journal().Log(e, Where{kModule, routine});
  }
}

void Messages::Sending(std::string_view routine, std::string_view name, const std::function<void()>& body) {
  try {
    body();
  } catch (...) {
    const ErrorInfo e = DescribeCurrentException();
    quietly([&] {
      comm_.logFile.PrintLine("ERROR " + std::to_string(e.number) + " SENDING MESSAGE (" + std::string(name) +
                              "): " + comm_.msg_str);
    });
    comm_.ExceptionsFlag = true;
    s_.journal().Log(e, Where{kModule, routine});
  }
}

bool Messages::Send(bool reportFailure) {
  const bool sent = comm_.Send_Msg(comm_.msg_str);
  if (!sent && reportFailure) comm_.transfer.TransferFailed = true;
  return sent;
}

std::string Messages::At(std::size_t pos, std::size_t n) const {
  const std::string& m = comm_.msg_str;
  return pos < 1 || pos > m.size() ? std::string() : FromLine(std::string_view(m).substr(pos - 1, n));
}

}  // namespace r6183
