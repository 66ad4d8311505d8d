// SPDX-License-Identifier: MIT

#include "views/widgets/fixed_font.h"

#include <QStringList>

namespace views {

QFont FixedFont(double points) {
  QFont font;
  font.setFamilies({QStringLiteral("Courier New"), QStringLiteral("Liberation Mono"),
                    QStringLiteral("Nimbus Mono PS"), QStringLiteral("DejaVu Sans Mono")});
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  font.setPointSizeF(points);
  return font;
}

}  // namespace views
