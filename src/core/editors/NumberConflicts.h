#pragma once
// No Architectural Number may begin another: 12 and 123 cannot live in one system. Two
// numbers conflict when they are equal or one is a prefix of the other; an empty number
// conflicts with nothing. The searches list the conflicting stations; the caller decides
// what to blank.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace r6183 {

class Recordset;

struct ConflictEntry {
  uint8_t station = 0;
  std::string archnum;  // as the table holds it, 4 characters
  bool operator==(const ConflictEntry&) const = default;
};

// ConflictList; its size is ConflictCount.
using ConflictList = std::vector<ConflictEntry>;

// The rule itself, on the digit strings.
bool NumbersConflict(std::string_view a, std::string_view b);

// Against every row of `clid` (the stations in their order) but `station` itself: first
// each station whose number begins with `archnum` (equal ones too), in the rows' order,
// then for each proper prefix of `archnum`, shortest first, the first station holding
// exactly that prefix. Refills `out`; true when it is not empty.
bool Find_Conflicts(Recordset& clid, std::string_view station, std::string_view archnum, ConflictList& out);

// The same search on `outside`, the stations outside an auto-numbering range, with no
// station left out. Does nothing when `outside` has no rows.
void Find_Auto_Conflicts(Recordset& outside, std::string_view archnum, bool& found, ConflictList& out);

// A line of the conflict list: the station in two, tab, the number.
std::string ConflictLine(const ConflictEntry& e);

}  // namespace r6183
