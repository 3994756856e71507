#include "editors/ClidModel.h"

#include "database/Database.h"
#include "editors/AutoModel.h"
#include "editors/StationList.h"
#include "editors/StationModel.h"
#include "shell/Conversions.h"
#include "shell/Labels.h"
#include "shell/MainMenu.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"
#include "shell/Utility.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmClid";
constexpr Where kAutoConflicts{kModule, "Find_Auto_Conflicts"};
constexpr Where kBuild{kModule, "Build_List"};
constexpr Where kCmdAuto{kModule, "cmdAuto"};
constexpr Where kCmdDelete{kModule, "cmdDelete"};
constexpr Where kCmdEdit{kModule, "cmdEdit"};
constexpr Where kCmdOk{kModule, "cmdOK"};
constexpr Where kLoad{kModule, "Load"};
constexpr Where kUnload{kModule, "Unload"};
constexpr Where kList{kModule, "lstClid"};
constexpr Where kTab{kModule, "tabClid"};
constexpr Where kFindConflicts{labels::modProject, "Find_Conflicts"};

Predicate StationIs(int64_t station) {
  return [station](const RowView& r) { return static_cast<int64_t>(NumberOf(r["clid_station"])) == station; };
}
}  // namespace

ClidModel::ClidModel(Session& session) : s_(session) {
  for (int b = 0; b < kBoards; ++b) {
    lblStations.emplace_back(ArrayName("lblStations", b), ControlKind::Label, BoardStationsCaption(b));
    lstClid.emplace_back(ArrayName("lstClid", b));
    cmdEdit.emplace_back(ArrayName("cmdEdit", b), ControlKind::Button, "&Edit Station Entry...");
    cmdDelete.emplace_back(ArrayName("cmdDelete", b), ControlKind::Button, "&Delete Station Entry");
    cmdAuto.emplace_back(ArrayName("cmdAuto", b), ControlKind::Button, "&Auto Numbering...");
    lstClid.back().OnDblClick = [this, b] { lstClid_DblClick(b); };
    cmdEdit.back().OnClick = [this, b] { cmdEdit_Click(b); };
    cmdDelete.back().OnClick = [this, b] { cmdDelete_Click(b); };
    cmdAuto.back().OnClick = [this, b] { cmdAuto_Click(b); };
  }
  tabClid.OnChange = [this] {
    const int previous = shownTab_;
    shownTab_ = tabClid.Value();
    if (loaded_) tabClid_Click(previous);
  };
  cmdOk.OnClick = [this] { cmdOk_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
}

ClidModel::~ClidModel() = default;

void ClidModel::Form_Load() {
  Journal& j = s_.journal();
  // each opening starts as the window was designed
  ClidChanged = ClidAccepted = SnapshotTaken = RebuildList = false;
  StopStation.clear();
  tabClid.SetValue(0);
  for (int b = 0; b < kBoards; ++b) {
    const bool shown = b == 0;
    cmdEdit[b].SetEnabled(shown);
    cmdDelete[b].SetEnabled(shown);
    cmdAuto[b].SetEnabled(shown);
  }
  loaded_ = true;
  step(j, kLoad, [&] {
    // the window holds the work copy open, so that a command can write in one transaction
    dtaClid.DatabaseName = s_.state.WorkDbPath;
    db_ = Database::Open(s_.state.WorkDbPath);
    dtaClid.SetRecordset(std::make_shared<Recordset>(db_.OpenRecordset("Clid")));
    Build_List();
  });
  step(j, kLoad, [&] {
    for (int b = 0; b < kBoards; ++b) {
      const bool present = b <= s_.state.SystemConfig;
      lstClid[b].SetEnabled(present);
      lblStations[b].SetEnabled(present);
    }
  });
  step(j, kLoad, [&] {
    lstClid[0].SetListIndex(0);
    SnapshotTaken = true;
  });
}

void ClidModel::Build_List() {
  step(s_.journal(), kBuild, [&] {
    Recordset& rs = dtaClid.Recordset();
    rs.MoveFirst();
    std::size_t row = 0;
    for (int b = 0; b < kBoards; ++b) {
      lstClid[b].Clear();
      for (int i = 0; i < kBoardStations; ++i, ++row) {
        const std::string arch = rs["archnum"].Text();
        const std::string clid = rs["clid_string"].Text();
        lstClid[b].AddItem(ClidLine(static_cast<int>(rs["clid_station"].Number()), arch, clid));
        if (!SnapshotTaken) {
          SavedArch[row] = arch;
          SavedClid[row] = clid;
        }
        rs.MoveNext();
      }
    }
  });
}

void ClidModel::ShowTab(int board) { tabClid.SetValue(board); }

void ClidModel::tabClid_Click(int previousTab) {
  step(s_.journal(), kTab, [&] {
    cmdEdit.at(previousTab).SetEnabled(false);
    cmdDelete.at(previousTab).SetEnabled(false);
    cmdAuto.at(previousTab).SetEnabled(false);
    const int b = tabClid.Value();
    if (!lstClid.at(b).Enabled()) return;
    cmdEdit[b].SetEnabled(true);
    cmdDelete[b].SetEnabled(true);
    cmdAuto[b].SetEnabled(true);
    lstClid[b].SetListIndex(0);
  });
}

void ClidModel::Changed() {
  ClidChanged = true;
  s_.menu.SetEnabled("mnuFileSave", true);
}

void ClidModel::lstClid_DblClick(int board) {
  ListControl& list = lstClid.at(board);
  if (list.ListIndex() < 0 || !list.Enabled()) return;
  StationLine parsed;
  if (!step(s_.journal(), kList, [&] {
        parsed = ParseClidLine(list.Selected());
        OldClid = parsed.clid;
        OldArch = parsed.archnum;
        RebuildList = false;
      }))
    return;
  step(s_.journal(), kList, [&] {
    StationModel station(s_, *this);
    station.Show(parsed.station, parsed.archnum, parsed.clid);
    if (ShowStationWindow) ShowStationWindow(station);
  });
  step(s_.journal(), kList, [&] {
    if (OldClid == parsed.clid && OldArch == parsed.archnum) return;
    Changed();
    if (!RebuildList) return;
    const int at = list.ListIndex();
    Build_List();
    list.SetListIndex(at);
  });
}

void ClidModel::cmdEdit_Click(int board) {
  lstClid_DblClick(board);
  step(s_.journal(), kCmdEdit, [&] {
    if (SetFocus) SetFocus(lstClid.at(board).Name());
  });
}

void ClidModel::cmdDelete_Click(int board) {
  ListControl& list = lstClid.at(board);
  if (list.ListIndex() < 0) return;
  bool done = step(s_.journal(), kCmdDelete, [&] {
    const std::string station = ParseClidLine(list.Selected()).station;
    list.SetList(list.ListIndex(), ClidLine(static_cast<int>(Val(station)), "", ""));
    Recordset& rs = dtaClid.Recordset();
    rs.FindFirst(StationIs(static_cast<int64_t>(Val(station))));
    if (rs.NoMatch()) return;
    rs.Edit();
    rs["archnum"] = Value(PadRight("", kArchWidth));
    rs["clid_string"] = Value(PadRight("", kClidWidth));
    rs.Update();
  });
  if (done) Changed();
}

bool ClidModel::Find_Conflicts(const std::string& station, const std::string& archnum) {
  bool found = false;
  step(s_.journal(), kFindConflicts, [&] {
    Conflicts.clear();
    if (archnum.empty()) return;
    dtaClid.Refresh();
    found = r6183::Find_Conflicts(dtaClid.Recordset(), station, archnum, Conflicts);
  });
  return found;
}

void ClidModel::Find_Auto_Conflicts(Recordset& outside, const std::string& archnum, bool& found) {
  found = false;
  step(s_.journal(), kAutoConflicts, [&] { r6183::Find_Auto_Conflicts(outside, archnum, found, Conflicts); });
}

void ClidModel::cmdAuto_Click(int board) {
  Journal& j = s_.journal();
  ListControl& list = lstClid.at(board);
  const int at = list.ListIndex();
  if (at < 0) return;
  const StationLine start = ParseClidLine(list.Selected());
  if (start.archnum.empty()) {
    step(j, kCmdAuto, [&] {
      s_.prompter().Message(
          "This function requires a defined Architectural Number.\n\nSelect 'Edit Station Entry' to define an "
          "Architectural Number for the current station.",
          Buttons::Ok, Icon::Exclamation, AutoModel::kTitle);
    });
    return;
  }
  // closing the window counts as Cancel
  StopStation.clear();
  step(j, kCmdAuto, [&] {
    AutoModel window(s_, *this);
    window.Start(start.station, start.archnum);
    if (ShowAutoWindow) ShowAutoWindow(window);
  });
  if (StopStation.empty()) return;

  const int first = static_cast<int>(Val(start.station));
  const int stop = static_cast<int>(Val(StopStation));
  bool asked = false;  // the first-conflict question comes once a run
  bool cancelled = false;
  int reached = first;
  std::array<std::string, kStations> overwritten{};
  WriteBatch batch(db_);
  Recordset outside;
  step(j, kCmdAuto, [&] {
    outside = db_.OpenRecordset("Select * from clid where clid_station not between " + start.station + " AND " +
                                   StopStation + " order by archnum",
                               RecordsetType::Snapshot);
  });
  step(j, kCmdAuto, [&] {
    Recordset& rs = dtaClid.Recordset();
    Recordset blanking = rs.Clone();
    rs.FindFirst(StationIs(first));
    int64_t number = static_cast<int64_t>(Val(start.archnum));
    for (int s = first + 1; s <= stop; ++s) {
      ++number;
      rs.MoveNext();
      overwritten.at(static_cast<std::size_t>(s - 1)) = rs["archnum"].Text();
      rs.Edit();
      rs["archnum"] = Value(PadRight(std::to_string(number), kArchWidth));
      rs.Update();
      reached = s;
      bool found = false;
      if (outside.IsOpen()) Find_Auto_Conflicts(outside, std::to_string(number), found);
      if (!found) continue;
      if (!asked) {
        asked = true;
        const Answer a = s_.prompter().Message(
            "Arch number conflicts with stations outside of auto-numbering range have been found.\n\nSave new Arch "
            "Numbers and delete arch numbers from conflicting stations?",
            Buttons::OkCancel, Icon::Exclamation, "Auto Numbering");
        if (a == Answer::Cancel) {
          cancelled = true;
          break;
        }
      }
      for (const ConflictEntry& e : Conflicts) {
        blanking.FindFirst(StationIs(e.station));
        if (blanking.NoMatch()) continue;
        blanking.Edit();
        blanking["archnum"] = Value(PadRight("", kArchWidth));
        blanking.Update();
      }
    }
  });
  if (cancelled) {
    // the run goes back; nothing outside it was blanked before the question
    step(j, kCmdAuto, [&] {
      Recordset& rs = dtaClid.Recordset();
      rs.FindFirst(StationIs(first));
      for (int s = first + 1; s <= reached; ++s) {
        rs.MoveNext();
        rs.Edit();
        rs["archnum"] = Value(overwritten.at(static_cast<std::size_t>(s - 1)));
        rs.Update();
      }
    });
    outside.Close();
    return;
  }
  Build_List();
  step(j, kCmdAuto, [&] {
    list.SetListIndex(at);
    if (SetFocus) SetFocus(list.Name());
  });
  outside.Close();
  Changed();
}

void ClidModel::cmdOk_Click() {
  step(s_.journal(), kCmdOk, [&] {
    if (ClidChanged) s_.state.DatabaseDirty = 1;
    ClidAccepted = true;
  });
  Close();
}

void ClidModel::cmdCancel_Click() { Close(); }

void ClidModel::Close() {
  if (CloseWindow) CloseWindow();
  else Form_Unload();
}

void ClidModel::Form_Unload() {
  if (!loaded_) return;
  step(s_.journal(), kUnload, [&] {
    if (ClidAccepted || !ClidChanged) return;
    WriteBatch batch(db_);
    // every edit went into the table at once: Cancel puts back the rows of the opening
    Recordset& rs = dtaClid.Recordset();
    rs.MoveFirst();
    for (std::size_t row = 0; row < SavedArch.size() && !rs.IsEOF(); ++row, rs.MoveNext()) {
      if (rs["archnum"].Text() == SavedArch[row] && rs["clid_string"].Text() == SavedClid[row]) continue;
      rs.Edit();
      rs["archnum"] = Value(SavedArch[row]);
      rs["clid_string"] = Value(SavedClid[row]);
      rs.Update();
    }
  });
  ClidChanged = false;
  loaded_ = false;
  step(s_.journal(), kUnload, [&] {
    dtaClid.Close();
    db_.Close();
  });
  UpdateFileSaveOpt(s_);
}

WriteBatch::WriteBatch(Database& db) : db_(db) {
  try {
    db_.BeginTrans();
    open_ = true;
  } catch (...) {
    // without a transaction each write stands on its own
  }
}

WriteBatch::~WriteBatch() {
  if (!open_) return;
  try {
    db_.CommitTrans();
  } catch (...) {
    quietly([&] { db_.Rollback(); });
  }
}

void mnuArchNum_Click(Session& s) {
  if (WindowOpenBlocked(s)) return;
  s.windows().Show("frmClid");
}

}  // namespace r6183
