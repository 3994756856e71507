#pragma once
// The prompter of the command line: notices go to stderr, questions take the answer
// given on the command line (--yes) or the safe one.
#include <iostream>

#include "shell/Prompter.h"
#include "shell/WindowOpener.h"

namespace r6183::ctl {

class ConsolePrompter : public Prompter {
 public:
  explicit ConsolePrompter(bool yes = false) : yes_(yes) {}
  void SetYes(bool yes) { yes_ = yes; }

  Answer Message(const std::string& text, Buttons buttons, Icon, const std::string& title) override {
    std::cerr << (title.empty() ? "" : title + ": ") << text << '\n';
    last_ = text;
    switch (buttons) {
      case Buttons::Ok:
        return Answer::Ok;
      case Buttons::OkCancel:
        return yes_ ? Answer::Ok : Answer::Cancel;
      case Buttons::YesNo:
        return yes_ ? Answer::Yes : Answer::No;
      case Buttons::YesNoCancel:
        return yes_ ? Answer::Yes : Answer::Cancel;
      case Buttons::RetryCancel:
        return Answer::Cancel;
      case Buttons::AbortRetryIgnore:
        return Answer::Abort;
    }
    return Answer::Cancel;
  }
  // The text of the last message shown.
  const std::string& Last() const { return last_; }
  std::optional<std::string> OpenFile(const FileChoice&) override { return std::nullopt; }
  std::optional<std::string> SaveFile(const FileChoice&) override { return std::nullopt; }

 private:
  bool yes_;
  std::string last_;
};

// The windows core asks for: only the notice that points at a log file has a use here.
class ConsoleWindows : public WindowOpener {
 public:
  explicit ConsoleWindows(std::string appDir) : appDir_(std::move(appDir)) {}
  void ShowLogNotice(const std::string& text, const std::string& logFile) override {
    std::cerr << text << "\n(log: " << appDir_ << '/' << logFile << ")\n";
  }

 private:
  std::string appDir_;
};

}  // namespace r6183::ctl
