// C (stations), G (custom page groups), P (class of service).
#include <algorithm>

#include "protocol/LineText.h"
#include "protocol/Messages.h"
#include "protocol/ModComm.h"
#include "shell/Conversions.h"
#include "shell/Session.h"
#include "shell/Text.h"
#include "shell/Utility.h"

namespace r6183 {

namespace {
constexpr int kGroups = 16;
constexpr int kClidStart = 30;
constexpr int kClidSteps = 34;
}  // namespace

// The progress moves one percent every third station and stops at 64.
void Messages::SendClid(Database& db) {
  Sending("SendClid", "SendClid", [&] {
    Recordset rs = db.OpenRecordset("Clid", RecordsetType::Snapshot);
    if (ShowProgress) ShowProgress("Sending Data:", "CLID", kClidStart);
    int records = 0, progress = 0;
    while (!rs.IsEOF() && !comm_.transfer.TransferFailed) {
      if (++records > 2) {
        progress = std::min(progress + 1, kClidSteps);
        if (ShowProgress) ShowProgress("Sending Data:", "CLID", kClidStart + progress);
        records = 0;
      }
      comm_.msg_str = "C" + RightChars("00" + TextOf(rs["clid_station"].GetValue()), 2) +
                      LineField(TextOf(rs["archnum"].GetValue()), 4) +
                      LineField(TextOf(rs["clid_string"].GetValue()), 15);
      Send();
      rs.MoveNext();
    }
  });
}

// Stored as they come, with the filling blanks.
void Messages::ReadClid() {
  Reading("ReadClid", " RECEIVING CLID: ", [&] {
    const uint8_t station = CByte(Value(At(2, 2)));
    Recordset& rs = tables.Clid;
    rs.FindFirst([&](const RowView& row) { return NumberOf(row["Clid_Station"]) == station; });
    if (rs.NoMatch()) {
      comm_.logFile.PrintLine("ERROR CLID STATION DOES NOT MATCH: " + comm_.msg_str);
      comm_.ExceptionsFlag = true;
      return;
    }
    rs.Edit();
    rs["archnum"] = Value(At(4, 4));
    rs["clid_string"] = Value(At(8, 15));
    rs.Update();
  });
}

void Messages::SendGroups(Database& db) {
  Sending("SendGroups", "SendGroups", [&] {
    Recordset rs = db.OpenRecordset("PageGroup", RecordsetType::Snapshot);
    while (!rs.IsEOF() && !comm_.transfer.TransferFailed) {
      comm_.msg_str = "G" + TextOf(rs["DialCode"].GetValue());
      for (int i = 1; i <= kGroups; ++i) comm_.msg_str += rs[i].Bool() ? "1" : "0";
      Send();
      rs.MoveNext();
    }
  });
}

void Messages::ReadGroup() {
  Reading("ReadGroup", " RECEIVING Custom Page Group:  ", [&] {
    const uint8_t dialCode = CByte(Value(At(2)));
    Recordset& rs = tables.PageGroup;
    rs.FindFirst([&](const RowView& row) { return NumberOf(row["Dialcode"]) == dialCode; });
    if (rs.NoMatch()) {
      comm_.logFile.PrintLine("CustomPageGroup - Dialing Code does not match:  " + comm_.msg_str);
      comm_.ExceptionsFlag = true;
      return;
    }
    rs.Edit();
    for (int i = 0; i < kGroups; ++i) rs[i + 1] = Value(At(3 + i) == "1");
    rs.Update();
  });
}

// Rows in ascending order of Group from 1; groups of boards that aren't there go as
// class 1. Without a row for the last group present the loop runs off the end and
// nothing is sent.
void Messages::SendClassService(Database& db) {
  Sending("SendClassService", "SendClassService", [&] {
    Recordset rs = db.OpenRecordset("ClassService", RecordsetType::Snapshot);
    rs.MoveFirst();
    comm_.msg_str = "P";
    const int last = (s_.state.SystemConfig + 1) * 4;
    while (NumberOf(rs["Group"].GetValue()) != last) {
      comm_.msg_str += TextOf(rs["Service"].GetValue());
      rs.MoveNext();
    }
    comm_.msg_str += TextOf(rs["Service"].GetValue());
    rs.MoveNext();
    for (; !rs.IsEOF(); rs.MoveNext()) comm_.msg_str += "1";
    Send();
  });
}

// Keeps all sixteen, in whatever order the rows stand.
void Messages::ReadClassService() {
  Reading("ReadClassService", " RECEIVING CLASS OF SERVICE: ", [&] {
    Recordset& rs = tables.ClassService;
    for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) {
      rs.Edit();
      const int64_t group = rs["Group"].Number();
      rs["Service"] = Value(At(static_cast<std::size_t>(group + 1)));
      rs.Update();
    }
  });
}

}  // namespace r6183
