#include "editors/BgmModel.h"

#include "editors/StationList.h"
#include "shell/MainMenu.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmBGM";
constexpr Where kChk[3] = {{kModule, "chkPageGroup"}, {kModule, "chkCTPageGroup"}, {kModule, "chkEPageGroup"}};
constexpr Where kInclude[3] = {{kModule, "cmdInclude"}, {kModule, "cmdCTInclude"}, {kModule, "cmdEInclude"}};
constexpr Where kRemove[3] = {{kModule, "cmdRemove"}, {kModule, "cmdCTRemove"}, {kModule, "cmdERemove"}};
constexpr Where kOK{kModule, "cmdOK"};
constexpr Where kData{kModule, "dtaBGM"};
constexpr Where kLoad{kModule, "Load"};
}  // namespace

BgmModel::Set::Set(const char* box, const char* include, const char* remove, const char* label, const char* frame)
    : lbl(label, ControlKind::Label),
      fra(frame, ControlKind::Frame, "Page Groups"),
      cmdInclude(include, ControlKind::Button, "Include All"),
      cmdRemove(remove, ControlKind::Button, "Remove All") {
  for (int i = 0; i < 16; ++i) chk.emplace_back(ArrayName(box, i), ControlKind::CheckBox, " " + std::to_string(i + 1));
}

BgmModel::BgmModel(Session& session)
    : sets{Set("chkPageGroup", "cmdInclude", "cmdRemove", "Label1", "Frame1"),
           Set("chkCTPageGroup", "cmdCTInclude", "cmdCTRemove", "Label2", "Frame2"),
           Set("chkEPageGroup", "cmdEInclude", "cmdERemove", "Label3", "Frame3")},
      s_(session) {
  for (int src = 0; src < 3; ++src) {
    Set& set = sets[static_cast<std::size_t>(src)];
    set.lbl.SetText(kLabels[src]);
    set.cmdInclude.OnClick = [this, src] { Include(src); };
    set.cmdRemove.OnClick = [this, src] { Remove(src); };
    for (int g = 1; g <= 16; ++g) {
      Control& box = Box(src, g);
      Data(src).Bind(box, "PageGroup" + std::to_string(g));
      box.OnChange = [this, src, &box] {
        step(s_.journal(), kChk[src], [&] {
          // the data control filling the box is no change
          if (filling_ || !box.DataChanged) return;
          BgmChanged = true;
          s_.menu.SetEnabled("mnuFileSave", true);
        });
      };
    }
  }
  // background music is written only after OK; the tone sets have no such check
  dtaBgm.Validate = [this](int& action, bool& save) {
    if (action == data_action::Unload && !BgmAccepted) save = false;
  };
  cmdOK.OnClick = [this] { cmdOK_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
}

void BgmModel::Form_Load() {
  BgmChanged = false;
  BgmAccepted = false;
  unloaded_ = false;
  const int present = LastValidGroup(s_.state.SystemConfig);
  step(s_.journal(), kLoad, [&] {
    for (int src = 0; src < 3; ++src)
      for (int g = 1; g <= 16; ++g) Box(src, g).SetEnabled(g <= present);
  });
  for (int src = 0; src < 3; ++src)
    step(s_.journal(), kLoad, [&] {
      DataControl& d = Data(src);
      d.DatabaseName = s_.state.WorkDbPath;
      d.RecordSource = kTables[src];
      filling_ = true;
      d.Refresh();
    });
  filling_ = false;
}

void BgmModel::Include(int source) {
  step(s_.journal(), kInclude[source], [&] {
    for (int g = 1; g <= 16; ++g)
      if (Box(source, g).Enabled()) Box(source, g).SetValue(1);
  });
}

void BgmModel::Remove(int source) {
  step(s_.journal(), kRemove[source], [&] {
    for (int g = 1; g <= 16; ++g) Box(source, g).SetValue(0);
  });
}

void BgmModel::cmdOK_Click() {
  step(s_.journal(), kOK, [&] {
    if (BgmChanged) s_.state.DatabaseDirty = 1;
    BgmAccepted = true;
  });
  Close();
}

void BgmModel::cmdCancel_Click() { Close(); }

void BgmModel::Close() {
  if (CloseWindow) CloseWindow();
  else Form_Unload();
}

void BgmModel::Form_Unload() {
  if (unloaded_) return;
  unloaded_ = true;
  step(s_.journal(), kData, [&] { dtaBgm.Unload(); });
  quietly([&] { DataCT.Unload(); });
  quietly([&] { DataE.Unload(); });
  UpdateFileSaveOpt(s_);
}

}  // namespace r6183
