#pragma once
// The rules of the print window (frmPrint): nine boxes, one a report, of which the product
// shows six; the report files named by the product code and looked for at every opening;
// Print runs each ticked report to the default printer with the heading of the document.
// Beyond the window of old: Preview and Save as PDF..., and a PDF offered when the machine
// has no printer.
#include <array>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "editors/Controls.h"
#include "reports/ReportControl.h"

namespace r6183 {

class Session;

inline constexpr int kReports = 9;

// The report files of a product code (0 to 4), by box: "reports\Bgm.rpt" for box 0 of
// product 1. Nothing for another code.
std::optional<std::array<std::string, kReports>> ReportFilesFor(int productCode);

// The heading formula of the open document: "Database = '" + the file name + two blanks +
// the date and time of the file + "'", without the date for "Untitled" (or a file that is
// no longer there).
std::string ReportHeading(const Session& s);

class PrintModel {
 public:
  PrintModel(Session& session, PageOutput& output);
  PrintModel(const PrintModel&) = delete;
  PrintModel& operator=(const PrintModel&) = delete;

  static constexpr const char* kCaption = "Print";
  static constexpr const char* kBoxCaptions[kReports] = {
      " Audio Connections", " Custom Page Groups", " Phone List", " Schedule - Active Days", " Schedule - Events",
      " ArchNumber / CLID", " Class of Service",   " System Options", " Clock Options"};
  static constexpr std::array<int, 6> kShown{0, 1, 2, 5, 6, 7};
  // Sizes in twips: the window, the frame, the boxes inside the frame, the buttons.
  static constexpr int kDesignHeight = 4410, kWidth = 5415;
  static constexpr int kFrameLeft = 120, kFrameTop = 120, kFrameWidth = 3375, kDesignFrameHeight = 3600;
  static constexpr int kBoxLeft = 240, kBoxWidth = 2955, kBoxHeight = 255;
  static constexpr std::array<int, kReports> kDesignTops{360, 720, 1080, 1440, 1800, 2160, 2520, 2880, 3240};
  static constexpr int kButtonLeft = 3660, kButtonWidth = 1575, kButtonHeight = 375;
  static constexpr const char* kMissingFiles = "Cannot print data because print files not found.";

  std::array<std::string, kReports> ReportFiles;
  Control Frame1{"Frame1", ControlKind::Frame, "Select data to print"};
  std::deque<Control> chkPrint;
  Control cmdSelectAll{"cmdSelectAll", ControlKind::Button, "Select All"};
  Control cmdPrint{"cmdPrint", ControlKind::Button, "Print"};
  Control cmdPreview{"cmdPreview", ControlKind::Button, "Preview"};
  Control cmdSavePdf{"cmdSavePdf", ControlKind::Button, "Save as PDF..."};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};
  ReportControl rptPrint;

  // The geometry Form_Load leaves, in twips: the window's height, the frame's height and
  // each box's top inside the frame.
  int Height = kDesignHeight;
  int FrameHeight = kDesignFrameHeight;
  std::array<int, kReports> Top = kDesignTops;

  void Form_Load();
  void cmdSelectAll_Click();
  // Prints every ticked box in order, then closes the window, ticked or not.
  void cmdPrint_Click();
  void cmdCancel_Click();
  // The ticked reports on the screen, or into one PDF file the operator names.
  void cmdPreview_Click();
  void cmdSavePdf_Click();

  // The indices of the ticked boxes, in order.
  std::vector<int> Ticked() const;
  // The pages of the ticked reports one after the other; nothing when a layout was
  // refused (the operator has been told).
  std::optional<std::vector<ReportPage>> TickedPages(const std::string& routine);

  // Set by whoever shows the window.
  std::function<void()> CloseWindow;
  std::function<void(const std::vector<ReportPage>&)> ShowPreview;

 private:
  // Points rptPrint at box `index`'s report on the work copy with the document's heading.
  void SetUp(int index);
  // Asks for a file and writes the pages of the ticked reports into it.
  void SaveAsPdf(const std::string& routine);
  void Refused(const std::exception& e, int index);
  void Close();

  Session& s_;
};

// File > Print: the open windows' edits settled under "Print", then the window, modally.
// Nothing while a modem is being dialled.
void mnuPrint_Click(Session& s);

}  // namespace r6183
