#pragma once
// The rules of the conflict window (frmConflict): the station in work, its new number and
// the stations whose numbers conflict with it; the operator saves and blanks them (Yes),
// drops the change (No) or goes back to the number (Cancel, also by closing the window).
#include <functional>
#include <string_view>

#include "editors/Controls.h"
#include "editors/NumberConflicts.h"

namespace r6183 {

// The replies of the conflict window, as the station window keeps them.
namespace conflict_reply {
inline constexpr int Yes = 6;
inline constexpr int No = 7;
inline constexpr int Cancel = 2;
}  // namespace conflict_reply

class ConflictModel {
 public:
  // `reply` is the station window's ConflictReply; it is preset to Cancel.
  explicit ConflictModel(int& reply);
  ConflictModel(const ConflictModel&) = delete;
  ConflictModel& operator=(const ConflictModel&) = delete;

  static constexpr const char* kCaption = "Arch Number Conflicts";

  Control Label5{"Label5", ControlKind::Label, "This Arch Number modification conflicts with existing Arch Numbers."};
  Control Label3{"Label3", ControlKind::Label, "Save this Arch Number and delete Arch Numbers for conflicting stations?"};
  Control lblStation{"lblStation", ControlKind::Label};
  Control lblArchnum{"lblArchnum", ControlKind::Label};
  ListControl lstConflict{"lstConflict"};
  Control cmdYes{"cmdYes", ControlKind::Button, "&Yes"};
  Control cmdNo{"cmdNo", ControlKind::Button, "&No"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};

  // The station in work, its new number, and a line per conflicting station.
  void Fill(std::string_view station, std::string_view archnum, const ConflictList& conflicts);
  int Reply() const { return reply_; }

  // Set by whoever shows the window: it has unloaded.
  std::function<void()> CloseWindow;

 private:
  void Answer(int reply);
  int& reply_;
};

}  // namespace r6183
