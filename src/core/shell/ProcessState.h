#pragma once
// The tool's process-wide values, in one place. A Session owns one of these.
#include <array>
#include <cstdint>
#include <string>

namespace r6183 {

struct ProcessState {
  // paths, formed at start-up
  std::string SettingsPath;
  std::string ErrorsDbPath;
  std::string DefaultDbPath;
  std::string WorkDbPath;

  // the open document
  std::string CurrentFileName;  // empty, "Untitled" or a full path
  int16_t DatabaseDirty = 0;
  int16_t EventCount = 0;
  uint8_t SystemConfig = 0;
  int16_t ClocksEnabled = 0;
  std::string ProgramDbRevision = "02.00";
  std::string ProgramDbRevisionShort = "2.00";
  uint8_t ScheduleNumber = 0;

  // flags
  int16_t TraceComm = 0;
  int16_t TraceAT = 0;
  int16_t ModemReleasePending = 0;
  int16_t SaveCancelled = 0;
  int16_t AcceptAllChanges = 0;
  int16_t DateTimeActive = 0;
  int16_t DaylightSupported = 0;
  int16_t DaylightEnabled = 0;
  // a required file went missing: the program must end
  int16_t EndProcess = 0;

  // the port choice: Cancel (or no valid choice) in the port window; the port of a
  // remote modem's setup
  int16_t ComPortCancelled = 0;
  int16_t RemoteComPort = 0;

  // the communications wizard: the page loop's flags, the kind of scan, and its result
  // for the caller (a port number, or 65535 for none)
  int16_t WizardDone = 0;
  int16_t WizardAborted = 0;
  int16_t WizardGoBack = 0;
  int16_t WizardByModem = 0;
  int32_t WizardFoundPort = 0;

  // settings.ini
  int16_t ComPortNumber = 1;
  int16_t DebugLevel = 0;
  int32_t MdiHeight = 0;
  int32_t MdiWidth = 0;
  int32_t SwitchBoardTop = 0;
  int32_t SwitchBoardLeft = 0;
  int32_t SwitchBoardWidth = 0;
  int32_t SwitchBoardHeight = 0;
  // RecentFiles[1] is the most recent; element 0 is unused so that slots keep
  // their numbers 1 to 4.
  std::array<std::string, 5> RecentFiles{};

  // the schedule and event windows: events per schedule (index ScheduleNumber-1), the
  // event in work and the place of the schedule window that opened the event window
  std::array<int16_t, 6> EventsInSchedule{};
  std::string CurStartTime;
  uint8_t CurTone = 0;
  uint8_t CurDuration = 0;
  std::array<bool, 16> CurPageGroups{};
  int16_t SchedFormIndex = 0;
};

}  // namespace r6183
