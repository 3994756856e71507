#include "options/ClockModel.h"

#include "options/ClockRules.h"
#include "shell/Conversions.h"
#include "shell/ErrorNumbers.h"
#include "shell/MainMenu.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmClock";
constexpr Where kVarsA{kModule, "GetClockAVars"};
constexpr Where kVarsB{kModule, "GetClockBVars"};
constexpr Where kListA{kModule, "LoadClockA"};
constexpr Where kListB{kModule, "LoadClockBListBox"};
constexpr Where kClickA{kModule, "cbClockA"};
constexpr Where kDropA{kModule, "cbClockADropDown"};
constexpr Where kTextClickB{kModule, "cbClockbClick"};
constexpr Where kDropB{kModule, "cbClockBDropDown"};
constexpr Where kData{kModule, "dtaClock"};
constexpr Where kLoad{kModule, "Load"};
constexpr Where kUnload{kModule, "Unload"};
constexpr Where kTxtBcd{kModule, "txtBCD"};
constexpr Where kOptBcd{kModule, "BCDType"};
constexpr Where kOptDir{kModule, "optDir"};
constexpr Where kTxtA{kModule, "txtClockA"};
constexpr Where kTxtB{kModule, "txtClockB"};
constexpr Where kTxtDir{kModule, "txtDir"};

int OptionIndex(const Control& group) { return group.Value() - 1; }
}  // namespace

ClockModel::ClockModel(Session& session) : s_(session) {
  for (Control* c : {&txtclockA, &txtClockB, &txtDirection, &txtBCD_Type}) c->SetVisible(false);

  txtclockA.OnChange = [this] {
    step(s_.journal(), kTxtA, [&] {
      cbClockA.SetListIndex(ClockListIndex(txtclockA.Text()));
      cbClockA_Click();
    });
  };
  txtClockB.OnChange = [this] {
    step(s_.journal(), kTxtB, [&] {
      cbClockB.SetListIndex(ClockListIndex(txtClockB.Text()));
      cbClockB_Click();
    });
  };
  txtBCD_Type.OnChange = [this] {
    step(s_.journal(), kTxtBcd, [&] {
      const int i = static_cast<int>(Val(txtBCD_Type.Text()));
      if (i < 0 || i >= kBcdTypes) throw RuntimeError(err::SubscriptOutOfRange);
      optBCDType.SetValue(i + 1);
    });
  };
  txtDirection.OnChange = [this] {
    step(s_.journal(), kTxtDir, [&] {
      const int i = static_cast<int>(Val(txtDirection.Text()));
      if (i < 0 || i >= kDirections) throw RuntimeError(err::SubscriptOutOfRange);
      optDirection.SetValue(i + 1);
    });
  };
  optBCDType.OnChange = [this] {
    MarkChange(kOptBcd);
    step(s_.journal(), kOptBcd, [&] {
      if (OptionIndex(optBCDType) >= 0) txtBCD_Type.SetText(std::to_string(OptionIndex(optBCDType)));
    });
  };
  optDirection.OnChange = [this] {
    MarkChange(kOptDir);
    step(s_.journal(), kOptDir, [&] {
      if (OptionIndex(optDirection) >= 0) txtDirection.SetText(std::to_string(OptionIndex(optDirection)));
    });
  };

  cmdOk.OnClick = [this] {
    step(s_.journal(), kVarsA, [&] {
      if (OptionsChanged) s_.state.DatabaseDirty = 1;
      OptionsAccepted = true;
    });
    Close();
  };
  cmdCancel.OnClick = [this] { Close(); };
  dtaClock.RecordSource = "ClockDef";
  dtaClock.Validate = [this](int& action, bool& save) {
    if (action == data_action::Unload && !OptionsAccepted) save = false;
  };
  dtaClock.Bind(txtclockA, "ClockA");
  dtaClock.Bind(txtClockB, "ClockB");
  dtaClock.Bind(txtDirection, "Direction");
  dtaClock.Bind(txtBCD_Type, "BCD_Type");
}

void ClockModel::LoadList(ListControl& list, const Where& where) {
  step(s_.journal(), where, [&] {
    list.Clear();
    for (const ClockType& t : LoadClockCatalogue(s_.state.WorkDbPath)) list.AddItem(t.name);
  });
}

void ClockModel::GetClockVars(const std::string& name, Control& label, const Where& where) {
  step(s_.journal(), where, [&] {
    if (const auto corrected = LookUpCorrection(s_.state.WorkDbPath, name)) label.SetText(*corrected);
  });
}

void ClockModel::MarkChange(const Where& where) {
  step(s_.journal(), where, [&] {
    if (!ClockFormLoaded || filling_) return;
    OptionsChanged = true;
    s_.menu.SetEnabled("mnuFileSave", true);
  });
}

void ClockModel::cbClockA_Click() {
  step(s_.journal(), kClickA, [&] {
    GetClockVars(cbClockA.List(cbClockA.ListIndex()), lblCorrection, kVarsA);
    txtclockA.SetText(ClockPositionText(cbClockA.ListIndex()));
  });
}

void ClockModel::cbClockB_Click() {
  step(s_.journal(), kTextClickB, [&] {
    GetClockVars(cbClockB.List(cbClockB.ListIndex()), lblCorrectionB, kVarsB);
    txtClockB.SetText(ClockPositionText(cbClockB.ListIndex()));
  });
}

void ClockModel::cbClockA_DropDown() { MarkChange(kDropA); }
void ClockModel::cbClockB_DropDown() { MarkChange(kDropB); }

void ClockModel::cbClockA_LostFocus() {
  step(s_.journal(), kVarsA, [&] { GetClockVars(cbClockA.List(cbClockA.ListIndex()), lblCorrection, kVarsA); });
}

void ClockModel::cbClockB_LostFocus() {
  step(s_.journal(), kVarsA, [&] { GetClockVars(cbClockB.List(cbClockB.ListIndex()), lblCorrectionB, kVarsB); });
}

void ClockModel::PickClockA(int index) {
  step(s_.journal(), kClickA, [&] { cbClockA.SetListIndex(index); });
  cbClockA_Click();
}

void ClockModel::PickClockB(int index) {
  step(s_.journal(), kTextClickB, [&] { cbClockB.SetListIndex(index); });
  cbClockB_Click();
}

void ClockModel::ShowHidden() {
  // a field equal to what its hidden control held fires no change (a window opened
  // again): the lists and groups follow anyway
  Control* hidden[] = {&txtclockA, &txtClockB, &txtDirection, &txtBCD_Type};
  bool changed[std::size(hidden)];
  for (std::size_t i = 0; i < std::size(hidden); ++i) changed[i] = hidden[i]->DataChanged;
  for (Control* c : hidden)
    if (c->OnChange) c->OnChange();
  // "03" shown as line 3 reads back as "3": still the stored value
  for (std::size_t i = 0; i < std::size(hidden); ++i) hidden[i]->DataChanged = changed[i];
}

void ClockModel::Form_Load() {
  ClockFormLoaded = false;
  LoadList(cbClockA, kListA);
  LoadList(cbClockB, kListB);
  OptionsAccepted = false;
  OptionsChanged = false;
  step(s_.journal(), kLoad, [&] {
    dtaClock.DatabaseName = s_.state.WorkDbPath;
    dtaClock.Refresh();
  });
  ShowHidden();
  ClockFormLoaded = true;
  loaded_ = true;
}

void ClockModel::Close() {
  if (CloseWindow) CloseWindow();
  else Form_Unload();
}

void ClockModel::Form_Unload() {
  if (!loaded_) return;
  loaded_ = false;
  if (!OptionsAccepted) {
    filling_ = true;
    step(s_.journal(), kUnload, [&] { dtaClock.UpdateControls(); });
    ShowHidden();
    filling_ = false;
  }
  OptionsChanged = false;
  step(s_.journal(), kData, [&] { dtaClock.Unload(); });
  UpdateFileSaveOpt(s_);
}

void mnuClocks_Click(Session& session) { session.windows().ShowModal("frmClock"); }

}  // namespace r6183
