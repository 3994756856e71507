#pragma once
// r6183ctl run by the end-to-end tests with the test's folder as its application directory.
#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "support/TestSupport.h"

namespace r6183::test {

// The exit code; `printed` gets standard output, and standard error too unless `errors`
// is false (it then goes to err.txt in the folder).
inline int Ctl(const TempDir& dir, const std::string& args, std::string& printed, bool errors = true) {
  const std::string log = dir.str("ctl.txt");
  const std::string cmd = std::string("'") + R6183CTL_PATH + "' --appdir '" + dir.str() + "' " + args + " >'" + log +
                          (errors ? "' 2>&1" : "' 2>'" + dir.str("err.txt") + "'") + " </dev/null";
  const int status = std::system(cmd.c_str());
  printed = ReadFile(log);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace r6183::test
