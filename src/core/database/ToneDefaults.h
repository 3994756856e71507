#pragma once
// Time tones and emergency tones can only sound in page groups of boards that are
// installed: these clear the groups of absent boards in the work copy. They never set
// a group; a newly added board's groups are set by the configuration window.
namespace r6183 {

class Session;

// Clears the groups of boards beyond the work copy's own board count.
void UpdateData(Session& session);

// The same with `n` being the board count plus one; runs at every open.
void SetToneDefaults(Session& session, int n);

}  // namespace r6183
