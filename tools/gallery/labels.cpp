// SPDX-License-Identifier: MIT

#include <QTableView>

#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"
#include "tools/gallery/shown_console.h"
#include "views/labels/alphas_view.h"

namespace gallery {
namespace {

const QString kGrid = QStringLiteral("jgAlphas");
enum Column { kStation, kLabel, kInput, kHidden, kSystemInput, kSystemOutput, kNotes };

void Fill(ShownConsole& console) {
  const char* const labels[] = {"STUDIO A", "PROD 1", "DIRECTOR", "MÜLLER", "MIC", "CAM 1"};
  for (int i = 0; i < 6; ++i) console.SetField(i + 1, "Label", labels[i]);
  console.SetField(12, "Label", "MIC");
  console.SetField(14, "Label", "PROD 1");
  console.SetField(9, "Hidden", 1);
  console.SetField(8, "Notes",
                   "A long note about the second floor, its doors and who has the keys");
}

}  // namespace

void DrawLabels() {
  ShownConsole console;
  Fill(console);
  console.Show(new views::AlphasView(console.Services()));
  auto& grid = console.Find<QTableView>(kGrid);
  Save(*console.subWindow, QStringLiteral("labels-default"));
  console.GoToCell(kGrid, 4, kLabel);
  console.Type("MIC 5");
  Save(*console.subWindow, QStringLiteral("labels-editing"));
  console.Press(Qt::Key_Tab);
  console.Press(Qt::Key_Escape);
  Save(*console.subWindow, QStringLiteral("labels-unstored"));
  console.Press(Qt::Key_Escape);
  console.GoToCell(kGrid, 2, kLabel);
  for (int i = 0; i < 4; ++i) console.Press(Qt::Key_Down, Qt::ShiftModifier);
  for (int i = 0; i < 2; ++i) console.Press(Qt::Key_Right, Qt::ShiftModifier);
  Save(*console.subWindow, QStringLiteral("labels-block"));
  console.GoToCell(kGrid, 7, kHidden);
  console.Press(Qt::Key_F2);
  SaveWithPopup(*console.window, QStringLiteral("labels-hidden"));
  console.Press(Qt::Key_Escape);
  console.GoToCell(kGrid, 1, kLabel);
  grid.sortByColumn(kLabel, Qt::DescendingOrder);
  Save(*console.subWindow, QStringLiteral("labels-sorted"));
  console.Press(Qt::Key_F, Qt::ControlModifier);
  console.Type("mic");
  Save(*console.subWindow, QStringLiteral("labels-find"));
  console.Press(Qt::Key_Return);
  Save(*console.subWindow, QStringLiteral("labels-find-step"));
  console.Press(Qt::Key_Escape);
  console.Press(Qt::Key_F10, Qt::ShiftModifier);
  SaveWithPopup(*console.window, QStringLiteral("labels-menu"));
  grid.sortByColumn(kStation, Qt::AscendingOrder);
  console.subWindow->resize(950, 600);
  console.GoToCell(kGrid, 70, kNotes);
  console.Press(Qt::Key_F2);
  Save(*console.subWindow, QStringLiteral("labels-wide"));
  console.Press(Qt::Key_Escape);
  console.subWindow->resize(300, 260);
  Save(*console.subWindow, QStringLiteral("labels-narrow"));

  ShownConsole none;
  none.databaseIsOpen = false;
  none.Show(new views::AlphasView(none.Services()));
  Save(*none.subWindow, QStringLiteral("labels-none"));
}

}  // namespace gallery
