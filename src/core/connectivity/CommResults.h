#pragma once
// The wizard's last page (frmCommResults) and the scan it runs a second after it shows:
// ports 1 to 16 in order, each asked for the unit's date and time (AutoFindComm) or for a
// modem's "OK" (AutoFindModem), the bar rising by 6 a port. The result goes to
// WizardFoundPort and to the page's text; ComPortNumber is left as the scan found it.
// r6183ctl's find runs the same scan without a window.
#include <cstdint>
#include <functional>

#include "connectivity/CommWizard.h"
#include "editors/Controls.h"

namespace r6183 {

class ModComm;
class modModem;
class Session;

class CommResultsModel : public WizardButtons {
 public:
  // `modem` asks each port for a modem; it works on `comm`'s port.
  CommResultsModel(Session& session, ModComm& comm, modModem& modem);

  static constexpr const char* kCaption = "Results";
  static constexpr int kTimerInterval = 1000;  // ms from the page's showing to the scan
  Control Label4{"Label4", ControlKind::Label, "Getting Communcation Information"};
  Control Label2{"Label2", ControlKind::Label, "Results:"};
  Control txtComport{"txtComport", ControlKind::TextBox};
  Control Label1{"Label1", ControlKind::Label};        // the percentage
  Control ProgressBar1{"ProgressBar1", ControlKind::ScrollBar};  // 0 to 100
  bool Timer1Enabled = true;

  void Form_Load();
  // The timer's one tick: the scan of the kind page 1 chose.
  void Timer1_Timer();
  void AutoFindComm();
  void AutoFindModem();
  void cmdFinish_Click();
  void cmdPrev_Click();
  void cmdCancel_Click();

  std::function<void()> CloseWindow;
  // Called after each port's probe with its number: a scan's progress for whoever shows it.
  std::function<void(int port)> OnPortProbed;

 private:
  // The scan of both kinds: `probe` tells whether the open port has what is sought.
  void Scan(const char* routine, bool (CommResultsModel::*probe)(), const std::string& found,
            const std::string& notFound);
  bool HasUnit();
  bool HasModem();
  void Unload();
  Session& s_;
  ModComm& comm_;
  modModem& modem_;
  bool unloaded_ = false;  // the page has gone: a scan still under way ends at its next wait
};

}  // namespace r6183
