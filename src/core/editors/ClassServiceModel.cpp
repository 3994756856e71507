#include "editors/ClassServiceModel.h"

#include "editors/StationList.h"
#include "shell/Conversions.h"
#include "shell/MainMenu.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmClass";
constexpr Where kCombo{kModule, "cboServGroup"};
constexpr Where kOK{kModule, "cmdOK"};
constexpr Where kLoad{kModule, "Load"};
constexpr Where kUnload{kModule, "UNLOAD"};
}  // namespace

ClassServiceModel::ClassServiceModel(Session& session) : s_(session) {
  for (int g = 1; g <= 16; ++g) lblgrp.emplace_back(ArrayName("lblgrp", g - 1), ControlKind::Label, std::to_string(g));
  for (int g = 1; g <= 16; ++g)
    lblgrp.emplace_back(ArrayName("lblgrp", g + 15), ControlKind::Label,
                        std::to_string(6 * (g - 1) + 1) + " - " + std::to_string(6 * g));
  for (int g = 1; g <= 16; ++g) {
    ListControl& cbo = cboServGroup.emplace_back(ArrayName("cboServGroup", g - 1));
    for (const char* level : kLevels) cbo.AddItem(level);
    cbo.OnClick = [this] {
      step(s_.journal(), kCombo, [&] {
        ServiceChanged = true;
        s_.menu.SetEnabled("mnuFileSave", true);
      });
    };
  }
  cmdCancel.SetVisible(false);
  cmdOk.OnClick = [this] { cmdOk_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
}

ClassServiceModel::~ClassServiceModel() = default;

void ClassServiceModel::Form_Load() {
  const int present = LastValidGroup(s_.state.SystemConfig);
  ServiceChanged = false;
  step(s_.journal(), kLoad, [&] {
    db_ = std::make_unique<Database>(Database::Open(s_.state.WorkDbPath));
    rs_ = std::make_unique<Recordset>(db_->OpenRecordset("ClassService"));
    loaded_ = true;
    for (rs_->MoveFirst(); !rs_->IsEOF(); rs_->MoveNext()) {
      const int group = static_cast<int>(NumberOf((*rs_)["Group"].GetValue()));
      if (group < 1 || group > 16) continue;
      ListControl& cbo = Combo(group);
      if (group <= present) {
        cbo.SetEnabled(true);
        const int service = static_cast<int>(NumberOf((*rs_)["Service"].GetValue()));
        // a true of older files
        cbo.SetListIndex(service == -1 ? 1 : service);
      } else {
        cbo.SetEnabled(false);
        cbo.SetListIndex(-1);
      }
    }
  });
}

void ClassServiceModel::cmdOk_Click() {
  step(s_.journal(), kOK, [&] {
    if (ServiceChanged) s_.state.DatabaseDirty = 1;
  });
  Close();
}

void ClassServiceModel::cmdCancel_Click() { Close(); }

void ClassServiceModel::Close() {
  if (CloseWindow) CloseWindow();
  else Form_Unload();
}

void ClassServiceModel::Form_Unload() {
  if (!loaded_) return;
  loaded_ = false;
  const int present = LastValidGroup(s_.state.SystemConfig);
  step(s_.journal(), kUnload, [&] {
    Recordset& rs = *rs_;
    for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) {
      const int group = static_cast<int>(NumberOf(rs["Group"].GetValue()));
      if (group > present) break;
      rs.Edit();
      rs["Service"] = Value(Combo(group).ListIndex());
      rs.Update();
    }
  });
  step(s_.journal(), kUnload, [&] {
    rs_->Close();
    db_->Close();
  });
  rs_.reset();
  db_.reset();
  if (ServiceChanged) {
    UpdateFileSaveOpt(s_);
    ServiceChanged = false;
  }
}

}  // namespace r6183
