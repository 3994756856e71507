#pragma once
// The small window that stays in view during a transfer or a modem operation, as core
// drives it: three faces (progress, plain, release) and a caption. The desktop program
// shows a real window; r6183ctl prints the progress lines; tests record them.
#include <string>

namespace r6183 {

class ProgressWindow {
 public:
  virtual ~ProgressWindow() = default;
  virtual void Show() {}
  virtual void Unload() {}
  // Progress face: first line, second line, percent.
  virtual void WhatToDisplay(const std::string& first, const std::string& second, int percent) {
    (void)first, (void)second, (void)percent;
  }
  virtual void SetModemComm() {}
  // The text of the plain face.
  virtual void SetPlainText(const std::string& text) { (void)text; }
  virtual void SetModemRelease() {}
  virtual void ChangeCaption(const std::string& text) { (void)text; }
};

// The percent as the window shows it: a leading blank for a positive number, " %" behind.
inline std::string PercentText(int percent) {
  return (percent >= 0 ? " " : "") + std::to_string(percent) + " %";
}

}  // namespace r6183
