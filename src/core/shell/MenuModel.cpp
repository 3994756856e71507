#include "shell/MenuModel.h"

#include <algorithm>
#include <utility>

#include "shell/ErrorNumbers.h"

namespace r6183 {

namespace {
struct Row {
  const char* name;
  const char* parent;
  const char* caption;
};

// The main window's menu as designed, in order.
constexpr Row kMenu[] = {
    {"mnuFile", "", "&File"},
    {"mnuFileNew", "mnuFile", "&New"},
    {"mnuFileOpen", "mnuFile", "&Open..."},
    {"mnuFileClose", "mnuFile", "&Close"},
    {"mnuFileDiv", "mnuFile", "-"},
    {"mnuFileSave", "mnuFile", "&Save"},
    {"mnuFileSaveAs", "mnuFile", "Save &As..."},
    {"mnuTxRxDiv", "mnuFile", "-"},
    {"mnuComSetup", "mnuFile", "&Communications Setup"},
    {"mnuComPort", "mnuComSetup", "&ComPort Selection"},
    {"mnuRemoteModem", "mnuComSetup", "&Remote Modem Setup"},
    {"mnuModemDiv", "mnuFile", "-"},
    {"mnuModem", "mnuFile", "&Modem"},
    {"mnuModemConnect", "mnuModem", "Modem &Connect"},
    {"mnuManualConnect", "mnuModem", "Ma&nual  Connect"},
    {"mnuManConnDiv", "mnuModem", "-"},
    {"mnuModemRelease", "mnuModem", "Modem &Release"},
    {"mnuReceiveDiv", "mnuFile", "-"},
    {"mnuRx", "mnuFile", "&Receive data from 6183"},
    {"mnuSend", "mnuFile", "Sen&d data to 6183"},
    {"mnuPrintDiv", "mnuFile", "-"},
    {"mnuPrint", "mnuFile", "&Print..."},
    {"mnuFileArray_0", "mnuFile", "-"},
    {"mnuFileArray_1", "mnuFile", ""},
    {"mnuFileArray_2", "mnuFile", ""},
    {"mnuFileArray_3", "mnuFile", ""},
    {"mnuFileArray_4", "mnuFile", ""},
    {"mnuExitDiv", "mnuFile", "-"},
    {"mnuExit", "mnuFile", "E&xit"},
    {"mnuConfig", "", "&Configuration"},
    {"mnuSchedules", "", "&Schedules"},
    {"mnuSched1", "mnuSchedules", "Schedule &1"},
    {"mnuSched2", "mnuSchedules", "Schedule &2"},
    {"mnuSched3", "mnuSchedules", "Schedule &3"},
    {"mnuSched4", "mnuSchedules", "Schedule &4"},
    {"mnuSched5", "mnuSchedules", "Schedule &5"},
    {"mnuSched6", "mnuSchedules", "Schedule &6"},
    {"mnuSchedDiv", "mnuSchedules", "-"},
    {"mnuAllSched", "mnuSchedules", "&All Schedules"},
    {"mnudash11", "mnuSchedules", "-"},
    {"mnuClocks", "mnuSchedules", "&Clocks"},
    {"mnuStation", "", "S&tation"},
    {"mnuArchNum", "mnuStation", "&ArchNumber / CLID"},
    {"mnuClassService", "mnuStation", "&Class Of Service"},
    {"mnuPageGroup", "", "Custom &Page Groups"},
    {"mnuSysOpt", "", "S&ystem"},
    {"mnuBGM", "", "A&udio Connections"},
    {"mnuDate", "", "&Date/Time"},
    {"mnuWindow", "", "&Window"},
    {"mnuWindowCloseAll", "mnuWindow", "&Close All"},
    {"mnuSwitchBoard", "mnuWindow", "SwitchBoard"},
    {"mnuHelp", "", "&Help"},
    {"mnuHelpContents", "mnuHelp", "&Contents"},
    {"mnuHelpAbout", "mnuHelp", "&About"},
    {"mnuDebug", "", "Debug"},
};
}  // namespace

std::string ArrayName(std::string_view base, int index) {
  return std::string(base) + "_" + std::to_string(index);
}

MenuModel::MenuModel() {
  items_.reserve(std::size(kMenu));
  for (const Row& r : kMenu) {
    MenuItem item{r.name, r.parent, r.caption};
    // the recent-file entries show only once there are recent files
    if (item.name.starts_with("mnuFileArray_")) item.visible = false;
    items_.push_back(std::move(item));
  }
}

const MenuItem& MenuModel::Item(std::string_view name) const {
  const auto it = std::find_if(items_.begin(), items_.end(),
                               [&](const MenuItem& i) { return i.name == name; });
  if (it == items_.end()) throw RuntimeError(err::ItemNotFound);
  return *it;
}

MenuItem& MenuModel::Mutable(std::string_view name) {
  return const_cast<MenuItem&>(std::as_const(*this).Item(name));
}

void MenuModel::SetEnabled(std::string_view name, bool on) {
  MenuItem& i = Mutable(name);
  if (i.enabled == on) return;
  i.enabled = on;
  Changed(i.name);
}

void MenuModel::SetVisible(std::string_view name, bool on) {
  MenuItem& i = Mutable(name);
  if (i.visible == on) return;
  i.visible = on;
  Changed(i.name);
}

void MenuModel::SetChecked(std::string_view name, bool on) {
  MenuItem& i = Mutable(name);
  if (i.checked == on) return;
  i.checked = on;
  Changed(i.name);
}

void MenuModel::SetCaption(std::string_view name, std::string caption) {
  MenuItem& i = Mutable(name);
  if (i.caption == caption) return;
  i.caption = std::move(caption);
  Changed(i.name);
}

void MenuModel::SetWindowCaption(std::string caption) {
  if (windowCaption_ == caption) return;
  windowCaption_ = std::move(caption);
  Changed("");
}

}  // namespace r6183
