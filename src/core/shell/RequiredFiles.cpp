#include "shell/RequiredFiles.h"

#include <algorithm>

#include "shell/FileOps.h"
#include "shell/ProductIdentity.h"
#include "shell/Session.h"

namespace r6183 {

namespace {
// The operator's list, made from its shipped copy when it is not there yet.
bool CheckList(Session& session, const std::string& list, const std::string& shipped) {
  const AppDir& dir = session.appDir();
  if (!dir.Has(list)) {
    if (!CheckFile(session, shipped)) return false;
    ReplaceWithCopy(dir.PathOf(shipped), dir.PathOf(list));
  }
  return CheckFile(session, list);
}
}  // namespace

bool CheckFile(Session& session, const std::string& name) {
  if (session.appDir().Has(name)) return true;
  // the lookup takes "reports/sched.rpt"; the message keeps the system's "reports\sched.rpt"
  std::string shown = name;
  std::replace(shown.begin(), shown.end(), '/', '\\');
  session.prompter().Message("File '" + shown +
                                 "' was not found in the application directory. Make sure the "
                                 "application was properly installed.",
                             Buttons::Ok, Icon::Exclamation, session.product.ProductTitle);
  return false;
}

bool CheckRequiredFiles(Session& session) {
  bool ok = true;
  if (!CheckFile(session, "DEFAULT")) ok = false;
  if (!CheckFile(session, "Errors")) ok = false;
  if (!CheckList(session, "phonelst", "Dphonelst")) return false;
  if (!CheckList(session, "modem", "Dmodem")) return false;
  for (const std::string& report : ReportFileNames(kProductIndex))
    if (!CheckFile(session, report)) return false;
  return ok;
}

}  // namespace r6183
