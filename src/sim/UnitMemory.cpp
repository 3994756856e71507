#include "sim/UnitMemory.h"

#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace r6183::sim {

namespace fs = std::filesystem;

UnitMemory::UnitMemory() {
  std::string pattern = (fs::temp_directory_path() / "r6183-sim-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::system_error(errno, std::generic_category(), "temporary folder");
  dir_ = pattern;
  file_ = dir_ / "memory.mdb";
}

UnitMemory::~UnitMemory() {
  std::error_code ec;
  fs::remove_all(dir_, ec);
}

void UnitMemory::Load(const fs::path& document) {
  if (!fs::is_regular_file(document)) throw std::runtime_error("no such document: " + document.string());
  const fs::path incoming = dir_ / "incoming.mdb";
  fs::copy_file(document, incoming, fs::copy_options::overwrite_existing);
  try {
    Database db = Database::Open(incoming.string(), {.exclusive = false, .readOnly = true});
    (void)db.TableNames();  // reads the schema: a file that is not a database fails here
  } catch (...) {
    std::error_code ec;
    fs::remove(incoming, ec);
    throw std::runtime_error("not a programming document: " + document.string());
  }
  fs::rename(incoming, file_);
}

void UnitMemory::Save(const fs::path& document) const {
  if (!Loaded()) throw std::runtime_error("the unit's memory is empty");
  fs::copy_file(file_, document, fs::copy_options::overwrite_existing);
}

bool UnitMemory::Loaded() const { return fs::exists(file_); }

Database UnitMemory::Open() const {
  if (!Loaded()) throw std::runtime_error("the unit's memory is empty");
  return Database::Open(file_.string());
}

}  // namespace r6183::sim
