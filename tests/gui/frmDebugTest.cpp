#include <gtest/gtest.h>

#include <QCheckBox>
#include <QPushButton>
#include <QTableWidget>

#include <filesystem>

#include "database/Database.h"
#include "gui/shell/frmDebug.h"
#include "support/TestSupport.h"

namespace r6183::gui {
namespace {

using test::TestSession;

std::vector<std::vector<std::string>> GridRows(const QTableWidget& grid) {
  std::vector<std::vector<std::string>> rows;
  for (int r = 0; r < grid.rowCount(); ++r) {
    std::vector<std::string>& row = rows.emplace_back();
    for (int c = 0; c < grid.columnCount(); ++c)
      row.push_back(grid.item(r, c) ? grid.item(r, c)->text().toStdString() : "<none>");
  }
  return rows;
}

struct DebugWindow {
  explicit DebugWindow(Session& s) : form(s) {
    form.show();
    grid = form.findChild<QTableWidget*>("grid1");
  }
  QPushButton* Button(const char* name) { return form.findChild<QPushButton*>(name); }
  QCheckBox* Check(const char* name) { return form.findChild<QCheckBox*>(name); }
  frmDebug form;
  QTableWidget* grid = nullptr;
};

TEST(frmDebugTest, GridListsTheJournalAndClearEmptiesIt) {
  TestSession ts;
  ts->journal().LogError(53, "File not found", "frmMenu", "ModComm", "Init_Comm");
  ts->journal().LogError(3260, "", "frmDate", "frmDate", "cmdOk_Click");
  // a row written by hand with nothing in it
  Database::Open(ts->state.ErrorsDbPath).Execute("INSERT INTO \"Error\" (errdesc) VALUES (NULL)");

  DebugWindow w(*ts);
  ASSERT_NE(w.grid, nullptr);
  ASSERT_EQ(w.grid->columnCount(), 5);
  QStringList headings;
  for (int c = 0; c < 5; ++c) headings << w.grid->horizontalHeaderItem(c)->text();
  EXPECT_EQ(headings, QStringList({"No", "Description", "Date/Time", "Function", "Module"}));
  EXPECT_EQ(w.grid->columnWidth(1), 2300 / 15);

  const std::string lockText = test::JournalRows(*ts).at(1).description;
  const std::vector<std::vector<std::string>> expected = {
      {"53", "File not found", "11/06/2001 @ 09:30", "Init_Comm", "ModComm"},
      {"3260", lockText, "11/06/2001 @ 09:30", "cmdOk_Click", "frmDate"},
      {"0", "", " @ ", "", ""},
  };
  EXPECT_EQ(GridRows(*w.grid), expected);
  EXPECT_GE(ts.pumps, 3);  // events run while the rows are read

  w.Button("cmdClear")->click();
  EXPECT_TRUE(test::JournalRows(*ts).empty());
  EXPECT_EQ(w.grid->rowCount(), 0);
  EXPECT_EQ(w.grid->columnCount(), 5);
}

TEST(frmDebugTest, MissingJournalLeavesTheGridEmpty) {
  TestSession ts;
  std::filesystem::remove(ts->state.ErrorsDbPath);
  DebugWindow w(*ts);
  EXPECT_EQ(w.grid->rowCount(), 0);
  w.Button("cmdClear")->click();
  EXPECT_EQ(w.grid->rowCount(), 0);
  EXPECT_FALSE(std::filesystem::exists(ts->state.ErrorsDbPath));
}

TEST(frmDebugTest, BoxesShowTheTraceFlagsAndOkStoresThem) {
  const struct {
    int16_t comm, at;
    bool tickComm, tickAT;
  } cases[] = {{0, 0, true, false}, {0, 0, false, true}, {1, 1, false, false}, {1, 0, true, true}};
  for (const auto& c : cases) {
    TestSession ts;
    ts->state.TraceComm = c.comm;
    ts->state.TraceAT = c.at;
    DebugWindow w(*ts);
    EXPECT_EQ(ts->forms.Count(), 1);
    EXPECT_EQ(w.Check("chkComm")->isChecked(), c.comm != 0);
    EXPECT_EQ(w.Check("chkAT")->isChecked(), c.at != 0);
    w.Check("chkComm")->setChecked(c.tickComm);
    w.Check("chkAT")->setChecked(c.tickAT);
    w.Button("cmdOk")->click();
    EXPECT_EQ(ts->state.TraceComm, c.tickComm ? 1 : 0);
    EXPECT_EQ(ts->state.TraceAT, c.tickAT ? 1 : 0);
    EXPECT_FALSE(w.form.isVisible());
    EXPECT_EQ(ts->forms.Count(), 0);  // unloaded
  }
}

}  // namespace
}  // namespace r6183::gui
