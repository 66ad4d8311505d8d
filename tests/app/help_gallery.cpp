// SPDX-License-Identifier: MIT
//
// Draws the help window with each page of the manual, light and dark, into the folder given, for
// looking at: as wide as it opens and as high as the page.

#include <QApplication>
#include <QDir>
#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>

#include "app/help_window.h"
#include "tests/views/gallery_themes.h"
#include "tests/views/gui_support.h"

int main(int argc, char** argv) {
  const test::GuiApplication application(argc, argv);
  const QDir folder(QString::fromLocal8Bit(argc > 1 ? argv[1] : "."));
  bool written = true;
  for (const char* const theme : {"light", "dark"}) {
    test::ApplyTheme(QLatin1String(theme));
    for (const QString& page : app::ManualPages()) {
      app::HelpWindow window;
      window.setAttribute(Qt::WA_DeleteOnClose, false);
      window.show();
      auto* const pages = window.findChild<QTextBrowser*>(QStringLiteral("aidHelpPages"));
      pages->setSource(QUrl(QStringLiteral("qrc:/help/") + page));
      const int missing =
          static_cast<int>(pages->document()->size().height()) - pages->viewport()->height();
      window.resize(window.width(), window.height() + missing);
      const QString name = page.section(u'.', 0, 0) + u'-' + QLatin1String(theme);
      written = window.grab().save(folder.filePath(name + QStringLiteral(".png"))) && written;
    }
  }
  return written ? 0 : 1;
}
