#pragma once
// Module and window names as the error journal spells them. Routine labels are
// constants beside the routines that use them.
#include <string_view>

namespace r6183::labels {
inline constexpr std::string_view frmMenu = "frmMenu";
inline constexpr std::string_view modProject = "modProject";
inline constexpr std::string_view Utility = "Utility";
inline constexpr std::string_view AA_Sys_WhoAmi = "AA_Sys_WhoAmi";
inline constexpr std::string_view INIClass = "INIClass";
inline constexpr std::string_view modRegistry = "modRegistry";
inline constexpr std::string_view timer = "timer";
inline constexpr std::string_view Unknown = "Unknown";
inline constexpr std::string_view ModComm = "ModComm";
}  // namespace r6183::labels
