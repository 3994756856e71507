#pragma once
// The controls of an editor window as its rules see them: what each shows, whether it is
// enabled and visible, and the handlers that run when it changes. The rules of a window
// work on these; the desktop program mirrors each into the widget of the same name and
// hands the operator's input back, and r6183ctl and the tests drive them directly.
#include <functional>
#include <string>
#include <vector>

namespace r6183 {

enum class ControlKind { TextBox, Label, CheckBox, OptionGroup, Button, ScrollBar, Frame, Tab };

class Control {
 public:
  Control(std::string name, ControlKind kind, std::string text = {});
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& Name() const { return name_; }
  ControlKind Kind() const { return kind_; }

  // The text of a text box, the caption of a label or a button.
  const std::string& Text() const { return text_; }
  // A different text runs OnChange; the text is marked changed for its data control.
  void SetText(std::string text);
  // A check box 0 or 1; the number of the option set in an option group (0: none); the
  // position of a scroll bar.
  int Value() const { return value_; }
  // A different value runs OnChange (a click of a check box or an option). A scroll
  // bar's value is held to its range.
  void SetValue(int value);
  int Min() const { return min_; }
  int Max() const { return max_; }
  void SetRange(int min, int max);

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool on);
  bool Visible() const { return visible_; }
  void SetVisible(bool on);

  // A button pressed by the operator or by the program: runs OnClick.
  void Press();

  // Set when the content changes after its data control filled it in.
  bool DataChanged = false;

  // The window's handlers.
  std::function<void()> OnChange;
  std::function<void()> OnClick;
  std::function<void(int& keyAscii)> OnKeyPress;  // a key of 0 afterwards is swallowed
  std::function<void()> OnGotFocus;
  std::function<void()> OnLostFocus;
  // The view: runs after every change of content or state.
  std::function<void()> Mirror;

  // A key typed by the operator: runs OnKeyPress; false when the key is swallowed.
  bool KeyPress(int& keyAscii);

 private:
  void Changed();
  void Show() const {
    if (Mirror) Mirror();
  }

  std::string name_;
  ControlKind kind_;
  std::string text_;
  int value_ = 0;
  int min_ = 0, max_ = 0;
  bool enabled_ = true;
  bool visible_ = true;
};

// A list box: its lines, the selected one (ListIndex, -1 for none), and the place of the
// line added last (NewIndex).
class ListControl {
 public:
  explicit ListControl(std::string name) : name_(std::move(name)) {}
  ListControl(const ListControl&) = delete;
  ListControl& operator=(const ListControl&) = delete;

  enum class Event { Cleared, Added, Removed, Selected, State, Replaced };

  const std::string& Name() const { return name_; }
  const std::vector<std::string>& Items() const { return items_; }
  int ListCount() const { return static_cast<int>(items_.size()); }
  const std::string& List(int index) const { return items_.at(static_cast<std::size_t>(index)); }
  int ListIndex() const { return index_; }
  int NewIndex() const { return newIndex_; }
  // The selected line, or empty.
  std::string Selected() const { return index_ < 0 ? std::string() : List(index_); }

  void Clear();
  void AddItem(std::string line);
  void RemoveItem(int index);  // raises 5 for an index outside the list
  // Rewrites the line at `index`; raises 5 for an index outside the list.
  void SetList(int index, std::string line);
  void SetListIndex(int index);  // -1 to ListCount-1, else raises 5
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool on);

  // The operator chooses line `index`: it is selected and OnClick runs.
  void Choose(int index) {
    SetListIndex(index);
    if (OnClick) OnClick();
  }

  std::function<void()> OnDblClick;
  std::function<void()> OnClick;  // a line chosen by the operator
  // The view: what changed, and the line it concerns.
  std::function<void(Event, int index)> Mirror;

 private:
  void Show(Event e, int index) const {
    if (Mirror) Mirror(e, index);
  }
  std::string name_;
  std::vector<std::string> items_;
  int index_ = -1;
  int newIndex_ = -1;
  bool enabled_ = true;
};

}  // namespace r6183
