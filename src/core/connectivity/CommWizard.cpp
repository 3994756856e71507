#include "connectivity/CommWizard.h"

#include "shell/Session.h"

namespace r6183 {

namespace {
constexpr std::string_view kModule = "ModWizards";
constexpr int kTypeModem = 1, kTypeComm = 2;  // the options of optType
}  // namespace

int16_t MoveIndex(Session& s, int16_t index) {
  int16_t next = index;
  step(s.journal(), Where{kModule, "MoveIndex"}, [&] {
    if (s.state.WizardGoBack) next = static_cast<int16_t>(index > 1 ? index - 1 : 1);
    else next = static_cast<int16_t>(index + 1);
  });
  return next;
}

void RunCommWizard(Session& s) {
  ProcessState& st = s.state;
  step(s.journal(), Where{kModule, "RunCommWizard"}, [&] {
    st.WizardFoundPort = st.ComPortNumber;
    st.WizardByModem = 0;
    st.WizardDone = 0;
    st.WizardAborted = 1;
    st.WizardGoBack = 0;
    int16_t page = 1;
    while (!st.WizardDone) {
      switch (page) {
        case 1: s.windows().ShowModal(kCommTypePage); break;
        case 2: s.windows().ShowModal(kCommWarningPage); break;
        case 3: s.windows().ShowModal(kCommResultsPage); break;
        default:
          st.WizardAborted = 0;
          st.WizardDone = 1;
          break;
      }
      page = MoveIndex(s, page);
      st.WizardGoBack = 0;
    }
  });
  s.windows().SetHourglass(false);
}

WizardButtons::WizardButtons() {
  // Next leads on the first two pages; Finish only once the scan has ended
  cmdFinish.SetEnabled(false);
}

// --- page 1

CommTypeModel::CommTypeModel(Session& session) : s_(session) {
  cmdNext.OnClick = [this] { cmdNext_Click(); };
  cmdPrev.OnClick = [this] { cmdPrev_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
}

void CommTypeModel::Form_Load() {
  optType.SetValue(s_.state.WizardByModem == 1 ? kTypeModem : kTypeComm);
  cmdNext.SetEnabled(true);
  cmdPrev.SetEnabled(false);
}

void CommTypeModel::Leave(bool back) {
  s_.state.WizardGoBack = back ? 1 : 0;
  s_.state.WizardByModem = optType.Value() == kTypeModem ? 1 : 0;
  if (CloseWindow) CloseWindow();
}

void CommTypeModel::cmdNext_Click() { Leave(false); }
void CommTypeModel::cmdPrev_Click() { Leave(true); }

void CommTypeModel::cmdCancel_Click() {
  s_.state.WizardDone = 1;
  if (CloseWindow) CloseWindow();
}

// --- page 2

CommWarningModel::CommWarningModel(Session& session) : s_(session) {
  cmdNext.OnClick = [this] { cmdNext_Click(); };
  cmdPrev.OnClick = [this] { cmdPrev_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
}

void CommWarningModel::Form_Load() {
  if (s_.state.WizardByModem == 1)
    Label1.SetText(
        "Please make sure you have already installed your modem.  If your modem is external, please make sure it is "
        "turned on and properly connected to the PC.");
  else
    Label1.SetText("Please make sure the " + s_.product.ProductBrand + " " + s_.product.ProductModel +
                   " system is plugged in and properly connected to the PC.");
  cmdNext.SetEnabled(true);
}

void CommWarningModel::Close() {
  if (CloseWindow) CloseWindow();
}

void CommWarningModel::cmdNext_Click() {
  s_.state.WizardGoBack = 0;
  Close();
}

void CommWarningModel::cmdPrev_Click() {
  s_.state.WizardGoBack = 1;
  Close();
}

void CommWarningModel::cmdCancel_Click() {
  s_.state.WizardDone = 1;
  Close();
}

}  // namespace r6183
