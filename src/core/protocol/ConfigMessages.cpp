// X (boards), D (option switches), I (clocks).
#include "protocol/LineText.h"
#include "protocol/Messages.h"
#include "protocol/ModComm.h"
#include "shell/Conversions.h"
#include "shell/Session.h"
#include "shell/Text.h"
#include "shell/Utility.h"

namespace r6183 {

namespace {
constexpr int kRingPatternField = 13;
constexpr int kLastDipField = 14;
}  // namespace

void Messages::SendConfig() {
  Sending("SendConfig", "SendConfig", [&] {
    comm_.msg_str = "X" + std::to_string(s_.state.SystemConfig);
    Send();
  });
}

void Messages::ReadConfig() {
  Reading("ReadConfig", " RECEIVING CONFIG: ", [&] {
    tables.Config.Edit();
    const uint8_t boards = CByte(Value(At(2)));
    s_.state.SystemConfig = boards;
    tables.Config["System_Config"] = Value(int{boards});
    tables.Config.Update();
  });
}

// Switches go inverted: "0" for True.
void Messages::SendDip(Database& db) {
  Sending("SendDip", "SendDip", [&] {
    Recordset rs = db.OpenRecordset("DipSwitch", RecordsetType::Snapshot);
    comm_.msg_str = "D";
    for (int i = 0; i < kRingPatternField; ++i) comm_.msg_str += rs[i].Bool() ? "0" : "1";
    switch (static_cast<int>(NumberOf(rs[kRingPatternField].GetValue()))) {
      case 0: comm_.msg_str += "11"; break;
      case 1: comm_.msg_str += "10"; break;
      case 2: comm_.msg_str += "01"; break;
      default: break;  // nothing: the message comes out short
    }
    comm_.msg_str += rs[kLastDipField].Bool() ? "0" : "1";
    Send();
  });
}

void Messages::ReadDip() {
  Reading("ReadDip", " RECEIVING Dipswitch: ", [&] {
    Recordset& rs = tables.DipSwitch;
    rs.Edit();
    for (int i = 0; i < kRingPatternField; ++i) rs[i] = Value(At(2 + i) != "1");
    const std::string pattern = At(15, 2);
    if (pattern == "11") rs[kRingPatternField] = Value(0);
    else if (pattern == "10") rs[kRingPatternField] = Value(1);
    else if (pattern == "01") rs[kRingPatternField] = Value(2);
    else {
      comm_.logFile.PrintLine("Ring pattern 11 do not exist: " + comm_.msg_str);
      comm_.ExceptionsFlag = true;
    }
    rs[kLastDipField] = Value(At(17) != "1");
    rs.Update();
  });
}

// A failed I does not fail the transfer.
void Messages::SendClock(Database& db) {
  Sending("SendClock", "SendClock", [&] {
    Recordset rs = db.OpenRecordset("Clockdef", RecordsetType::Snapshot);
    rs.MoveFirst();
    comm_.msg_str = "I" + ToLine(Trim(rs["Direction"].Text())) + ToLine(Trim(rs["BCD_Type"].Text())) +
                    ToLine(InsLeftZeroToOne(Trim(rs["ClockA"].Text()))) +
                    ToLine(InsLeftZeroToOne(Trim(rs["ClockB"].Text()))) + (rs["ClockEnabled"].Bool() ? "1" : "0");
    Send(false);
  });
}

// Stored as they come: a clock sent as "05" stays "05".
void Messages::REadClock() {
  Reading("REadClock", " Reading MESSAGE (SendClock): ", [&] {
    Recordset& rs = tables.ClockDef;
    rs.MoveFirst();
    rs.Edit();
    rs["Direction"] = Value(At(2));
    rs["BCD_Type"] = Value(At(3));
    rs["ClockA"] = Value(At(4, 2));
    rs["ClockB"] = Value(At(6, 2));
    const bool enabled = Val(At(8)) != 0;
    rs["ClockEnabled"] = Value(enabled);
    s_.state.ClocksEnabled = enabled ? 1 : 0;
    rs.Update();
  });
}

}  // namespace r6183
