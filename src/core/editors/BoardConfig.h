#pragma once
// What the number of boards means for the rest of the programming: a smaller system
// clears what the removed boards leave behind.
namespace r6183 {

class Session;

// Deletes the events left without a page group.
inline constexpr const char* kDeleteOrphanEvents =
    "DELETE FROM Event WHERE PageGroup1 = False AND PageGroup2 = False AND PageGroup3 = False AND "
    "PageGroup4 = False AND PageGroup5 = False AND PageGroup6 = False AND PageGroup7 = False AND "
    "PageGroup8 = False AND PageGroup9 = False AND PageGroup10 = False AND PageGroup11 = False AND "
    "PageGroup12 = False AND PageGroup13 = False AND PageGroup14 = False AND PageGroup15 = False AND "
    "PageGroup16 = False";

// Clears the stations, service groups and page groups of the boards beyond
// SystemConfig in the work copy, and deletes events left without a page group.
void Validate_Config(Session& session);

}  // namespace r6183
