// SPDX-License-Identifier: MIT

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QTabWidget>

#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"
#include "tools/gallery/shown_console.h"
#include "views/programming/buttons_view.h"

namespace gallery {
namespace {

// The tabs, from 0.
enum Tab { kFirstPage = 0, kThirdPage = 2, kEdit = 4, kRelays = 5, kOptos = 6 };

// A station as it is in use: every operation, wide labels, buttons without targets; and optos of
// every kind at the stations after it.
void Fill(ShownConsole& console) {
  const char* const labels[] = {"STUDIO A", "STUDIO B", "PROD MIC", "MIC ANCH",
                                "SOUND 01", "LIGHTING", "REPLAY 1", "REPLAY 2",
                                "CAM CREW", "Régie",    "OB & VAN", "GRAPHICS"};
  for (int i = 0; i < 64; ++i) {
    console.SetField(i + 1, "Label", labels[i % 12]);
    console.SetField(i + 1, "InLabel", labels[(i + 5) % 12]);
  }
  constexpr int kTypes[] = {0, 1, 2, 3, 254, 255, 77};
  for (int n = 1; n <= 32; ++n) {
    console.SetField(1, "B" + std::to_string(n) + " Type", kTypes[n % 7]);
  }
  console.SetField(1, "B2 Prog", Flags({1, 2, 5, 9, 33, 64}));
  console.SetField(1, "Relays", Flags({3, 17, 40}));
  console.SetField(1, "OptoType", 0);
  console.SetField(1, "OptoStations", Flags({3, 5}));
  console.SetField(2, "OptoType", 1);
  console.SetField(2, "OptoStations", Flags({7}));
  console.SetField(3, "OptoType", 3);
  console.SetField(4, "OptoType", 77);
  console.SetField(5, "OptoType", 255);
  console.SetField(5, "OptoStations", std::string(64, '1'));
}

void GoToTab(ShownConsole& console, Tab tab) {
  console.Find<QTabWidget>(QStringLiteral("SSActiveTabs1")).setCurrentIndex(tab);
}

void Click(ShownConsole& console, const QString& button) {
  console.Find<QAbstractButton>(button).click();
}

void DrawOptos(ShownConsole& console) {
  GoToTab(console, kOptos);
  for (const char* const kind :
       {"talk", "listen", "external", "outside-the-table", "group-of-all", "inactive"}) {
    Save(*console.subWindow, QStringLiteral("optos-") + QLatin1String(kind));
    Click(console, QStringLiteral("cmdNext"));
  }
  Click(console, QStringLiteral("cmdFirst"));
  console.Find<QAbstractButton>(QStringLiteral("ckOptoStationSel_9")).setFocus(Qt::TabFocusReason);
  console.Press(Qt::Key_Right);
  Save(*console.subWindow, QStringLiteral("optos-focus-box"));
  console.Find<QComboBox>(QStringLiteral("cmbOptoChan")).showPopup();
  SaveWithPopup(*console.window, QStringLiteral("optos-channels"));
}

}  // namespace

void DrawProgramming() {
  ShownConsole plain;
  plain.Show(new views::ButtonsView(plain.Services()));
  Save(*plain.subWindow, QStringLiteral("buttons-default"));
  GoToTab(plain, kEdit);
  Save(*plain.subWindow, QStringLiteral("buttons-default-edit"));

  ShownConsole console;
  Fill(console);
  console.Show(new views::ButtonsView(console.Services()));
  console.Find<QAbstractButton>(QStringLiteral("cmdButton_1")).setFocus(Qt::TabFocusReason);
  Save(*console.subWindow, QStringLiteral("buttons-page1"));
  for (const auto& [action, window] :
       {std::pair{"aidCopyToStations", "frmCopyTo"}, std::pair{"aidWhereUsed", "frmWhereUsed"}}) {
    console.Find<QAction>(QLatin1String(action)).trigger();
    auto* const dialog = console.window->findChild<QDialog*>(QLatin1String(window));
    if (auto* const all = dialog->findChild<QAbstractButton*>(QStringLiteral("aidTickAll"))) {
      all->click();
    }
    Save(*dialog, QLatin1String(action).mid(3));
    dialog->close();
  }
  console.Find<QComboBox>(QStringLiteral("aidStation")).showPopup();
  SaveWithPopup(*console.window, QStringLiteral("buttons-stations"));
  GoToTab(console, kThirdPage);
  Save(*console.subWindow, QStringLiteral("buttons-page3"));
  GoToTab(console, kFirstPage);
  Click(console, QStringLiteral("cmdButton_1"));
  Save(*console.subWindow, QStringLiteral("buttons-edit"));
  for (const int target : {0, 1, 4, 8, 32, 63}) {
    Click(console, QStringLiteral("ckStationSel_%1").arg(target));
  }
  Save(*console.subWindow, QStringLiteral("buttons-edit-inactive"));
  GoToTab(console, kRelays);
  Save(*console.subWindow, QStringLiteral("relays"));
  const QSize firstSize = console.subWindow->size();
  console.subWindow->resize(900, 560);
  GoToTab(console, kOptos);
  Save(*console.subWindow, QStringLiteral("optos-wide"));
  GoToTab(console, kFirstPage);
  Save(*console.subWindow, QStringLiteral("buttons-page1-wide"));
  GoToTab(console, kEdit);
  Save(*console.subWindow, QStringLiteral("buttons-edit-wide"));
  console.subWindow->resize(433, 433);
  Save(*console.subWindow, QStringLiteral("buttons-edit-small"));
  console.subWindow->resize(firstSize);
  DrawOptos(console);
}

}  // namespace gallery
