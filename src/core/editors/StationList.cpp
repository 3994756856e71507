#include "editors/StationList.h"

#include "protocol/LineText.h"
#include "shell/Text.h"
#include "shell/Utility.h"

namespace r6183 {

std::string ClidLine(int station, std::string_view archnum, std::string_view clid) {
  return PadLeft(std::to_string(station), 2) + '\t' + PadRight(archnum, kArchWidth) + '\t' +
         PadRight(clid, kClidWidth);
}

StationLine ParseClidLine(std::string_view line) {
  return {Trim(LeftChars(line, 2)), Trim(MidChars(line, 4, kArchWidth)), Trim(RightChars(line, kClidWidth))};
}

std::string StationNotInSystem(int station, int systemConfig) {
  return "station " + std::to_string(station) + " is not in this system: its boards have stations 1 to " +
         std::to_string(LastValidStation(systemConfig));
}

std::string GroupNotInSystem(std::string_view what, int group, int systemConfig) {
  const int boards = LastValidGroup(systemConfig) / kBoardGroups;
  return std::string(what) + " " + std::to_string(group) + " is not in this system: its " + std::to_string(boards) +
         (boards == 1 ? " board has" : " boards have") + " groups 1 to " + std::to_string(boards * kBoardGroups);
}

std::optional<std::string> ArchnumRefusal(std::string_view archnum) {
  const bool digits = archnum.find_first_not_of("0123456789") == std::string_view::npos;
  if (digits && archnum.size() <= static_cast<std::size_t>(kArchWidth)) return std::nullopt;
  return "takes up to " + std::to_string(kArchWidth) + " digits, got \"" + std::string(archnum) + "\"";
}

std::optional<std::string> ClidRefusal(std::string_view clid, std::string_view model) {
  if (auto refusal = LineTextRefusal(clid, model)) return refusal;
  if (CharCount(clid) <= static_cast<std::size_t>(kClidWidth)) return std::nullopt;
  return "takes up to " + std::to_string(kClidWidth) + " characters, got " + std::to_string(CharCount(clid));
}

std::string BoardTabCaption(int board) {
  return board == 0 ? "&Main Board" : "Expansion &" + std::to_string(board);
}

std::string BoardStationsCaption(int board) {
  return "Program Stations " + std::to_string(FirstStationOf(board)) + " - " + std::to_string(LastStationOf(board)) +
         " :";
}

}  // namespace r6183
