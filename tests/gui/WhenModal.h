#pragma once
// Acts on a modal window once it is up. A single-shot timer set before the window opens may
// fire before the window is shown, find nothing and never close it; this one looks again on
// every turn of the event loop until the window is up and active (or thirty seconds have
// gone, a limit only a broken window reaches), runs the script, and closes the window if the
// script left it open, so a failing script never leaves a test waiting in a modal loop.
// Queue it before the key or click that opens the window. The flag tells when it has run.
#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace r6183::test {

template <class Window = QWidget>
std::shared_ptr<bool> WhenModal(std::function<void(Window&)> act) {
  auto done = std::make_shared<bool>(false);
  auto* poll = new QTimer(qApp);
  auto started = std::make_shared<QElapsedTimer>();
  started->start();
  poll->setInterval(0);
  QObject::connect(poll, &QTimer::timeout, [poll, started, done, act = std::move(act)] {
    auto* w = qobject_cast<Window*>(QApplication::activeModalWidget());
    if (!w || !w->isVisible()) {
      if (started->elapsed() < 30000) return;
      poll->stop();
      poll->deleteLater();
      *done = true;
      ADD_FAILURE() << "no modal " << Window::staticMetaObject.className();
      return;
    }
    poll->stop();
    poll->deleteLater();
    QPointer<Window> window(w);
    EXPECT_TRUE(QTest::qWaitForWindowActive(w));
    QCoreApplication::processEvents();
    act(*w);
    if (window && window->isVisible()) window->close();
    *done = true;
  });
  poll->start();
  return done;
}

}  // namespace r6183::test
