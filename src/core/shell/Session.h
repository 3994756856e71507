#pragma once
// One run of the tool: its process-wide state and the services every routine uses
// (journal, application directory, prompter, clock, event pump). No hidden globals:
// a test makes a Session on a temporary directory and throws it away.
#include <memory>

#include "shell/AppDir.h"
#include "shell/Clock.h"
#include "shell/FormsRegistry.h"
#include "shell/Journal.h"
#include "shell/MenuModel.h"
#include "shell/ProcessState.h"
#include "shell/ProductIdentity.h"
#include "shell/Prompter.h"
#include "shell/WindowOpener.h"

namespace r6183 {

class Session {
 public:
  // Forms the paths of the application directory (settings, journal, template, work
  // copy) as start-up does.
  Session(AppDir appDir, Prompter& prompter, Clock& clock, Pump pump = {});
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  ProcessState state;
  ProductIdentity product;
  MenuModel menu;       // the main window's menu and caption
  FormsRegistry forms;  // the loaded windows, the main window at index 0

  const AppDir& appDir() const { return appDir_; }
  Journal& journal() { return journal_; }
  Prompter& prompter() { return prompter_; }
  Clock& clock() { return clock_; }
  void pump() const {
    if (pump_) pump_();
  }
  const Pump& pumpFunction() const { return pump_; }
  WindowOpener& windows() { return *windows_; }
  void SetWindowOpener(WindowOpener* w) { windows_ = w ? w : &noWindows_; }
  void SetPump(Pump p) { pump_ = std::move(p); }

  // Shortcut for a notice under the product's title.
  Answer Message(const std::string& text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None) {
    return prompter_.Message(text, buttons, icon, product.ProductTitle);
  }

 private:
  AppDir appDir_;
  Prompter& prompter_;
  Clock& clock_;
  Pump pump_;
  Journal journal_;
  WindowOpener noWindows_;
  WindowOpener* windows_ = &noWindows_;
};

}  // namespace r6183
