// SPDX-License-Identifier: MIT

#ifndef VIEWS_WIDGETS_PLAIN_TIP_H_
#define VIEWS_WIDGETS_PLAIN_TIP_H_

#include <QString>
#include <QTextDocument>

namespace views {

// A text of the operator's own as a tip, which shows it as it is even when it looks like markup.
inline QString PlainTip(const QString& text) {
  return Qt::mightBeRichText(text) ? QStringLiteral("<pre>%1</pre>").arg(text.toHtmlEscaped())
                                   : text;
}

}  // namespace views

#endif  // VIEWS_WIDGETS_PLAIN_TIP_H_
