// The report command: the reports of a document rendered as the print window renders them,
// with the same heading, into one PDF file.
#include <filesystem>
#include <iostream>
#include <sstream>

#include "Commands.h"
#include "PrivateDir.h"
#include "gui/reports/PagePainter.h"
#include "reports/PrintModel.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183::ctl {

namespace {

// No printer here: the pages only go into files.
class PdfOutput : public PageOutput {
 public:
  explicit PdfOutput(PaperSize paper) : paper_(paper) {}
  std::string DefaultPrinter() override { return {}; }
  PaperSize Paper() override { return paper_; }
  void Print(const std::string&, const std::vector<ReportPage>&) override {}
  void WritePdf(const std::string& path, const std::vector<ReportPage>& pages) override {
    gui::WritePdfFile(path, pages, pages.empty() || pages.front().texts.empty() ? "" : pages.front().texts.front().text);
  }

 private:
  PaperSize paper_;
};

// "reports\Bgm.rpt" -> "Bgm"
std::string BaseName(const std::string& file) {
  std::string name = file.substr(file.find_last_of('\\') + 1);
  return name.substr(0, name.rfind('.'));
}

}  // namespace

int Report(Session& session, const std::string& file, const std::string& pdf, const std::string& only,
           const std::string& paper) {
  PrivateDir dir;
  if (!OpenDocument(session, std::filesystem::absolute(file).string(), dir)) return 2;
  PdfOutput output(paper.empty() ? gui::LocalePaper() : EqualsNoCase(paper, "letter") ? kLetter : kA4);
  PrintModel model(session, output);
  model.Form_Load();
  if (!model.cmdSavePdf.Enabled()) return 1;  // the missing-file message is on stderr

  std::vector<int> chosen;
  if (only.empty()) {
    chosen.assign(PrintModel::kShown.begin(), PrintModel::kShown.end());
  } else {
    std::istringstream list(only);
    for (std::string name; std::getline(list, name, ',');) {
      name = Trim(name);
      if (name.size() > 4 && EqualsNoCase(name.substr(name.size() - 4), ".rpt")) name.resize(name.size() - 4);
      int found = -1;
      for (int i = 0; i < kReports; ++i)
        if (EqualsNoCase(BaseName(model.ReportFiles[static_cast<std::size_t>(i)]), name)) found = i;
      if (found < 0) {
        std::string known;
        for (const std::string& f : model.ReportFiles) known += (known.empty() ? "" : ",") + BaseName(f);
        std::cerr << "r6183ctl: no report \"" << name << "\"; the reports are " << known << '\n';
        return 2;
      }
      chosen.push_back(found);
    }
  }
  for (int i : chosen) model.chkPrint[static_cast<std::size_t>(i)].SetValue(1);
  const auto pages = model.TickedPages("report");
  if (!pages) return 1;  // the refusal is on stderr
  try {
    output.WritePdf(pdf, *pages);
  } catch (const std::exception& e) {
    std::cerr << "r6183ctl: " << pdf << " could not be written: " << e.what() << '\n';
    return 1;
  }
  const std::size_t reports = model.Ticked().size();
  std::cout << pdf << ": " << reports << (reports == 1 ? " report, " : " reports, ") << pages->size()
            << (pages->size() == 1 ? " page\n" : " pages\n");
  return 0;
}

}  // namespace r6183::ctl
