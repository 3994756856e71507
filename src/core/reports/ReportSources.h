#pragma once
// The record sources a layout can print: the programming tables read as a person wants
// them on paper (texts without their filling blanks, stations with their board, events
// with their schedule's days, the option switches as the chart sets them). Each source has
// a fixed list of fields; a layout names its source and fields, and the parser checks them
// against this list. docs/REPORTS.md tells every source.
#include <string>
#include <string_view>
#include <vector>

namespace r6183 {

class Database;

struct SourceInfo {
  std::string name;
  std::string tables;  // the programming tables it reads, for the documentation
  std::vector<std::string> fields;
};

// Rows of text, one value a field in the order of the source's fields.
struct SourceRows {
  std::vector<std::string> fields;
  std::vector<std::vector<std::string>> rows;
  // The position of a field, without regard to case; -1 when the source has none.
  int Index(std::string_view field) const;
};

const std::vector<SourceInfo>& ReportSources();
// The source of that name, without regard to case; null when there is none.
const SourceInfo* FindSource(std::string_view name);
// Whether `info` has the field, without regard to case.
bool HasField(const SourceInfo& info, std::string_view field);

// What every source needs to know of the document: the boards installed.
struct DocumentFacts {
  int boards = 1;  // 1 to 4
  int InstalledStations() const { return boards * 24; }
  int InstalledGroups() const { return boards * 4; }
};
DocumentFacts ReadFacts(Database& db);

// Reads the rows of the source named `name` (one of ReportSources()).
SourceRows LoadSource(Database& db, std::string_view name, const DocumentFacts& facts);

// True for a value that counts as ticked: not empty, not "0".
bool IsTicked(std::string_view value);
// Page groups as a person reads them: "1-4, 7, 9-12"; empty for none.
std::string GroupRanges(const std::vector<int>& groups);

}  // namespace r6183
