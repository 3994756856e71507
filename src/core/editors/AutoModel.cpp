#include "editors/AutoModel.h"

#include "editors/ClidModel.h"
#include "editors/StationList.h"
#include "shell/Conversions.h"
#include "shell/Session.h"
#include "shell/Text.h"
#include "shell/Utility.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmAuto";
constexpr Where kExceeds{kModule, "Exceeds_Max_Stations"};
constexpr Where kInRange{kModule, "Conflicts_In_Range"};
constexpr Where kCmdOk{kModule, "cmdOK"};
constexpr Where kTxtStop{kModule, "txtStopArchNum"};

// Digits only, at most four: what a paste brings in is held to what typing allows.
std::string DigitsOnly(const std::string& text) {
  std::string out;
  for (char c : text)
    if (c >= '0' && c <= '9' && out.size() < kArchWidth) out += c;
  return out;
}
}  // namespace

AutoModel::AutoModel(Session& session, ClidModel& clid) : s_(session), clid_(clid) {
  txtStopArchnum.OnKeyPress = [this](int& key) { step(s_.journal(), kTxtStop, [&] { Allow_digits_only(key); }); };
  txtStopArchnum.OnChange = [this] {
    if (filtering_) return;
    const std::string kept = DigitsOnly(txtStopArchnum.Text());
    if (kept == txtStopArchnum.Text()) return;
    filtering_ = true;
    txtStopArchnum.SetText(kept);
    filtering_ = false;
  };
  txtStopArchnum.OnGotFocus = [this] {
    if (SelectAll) SelectAll(txtStopArchnum.Name());
  };
  cmdOk.OnClick = [this] { cmdOk_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
}

void AutoModel::Start(const std::string& station, const std::string& archnum) {
  lblStartStation.SetText(station);
  lblStartArchnum.SetText(archnum);
  txtStopArchnum.SetText(archnum);
}

bool AutoModel::Exceeds_Max_Stations() {
  bool exceeds = false;
  step(s_.journal(), kExceeds, [&] {
    const double last = Val(txtStopArchnum.Text()) - Val(lblStartArchnum.Text()) + Val(lblStartStation.Text());
    last_ = CInt(Value(last));
    exceeds = last_ > LastValidStation(s_.state.SystemConfig);
  });
  return exceeds;
}

bool AutoModel::Conflicts_In_Range() {
  bool conflicts = false;
  step(s_.journal(), kInRange, [&] {
    if (CharCount(Trim(lblStartArchnum.Text())) >= 3) return;
    const double start = Val(lblStartArchnum.Text());
    const double stop = Val(txtStopArchnum.Text());
    conflicts = stop - start >= start * 10 - start;
  });
  return conflicts;
}

void AutoModel::cmdOk_Click() {
  if (Exceeds_Max_Stations()) {
    Refuse("The auto numbering range exceeds the last valid station.");
  } else if (Val(txtStopArchnum.Text()) <= Val(lblStartArchnum.Text())) {
    Refuse("Last Arch Number must be greater than starting arch number.");
  } else if (Conflicts_In_Range()) {
    Refuse("Cannot perform auto numbering.\r\n\r\nArchitectural conflicts will occur.");
  } else {
    step(s_.journal(), kCmdOk, [&] { clid_.StopStation = std::to_string(last_); });
    Unload();
  }
}

void AutoModel::Refuse(const std::string& text) {
  step(s_.journal(), kCmdOk, [&] {
    s_.prompter().Message(text, Buttons::Ok, Icon::Exclamation, kTitle);
    txtStopArchnum.SetText(lblStartArchnum.Text());
    if (SelectAll) SelectAll(txtStopArchnum.Name());
    if (SetFocus) SetFocus(txtStopArchnum.Name());
  });
}

void AutoModel::cmdCancel_Click() {
  clid_.StopStation.clear();
  Unload();
}

void AutoModel::Unload() {
  if (CloseWindow) CloseWindow();
}

}  // namespace r6183
