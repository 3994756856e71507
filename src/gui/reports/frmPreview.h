#pragma once
// The pages of the ticked reports on the screen, one under the other, as they will come
// out of the printer.
#include <QDialog>

#include <vector>

#include "reports/ReportPage.h"

class QLabel;

namespace r6183::gui {

class frmPreview : public QDialog {
  Q_OBJECT
 public:
  frmPreview(const std::vector<ReportPage>& pages, QWidget* parent = nullptr);
  int PageCount() const { return static_cast<int>(pages_.size()); }

 private:
  void Zoom(double factor);
  void Paint();

  std::vector<ReportPage> pages_;
  std::vector<QLabel*> labels_;
  QLabel* count_ = nullptr;
  double zoom_ = 1.0;
};

}  // namespace r6183::gui
