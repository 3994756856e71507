#include "editors/PageModel.h"

#include "editors/StationList.h"
#include "shell/MainMenu.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmPage";
constexpr Where kChk{kModule, "chkPageGroup"};
constexpr Where kInclude{kModule, "cmdInclude"};
constexpr Where kOK{kModule, "cmdOK"};
constexpr Where kRemove{kModule, "cmdRemove"};
constexpr Where kLoad{kModule, "Load"};
constexpr Where kUnload{kModule, "Unload"};
constexpr Where kTab{kModule, "tabPageGroup"};
}  // namespace

PageModel::PageModel(Session& session) : s_(session) {
  for (int t = 0; t < 4; ++t) {
    fraPageGroup.emplace_back(ArrayName("fraPageGroup", t), ControlKind::Frame, "&Page Groups");
    cmdInclude.emplace_back(ArrayName("cmdInclude", t), ControlKind::Button, "&Include All Groups");
    cmdInclude.back().OnClick = [this, t] { cmdInclude_Click(t); };
    cmdRemove.emplace_back(ArrayName("cmdRemove", t), ControlKind::Button, "&Remove All Groups");
    cmdRemove.back().OnClick = [this, t] { cmdRemove_Click(t); };
    for (int i = 0; i < 16; ++i) {
      chkPageGroup.emplace_back(ArrayName("chkPageGroup", t * 16 + i), ControlKind::CheckBox, " " + std::to_string(i + 1));
      chkPageGroup.back().OnChange = [this] {
        if (!PageLoaded) return;
        step(s_.journal(), kChk, [&] {
          PageChanged = true;
          s_.menu.SetEnabled("mnuFileSave", true);
        });
      };
    }
  }
  cmdOK.OnClick = [this] { cmdOK_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
}

void PageModel::Form_Load() {
  const int present = LastValidGroup(s_.state.SystemConfig);
  PageLoaded = false;
  PageChanged = false;
  step(s_.journal(), kLoad, [&] {
    for (int t = 0; t < 4; ++t)
      for (int i = 0; i < 16; ++i) Box(t, i + 1).SetEnabled(i < present);
  });
  step(s_.journal(), kLoad, [&] {
    dtaPageGroup.DatabaseName = s_.state.WorkDbPath;
    dtaPageGroup.RecordSource = "PageGroup";
    dtaPageGroup.Refresh();
    Recordset& rs = dtaPageGroup.Recordset();
    rs.MoveFirst();
    for (int t = 0; t < 4 && !rs.IsEOF(); ++t, rs.MoveNext())
      for (int i = 0; i < 16; ++i) Box(t, i + 1).SetValue(rs.Fields(i + 1).Bool() ? 1 : 0);
  });
  PageLoaded = true;
  // only the buttons of the tab in view act
  for (int t = 0; t < 4; ++t) {
    cmdInclude[static_cast<std::size_t>(t)].SetEnabled(t == tab_);
    cmdRemove[static_cast<std::size_t>(t)].SetEnabled(t == tab_);
  }
  // the focus leaves the tab strip
  tabPageGroup_Click(tab_);
}

void PageModel::tabPageGroup_Click(int t) {
  step(s_.journal(), kTab, [&] {
    const int previous = tab_;
    tab_ = std::clamp(t, 0, 3);
    cmdInclude[static_cast<std::size_t>(previous)].SetEnabled(false);
    cmdRemove[static_cast<std::size_t>(previous)].SetEnabled(false);
    cmdInclude[static_cast<std::size_t>(tab_)].SetEnabled(true);
    cmdRemove[static_cast<std::size_t>(tab_)].SetEnabled(true);
    if (SetFocus) SetFocus(Box(tab_, 1).Name());
  });
}

void PageModel::cmdInclude_Click(int t) {
  step(s_.journal(), kInclude, [&] {
    for (int g = 1; g <= 16; ++g)
      if (Box(t, g).Enabled()) Box(t, g).SetValue(1);
  });
}

void PageModel::cmdRemove_Click(int t) {
  step(s_.journal(), kRemove, [&] {
    for (int g = 1; g <= 16; ++g) Box(t, g).SetValue(0);
  });
}

void PageModel::cmdOK_Click() {
  if (PageChanged)
    step(s_.journal(), kOK, [&] {
      s_.state.DatabaseDirty = 1;
      dtaPageGroup.Refresh();
      Recordset& rs = dtaPageGroup.Recordset();
      rs.MoveFirst();
      for (int t = 0; t < 4; ++t) {
        rs.Edit();
        for (int i = 0; i < 16; ++i) rs.Fields(i + 1) = Value(Box(t, i + 1).Value() == 1);
        rs.Update();
        rs.MoveNext();
      }
    });
  Close();
}

void PageModel::cmdCancel_Click() { Close(); }

void PageModel::Close() {
  if (CloseWindow) CloseWindow();
  else Form_Unload();
}

void PageModel::Form_Unload() {
  step(s_.journal(), kUnload, [&] {
    PageChanged = false;
    dtaPageGroup.Close();
    UpdateFileSaveOpt(s_);
  });
}

}  // namespace r6183
