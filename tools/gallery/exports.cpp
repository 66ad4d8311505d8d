// SPDX-License-Identifier: MIT

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>

#include "app/paper/export_menu.h"
#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"
#include "tools/gallery/shown_console.h"
#include "tools/stage/fake_printers.h"
#include "views/import_file/import_window.h"
#include "views/key_sheets/key_sheets_window.h"

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

// Until the printers are known, or that there are none.
void WaitForPrinters(const views::KeySheetsWindow& window) {
  const auto& printers = *window.findChild<QComboBox*>(QStringLiteral("cmbSheetPrinter"));
  const QString looking = printers.placeholderText();
  while (printers.placeholderText() == looking) QCoreApplication::processEvents();
}

// The window in its states, and key sheets as they are hard to draw: of wide labels and many
// targets, on both papers.
void DrawKeySheets() {
  ShownConsole console;
  const char* const labels[] = {"STUDIO A", "DIRECTOR", "SOUND 1",  "SOUND 2",  "LIGHTING",
                                "VISION",   "REPLAY 1", "WWWWWWWW", "CAM CREW", "OB NORTH"};
  for (int i = 0; i < 64; ++i) {
    console.SetField(i + 1, "Label", labels[i % 10]);
    console.SetField(i + 1, "InLabel", labels[(i + 3) % 10]);
  }
  constexpr int kTypes[] = {0, 1, 2, 3, 254, 255, 77};
  for (int n = 1; n <= 32; ++n) {
    const std::string button = "B" + std::to_string(n);
    console.SetField(12, button + " Type", kTypes[n % 7]);
    console.SetField(12, button + " Prog",
                     std::string(static_cast<std::size_t>(2 * n), '1') +
                         std::string(static_cast<std::size_t>(64 - 2 * n), '0'));
  }
  console.GoToStation(12);
  stage::FakePrinters printers;
  const auto save = [](const QString& path, const QByteArray& bytes) {
    QFile file(FileFor(path));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
  };
  {
    stage::FakePrinters none;
    none.Uninstall();
    views::KeySheetsWindow window(console.Services(), save);
    window.show();
    WaitForPrinters(window);
    window.findChild<QAbstractButton*>(QStringLiteral("cmdPrintSheets"))->click();
    Save(window, QStringLiteral("key-sheets-no-printer"));
  }
  views::KeySheetsWindow window(console.Services(), save);
  window.show();
  const auto click = [&window](const char* name) {
    window.findChild<QAbstractButton*>(QLatin1String(name))->click();
  };
  Save(window, QStringLiteral("key-sheets-looking"));
  WaitForPrinters(window);
  Save(window, QStringLiteral("key-sheets-this"));
  auto& paper = *window.findChild<QComboBox*>(QStringLiteral("cmbSheetPaper"));
  for (const char* const name : {"A4", "Letter"}) {
    paper.setCurrentText(QLatin1String(name));
    click("cmdPdfSheets");
    auto& dialog = *window.findChild<QFileDialog*>();
    Q_EMIT dialog.fileSelected(QStringLiteral("key-sheet-%1.pdf").arg(QLatin1String(name)));
    delete &dialog;
    const auto& bar = *window.findChild<QProgressBar*>();
    while (bar.isVisible()) QCoreApplication::processEvents();
  }
  paper.setCurrentIndex(0);
  Save(window, QStringLiteral("key-sheets-written"));
  click("optSheetsChosen");
  Save(window, QStringLiteral("key-sheets-none"));
  window.findChild<QLineEdit*>()->setText(QStringLiteral("so"));
  click("aidTickAll");
  window.findChild<QLineEdit*>()->setFocus();
  Save(window, QStringLiteral("key-sheets-chosen"));
  click("optSheetsAll");
  window.WriteAll(QStringLiteral("key-sheets-64.pdf"));
  Save(window, QStringLiteral("key-sheets-drawing"));
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
  DrawImports(console);
  DrawKeySheets();
}

}  // namespace gallery
