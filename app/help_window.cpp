// SPDX-License-Identifier: MIT

#include "app/help_window.h"

#include <QProcess>
#include <QScreen>
#include <QShortcut>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

#include "views/on_screen.h"

// The pages stand in a library, whose resources have to be asked for.  The macro declares the
// function that it calls where it stands, hence outside any namespace.
static void LoadPages() { Q_INIT_RESOURCE(help); }

namespace app {
namespace {

constexpr QSize kSize(720, 640);

}  // namespace

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
  LoadPages();
  setObjectName(QStringLiteral("frmHelp"));
  setWindowTitle(tr("Orvo Intercom Control Help"));
  setAttribute(Qt::WA_DeleteOnClose);
  resize(views::SizeOnScreen(kSize, screen()->availableSize()));

  auto* const pages = new QTextBrowser(this);
  pages->setObjectName(QStringLiteral("aidHelpPages"));
  pages->setOpenExternalLinks(true);
  pages->document()->setDocumentMargin(16);
  pages->setSource(QUrl(QStringLiteral("qrc:/help/index.html")));
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(pages);

  auto* const escape = new QShortcut(Qt::Key_Escape, this);
  connect(escape, &QShortcut::activated, this, &QWidget::close);
}

bool StartHelpViewer() {
  return QProcess::startDetached(QStringLiteral("WINHLP32.EXE"), {QStringLiteral("Teskctl.hlp")});
}

}  // namespace app
