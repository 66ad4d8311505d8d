// SPDX-License-Identifier: MIT

#include "views/widgets/link_warning.h"

#include "views/widgets/link_colours.h"

namespace views {
namespace {

constexpr int kLinkWarningMargin = 4;

}  // namespace

LinkWarning::LinkWarning(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setMargin(kLinkWarningMargin);
  QPalette colours;
  colours.setColor(QPalette::Window, kLinkDownGround);
  colours.setColor(QPalette::WindowText, kLinkDownInk);
  setPalette(colours);
  setAutoFillBackground(true);
}

}  // namespace views
