// E (events), W (days of the schedules), K and N (time and emergency tones), M
// (background music).
#include "protocol/LineText.h"
#include "protocol/Messages.h"
#include "protocol/ModComm.h"
#include "shell/Conversions.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183 {

namespace {
constexpr int kFirstEventGroup = 4;
constexpr int kGroups = 16;
constexpr int kDays = 7;
}  // namespace

void Messages::SendEvents(Database& db) {
  Sending("SendEvents", "SendEvents", [&] {
    Recordset rs = db.OpenRecordset("Select * from Event order by Schedule, StartTime", RecordsetType::Snapshot);
    while (!rs.IsEOF() && !comm_.transfer.TransferFailed) {
      comm_.msg_str = "E" + TextOf(rs["Schedule"].GetValue()) + ToLine(TextOf(rs["StartTime"].GetValue())) +
                      TextOf(rs["tone"].GetValue()) + RightChars("00" + TextOf(rs["Duration"].GetValue()), 2);
      for (int i = 0; i < kGroups; ++i) comm_.msg_str += rs[kFirstEventGroup + i].Bool() ? "1" : "0";
      Send();
      rs.MoveNext();
    }
  });
}

// No check for duplicates: the same event twice gives two rows.
void Messages::ReadEvent() {
  Reading("ReadEvent", " RECEIVING Events:  ", [&] {
    Recordset& rs = tables.Event;
    rs.AddNew();
    rs["Schedule"] = Value(At(2));
    rs["StartTime"] = Value(At(3, 5));
    rs["tone"] = Value(At(8));
    rs["Duration"] = Value(At(9, 2));
    for (int i = 0; i < kGroups; ++i) rs[kFirstEventGroup + i] = Value(At(11 + i) == "1");
    rs.Update();
  });
}

// A day claimed by several rows goes to the last of them; by none, to schedule 0.
void Messages::SendSched(Database& db) {
  Sending("SendSched", "SendSched", [&] {
    Recordset rs = db.OpenRecordset("SchedDays", RecordsetType::Snapshot);
    for (int day = 1; day <= kDays; ++day) {
      rs.MoveFirst();
      std::string schedule = "0";
      for (; !rs.IsEOF(); rs.MoveNext())
        if (rs[day].Bool()) schedule = TextOf(rs["Schedule"].GetValue());
      comm_.msg_str = "W" + std::to_string(day) + schedule;
      if (!Send()) break;
    }
  });
}

// Only ever sets a day; a day that is off relies on the template.
void Messages::ReadSched() {
  Reading("ReadSched", " RECEIVING Schedules:  ", [&] {
    const uint8_t day = CByte(Value(CDbl(Value(At(2))) - 1));
    const int16_t schedule = CInt(Value(At(3)));
    Recordset& rs = tables.SchedDays;
    rs.FindFirst([&](const RowView& row) { return NumberOf(row["Schedule"]) == schedule; });
    if (rs.NoMatch()) return;
    rs.Edit();
    rs[day + 1] = Value(true);
    rs.Update();
  });
}

// K and N: a failure is ignored and does not stop the transfer.
void Messages::SendTones(Database& db, const char* table, char letter) {
  Recordset rs = db.OpenRecordset(table, RecordsetType::Snapshot);
  comm_.msg_str = std::string(1, letter);
  for (int i = 0; i < kGroups; ++i) comm_.msg_str += rs[i].Bool() ? "1" : "0";
  Send(false);
}

void Messages::SendCT(Database& db) {
  Sending("SendCT", "SendCT", [&] { SendTones(db, "TonesPG", 'K'); });
}

void Messages::SendEmer(Database& db) {
  Sending("SendEmer", "SendEmer", [&] { SendTones(db, "EmergencyPG", 'N'); });
}

// Groups of boards that aren't there are switched off, whatever the message says.
void Messages::ReadTones(Recordset& rs) {
  rs.Edit();
  const int groups = (s_.state.SystemConfig + 1) * 4;
  for (int i = 0; i < groups; ++i) rs[i] = Value(At(2 + i) == "1");
  for (int i = groups; i < kGroups; ++i) rs[i] = Value(false);
  rs.Update();
}

void Messages::ReadCT() {
  Reading("ReadCT", " RECEIVING Time Tones: ", [&] { ReadTones(tables.TonesPG); });
}

void Messages::ReadEmer() {
  Reading("ReadEmer", " RECEIVING Emergency Tones: ", [&] { ReadTones(tables.EmergencyPG); });
}

// Background music goes inverted: "0" for True.
void Messages::SendBGM(Database& db) {
  Sending("SendBGM", "SendBgm", [&] {
    Recordset rs = db.OpenRecordset("Bgm", RecordsetType::Snapshot);
    comm_.msg_str = "M";
    for (int i = 0; i < kGroups; ++i) comm_.msg_str += rs[i].Bool() ? "0" : "1";
    Send();
  });
}

void Messages::ReadBGM() {
  Reading("ReadBGM", " RECEIVING BACKGROUND MUSIC: ", [&] {
    Recordset& rs = tables.Bgm;
    rs.Edit();
    for (int i = 0; i < kGroups; ++i) rs[i] = Value(At(2 + i) != "1");
    rs.Update();
  });
}

}  // namespace r6183
