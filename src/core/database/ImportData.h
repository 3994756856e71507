#pragma once
// Pours a file of an older format into a fresh copy of the template, table by table,
// row by row and field by field, matched by position. Rows beyond the source's last
// keep the template's values, so tables of fixed length keep their length.
#include <string>

namespace r6183 {

class Session;

// False when the source could not be read at all; every other failure is journalled
// and the pouring goes on.
bool ImportData(Session& session, const std::string& source, const std::string& target);

}  // namespace r6183
