#include "options/DipModel.h"

#include "shell/Conversions.h"
#include "shell/ErrorNumbers.h"
#include "shell/MainMenu.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmDip";
constexpr Where kOk{kModule, "cmdOk"};
constexpr Where kData{kModule, "dtaDip"};
constexpr Where kLoad{kModule, "Load"};
constexpr Where kUnload{kModule, "Unload"};
constexpr Where kRing{kModule, "lblRingPattern"};
constexpr Where kPriority{kModule, "optPriority"};
constexpr Where kRingOption{kModule, "optRingPattern"};
constexpr Where kToneSource{kModule, "optToneSource"};
// the routines of the check boxes report under their own names
constexpr Where kCheck{kModule, "chk"};

// The option index of an option group, -1 when none is set.
int OptionIndex(const Control& group) { return group.Value() - 1; }
}  // namespace

DipModel::DipModel(Session& session) : s_(session) {
  for (int i = 0; i < 4; ++i) {
    chkLowStation.emplace_back(ArrayName("chkLowStation", i), ControlKind::CheckBox,
                               " Station " + std::to_string(21 + i));
  }
  for (Control* c : {&chkLowStation[0], &chkLowStation[1], &chkLowStation[2], &chkLowStation[3], &chkQueueTone,
                     &chkDialTone, &chkHfAlertTone, &chkPageAlertTone, &chkRingbackTone, &chkPrivacyTone,
                     &chkOverride})
    c->OnChange = [this, c] { step(s_.journal(), kCheck, [&] { Track(*c); }); };
  for (Control* c : {&chkPriorityGlobal, &chkExtToneSource, &lblRingPattern}) c->SetVisible(false);

  optPriority.OnChange = [this] {
    step(s_.journal(), kPriority, [&] {
      if (OptionIndex(optPriority) >= 0) chkPriorityGlobal.SetValue(OptionIndex(optPriority));
    });
  };
  optToneSource.OnChange = [this] {
    step(s_.journal(), kToneSource, [&] {
      if (OptionIndex(optToneSource) >= 0) chkExtToneSource.SetValue(OptionIndex(optToneSource));
    });
  };
  optRingPattern.OnChange = [this] {
    step(s_.journal(), kRingOption, [&] {
      if (OptionIndex(optRingPattern) >= 0) lblRingPattern.SetText(std::to_string(OptionIndex(optRingPattern)));
    });
  };
  chkPriorityGlobal.OnChange = [this] {
    step(s_.journal(), kPriority, [&] {
      optPriority.SetValue(chkPriorityGlobal.Value() + 1);
      Track(chkPriorityGlobal);
    });
  };
  chkExtToneSource.OnChange = [this] {
    step(s_.journal(), kToneSource, [&] {
      optToneSource.SetValue(chkExtToneSource.Value() + 1);
      Track(chkExtToneSource);
    });
  };
  lblRingPattern.OnChange = [this] {
    step(s_.journal(), kRing, [&] {
      const int pattern = CInt(Value(lblRingPattern.Text()));
      if (pattern < 0 || pattern > 2) throw RuntimeError(err::SubscriptOutOfRange);
      optRingPattern.SetValue(pattern + 1);
      Track(lblRingPattern);
    });
  };

  cmdOk.OnClick = [this] {
    step(s_.journal(), kOk, [&] {
      if (OptionsChanged) s_.state.DatabaseDirty = 1;
      OptionsAccepted = true;
    });
    Close();
  };
  cmdCancel.OnClick = [this] { Close(); };
  cmdDipswitch.OnClick = [this] {
    if (ShowChart) ShowChart();
  };
  dtaDip.RecordSource = "DipSwitch";
  dtaDip.Validate = [this](int& action, bool& save) {
    if (action == data_action::Unload && !OptionsAccepted) save = false;
  };
  dtaDip.Bind(chkLowStation[0], "LowStn21");
  dtaDip.Bind(chkLowStation[1], "LowStn22");
  dtaDip.Bind(chkLowStation[2], "LowStn23");
  dtaDip.Bind(chkLowStation[3], "LowStn24");
  dtaDip.Bind(chkQueueTone, "QueueTone");
  dtaDip.Bind(chkDialTone, "DialTone");
  dtaDip.Bind(chkHfAlertTone, "HfAlertTone");
  dtaDip.Bind(chkPageAlertTone, "PageAlertTone");
  dtaDip.Bind(chkRingbackTone, "RingbackTone");
  dtaDip.Bind(chkPrivacyTone, "PrivacyTone");
  dtaDip.Bind(chkOverride, "PriorityOverride");
  dtaDip.Bind(chkPriorityGlobal, "PriorityGlobal");
  dtaDip.Bind(chkExtToneSource, "ExtToneSource");
  dtaDip.Bind(lblRingPattern, "RingPattern");
}

void DipModel::Track(const Control& c) {
  // a change that only shows the row as loaded marks nothing
  if (filling_ || !c.DataChanged) return;
  OptionsChanged = true;
  s_.menu.SetEnabled("mnuFileSave", true);
}

void DipModel::ShowHidden() {
  // a field equal to what its hidden control held fires no change: the groups follow anyway
  filling_ = true;
  for (Control* c : {&chkPriorityGlobal, &chkExtToneSource, &lblRingPattern})
    if (c->OnChange) c->OnChange();
  filling_ = false;
}

void DipModel::Form_Load() {
  OptionsAccepted = false;
  OptionsChanged = false;
  filling_ = true;
  step(s_.journal(), kLoad, [&] {
    dtaDip.DatabaseName = s_.state.WorkDbPath;
    dtaDip.Refresh();
  });
  ShowHidden();
  filling_ = false;
  loaded_ = true;
}

void DipModel::Close() {
  if (CloseWindow) CloseWindow();
  else Form_Unload();
}

void DipModel::Form_Unload() {
  if (!loaded_) return;
  loaded_ = false;
  if (!OptionsAccepted) {
    filling_ = true;
    step(s_.journal(), kUnload, [&] { dtaDip.UpdateControls(); });
    filling_ = false;
    ShowHidden();
  }
  OptionsChanged = false;
  step(s_.journal(), kData, [&] { dtaDip.Unload(); });
  UpdateFileSaveOpt(s_);
}

DipValues DipModel::Values() const {
  DipValues v;
  for (std::size_t i = 0; i < 4; ++i) v.lowStation[i] = chkLowStation[i].Value();
  v.queueTone = chkQueueTone.Value();
  v.dialTone = chkDialTone.Value();
  v.hfAlertTone = chkHfAlertTone.Value();
  v.pageAlertTone = chkPageAlertTone.Value();
  v.ringbackTone = chkRingbackTone.Value();
  v.privacyTone = chkPrivacyTone.Value();
  v.priorityGlobal = chkPriorityGlobal.Value();
  v.priorityOverride = chkOverride.Value();
  v.ringPattern = lblRingPattern.Text();
  v.extToneSource = chkExtToneSource.Value();
  return v;
}

void mnuSysOpt_Click(Session& session) {
  if (WindowOpenBlocked(session)) return;
  session.windows().ShowModal("frmDip");
}

}  // namespace r6183
