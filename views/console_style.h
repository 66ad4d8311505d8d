// SPDX-License-Identifier: MIT

#ifndef VIEWS_CONSOLE_STYLE_H_
#define VIEWS_CONSOLE_STYLE_H_

#include <QProxyStyle>

namespace views {

// The look of the console: another style with thin frames around the child windows and no
// margins around their tool bars, so that title bar, tool bar and frame of a child window fit
// into the 52 pixels that the crosspoint grid leaves them, and narrower tools, so that all
// tools of the grid fit into the width that it has at first.
class ConsoleStyle : public QProxyStyle {
  Q_OBJECT

 public:
  // Over the application's own style, or over the named one ("Fusion").
  ConsoleStyle() = default;
  explicit ConsoleStyle(const QString& baseStyle) : QProxyStyle(baseStyle) {}

  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override;
};

}  // namespace views

#endif  // VIEWS_CONSOLE_STYLE_H_
