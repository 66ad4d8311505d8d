// SPDX-License-Identifier: MIT

#include "tools/gallery/pictures.h"

#include <QApplication>
#include <QDir>
#include <QPainter>

namespace gallery {
namespace {

QString fileStart;

}  // namespace

void SetFolder(const QString& folder, const QString& theme) {
  QDir().mkpath(folder);
  fileStart = folder + u'/' + theme + u'-';
}

QString FileFor(const QString& name) { return fileStart + name; }

void Save(const QPixmap& picture, const QString& name) {
  const QString file = FileFor(name + QStringLiteral(".png"));
  if (!picture.save(file)) qFatal("cannot write %s", qPrintable(file));
}

void Save(QWidget& widget, const QString& name) {
  QCoreApplication::sendPostedEvents();
  Save(widget.grab(), name);
}

void SaveWithPopup(QWidget& window, const QString& name) {
  QWidget* const popup = QApplication::activePopupWidget();
  if (popup == nullptr) qFatal("nothing is open for %s", qPrintable(name));
  QPixmap picture = window.grab();
  QPainter painter(&picture);
  painter.drawPixmap(window.mapFromGlobal(popup->mapToGlobal(QPoint())), popup->grab());
  painter.end();
  popup->close();
  Save(picture, name);
}

}  // namespace gallery
