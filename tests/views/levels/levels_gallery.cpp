// SPDX-License-Identifier: MIT
//
// Draws the input levels and the tally into PNG files, for looking at.
//
//   levels_gallery FOLDER [light|dark|contrast [POINTS]]

#include <QApplication>

#include "tests/views/gallery.h"
#include "tests/views/levels/levels_console.h"
#include "views/tally/tally_dialog.h"

namespace {

using test::Save;

void DrawLevels() {
  test::LevelsConsole console;
  console.SetField(1, "InLabel", "CAM 1");
  console.SetField(2, "InLabel", "PROD MIC");
  console.SetField(3, "InLabel", "W\xC3\x9CRZBG\xC3\x84");
  console.SetField(4, "InLabel", "REPLAY 1");
  console.SetField(5, "InLabel", "REPLAY 2");
  for (int k = 0; k < 64; ++k) console.SetGain(k, k % 5 == 0 ? 100 : 127 - 2 * k);
  Save(console.Open(), QStringLiteral("levels-unreported"));
  console.dialog->ShowReported(QDateTime(QDate::currentDate(), QTime(12, 3, 44)));
  Save(*console.dialog, QStringLiteral("levels"));
  console.Slider(4).setFocus(Qt::TabFocusReason);
  QTest::keyPress(&console.Slider(4), Qt::Key_Up);
  Save(*console.dialog, QStringLiteral("levels-focus"));
  console.dialog->FitInto(944);
  Save(*console.dialog, QStringLiteral("levels-narrow"));
  console.Scroll().setValue(2);
  Save(*console.dialog, QStringLiteral("levels-last"));
  QFont large = console.dialog->font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  console.dialog->setFont(large);
  Save(*console.dialog, QStringLiteral("levels-large"));
}

void DrawTally() {
  model::SystemModel model;
  views::TallyDialog dark(model, QDateTime());
  dark.open();
  Save(dark, QStringLiteral("tally-none"));
  for (std::size_t k = 0; k < model.QdvTally.size(); ++k) model.QdvTally[k] = k % 3 != 1 ? 1 : 0;
  dark.UpdateTally(QDateTime(QDate::currentDate(), QTime(12, 3, 44)));
  Save(dark, QStringLiteral("tally"));
  dark.UpdateTally(QDateTime(QDate(2026, 3, 1), QTime(12, 3, 44)));
  Save(dark, QStringLiteral("tally-old"));
}

void Draw() {
  DrawLevels();
  DrawTally();
}

}  // namespace

int main(int argc, char** argv) { test::RunGallery(argc, argv, Draw); }
