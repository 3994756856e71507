// The station numbering commands: the lines of the numbering window, one station set
// through the station window's rules, and an auto-numbering run. Each works on a private
// copy of FILE and writes FILE back only when the change was made.
#include <iostream>
#include <optional>

#include "Commands.h"
#include "PrivateDir.h"
#include "database/DocumentChecks.h"
#include "editors/AutoModel.h"
#include "editors/ClidModel.h"
#include "editors/ConflictModel.h"
#include "editors/StationList.h"
#include "editors/StationModel.h"
#include "protocol/LineText.h"
#include "shell/Session.h"
#include "shell/Text.h"
#include "shell/Utility.h"

namespace r6183::ctl {

namespace {

// The numbering window loaded on a private copy of FILE; nothing when FILE is no document.
class Numbering {
 public:
  Numbering(Session& s, std::string file) : s_(s), file_(std::move(file)), model_(s) {}

  bool Open() {
    try {
      copy_ = PrivateCopy(file_, dir_);
    } catch (const std::exception& e) {
      std::cerr << "r6183ctl: " << e.what() << '\n';
      return false;
    }
    if (!ValidDatabase(s_, copy_)) {
      std::cerr << "r6183ctl: " << file_ << " is not a programming document of this version ('r6183ctl convert' "
                << "brings an older one up to date)\n";
      return false;
    }
    s_.state.WorkDbPath = copy_;
    model_.Form_Load();
    before_ = Lines();
    return true;
  }
  // The station's line selected on its tab, as the operator picks it; false with a
  // message for a station the system does not have.
  bool Select(int station) {
    if (station < 1 || station > LastValidStation(s_.state.SystemConfig)) {
      std::cerr << "r6183ctl: " << StationNotInSystem(station, s_.state.SystemConfig) << '\n';
      return false;
    }
    model_.ShowTab(BoardOf(station));
    model_.lstClid[BoardOf(station)].SetListIndex(PlaceOnBoard(station));
    return true;
  }
  std::vector<std::string> Lines() const {
    std::vector<std::string> out;
    for (const ListControl& l : model_.lstClid) out.insert(out.end(), l.Items().begin(), l.Items().end());
    return out;
  }
  // The lines that differ from the opening, in station order.
  void PrintChanged() const {
    const auto now = Lines();
    for (std::size_t i = 0; i < now.size(); ++i)
      if (now[i] != before_[i]) std::cout << now[i] << '\n';
  }
  // OK of the numbering window, and FILE written when the document changed; the exit code.
  int Commit() {
    model_.cmdOk.Press();
    if (!s_.state.DatabaseDirty) return 0;
    return WriteWhole(copy_, file_) ? 0 : 1;
  }
  ClidModel& model() { return model_; }

 private:
  Session& s_;
  std::string file_;
  PrivateDir dir_;
  std::string copy_;
  ClidModel model_;
  std::vector<std::string> before_;
};

}  // namespace

int Stations(Session& session, const std::string& file) {
  Numbering n(session, file);
  if (!n.Open()) return 2;
  for (const std::string& line : n.Lines()) std::cout << line << '\n';
  return 0;
}

int Station(Session& session, const std::string& file, int station, const std::optional<std::string>& arch,
            const std::optional<std::string>& clid, bool blankConflicts) {
  if (const auto refusal = arch ? ArchnumRefusal(*arch) : std::nullopt) {
    std::cerr << "r6183ctl: --arch: " << *refusal << '\n';
    return 2;
  }
  if (const auto refusal = clid ? ClidRefusal(*clid, session.product.ProductModel) : std::nullopt) {
    std::cerr << "r6183ctl: --clid: " << *refusal << '\n';
    return 2;
  }
  Numbering n(session, file);
  if (!n.Open() || !n.Select(station)) return 2;
  ClidModel& m = n.model();
  bool conflicted = false;
  m.ShowStationWindow = [&](StationModel& st) {
    st.ShowConflictWindow = [&](ConflictModel& c) {
      if (blankConflicts) {
        c.cmdYes.Press();
        return;
      }
      conflicted = true;
      std::cout << c.Label5.Text() << "\nStn\t#\n" << PadLeft(c.lblStation.Text(), 2) << '\t' << c.lblArchnum.Text()
                << "\nConflicts :\n";
      for (const std::string& line : c.lstConflict.Items()) std::cout << line << '\n';
      c.cmdCancel.Press();
    };
    if (arch) st.txtArchnum.SetText(*arch);
    if (clid) st.txtClid.SetText(*clid);
    st.cmdOk.Press();
    if (st.Loaded()) st.cmdCancel.Press();
  };
  m.cmdEdit[BoardOf(station)].Press();
  if (conflicted) {
    m.cmdCancel.Press();
    std::cerr << "r6183ctl: " << file << " is unchanged; --blank-conflicts saves the number and deletes the "
              << "conflicting ones\n";
    return 1;
  }
  std::cout << m.lstClid[BoardOf(station)].List(PlaceOnBoard(station)) << '\n';
  if (!m.Conflicts.empty()) {
    std::cout << "Arch Numbers deleted for conflicting stations:\n";
    for (const ConflictEntry& e : m.Conflicts) std::cout << ConflictLine(e) << '\n';
  }
  return n.Commit();
}

int AutoNumber(Session& session, const std::string& file, int station, const std::string& last) {
  Numbering n(session, file);
  if (!n.Open() || !n.Select(station)) return 2;
  ClidModel& m = n.model();
  m.ShowAutoWindow = [&](AutoModel& a) {
    bool closed = false;
    a.CloseWindow = [&closed] { closed = true; };
    a.txtStopArchnum.SetText(last);
    a.cmdOk.Press();
    if (!closed) a.cmdCancel.Press();  // refused: its message is out
  };
  m.cmdAuto[BoardOf(station)].Press();
  if (!m.ClidChanged) {
    std::cerr << "r6183ctl: " << file << " is unchanged\n";
    return 1;
  }
  n.PrintChanged();
  return n.Commit();
}

}  // namespace r6183::ctl
