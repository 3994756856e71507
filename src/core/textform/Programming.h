#pragma once
// The whole programming of a unit as plain values: what a document's tables hold, read
// in one go and written in one go. The text form, the comparison and the import work on
// this; the texts keep the form the document stores them in.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "editors/EventEntry.h"
#include "editors/StationList.h"

namespace r6183 {

using GroupSet = std::array<bool, kPageGroups>;

struct StationTexts {
  std::string archnum, clid;  // as stored, blanks included
  bool operator==(const StationTexts&) const = default;
};

struct ProgrammedEvent {
  int schedule = 1;
  std::string startTime;  // "hh:mm"
  int duration = 1;       // seconds
  int relay = 1;          // Tone
  GroupSet groups{};
  bool operator==(const ProgrammedEvent&) const = default;
};

inline constexpr int kAudioTables = 3;    // Bgm, TonesPG, EmergencyPG
inline constexpr int kDipFields = 15;     // DipSwitch by position
inline constexpr int kRingPatternField = 13;
inline constexpr int kServiceGroups = 16;

struct Programming {
  int systemConfig = 0;                             // expansion boards, 0 to 3
  std::array<StationTexts, kStations> stations{};   // station n at n-1
  std::array<GroupSet, 4> customGroups{};           // rows of PageGroup: dial codes 50 to 53
  std::array<std::array<bool, 7>, kSchedules> days{};  // Sunday first
  std::vector<ProgrammedEvent> events;              // by schedule, then start time
  std::array<GroupSet, kAudioTables> audio{};       // background music, time tones, emergency tones
  std::array<int, kDipFields> dip{};                // 0/1, the ring pattern 0 to 2
  std::array<int, kServiceGroups> service{};        // 0 to 2
  bool clockEnabled = false;
  std::string clockA, clockB, direction, bcdType;   // as stored
  bool operator==(const Programming&) const = default;
};

// Reads the programming tables of the document at `path`; raises when it can't.
Programming ReadProgramming(const std::string& path);

// Writes `p` into the document at `path` (a copy of the template), every table in one
// transaction; the catalogue, the revision and the dial codes stay as they are. A
// `scratch` file (a private copy that is copied to its place afterwards) is not waited
// for on the disk.
void WriteProgramming(const Programming& p, const std::string& path, bool scratch = false);

// The audio sources as the audio window's tabs name them, by table.
inline constexpr const char* kAudioTableNames[kAudioTables] = {"Bgm", "TonesPG", "EmergencyPG"};

}  // namespace r6183
