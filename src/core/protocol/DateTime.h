#pragma once
// The unit's date, time and daylight-saving switch: read live and set from the PC's
// clock or from the date window's boxes.
#include <functional>
#include <optional>
#include <string>

namespace r6183 {

class ModComm;
class ProgressWindow;
class Session;

// The six boxes of the date window: month, day, year (two digits), hour, minute, second.
struct DateTimeBoxes {
  std::string month, day, year, hour, minute, second;
};

// The range of a box: date boxes 0 to 2 (month, day, year), time boxes 0 to 2.
struct BoxRange {
  int min, max;
};
BoxRange DateBoxRange(int index);
BoxRange TimeBoxRange(int index);
// A box's text is a number within its range.
bool BoxValid(const std::string& text, BoxRange range);
// The text a box shows when it loses the focus: a leading zero to two digits.
std::string TwoDigitBox(const std::string& text);

// The boxes of "mm/dd/yy hh:mm:ss", each two digits within its box's range; nothing
// otherwise. As in the window, the check is box by box: 04/31 and 02/29 of any year pass
// and go to the unit as they stand.
std::optional<DateTimeBoxes> BoxesOfText(const std::string& text);

// True when "m/d/yy h:m:s" is a real date and time; every two-digit year passes.
bool ValidMdyyDateTime(const std::string& text);

// The fields of a T message in msg_str, as the date window shows them.
DateTimeBoxes BoxesOf(const std::string& tMessage);

void Setup_Daylight(Session& s, ModComm& comm);
void Receive_Daylight_Savings(Session& s, ModComm& comm);
bool ValidDataTime(Session& s, ModComm& comm);
void SendCurrentDateTime(Session& s, ModComm& comm);
void SendDayLight(Session& s, ModComm& comm, bool ticked);
// Sends T from the boxes; shows the failure text when it is refused. False then.
bool SendDateTime(Session& s, ModComm& comm, const DateTimeBoxes& boxes);

// "Update" of the date window: the daylight switch where the unit has one, then the
// date and time from the boxes. False when the date and time were refused.
bool UpdateDateTime(Session& s, ModComm& comm, const DateTimeBoxes& boxes, bool daylightTicked);

// The whole exchange of the Date/Time command. `showDateWindow` is called with the T
// message in msg_str once the unit's clock makes sense; it is the modal date window.
void mnuDate_Click(Session& s, ModComm& comm, ProgressWindow& progress,
                   const std::function<void()>& showDateWindow);

}  // namespace r6183
