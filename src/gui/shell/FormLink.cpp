#include "gui/shell/FormLink.h"

#include <QEvent>

#include "shell/Session.h"

namespace r6183::gui {

namespace {
class VisibilityFollower : public QObject {
 public:
  explicit VisibilityFollower(FormLink& link) : link_(link) {}
  bool eventFilter(QObject*, QEvent* e) override {
    if (!e->spontaneous()) {
      if (e->type() == QEvent::Show) link_.Load();
      else if (e->type() == QEvent::Hide) link_.Leave();
    }
    return false;
  }

 private:
  FormLink& link_;
};
}  // namespace

FormLink::FormLink(Session& session, QWidget& window, std::string name)
    : session_(session), window_(window), name_(std::move(name)) {}

FormLink::~FormLink() {
  if (follower_) window_.removeEventFilter(follower_.get());
  Leave();
}

void FormLink::FollowVisibility() {
  if (follower_) return;
  follower_ = std::make_unique<VisibilityFollower>(*this);
  window_.installEventFilter(follower_.get());
}

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
