#pragma once
// Pictures of windows side by side, each under a title strip as a window manager draws it,
// saved into the test output folder.
#include <QImage>
#include <QPainter>
#include <QWidget>

#include <filesystem>
#include <string>
#include <vector>

namespace r6183::gui::test {

inline std::string SavePicture(const std::vector<QWidget*>& windows, const std::string& name) {
  const int bar = 26;
  std::vector<QImage> shots;
  int width = 8, height = 0;
  for (QWidget* w : windows) {
    shots.push_back(w->grab().toImage());
    width += shots.back().width() + 8;
    height = std::max(height, shots.back().height());
  }
  QImage picture(width, height + bar + 16, QImage::Format_RGB32);
  picture.fill(QColor(60, 60, 60));
  QPainter p(&picture);
  int x = 8;
  for (std::size_t i = 0; i < shots.size(); ++i) {
    p.fillRect(x, 8, shots[i].width(), bar, QColor(30, 70, 140));
    p.setPen(Qt::white);
    p.drawText(QRect(x + 8, 8, shots[i].width() - 16, bar), Qt::AlignVCenter | Qt::AlignLeft,
               windows[i]->windowTitle());
    p.drawImage(x, 8 + bar, shots[i]);
    x += shots[i].width() + 8;
  }
  p.end();
  std::filesystem::create_directories(R6183_TEST_OUTPUT);
  const std::string path = std::string(R6183_TEST_OUTPUT) + "/" + name;
  return picture.save(QString::fromStdString(path)) ? path : std::string();
}

}  // namespace r6183::gui::test
