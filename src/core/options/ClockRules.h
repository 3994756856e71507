#pragma once
// The rules of the clock definitions: the catalogue of clock types in its stored order, a
// clock stored as the 1-based position of its type in that order, and the look-up of a
// type's correction by its name.
#include <optional>
#include <string>
#include <vector>

namespace r6183 {

struct ClockType {
  std::string name;       // Cindex
  std::string corrected;  // CCorrected
};

// The captions of the direction and the BCD type, by their stored index.
inline constexpr const char* kDirectionCaptions[] = {"Input", "Output"};
inline constexpr const char* kBcdTypeCaptions[] = {"12 Hour", "24  Hour", "12 Hour Enhanced", "24 Hour Enhanced"};
inline constexpr int kDirections = 2;
inline constexpr int kBcdTypes = 4;

// The catalogue of the database at `dbPath`, in the order the table yields its rows.
std::vector<ClockType> LoadClockCatalogue(const std::string& dbPath);
// The correction of the type named `name`, looked up in the database; nothing when no
// type has that name.
std::optional<std::string> LookUpCorrection(const std::string& dbPath, const std::string& name);

// The stored text of the list line `listIndex` (0-based): "1" for the first.
std::string ClockPositionText(int listIndex);
// The list line of a stored position: its numeric value less one ("03" is line 2).
int ClockListIndex(const std::string& stored);
// The catalogue entry of a stored position; nothing outside the catalogue.
std::optional<ClockType> ClockAt(const std::vector<ClockType>& catalogue, const std::string& stored);
// The stored position of the type named `name` (exact name), or nothing.
std::optional<std::string> ClockPositionOf(const std::vector<ClockType>& catalogue, const std::string& name);

}  // namespace r6183
