// r6183-mkicons ICO OUTDIR: the product's icon in the standard sizes of a desktop's icon
// theme, as OUTDIR/NxN/apps/r6183.png. The icon is drawn on a 32-pixel grid, so the larger
// sizes are whole multiples of its pixels and stay sharp; the smaller ones are smoothed.
#include <QCoreApplication>
#include <QDir>
#include <QImage>

#include <cstdio>

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: r6183-mkicons ICO OUTDIR\n");
    return 2;
  }
  const QImage icon = QImage(QString::fromLocal8Bit(argv[1])).convertToFormat(QImage::Format_ARGB32);
  if (icon.isNull()) {
    std::fprintf(stderr, "r6183-mkicons: cannot read %s\n", argv[1]);
    return 1;
  }
  for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
    QImage out;
    if (size % icon.width() == 0) {
      out = icon.scaled(size, size, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    } else {
      // sharp at the next whole multiple, then smoothed down
      const int multiple = (size / icon.width() + 1) * icon.width();
      out = icon.scaled(multiple, multiple, Qt::IgnoreAspectRatio, Qt::FastTransformation)
                .scaled(size, size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    const QString dir = QString::fromLocal8Bit(argv[2]) + QString("/%1x%1/apps").arg(size);
    if (!QDir().mkpath(dir) || !out.save(dir + "/r6183.png")) {
      std::fprintf(stderr, "r6183-mkicons: cannot write %s\n", qPrintable(dir));
      return 1;
    }
  }
  return 0;
}
