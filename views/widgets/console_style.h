// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_CONSOLE_STYLE_H_
#define VIEWS_WIDGETS_CONSOLE_STYLE_H_

#include <QProxyStyle>

namespace views {

// The look of the console: another style with thin frames around the child windows and no
// margins around their tool bars, so that title bar, tool bar and frame of a child window fit
// into the 52 pixels that the crosspoint grid leaves them, narrower tools, so that all tools of the
// grid fit into the width that it has at first, and boxes of targets that stand close to their
// captions, so that eight of them fit into the first width of the programming view.  A click beside
// the handle of a slider moves it by a page, and no button makes it jump to the pointer: a gain
// must not leap.
//
// Fusion tells the focus by a tint and a box by a shade, which dark colours swallow: over it, both
// get a line.  The picture of the menu item that is lit is in the ink of its text, and a
// placeholder that a desktop's colours leave dark on dark is one that can be read.  The ground of
// tips is light on a dark desktop, too: it is that of every other band of the crosspoint map, and
// the bands between are light whatever the desktop.
class ConsoleStyle : public QProxyStyle {
  Q_OBJECT

 public:
  // Over the application's own style, or over the named one ("Fusion").
  ConsoleStyle() = default;
  explicit ConsoleStyle(const QString& baseStyle) : QProxyStyle(baseStyle) {}

  using QProxyStyle::polish;
  void polish(QPalette& palette) override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returned) const override;

 private:
  bool IsOverFusion() const;
};

}  // namespace views

#endif  // VIEWS_WIDGETS_CONSOLE_STYLE_H_
