// SPDX-License-Identifier: MIT

#include <QMenu>

#include "app/shell/export_menu.h"
#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"
#include "tools/gallery/shown_console.h"
#include "views/import_file/import_window.h"

namespace gallery {

namespace {

void DrawImports(ShownConsole& console) {
  const struct {
    const char* name;
    const char* file;
  } kFiles[] = {
      {"import",
       "Station,Station Label,Hidden,Station Notes\n1,CAM 1,No,By the lift\n2,CAM 2,Yes,\n"
       "9,VISION,No,\n"},
      {"import-programming",
       "Station,Button,Operation,Targets\n1,1,GROUP,\"Studio A, #7\"\n"
       "1,2,NULL,\n2,9,LISTEN,Inpt 012\n"},
      {"import-faults",
       "Station,Station Label,Hidden\n3,VERY LONG,No\n4,X,Perhaps\n999,Y,No\n5,Z\n"},
      {"import-nothing", "Station,Hidden\n3,No\n"},
  };
  for (const auto& [name, file] : kFiles) {
    views::ImportWindow window(console.Services(), QStringLiteral("labels.csv"), file);
    window.show();
    Save(window, QLatin1String(name));
  }
}

}  // namespace

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
  DrawImports(console);
}

}  // namespace gallery
