// SPDX-License-Identifier: MIT

#include "views/levels/input_level_dialog.h"

#include <QApplication>
#include <QLabel>
#include <QScrollBar>
#include <QSlider>
#include <QTest>

#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"
#include "tools/gallery/shown_console.h"
#include "views/tally/tally_dialog.h"

namespace gallery {
namespace {

QDateTime Today() { return QDateTime(QDate::currentDate(), QTime(12, 3, 44)); }

void DrawSliders() {
  ShownConsole console;
  const char* const labels[] = {"CAM 1", "PROD MIC", "WÜRZBGÄ", "REPLAY 1", "REPLAY 2"};
  for (int i = 0; i < 5; ++i) console.SetField(i + 1, "InLabel", labels[i]);
  for (int k = 0; k < 64; ++k) {
    console.model.InputGains[static_cast<std::size_t>(k)] =
        static_cast<std::int16_t>(k % 5 == 0 ? 100 : 127 - 2 * k);
  }
  views::InputLevelDialog dialog(console.Services(), QDateTime(), console.window.get());
  dialog.open();
  // Without being active it has no focus to show.
  if (!QTest::qWaitFor([&dialog] { return QApplication::activeWindow() == &dialog; })) {
    qFatal("the levels do not become active");
  }
  Save(dialog, QStringLiteral("levels-unreported"));
  dialog.ShowReported(Today());
  Save(dialog, QStringLiteral("levels"));
  auto* const slider = dialog.findChild<QSlider*>(QStringLiteral("Slider1_4"));
  slider->setFocus(Qt::TabFocusReason);
  QTest::keyPress(slider, Qt::Key_Up);
  Save(dialog, QStringLiteral("levels-focus"));
  dialog.FitInto(944);
  Save(dialog, QStringLiteral("levels-narrow"));
  dialog.findChild<QScrollBar*>(QStringLiteral("VScroll1"))->setValue(2);
  Save(dialog, QStringLiteral("levels-last"));
  dialog.resize(dialog.width(), 2000);
  QTest::mouseDClick(dialog.findChild<QLabel*>(QStringLiteral("lblLevel_37")), Qt::LeftButton);
  Save(dialog, QStringLiteral("levels-all-bands"));
  QFont large = dialog.font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  dialog.setFont(large);
  Save(dialog, QStringLiteral("levels-large"));
}

void DrawTally() {
  model::SystemModel model;
  views::TallyDialog dialog(model, QDateTime());
  dialog.open();
  Save(dialog, QStringLiteral("tally-none"));
  for (std::size_t k = 0; k < model.QdvTally.size(); ++k) model.QdvTally[k] = k % 3 != 1 ? 1 : 0;
  dialog.UpdateTally(Today());
  Save(dialog, QStringLiteral("tally"));
  dialog.UpdateTally(QDateTime(QDate(2026, 3, 1), QTime(12, 3, 44)));
  Save(dialog, QStringLiteral("tally-old"));
}

}  // namespace

void DrawLevels() {
  DrawSliders();
  DrawTally();
}

}  // namespace gallery
