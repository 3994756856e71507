#include <gtest/gtest.h>

#include <QTextBrowser>
#include <QUrl>
#include <QWidget>

#include <filesystem>
#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <vector>

#include "gui/shell/frmHelp.h"
#include "shell/ProductIdentity.h"
#include "support/FakeForm.h"
#include "support/TestSupport.h"

namespace r6183::gui {
namespace {

namespace fs = std::filesystem;
using test::TestSession;

std::vector<std::string> Matches(const std::string& text, const std::regex& re) {
  std::vector<std::string> found;
  for (std::sregex_iterator it(text.begin(), text.end(), re), end; it != end; ++it) found.push_back((*it)[1]);
  return found;
}

// A session of the product, whose application directory has the shipped help book.
struct HelpSession : TestSession {
  HelpSession() { session->product = IdentityFor(kProductIndex, 4); }
};

// Every link of the shipped book leads to a shipped page (and to an anchor there), none
// leaves the book, and every page can be reached from the contents.
TEST(HelpTest, EveryLinkOfTheBookResolves) {
  const fs::path book = test::StagedAppDir() / "help";
  ASSERT_TRUE(fs::is_regular_file(book / "index.html"));
  const std::regex href(R"re(<a\s[^>]*href="([^"]*)")re", std::regex::icase);
  const std::regex id(R"re(\sid="([^"]*)")re");
  const std::regex resource(R"re(<link\s[^>]*href="([^"]*)")re", std::regex::icase);

  std::map<std::string, std::string> pages;
  for (const auto& entry : fs::directory_iterator(book))
    if (entry.path().extension() == ".html") pages[entry.path().filename().string()] = test::ReadFile(entry.path());

  std::map<std::string, std::vector<std::string>> linksOf;
  for (const auto& [name, text] : pages) {
    for (const std::string& css : Matches(text, resource)) EXPECT_TRUE(fs::exists(book / css)) << name << ": " << css;
    for (const std::string& link : Matches(text, href)) {
      EXPECT_EQ(link.find(':'), std::string::npos) << name << " leaves the book: " << link;
      const std::size_t hash = link.find('#');
      const std::string file = hash == 0 ? name : link.substr(0, hash);
      const auto target = pages.find(file);
      if (target == pages.end()) {
        ADD_FAILURE() << name << " links to a page that is not shipped: " << link;
        continue;
      }
      linksOf[name].push_back(file);
      if (hash != std::string::npos) {
        const std::vector<std::string> ids = Matches(target->second, id);
        EXPECT_NE(std::find(ids.begin(), ids.end(), link.substr(hash + 1)), ids.end())
            << name << " links to a missing anchor: " << link;
      }
    }
  }

  std::set<std::string> reached{"index.html"};
  std::vector<std::string> todo{"index.html"};
  while (!todo.empty()) {
    const std::string page = todo.back();
    todo.pop_back();
    for (const std::string& next : linksOf[page])
      if (reached.insert(next).second) todo.push_back(next);
  }
  for (const auto& [name, text] : pages) EXPECT_TRUE(reached.count(name)) << name << " is not reachable";
}

TEST(HelpTest, ContentsOpensTheBookOnceAndRaisesItAfterwards) {
  HelpSession ts;
  QWidget main;
  frmHelp* help = mnuHelpContents_Click(*ts, &main);
  ASSERT_NE(help, nullptr);
  EXPECT_TRUE(help->isVisible());
  EXPECT_EQ(help->windowTitle().toStdString(), ts->product.ProductTitle + " Help");
  QTextBrowser* txtHelp = help->findChild<QTextBrowser*>("txtHelp");
  ASSERT_NE(txtHelp, nullptr);
  EXPECT_EQ(fs::path(txtHelp->source().toLocalFile().toStdString()), ts.dir.path() / "help" / "index.html");
  EXPECT_TRUE(txtHelp->toPlainText().contains("Contents"));

  txtHelp->setSource(QUrl("journal.html"));
  EXPECT_TRUE(txtHelp->toPlainText().contains("Debug window"));
  help->close();
  EXPECT_EQ(mnuHelpContents_Click(*ts, &main), help);
  EXPECT_TRUE(help->isVisible());
  EXPECT_TRUE(ts.prompter.Shown().empty());
}

TEST(HelpTest, ContentsDoesNothingDuringATransferAndTellsWhenTheBookIsMissing) {
  {
    HelpSession ts;
    std::vector<std::string> events;
    test::FakeForm menu(ts->forms, events, "frmMenu", ts->product.ProductTitle);
    test::FakeForm progress(ts->forms, events, "frmMsgWait", "R-6183 Programming Tool");
    QWidget main;
    EXPECT_EQ(mnuHelpContents_Click(*ts, &main), nullptr);
    EXPECT_EQ(main.findChild<frmHelp*>(), nullptr);
    EXPECT_TRUE(ts.prompter.Shown().empty());
  }

  HelpSession ts;
  ts->product = IdentityFor(kProductIndex, 3);
  fs::remove(ts.dir.path() / "help" / "index.html");
  QWidget main;
  EXPECT_EQ(mnuHelpContents_Click(*ts, &main), nullptr);
  ASSERT_EQ(ts.prompter.Shown().size(), 1u);
  EXPECT_EQ(ts.prompter.Shown()[0].icon, Icon::Exclamation);
  EXPECT_EQ(ts.prompter.Shown()[0].title, ts->product.ProductTitle);
}

}  // namespace
}  // namespace r6183::gui
