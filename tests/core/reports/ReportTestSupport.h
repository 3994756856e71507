#pragma once
// Shared by the report tests: a document on disk made from a shipped one, and the output
// of the print window recorded instead of printed.
#include <SQLiteCpp/Database.h>

#include <string>
#include <utility>
#include <vector>

#include "reports/ReportControl.h"
#include "support/TestSupport.h"

namespace r6183::test {

// `from` ("DEFAULT", "sample.mdb") of the shipped files, copied to `path` and changed by `sql`.
inline void MakeDocument(const fs::path& path, const std::string& from, const std::string& sql = "") {
  fs::copy_file(StagedAppDir() / from, path, fs::copy_options::overwrite_existing);
  if (!sql.empty()) SQLite::Database(path.string(), SQLite::OPEN_READWRITE).exec(sql);
}

// All pages' text runs, a line each.
inline std::string AllText(const std::vector<ReportPage>& pages) {
  std::string out;
  for (const ReportPage& p : pages) out += PageText(p);
  return out;
}

struct RecordingOutput : PageOutput {
  std::string printer = "Office";
  struct Job {
    std::string name;
    std::vector<ReportPage> pages;
  };
  std::vector<Job> jobs;
  std::vector<Job> pdfs;  // the path as name
  std::string DefaultPrinter() override { return printer; }
  PaperSize Paper() override { return kA4; }
  void Print(const std::string& name, const std::vector<ReportPage>& pages) override { jobs.push_back({name, pages}); }
  void WritePdf(const std::string& path, const std::vector<ReportPage>& pages) override { pdfs.push_back({path, pages}); }
  std::vector<std::string> JobNames() const {
    std::vector<std::string> out;
    for (const Job& j : jobs) out.push_back(j.name);
    return out;
  }
};

}  // namespace r6183::test
