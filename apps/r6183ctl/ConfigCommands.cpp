// The configuration commands: the boards of the system, the custom page groups, the audio
// connections and the class of service, each printed as its window shows it or changed
// through its window's rules on a work copy; FILE is written back only when the change
// was made.
#include <iostream>

#include "Commands.h"
#include "PrivateDir.h"
#include "editors/ConfigScript.h"
#include "shell/Session.h"

namespace r6183::ctl {

namespace {

void Print(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) std::cout << line << '\n';
}

// The change made on the work copy goes to FILE; a refusal leaves FILE as it was.
int Finish(Session& session, const std::string& file, bool made, const std::string& refusal) {
  if (!made) {
    std::cerr << "r6183ctl: " << refusal << "; " << file << " is unchanged\n";
    return 1;
  }
  return WriteWhole(session.state.WorkDbPath, file) ? 0 : 1;
}

}  // namespace

int Config(Session& session, const std::string& file, std::optional<int> boards) {
  PrivateDir dir;
  if (!OpenDocument(session, file, dir)) return 2;
  std::string refusal;
  if (boards && !ScriptSetConfig(session, *boards, refusal)) return Finish(session, file, false, refusal);
  Print(ConfigLines(session));
  return boards ? Finish(session, file, true, "") : 0;
}

int Groups(Session& session, const std::string& file) {
  PrivateDir dir;
  if (!OpenDocument(session, file, dir)) return 2;
  Print(GroupLines(session));
  return 0;
}

int Group(Session& session, const std::string& file, int dial, const std::vector<int>& groups) {
  PrivateDir dir;
  if (!OpenDocument(session, file, dir)) return 2;
  std::string refusal;
  const bool made = ScriptSetGroup(session, dial, groups, refusal);
  if (made) Print(GroupLines(session));
  return Finish(session, file, made, refusal);
}

int Audio(Session& session, const std::string& file, const std::optional<AudioRequest>& request) {
  PrivateDir dir;
  if (!OpenDocument(session, file, dir)) return 2;
  if (!request) {
    Print(AudioLines(session));
    return 0;
  }
  std::string refusal;
  const bool made = ScriptSetAudio(session, request->source, request->groups, refusal);
  if (made) Print(AudioLines(session));
  return Finish(session, file, made, refusal);
}

int Service(Session& session, const std::string& file, std::optional<std::pair<int, int>> groupLevel) {
  PrivateDir dir;
  if (!OpenDocument(session, file, dir)) return 2;
  if (!groupLevel) {
    Print(ServiceLines(session));
    return 0;
  }
  std::string refusal;
  const bool made = ScriptSetService(session, groupLevel->first, groupLevel->second, refusal);
  if (made) Print(ServiceLines(session));
  return Finish(session, file, made, refusal);
}

}  // namespace r6183::ctl
