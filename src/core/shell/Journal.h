#pragma once
// The error journal: table Error of the errors database. Nearly every routine of the
// tool journals a failed step here and goes on with its next step; the operator
// normally sees nothing, a technician reads the journal in the debug window.
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "shell/Clock.h"
#include "shell/ErrorNumbers.h"

namespace r6183 {

// Where a step runs, as the journal names it: the module or window, and the routine.
struct Where {
  std::string_view module;
  std::string_view routine;
};

class Journal {
 public:
  static constexpr int kMaxRows = 1000;
  static constexpr std::size_t kDescriptionWidth = 100;
  static constexpr std::size_t kNameWidth = 50;

  // `errorsDbPath` is read at each entry, so it may be formed after construction.
  Journal(const std::string& errorsDbPath, Clock& clock, const Pump& pump)
      : path_(errorsDbPath), clock_(clock), pump_(pump) {}

  // Adds one row. An empty description takes the standard text of the number.
  // Waits out a locked table; passes over every other failure.
  void LogError(int16_t number, std::string_view description, std::string_view program,
                std::string_view module, std::string_view routine);

  // The handler's call: module given for both program and module.
  void Log(const ErrorInfo& e, const Where& where) {
    LogError(e.number, e.description, where.module, where.module, where.routine);
  }
  void Log(int16_t number, std::string_view description, const Where& where) {
    LogError(number, description, where.module, where.module, where.routine);
  }

  const std::string& Path() const { return path_; }

 private:
  void Yield() const {
    if (pump_) pump_();
  }
  template <class F>
  bool RetryWhileLocked(F&& f);

  const std::string& path_;
  Clock& clock_;
  const Pump& pump_;
};

// Runs one fallible step. On an exception it journals the error under `where` and
// returns false, so the caller goes on with its next step.
template <class F>
bool step(Journal& journal, const Where& where, F&& f) noexcept {
  try {
    std::forward<F>(f)();
    return true;
  } catch (...) {
    try {
      journal.Log(DescribeCurrentException(), where);
    } catch (...) {
    }
    return false;
  }
}

// Runs a step whose failure is passed over without a word (resize, timer events).
template <class F>
bool quietly(F&& f) noexcept {
  try {
    std::forward<F>(f)();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace r6183
