// SPDX-License-Identifier: MIT
//
// Draws the programming view in many states into PNG files, for looking at.
//
//   buttons_gallery FOLDER [light|dark|contrast]

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QTest>

#include "tests/views/gallery_themes.h"
#include "tests/views/gui_support.h"
#include "tests/views/programming/buttons_console.h"

namespace {

QString folder;
QString theme;

void Save(QWidget& widget, const char* name) {
  QCoreApplication::sendPostedEvents();
  const QString file = QStringLiteral("%1/%2-%3.png").arg(folder, theme, QString::fromLatin1(name));
  if (!widget.grab().save(file)) qFatal("cannot write %s", qPrintable(file));
}

// A station as it is in use: every operation, wide labels, buttons without targets.
void Fill(test::ButtonsConsole& console) {
  const char* const labels[] = {"STUDIO A", "STUDIO B", "PROD 1", "PROD 2", "SOUND",
                                "LIGHTS",   "CAM 1",    "CAM 2",  "MMMMMM", "R\xC3\xA9gie"};
  for (int i = 0; i < 10; ++i) {
    console.SetField(i + 1, "Label", labels[i]);
    console.SetField(i + 1, "InLabel", labels[9 - i]);
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
  Save(*plain.subWindow, "default");
  plain.GoToTab(5);
  Save(*plain.subWindow, "default-edit");

  test::ButtonsConsole console;
  Fill(console);
  console.Open();
  console.Find<QPushButton>("cmdButton", 1).setFocus(Qt::TabFocusReason);
  Save(*console.subWindow, "page1");
  console.GoToTab(3);
  Save(*console.subWindow, "page3");
  console.GoToTab(1);
  console.Find<QPushButton>("cmdButton", 1).click();
  Save(*console.subWindow, "edit");
  console.GoToTab(6);
  Save(*console.subWindow, "relays");
  console.GoToTab(7);
  Save(*console.subWindow, "optos");
  console.subWindow->resize(900, 560);
  console.GoToTab(1);
  Save(*console.subWindow, "page1-wide");
  console.GoToTab(5);
  Save(*console.subWindow, "edit-wide");
  console.subWindow->resize(433, 433);
  Save(*console.subWindow, "edit-small");
}

}  // namespace

int main(int argc, char** argv) {
  const test::GuiApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 2) qFatal("usage: buttons_gallery FOLDER [light|dark|contrast]");
  folder = arguments[1];
  theme = arguments.value(2, QStringLiteral("light"));
  test::ApplyTheme(theme);
  QDir().mkpath(folder);
  Draw();
}
