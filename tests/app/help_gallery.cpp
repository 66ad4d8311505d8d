// SPDX-License-Identifier: MIT
//
// Draws the help window with each page of the manual, for looking at: as wide as it opens and as
// high as the page.

#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>

#include "app/shell/help_window.h"
#include "tests/views/gallery.h"

namespace {

void Draw() {
  for (const QString& page : app::ManualPages()) {
    app::HelpWindow window;
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    auto* const pages = window.findChild<QTextBrowser*>(QStringLiteral("aidHelpPages"));
    pages->setSource(QUrl(QStringLiteral("qrc:/help/") + page));
    const int missing =
        static_cast<int>(pages->document()->size().height()) - pages->viewport()->height();
    window.resize(window.width(), window.height() + missing);
    test::Save(window, page.section(u'.', 0, 0));
  }
}

}  // namespace

int main(int argc, char** argv) { test::RunGallery(argc, argv, Draw); }
