// SPDX-License-Identifier: MIT
//
// Draws a window in many states into files, for somebody to look at; it needs no display.
//
//   gallery WINDOW FOLDER [light|dark|contrast [POINTS]]
//
// WINDOW is one of the names below, or "all".  The folder is made.  The default theme is light, the
// default font size the desktop's.

#include <QDir>

#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"
#include "tools/gallery/themes.h"
#include "tools/stage/application.h"

namespace {

struct Drawing {
  const char* window;
  void (*draw)();
};

constexpr Drawing kDrawings[] = {
    {"backups", gallery::DrawBackups},
    {"exports", gallery::DrawExports},
    {"help", gallery::DrawHelp},
    {"labels", gallery::DrawLabels},
    {"levels", gallery::DrawLevels},
    {"lists", gallery::DrawLists},
    {"map", gallery::DrawMap},
    {"presets", gallery::DrawPresets},
    {"programming", gallery::DrawProgramming},
    {"settings", gallery::DrawSettings},
    {"shell", gallery::DrawShell},
    {"transfer", gallery::DrawTransfer},
};

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const stage::Application application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  const QString window = arguments.value(1);
  const QString folder = arguments.value(2);
  const QString theme = arguments.value(3, QStringLiteral("light"));
  gallery::ApplyTheme(theme);
  if (const double points = arguments.value(4).toDouble(); points > 0) {
    QFont font = QApplication::font();
    font.setPointSizeF(points);
    QApplication::setFont(font);
  }
  QStringList windows;
  for (const Drawing& each : kDrawings) {
    windows.append(QLatin1String(each.window));
    if (folder.isEmpty() || (window != windows.last() && window != QLatin1String("all"))) continue;
    gallery::SetFolder(folder, theme);
    each.draw();
  }
  if (!folder.isEmpty() && (windows.contains(window) || window == QLatin1String("all"))) return 0;
  qCritical("usage: gallery %s|all FOLDER [light|dark|contrast [POINTS]]",
            qPrintable(windows.join(u'|')));
  return 2;
}
