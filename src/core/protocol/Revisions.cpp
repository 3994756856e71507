#include "protocol/Revisions.h"

#include "protocol/ModComm.h"
#include "shell/MainMenu.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

std::string Line(const char* label, const std::string& value) { return std::string(label) + "\t" + value; }

// "0231" -> "Rev 2.31", "1105" -> "Rev 11.05"; a short field shows what there is
std::string RevisionField(const std::string& digits) {
  std::string major = MidChars(digits, 1, 2);
  if (!major.empty() && major[0] == '0') major.erase(0, 1);
  return "Rev " + major + "." + MidChars(digits, 3, 2);
}

}  // namespace

std::vector<std::string> RevisionLines::Shown() const {
  std::vector<std::string> v;
  for (const std::string* l : {&RevLineTool, &RevLineMain, &RevLineSecond, &RevLineThird, &RevLineStatus,
                               &RevLineCard1, &RevLineCard2})
    if (!l->empty()) v.push_back(*l);
  return v;
}

void GetRevs(Session& s, ModComm& comm, RevisionLines& lines) {
  if (DialingModem(s)) return;
  enum class Outcome { Good, Pre, Unknown } outcome = Outcome::Unknown;
  step(s.journal(), Where{"ModComm", "GetRevs"}, [&] {
    std::string v = s.state.ProgramDbRevision;
    if (!v.empty() && v[0] == '0') v.erase(0, 1);
    lines.RevLineTool = Line("Programming Tool: ", "Rev " + v);

    if (!comm.Init_Comm(0)) {
      outcome = Outcome::Unknown;
    } else {
      comm.msg_str = "H";
      if (!comm.Send_Msg(comm.msg_str)) {
        outcome = comm.NoResponseFlag ? Outcome::Unknown : Outcome::Pre;
      } else {
        comm.ExceptionsFlag = false;
        // any valid answer is read as the revisions, at their places
        outcome = comm.Receive_Msg(false) ? Outcome::Good : Outcome::Pre;
      }
    }

    lines.RevLineThird.clear();
    lines.RevLineStatus.clear();
    lines.RevLineCard1.clear();
    lines.RevLineCard2.clear();
    switch (outcome) {
      case Outcome::Good: {
        const std::string& m = comm.msg_str;
        lines.RevLineSecond = Line("Second CPU: ", RevisionField(MidChars(m, 2, 4)));
        lines.RevLineMain = Line("Main CPU: ", RevisionField(MidChars(m, 6, 4)));
        if (const std::string third = MidChars(m, 10, 4); third != "0000")
          lines.RevLineThird = Line("Third CPU: ", RevisionField(third));
        if (const std::string card = MidChars(m, 14, 1); card == "1" || card == "2")
          lines.RevLineCard1 = Line("First Option Card: ", "Type " + card);
        if (MidChars(m, 15, 1) == "1") lines.RevLineCard2 = Line("Second Option Card: ", "Type CLOCK");
        break;
      }
      case Outcome::Pre:
        lines.RevLineSecond = Line("Second CPU: ", "Pre 2.00");
        lines.RevLineMain = Line("Main CPU: ", "Pre 2.00");
        break;
      case Outcome::Unknown:
        lines.RevLineSecond = Line("Second CPU: ", "Unknown");
        lines.RevLineMain = Line("Main CPU: ", "Unknown");
        lines.RevLineThird = Line("Third CPU: ", "Unknown");
        lines.RevLineStatus = "** Not Communicating **";
        break;
    }
  });
  s.state.DateTimeActive = 0;
}

std::string UnitRevisionText(const ModComm& comm, const RevisionLines& lines, bool trim) {
  if (comm.NoResponseFlag) return {};
  std::string rv = comm.NakLimitFlag ? std::string("00.00") : RightChars(lines.RevLineSecond, 5);
  if (trim) rv = Trim(rv);
  if (!rv.empty() && rv[0] == '0') rv.erase(0, 1);
  return rv;
}

}  // namespace r6183
