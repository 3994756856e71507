#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "gui/shell/GuiPrompter.h"
#include "WhenModal.h"

namespace r6183::gui {
namespace {

TEST(GuiPrompter, FiltersBecomeQtFiltersAndChoosersStartInAFolderOfTheOperators) {
  EXPECT_EQ(GuiPrompter::QtFilter("Database Files (*.mdb)|*.mdb").toStdString(), "Database Files (*.mdb)");
  EXPECT_EQ(GuiPrompter::QtFilter("Text|*.txt|All (*.*)|*.*").toStdString(), "Text (*.txt);;All (*.*)");
  GuiPrompter p;
  EXPECT_EQ(p.StartPath("/srv/sites/A.MDB").toStdString(), "/srv/sites/A.MDB");
  const QFileInfo proposed(p.StartPath("Untitled.mdb"));
  EXPECT_TRUE(proposed.isAbsolute());
  EXPECT_EQ(proposed.fileName().toStdString(), "Untitled.mdb");
  EXPECT_TRUE(proposed.dir().exists()) << proposed.absolutePath().toStdString();
}

// A real message box: its title, text, icon and buttons, and the answer of a key or a click.
TEST(GuiPrompter, MessageBoxesShowTheToolsWordsAndAnswerWhatWasPressed) {
  struct Case {
    Buttons buttons;
    Icon icon;
    QMessageBox::Icon shownIcon;
    std::vector<std::string> captions;
    std::function<void(QMessageBox&)> press;
    Answer answer;
  };
  auto click = [](const char* caption) {
    return [caption](QMessageBox& box) {
      for (QAbstractButton* b : box.buttons())
        if (b->text() == caption) b->click();
    };
  };
  auto key = [](Qt::Key k) { return [k](QMessageBox& box) { QTest::keyClick(&box, k); }; };
  const Case cases[] = {
      {Buttons::Ok, Icon::Information, QMessageBox::Information, {"OK"}, key(Qt::Key_Return), Answer::Ok},
      {Buttons::YesNo, Icon::Exclamation, QMessageBox::Warning, {"&Yes", "&No"}, click("&No"), Answer::No},
      {Buttons::YesNo, Icon::None, QMessageBox::NoIcon, {"&Yes", "&No"}, key(Qt::Key_Return), Answer::Yes},
      {Buttons::YesNoCancel, Icon::Exclamation, QMessageBox::Warning, {"&Yes", "&No", "Cancel"}, key(Qt::Key_Escape),
       Answer::Cancel},
      {Buttons::OkCancel, Icon::Question, QMessageBox::Question, {"OK", "Cancel"}, click("Cancel"), Answer::Cancel},
  };
  GuiPrompter prompter;
  for (const auto& c : cases) {
    std::string title, text;
    QMessageBox::Icon icon{};
    std::vector<std::string> captions;
    test::WhenModal<QMessageBox>([&](QMessageBox& box) {
      title = box.windowTitle().toStdString();
      text = box.text().toStdString();
      icon = box.icon();
      for (QAbstractButton* b : box.buttons()) captions.push_back(b->text().toStdString());
      c.press(box);
    });
    // the system's texts end their lines in CR LF; the box shows plain line breaks
    const Answer a = prompter.Message("Do you want to save changes\r\nto Untitled?", c.buttons, c.icon,
                                      "Orvane R-6183 Programming Tool");
    EXPECT_EQ(a, c.answer);
    EXPECT_EQ(title, "Orvane R-6183 Programming Tool");
    EXPECT_EQ(text, "Do you want to save changes\nto Untitled?");
    EXPECT_EQ(icon, c.shownIcon);
    std::sort(captions.begin(), captions.end());
    auto expected = c.captions;
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(captions, expected);
  }
}

}  // namespace
}  // namespace r6183::gui
