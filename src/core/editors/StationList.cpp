#include "editors/StationList.h"

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

std::string BoardTabCaption(int board) {
  return board == 0 ? "&Main Board" : "Expansion &" + std::to_string(board);
}

std::string BoardStationsCaption(int board) {
  return "Program Stations " + std::to_string(FirstStationOf(board)) + " - " + std::to_string(LastStationOf(board)) +
         " :";
}

}  // namespace r6183
