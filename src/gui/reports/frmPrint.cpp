#include "gui/reports/frmPrint.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGroupBox>
#include <QPushButton>

#include "gui/reports/PrinterOutput.h"
#include "gui/reports/frmPreview.h"
#include "gui/shell/Centre.h"
#include "gui/shell/Twips.h"
#include "shell/MenuModel.h"

namespace r6183::gui {

namespace {
QRect Twips(int left, int top, int width, int height) {
  return {ToPixels(left), ToPixels(top), ToPixels(width), ToPixels(height)};
}
}  // namespace

frmPrint::frmPrint(Session& session, QWidget* parent, PageOutput* output)
    : QDialog(parent),
      ownOutput_(output ? nullptr : std::make_unique<PrinterOutput>()),
      model_(session, output ? *output : *ownOutput_),
      form_(session, *this, "frmPrint") {
  setObjectName("frmPrint");
  setWindowTitle(PrintModel::kCaption);
  setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
  Build();
  model_.CloseWindow = [this] { close(); };
  model_.ShowPreview = [this](const std::vector<ReportPage>& pages) {
    frmPreview preview(pages, this);
    preview.exec();
  };
  form_.FollowVisibility();
  model_.Form_Load();
  // the heights and places Form_Load leaves
  setFixedSize(ToPixels(PrintModel::kWidth), ToPixels(model_.Height));
  auto* frame = findChild<QGroupBox*>("Frame1");
  frame->setGeometry(Twips(PrintModel::kFrameLeft, PrintModel::kFrameTop, PrintModel::kFrameWidth, model_.FrameHeight));
  for (int i = 0; i < kReports; ++i)
    findChild<QCheckBox*>(QString::fromStdString(ArrayName("chkPrint", i)))
        ->setGeometry(Twips(PrintModel::kBoxLeft, model_.Top[static_cast<std::size_t>(i)], PrintModel::kBoxWidth,
                            PrintModel::kBoxHeight));
  CentreWindow(*this, parent ? parent->window() : nullptr);
}

frmPrint::~frmPrint() {
  model_.CloseWindow = nullptr;
  model_.ShowPreview = nullptr;
}

void frmPrint::Build() {
  PrintModel& m = model_;
  auto* frame = new QGroupBox(QString::fromStdString(m.Frame1.Text()), this);
  frame->setObjectName("Frame1");
  adapter_.Link(m.Frame1, frame);
  std::vector<QWidget*> order;
  for (int i = 0; i < kReports; ++i) {
    Control& c = m.chkPrint[static_cast<std::size_t>(i)];
    auto* box = new QCheckBox(frame);
    box->setObjectName(QString::fromStdString(c.Name()));
    adapter_.Link(c, box);
    order.push_back(box);
  }
  const int tops[] = {240, 720, 1200, 1680, 2280};
  int n = 0;
  for (Control* c : {&m.cmdSelectAll, &m.cmdPrint, &m.cmdPreview, &m.cmdSavePdf, &m.cmdCancel}) {
    auto* b = new QPushButton(this);
    b->setObjectName(QString::fromStdString(c->Name()));
    b->setAutoDefault(false);
    b->setGeometry(Twips(PrintModel::kButtonLeft, tops[n++], PrintModel::kButtonWidth, PrintModel::kButtonHeight));
    adapter_.Link(*c, static_cast<QAbstractButton*>(b));
    order.push_back(b);
  }
  for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void frmPrint::reject() { close(); }

void frmPrint::closeEvent(QCloseEvent* e) {
  if (isVisible()) done(QDialog::Rejected);
  e->accept();
}

}  // namespace r6183::gui
