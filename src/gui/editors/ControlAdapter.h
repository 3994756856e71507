#pragma once
// Ties widgets to the controls of an editor's rules: each widget shows what its control
// holds (text, value, enabled, visible) and hands the operator's typing, keys, clicks and
// focus changes to it. One adapter serves every bound editor window.
#include <QObject>

#include <functional>
#include <memory>
#include <vector>

#include "editors/Controls.h"

class QAbstractButton;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QRadioButton;
class QScrollBar;

namespace r6183::gui {

class ControlAdapter {
 public:
  ControlAdapter();
  ~ControlAdapter();
  ControlAdapter(const ControlAdapter&) = delete;
  ControlAdapter& operator=(const ControlAdapter&) = delete;

  // A text box: its text both ways, its key filter, its focus.
  void Link(Control& c, QLineEdit* w);
  // A label, shown or hidden.
  void Link(Control& c, QLabel* w);
  void Link(Control& c, QCheckBox* w);
  // A command button: caption and state; a click goes to `click`.
  void Link(Control& c, QAbstractButton* w);
  void Link(Control& c, QScrollBar* w);
  // An option group: option i sets the value i+1.
  void Link(Control& c, const std::vector<QRadioButton*>& options);
  void Link(Control& c, QGroupBox* w);
  // A list box: its lines, its selection, Enter or a double click on a line.
  void Link(ListControl& l, QListWidget* w);

  // How a command button's click reaches the rules; Press() unless set.
  std::function<void(Control&)> click;

 private:
  std::unique_ptr<QObject> context_;  // owns the connections and key filters
  std::vector<Control*> controls_;
  std::vector<ListControl*> lists_;
};

}  // namespace r6183::gui
