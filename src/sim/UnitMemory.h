#pragma once
// The unit's programming memory, kept as a programming document: a private SQLite
// copy that starts from a given document (or the template) and can be saved to a
// file. The transfers read and write it one operation at a time through Open().
#include <filesystem>
#include <string>

#include "database/Database.h"

namespace r6183::sim {

class UnitMemory {
 public:
  // Makes an empty memory in a private temporary folder, removed with the object.
  UnitMemory();
  ~UnitMemory();
  UnitMemory(const UnitMemory&) = delete;
  UnitMemory& operator=(const UnitMemory&) = delete;

  // Takes a copy of a document. Raises (leaving the memory as it was) when the file is
  // missing or not a database.
  void Load(const std::filesystem::path& document);
  // Writes the memory to a document file; raises when the memory is empty or the file
  // can't be written.
  void Save(const std::filesystem::path& document) const;
  bool Loaded() const;
  // The memory as a database, for one operation.
  Database Open() const;
  const std::filesystem::path& Path() const { return file_; }

 private:
  std::filesystem::path dir_, file_;
};

}  // namespace r6183::sim
