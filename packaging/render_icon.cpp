// SPDX-License-Identifier: MIT
//
// render_icon DRAWING.svg SIZE PICTURE.png: draws a square picture of so many pixels.

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("Usage: render_icon DRAWING.svg SIZE PICTURE.png\n", stderr);
    return 2;
  }
  const int size = std::atoi(argv[2]);
  QSvgRenderer drawing(QFile::decodeName(argv[1]));
  QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
  if (!drawing.isValid() || picture.isNull()) {
    std::fprintf(stderr, "render_icon: cannot draw %s in %s pixels\n", argv[1], argv[2]);
    return 1;
  }
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  drawing.render(&painter);
  painter.end();
  if (!picture.save(QFile::decodeName(argv[3]))) {
    std::fprintf(stderr, "render_icon: cannot write %s\n", argv[3]);
    return 1;
  }
  return 0;
}
