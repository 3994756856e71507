#pragma once
// A programming document as text, one line a row: "Table|value|value|...", tables in a
// fixed order, columns in stored order. Two documents with the same programming give
// the same text, which is how transfers and conversions are compared.
#include <ostream>
#include <string>

namespace r6183 {

class Database;

// Raises on a file that can't be read or lacks a programming table.
void DumpDocument(Database& db, std::ostream& out);

}  // namespace r6183
