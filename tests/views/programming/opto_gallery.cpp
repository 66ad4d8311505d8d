// SPDX-License-Identifier: MIT
//
// Draws the page of the optos in many states into PNG files, for looking at.
//
//   opto_gallery FOLDER [light|dark|contrast [POINTS]]

#include <QAbstractItemView>
#include <QTest>

#include "tests/views/gallery.h"
#include "tests/views/programming/opto_console.h"

namespace {

using test::Save;

void Draw() {
  test::OptoConsole console;
  console.SetField(12, "Label", "STUDIO A");
  console.SetField(13, "Label", "PROD & 2");
  console.SetField(14, "Label", "W\xC3\x9CRZBG\xC3\x84");
  console.SetField(12, "InLabel", "CAM 1");
  console.SetField(3, "OptoType", 3);
  console.SetField(4, "OptoType", 77);
  console.SetField(5, "OptoType", 255);
  console.SetField(5, "OptoStations", std::string(64, '1'));
  console.Open();
  console.host->resize(593, 330);
  Save(*console.host, QStringLiteral("talk"));
  console.Channels().setFocus();
  for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Right}) {
    QTest::keyClick(QApplication::focusWidget(), key);
  }
  Save(*console.host, QStringLiteral("focus-box"));
  console.Load(2);
  console.Option(1).setFocus(Qt::TabFocusReason);
  Save(*console.host, QStringLiteral("listen"));
  console.Load(3);
  Save(*console.host, QStringLiteral("external"));
  console.Load(4);
  Save(*console.host, QStringLiteral("outside-the-table"));
  console.Load(5);
  Save(*console.host, QStringLiteral("group-of-all"));
  console.Load(6);
  Save(*console.host, QStringLiteral("inactive"));
  console.host->resize(900, 500);
  console.Load(1);
  Save(*console.host, QStringLiteral("large"));
  console.Channels().showPopup();
  Save(*console.Channels().view()->window(), QStringLiteral("channels"));
}

}  // namespace

int main(int argc, char** argv) { test::RunGallery(argc, argv, Draw); }
