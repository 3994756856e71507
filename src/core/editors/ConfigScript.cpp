#include "editors/ConfigScript.h"

#include <algorithm>
#include <sstream>

#include "editors/BgmModel.h"
#include "editors/ClassServiceModel.h"
#include "editors/ConfigModel.h"
#include "editors/PageModel.h"
#include "editors/StationList.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

std::string NotInSystem(const Session& s, const std::string& what, int n) {
  return GroupNotInSystem(what, n, s.state.SystemConfig);
}

// The ticked boxes of a set of sixteen as "1,2,5", or "none".
template <typename BoxOf>
std::string Ticked(BoxOf box) {
  std::string out;
  for (int g = 1; g <= 16; ++g)
    if (box(g).Value() == 1) out += (out.empty() ? "" : ",") + std::to_string(g);
  return out.empty() ? "none" : out;
}

// Every wanted group has an enabled box; otherwise the refusal names the first that hasn't.
template <typename BoxOf>
bool AllEnabled(const Session& s, const std::vector<int>& groups, BoxOf box, std::string& refusal) {
  for (const int g : groups)
    if (g < 1 || g > 16 || !box(g).Enabled()) {
      refusal = NotInSystem(s, "page group", g);
      return false;
    }
  return true;
}

// The operator ticks and clears the enabled boxes until exactly `groups` are ticked; the
// grey ones can't be clicked and keep what they hold.
template <typename BoxOf>
void TickExactly(const std::vector<int>& groups, BoxOf box) {
  for (int g = 1; g <= 16; ++g)
    if (box(g).Enabled()) box(g).SetValue(std::find(groups.begin(), groups.end(), g) != groups.end() ? 1 : 0);
}

}  // namespace

std::vector<std::string> ConfigLines(Session& s) {
  ConfigModel m(s);
  m.Form_Load();
  const int chosen = std::clamp(m.optConfig.Value() - 1, 0, 3);
  m.cmdCancel.Press();
  return {Trim(ConfigModel::kOptions[chosen]),
          "page groups 1 to " + std::to_string((chosen + 1) * 4) + ", stations 1 to " + std::to_string((chosen + 1) * 24)};
}

bool ScriptSetConfig(Session& s, int boards, std::string& refusal) {
  if (boards < 1 || boards > 4) {
    refusal = "a system has 1 to 4 boards, not " + std::to_string(boards);
    return false;
  }
  ConfigModel m(s);
  m.Form_Load();
  m.optConfig.SetValue(boards);
  m.cmdOK.Press();
  // No to the shrink question puts the old configuration back
  if (s.state.SystemConfig != boards - 1) {
    refusal = "the configuration stays " + Trim(ConfigModel::kOptions[m.OldConfig]);
    return false;
  }
  return true;
}

std::vector<std::string> GroupLines(Session& s) {
  PageModel m(s);
  m.Form_Load();
  std::vector<std::string> out;
  for (int t = 0; t < 4; ++t) out.push_back(std::to_string(50 + t) + "\t" + Ticked([&](int g) -> Control& { return m.Box(t, g); }));
  m.cmdCancel.Press();
  return out;
}

bool ScriptSetGroup(Session& s, int dial, const std::vector<int>& groups, std::string& refusal) {
  if (dial < 50 || dial > 53) {
    refusal = "the custom page groups have the dial codes 50 to 53, not " + std::to_string(dial);
    return false;
  }
  PageModel m(s);
  m.Form_Load();
  const int t = dial - 50;
  const auto box = [&](int g) -> Control& { return m.Box(t, g); };
  if (!AllEnabled(s, groups, box, refusal)) {
    m.cmdCancel.Press();
    return false;
  }
  m.tabPageGroup_Click(t);
  TickExactly(groups, box);
  m.cmdOK.Press();
  return true;
}

std::vector<std::string> AudioLines(Session& s) {
  BgmModel m(s);
  m.Form_Load();
  std::vector<std::string> out;
  for (int src = 0; src < 3; ++src)
    out.push_back(std::string(BgmModel::kTabs[src]) + "\t" + Ticked([&](int g) -> Control& { return m.Box(src, g); }));
  m.cmdCancel.Press();  // nothing changed: nothing to write
  return out;
}

bool ScriptSetAudio(Session& s, const std::string& source, const std::vector<int>& groups, std::string& refusal) {
  const auto* at = std::find_if(std::begin(kAudioSources), std::end(kAudioSources),
                                [&](const char* name) { return source == name; });
  if (at == std::end(kAudioSources)) {
    refusal = "the audio sources are bgm, time and emergency, not \"" + source + "\"";
    return false;
  }
  const int src = static_cast<int>(at - std::begin(kAudioSources));
  BgmModel m(s);
  m.Form_Load();
  const auto box = [&](int g) -> Control& { return m.Box(src, g); };
  if (!AllEnabled(s, groups, box, refusal)) {
    m.cmdCancel.Press();  // nothing ticked yet, so nothing written
    return false;
  }
  TickExactly(groups, box);
  m.cmdOK.Press();
  return true;
}

std::vector<std::string> ServiceLines(Session& s) {
  ClassServiceModel m(s);
  m.Form_Load();
  std::vector<std::string> out;
  for (int g = 1; g <= 16; ++g) {
    const ListControl& cbo = m.Combo(g);
    out.push_back(m.lblgrp[static_cast<std::size_t>(g - 1)].Text() + "\t" +
                  m.lblgrp[static_cast<std::size_t>(g + 15)].Text() + "\t" +
                  (cbo.ListIndex() >= 0 ? cbo.List(cbo.ListIndex()) : ""));
  }
  // the window writes what it shows as it closes, as it does for an operator
  m.cmdOk.Press();
  return out;
}

bool ScriptSetService(Session& s, int group, int level, std::string& refusal) {
  if (level < 0 || level > 2) {
    refusal = "the class of service is 0 (Normal Only), 1 (Normal / Emergency) or 2 (Emergency Only!), not " +
              std::to_string(level);
    return false;
  }
  ClassServiceModel m(s);
  m.Form_Load();
  if (group < 1 || group > 16 || !m.Combo(group).Enabled()) {
    refusal = NotInSystem(s, "group", group);
    m.cmdOk.Press();
    return false;
  }
  m.Combo(group).Choose(level);
  m.cmdOk.Press();
  return true;
}

std::optional<std::vector<int>> ParseGroups(const std::string& list) {
  std::vector<int> out;
  if (Trim(list).empty() || Trim(list) == "none") return out;
  std::istringstream in(list);
  for (std::string item; std::getline(in, item, ',');) {
    const std::string n = Trim(item);
    if (n.empty() || n.size() > 2 || n.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
    out.push_back(std::stoi(n));
  }
  return out;
}

}  // namespace r6183
