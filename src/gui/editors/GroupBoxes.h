#pragma once
// The sixteen page-group boxes of a tab, in four rows of four under their frame, with the
// two buttons that set and clear them: the common face of the custom page group and the
// audio connection windows.
#include <QWidget>

#include <vector>

#include "editors/Controls.h"
#include "gui/editors/ControlAdapter.h"

class QMdiSubWindow;

namespace r6183::gui {

// `label` may be null.
QWidget* GroupsTab(ControlAdapter& adapter, Control* label, Control& frame, const std::vector<Control*>& boxes,
                   Control& include, Control& remove);

// A row of command buttons at the right.
QLayout* ButtonRow(ControlAdapter& adapter, const std::vector<Control*>& buttons);

// Shows an editor child of the main window in `area` and brings it to the front, with the
// keyboard in it also when the quick menu opened it.
void ShowInFront(QMdiSubWindow& w);

}  // namespace r6183::gui
