#pragma once
// A loaded window for tests: it registers on construction, counts what core asks of
// it, and leaves the registry when it unloads. `events` (shared between windows)
// records "caption:call" in order.
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "shell/FormsRegistry.h"

namespace r6183::test {

class FakeForm : public Form {
 public:
  FakeForm(FormsRegistry& forms, std::string name, std::string caption,
           std::optional<bool> uncommitted = std::nullopt, std::vector<std::string>* events = nullptr)
      : name(std::move(name)), caption(std::move(caption)), uncommitted(uncommitted),
        events(events), forms_(forms) {
    forms_.Add(this);
  }
  ~FakeForm() override { forms_.Remove(this); }
  FakeForm(const FakeForm&) = delete;
  FakeForm& operator=(const FakeForm&) = delete;

  std::string name, caption;
  std::optional<bool> uncommitted;
  bool refuseOk = false;          // its checks refuse the edits: Ok leaves it open
  std::function<void()> onUnload;  // e.g. a window that takes another one with it
  std::vector<std::string>* events;
  int oks = 0, cancels = 0, unloads = 0;
  bool loaded = true;

  std::string Name() const override { return name; }
  std::string Caption() const override { return caption; }
  std::optional<bool> UncommittedChanges() const override { return uncommitted; }
  void PressOk() override {
    Note("ok");
    ++oks;
    if (!refuseOk) Unload();
  }
  void PressCancel() override {
    Note("cancel");
    ++cancels;
    Unload();
  }
  void BringToTop() override { Note("top"); }
  void SetFocus() override { Note("focus"); }
  void Unload() override {
    Note("unload");
    ++unloads;
    loaded = false;
    forms_.Remove(this);
    if (onUnload) onUnload();
  }

 private:
  void Note(const char* what) {
    if (events) events->push_back(caption + ":" + what);
  }
  FormsRegistry& forms_;
};

}  // namespace r6183::test
