// SPDX-License-Identifier: MIT

#include "tests/views/gallery.h"

#include <QApplication>
#include <QDir>
#include <QPainter>

#include "tests/views/gallery_themes.h"
#include "tests/views/gui_support.h"

namespace test {
namespace {

QString pictureFolder;
QString themeName;

}  // namespace

void RunGallery(int argc, char** argv, void (*draw)()) {
  const GuiApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 2) qFatal("usage: %s FOLDER [light|dark|contrast [POINTS]]", argv[0]);
  pictureFolder = arguments[1];
  themeName = arguments.value(2, QStringLiteral("light"));
  ApplyTheme(themeName);
  if (const double points = arguments.value(3).toDouble(); points > 0) {
    QFont font = QApplication::font();
    font.setPointSizeF(points);
    QApplication::setFont(font);
  }
  QDir().mkpath(pictureFolder);
  draw();
}

void Save(const QPixmap& picture, const QString& name) {
  const QString file = QStringLiteral("%1/%2-%3.png").arg(pictureFolder, themeName, name);
  if (!picture.save(file)) qFatal("cannot write %s", qPrintable(file));
}

void Save(QWidget& widget, const QString& name) {
  QCoreApplication::sendPostedEvents();
  Save(widget.grab(), name);
}

void SaveWithPopup(QWidget& window, QWidget& popup, const QString& name) {
  QPixmap picture = window.grab();
  QPainter painter(&picture);
  painter.drawPixmap(window.mapFromGlobal(popup.mapToGlobal(QPoint())), popup.grab());
  painter.end();
  Save(picture, name);
}

}  // namespace test
