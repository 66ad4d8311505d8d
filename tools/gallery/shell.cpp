// SPDX-License-Identifier: MIT

#include <QAction>
#include <QMainWindow>
#include <QMdiArea>
#include <QVBoxLayout>

#include "app/network/open_gateway.h"
#include "app/shell/hint_strip.h"
#include "app/shell/status_bar.h"
#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"
#include "views/xmap/xmap_legend.h"

namespace gallery {
namespace {

using app::Hint;
using app::OpenGateway;

// What stands at the lower edge of the main window, below an area that is empty.
class Shell {
 public:
  Shell() {
    auto* const centre = new QWidget(&window_);
    auto* const column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(new QMdiArea(centre), 1);
    column->addWidget(hints_ = new app::HintStrip(centre));
    window_.setCentralWidget(centre);
    window_.setStatusBar(bar_ = new app::StatusBar(&window_));
    bar_->SetLegend(new views::XmapLegend);
    bar_->WantLegend(true);
    bar_->SetLinkText(QStringLiteral("Connected - COM 1  (57600, 8, N, 1)"));
    bar_->SetConnected(true);
    window_.show();
  }

  void DrawStatusBar() {
    bar_->SetMapState(QStringLiteral("Map 12:03:44"));
    bar_->SetReadout(QStringLiteral("Out 05  OB VAN 1  <  In 12  SOUND 2: Priority crosspoint"),
                     QStringLiteral("OB VAN 1 hears SOUND 2, DIRECTOR; by priority: SOUND 2"));
    Draw("status-bar");
    bar_->SetPanels({QStringLiteral("1: 192.0.2.7"), QStringLiteral("2: 192.0.2.8")});
    bar_->SetControllers({QStringLiteral("1: 192.0.2.20")});
    Draw("status-bar-controllers");
    bar_->SetUnsent(QStringLiteral("Unsent since 21 Nov: inhibits, buttons"));
    bar_->SetConsoleLocked(true);
    bar_->SetDemo(true);
    Draw("status-bar-all");
    bar_->ShowNote(QStringLiteral("Sent: inhibits, 64 outputs"));
    Draw("status-bar-note");
    bar_->SetConnected(false);
    bar_->SetLinkText(QStringLiteral("Not Connected - COM 1  (57600, 8, N, 1)"));
    bar_->SetClosedPort(1);
    Draw("status-bar-not-connected");
  }

  void DrawHints() {
    const auto draw = [this](Hint hint, const QString& text, const char* name) {
      hints_->Give(hint, text);
      Draw(name);
      hints_->Withdraw(hint);
    };
    draw(
        Hint::OpenTakes,
        OpenGateway::tr("Controllers on other computers may take crosspoints (port %1).").arg(9000),
        "hint-open-takes");
    draw(Hint::OpenGatewayClosed,
         OpenGateway::tr(
             "The open gateway admits nobody: OPEN GATEWAY in Orvotesk.ini is not understood (%1).")
             .arg(QStringLiteral("Allow=192.0.2")),
         "hint-gateway-closed");
    draw(Hint::OpenGatewayClosed,
         OpenGateway::tr("The open gateway cannot listen on port %1: %2. It is tried again.")
             .arg(QStringLiteral("9000"), QStringLiteral("The bound address is already in use")),
         "hint-gateway-port");
    QAction restore(QStringLiteral("Restore"));
    QAction show(QStringLiteral("Show"));
    QAction discard(QStringLiteral("Discard"));
    hints_->Give(Hint::UnsavedRun,
                 QStringLiteral("The run of 21 Nov 18:04 ended without saving 12 changes."),
                 {&restore, &show, &discard});
    Draw("hint-unsaved-run");
    hints_->Withdraw(Hint::UnsavedRun);
  }

 private:
  // As narrow as it comes up first, and as wide as screens are.
  void Draw(const char* name) {
    for (const int width : {433, 800, 1280, 1920}) {
      window_.resize(width, 120);
      Save(window_, QStringLiteral("%1-%2").arg(QLatin1String(name)).arg(width));
    }
  }

  QMainWindow window_;
  app::HintStrip* hints_;
  app::StatusBar* bar_;
};

}  // namespace

void DrawShell() {
  Shell shell;
  shell.DrawHints();
  shell.DrawStatusBar();
}

}  // namespace gallery
