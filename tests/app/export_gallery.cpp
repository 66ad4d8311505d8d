// SPDX-License-Identifier: MIT
//
// Writes every export of a console with a few crosspoints into the folder given, for looking at.

#include <QApplication>
#include <QDir>
#include <QMenu>

#include "app/shell/export_menu.h"
#include "tests/views/gui_support.h"
#include "tests/views/view_console.h"

int main(int argc, char** argv) {
  const test::GuiApplication application(argc, argv);
  const QDir folder(QString::fromLocal8Bit(argc > 1 ? argv[1] : "."));
  test::ViewConsole console(64);
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
  struct File {
    app::Export what;
    const char* name;
  };
  bool written = true;
  for (const File& file :
       {File{app::Export::MapCsv, "map.csv"}, File{app::Export::MapPdf, "map.pdf"},
        File{app::Export::LabelsCsv, "labels.csv"}, File{app::Export::LabelsPdf, "labels.pdf"},
        File{app::Export::ProgrammingCsv, "programming.csv"},
        File{app::Export::KeySheetsPdf, "key-sheets.pdf"}}) {
    written = exports.Write(file.what, folder.filePath(QLatin1String(file.name))) && written;
  }
  return written ? 0 : 1;
}
