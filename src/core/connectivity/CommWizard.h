#pragma once
// The communications wizard (modWizards): three pages shown one after the other, modally,
// that find the port of the unit or of a modem for the port window's "Auto Find". The
// loop's flags and its result live in ProcessState (WizardDone, WizardAborted,
// WizardGoBack, WizardByModem, WizardFoundPort). The first two pages are here; the third,
// with the scan, is CommResults.
#include <cstdint>
#include <functional>
#include <string>

#include "editors/Controls.h"

namespace r6183 {

class Session;

// WizardFoundPort when the wizard found nothing, or was left by Cancel or Previous.
inline constexpr int32_t kNoPortFound = 65535;

// The window of each page, as the WindowOpener is asked for it.
inline constexpr const char* kCommTypePage = "frmCommType";
inline constexpr const char* kCommWarningPage = "frmCommWarning";
inline constexpr const char* kCommResultsPage = "frmCommResults";

// Runs the pages until one ends the loop; the caller reads WizardFoundPort.
void RunCommWizard(Session& s);
// The page after `index`, or the one before it (never below 1) when the page just left
// asked to go back.
int16_t MoveIndex(Session& s, int16_t index);

// The frame of buttons every page has.
struct WizardButtons {
  WizardButtons();
  Control cmdPrev{"cmdPrev", ControlKind::Button, "< Previous"};
  Control cmdNext{"cmdNext", ControlKind::Button, "Next >"};
  Control cmdFinish{"cmdFinish", ControlKind::Button, "Finish"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};
};

// Page 1: the kind of connection.
class CommTypeModel : public WizardButtons {
 public:
  explicit CommTypeModel(Session& session);
  static constexpr const char* kCaption = "Connection Type";
  Control Label4{"Label4", ControlKind::Label, "Please Select the type of Connection."};
  Control Label3{"Label3", ControlKind::Label, "Type:"};
  // The two option buttons chkModem (1) and chkComm (2).
  Control optType{"optType", ControlKind::OptionGroup};
  static constexpr const char* kModemText = "Connect by Modem";
  static constexpr const char* kCommText = "Direct Connect";

  void Form_Load();
  void cmdNext_Click();
  void cmdPrev_Click();
  void cmdCancel_Click();
  std::function<void()> CloseWindow;

 private:
  void Leave(bool back);
  Session& s_;
};

// Page 2: what to check before the scan, by the kind of connection.
class CommWarningModel : public WizardButtons {
 public:
  explicit CommWarningModel(Session& session);
  static constexpr const char* kCaption = "Warning";
  Control Label1{"Label1", ControlKind::Label};

  void Form_Load();
  void cmdNext_Click();
  void cmdPrev_Click();
  void cmdCancel_Click();
  std::function<void()> CloseWindow;

 private:
  void Close();
  Session& s_;
};

}  // namespace r6183
