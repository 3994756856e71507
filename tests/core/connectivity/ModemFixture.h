#pragma once
// The tool's modem layer on one end of an in-memory line, with a modem on the other end
// that answers each command line from a script, on the session's manual clock.
#include <memory>
#include <string>
#include <vector>

#include "connectivity/PhoneList.h"
#include "connectivity/modModem.h"
#include "protocol/BorrowedLine.h"
#include "protocol/ModComm.h"
#include "protocol/ProgressWindow.h"
#include "shell/MainMenu.h"
#include "support/TestSupport.h"

namespace r6183::test {

// Setup commands get their echo and "OK"; a dial gets `dialReply`, a line each; a dead
// modem answers nothing.
struct ScriptedModem {
  MemoryLine* line = nullptr;
  bool dead = false;
  std::vector<std::string> dialReply{"CONNECT 9600"};
  std::vector<std::string> commands;  // the command lines received
  std::string pending;
  void Poll() {
    while (auto c = line->ReadByte()) {
      if (*c != '\r') {
        pending += *c;
        continue;
      }
      std::string command;
      command.swap(pending);
      if (dead) continue;
      commands.push_back(command);
      if (command.rfind("ATD", 0) == 0 || command == "ATX1D") {
        for (const std::string& l : dialReply) line->Write("\r\n" + l + "\r\n");
      } else {
        line->Write(command + "\r\r\nOK\r\n");
      }
    }
  }
};

// What the progress window and the main window were asked to do, in order.
struct RecordingScreen : ProgressWindow, WindowOpener {
  std::vector<std::string> calls;
  bool mainEnabled = true;
  void Show() override { calls.push_back("show"); }
  void Unload() override { calls.push_back("unload"); }
  void SetModemComm() override { calls.push_back("plain face"); }
  void SetModemRelease() override { calls.push_back("release face"); }
  void SetPlainText(const std::string& text) override { calls.push_back(text); }
  void ChangeCaption(const std::string& text) override { calls.push_back("caption " + text); }
  void ShowModal(const std::string& name) override { calls.push_back("modal " + name); }
  void Show(const std::string& name) override { calls.push_back("open " + name); }
  void ShowPhoneList(const PhoneListSetup& setup) override { calls.push_back("list " + setup.caption); }
  void EnableMain(bool on) override { mainEnabled = on; }
};

class ModemLink {
 public:
  ModemLink() {
    auto [tool, far] = MemoryLine::Pair(t.clock);
    tool_ = std::move(tool);
    far_ = std::move(far);
    far_->Open({}, Handshake::None);
    modem.line = far_.get();
    t->SetPump([this] { modem.Poll(); });
    t->product.ProductTitle = "Title";
    t->SetWindowOpener(&screen);
    Initialize(*t);
    t->menu.SetEnabled("mnuModemRelease", false);
    comm = std::make_unique<ModComm>(*t, [this](int16_t) { return std::make_unique<BorrowedLine>(*tool_); });
    hayes = std::make_unique<modModem>(*t, *comm, screen);
  }
  std::vector<std::string> Texts() const {
    std::vector<std::string> out;
    for (const auto& m : t.prompter.Shown()) out.push_back(m.text);
    return out;
  }
  uint32_t Tick() const { return t.clock.TickCount(); }
  // The command lines the modem has received, including what was sent last.
  const std::vector<std::string>& Heard() {
    modem.Poll();
    return modem.commands;
  }

  TestSession t;
  std::unique_ptr<MemoryLine> tool_, far_;
  ScriptedModem modem;
  RecordingScreen screen;
  std::unique_ptr<ModComm> comm;
  std::unique_ptr<modModem> hayes;
};

}  // namespace r6183::test
