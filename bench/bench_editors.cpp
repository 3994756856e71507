// Figures of the schedule and event windows on the fullest schedule: 256 events in
// schedule 1. Opening the schedule window, and deleting, adding and editing one event
// through the windows as the operator does (the event window modal, its Save and Close,
// the schedule's list rebuilt). Qt's offscreen platform unless QT_QPA_PLATFORM says
// otherwise. Run: build/bench/bench_editors
#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QListWidget>
#include <QMdiArea>
#include <QTimer>

#include <SQLiteCpp/SQLiteCpp.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "BenchSession.h"
#include "database/DocumentCommands.h"
#include "editors/EventModel.h"
#include "gui/editors/frmEvent.h"
#include "gui/editors/frmSched.h"
#include "gui/shell/frmMenu.h"
#include "protocol/ModComm.h"
#include "shell/InstanceLock.h"
#include "shell/MainMenu.h"

using namespace r6183;

namespace {
double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

double Ms(const std::function<void()>& f) {
  QElapsedTimer t;
  t.start();
  f();
  return static_cast<double>(t.nsecsElapsed()) / 1e6;
}

// The operator typing into a text box of the event window and leaving it.
void Type(Control& box, const std::string& text) {
  if (box.OnGotFocus) box.OnGotFocus();
  std::string shown;
  for (const char ch : text) {
    int key = static_cast<unsigned char>(ch);
    if (!box.KeyPress(key)) continue;
    shown += static_cast<char>(key);
    box.SetText(shown);
  }
  if (box.OnLostFocus) box.OnLostFocus();
}

// Runs `script` on the event window once its modal loop runs.
void WhenEventWindowOpens(std::function<void(EventModel&)> script) {
  QTimer::singleShot(0, [script = std::move(script)] {
    if (auto* w = qobject_cast<gui::frmEvent*>(QApplication::activeModalWidget())) script(w->model());
  });
}

QAbstractButton* Button(QWidget& w, const char* name) { return w.findChild<QAbstractButton*>(name); }
}  // namespace

int main(int argc, char** argv) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
  QApplication app(argc, argv);
  constexpr int kRuns = 25;

  bench::BenchSession b;
  b->product.ProductTitle = "Bench";
  ModComm comm(*b.session, [](int16_t) { return std::unique_ptr<SerialLine>(); });
  InstanceLock lock(b.dir.string());
  gui::frmMenu window(*b.session, comm, lock, 0);
  if (!window.MDIForm_Load()) {
    std::fprintf(stderr, "start-up refused\n");
    return 1;
  }
  window.show();
  QCoreApplication::processEvents();

  const std::string document = (b.dir / "FULLEST.MDB").string();
  std::filesystem::copy_file(b.dir / "DEFAULT", document);
  SQLite::Database(document, SQLite::OPEN_READWRITE)
      .exec("UPDATE Config SET System_Config = 3;"
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 255)"
            " INSERT INTO Event (Schedule, StartTime, Duration, Tone, PageGroup1, PageGroup16)"
            " SELECT 1, printf('%02d:%02d', i * 5 / 60, i * 5 % 60), i % 59 + 1, i % 4 + 1, 1, i % 2 FROM n");
  OpenDatabase(*b.session, document);
  if (b->state.CurrentFileName != document || b->state.EventCount != 256) {
    std::fprintf(stderr, "the document did not open with its 256 events\n");
    return 1;
  }

  std::vector<double> open, del, add, edit;
  for (int i = 0; i < kRuns; ++i) {
    open.push_back(Ms([&] {
      window.QuickMenu("Schedule 1");
      QCoreApplication::processEvents();
    }));
    mnuWindowCloseAll_Click(*b.session);
    QCoreApplication::processEvents();
  }

  window.QuickMenu("Schedule 1");
  QCoreApplication::processEvents();
  gui::frmSched* sched = window.schedule(1);
  QWidget& content = *sched->widget();
  auto* list = content.findChild<QListWidget*>("lstEvent");
  bool failed = false;
  for (int i = 0; i < kRuns; ++i) {
    const int row = 7 * i + 3;
    list->setCurrentRow(row);
    const std::string time = list->item(row)->text().left(5).toStdString();
    // delete in the schedule window: no question
    del.push_back(Ms([&] { Button(content, "cmdEvent_2")->click(); }));
    // add it back through the event window: a copy of the selected event at the old time
    WhenEventWindowOpens([&](EventModel& ev) {
      Type(ev.txtStartTime, time);
      ev.Click(ev.cmdSave);
      ev.Click(ev.cmdClose);
    });
    add.push_back(Ms([&] { Button(content, "cmdEvent_0")->click(); }));
    // edit another event's duration
    list->setCurrentRow(255 - row);
    WhenEventWindowOpens([&](EventModel& ev) {
      Type(ev.txtDuration, std::to_string(i % 59 + 1));
      ev.Click(ev.cmdSave);
      ev.Click(ev.cmdClose);
    });
    edit.push_back(Ms([&] { Button(content, "cmdEvent_1")->click(); }));
    if (list->count() != 256 || b->state.EventCount != 256) failed = true;
  }
  if (failed || !b.prompter.Shown().empty()) {
    std::fprintf(stderr, "the edits did not go as planned (%d lines, %d events, %zu messages)\n", list->count(),
                 static_cast<int>(b->state.EventCount), b.prompter.Shown().size());
    return 1;
  }

  std::printf("schedule window with 256 events, median of %d runs (each must stay under 50 ms)\n", kRuns);
  std::printf("  open the schedule window      %7.2f ms\n", Median(open));
  std::printf("  delete an event               %7.2f ms\n", Median(del));
  std::printf("  add an event (event window)   %7.2f ms\n", Median(add));
  std::printf("  edit an event (event window)  %7.2f ms\n", Median(edit));
  b.prompter.QueueAnswer(Answer::No);
  mnuFileClose_Click(*b.session);
  return 0;
}
