#pragma once
// What the number of boards means for the rest of the programming: a smaller system
// clears what the removed boards leave behind.
namespace r6183 {

class Session;

// Clears the stations, service groups and page groups of the boards beyond
// SystemConfig in the work copy, and deletes events left without a page group.
void Validate_Config(Session& session);

}  // namespace r6183
