// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_CONSOLE_STYLE_H_
#define VIEWS_WIDGETS_CONSOLE_STYLE_H_

#include <QProxyStyle>

class QCheckBox;

namespace views {

// The look of the console, over another style.
//
// Child windows: their title bar, tool bar and frame fit into the 52 pixels that the crosspoint
// grid leaves for them, and their tools are narrower, so that all tools of the grid fit into its
// first width.
//
// Sliders: a click beside the handle moves it by a page, and no button makes it jump to the
// pointer: a gain must not leap.
//
// Buttons of dialogs bear words alone, also those whose words are the toolkit's own: a desktop that
// gives these pictures would set them apart from the console's.
//
// Colours: Fusion shows the focus by a tint and a box by a shade, which cannot be seen in dark
// themes; over Fusion, both get a line.  On a dark window so do fields, lists, buttons, the handles
// of scroll bars and the selected tab, and the lines of a grid are lighter than its ground.  The
// picture of the lit menu item has the colour of its text.  A placeholder that would be dark on
// dark can be read, and so can the titles of child windows.  Tips have a light ground in dark
// themes, too: every other band of a grid has their colour, and those between are always light.
class ConsoleStyle : public QProxyStyle {
  Q_OBJECT

 public:
  // Over the application's own style, or over the named one ("Fusion").
  ConsoleStyle() = default;
  explicit ConsoleStyle(const QString& baseStyle) : QProxyStyle(baseStyle) {}

  // The caption of this check box stands close to the box: where many have to fit beside each
  // other.
  static void SetCaptionClose(QCheckBox& box);

  using QProxyStyle::polish;
  void polish(QPalette& palette) override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
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
