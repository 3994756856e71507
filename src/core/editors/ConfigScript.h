#pragma once
// The configuration, custom page group, audio and class of service windows driven by a
// script (r6183ctl) on the work copy: the same controls, the same OK and the same rules as
// for an operator. A group the window shows grey (its board is not in the system) is
// refused before anything is touched.
#include <optional>
#include <string>
#include <vector>

namespace r6183 {

class Session;

// The chosen option of the configuration window, and the page groups it gives.
std::vector<std::string> ConfigLines(Session& s);
// `boards` (1 to 4: the Main Board and its expansions) chosen in the configuration window,
// then OK. False when the operator's answer to the shrink question (the prompter's) is No,
// or `boards` is out of range.
bool ScriptSetConfig(Session& s, int boards, std::string& refusal);

// A line per dial code 50 to 53: "50<TAB>1,2,5", "none" for an empty custom group.
std::vector<std::string> GroupLines(Session& s);
// The boxes of dial code `dial`'s tab set to exactly `groups`, then OK.
bool ScriptSetGroup(Session& s, int dial, const std::vector<int>& groups, std::string& refusal);

// The three audio sources as named on the command line, in the order of the window's tabs.
inline constexpr const char* kAudioSources[3] = {"bgm", "time", "emergency"};
// A line per tab: "BGM<TAB>1,2,3,4".
std::vector<std::string> AudioLines(Session& s);
// The boxes of the source's tab set to exactly `groups`, then OK.
bool ScriptSetAudio(Session& s, const std::string& source, const std::vector<int>& groups, std::string& refusal);

// A line per group 1 to 16: "1<TAB>1 - 6<TAB>Normal / Emergency"; nothing in the last
// column for a group of an absent board.
std::vector<std::string> ServiceLines(Session& s);
// The level (0 to 2) chosen for `group`, then Close.
bool ScriptSetService(Session& s, int group, int level, std::string& refusal);

// "1,2,5" as numbers; "" and "none" as no group; nothing for anything else.
std::optional<std::vector<int>> ParseGroups(const std::string& list);

}  // namespace r6183
