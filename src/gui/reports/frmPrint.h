#pragma once
// The print window: the boxes of the reports, Select All, Print, Preview, Save as PDF...
// and Cancel, laid out as the window of old was, in twips.
#include <QDialog>

#include <memory>

#include "gui/editors/ControlAdapter.h"
#include "gui/shell/FormLink.h"
#include "reports/PrintModel.h"

namespace r6183::gui {

class frmPrint : public QDialog {
  Q_OBJECT
 public:
  // Prints through `output`, or through the default printer of the print service.
  explicit frmPrint(Session& session, QWidget* parent = nullptr, PageOutput* output = nullptr);
  ~frmPrint() override;

  PrintModel& model() { return model_; }

 public slots:
  void reject() override;

 protected:
  void closeEvent(QCloseEvent* e) override;

 private:
  void Build();

  std::unique_ptr<PageOutput> ownOutput_;
  PrintModel model_;
  FormLink form_;
  ControlAdapter adapter_;
};

}  // namespace r6183::gui
