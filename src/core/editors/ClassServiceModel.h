#pragma once
// The rules of the class of service window (frmClassService): one of three levels for each
// group of six stations. The window has no way of dropping a choice: whichever way it
// closes, the groups of the present boards are written.
#include <deque>
#include <functional>
#include <memory>

#include "database/Database.h"
#include "database/Recordset.h"
#include "editors/Controls.h"

namespace r6183 {

class Session;

class ClassServiceModel {
 public:
  explicit ClassServiceModel(Session& session);
  ~ClassServiceModel();
  ClassServiceModel(const ClassServiceModel&) = delete;
  ClassServiceModel& operator=(const ClassServiceModel&) = delete;

  static constexpr const char* kCaption = "Class Of Service";
  static constexpr const char* kTabs[4] = {"&Main Board", "Expansion &1", "Expansion &2", "Expansion &3"};
  static constexpr const char* kLevels[3] = {"Normal Only", "Normal / Emergency", "Emergency Only!"};
  static constexpr const char* kHeads[3] = {" Group #", " Stations", " Class Of Service"};

  std::deque<Control> lblgrp;           // 0-15 the group numbers, 16-31 their stations
  std::deque<ListControl> cboServGroup;  // group g: g-1
  Control cmdOk{"cmdOk", ControlKind::Button, "Close"};
  Control cmdCancel{"cmdCancel", ControlKind::Button, "Command1"};

  bool ServiceChanged = false;
  bool UncommittedChanges() const { return ServiceChanged; }
  ListControl& Combo(int group) { return cboServGroup[static_cast<std::size_t>(group - 1)]; }

  void Form_Load();
  void cmdOk_Click();
  void cmdCancel_Click();
  // Writes the choices of the present boards and lets the table go.
  void Form_Unload();

  // Set by whoever shows the window.
  std::function<void()> CloseWindow;

 private:
  void Close();
  Session& s_;
  std::unique_ptr<Database> db_;
  std::unique_ptr<Recordset> rs_;
  bool loaded_ = false;
};

}  // namespace r6183
