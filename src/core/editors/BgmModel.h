#pragma once
// The rules of the audio connections window (frmBgm): the page groups that receive
// background music, the time tones and the emergency tones, each set bound to the first
// row of its table. Cancel drops the background-music changes only; the two tone sets are
// written as the window closes, whichever way it closes.
#include <array>
#include <deque>
#include <functional>

#include "editors/Controls.h"
#include "editors/DataControl.h"

namespace r6183 {

class Session;

class BgmModel {
 public:
  explicit BgmModel(Session& session);
  BgmModel(const BgmModel&) = delete;
  BgmModel& operator=(const BgmModel&) = delete;

  static constexpr const char* kCaption = "Audio Connections";
  // One tab per audio source.
  enum Source { Music = 0, TimeTone = 1, Emergency = 2 };
  static constexpr const char* kTabs[3] = {"BGM", "Time Tone", "Emergency"};
  static constexpr const char* kTables[3] = {"Bgm", "TonesPG", "EmergencyPG"};
  static constexpr const char* kLabels[3] = {"Select Page Groups to receive background music :",
                                             "Select Page Groups to receive Clock Tone:",
                                             "Select Page Groups to receive Emergency Tone:"};

  // Per source: its label, frame "Page Groups", sixteen boxes and two buttons.
  struct Set {
    Set(const char* box, const char* include, const char* remove, const char* label, const char* frame);
    Control lbl;
    Control fra;
    std::deque<Control> chk;
    Control cmdInclude;
    Control cmdRemove;
  };
  std::array<Set, 3> sets;
  Control cmdOK{"cmdOK", ControlKind::Button, "OK"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Cancel"};
  DataControl dtaBgm{"dtaBgm"};
  DataControl DataCT{"DataCT"};
  DataControl DataE{"DataE"};

  bool BgmChanged = false;
  bool BgmAccepted = false;
  bool UncommittedChanges() const { return BgmChanged; }
  DataControl& Data(int source) { return source == Music ? dtaBgm : source == TimeTone ? DataCT : DataE; }
  // The box of group g (1-16) of a source.
  Control& Box(int source, int g) { return sets[static_cast<std::size_t>(source)].chk[static_cast<std::size_t>(g - 1)]; }

  void Form_Load();
  void Include(int source);
  void Remove(int source);
  void cmdOK_Click();
  void cmdCancel_Click();
  // The data controls close: the bound values go into the tables unless refused.
  void Form_Unload();

  // Set by whoever shows the window.
  std::function<void()> CloseWindow;

 private:
  void Close();
  Session& s_;
  bool unloaded_ = false;
  bool filling_ = false;
};

}  // namespace r6183
