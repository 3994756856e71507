#include "gui/connectivity/frmPhoneList.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

#include "gui/editors/GroupBoxes.h"
#include "gui/shell/Twips.h"
#include "shell/Session.h"

namespace r6183::gui {

namespace {
QString Q(const std::string& s) { return QString::fromStdString(s); }

QLabel* NamedLabel(const char* name) {
  auto* l = new QLabel;
  l->setObjectName(name);
  return l;
}

QLineEdit* NamedBox(const char* name) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  return box;
}
}  // namespace

// --- the edit window

frmPhoneUpdate::frmPhoneUpdate(Session& session, PhoneUpdateModel& model, QWidget* parent)
    : QDialog(parent), model_(model), form_(session, *this, "frmPhoneUpdate") {
  setObjectName("frmPhoneUpdate");
  setWindowTitle(Q(model_.caption));
  auto* label2 = NamedLabel("Label2");
  auto* label1 = NamedLabel("Label1");
  auto* description = NamedBox("txtDescription");
  auto* number = NamedBox("txtPhonenum");
  description->setMinimumWidth(ToPixels(3500));
  label2->setBuddy(description);
  label1->setBuddy(number);
  auto* fields = new QGridLayout;
  fields->addWidget(label2, 0, 0);
  fields->addWidget(description, 0, 1);
  fields->addWidget(label1, 1, 0);
  fields->addWidget(number, 1, 1);
  auto* column = new QVBoxLayout(this);
  column->addLayout(fields);
  column->addLayout(ButtonRow(adapter_, {&model_.cmdOk, &model_.cmdCancel}));
  adapter_.Link(model_.Label2, label2);
  adapter_.Link(model_.Label1, label1);
  adapter_.Link(model_.txtDescription, description);
  adapter_.Link(model_.txtPhonenum, number);
  adapter_.click = [this](Control& c) {
    if (&c == &model_.cmdOk) model_.cmdOk_Click();
    else model_.cmdCancel_Click();
  };
  if (auto* ok = findChild<QPushButton*>("cmdOk")) ok->setDefault(true);
  model_.CloseWindow = [this] { accept(); };
  model_.ShowCaption = [this] { setWindowTitle(Q(model_.caption)); };
  layout()->setSizeConstraint(QLayout::SetFixedSize);
  form_.FollowVisibility();
}

frmPhoneUpdate::~frmPhoneUpdate() {
  model_.CloseWindow = nullptr;
  model_.ShowCaption = nullptr;
}

void frmPhoneUpdate::reject() { model_.cmdCancel_Click(); }

// --- the list window

frmPhoneList::frmPhoneList(Session& session, modModem& modem, const PhoneListSetup& setup, QWidget* parent)
    : QDialog(parent), model_(session, modem), form_(session, *this, "frmPhoneList") {
  setObjectName("frmPhoneList");
  setModal(false);
  auto* prompt = NamedLabel("Label1_1");
  auto* label = NamedLabel("Label1_0");
  auto* number = NamedBox("txtNumber");
  label->setBuddy(number);
  grid_ = new QTableWidget(this);
  grid_->setObjectName("grid1");
  grid_->setColumnCount(3);
  grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
  grid_->setSelectionMode(QAbstractItemView::SingleSelection);
  grid_->verticalHeader()->hide();
  grid_->horizontalHeader()->setMinimumSectionSize(1);
  grid_->horizontalHeader()->setHighlightSections(false);

  auto* numberRow = new QHBoxLayout;
  numberRow->addWidget(label);
  numberRow->addWidget(number, 1);
  auto* buttons = new QVBoxLayout;
  for (Control* c : {&model_.cmdDial, &model_.cmdInsert, &model_.cmdEdit, &model_.cmdDelete, &model_.cmdClose,
                     &model_.cmdHelp}) {
    auto* b = new QPushButton;
    b->setObjectName(Q(c->Name()));
    b->setAutoDefault(false);
    adapter_.Link(*c, static_cast<QAbstractButton*>(b));
    buttons->addWidget(b);
  }
  buttons->addStretch();
  auto* body = new QHBoxLayout;
  body->addWidget(grid_, 1);
  body->addLayout(buttons);
  auto* column = new QVBoxLayout(this);
  column->addWidget(prompt);
  column->addLayout(numberRow);
  column->addLayout(body, 1);

  adapter_.Link(model_.Label1_1, prompt);
  adapter_.Link(model_.Label1_0, label);
  adapter_.Link(model_.txtNumber, number);
  model_.grid1.OnRows = [this] { MirrorRows(); };
  model_.grid1.OnCell = [this](int r, int c) { MirrorCell(r, c); };
  model_.grid1.OnCurrent = [this] { MirrorCurrent(); };
  connect(grid_, &QTableWidget::currentCellChanged, this, [this](int row, int, int, int) {
    if (mirroring_ || row < 0) return;
    quietly([&] { model_.grid1.SetRow(row + 1); });
    model_.grid1_SelChange();
  });
  connect(grid_, &QTableWidget::cellDoubleClicked, this, [this](int row, int) {
    quietly([&] { model_.grid1.SetRow(row + 1); });
    model_.grid1_DblClick();
  });

  model_.ShowCaption = [this] { setWindowTitle(Q(model_.caption)); };
  model_.HideWindow = [this] { hide(); };
  model_.ShowWindow = [this] {
    show();
    raise();
    activateWindow();
  };
  model_.EnableWindow = [this](bool on) { setEnabled(on); };
  model_.CloseWindow = [this] { close(); };
  model_.CloseUpdate = [this] {
    if (update_) update_->close();
  };
  model_.ShowUpdateModal = [this, &session] {
    frmPhoneUpdate window(session, model_.UpdateWindow(), this);
    update_ = &window;
    window.exec();
    update_ = nullptr;
  };

  // loaded as its controls are first touched, which the set-up does
  form_.Load();
  model_.Setup(setup);
  resize(ToPixels(150 + model_.ColWidth1 + model_.ColWidth2) + 160, 360);
}

frmPhoneList::~frmPhoneList() {
  disconnect(grid_, nullptr, this, nullptr);
  model_.grid1.OnRows = nullptr;
  model_.grid1.OnCell = nullptr;
  model_.grid1.OnCurrent = nullptr;
  for (auto* hook : {&model_.ShowCaption, &model_.HideWindow, &model_.ShowWindow, &model_.CloseWindow,
                     &model_.CloseUpdate, &model_.ShowUpdateModal})
    *hook = nullptr;
  model_.EnableWindow = nullptr;
  Unload();
}

void frmPhoneList::MirrorRows() {
  const FlexGrid& g = model_.grid1;
  const QSignalBlocker quiet(grid_);
  mirroring_ = true;
  grid_->setRowCount(g.Rows() - 1);
  for (int c = 0; c < g.Cols(); ++c) {
    grid_->setHorizontalHeaderItem(c, new QTableWidgetItem(Q(g.TextMatrix(0, c))));
    grid_->setColumnWidth(c, ToPixels(g.ColWidth(c)));
    for (int r = 1; r < g.Rows(); ++r) grid_->setItem(r - 1, c, new QTableWidgetItem(Q(g.TextMatrix(r, c))));
  }
  grid_->horizontalHeader()->setFixedHeight(ToPixels(g.RowHeight(0)) + 4);
  mirroring_ = false;
}

void frmPhoneList::MirrorCell(int row, int col) {
  const QString text = Q(model_.grid1.TextMatrix(row, col));
  if (row == 0) grid_->setHorizontalHeaderItem(col, new QTableWidgetItem(text));
  else if (QTableWidgetItem* item = grid_->item(row - 1, col)) item->setText(text);
  else grid_->setItem(row - 1, col, new QTableWidgetItem(text));
}

void frmPhoneList::MirrorCurrent() {
  const int row = model_.grid1.Row();
  if (row < 1 || row > grid_->rowCount()) return;
  mirroring_ = true;
  grid_->setCurrentCell(row - 1, 2);
  mirroring_ = false;
}

void frmPhoneList::Unload() {
  if (unloaded_) return;
  unloaded_ = true;
  model_.Form_Unload();
  form_.Leave();
}

void frmPhoneList::closeEvent(QCloseEvent* e) {
  Unload();
  QDialog::closeEvent(e);
}

void frmPhoneList::reject() { model_.cmdClose_Click(); }

}  // namespace r6183::gui
