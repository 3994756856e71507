#include "protocol/DateTime.h"

#include <cctype>

#include "protocol/ModComm.h"
#include "protocol/ProgressWindow.h"
#include "shell/Conversions.h"
#include "shell/MainMenu.h"
#include "shell/Session.h"
#include "shell/Utility.h"

namespace r6183 {

namespace {

bool Busy(const Session& s) {
  const int n = s.forms.Count();
  if (n == 3) {
    const std::string c = s.forms.At(2).Caption();
    return c == s.product.ProductTitle || c == "Dialing Modem";
  }
  if (n == 2) return s.forms.At(1).Name() == "frmMsgWait" || s.forms.At(1).Caption() == "Dialing Modem";
  return false;
}

// A run of digits as a number; -1 when the text is not all digits.
int Digits(const std::string& t) {
  if (t.empty()) return -1;
  int v = 0;
  for (char c : t) {
    if (!std::isdigit(static_cast<unsigned char>(c))) return -1;
    v = v * 10 + (c - '0');
    if (v > 9999) return -1;
  }
  return v;
}

bool Leap(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }
}  // namespace

BoxRange DateBoxRange(int index) {
  static constexpr BoxRange kRanges[] = {{1, 12}, {1, 31}, {0, 99}};
  return kRanges[index];
}

BoxRange TimeBoxRange(int index) {
  static constexpr BoxRange kRanges[] = {{0, 23}, {0, 59}, {0, 59}};
  return kRanges[index];
}

bool BoxValid(const std::string& text, BoxRange range) {
  if (!IsNumeric(text)) return false;
  const double v = Val(text);
  return v >= range.min && v <= range.max;
}

std::string TwoDigitBox(const std::string& text) { return InsLeftZeroToOne(text); }

std::optional<DateTimeBoxes> BoxesOfText(const std::string& text) {
  if (text.size() != 17 || text[2] != '/' || text[5] != '/' || text[8] != ' ' || text[11] != ':' || text[14] != ':')
    return std::nullopt;
  const DateTimeBoxes b{text.substr(0, 2),  text.substr(3, 2),  text.substr(6, 2),
                        text.substr(9, 2), text.substr(12, 2), text.substr(15, 2)};
  const std::string* date[] = {&b.month, &b.day, &b.year};
  const std::string* time[] = {&b.hour, &b.minute, &b.second};
  for (int i = 0; i < 3; ++i) {
    for (const std::string* box : {date[i], time[i]})
      if (!std::isdigit(static_cast<unsigned char>((*box)[0])) || !std::isdigit(static_cast<unsigned char>((*box)[1])))
        return std::nullopt;
    if (!BoxValid(*date[i], DateBoxRange(i)) || !BoxValid(*time[i], TimeBoxRange(i))) return std::nullopt;
  }
  return b;
}

bool ValidMdyyDateTime(const std::string& text) {
  // m/d/yy h:m:s, each part one or two digits (the year two)
  const auto space = text.find(' ');
  if (space == std::string::npos) return false;
  auto split = [](const std::string& t, char sep) {
    std::vector<std::string> parts;
    std::string part;
    for (char c : t) {
      if (c == sep) {
        parts.push_back(part);
        part.clear();
      } else {
        part += c;
      }
    }
    parts.push_back(part);
    return parts;
  };
  const auto date = split(text.substr(0, space), '/');
  const auto time = split(text.substr(space + 1), ':');
  if (date.size() != 3 || time.size() != 3) return false;
  const int month = Digits(date[0]), day = Digits(date[1]), year = Digits(date[2]);
  const int hour = Digits(time[0]), minute = Digits(time[1]), second = Digits(time[2]);
  if (month < 1 || month > 12 || day < 1 || year < 0 || year > 99) return false;
  static constexpr int kDays[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  // a two-digit year reads as 1930 to 2029; a 29th of February needs a leap year
  const int fullYear = year < 30 ? 2000 + year : 1900 + year;
  if (day > kDays[month - 1] || (month == 2 && day == 29 && !Leap(fullYear))) return false;
  return hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59 && second >= 0 && second <= 59;
}

DateTimeBoxes BoxesOf(const std::string& t) {
  auto at = [&](std::size_t pos) { return t.size() >= pos + 1 ? t.substr(pos - 1, 2) : std::string(); };
  return {at(8), at(10), at(12), at(2), at(4), at(6)};
}

void Setup_Daylight(Session& s, ModComm& comm) {
  const std::string& m = comm.msg_str;
  const char third = m.size() >= 3 ? m[2] : '\0';
  if (third == '0') {
    s.state.DaylightSupported = s.state.DaylightEnabled = 0;
  } else {
    s.state.DaylightSupported = 1;
    s.state.DaylightEnabled = m.size() >= 2 && m[1] == '1';
  }
}

void Receive_Daylight_Savings(Session& s, ModComm& comm) {
  comm.msg_str = "Z";
  if (!comm.Send_Msg(comm.msg_str)) {
    s.state.DaylightEnabled = s.state.DaylightSupported = 0;
    return;
  }
  comm.ExceptionsFlag = false;
  if (!comm.Receive_Msg(true)) {
    s.state.DaylightEnabled = s.state.DaylightSupported = 0;
    return;
  }
  Setup_Daylight(s, comm);
}

bool ValidDataTime(Session& s, ModComm& comm) {
  bool valid = true;
  quietly([&] {
    comm.logFile.PrintLine("Valid_DateTime msg_str:  " + comm.msg_str);
  });
  step(s.journal(), Where{"ModComm", "ValidDataTime"}, [&] {
    const DateTimeBoxes b = BoxesOf(comm.msg_str);
    valid = ValidMdyyDateTime(b.month + "/" + b.day + "/" + b.year + " " + b.hour + ":" + b.minute + ":" + b.second);
  });
  return valid;
}

void SendCurrentDateTime(Session& s, ModComm& comm) {
  const LocalDateTime now = s.clock().Now();
  auto two = [](int v) { return InsLeftZeroToOne(std::to_string(v)); };
  const std::string year = std::to_string(now.year).substr(2, 2);
  comm.msg_str = "T" + two(now.hour) + two(now.minute) + two(now.second) + two(now.month) + two(now.day) + year;
  comm.Send_Msg(comm.msg_str);
}

void SendDayLight(Session& s, ModComm& comm, bool ticked) {
  comm.msg_str = std::string("U") + (ticked ? "1" : "0") + (s.state.DaylightSupported ? "1" : "0");
  comm.Send_Msg(comm.msg_str);
}

bool SendDateTime(Session& s, ModComm& comm, const DateTimeBoxes& b) {
  comm.msg_str = "T" + b.hour + b.minute + b.second + b.month + b.day + b.year;
  if (comm.Send_Msg(comm.msg_str)) return true;
  s.Message("A Communication Problem occurred. Time could not be updated. Please try  again.");
  return false;
}

bool UpdateDateTime(Session& s, ModComm& comm, const DateTimeBoxes& boxes, bool daylightTicked) {
  if (s.state.DaylightSupported) SendDayLight(s, comm, daylightTicked);
  return SendDateTime(s, comm, boxes);
}

void mnuDate_Click(Session& s, ModComm& comm, ProgressWindow& w, const std::function<void()>& showDateWindow) {
  if (Busy(s) || s.state.DateTimeActive) return;
  s.state.DateTimeActive = 1;
  w.SetModemComm();
  w.Show();
  w.ChangeCaption("Preparing to Communicate");
  w.SetPlainText("Preparing to communicate with " + s.product.ProductModel + " system...");
  DisableAllRootMenus(s);

  bool reachedUnit = false, shown = false;
  if (comm.Init_Comm(0)) {
    for (;;) {
      step(s.journal(), Where{"frmMenu", "mnuDate"}, [&] { comm.logFile.Rewrite(s, "log_file.txt"); });
      Receive_Daylight_Savings(s, comm);
      comm.msg_str = "Q";
      if (!comm.Send_Msg(comm.msg_str)) break;
      comm.ExceptionsFlag = false;
      reachedUnit = true;
      if (!comm.Receive_Msg(false)) break;
      if (ValidDataTime(s, comm)) {
        w.Unload();
        showDateWindow();
        shown = true;
        break;
      }
      // a clock that makes no sense is set from the PC without asking, and read again
      SendCurrentDateTime(s, comm);
      comm.logFile.Close();
    }
  }
  if (!shown) {
    w.Unload();
    s.Message("Cannot perform 'Set System Date and Time'.\n\rCommunications not established.", Buttons::Ok,
              Icon::Exclamation);
  }
  comm.logFile.Close();
  if (reachedUnit && comm.ExceptionsFlag) {
    w.Unload();
    s.Message("Receiving exceptions have occurred. Check the Log file for more information.", Buttons::Ok,
              Icon::Exclamation);
  }
  s.state.DateTimeActive = 0;
  InableAllRootMenus(s);
}

}  // namespace r6183
