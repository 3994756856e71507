#include "shell/Prompter.h"

namespace r6183 {

Answer DefaultAnswer(Buttons buttons) {
  switch (buttons) {
    case Buttons::Ok:
    case Buttons::OkCancel:
      return Answer::Ok;
    case Buttons::YesNo:
    case Buttons::YesNoCancel:
      return Answer::Yes;
    case Buttons::RetryCancel:
      return Answer::Retry;
    case Buttons::AbortRetryIgnore:
      return Answer::Abort;
  }
  return Answer::Ok;
}

Answer ScriptedPrompter::Message(const std::string& text, Buttons buttons, Icon icon,
                                 const std::string& title) {
  shown_.push_back({text, buttons, icon, title});
  if (OnMessage) OnMessage(ShownMessage(shown_.back()));
  if (answers_.empty()) return DefaultAnswer(buttons);
  const Answer a = answers_.front();
  answers_.pop_front();
  return a;
}

std::optional<std::string> ScriptedPrompter::NextFile(const FileChoice& choice) {
  choices_.push_back(choice);
  if (files_.empty()) return std::nullopt;
  auto f = files_.front();
  files_.pop_front();
  return f;
}

std::optional<std::string> ScriptedPrompter::OpenFile(const FileChoice& choice) {
  return NextFile(choice);
}

std::optional<std::string> ScriptedPrompter::SaveFile(const FileChoice& choice) {
  return NextFile(choice);
}

}  // namespace r6183
