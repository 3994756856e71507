// The communications wizard's pages run from the port window's Auto Find, with the
// simulated unit on port 16 of sixteen; the remote modem's setup against the simulated
// modem. Both linked in-process on the manual clock; pictures of the pages and of the
// setup at step 2.
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "Pictures.h"
#include "WhenModal.h"
#include "gui/connectivity/frmComPort.h"
#include "gui/connectivity/frmCommResults.h"
#include "gui/connectivity/frmCommType.h"
#include "gui/connectivity/frmCommWarning.h"
#include "gui/connectivity/frmPhoneList.h"
#include "gui/connectivity/frmRemote.h"
#include "gui/connectivity/frmUSRobot.h"
#include "gui/shell/frmMenu.h"
#include "shell/InstanceLock.h"
#include "sim/LinkedUnit.h"

namespace r6183::gui {
namespace {

QString Text(QWidget& w, const char* name) {
  if (auto* l = w.findChild<QLabel*>(name)) return l->text();
  if (auto* e = w.findChild<QLineEdit*>(name)) return e->text();
  if (auto* b = w.findChild<QPushButton*>(name)) return b->text();
  ADD_FAILURE() << "no control " << name;
  return {};
}
QPushButton* Button(QWidget& w, const char* name) { return w.findChild<QPushButton*>(name); }

// The unit is on port 16; no other port has a device.
class WizardWindows : public ::testing::Test, public r6183::test::LinkedUnit {
 protected:
  WizardWindows() {
    comm = std::make_unique<ModComm>(*t, [this](int16_t port) -> std::unique_ptr<SerialLine> {
      if (port != 16) return nullptr;
      return std::make_unique<BorrowedLine>(*tool_);
    });
  }
  void SetUp() override {
    window = std::make_unique<frmMenu>(*t, *comm, lock, 0);
    ASSERT_TRUE(window->MDIForm_Load());
    window->show();
  }
  InstanceLock lock{t.dir.str()};
  std::unique_ptr<frmMenu> window;
};

TEST_F(WizardWindows, AutoFindFindsTheUnitAndTheListTakesItsPort) {
  t->state.ComPortNumber = 2;
  std::vector<std::string> pictures;
  int16_t duringScan = 0;
  r6183::test::WhenModal<frmComPort>([&](frmComPort& ports) {
    ASSERT_TRUE(Button(ports, "cmdAuto")->isEnabled());
    r6183::test::WhenModal<frmCommType>([&](frmCommType& p) {
      EXPECT_EQ(p.windowTitle(), "Connection Type");
      EXPECT_EQ(Text(p, "Label4"), "Please Select the type of Connection.");
      EXPECT_TRUE(p.findChild<QRadioButton*>("chkComm")->isChecked());
      EXPECT_EQ(p.findChild<QRadioButton*>("chkModem")->text(), "Connect by Modem");
      EXPECT_FALSE(Button(p, "cmdPrev")->isEnabled());
      EXPECT_FALSE(Button(p, "cmdFinish")->isEnabled());
      pictures.push_back(test::SavePicture({&p}, "wizard-1-connection-type.png"));
      r6183::test::WhenModal<frmCommWarning>([&](frmCommWarning& w) {
        EXPECT_EQ(Text(w, "Label1").toStdString(), "Please make sure the " + t->product.ProductBrand + " " +
                                                        t->product.ProductModel +
                                                        " system is plugged in and properly connected to the PC.");
        pictures.push_back(test::SavePicture({&w}, "wizard-2-warning.png"));
        r6183::test::WhenModal<frmCommResults>([&](frmCommResults& r) {
          EXPECT_EQ(Text(r, "Label4"), "Getting Communcation Information");
          // the scan starts a second after the page shows, and the port is left as it was
          QTRY_VERIFY_WITH_TIMEOUT(Button(r, "cmdFinish")->isEnabled(), 30000);
          duringScan = t->state.ComPortNumber;
          EXPECT_EQ(Text(r, "txtComport").toStdString(), t->product.ProductModel + " System found on Com16:");
          EXPECT_EQ(r.findChild<QProgressBar*>("ProgressBar1")->value(), 100);
          EXPECT_EQ(Text(r, "Label1"), "100 %");
          pictures.push_back(test::SavePicture({&r}, "wizard-3-results.png"));
          QTest::mouseClick(Button(r, "cmdFinish"), Qt::LeftButton);
        });
        QTest::keyClick(&w, Qt::Key_Return);  // Next is the default button
      });
      QTest::keyClick(&p, Qt::Key_Return);
    });
    QTest::mouseClick(Button(ports, "cmdAuto"), Qt::LeftButton);
    EXPECT_EQ(ports.findChild<QComboBox*>("cboPort")->currentIndex(), 15);
    EXPECT_EQ(t->state.ComPortNumber, 2) << "the list takes the port; the setting waits for OK";
    QTest::mouseClick(Button(ports, "cmdOk"), Qt::LeftButton);
  });
  window->Click("mnuComPort");
  EXPECT_EQ(duringScan, 2);
  EXPECT_EQ(t->state.ComPortNumber, 16);
  ASSERT_EQ(pictures.size(), 3u);
  for (const auto& p : pictures) EXPECT_FALSE(p.empty());
}

// Escape on a page is its Cancel: the wizard ends and the list keeps its port.
TEST_F(WizardWindows, EscapeOnAPageEndsTheWizard) {
  t->state.ComPortNumber = 4;
  r6183::test::WhenModal<frmComPort>([&](frmComPort& ports) {
    r6183::test::WhenModal<frmCommType>([&](frmCommType& p) {
      r6183::test::WhenModal<frmCommWarning>([&](frmCommWarning& w) { QTest::keyClick(&w, Qt::Key_Escape); });
      QTest::mouseClick(Button(p, "cmdNext"), Qt::LeftButton);
    });
    QTest::mouseClick(Button(ports, "cmdAuto"), Qt::LeftButton);
    EXPECT_EQ(t->state.WizardDone, 1);
    EXPECT_EQ(ports.findChild<QComboBox*>("cboPort")->currentIndex(), 3);
    QTest::mouseClick(Button(ports, "cmdCancel"), Qt::LeftButton);
  });
  window->Click("mnuComPort");
  EXPECT_EQ(t->state.ComPortNumber, 4);
}

// The simulated modem in front of the unit, on whichever port is chosen.
class RemoteWindows : public ::testing::Test, public r6183::test::LinkedUnit {
 protected:
  RemoteWindows() : r6183::test::LinkedUnit({}, sim::ModemOptions{}) {}
  void SetUp() override {
    window = std::make_unique<frmMenu>(*t, *comm, lock, 0);
    ASSERT_TRUE(window->MDIForm_Load());
    window->show();
  }
  bool Enabled(const char* name) const { return window->Action(name)->isEnabled(); }
  InstanceLock lock{t.dir.str()};
  std::unique_ptr<frmMenu> window;
};

TEST_F(RemoteWindows, TheSetupWalksThroughItsStepsBesideTheCommandList) {
  window->Click("mnuRemoteModem");
  frmRemote* r = window->findChild<frmRemote*>();
  ASSERT_NE(r, nullptr);
  EXPECT_TRUE(r->isVisible());
  EXPECT_EQ(r->windowTitle(), "Remote Modem Setup");
  EXPECT_NE(t->forms.Find("frmRemote"), nullptr);
  EXPECT_FALSE(Enabled("mnuFile"));
  EXPECT_FALSE(Enabled("mnuHelp"));

  // step 1: Yes shows the chart of the switches before the setup
  QString third;
  r6183::test::WhenModal<frmUSRobot>([&](frmUSRobot& c) {
    EXPECT_EQ(c.windowTitle(), "US Robotics \"Sportster\" modem");
    EXPECT_EQ(Text(c, "lbl_sw_2"), "SW3");
    third = Text(c, "txt_sw_2");
    QTest::mouseClick(Button(c, "cmd_Ok"), Qt::LeftButton);
  });
  QTest::mouseClick(Button(*r, "cmdYes"), Qt::LeftButton);
  EXPECT_EQ(third, "          DOWN");
  ASSERT_TRUE(r->isVisible());
  EXPECT_EQ(Text(*r, "lbl1"), "Connect the remote modem to this Computer's serial port using a 'straight through' "
                              "serial cable and turn modem power ON.");
  EXPECT_TRUE(Button(*r, "cmdOk")->isVisible());
  EXPECT_FALSE(Button(*r, "cmdYes")->isVisible());
  EXPECT_FALSE(Button(*r, "cmdCancel")->isVisible());
  EXPECT_FALSE(test::SavePicture({r}, "remote-setup-step-2.png").empty());

  // step 2: the port window without its wizard, then the test
  bool autoFind = true;
  r6183::test::WhenModal<frmComPort>([&](frmComPort& w) {
    autoFind = Button(w, "cmdAuto")->isEnabled();
    w.findChild<QComboBox*>("cboPort")->setCurrentIndex(2);
    QTest::mouseClick(Button(w, "cmdOk"), Qt::LeftButton);
  });
  QTest::mouseClick(Button(*r, "cmdOk"), Qt::LeftButton);
  EXPECT_FALSE(autoFind);
  EXPECT_EQ(t->state.RemoteComPort, 3);
  ASSERT_TRUE(r->isVisible());
  EXPECT_EQ(Text(*r, "lbl1"), "Restore the modem to factory defaults (recommended)?");
  EXPECT_EQ(Text(*r, "txtCommand"), "&F");
  EXPECT_EQ(Text(*r, "lblCommand"), "Command :  AT");
  EXPECT_EQ(r->width(), 6500 / 15);

  // step 3: the factory reset, and the list of modem commands beside the window
  QTest::mouseClick(Button(*r, "cmdYes"), Qt::LeftButton);
  frmPhoneList* list = window->findChild<frmPhoneList*>();
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(list->isVisible());
  EXPECT_EQ(list->windowTitle(), "Remote Commands");
  EXPECT_EQ(list->model().chkRemote.Value(), 1);
  EXPECT_EQ(Text(*r, "txtCommand"), "&W");

  // step 4: saved to the modem's memory; the chart after the setup
  r6183::test::WhenModal<frmUSRobot>([&](frmUSRobot& c) {
    third = Text(c, "txt_sw_2");
    QTest::mouseClick(Button(c, "cmd_Ok"), Qt::LeftButton);
  });
  QTest::mouseClick(Button(*r, "cmdYes"), Qt::LeftButton);
  EXPECT_EQ(third, "          UP");
  EXPECT_EQ(Text(*r, "lbl1").toStdString(),
            "Setup complete. Modem may be disconnected from this computer's serial port and installed with the " +
                t->product.ProductModel + ".");
  EXPECT_EQ(Text(*r, "cmdOk"), "Finish");
  const auto& heard = modemSim->Commands();
  EXPECT_EQ(std::vector<std::string>(heard.begin(), heard.end()), (std::vector<std::string>{"AT", "AT&F", "AT&W"}));

  QPointer<frmRemote> alive(r);
  QTest::mouseClick(Button(*r, "cmdOk"), Qt::LeftButton);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(alive.isNull());
  EXPECT_EQ(t->forms.Find("frmRemote"), nullptr);
  EXPECT_TRUE(Enabled("mnuFile"));
  EXPECT_TRUE(Enabled("mnuHelp"));
  EXPECT_FALSE(comm->PortOpen());
  QTest::mouseClick(Button(*list, "cmdClose"), Qt::LeftButton);
}

}  // namespace
}  // namespace r6183::gui
