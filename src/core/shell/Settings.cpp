#include "shell/Settings.h"

#include "shell/IniFile.h"
#include "shell/Labels.h"
#include "shell/Session.h"

namespace r6183 {

namespace {

constexpr const char* kSystem = "System";
constexpr const char* kLastFiles = "Last Files";
constexpr int kRecentCount = 4;
constexpr int16_t kMaxComPort = 16;

// The switchboard keys, spelt as earlier installations wrote them.
constexpr const char* kBoardTop = "SwitchBorad Top";
constexpr const char* kBoardLeft = "SwitchBorad Left";
constexpr const char* kBoardWidth = "SwitchBorad Width";
constexpr const char* kBoardHeight = "SwitchBorad Heigth";

INIClass OpenSection(Session& session, const char* section) {
  INIClass ini(session.journal());
  ini.SetFileName(session.state.SettingsPath);
  ini.SetSectionName(section);
  return ini;
}

std::string FileKey(int slot) { return "File " + std::to_string(slot); }

}  // namespace

void ReadIniFile(Session& session) {
  step(session.journal(), Where{labels::modProject, "ReadIniFile"}, [&] {
    auto& st = session.state;
    INIClass ini = OpenSection(session, kSystem);
    st.ComPortNumber = ini.ReadINT_From_INI("Com Port");
    st.DebugLevel = ini.ReadINT_From_INI("Debug");
    st.MdiHeight = ini.ReadINT_From_INI("MDI Height");
    st.MdiWidth = ini.ReadINT_From_INI("MDI Width");
    if (st.ComPortNumber < 1 || st.ComPortNumber > kMaxComPort) st.ComPortNumber = 1;
  });
  GetFileArray(session);
}

void SaveIniFile(Session& session) {
  step(session.journal(), Where{labels::modProject, "SaveIniFile"}, [&] {
    const auto& st = session.state;
    INIClass ini = OpenSection(session, kSystem);
    ini.WriteINI("Com Port", std::to_string(st.ComPortNumber));
    ini.WriteINI("MDI Height", std::to_string(st.MdiHeight));
    ini.WriteINI("MDI Width", std::to_string(st.MdiWidth));
  });
  PutFileArray(session);
}

void GetFileArray(Session& session) {
  step(session.journal(), Where{labels::modProject, "GetFileArray"}, [&] {
    INIClass ini = OpenSection(session, kLastFiles);
    for (int slot = 1; slot <= kRecentCount; ++slot)
      session.state.RecentFiles[static_cast<std::size_t>(slot)] =
          ini.ReadString_From_INI(FileKey(slot));
  });
}

void PutFileArray(Session& session) {
  step(session.journal(), Where{labels::modProject, "PutFileArray"}, [&] {
    INIClass ini = OpenSection(session, kLastFiles);
    for (int slot = 1; slot <= kRecentCount; ++slot)
      ini.WriteINI(FileKey(slot), session.state.RecentFiles[static_cast<std::size_t>(slot)]);
  });
}

void getSwitchBoardValues(Session& session) {
  step(session.journal(), Where{labels::modProject, "getSwitchBoardValues"}, [&] {
    auto& st = session.state;
    INIClass ini = OpenSection(session, kSystem);
    st.SwitchBoardTop = ini.ReadINT_From_INI(kBoardTop);
    st.SwitchBoardLeft = ini.ReadINT_From_INI(kBoardLeft);
    st.SwitchBoardWidth = ini.ReadINT_From_INI(kBoardWidth);
    st.SwitchBoardHeight = ini.ReadINT_From_INI(kBoardHeight);
  });
}

void PutSwitchBoardVal(Session& session) {
  step(session.journal(), Where{labels::modProject, "PutSwitchBoardVal"}, [&] {
    const auto& st = session.state;
    INIClass ini = OpenSection(session, kSystem);
    ini.WriteINI(kBoardTop, std::to_string(st.SwitchBoardTop));
    ini.WriteINI(kBoardLeft, std::to_string(st.SwitchBoardLeft));
    ini.WriteINI(kBoardWidth, std::to_string(st.SwitchBoardWidth));
    ini.WriteINI(kBoardHeight, std::to_string(st.SwitchBoardHeight));
  });
}

void UpdateFileArray(std::array<std::string, 5>& recent, const std::string& name) {
  std::size_t freed = kRecentCount;
  for (std::size_t slot = 1; slot <= kRecentCount; ++slot) {
    if (recent[slot] == name) {
      freed = slot;
      break;
    }
  }
  for (std::size_t slot = freed; slot >= 2; --slot) recent[slot] = recent[slot - 1];
  recent[1] = name;
}

}  // namespace r6183
