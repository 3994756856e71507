// The phone list's rules on its own database: the grid, the never-empty table, the
// update that changes every row of a number, the statement an apostrophe breaks.
#include <gtest/gtest.h>

#include <SQLiteCpp/SQLiteCpp.h>

#include "ModemFixture.h"

namespace r6183::test {
namespace {

using Rows = std::vector<std::pair<std::string, std::string>>;

class PhoneList : public ::testing::Test, public ModemLink {
 protected:
  // The phone list with these rows (a blank list when none), opened as Modem Connect opens it.
  std::unique_ptr<PhoneListModel> Open(const Rows& rows) {
    fs::copy_file(t.dir.path() / "Dphonelst", t.dir.path() / "phonelst", fs::copy_options::overwrite_existing);
    SQLite::Database db(t.dir.str("phonelst"), SQLite::OPEN_READWRITE);
    if (!rows.empty()) db.exec("DELETE FROM PhoneList");
    for (const auto& [description, number] : rows)
      db.exec("INSERT INTO PhoneList VALUES ('" + description + "', '" + number + "')");
    auto list = std::make_unique<PhoneListModel>(*t, *hayes);
    list->Setup(PhoneListSetup::PhoneList());
    return list;
  }
  Rows Table() {
    SQLite::Database db(t.dir.str("phonelst"));
    SQLite::Statement q(db, "SELECT Description, PhoneNumber FROM PhoneList ORDER BY rowid");
    Rows rows;
    while (q.executeStep()) rows.emplace_back(q.getColumn(0).getString(), q.getColumn(1).getString());
    return rows;
  }
  static Rows Grid(const PhoneListModel& l) {
    Rows rows;
    for (int r = 1; r < l.grid1.Rows(); ++r) rows.emplace_back(l.grid1.TextMatrix(r, 1), l.grid1.TextMatrix(r, 2));
    return rows;
  }
  // The edit window's OK with these texts, on the current row or as a new row.
  static void Edit(PhoneListModel& l, bool insert, const std::string& first, const std::string& second) {
    l.ShowUpdateModal = [&] {
      l.UpdateWindow().txtDescription.SetText(first);
      l.UpdateWindow().txtPhonenum.SetText(second);
      l.UpdateWindow().cmdOk_Click();
    };
    if (insert) l.cmdInsert_Click();
    else l.cmdEdit_Click();
  }
  static void Choose(PhoneListModel& l, int row) {
    l.grid1.SetRow(row);
    l.grid1_SelChange();
  }
};

TEST_F(PhoneList, OpensWithItsTextsAndTheFirstNumber) {
  auto l = Open({{"Office", "5551234"}, {"Depot", "5559876"}});
  EXPECT_EQ(l->caption, "Dialing Modem");
  EXPECT_EQ(l->Label1_0.Text(), "Number to Dial :");
  EXPECT_EQ(l->Label1_1.Text(), "Enter the number to dial or select it from the list below.");
  EXPECT_EQ(l->cmdDial.Text(), "Dial");
  EXPECT_FALSE(l->cmdHelp.Visible());
  EXPECT_EQ(l->grid1.TextMatrix(0, 1), "Description");
  EXPECT_EQ(l->grid1.TextMatrix(0, 2), "Phone Number");
  EXPECT_EQ(l->grid1.TextMatrix(2, 0), "2");
  EXPECT_EQ(Grid(*l), (Rows{{"Depot", "5559876"}, {"Office", "5551234"}}));  // by description
  EXPECT_EQ(l->txtNumber.Text(), "5559876");
  EXPECT_EQ(l->UpdateWindow().caption, "Edit Phone Number");
  EXPECT_EQ(l->UpdateWindow().Label2.Text(), "&Description: ");
  EXPECT_FALSE(t->menu.Enabled("mnuModem"));
  EXPECT_FALSE(t->menu.Enabled("mnuComSetup"));
  Choose(*l, 2);
  EXPECT_EQ(l->txtNumber.Text(), "5551234");
  l->cmdClose_Click();
  EXPECT_TRUE(t->menu.Enabled("mnuModem"));
  EXPECT_TRUE(t->menu.Enabled("mnuManualConnect"));
}

TEST_F(PhoneList, RowsAreAddedChangedAndDeletedButTheTableIsNeverEmpty) {
  struct Case {
    const char* name;
    Rows before;
    std::function<void(PhoneListModel&)> act;
    Rows after;       // the table, in the order of its rows
    Rows grid;        // the grid afterwards
    int row;          // the current row of the grid
    const char* number;  // txtNumber
  };
  const Case cases[] = {
      {"deleting the only row blanks it", {{"Office", "5551234"}}, [](PhoneListModel& l) { l.cmdDelete_Click(); },
       {{"", ""}}, {{"", ""}}, 1, "5551234"},
      {"the blank row takes the next insert", {}, [](PhoneListModel& l) { Edit(l, true, "Depot", "5559876"); },
       {{"Depot", "5559876"}}, {{"Depot", "5559876"}}, 1, "5559876"},
      {"an insert into a list adds a row", {{"Office", "5551234"}},
       [](PhoneListModel& l) { Edit(l, true, "Depot", "5559876"); },
       {{"Office", "5551234"}, {"Depot", "5559876"}}, {{"Depot", "5559876"}, {"Office", "5551234"}}, 1, "5559876"},
      {"an edit changes every row of the old number",
       {{"Office", "555"}, {"Office fax", "555"}, {"Depot", "777"}},
       [](PhoneListModel& l) {
         Choose(l, 2);
         Edit(l, false, "Office", "999");
       },
       {{"Office", "999"}, {"Office", "999"}, {"Depot", "777"}},
       {{"Depot", "777"}, {"Office", "999"}, {"Office", "999"}}, 2, "999"},
      {"deleting the last row steps back", {{"A", "1"}, {"B", "2"}, {"C", "3"}},
       [](PhoneListModel& l) {
         Choose(l, 3);
         l.cmdDelete_Click();
       },
       {{"A", "1"}, {"B", "2"}}, {{"A", "1"}, {"B", "2"}}, 2, "2"},
      {"deleting another row stays on its place", {{"A", "1"}, {"B", "2"}, {"C", "3"}},
       [](PhoneListModel& l) {
         Choose(l, 1);
         l.cmdDelete_Click();
       },
       {{"B", "2"}, {"C", "3"}}, {{"B", "2"}, {"C", "3"}}, 1, "2"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    auto l = Open(c.before);
    const std::size_t journalled = JournalRows(*t).size();
    c.act(*l);
    EXPECT_EQ(Table(), c.after);
    EXPECT_EQ(Grid(*l), c.grid);
    EXPECT_EQ(l->grid1.Row(), c.row);
    EXPECT_EQ(l->txtNumber.Text(), c.number);
    EXPECT_TRUE(t.prompter.Shown().empty());
    EXPECT_EQ(JournalRows(*t).size(), journalled) << "no search ran past the rows";
    EXPECT_TRUE(l->cmdEdit.Enabled());
    l->cmdClose_Click();
  }
}

// A quote mark in a text breaks the statement: it fails, the window stays with its message,
// and nothing in the table changes, whatever else the text holds.
TEST_F(PhoneList, AnApostropheMakesTheUpdateFail) {
  const Rows rows{{"Office", "555"}, {"Depot", "777"}};
  for (const auto& [first, second] : std::vector<std::pair<std::string, std::string>>{
           {"O'Brien", "555"}, {"Office", "555' OR '1'='1"}, {"x', Description = 'y", "555"}}) {
    SCOPED_TRACE(first + " / " + second);
    auto l = Open(rows);
    t.prompter.Clear();
    Choose(*l, 2);
    bool closed = false;
    l->UpdateWindow().CloseWindow = [&] { closed = true; };
    Edit(*l, false, first, second);
    EXPECT_FALSE(closed);
    ASSERT_EQ(t.prompter.Shown().size(), 1u);
    EXPECT_EQ(t.prompter.Shown()[0].text, "The record could not be updated.");
    EXPECT_EQ(t.prompter.Shown()[0].title, "Title");
    EXPECT_EQ(Table(), rows);
    EXPECT_EQ(JournalRows(*t).back().routine, "UpdatePhoneList");
    l->cmdClose_Click();
  }
}

TEST_F(PhoneList, TheModemCommandRoleSendsTheCommandAndHasHelp) {
  fs::copy_file(t.dir.path() / "Dmodem", t.dir.path() / "modem", fs::copy_options::overwrite_existing);
  auto l = std::make_unique<PhoneListModel>(*t, *hayes);
  PhoneListSetup setup = PhoneListSetup::ModemCommands();
  setup.caption = "Modem Commands";
  l->Setup(setup);
  EXPECT_TRUE(l->cmdHelp.Visible());
  EXPECT_EQ(l->grid1.TextMatrix(0, 2), "Command");
  EXPECT_EQ(l->txtNumber.Text(), Grid(*l).at(0).second);
  l->cmdHelp_Click();
  ASSERT_EQ(t.prompter.Shown().size(), 1u);
  EXPECT_EQ(t.prompter.Shown()[0].title, "Title - Help");
  EXPECT_EQ(t.prompter.Shown()[0].text.substr(0, 37), "The following parameters must be set\n");
  ASSERT_TRUE(comm->Init_Comm(2));
  bool closed = false;
  l->CloseWindow = [&] { closed = true; };
  l->txtNumber.SetText("&W");
  l->cmdDial.Press();
  EXPECT_EQ(Heard(), std::vector<std::string>{"AT&W"});
  EXPECT_TRUE(closed);
}

TEST(FlexGridRoutines, AddItemFillsABlankFirstRowElseAddsOne) {
  struct Case {
    int rows;           // before
    const char* first;  // row 1, column 0, when there is a row 1
    int rowsAfter;
    int filledRow;
  };
  const Case cases[] = {{1, nullptr, 2, 1}, {2, "", 2, 1}, {2, "7", 3, 2}, {3, "7", 4, 3}};
  TestSession t;
  for (const Case& c : cases) {
    FlexGrid g(5, c.rows);
    if (c.first) {
      g.SetRow(1);
      g.SetText(c.first);
    }
    AddItemToFlexQ(*t, g, "0", "text", "01/02/2003 @ 04:05", "Routine", "Module");
    EXPECT_EQ(g.Rows(), c.rowsAfter);
    EXPECT_EQ(g.TextMatrix(c.filledRow, 1), "text");
    EXPECT_EQ(g.TextMatrix(c.filledRow, 4), "Module");
  }
  EXPECT_TRUE(JournalRows(*t).empty());
}

}  // namespace
}  // namespace r6183::test
