// The About window asks the unit for its revisions; Help > About gates the menus.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

#include "gui/protocol/frmAbout.h"
#include "WhenModal.h"
#include "sim/LinkedUnit.h"

namespace r6183::gui {
namespace {

struct PlainProgress : ProgressWindow {
  std::vector<std::string> calls;
  void Show() override { calls.push_back("Show"); }
  void Unload() override { calls.push_back("Unload"); }
  void SetModemComm() override { calls.push_back("SetModemComm"); }
  void ChangeCaption(const std::string& text) override { calls.push_back("Caption " + text); }
  void SetPlainText(const std::string& text) override { calls.push_back("Text " + text); }
};

struct OtherWindow : Form {
  std::string caption;
  std::string Name() const override { return "frmOther"; }
  std::string Caption() const override { return caption; }
  void Unload() override {}
};

class AboutWindow : public ::testing::Test, public test::LinkedUnit {
 protected:
  void SetUp() override {
    t->product.ProductModel = "R-6183";
    t->product.ProductCaption = "Paging";
    unitSim->Options().revisions.card1 = '2';
    unitSim->Options().revisions.clockCard = true;
  }
  static std::vector<std::string> Rows(QWidget& w) {
    auto* grid = w.findChild<QTableWidget*>("flexAbout");
    std::vector<std::string> rows;
    for (int r = 0; grid && r < grid->rowCount(); ++r)
      rows.push_back(grid->item(r, 0)->text().toStdString() + "|" + grid->item(r, 1)->text().toStdString());
    return rows;
  }
  PlainProgress plain;
};

TEST_F(AboutWindow, ListsTheRevisionsOrSaysTheUnitIsNotThere) {
  struct Case {
    bool silent;
    std::vector<std::string> rows;
  };
  const Case cases[] = {
      {false,
       {"Programming Tool: |Rev 2.00", "Main CPU: |Rev 2.31", "Second CPU: |Rev 2.31", "|", "|",
        "First Option Card: |Type 2", "Second Option Card: |Type CLOCK"}},
      {true,
       {"Programming Tool: |Rev 2.00", "Main CPU: |Unknown", "Second CPU: |Unknown", "Third CPU: |Unknown",
        "** Not Communicating **|", "|", "|"}},
  };
  for (const Case& c : cases) {
    if (c.silent) unitSim->Options().faults.ignored = "H";
    plain.calls.clear();
    frmAbout w(*t, *comm, plain);
    EXPECT_EQ(Rows(w), c.rows);
    EXPECT_EQ(w.windowTitle().toStdString(), "About Title");
    EXPECT_EQ(w.findChild<QLabel*>("Label2")->text().toStdString(), "Paging");
    EXPECT_EQ(plain.calls, (std::vector<std::string>{"SetModemComm", "Show", "Caption Preparing to Communicate",
                                                     "Text Preparing to communicate with R-6183 system...",
                                                     "Unload"}));
    EXPECT_EQ(test::ReadFile(t->appDir().PathOf("log_file.txt")).rfind("Date - Time - ", 0), 0u);
  }
}

TEST_F(AboutWindow, HelpAboutGatesTheMenusAndKeepsOutOfATransfer) {
  bool gated = false, listed = false;
  test::WhenModal<frmAbout>([&](frmAbout& w) {
    gated = !t->menu.Enabled("mnuHelp") && !t->menu.Enabled("mnuFile");
    listed = t->forms.Find("frmAbout") != nullptr;
    w.findChild<QPushButton*>("cmdOk")->click();
  });
  mnuHelpAbout_Click(*t, *comm, plain, nullptr);
  EXPECT_TRUE(gated);
  EXPECT_TRUE(listed);
  EXPECT_TRUE(t->menu.Enabled("mnuHelp"));
  EXPECT_EQ(t->forms.Find("frmAbout"), nullptr);

  // a transfer in progress: nothing opens, nothing is asked
  std::vector<OtherWindow> others(3);
  others.back().caption = "Title";
  while (t->forms.Count() < 3) t->forms.Add(&others[static_cast<std::size_t>(t->forms.Count())]);
  const std::size_t frames = unitSim->Received().size();
  plain.calls.clear();
  mnuHelpAbout_Click(*t, *comm, plain, nullptr);
  EXPECT_TRUE(plain.calls.empty());
  EXPECT_EQ(unitSim->Received().size(), frames);
  for (auto& o : others) t->forms.Remove(&o);
}

}  // namespace
}  // namespace r6183::gui
