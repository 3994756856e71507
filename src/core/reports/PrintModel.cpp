#include "reports/PrintModel.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <filesystem>

#include "shell/Journal.h"
#include "shell/MainMenu.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"
#include "shell/Text.h"

namespace r6183 {

namespace {

constexpr std::string_view kModule = "frmPrint";
constexpr Where kLoad{kModule, "Load"};
constexpr Where kPrint{kModule, "cmdPrint"};
constexpr Where kSelectAll{kModule, "cmdSelectAll"};
constexpr Where kPreview{kModule, "cmdPreview"};
constexpr Where kSavePdf{kModule, "cmdSavePdf"};

constexpr const char* kBaseNames[kReports] = {"Bgm", "PageGrp", "Phonlst", "sched", "event",
                                              "Clid", "class", "dip", "clocks"};

// The system's "reports\Bgm.rpt" as a path of the application directory.
std::string Relative(std::string name) {
  std::replace(name.begin(), name.end(), '\\', '/');
  return name;
}

std::optional<LocalDateTime> FileTime(const std::string& path) {
  std::error_code ec;
  const auto written = std::filesystem::last_write_time(path, ec);
  if (ec || !std::filesystem::is_regular_file(path, ec)) return std::nullopt;
  const std::time_t t = std::chrono::system_clock::to_time_t(std::chrono::file_clock::to_sys(written));
  std::tm tm{};
  localtime_r(&t, &tm);
  return LocalDateTime{tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec};
}

}  // namespace

std::optional<std::array<std::string, kReports>> ReportFilesFor(int productCode) {
  if (productCode < 0 || productCode > 4) return std::nullopt;
  std::array<std::string, kReports> out;
  for (int i = 0; i < kReports; ++i) {
    std::string base = kBaseNames[i];
    switch (productCode) {
      case 0:
        base = "s" + base;
        break;
      case 2:
        base = "c" + base;
        break;
      case 3:
        // the audio report of this product has its small letter
        base = (i == 0 ? "bgm" : base) + "CC";
        break;
      case 4:
        base = "I" + base;
        break;
      default:
        break;
    }
    out[static_cast<std::size_t>(i)] = "reports\\" + base + ".rpt";
  }
  return out;
}

std::string ReportHeading(const Session& s) {
  const std::string& name = s.state.CurrentFileName;
  if (name != "Untitled")
    if (const auto t = FileTime(name))
      return "Database = '" + name + "  " + FormatJournalDate(*t) + " " + FormatJournalTime(*t) + "'";
  return "Database = '" + name + "'";
}

PrintModel::PrintModel(Session& session, PageOutput& output) : rptPrint(session, output), s_(session) {
  for (int i = 0; i < kReports; ++i) chkPrint.emplace_back(ArrayName("chkPrint", i), ControlKind::CheckBox, kBoxCaptions[i]);
  cmdSelectAll.OnClick = [this] { cmdSelectAll_Click(); };
  cmdPrint.OnClick = [this] { cmdPrint_Click(); };
  cmdCancel.OnClick = [this] { cmdCancel_Click(); };
  cmdPreview.OnClick = [this] { cmdPreview_Click(); };
  cmdSavePdf.OnClick = [this] { cmdSavePdf_Click(); };
}

void PrintModel::Form_Load() {
  step(s_.journal(), kLoad, [&] {
    if (const auto files = ReportFilesFor(s_.product.ProductCode)) {
      ReportFiles = *files;
    } else {
      ReportFiles = {};
      s_.Message("The project name " + s_.product.ProductTitle + " was not recognized by the system.");
    }
    Height = 3490;
    chkPrint[3].SetVisible(false);
    chkPrint[4].SetVisible(false);
    Top[5] = 1440;
    Top[6] = 1800;
    Top[7] = 2160;
    FrameHeight = 2932;
    Height -= 300;
    chkPrint[8].SetVisible(false);
    FrameHeight -= 300;
    bool missing = false;
    for (const std::string& file : ReportFiles)
      if (file.empty() || !s_.appDir().Has(Relative(file))) missing = true;
    if (missing) {
      // without every layout nothing is put on paper, on the screen or into a file
      cmdPrint.SetEnabled(false);
      cmdPreview.SetEnabled(false);
      cmdSavePdf.SetEnabled(false);
      s_.prompter().Message(kMissingFiles, Buttons::Ok, Icon::Exclamation, kCaption);
    }
  });
}

void PrintModel::cmdSelectAll_Click() {
  step(s_.journal(), kSelectAll, [&] {
    for (int i : kShown) chkPrint[static_cast<std::size_t>(i)].SetValue(1);
  });
}

std::vector<int> PrintModel::Ticked() const {
  std::vector<int> out;
  for (int i = 0; i < kReports; ++i)
    if (chkPrint[static_cast<std::size_t>(i)].Value() != 0) out.push_back(i);
  return out;
}

void PrintModel::SetUp(int index) {
  const std::string& file = ReportFiles[static_cast<std::size_t>(index)];
  rptPrint.ReportFileName = s_.appDir().PathOf(Relative(file));
  rptPrint.ShownName = file;
  rptPrint.DataFiles0 = s_.state.WorkDbPath;
  rptPrint.Formulas0 = ReportHeading(s_);
}

void PrintModel::Refused(const std::exception& e, int index) {
  const std::string caption = Trim(kBoxCaptions[index]);
  if (const auto* bad = dynamic_cast<const LayoutError*>(&e)) {
    s_.prompter().Message("The report file " + bad->file() + " is damaged, so \"" + caption +
                              "\" cannot be printed.\n" + (bad->line() > 0 ? "Line " + std::to_string(bad->line()) + ": " : "") +
                              bad->reason(),
                          Buttons::Ok, Icon::Exclamation, kCaption);
  } else {
    s_.prompter().Message("\"" + caption + "\" cannot be printed.\n" + e.what(), Buttons::Ok, Icon::Exclamation,
                          kCaption);
  }
}

void PrintModel::cmdPrint_Click() {
  const std::vector<int> ticked = Ticked();
  if (!ticked.empty() && rptPrint.Output().DefaultPrinter().empty()) {
    // no printer: say so, and offer the same pages as a file
    const Answer a = s_.prompter().Message(
        "There is no printer set up on this computer, so the reports cannot be printed.\n"
        "Do you want to save them as a PDF file instead?",
        Buttons::YesNo, Icon::Exclamation, kCaption);
    if (a == Answer::Yes) SaveAsPdf(std::string(kPrint.routine));
    Close();
    return;
  }
  step(s_.journal(), kPrint, [&] {
    for (int index : ticked) {
      try {
        SetUp(index);
        rptPrint.SetAction(1);
      } catch (const std::exception& e) {
        // the reports before it stay printed; the journal's handler ends the loop
        Refused(e, index);
        throw;
      }
      while (rptPrint.Status() <= 0) s_.pump();
    }
  });
  Close();
}

void PrintModel::cmdCancel_Click() { Close(); }

std::optional<std::vector<ReportPage>> PrintModel::TickedPages(const std::string& routine) {
  std::vector<ReportPage> pages;
  bool refused = false;
  step(s_.journal(), Where{kModule, routine}, [&] {
    for (int index : Ticked()) {
      try {
        SetUp(index);
        auto more = rptPrint.Pages();
        pages.insert(pages.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
      } catch (const std::exception& e) {
        Refused(e, index);
        refused = true;
        throw;
      }
    }
  });
  if (refused) return std::nullopt;
  return pages;
}

void PrintModel::cmdPreview_Click() {
  if (Ticked().empty()) {
    s_.prompter().Message("Tick the data to show first.", Buttons::Ok, Icon::Information, kCaption);
    return;
  }
  if (auto pages = TickedPages(std::string(kPreview.routine)); pages && ShowPreview) ShowPreview(*pages);
}

void PrintModel::cmdSavePdf_Click() {
  if (Ticked().empty()) {
    s_.prompter().Message("Tick the data to save first.", Buttons::Ok, Icon::Information, kCaption);
    return;
  }
  SaveAsPdf(std::string(kSavePdf.routine));
}

void PrintModel::SaveAsPdf(const std::string& routine) {
  FileChoice choice;
  choice.title = "Save as PDF";
  choice.filter = "PDF Files (*.pdf)|*.pdf";
  const std::string& doc = s_.state.CurrentFileName;
  choice.initialName = (doc.empty() || doc == "Untitled" ? std::string("Untitled") : std::filesystem::path(doc).stem().string()) + ".pdf";
  choice.confirmOverwrite = true;
  auto path = s_.prompter().SaveFile(choice);
  if (!path) return;
  if (std::filesystem::path(*path).extension().empty()) *path += ".pdf";
  const auto pages = TickedPages(routine);
  if (!pages) return;
  step(s_.journal(), Where{kModule, routine}, [&] {
    try {
      rptPrint.Output().WritePdf(*path, *pages);
    } catch (const std::exception& e) {
      s_.prompter().Message("The PDF file " + *path + " could not be written.\n" + e.what(), Buttons::Ok,
                            Icon::Exclamation, kCaption);
      throw;
    }
  });
}

void PrintModel::Close() {
  if (CloseWindow) CloseWindow();
}

void mnuPrint_Click(Session& s) {
  if (FileSaveBlocked(s)) return;
  SaveOpenForms(s, "Print");
  if (!s.state.SaveCancelled) s.windows().ShowModal("frmPrint");
}

}  // namespace r6183
