#pragma once
// The programming as a YAML text, for version control and editing by hand: boards,
// stations, custom page groups, schedules with their days and events, audio, class of
// service, options and clocks, in a fixed order with a comment over each section.
//
// Texts keep the form the document stores them in, so that a text read back gives the
// same document: a station whose number and description are filled with blanks to 4 and
// 15 characters (as the unit and the station window keep them) says `filled: yes` and
// shows them without the blanks; any other station shows its texts exactly. A clock
// stored in another form than the clocks window writes (the message's "03" for 3) says
// so with `stored`.
#include <string>
#include <string_view>
#include <vector>

#include "options/ClockRules.h"
#include "textform/Programming.h"

namespace r6183 {

// The text of `p`. Stations and page groups beyond the boards are no part of the system
// and are left out (`leftOut` says which had something); the class of service of every
// group is kept, as the document keeps it.
std::string ProgrammingText(const Programming& p, const std::vector<ClockType>& catalogue,
                            std::vector<std::string>& leftOut);

// A refusal of a text, at its line and column (1-based).
struct TextRefusal {
  int line = 0, column = 0;
  std::string text;
  bool operator==(const TextRefusal&) const = default;
};

// Reads a text into a programming that starts as `base` (the template): every section
// given replaces that part. Every entry goes through the rules of the window that edits
// it; all refusals are given, in the order of the text. `model` names the unit in the
// line's refusal of a character.
struct TextImport {
  Programming programming;
  std::vector<TextRefusal> refusals;
};
TextImport ReadProgrammingText(std::string_view text, const Programming& base, const std::vector<ClockType>& catalogue,
                               std::string_view model);

}  // namespace r6183
