#pragma once
// How core asks for windows it does not own: the desktop program opens them, the
// command line and the tests record or ignore the requests.
#include <string>

namespace r6183 {

struct PhoneListSetup;

class WindowOpener {
 public:
  virtual ~WindowOpener() = default;
  // Shows the window named `name` ("frmConfig") and returns when it is closed.
  virtual void ShowModal(const std::string& name) { (void)name; }
  // Shows the window without waiting and brings it to the front.
  virtual void Show(const std::string& name) { (void)name; }
  // A new list window (frmPhoneList) in the role of `setup`, shown without waiting.
  virtual void ShowPhoneList(const PhoneListSetup& setup) { (void)setup; }
  // The hourglass pointer over the main window while a command runs.
  virtual void SetHourglass(bool on) { (void)on; }
  // The main window takes no input while a transfer runs.
  virtual void EnableMain(bool on) { (void)on; }
  // The notice with a "View Log" button: `text`, and the log file it offers to show.
  virtual void ShowLogNotice(const std::string& text, const std::string& logFile) { (void)text, (void)logFile; }
};

}  // namespace r6183
