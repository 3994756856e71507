#include "editors/Controls.h"

#include <algorithm>

#include "shell/ErrorNumbers.h"

namespace r6183 {

Control::Control(std::string name, ControlKind kind, std::string text)
    : name_(std::move(name)), kind_(kind), text_(std::move(text)) {}

void Control::Changed() {
  DataChanged = true;
  Show();
  if (OnChange) OnChange();
}

void Control::SetText(std::string text) {
  if (text == text_) return;
  text_ = std::move(text);
  Changed();
}

void Control::SetValue(int value) {
  if (kind_ == ControlKind::ScrollBar) value = std::clamp(value, min_, max_);
  if (value == value_) return;
  value_ = value;
  Changed();
}

void Control::SetRange(int min, int max) {
  min_ = min;
  max_ = std::max(min, max);
  Show();
  if (value_ < min_ || value_ > max_) SetValue(std::clamp(value_, min_, max_));
}

void Control::SetEnabled(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  Show();
}

void Control::SetVisible(bool on) {
  if (on == visible_) return;
  visible_ = on;
  Show();
}

void Control::Press() {
  if (OnClick) OnClick();
}

bool Control::KeyPress(int& keyAscii) {
  if (OnKeyPress) OnKeyPress(keyAscii);
  return keyAscii != 0;
}

void ListControl::Clear() {
  items_.clear();
  index_ = -1;
  newIndex_ = -1;
  Show(Event::Cleared, -1);
}

void ListControl::AddItem(std::string line) {
  items_.push_back(std::move(line));
  newIndex_ = ListCount() - 1;
  Show(Event::Added, newIndex_);
}

void ListControl::RemoveItem(int index) {
  if (index < 0 || index >= ListCount()) throw RuntimeError(err::InvalidProcedureCall);
  items_.erase(items_.begin() + index);
  if (index_ == index) index_ = -1;
  else if (index_ > index) --index_;
  Show(Event::Removed, index);
}

void ListControl::SetListIndex(int index) {
  if (index < -1 || index >= ListCount()) throw RuntimeError(err::InvalidProcedureCall);
  index_ = index;
  Show(Event::Selected, index);
}

void ListControl::SetEnabled(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  Show(Event::State, -1);
}

}  // namespace r6183
