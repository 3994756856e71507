#include "editors/ConfigModel.h"

#include "database/DocumentChecks.h"
#include "editors/BoardConfig.h"
#include "shell/MainMenu.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "frmConfig";
constexpr Where kLoad{kModule, "Load"};
constexpr Where kOK{kModule, "cmdOK"};
constexpr Where kDefaults{kModule, "UpdateDefaults"};

constexpr const char* kBoardTones[] = {
    "",
    " SET PageGroup5 = true, pageGroup6 = true, PageGroup7 = true, pageGroup8 = true",
    " SET PageGroup9 = true, pageGroup10 = true, pageGroup11 = true, pageGroup12 = true",
    " SET PageGroup13 = true, pageGroup14 = true, pageGroup15 = true, pageGroup16 = true",
};
}  // namespace

const char* const ConfigModel::kOptions[4] = {" Main Board", " Main Board + Expansion 1",
                                              " Main Board + Expansion 1, 2", " Main Board + Expansion 1, 2, 3"};

const char* const kShrinkQuestion =
    "This configuration change requires removing board(s) from the system.\n\n"
    "User programming for these boards will be cleared.  Continue update configuration?";

std::string ConfigQuestion(bool uncommitted) {
  return std::string("Cannot open the System Configuration window until all open windows are closed.\n\n"
                     "(Changing the configuration affects available programming options.)\n\n") +
         (uncommitted ? "You will be asked to accept or reject changes to open windows.  Continue?" : "Continue?");
}

ConfigModel::ConfigModel(Session& session) : s_(session) {
  cmdOK.OnClick = [this] { cmdOK_Click(); };
  cmdCancel.OnClick = [this] { Unload(); };
  cmdDetails.OnClick = [this] {
    if (ShowDetails) ShowDetails();
  };
}

void ConfigModel::Form_Load() {
  ProcessState& st = s_.state;
  step(s_.journal(), kLoad, [&] {
    // the clock board is not offered
    cbClock.SetVisible(false);
    cbClock.SetValue(0);
    Frame1.SetVisible(false);
    optConfig.SetValue(st.SystemConfig + 1);
    OldConfig = st.SystemConfig;
    OldClock = st.ClocksEnabled != 0;
    dtaConfig.DatabaseName = st.WorkDbPath;
    dtaClock.DatabaseName = st.WorkDbPath;
    dtaConfig.RecordSource = "Config";
    dtaClock.RecordSource = "ClockDef";
  });
}

void ConfigModel::cmdOK_Click() {
  ProcessState& st = s_.state;
  Journal& j = s_.journal();
  step(j, kOK, [&] {
    st.SystemConfig = static_cast<uint8_t>(std::max(optConfig.Value() - 1, 0));
    st.ClocksEnabled = cbClock.Value() != 0 ? 1 : 0;
  });
  if (OldConfig > st.SystemConfig &&
      s_.prompter().Message(kShrinkQuestion, Buttons::YesNo, Icon::Exclamation, ConfigModel::kCaption) == Answer::No) {
    st.SystemConfig = static_cast<uint8_t>(OldConfig);
    st.ClocksEnabled = OldClock ? 1 : 0;
    cmdCancel.Press();
    return;
  }
  if (st.SystemConfig != OldConfig)
    step(j, kOK, [&] {
      dtaConfig.Refresh();
      Recordset& rs = dtaConfig.Recordset();
      rs.Edit();
      rs["System_Config"] = Value(static_cast<int>(st.SystemConfig));
      rs.Update();
      st.DatabaseDirty = 1;
      s_.menu.SetEnabled("mnuFileSave", true);
    });
  if ((st.ClocksEnabled != 0) != OldClock)
    step(j, kOK, [&] {
      dtaClock.Refresh();
      Recordset& rs = dtaClock.Recordset();
      rs.Edit();
      rs["ClockEnabled"] = Value(st.ClocksEnabled != 0);
      rs.Update();
      s_.menu.SetEnabled("mnuClocks", st.ClocksEnabled != 0);
    });
  if (OldConfig > st.SystemConfig) {
    Validate_Config(s_);
    step(j, kOK, [&] {
      Database db = Database::Open(st.WorkDbPath);
      GetTotalEvents(s_, db);
      db.Close();
    });
  }
  if (OldConfig < st.SystemConfig) UpdateDefaults(s_, OldConfig + 1, st.SystemConfig);
  Unload();
}

void ConfigModel::Unload() {
  quietly([&] { dtaConfig.Close(); });
  quietly([&] { dtaClock.Close(); });
  if (CloseWindow) CloseWindow();
}

void UpdateDefaults(Session& s, int first, int last) {
  Journal& j = s.journal();
  Database db;
  if (!step(j, kDefaults, [&] { db = Database::Open(s.state.WorkDbPath); })) return;
  for (const char* table : {"EmergencyPG", "TonesPG"})
    for (int b = std::max(first, 1); b <= std::min(last, 3); ++b)
      step(j, kDefaults, [&] { db.Execute(std::string("UPDATE ") + table + kBoardTones[b]); });
  step(j, kDefaults, [&] { db.Execute(kDeleteOrphanEvents); });
  db.Close();
}

void mnuConfig_Click(Session& s) {
  FormsRegistry& forms = s.forms;
  const bool alone = forms.Count() == 1 || forms.CaptionAt(2, 1, "Programming Windows");
  if (!alone) {
    if (WindowOpenBlocked(s)) return;
    bool uncommitted = false;
    for (int i = forms.Count() - 1; i >= 1 && !uncommitted; --i)
      quietly([&] { uncommitted = forms.At(i).UncommittedChanges().value_or(false); });
    if (s.Message(ConfigQuestion(uncommitted), Buttons::YesNo, Icon::Exclamation) == Answer::No) return;
  }
  SaveOpenForms(s, ConfigModel::kCaption);
  if (s.state.SaveCancelled != 0) return;
  s.windows().ShowModal("frmConfig");
  // the quick menu shows what the new configuration offers
  if (s.menu.Checked("mnuSwitchBoard")) s.windows().Show("frmSwitchBoard");
  s.windows().Show("frmMenu");
}

}  // namespace r6183
