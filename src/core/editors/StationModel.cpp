#include "editors/StationModel.h"

#include "database/Recordset.h"
#include "editors/ClidModel.h"
#include "editors/ConflictModel.h"
#include "editors/StationList.h"
#include "protocol/LineText.h"
#include "shell/Conversions.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"
#include "shell/Text.h"
#include "shell/Utility.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmStation";
constexpr Where kCmdMove{kModule, "cmdMove"};
constexpr Where kCmdOk{kModule, "cmdOK"};
constexpr Where kActivate{kModule, "FormActivate"};
constexpr Where kLoad{kModule, "Load"};
constexpr Where kArchFocus{kModule, "txtArchnum gotfocus"};
constexpr Where kArchKey{kModule, "txtArchnum keypress"};
constexpr Where kClidFocus{kModule, "txtClid GotFocus"};
constexpr Where kClidKey{kModule, "txtclid KeyPress"};

const char* const kMoveCaptions[] = {"<<", "<", ">", ">>"};

Predicate StationIs(int64_t station) {
  return [station](const RowView& r) { return static_cast<int64_t>(NumberOf(r["clid_station"])) == station; };
}

// Digits only, at most four: what a paste brings in is held to what typing allows.
std::string DigitsOnly(const std::string& text) {
  std::string out;
  for (char c : text)
    if (c >= '0' && c <= '9' && out.size() < kArchWidth) out += c;
  return out;
}
}  // namespace

StationModel::StationModel(Session& session, ClidModel& clid) : s_(session), clid_(clid) {
  for (int i = 0; i < 4; ++i) {
    cmdMove.emplace_back(ArrayName("cmdMove", i), ControlKind::Button, kMoveCaptions[i]);
    cmdMove.back().OnClick = [this, i] { cmdMove_Click(i); };
  }
  cmdOk.OnClick = [this] { cmdOk_Click(); };
  cmdCancel.OnClick = [this] { Unload(); };
  lblStation.OnChange = [this] { ArchTyped = ClidTyped = false; };

  txtArchnum.OnKeyPress = [this](int& key) {
    step(s_.journal(), kArchKey, [&] {
      ArchTyped = true;
      Allow_digits_only(key);
    });
  };
  txtArchnum.OnChange = [this] {
    if (filling_) return;
    ArchTyped = true;
    const std::string kept = DigitsOnly(txtArchnum.Text());
    if (kept != txtArchnum.Text()) Fill(txtArchnum, kept);
  };
  txtArchnum.OnGotFocus = [this] {
    step(s_.journal(), kArchFocus, [&] {
      if (SelectAll) SelectAll(txtArchnum.Name());
    });
  };

  txtClid.OnKeyPress = [this](int&) { step(s_.journal(), kClidKey, [&] { ClidTyped = true; }); };
  txtClid.OnChange = [this] {
    if (filling_) return;
    // only what the line can carry, and no more than it has room for
    if (const auto refusal = LineTextRefusal(txtClid.Text(), s_.product.ProductModel)) {
      Fill(txtClid, acceptedClid_);
      s_.prompter().Message(*refusal, Buttons::Ok, Icon::Exclamation, s_.product.ProductTitle);
      return;
    }
    if (CharCount(txtClid.Text()) > kClidWidth) Fill(txtClid, LeftChars(txtClid.Text(), kClidWidth));
    acceptedClid_ = txtClid.Text();
    ClidTyped = true;
  };
  txtClid.OnGotFocus = [this] {
    step(s_.journal(), kClidFocus, [&] {
      if (SelectAll) SelectAll(txtClid.Name());
    });
  };

  step(s_.journal(), kLoad, [&] {
    BoardTab = clid_.CurrentTab();
    FirstStation = FirstStationOf(BoardTab);
    LastStation = LastStationOf(BoardTab);
    ListPos = clid_.lstClid.at(BoardTab).ListIndex();
  });
  loaded_ = true;
}

StationModel::~StationModel() = default;

void StationModel::Fill(Control& c, const std::string& text) {
  filling_ = true;
  c.SetText(text);
  filling_ = false;
}

void StationModel::Show(const std::string& station, const std::string& archnum, const std::string& clid) {
  lblStation.SetText(station);
  Fill(txtClid, clid);
  Fill(txtArchnum, archnum);
  acceptedClid_ = clid;
  ArchTyped = ClidTyped = false;
  caption_ = std::string(kCaption) + station;
}

void StationModel::Form_Activate() {
  step(s_.journal(), kActivate, [&] {
    if (SetFocus) SetFocus(txtArchnum.Name());
  });
}

void StationModel::CheckConflicts() {
  const std::string station = lblStation.Text();
  const std::string archnum = Trim(txtArchnum.Text());
  if (!clid_.Find_Conflicts(station, archnum)) {
    ConflictReply = conflict_reply::Yes;
    return;
  }
  ConflictModel window(ConflictReply);
  window.Fill(station, archnum, clid_.Conflicts);
  if (ShowConflictWindow) ShowConflictWindow(window);
}

void StationModel::SaveStation() {
  Recordset& rs = clid_.dtaClid.Recordset();
  const auto station = static_cast<int64_t>(Val(lblStation.Text()));
  rs.FindFirst(StationIs(station));
  if (rs.NoMatch()) return;
  rs.Edit();
  rs["archnum"] = Value(PadRight(Trim(txtArchnum.Text()), kArchWidth));
  rs["clid_string"] = Value(PadRight(Trim(txtClid.Text()), kClidWidth));
  rs.Update();
  // the station's own line, also when a move has left the board of the window
  const int s = static_cast<int>(station);
  if (s >= 1 && s <= kStations)
    clid_.lstClid.at(BoardOf(s)).SetList(PlaceOnBoard(s), ClidLine(s, rs["archnum"].Text(), rs["clid_string"].Text()));
}

void StationModel::BlankConflicts(const std::function<void()>& afterEach) {
  Recordset& rs = clid_.dtaClid.Recordset();
  for (const ConflictEntry& e : clid_.Conflicts) {
    rs.FindFirst(StationIs(e.station));
    if (rs.NoMatch()) continue;
    rs.Edit();
    rs["archnum"] = Value(PadRight("", kArchWidth));  // the description stays
    rs.Update();
    clid_.Build_List();
    if (afterEach) afterEach();
  }
}

void StationModel::SelectLine() {
  step(s_.journal(), kCmdOk, [&] {
    ListControl& list = clid_.lstClid.at(BoardTab);
    // a move past the board's first station shows a station of the board before: no line here
    list.SetListIndex(ListPos >= 0 && ListPos < list.ListCount() ? ListPos : -1);
  });
}

void StationModel::cmdOk_Click() {
  Journal& j = s_.journal();
  step(j, kCmdOk, [&] { CheckConflicts(); });
  if (ConflictReply == conflict_reply::No) {
    Unload();
    SelectLine();
    return;
  }
  if (ConflictReply != conflict_reply::Yes) {  // Cancel: another number, please
    SelectLine();
    return;
  }
  {
    WriteBatch batch(clid_.WorkCopy());
    step(j, kCmdOk, [&] { SaveStation(); });
    step(j, kCmdOk, [&] { BlankConflicts({}); });
  }
  step(j, kCmdOk, [&] {
    clid_.OldArch = Trim(txtArchnum.Text());
    clid_.OldClid = Trim(txtClid.Text());
    if (!clid_.Conflicts.empty()) clid_.RebuildList = true;
  });
  Unload();
  SelectLine();
}

void StationModel::cmdMove_Click(int index) {
  Journal& j = s_.journal();
  step(j, kCmdMove, [&] {
    bool searched = false;
    if (ArchTyped) {
      CheckConflicts();
      searched = true;
      // a changed description forces the save, and the conflicts found are blanked
      if (ClidTyped) ConflictReply = conflict_reply::Yes;
    } else if (ClidTyped) {
      ConflictReply = conflict_reply::Yes;
    }
    // the reply of an earlier move may stand, but not the stations it found
    if (!searched) clid_.Conflicts.clear();
  });
  step(j, kCmdMove, [&] {
    Recordset& rs = clid_.dtaClid.Recordset();
    if (rs.RecordCount() == 0) return;
    rs.FindFirst(StationIs(static_cast<int64_t>(Val(lblStation.Text()))));
    const Recordset::Bookmark here = rs.GetBookmark();
    if (ConflictReply == conflict_reply::Yes) {
      WriteBatch batch(clid_.WorkCopy());
      SaveStation();
      rs.SetBookmark(here);
      BlankConflicts([&] { rs.SetBookmark(here); });
      clid_.Changed();
    }
    switch (index) {
      case 0:
        rs.FindFirst(StationIs(FirstStation));
        ListPos = 0;
        break;
      case 1:
        // bounded by the table, not the board: from an expansion board's first station
        // the move goes to the board before
        if (rs.AbsolutePosition() > 0) {
          rs.MovePrevious();
          --ListPos;
        }
        break;
      case 2:
        if (rs["clid_station"].Number() < LastStation) {
          rs.MoveNext();
          ++ListPos;
        }
        break;
      case 3:
        rs.FindFirst(StationIs(LastStation));
        ListPos = kBoardStations - 1;
        break;
      default:
        break;
    }
    const std::string station = std::to_string(rs["clid_station"].Number());
    Fill(txtArchnum, Trim(rs["archnum"].Text()));
    Fill(txtClid, Trim(rs["clid_string"].Text()));
    acceptedClid_ = txtClid.Text();
    lblStation.SetText(station);
    ArchTyped = ClidTyped = false;
    caption_ = std::string(kCaption) + station;
    if (SetFocus) SetFocus(txtClid.Name());
  });
  SelectLine();
}

void StationModel::Unload() {
  if (!loaded_) return;
  loaded_ = false;
  if (CloseWindow) CloseWindow();
}

}  // namespace r6183
