// SPDX-License-Identifier: MIT

#include "tests/app/manual_text.h"

#include <QRegularExpression>
#include <QTextBrowser>
#include <QUrl>

#include "app/shell/help_window.h"

namespace test {

QString PageText(const QString& page) {
  const app::HelpWindow window;
  auto* const pages = window.findChild<QTextBrowser*>(QStringLiteral("aidHelpPages"));
  pages->setSource(QUrl(QStringLiteral("qrc:/help/") + page));
  return pages->toPlainText().simplified();
}

QString ManualText() {
  QString text;
  for (const QString& page : app::ManualPages()) text += PageText(page) + u'\n';
  return text;
}

bool Says(const QString& text, const QString& ofTheProgram) {
  static const QRegularExpression place(QStringLiteral("%[0-9]"));
  static const QRegularExpression mnemonic(QStringLiteral("&(?=\\w)"));
  const QString wanted = QString(ofTheProgram).remove(mnemonic).simplified();
  QString pattern;
  if (!wanted.isEmpty() && wanted.front().isLetterOrNumber()) pattern += QStringLiteral("(?<!\\w)");
  qsizetype begin = 0;
  for (auto each = place.globalMatch(wanted); each.hasNext();) {
    const QRegularExpressionMatch match = each.next();
    pattern += QRegularExpression::escape(wanted.mid(begin, match.capturedStart() - begin));
    pattern += QStringLiteral("\\S.{0,60}?");
    begin = match.capturedEnd();
  }
  pattern += QRegularExpression::escape(wanted.mid(begin));
  if (!wanted.isEmpty() && wanted.back().isLetterOrNumber() && begin < wanted.size()) {
    pattern += QStringLiteral("(?!\\w)");
  }
  const QRegularExpression expression(pattern, QRegularExpression::UseUnicodePropertiesOption);
  return expression.match(text).hasMatch();
}

}  // namespace test
