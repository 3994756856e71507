#pragma once
// Every question and notice of the tool goes through a Prompter: the desktop program
// shows message boxes and file choosers, r6183ctl answers from its options, and tests
// script the answers and keep what was shown.
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace r6183 {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel, AbortRetryIgnore };
enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Answer { Ok, Cancel, Yes, No, Retry, Abort, Ignore };

struct FileChoice {
  std::string title;
  std::string filter;       // "Database Files (*.mdb)|*.mdb"
  std::string initialName;  // proposed file name
  bool confirmOverwrite = false;
};

class Prompter {
 public:
  virtual ~Prompter() = default;
  virtual Answer Message(const std::string& text, Buttons buttons, Icon icon,
                         const std::string& title) = 0;
  // The chosen path, or nothing when the operator cancelled.
  virtual std::optional<std::string> OpenFile(const FileChoice& choice) = 0;
  virtual std::optional<std::string> SaveFile(const FileChoice& choice) = 0;
};

// One message that was shown, as a test or a log sees it.
struct ShownMessage {
  std::string text;
  Buttons buttons;
  Icon icon;
  std::string title;
};

// Answers from a script and records what was asked. An unscripted question gets the
// first button of its set (Ok or Yes or Retry or Abort); an unscripted file choice is
// a cancel.
class ScriptedPrompter : public Prompter {
 public:
  Answer Message(const std::string& text, Buttons buttons, Icon icon,
                 const std::string& title) override;
  std::optional<std::string> OpenFile(const FileChoice& choice) override;
  std::optional<std::string> SaveFile(const FileChoice& choice) override;

  void QueueAnswer(Answer a) { answers_.push_back(a); }
  void QueueFile(std::optional<std::string> path) { files_.push_back(std::move(path)); }

  const std::vector<ShownMessage>& Shown() const { return shown_; }
  const std::vector<FileChoice>& FileChoices() const { return choices_; }
  void Clear() { shown_.clear(); choices_.clear(); }
  // Called with each message as it is asked, before the scripted answer is given: a test
  // can show it for real there, to take its picture over the windows behind it.
  std::function<void(const ShownMessage&)> OnMessage;

 private:
  std::optional<std::string> NextFile(const FileChoice& choice);
  std::deque<Answer> answers_;
  std::deque<std::optional<std::string>> files_;
  std::vector<ShownMessage> shown_;
  std::vector<FileChoice> choices_;
};

Answer DefaultAnswer(Buttons buttons);

}  // namespace r6183
