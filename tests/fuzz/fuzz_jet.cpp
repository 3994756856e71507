// Arbitrary bytes read as a database of the older version, table by table, as the
// conversion reads it: every table either comes out whole, each row as wide as the
// table, or raises the error of a damaged file. The system tables are read too, for
// their memo and OLE columns; those values go into buffers of 16 KB instead of the
// reader's megabyte: the checks are the same, and the sanitizer's bookkeeping of
// megabytes would bring the runs down to a few a second.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "ScratchDir.h"
#include "database/JetSource.h"
#include "database/TableSource.h"
#include "shell/ErrorNumbers.h"

using namespace r6183;

namespace {
struct Bench {
  fuzz::ScratchDir dir;
  std::string file = (dir.path() / "OLD.MDB").string();
};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Bench bench;
  if (std::FILE* f = std::fopen(bench.file.c_str(), "wb")) {
    std::fwrite(data, 1, size, f);
    std::fclose(f);
  }
  std::unique_ptr<TableSource> source;
  try {
    source = jet::Open(bench.file, 16 * 1024);
  } catch (const RuntimeError&) {
    return 0;
  }
  for (const std::string& name : source->TableNames()) {
    try {
      const SourceTable t = source->ReadTable(name);
      for (const auto& row : t.rows)
        if (row.size() != t.columns.size()) __builtin_trap();
    } catch (const RuntimeError&) {
    }
  }
  return 0;
}
