#pragma once
// The stations of a system as the numbering windows show them: 96 stations on four
// boards of 24, each with its Architectural Number and CLID description, one list line a
// station. A line is built the same way everywhere and read back by position.
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace r6183 {

inline constexpr int kStations = 96;
inline constexpr int kBoards = 4;
inline constexpr int kBoardStations = 24;
inline constexpr int kArchWidth = 4;   // digits of an Architectural Number
inline constexpr int kClidWidth = 15;  // characters of a CLID description

// Station number, tab, number in 4, tab, description in 15.
std::string ClidLine(int station, std::string_view archnum, std::string_view clid);

// A list line read back by position: the station from its first two characters, the
// number from the four from the fourth on, the description from its last fifteen, each
// without its blanks.
struct StationLine {
  std::string station;
  std::string archnum;
  std::string clid;
};
StationLine ParseClidLine(std::string_view line);

// What is said of a station or a (page or service) group beyond the boards of a system:
// "page group 13 is not in this system: its 3 boards have groups 1 to 12".
std::string StationNotInSystem(int station, int systemConfig);
std::string GroupNotInSystem(std::string_view what, int group, int systemConfig);

// What the station window lets into its fields: up to four digits for the number, up to
// fifteen characters the line carries for the description. The reason ("takes up to 4
// digits, got ...") when a text is not that.
std::optional<std::string> ArchnumRefusal(std::string_view archnum);
std::optional<std::string> ClidRefusal(std::string_view clid, std::string_view model);

// Boards 0 (main) to 3: the tab caption, the caption over the list, the stations.
std::string BoardTabCaption(int board);
std::string BoardStationsCaption(int board);
inline int FirstStationOf(int board) { return board * kBoardStations + 1; }
inline int LastStationOf(int board) { return (board + 1) * kBoardStations; }
inline int BoardOf(int station) { return (station - 1) / kBoardStations; }
inline int PlaceOnBoard(int station) { return (station - 1) % kBoardStations; }
// The last station a system of SystemConfig 0 to 3 has.
inline int LastValidStation(int systemConfig) { return (systemConfig + 1) * kBoardStations; }
// The last page group (and service group) of a system of SystemConfig 0 to 3: four a board.
inline constexpr int kBoardGroups = 4;
inline int LastValidGroup(int systemConfig) { return (std::min(systemConfig, kBoards - 1) + 1) * kBoardGroups; }

}  // namespace r6183
