// SPDX-License-Identifier: MIT

#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>

#include "app/shell/help_window.h"
#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"

namespace gallery {

// As wide as the window opens and as high as the page.
void DrawHelp() {
  for (const QString& page : app::ManualPages()) {
    app::HelpWindow window;
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    auto* const pages = window.findChild<QTextBrowser*>(QStringLiteral("aidHelpPages"));
    pages->setSource(QUrl(QStringLiteral("qrc:/help/") + page));
    const int missing =
        static_cast<int>(pages->document()->size().height()) - pages->viewport()->height();
    window.resize(window.width(), window.height() + missing);
    Save(window, QStringLiteral("help-") + page.section(u'.', 0, 0));
  }
}

}  // namespace gallery
