#pragma once
// The rules of the station numbering window (frmClid): four tabs, one per board, each
// with the list of its 24 stations and the buttons that edit, delete and auto-number
// them. Edits go straight into the work copy's table; OK keeps them, Cancel puts back
// the 96 rows as they were when the window opened.
#include <array>
#include <deque>
#include <functional>
#include <string>

#include "database/Database.h"
#include "editors/Controls.h"
#include "editors/DataControl.h"
#include "editors/NumberConflicts.h"

namespace r6183 {

class AutoModel;
class Session;
class StationModel;

class ClidModel {
 public:
  explicit ClidModel(Session& session);
  ~ClidModel();
  ClidModel(const ClidModel&) = delete;
  ClidModel& operator=(const ClidModel&) = delete;

  static constexpr const char* kCaption = "Architectural Number and CLID Programming";

  Control tabClid{"tabClid", ControlKind::Tab};  // the board shown, 0 to 3
  std::deque<Control> lblStations;               // per board
  std::deque<ListControl> lstClid;
  std::deque<Control> cmdEdit, cmdDelete, cmdAuto;
  Control cmdOk{"cmdOk", ControlKind::Button, "OK"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};
  DataControl dtaClid{"dtaClid"};

  // members of the window
  std::string OldClid, OldArch;  // the station in the station window, both ways
  bool RebuildList = false;      // the station window blanked other stations
  bool ClidChanged = false;
  bool ClidAccepted = false;
  bool SnapshotTaken = false;
  std::array<std::string, 96> SavedArch{}, SavedClid{};  // the rows at opening
  std::string StopStation;                              // set by the auto-numbering window
  ConflictList Conflicts;                               // of the last conflict search

  bool Loaded() const { return loaded_; }
  int CurrentTab() const { return tabClid.Value(); }
  // True while the window holds changes that OK has not accepted.
  bool UncommittedChanges() const { return loaded_ && ClidChanged; }

  void Form_Load();
  void Form_Unload();
  void Build_List();
  // The tab shown changes to `board`, as a click on it does.
  void ShowTab(int board);
  // Edit of the selected line of board `board` (a double click, Enter, or cmdEdit).
  void lstClid_DblClick(int board);

  // The conflict search over every station but `station`; fills Conflicts.
  bool Find_Conflicts(const std::string& station, const std::string& archnum);
  // The same over `outside`, the stations outside an auto-numbering run.
  void Find_Auto_Conflicts(Recordset& outside, const std::string& archnum, bool& found);

  // Set by whoever shows the window.
  std::function<void(StationModel&)> ShowStationWindow;  // modal; returns when it closed
  std::function<void(AutoModel&)> ShowAutoWindow;        // modal; returns when it closed
  std::function<void(const std::string& control)> SetFocus;
  std::function<void()> CloseWindow;  // closes the window; Form_Unload runs on the way

  // The work copy as the window holds it open.
  Database& WorkCopy() { return db_; }

 private:
  friend class StationModel;
  void tabClid_Click(int previousTab);
  void cmdEdit_Click(int board);
  void cmdDelete_Click(int board);
  void cmdAuto_Click(int board);
  void cmdOk_Click();
  void cmdCancel_Click();
  void Close();
  void Changed();  // ClidChanged, and Save offered

  Session& s_;
  Database db_;  // the work copy, for the window's life
  bool loaded_ = false;
  int shownTab_ = 0;
};

// The writes of one command in one transaction of the work copy: a run of a hundred rows
// then costs one flush to the disk, not a hundred. Whatever was written stays, also when
// a step failed on the way, as each write would have.
class WriteBatch {
 public:
  explicit WriteBatch(Database& db);
  ~WriteBatch();
  WriteBatch(const WriteBatch&) = delete;
  WriteBatch& operator=(const WriteBatch&) = delete;

 private:
  Database& db_;
  bool open_ = false;
};

// The menu entry: the numbering window, shown and in front, unless a transfer or a modem
// dial is under way.
void mnuArchNum_Click(Session& session);

}  // namespace r6183
