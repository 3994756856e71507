// The modem's windows in the main window, with the simulated unit behind a simulated modem
// linked in-process on the manual clock: the phone list that dials, the port window.
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

#include <SQLiteCpp/SQLiteCpp.h>

#include "Pictures.h"
#include "WhenModal.h"
#include "connectivity/modModem.h"
#include "gui/connectivity/frmComPort.h"
#include "gui/connectivity/frmPhoneList.h"
#include "gui/protocol/frmMsgWait.h"
#include "gui/shell/frmMenu.h"
#include "shell/InstanceLock.h"
#include "sim/LinkedUnit.h"

namespace r6183::gui {
namespace {

sim::ModemOptions SlowDial() {
  sim::ModemOptions o;
  o.dialDelay = std::chrono::milliseconds(2500);
  return o;
}

class ModemWindows : public ::testing::Test, public r6183::test::LinkedUnit {
 protected:
  ModemWindows() : r6183::test::LinkedUnit({}, SlowDial()) {}
  void SetUp() override {
    window = std::make_unique<frmMenu>(*t, *comm, lock, 0);
    ASSERT_TRUE(window->MDIForm_Load());
    window->show();
  }
  frmPhoneList* List() const { return window->findChild<frmPhoneList*>(); }
  bool Enabled(const char* name) const { return window->Action(name)->isEnabled(); }

  InstanceLock lock{t.dir.str()};
  std::unique_ptr<frmMenu> window;
};

TEST_F(ModemWindows, ThePhoneListDialsTheUnitAndTheCallIsReleased) {
  SQLite::Database(t.dir.str("phonelst"), SQLite::OPEN_READWRITE)
      .exec("DELETE FROM PhoneList; INSERT INTO PhoneList VALUES ('Head office', '5550100')");
  window->Click("mnuModemConnect");
  frmPhoneList* list = List();
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(list->isVisible());
  EXPECT_EQ(list->windowTitle().toStdString(), "Dialing Modem");
  EXPECT_NE(t->forms.Find("frmPhoneList"), nullptr);
  EXPECT_FALSE(Enabled("mnuModem"));
  EXPECT_FALSE(Enabled("mnuComSetup"));

  // a new row through the edit window; it becomes the number to dial
  bool edited = false;
  r6183::test::WhenModal<frmPhoneUpdate>([&](frmPhoneUpdate& w) {
    edited = w.windowTitle() == "Edit Phone Number";
    EXPECT_EQ(w.findChild<QLabel*>("Label2")->text().toStdString(), "&Description: ");
    QTest::keyClicks(w.findChild<QLineEdit*>("txtDescription"), "Pump station 4");
    QTest::keyClicks(w.findChild<QLineEdit*>("txtPhonenum"), "5551234");
    QTest::mouseClick(w.findChild<QPushButton*>("cmdOk"), Qt::LeftButton);
  });
  QTest::mouseClick(list->findChild<QPushButton*>("cmdInsert"), Qt::LeftButton);
  EXPECT_TRUE(edited);
  QTableWidget* grid = list->grid();
  ASSERT_EQ(grid->rowCount(), 2);
  EXPECT_EQ(grid->item(1, 1)->text().toStdString(), "Pump station 4");
  EXPECT_EQ(grid->currentRow(), 1);
  EXPECT_EQ(list->findChild<QLineEdit*>("txtNumber")->text().toStdString(), "5551234");
  // choosing a row by mouse puts its number up, and back
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualItemRect(grid->item(0, 1)).center());
  EXPECT_EQ(list->findChild<QLineEdit*>("txtNumber")->text().toStdString(), "5550100");
  QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualItemRect(grid->item(1, 1)).center());
  EXPECT_EQ(list->findChild<QLineEdit*>("txtNumber")->text().toStdString(), "5551234");

  // the picture is taken while the modem dials
  std::string picture;
  t->SetPump([&] {
    modemSim->Poll();
    unitSim->Poll();
    modemSim->Poll();
    if (picture.empty() && modemSim->state() == sim::SimulatedModem::State::Dialing)
      picture = test::SavePicture({list, &window->progress()}, "phone-list-dialling.png");
  });
  QPointer<frmPhoneList> alive(list);
  QTest::mouseClick(list->findChild<QPushButton*>("cmdDial"), Qt::LeftButton);
  EXPECT_FALSE(picture.empty());
  ASSERT_FALSE(t.prompter.Shown().empty());
  EXPECT_EQ(t.prompter.Shown().back().text, "Modem connected successfully.");
  EXPECT_EQ(modemSim->Number(), "5551234");
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(alive.isNull()) << "the list closes once the call stands";
  EXPECT_EQ(t->forms.Find("frmPhoneList"), nullptr);
  EXPECT_TRUE(Enabled("mnuModemRelease"));
  EXPECT_FALSE(Enabled("mnuModemConnect"));
  EXPECT_FALSE(Enabled("mnuManualConnect"));
  EXPECT_TRUE(window->menuBar()->isEnabled());

  // the port can't change during the call
  t.prompter.Clear();
  window->Click("mnuComPort");
  ASSERT_EQ(t.prompter.Shown().size(), 1u);
  EXPECT_EQ(t.prompter.Shown()[0].text, "You have to Release Modem before proceeding.");

  window->Click("mnuModemRelease");
  EXPECT_FALSE(Enabled("mnuModemRelease"));
  EXPECT_TRUE(Enabled("mnuModemConnect"));
  EXPECT_FALSE(window->progress().isVisible());
  EXPECT_EQ(modemSim->state(), sim::SimulatedModem::State::Command);
}

TEST_F(ModemWindows, ThePortWindowShowsEachPortsDeviceAndKeepsTheChoiceOnOk) {
  r6183::test::WriteFile(t.dir.path() / "settings.ini", "[Ports]\r\nCom 4=/dev/ttyTEST4\r\n");
  struct Case {
    int choose;
    bool ok;
    int16_t port;  // afterwards
  };
  for (const Case c : {Case{3, false, 1}, Case{3, true, 4}}) {
    t->state.ComPortNumber = 1;
    ASSERT_TRUE(comm->Init_Comm(0));
    std::string fourth;
    r6183::test::WhenModal<frmComPort>([&](frmComPort& w) {
      auto* box = w.findChild<QComboBox*>("cboPort");
      EXPECT_EQ(box->count(), 16);
      EXPECT_EQ(box->currentIndex(), 0);
      fourth = box->itemText(3).toStdString();
      EXPECT_TRUE(w.findChild<QPushButton*>("cmdAuto")->isEnabled());
      box->setCurrentIndex(c.choose);
      QTest::mouseClick(w.findChild<QPushButton*>(c.ok ? "cmdOk" : "cmdCancel"), Qt::LeftButton);
    });
    window->Click("mnuComPort");
    EXPECT_EQ(fourth.rfind("4   /dev/ttyTEST4", 0), 0u) << fourth;
    EXPECT_EQ(t->state.ComPortNumber, c.port);
    EXPECT_EQ(t->state.ComPortCancelled, c.ok ? 0 : 1);
    EXPECT_EQ(comm->PortOpen(), !c.ok) << "OK closes the port for the next operation to open the new one";
  }
}

}  // namespace
}  // namespace r6183::gui
