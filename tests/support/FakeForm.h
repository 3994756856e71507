#pragma once
// A loaded window for tests: it registers on construction, leaves the registry when it
// unloads, and records each call core makes of it as "caption:call" in `events`.
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "shell/FormsRegistry.h"

namespace r6183::test {

class FakeForm : public Form {
 public:
  FakeForm(FormsRegistry& forms, std::vector<std::string>& events, std::string name, std::string caption,
           std::optional<bool> uncommitted = std::nullopt)
      : name(std::move(name)), caption(std::move(caption)), uncommitted(uncommitted), events_(events),
        forms_(forms) {
    forms_.Add(this);
  }
  ~FakeForm() override { forms_.Remove(this); }
  FakeForm(const FakeForm&) = delete;
  FakeForm& operator=(const FakeForm&) = delete;

  std::string name, caption;
  std::optional<bool> uncommitted;
  bool refuseOk = false;           // its checks refuse the edits: Ok leaves it open
  std::function<void()> onUnload;  // e.g. a window that takes another one with it

  std::string Name() const override { return name; }
  std::string Caption() const override { return caption; }
  std::optional<bool> UncommittedChanges() const override { return uncommitted; }
  void PressOk() override {
    Note("ok");
    if (!refuseOk) Unload();
  }
  void PressCancel() override {
    Note("cancel");
    Unload();
  }
  void BringToTop() override { Note("top"); }
  void SetFocus() override { Note("focus"); }
  void Unload() override {
    Note("unload");
    forms_.Remove(this);
    if (onUnload) onUnload();
  }

 private:
  void Note(const char* what) { events_.push_back(caption + ":" + what); }
  std::vector<std::string>& events_;
  FormsRegistry& forms_;
};

}  // namespace r6183::test
