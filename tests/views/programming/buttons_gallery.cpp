// SPDX-License-Identifier: MIT
//
// Draws the programming view in many states into PNG files, for looking at.
//
//   buttons_gallery FOLDER [light|dark|contrast [POINTS]]

#include <QApplication>
#include <QPushButton>
#include <QTest>

#include "tests/views/gallery.h"
#include "tests/views/programming/buttons_console.h"

namespace {

using test::Save;

// A station as it is in use: every operation, wide labels, buttons without targets.
void Fill(test::ButtonsConsole& console) {
  const char* const labels[] = {"STUDIO A", "STUDIO B",     "PROD MIC", "MIC ANCH",
                                "SOUND 01", "LIGHTING",     "REPLAY 1", "REPLAY 2",
                                "CAM CREW", "R\xC3\xA9gie", "OB VAN 3", "GRAPHICS"};
  for (int i = 0; i < 64; ++i) {
    console.SetField(i + 1, "Label", labels[i % 12]);
    console.SetField(i + 1, "InLabel", labels[(i + 5) % 12]);
  }
  constexpr int kTypes[] = {0, 1, 2, 3, 254, 255, 77};
  for (int n = 1; n <= 32; ++n) {
    console.SetField(1, "B" + std::to_string(n) + " Type", kTypes[n % 7]);
  }
  console.SetField(1, "B2 Prog", test::Flags({1, 2, 5, 9, 33, 64}));
  console.SetField(1, "Relays", test::Flags({3, 17, 40}));
}

void Draw() {
  test::ButtonsConsole plain;
  plain.Open();
  Save(*plain.subWindow, QStringLiteral("default"));
  plain.GoToTab(5);
  Save(*plain.subWindow, QStringLiteral("default-edit"));

  test::ButtonsConsole console;
  Fill(console);
  console.Open();
  console.Find<QPushButton>("cmdButton", 1).setFocus(Qt::TabFocusReason);
  Save(*console.subWindow, QStringLiteral("page1"));
  console.GoToTab(3);
  Save(*console.subWindow, QStringLiteral("page3"));
  console.GoToTab(1);
  console.Find<QPushButton>("cmdButton", 1).click();
  Save(*console.subWindow, QStringLiteral("edit"));
  for (const int target : {0, 1, 4, 8, 32, 63}) console.ClickBox("ckStationSel", target);
  Save(*console.subWindow, QStringLiteral("edit-inactive"));
  console.GoToTab(6);
  Save(*console.subWindow, QStringLiteral("relays"));
  console.GoToTab(7);
  Save(*console.subWindow, QStringLiteral("optos"));
  console.subWindow->resize(900, 560);
  console.GoToTab(1);
  Save(*console.subWindow, QStringLiteral("page1-wide"));
  console.GoToTab(5);
  Save(*console.subWindow, QStringLiteral("edit-wide"));
  console.subWindow->resize(433, 433);
  Save(*console.subWindow, QStringLiteral("edit-small"));
}

}  // namespace

int main(int argc, char** argv) { test::RunGallery(argc, argv, Draw); }
