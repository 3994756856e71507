#include "gui/shell/FormLink.h"

#include "shell/Session.h"

namespace r6183::gui {

FormLink::FormLink(Session& session, QWidget& window, std::string name)
    : session_(session), window_(window), name_(std::move(name)) {}

FormLink::~FormLink() { Leave(); }

void FormLink::Load() {
  if (loaded_) return;
  session_.forms.Add(this);
  loaded_ = true;
}

void FormLink::Leave() {
  if (!loaded_) return;
  session_.forms.Remove(this);
  loaded_ = false;
}

std::string FormLink::Caption() const { return window_.windowTitle().toStdString(); }

std::optional<bool> FormLink::UncommittedChanges() const {
  if (!uncommitted) return std::nullopt;
  return uncommitted();
}

void FormLink::PressOk() {
  if (ok) ok();
}

void FormLink::PressCancel() {
  if (cancel) cancel();
}

void FormLink::BringToTop() {
  window_.raise();
  window_.activateWindow();
}

void FormLink::SetFocus() { window_.setFocus(); }

void FormLink::Unload() {
  window_.close();
  Leave();
}

}  // namespace r6183::gui
