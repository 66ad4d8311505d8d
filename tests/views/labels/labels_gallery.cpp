// SPDX-License-Identifier: MIT
//
// Draws the station labels in many states into PNG files, for looking at.
//
//   labels_gallery FOLDER [light|dark|contrast [POINTS]]

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QMenu>
#include <QTest>

#include "tests/views/gallery.h"
#include "tests/views/labels/labels_console.h"

namespace {

using namespace test;  // NOLINT(google-build-using-namespace): the columns

void Draw() {
  LabelsConsole console;
  const char* const labels[] = {"STUDIO A", "PROD 1", "DIRECTOR", "MÜLLER", "MIC", "CAM 1"};
  for (int i = 0; i < 6; ++i) console.SetField(i + 1, "Label", labels[i]);
  console.SetField(12, "Label", "MIC");
  console.SetField(14, "Label", "PROD 1");
  console.SetField(9, "Hidden", 1);
  console.SetField(8, "Notes",
                   "A long note about the second floor, its doors and who has the keys");
  console.Open();
  Save(*console.subWindow, QStringLiteral("default"));
  console.Click(4, kLabel);
  console.Type("MIC 5");
  Save(*console.subWindow, QStringLiteral("editing"));
  console.Press(Qt::Key_Tab);
  console.Press(Qt::Key_Escape);
  Save(*console.subWindow, QStringLiteral("unstored"));
  console.Press(Qt::Key_Escape);
  console.Drag(2, kLabel, 6, kHidden);
  Save(*console.subWindow, QStringLiteral("block"));
  console.DoubleClick(7, kHidden);
  if (auto* const choice = qobject_cast<QComboBox*>(console.Editor())) {
    SaveWithPopup(*console.window, *choice->view()->window(), QStringLiteral("hidden"));
    choice->hidePopup();
  }
  console.Press(Qt::Key_Escape);
  console.Click(1, kLabel);
  console.ClickHeader(kLabel);
  console.ClickHeader(kLabel);
  Save(*console.subWindow, QStringLiteral("sorted"));
  console.Press(Qt::Key_F, Qt::ControlModifier);
  console.Type("mic");
  Save(*console.subWindow, QStringLiteral("find"));
  console.Press(Qt::Key_Return);
  Save(*console.subWindow, QStringLiteral("find-step"));
  console.Press(Qt::Key_Escape);
  console.Press(Qt::Key_F10, Qt::ShiftModifier);
  if (QWidget* const menu = QApplication::activePopupWidget()) {
    SaveWithPopup(*console.window, *menu, QStringLiteral("menu"));
    menu->close();
  }
  console.ClickHeader(kStation);
  console.subWindow->resize(950, 600);
  console.DoubleClick(70, kNotes);
  Save(*console.subWindow, QStringLiteral("wide"));
  console.Press(Qt::Key_Escape);
  console.subWindow->resize(300, 260);
  Save(*console.subWindow, QStringLiteral("narrow"));

  LabelsConsole none;
  none.databaseIsOpen = false;
  none.Open();
  Save(*none.subWindow, QStringLiteral("none"));
}

}  // namespace

int main(int argc, char** argv) { test::RunGallery(argc, argv, Draw); }
