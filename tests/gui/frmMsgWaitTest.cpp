#include <gtest/gtest.h>

#include <QLabel>
#include <QProgressBar>
#include <QTest>

#include <functional>

#include "gui/protocol/frmMsgWait.h"
#include "support/TestSupport.h"

namespace r6183::gui {
namespace {

std::string Shown(const QWidget& w) {
  std::string out;
  for (const char* name : {"lbmsg", "lbmsg2", "ssPanel1", "lblPercent", "lbmsg3", "lbl4"})
    if (!w.findChild<QWidget*>(name)->isHidden()) out += std::string(out.empty() ? "" : " ") + name;
  return out;
}

TEST(frmMsgWait, ThreeFacesAndBackToProgressOnTheNextUse) {
  test::TestSession t;
  frmMsgWait w(*t, nullptr);
  w.Show();
  EXPECT_NE(t->forms.Find("frmMsgWait"), nullptr);
  w.WhatToDisplay("Receiving data...", "", 100);
  EXPECT_EQ(Shown(w), "lbmsg lbmsg2 ssPanel1 lblPercent");
  EXPECT_EQ(w.findChild<QLabel*>("lblPercent")->text().toStdString(), " 100 %");
  EXPECT_EQ(w.findChild<QLabel*>("lbmsg2")->text().toStdString(), "");
  EXPECT_EQ(w.findChild<QProgressBar*>("ssPanel1")->value(), 100);

  w.SetModemRelease();
  EXPECT_EQ(Shown(w), "lblPercent lbl4");
  w.SetModemComm();
  w.SetPlainText("Preparing to communicate with R-6183 system...");
  EXPECT_EQ(Shown(w), "lblPercent lbmsg3");
  QTest::keyClick(&w, Qt::Key_Escape);  // no way to take it away but the end of its work
  EXPECT_TRUE(w.isVisible());

  w.Unload();
  EXPECT_FALSE(w.isVisible());
  EXPECT_EQ(t->forms.Find("frmMsgWait"), nullptr);
  w.Show();
  w.WhatToDisplay("Sending data...", "CLID", 30);
  EXPECT_EQ(Shown(w), "lbmsg lbmsg2 ssPanel1 lblPercent");
  w.Unload();
}

// Each use finds the window as designed, whatever the one before left: the caption a caller
// gave it, the release face, or the plain face.
TEST(frmMsgWait, EveryUseStartsWithTheDesignCaptionAndTheProgressFace) {
  test::TestSession t;
  frmMsgWait w(*t, nullptr);
  const std::function<void()> before[] = {
      [&] { w.ChangeCaption("Preparing to Communicate"); },
      [&] { w.SetModemRelease(); },
      [&] {
        w.SetModemComm();
        w.SetPlainText("Preparing to communicate with R-6183 system...");
      },
  };
  for (const auto& use : before) {
    w.Show();
    use();
    w.Unload();
    w.Show();
    EXPECT_EQ(w.windowTitle().toStdString(), "R-6183 Programming Tool");
    w.WhatToDisplay("Receiving data...", "Stations", 40);
    EXPECT_EQ(Shown(w), "lbmsg lbmsg2 ssPanel1 lblPercent");
    EXPECT_EQ(w.findChild<QProgressBar*>("ssPanel1")->value(), 40);
    w.Unload();
  }
}

}  // namespace
}  // namespace r6183::gui
