#pragma once
// A document and its numbering window, with the station, conflict and auto-numbering
// windows played by scripts as the operator would answer them.
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/editors/EditorTestSupport.h"
#include "editors/AutoModel.h"
#include "editors/ClidModel.h"
#include "editors/ConflictModel.h"
#include "editors/StationList.h"
#include "editors/StationModel.h"
#include "shell/Utility.h"

namespace r6183::test {

using Lines = std::vector<std::string>;

// SQL giving stations their numbers, stored as the tool stores them (4 wide).
inline std::string NumbersSql(const std::map<int, std::string>& numbers) {
  std::string sql;
  for (const auto& [station, number] : numbers)
    sql += "UPDATE Clid SET archnum = '" + PadRight(number, 4) + "' WHERE clid_station = " + std::to_string(station) +
           ";";
  return sql;
}

struct Numbering {
  explicit Numbering(const std::string& sql = "", bool load = true) : doc(sql), clid(*doc) {
    clid.ShowStationWindow = [this](StationModel& st) {
      st.ShowConflictWindow = [this](ConflictModel& c) {
        conflictsShown.push_back(c.lstConflict.Items());
        conflictHeads.push_back(c.lblStation.Text() + " " + c.lblArchnum.Text());
        c.CloseWindow = [] {};
        if (replies.empty()) return;  // closed by its system box: Cancel
        const int r = replies.front();
        replies.pop_front();
        (r == conflict_reply::Yes ? c.cmdYes : r == conflict_reply::No ? c.cmdNo : c.cmdCancel).Press();
      };
      st.SetFocus = [this](const std::string& name) { focus.push_back(name); };
      st.Form_Activate();
      if (stationScript) stationScript(st);
      stationLeftOpen = st.Loaded();
      if (st.Loaded()) st.cmdCancel.Press();
    };
    clid.ShowAutoWindow = [this](AutoModel& a) {
      bool closed = false;
      a.CloseWindow = [&closed] { closed = true; };
      ++autoShown;
      if (autoScript) autoScript(a);
      if (!closed) a.cmdCancel.Press();
    };
    clid.SetFocus = [this](const std::string& name) { focus.push_back(name); };
    if (load) clid.Form_Load();
  }

  // The station's line selected, on its board's tab.
  void Select(int station) {
    clid.ShowTab(BoardOf(station));
    clid.lstClid[BoardOf(station)].SetListIndex(PlaceOnBoard(station));
  }
  // Edits `station` in the station window, which runs `script`.
  void Edit(int station, std::function<void(StationModel&)> script) {
    Select(station);
    stationScript = std::move(script);
    clid.cmdEdit[BoardOf(station)].Press();
  }
  // Auto numbering from `station` up to the number `last`.
  void Auto(int station, const std::string& last) {
    Select(station);
    autoScript = [last](AutoModel& a) {
      TypeInto(a.txtStopArchnum, last);
      a.cmdOk.Press();
    };
    clid.cmdAuto[BoardOf(station)].Press();
  }
  // Every row of the table: station|archnum|description.
  std::string Table() { return doc.Peek("SELECT clid_station, archnum, clid_string FROM Clid ORDER BY rowid"); }
  // The number of a station as stored.
  std::string Number(int station) {
    std::string v = doc.Peek("SELECT archnum FROM Clid WHERE clid_station = " + std::to_string(station));
    return v.empty() ? v : v.substr(0, v.size() - 1);
  }
  Lines AllLines() const {
    Lines out;
    for (const ListControl& l : clid.lstClid) out.insert(out.end(), l.Items().begin(), l.Items().end());
    return out;
  }

  EditorSession doc;
  ClidModel clid;
  std::function<void(StationModel&)> stationScript;
  std::function<void(AutoModel&)> autoScript;
  std::deque<int> replies;  // answers of the conflict window, in turn
  std::vector<Lines> conflictsShown;
  Lines conflictHeads;
  Lines focus;
  bool stationLeftOpen = false;
  int autoShown = 0;
};

}  // namespace r6183::test
