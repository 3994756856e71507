#include "editors/NumberConflicts.h"

#include "database/Recordset.h"
#include "editors/StationList.h"
#include "shell/Conversions.h"
#include "shell/Text.h"
#include "shell/Utility.h"

namespace r6183 {

namespace {
// The stored number without the blanks that fill it to four.
std::string Stored(const RowView& r) { return TrimRight(TextOf(r["archnum"])); }

ConflictEntry EntryOf(Recordset& rs) {
  return {static_cast<uint8_t>(rs["clid_station"].Number()), PadRight(rs["archnum"].Text(), kArchWidth)};
}

// Appends the rows that `keep` accepts: every number beginning with `archnum`, then the
// first row for each proper prefix.
template <class Keep>
void Search(Recordset& rs, std::string_view archnum, ConflictList& out, Keep keep) {
  const std::string number(archnum);
  const Predicate begins = [&number](const RowView& r) { return Stored(r).starts_with(number); };
  for (rs.FindFirst(begins); !rs.NoMatch(); rs.FindNext(begins))
    if (keep(rs)) out.push_back(EntryOf(rs));
  for (std::size_t n = 1; n < number.size(); ++n) {
    const std::string prefix = number.substr(0, n);
    rs.FindFirst([&prefix](const RowView& r) { return Stored(r) == prefix; });
    if (!rs.NoMatch() && keep(rs)) out.push_back(EntryOf(rs));
  }
}
}  // namespace

bool NumbersConflict(std::string_view a, std::string_view b) {
  if (a.empty() || b.empty()) return false;
  return a.size() <= b.size() ? b.starts_with(a) : a.starts_with(b);
}

bool Find_Conflicts(Recordset& clid, std::string_view station, std::string_view archnum, ConflictList& out) {
  out.clear();
  if (archnum.empty()) return false;
  const int64_t self = static_cast<int64_t>(Val(station));
  Search(clid, archnum, out, [self](Recordset& rs) { return rs["clid_station"].Number() != self; });
  return !out.empty();
}

void Find_Auto_Conflicts(Recordset& outside, std::string_view archnum, bool& found, ConflictList& out) {
  out.clear();
  found = false;
  if (archnum.empty() || outside.RecordCount() == 0) return;
  Search(outside, archnum, out, [](Recordset&) { return true; });
  found = !out.empty();
}

std::string ConflictLine(const ConflictEntry& e) { return PadLeft(std::to_string(e.station), 2) + '\t' + e.archnum; }

}  // namespace r6183
