#include "gui/editors/ControlAdapter.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QEvent>
#include <QFocusEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>

namespace r6183::gui {

namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

void ShowState(const Control& c, QWidget* w) {
  w->setEnabled(c.Enabled());
  // a hidden control is hidden explicitly, so that its window showing does not show it; a
  // shown one is shown again only where it was hidden, and with its window
  if (!c.Visible()) w->setVisible(false);
  else if (w->isHidden() && w->testAttribute(Qt::WA_WState_ExplicitShowHide) && w->parentWidget())
    w->setVisible(true);
}

// The key filter and focus changes of a text box.
class TextBoxFilter : public QObject {
 public:
  TextBoxFilter(Control& c, QObject* parent) : QObject(parent), c_(c) {}
  bool eventFilter(QObject*, QEvent* e) override {
    switch (e->type()) {
      case QEvent::KeyPress: {
        auto* k = static_cast<QKeyEvent*>(e);
        if (k->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) return false;
        int key = 0;
        if (k->key() == Qt::Key_Backspace) key = 8;
        else if (k->text().size() == 1 && k->text()[0].unicode() >= 32 && k->text()[0].unicode() < 127)
          key = k->text()[0].unicode();
        if (key == 0) return false;  // moving keys, Tab, Enter: not typing
        return !c_.KeyPress(key);
      }
      case QEvent::FocusIn:
        if (c_.OnGotFocus) c_.OnGotFocus();
        return false;
      case QEvent::FocusOut: {
        // another window or a menu taking the focus is no leaving of the box
        const auto reason = static_cast<QFocusEvent*>(e)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason && c_.OnLostFocus)
          c_.OnLostFocus();
        return false;
      }
      default:
        return false;
    }
  }

 private:
  Control& c_;
};

}  // namespace

ControlAdapter::ControlAdapter() : context_(std::make_unique<QObject>()) {}

ControlAdapter::~ControlAdapter() {
  for (Control* c : controls_) c->Mirror = nullptr;
  for (ListControl* l : lists_) l->Mirror = nullptr;
  context_.reset();  // the connections and filters go before the controls can
}

void ControlAdapter::Link(Control& c, QLineEdit* w) {
  controls_.push_back(&c);
  c.Mirror = [&c, w] {
    if (w->text() != Q(c.Text())) {
      const QSignalBlocker quiet(w);
      w->setText(Q(c.Text()));
    }
    ShowState(c, w);
  };
  c.Mirror();
  QObject::connect(w, &QLineEdit::textEdited, context_.get(), [&c](const QString& t) { c.SetText(t.toStdString()); });
  w->installEventFilter(new TextBoxFilter(c, context_.get()));
}

void ControlAdapter::Link(Control& c, QLabel* w) {
  controls_.push_back(&c);
  c.Mirror = [&c, w] {
    w->setText(Q(c.Text()));
    ShowState(c, w);
  };
  c.Mirror();
}

void ControlAdapter::Link(Control& c, QCheckBox* w) {
  controls_.push_back(&c);
  c.Mirror = [&c, w] {
    const QSignalBlocker quiet(w);
    w->setText(Q(c.Text()));
    w->setChecked(c.Value() != 0);
    ShowState(c, w);
  };
  c.Mirror();
  QObject::connect(w, &QCheckBox::clicked, context_.get(), [&c](bool on) { c.SetValue(on ? 1 : 0); });
}

void ControlAdapter::Link(Control& c, QAbstractButton* w) {
  controls_.push_back(&c);
  c.Mirror = [&c, w] {
    w->setText(Q(c.Text()));
    ShowState(c, w);
  };
  c.Mirror();
  QObject::connect(w, &QAbstractButton::clicked, context_.get(), [this, &c] {
    if (click) click(c);
    else c.Press();
  });
}

void ControlAdapter::Link(Control& c, QScrollBar* w) {
  controls_.push_back(&c);
  c.Mirror = [&c, w] {
    const QSignalBlocker quiet(w);
    w->setRange(c.Min(), c.Max());
    w->setValue(c.Value());
    ShowState(c, w);
  };
  c.Mirror();
  QObject::connect(w, &QScrollBar::valueChanged, context_.get(), [&c](int v) { c.SetValue(v); });
}

void ControlAdapter::Link(Control& c, const std::vector<QRadioButton*>& options) {
  controls_.push_back(&c);
  c.Mirror = [&c, options] {
    for (std::size_t i = 0; i < options.size(); ++i) {
      QRadioButton* o = options[i];
      const QSignalBlocker quiet(o);
      // none set: the group's exclusivity would keep one
      o->setAutoExclusive(false);
      o->setChecked(c.Value() == static_cast<int>(i) + 1);
      o->setAutoExclusive(true);
      ShowState(c, o);
    }
  };
  c.Mirror();
  for (std::size_t i = 0; i < options.size(); ++i)
    QObject::connect(options[i], &QRadioButton::clicked, context_.get(),
                     [&c, i] { c.SetValue(static_cast<int>(i) + 1); });
}

void ControlAdapter::Link(Control& c, QGroupBox* w) {
  controls_.push_back(&c);
  c.Mirror = [&c, w] { ShowState(c, w); };
  c.Mirror();
}

void ControlAdapter::Link(ListControl& l, QListWidget* w) {
  lists_.push_back(&l);
  auto selectRow = [w](int index) {
    const QSignalBlocker quiet(w);
    w->setCurrentRow(index);
    if (index < 0) w->clearSelection();
  };
  l.Mirror = [&l, w, selectRow](ListControl::Event e, int index) {
    switch (e) {
      case ListControl::Event::Cleared: {
        const QSignalBlocker quiet(w);
        w->clear();
        break;
      }
      case ListControl::Event::Added: {
        const QSignalBlocker quiet(w);
        w->addItem(Q(l.List(index)));
        break;
      }
      case ListControl::Event::Removed: {
        const QSignalBlocker quiet(w);
        delete w->takeItem(index);
        selectRow(l.ListIndex());
        break;
      }
      case ListControl::Event::Selected:
        selectRow(index);
        break;
      case ListControl::Event::State:
        w->setEnabled(l.Enabled());
        break;
    }
  };
  {
    const QSignalBlocker quiet(w);
    w->clear();
    for (const std::string& line : l.Items()) w->addItem(Q(line));
  }
  selectRow(l.ListIndex());
  w->setEnabled(l.Enabled());
  QObject::connect(w, &QListWidget::currentRowChanged, context_.get(), [&l](int row) {
    if (row != l.ListIndex()) l.SetListIndex(row);
  });
  // a double click also activates the line: one handler for both
  QObject::connect(w, &QListWidget::itemActivated, context_.get(), [&l] {
    if (l.OnDblClick) l.OnDblClick();
  });
}

}  // namespace r6183::gui
