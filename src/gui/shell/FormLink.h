#pragma once
// Ties a Qt window to the loaded-windows registry of core: the window counts as loaded
// from Load() until Leave() (or its end), under its control name, with its title bar as
// caption. Editors that hold edits override the change-tracking part through the hooks.
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "shell/FormsRegistry.h"

namespace r6183 {
class Session;
}

namespace r6183::gui {

class FormLink : public Form {
 public:
  FormLink(Session& session, QWidget& window, std::string name);
  ~FormLink() override;
  FormLink(const FormLink&) = delete;
  FormLink& operator=(const FormLink&) = delete;

  void Load();   // appended to the loaded windows, once
  void Leave();  // taken out again
  bool Loaded() const { return loaded_; }
  // Loaded while the window is shown: from its showing to its closing (or hiding), a
  // minimised window staying loaded.
  void FollowVisibility();

  std::string Name() const override { return name_; }
  std::string Caption() const override;
  std::optional<bool> UncommittedChanges() const override;
  void PressOk() override;
  void PressCancel() override;
  void BringToTop() override;
  void SetFocus() override;
  void Unload() override;

  // For windows that hold edits until OK.
  std::function<bool()> uncommitted;
  std::function<void()> ok, cancel;

 private:
  Session& session_;
  QWidget& window_;
  std::string name_;
  bool loaded_ = false;
  std::unique_ptr<QObject> follower_;
};

}  // namespace r6183::gui
