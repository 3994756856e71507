#pragma once
// The revision handshake: the tool asks the unit (H) for the revisions of its
// processors and its option cards (J) and turns the answer into display lines and
// into the unit's revision text, which decides how a transfer treats an older or a
// newer unit.
#include <string>
#include <vector>

namespace r6183 {

class ModComm;
class Session;

struct RevisionLines {
  std::string RevLineTool, RevLineMain, RevLineSecond, RevLineThird, RevLineStatus, RevLineCard1, RevLineCard2;
  // The lines in the order the About window lists them, empty ones left out.
  std::vector<std::string> Shown() const;
};

// Fills the lines; does nothing while a modem is being dialled.
void GetRevs(Session& session, ModComm& comm, RevisionLines& lines);

// The unit's revision text after GetRevs: empty when the unit did not answer, "0.00"
// for one that refused H, else the last five characters of the second CPU's line with
// a leading "0" dropped. The Receive side keeps a leading blank (trim = false), the
// Send side trims it.
std::string UnitRevisionText(const ModComm& comm, const RevisionLines& lines, bool trim);

}  // namespace r6183
