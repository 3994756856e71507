#pragma once
// The base of r6183ctl's tests: a private application directory and scratch folder per test,
// and runs of the program as a shell would start it, with no standard input.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/TestSupport.h"

namespace r6183::test {

struct Result {
  int code;
  std::string out, err;
};

class CtlTest : public ::testing::Test {
 protected:
  CtlTest() {
    fs::create_directory(dir.path() / "app");
    CopyStagedAppDir(dir.path() / "app");
  }
  // r6183ctl ARGS, the arguments as the shell reads them, run in the test's folder.
  Result Ctl(const std::string& args) {
    const std::string out = dir.str("stdout"), err = dir.str("stderr");
    const std::string cmd = "cd '" + dir.str() + "' && '" + R6183CTL_PATH + "' --appdir '" + dir.str("app") + "' " + args +
                            " >'" + out + "' 2>'" + err + "' </dev/null";
    const int status = std::system(cmd.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(out), ReadFile(err)};
  }
  // r6183ctl COMMAND FILE ARGS, FILE a name in the test's folder.
  Result Ctl(const std::string& command, const std::string& file, const std::string& args) {
    return Ctl(command + " " + Quoted(file) + (args.empty() ? "" : " " + args));
  }
  std::string Quoted(const std::string& file) const { return "'" + dir.str(file) + "'"; }
  std::string Bytes(const std::string& file) const { return ReadFile(dir.path() / file); }
  // The rows of `dump FILE` that begin with `prefix` ("Bgm|", "Clid|").
  std::vector<std::string> DumpRows(const std::string& file, const std::string& prefix) {
    std::istringstream in(Ctl("dump", file, "").out);
    std::vector<std::string> rows;
    for (std::string l; std::getline(in, l);)
      if (l.starts_with(prefix)) rows.push_back(l);
    return rows;
  }

  TempDir dir;
};

}  // namespace r6183::test
