// SPDX-License-Identifier: MIT

#include "views/widgets/icon.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

// Resources of a static library are not registered by themselves, and the macro wants to stand
// outside of every namespace, unnamed ones too.
static void RegisterIcons() { Q_INIT_RESOURCE(icons); }

namespace views {
namespace {

QString Path(const QString& name) { return QStringLiteral(":/icons/%1.svg").arg(name); }

QByteArray Drawing(const QString& name) {
  QFile file(Path(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Draws the icon when it is shown, in the colours of that moment.  The toolkit's SVG icon plugin is
// not used: it is a package of its own, and without it icons stay blank.
class DrawingEngine : public QIconEngine {
 public:
  DrawingEngine(const QString& name, const QString& badge)
      : name_(name), badge_(badge), drawing_(Drawing(name)) {
    if (!badge.isEmpty()) badgeDrawing_ = Drawing(badge);
  }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    const qreal ratio = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, scaledPixmap(rect.size() * ratio, mode, state, ratio));
  }

  // `size` is in device pixels.
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    const bool selected = mode == QIcon::Selected;
    const QColor ink = QGuiApplication::palette().color(
        mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active,
        selected ? QPalette::HighlightedText : QPalette::ButtonText);
    const QString key = QStringLiteral("tesk-icon/%1/%2/%3/%4/%5x%6")
                            .arg(name_, badge_, ink.name(QColor::HexArgb))
                            .arg(mode)
                            .arg(size.width())
                            .arg(size.height());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap)) return pixmap;
    pixmap = QPixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    if (mode == QIcon::Disabled) painter.setOpacity(0.6);  // accents do not follow the palette
    Render(drawing_, ink, painter);
    if (!badgeDrawing_.isEmpty()) Render(badgeDrawing_, ink, painter);
    if (selected) {
      // The accents could not be seen on the highlight.
      painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
      painter.fillRect(pixmap.rect(), ink);
    }
    painter.end();
    QPixmapCache::insert(key, pixmap);
    return pixmap;
  }

  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal) override {
    return pixmap(size, mode, state);
  }

  QIconEngine* clone() const override { return new DrawingEngine(*this); }
  QString key() const override { return QStringLiteral("tesk-drawing"); }
  QString iconName() override { return name_; }
  bool isNull() override { return drawing_.isEmpty(); }

 private:
  static void Render(QByteArray drawing, const QColor& ink, QPainter& painter) {
    drawing.replace("currentColor", ink.name().toLatin1());
    QSvgRenderer renderer(drawing);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    renderer.render(&painter);
  }

  const QString name_;
  const QString badge_;
  const QByteArray drawing_;
  QByteArray badgeDrawing_;
};

}  // namespace

QIcon Icon(const QString& name, const QString& badge) {
  RegisterIcons();
  if (!QFile::exists(Path(name))) return QIcon();
  return QIcon(new DrawingEngine(name, badge));
}

QStringList IconNames() {
  RegisterIcons();
  QStringList names;
  for (const QString& file : QDir(QStringLiteral(":/icons")).entryList()) {
    names.append(file.chopped(4));
  }
  return names;
}

}  // namespace views
