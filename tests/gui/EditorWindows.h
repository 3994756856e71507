#pragma once
// Shared by the tests of the editor windows: the main window on a document on disk, the
// event window driven inside its modal loop, and the operator's keys and clicks.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QScrollBar>
#include <QStyleOptionSlider>
#include <QTest>
#include <QTimer>

#include <SQLiteCpp/Database.h>

#include <filesystem>
#include <functional>
#include <memory>

#include "gui/editors/frmEvent.h"
#include "gui/editors/frmSched.h"
#include "gui/shell/frmMenu.h"
#include "protocol/ModComm.h"
#include "shell/InstanceLock.h"
#include "support/TestSupport.h"
#include "WhenModal.h"

namespace r6183::gui::test {

using namespace r6183::test;

inline void Settle() {
  for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
}

// Lets events run until `done` holds; false after thirty seconds, which only a broken window
// reaches.
inline bool WaitFor(const std::function<bool()>& done) {
  QElapsedTimer t;
  t.start();
  while (!done()) {
    if (t.elapsed() > 30000) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  }
  return true;
}

template <class W = QWidget>
W* Ctl(QWidget& parent, const QString& name) {
  W* w = parent.findChild<W*>(name);
  EXPECT_NE(w, nullptr) << name.toStdString();
  return w;
}

// A click where the operator clicks: a check box or option on its box, anything else in its middle.
inline void Click(QWidget* w) {
  ASSERT_NE(w, nullptr);
  const bool box = qobject_cast<QCheckBox*>(w) || w->inherits("QRadioButton");
  QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, box ? QPoint(6, w->height() / 2) : w->rect().center());
}

// A click on the upper (up) or lower arrow of a spin bar.
inline void ClickArrow(QScrollBar* bar, bool up) {
  ASSERT_NE(bar, nullptr);
  QStyleOptionSlider opt;
  opt.initFrom(bar);
  opt.orientation = bar->orientation();
  opt.minimum = bar->minimum();
  opt.maximum = bar->maximum();
  opt.sliderPosition = bar->sliderPosition();
  opt.sliderValue = bar->value();
  opt.singleStep = bar->singleStep();
  opt.pageStep = bar->pageStep();
  opt.subControls = QStyle::SC_All;
  const QRect r = bar->style()->subControlRect(QStyle::CC_ScrollBar, &opt,
                                               up ? QStyle::SC_ScrollBarSubLine : QStyle::SC_ScrollBarAddLine, bar);
  QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, r.center());
}

// Types into a text box as the operator does: the focus selects its text, the keys
// replace it.
inline void Type(QWidget& window, const char* box, const QString& text) {
  auto* b = Ctl<QLineEdit>(window, box);
  if (!b) return;
  if (!b->hasFocus()) {
    b->setFocus(Qt::TabFocusReason);
    Settle();
  }
  b->selectAll();
  QTest::keyClicks(b, text);
}

// The main window on a session of its own, without its splash window.
class EditorWindowsTest : public ::testing::Test {
 protected:
  EditorWindowsTest() { t->product.ProductTitle = "Title"; }
  ~EditorWindowsTest() override {
    if (window) window->hide();
  }

  void Start() {
    window = std::make_unique<frmMenu>(*t, comm, lock, 0);
    ASSERT_TRUE(window->MDIForm_Load());
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }
  // A document on disk, the template changed by `sql` (or a copy of `from`), opened through File > Open.
  void OpenDocument(const std::string& sql, const std::filesystem::path& from = {}) {
    document = t.dir.str("SITE.MDB");
    std::filesystem::copy_file(from.empty() ? StagedAppDir() / "DEFAULT" : from, document,
                               std::filesystem::copy_options::overwrite_existing);
    if (!sql.empty()) SQLite::Database(document, SQLite::OPEN_READWRITE).exec(sql);
    t.prompter.QueueFile(document);
    window->Click("mnuFileOpen");
    ASSERT_EQ(t->state.CurrentFileName, document);
  }
  frmSched* Schedule(int n) {
    window->QuickMenu("Schedule " + std::to_string(n));
    Settle();
    frmSched* w = window->schedule(n);
    EXPECT_NE(w, nullptr);
    return w;
  }
  QWidget& Content(frmSched* w) { return *w->widget(); }
  QStringList Lines(frmSched* w) {
    QStringList out;
    auto* list = Ctl<QListWidget>(Content(w), "lstEvent");
    for (int i = 0; list && i < list->count(); ++i) out << list->item(i)->text();
    return out;
  }
  // Runs `script` on the event window once it is up inside its modal loop, then closes it if
  // the script left it open. Queue it before the click that opens the window.
  void WhenEventWindowOpens(std::function<void(frmEvent&)> script) {
    (void)r6183::test::WhenModal<frmEvent>(std::move(script));
  }
  std::vector<std::string> Texts() const {
    std::vector<std::string> out;
    for (const auto& m : t.prompter.Shown()) out.push_back(m.text);
    return out;
  }

  TestSession t;
  ModComm comm{*t, [](int16_t) { return std::unique_ptr<SerialLine>(); }};
  InstanceLock lock{t.dir.str()};
  std::unique_ptr<frmMenu> window;
  std::string document;
};

}  // namespace r6183::gui::test
