#pragma once
// The loaded windows, as the tool's guards count them: index 0 is the main window,
// then the others in the order they were opened. Windows register when they load and
// leave when they unload; core walks them to settle edits and to keep a second
// operation out while a transfer or a modem dial is under way.
#include <optional>
#include <string>
#include <vector>

namespace r6183 {

// What a loaded window offers to core.
class Form {
 public:
  virtual ~Form() = default;
  virtual std::string Name() const = 0;     // "frmClid"
  virtual std::string Caption() const = 0;  // as shown in its title bar
  // True while it holds edits the work copy lacks; nothing for a window that has no
  // such notion (it counts as one without edits).
  virtual std::optional<bool> UncommittedChanges() const { return std::nullopt; }
  virtual void PressOk() {}      // commits and closes, unless its checks refuse
  virtual void PressCancel() {}  // drops the edits and closes
  virtual void BringToTop() {}
  virtual void SetFocus() {}
  // Closes the window; it leaves the registry on the way.
  virtual void Unload() = 0;
};

class FormsRegistry {
 public:
  void Add(Form* form);  // appended: the newest window has the highest index
  void Remove(Form* form);
  int Count() const { return static_cast<int>(forms_.size()); }
  Form& At(int index) const { return *forms_.at(static_cast<std::size_t>(index)); }
  // The first loaded window of that name (without regard to case), if any.
  Form* Find(const std::string& name) const;

  // Exactly `count` windows are loaded and the one at `index` has this caption / name.
  bool CaptionAt(int count, int index, const std::string& caption) const;
  bool NameAt(int count, int index, const std::string& name) const;

 private:
  std::vector<Form*> forms_;
};

}  // namespace r6183
