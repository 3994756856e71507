#pragma once
// Acts on a modal window once it is up. A single-shot timer set before the window opens may
// fire before the window is shown, find nothing and never close it; this one looks again on
// every turn of the event loop until the window is there.
#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace r6183::test {

template <class Window = QWidget>
void WhenModal(std::function<void(Window&)> act) {
  auto* poll = new QTimer(qApp);
  poll->setInterval(0);
  QObject::connect(poll, &QTimer::timeout, [poll, act = std::move(act)] {
    auto* w = qobject_cast<Window*>(QApplication::activeModalWidget());
    if (!w || !w->isVisible()) return;
    poll->stop();
    poll->deleteLater();
    act(*w);
  });
  poll->start();
}

}  // namespace r6183::test
