// SPDX-License-Identifier: MIT

#include "views/programming/inactive_note.h"

namespace views {
namespace {

constexpr int kMargin = 4;

// A ground of its own, so the ink must be, too.
constexpr QColor kGround(0xFF, 0xD5, 0x4F);

}  // namespace

InactiveNote::InactiveNote(const QString& name, QWidget* parent)
    : QLabel(tr("Stored as inactive"), parent) {
  setObjectName(name);
  setTextFormat(Qt::PlainText);
  setContentsMargins(kMargin, 0, kMargin, 0);
  QPalette colours = palette();
  colours.setColor(QPalette::Window, kGround);
  colours.setColor(QPalette::WindowText, Qt::black);
  setPalette(colours);
  setAutoFillBackground(true);
  hide();
}

void InactiveNote::ShowFor(const QString& what) {
  setToolTip(tr("%1 has no target left, so it is stored as inactive, whatever is shown here. "
                "Choose its operation again when it has a target.")
                 .arg(what));
  setAccessibleDescription(toolTip());
  show();
}

}  // namespace views
