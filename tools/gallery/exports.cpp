// SPDX-License-Identifier: MIT

#include <QMenu>

#include "app/shell/export_menu.h"
#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"
#include "tools/gallery/shown_console.h"

namespace gallery {

void DrawExports() {
  ShownConsole console;
  for (int channel = 1; channel <= 64; ++channel) {
    console.model.CrosspointMap.At(channel, channel % 60 + 3) = 1;
    if (channel % 5 == 0) console.model.ChannelStatus[channel] = 1;
  }
  console.SetField(1, "Label", "Studio A");
  console.SetField(1, "B3 Type", 255);
  console.SetField(1, "B3 Prog", std::string(64, '1'));
  console.SetField(1, "B4 Type", 1);
  console.SetField(1, "B5 Type", 2);
  console.SetField(1, "B6 Type", 3);
  console.SetField(1, "B7 Type", 254);
  console.SetField(1, "Notes", "a \"long\" note, " + std::string(100, 'x'));
  QMenu menu;
  app::ExportMenu exports(
      {.menu = menu, .window = *console.window, .data = console.Services(), .storeEdits = [] {
         return true;
       }});
  const auto write = [&exports](app::Export what, const char* name) {
    const QString file = FileFor(QLatin1String(name));
    if (!exports.Write(what, file)) qFatal("cannot write %s", qPrintable(file));
  };
  write(app::Export::MapCsv, "map.csv");
  write(app::Export::MapPdf, "map.pdf");
  write(app::Export::LabelsCsv, "labels.csv");
  write(app::Export::LabelsPdf, "labels.pdf");
  write(app::Export::ProgrammingCsv, "programming.csv");
  write(app::Export::KeySheetsPdf, "key-sheets.pdf");
}

}  // namespace gallery
