#pragma once
// The one text of a programming that a person writes freely: each station's
// Architectural Number and description. Before a Send, the work copy is looked through
// so that a character the line cannot carry stops the Send before anything goes, with a
// message that names the station, rather than failing in the middle of the transfer.
#include <optional>
#include <string>

namespace r6183 {

class Session;

// The message for the first station (in the table's order) whose number or description,
// as far as the message carries it, holds a character the line cannot carry; nothing
// when every station can go, or when the work copy cannot be read (the Send then fails
// in its own way).
std::optional<std::string> StationTextRefusal(Session& s);

}  // namespace r6183
