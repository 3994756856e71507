#pragma once
// The menu of the main window as state: every item with its caption, enabled, visible
// and checked state, and the window's caption. The rules of the menu states live in
// core; the desktop program only mirrors this model into its actions.
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace r6183 {

struct MenuItem {
  std::string name;     // control name; elements of a control array as "mnuFileArray_2"
  std::string parent;   // name of the menu it sits in, empty for a root menu
  std::string caption;  // with its "&" mnemonic; "-" for a separator
  bool enabled = true;
  bool visible = true;
  bool checked = false;
  bool IsSeparator() const { return caption == "-"; }
};

// "mnuFileArray", 2 -> "mnuFileArray_2"
std::string ArrayName(std::string_view base, int index);

class MenuModel {
 public:
  // The full menu of the main window, in order, with its design-time captions.
  MenuModel();

  const std::vector<MenuItem>& Items() const { return items_; }
  // Raises RuntimeError(3265) for an unknown name.
  const MenuItem& Item(std::string_view name) const;

  void SetEnabled(std::string_view name, bool on);
  void SetVisible(std::string_view name, bool on);
  void SetChecked(std::string_view name, bool on);
  void SetCaption(std::string_view name, std::string caption);
  bool Enabled(std::string_view name) const { return Item(name).enabled; }
  bool Visible(std::string_view name) const { return Item(name).visible; }
  bool Checked(std::string_view name) const { return Item(name).checked; }

  const std::string& WindowCaption() const { return windowCaption_; }
  void SetWindowCaption(std::string caption);

  // Called after every change of an item (its name) or of the caption (empty name).
  std::function<void(const std::string& name)> onChange;

 private:
  MenuItem& Mutable(std::string_view name);
  void Changed(const std::string& name) {
    if (onChange) onChange(name);
  }
  std::vector<MenuItem> items_;
  std::string windowCaption_;
};

}  // namespace r6183
