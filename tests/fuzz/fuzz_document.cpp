// Arbitrary bytes opened as a document, as File Open does: a document of the current
// format is copied to the work copy and checked; a SQLite file of another kind or a
// database of the older version is converted, the operator agreeing. Whatever the
// bytes, the file is kept as it was, or it is replaced by a document of the current
// format with the bytes kept in the backup beside it.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "ScratchDir.h"
#include "database/DocumentCommands.h"
#include "database/TableSource.h"
#include "shell/Clock.h"
#include "shell/Prompter.h"
#include "shell/Session.h"

using namespace r6183;

namespace {
namespace fs = std::filesystem;

fs::path MakeDirs(const fs::path& dir) {
  fs::create_directory(dir / "app");
  fs::create_directory(dir / "docs");
  const char* source = std::getenv("R6183_TEMPLATE");
  fs::copy_file(source ? source : R6183_TEMPLATE, dir / "app" / "DEFAULT");
  return dir;
}

std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

// No errors database in the application directory: journalled failures cost nothing.
struct Bench {
  Bench() : session(AppDir(MakeDirs(scratch.path()) / "app"), prompter, clock) {}
  fuzz::ScratchDir scratch;
  const fs::path& dir = scratch.path();
  ScriptedPrompter prompter;  // answers Yes to the conversion
  ManualClock clock;
  Session session;
};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Bench bench;
  Session& s = bench.session;
  const std::string file = (bench.dir / "docs" / "SITE.MDB").string();
  const std::string backup = (bench.dir / "docs" / "SITE.OLD").string();
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::error_code ec;
  fs::remove(backup, ec);
  if (std::FILE* f = std::fopen(file.c_str(), "wb")) {
    std::fwrite(data, 1, size, f);
    std::fclose(f);
  }

  OpenDatabase(s, file);
  if (ReadAll(file) != bytes && (DetectFormat(file) != FileFormat::Document || ReadAll(backup) != bytes))
    __builtin_trap();

  bench.prompter.Clear();
  s.state.CurrentFileName.clear();
  RemoveWorkFiles(s);
  return 0;
}
