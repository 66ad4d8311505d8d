// SPDX-License-Identifier: MIT

#include "tools/gallery/themes.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QToolTip>

namespace gallery {
namespace {

QPalette DarkPalette() {
  QPalette palette(QColor(0x35, 0x35, 0x35));
  palette.setColor(QPalette::Window, QColor(0x2D, 0x2D, 0x2D));
  palette.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
  palette.setColor(QPalette::AlternateBase, QColor(0x2D, 0x2D, 0x2D));
  palette.setColor(QPalette::Text, QColor(0xEE, 0xEE, 0xEE));
  palette.setColor(QPalette::WindowText, QColor(0xEE, 0xEE, 0xEE));
  palette.setColor(QPalette::ButtonText, QColor(0xEE, 0xEE, 0xEE));
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
  }
  palette.setColor(QPalette::Highlight, QColor(0x2A, 0x82, 0xDA));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, QColor(0x3A, 0x3A, 0x2C));
  palette.setColor(QPalette::ToolTipText, QColor(0xEE, 0xEE, 0xEE));
  return palette;
}

QPalette ContrastPalette() {
  QPalette palette(Qt::black);
  palette.setColor(QPalette::Base, Qt::black);
  palette.setColor(QPalette::Text, Qt::white);
  palette.setColor(QPalette::WindowText, Qt::white);
  palette.setColor(QPalette::ButtonText, Qt::yellow);
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor(0x3F, 0xF2, 0x3F));
  }
  palette.setColor(QPalette::Highlight, QColor(0x00, 0xFF, 0xFF));
  palette.setColor(QPalette::HighlightedText, Qt::black);
  palette.setColor(QPalette::ToolTipBase, Qt::black);
  palette.setColor(QPalette::ToolTipText, Qt::white);
  return palette;
}

}  // namespace

void ApplyTheme(const QString& theme) {
  // As the toolkit does with a desktop's palette.
  const auto apply = [](QPalette palette) {
    QApplication::style()->polish(palette);
    QApplication::setPalette(palette);
  };
  if (theme == QLatin1String("dark")) apply(DarkPalette());
  if (theme == QLatin1String("contrast")) apply(ContrastPalette());
  QToolTip::setPalette(QApplication::palette());
}

}  // namespace gallery
