// SPDX-License-Identifier: MIT
//
// Draws the crosspoint map in many states into PNG files, for looking at.
//
//   xmap_gallery FOLDER [light|dark|contrast [POINTS]]

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QStatusBar>
#include <QTest>
#include <QToolTip>

#include "tests/views/gallery.h"
#include "tests/views/xmap/xmap_console.h"
#include "views/widgets/icon.h"
#include "views/xmap/xmap_legend.h"
#include "views/xmap/xmap_table.h"

namespace {

using test::Save;
using test::SaveWithPopup;

// A map as it looks on a busy afternoon.
void Fill(test::XmapConsole& console) {
  const int count = console.model.ChannelCount;
  for (int o = 1; o <= count; ++o) {
    std::string inhibits(static_cast<std::size_t>(count), '0');
    inhibits[static_cast<std::size_t>(o - 1)] = '1';
    if (o % 9 == 4) inhibits[static_cast<std::size_t>((o * 5) % count)] = '1';
    console.SetField(o, "Inhibits", inhibits);
    for (int i = 1; i <= count; ++i) {
      if (i != o && (o * 7 + i * 13) % 19 == 0) console.model.CrosspointMap.At(o, i) = 1;
    }
    console.model.ChannelStatus[o] = o % 4 == 0 ? 1 : 0;
  }
  console.SetField(2, "Label", "STUDIO A");
  console.SetField(3, "Label", "PROD 1");
  console.SetField(5, "InLabel", "CAM 1");
  console.SetField(6, "InLabel", "W\xC3\x9CRZBG\xC3\x84");
}

void DrawMaps() {
  for (const int channels : {8, 64, 256}) {
    test::XmapConsole console(channels);
    Fill(console);
    views::XmapView& view = console.Open();
    auto* const legend = new views::XmapLegend;
    console.window->statusBar()->addPermanentWidget(legend);
    QObject::connect(&view, &views::XmapView::ReadoutChanged, console.window->statusBar(),
                     [&](const QString& text) { console.window->statusBar()->showMessage(text); });
    console.SelectCell(5, 8);
    const QString size = QString::number(channels);
    Save(*console.window, size + QStringLiteral("-default"));
    if (channels == 8) continue;

    console.subWindow->resize(1000, 760);
    QTest::mouseMove(static_cast<views::XmapTable&>(console.Grid()).viewport(),
                     console.CellCentre(8, 12));
    Save(*console.window, size + QStringLiteral("-wide"));
    if (channels == 256) {
      console.SelectCell(250, 251);
      Save(*console.window, size + QStringLiteral("-scrolled"));
      continue;
    }
    console.ClickTool("ID_Sum");
    Save(*console.subWindow, QStringLiteral("pending"));
    view.UpdateXmap(model::kAll, 0);
    console.unsent.NoteEdited({.table = switcher::Table::Inhibits, .station = 1});
    QTest::keyClicks(&console.Grid(), QStringLiteral("00"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("0"));
    Save(*console.subWindow, QStringLiteral("find"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    Save(*console.subWindow, QStringLiteral("find-step"));
    view.ShowGoTo();
    Save(*console.subWindow, QStringLiteral("go-to-empty"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5 90"));
    Save(*console.subWindow, QStringLiteral("go-to"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QTest::keyClick(&console.Grid(), Qt::Key_F10, Qt::ShiftModifier);
    if (QWidget* const menu = QApplication::activePopupWidget()) {
      SaveWithPopup(*console.window, *menu, QStringLiteral("menu"));
      menu->close();
    }
    view.SetZoom(75);
    Save(*console.subWindow, QStringLiteral("zoom75"));
    view.SetZoom(150);
    Save(*console.subWindow, QStringLiteral("zoom150"));
    view.SetZoom(200);
    Save(*console.subWindow, QStringLiteral("zoom200"));
    view.SetZoom(100);
    view.SetCrosshair(false);
    Save(*console.subWindow, QStringLiteral("no-crosshair"));
    view.SetCrosshair(true);
    console.subWindow->resize(430, 380);
    Save(*console.subWindow, QStringLiteral("narrow"));
    console.subWindow->showMaximized();
    Save(*console.window, QStringLiteral("maximised"));
  }
  test::XmapConsole none(0);
  none.Open();
  Save(*none.window, QStringLiteral("0"));
}

void DrawTip() {
  QToolTip::showText(QPoint(10, 10), views::XmapLegend::Tip(QToolTip::palette()));
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->inherits("QTipLabel")) Save(*window, QStringLiteral("legend-tip"));
  }
  QToolTip::hideText();
}

void DrawIcons() {
  constexpr int kColumns = 6;
  const QStringList names = views::IconNames();
  QWidget sheet;
  sheet.resize(150 * kColumns, 44 * ((static_cast<int>(names.size()) + kColumns - 1) / kColumns));
  QPixmap picture = sheet.grab();
  QPainter painter(&picture);
  painter.setPen(sheet.palette().color(QPalette::WindowText));
  for (int i = 0; i < names.size(); ++i) {
    const QPoint at(150 * (i % kColumns) + 6, 44 * (i / kColumns) + 6);
    const QIcon icon = views::Icon(names[i]);
    icon.paint(&painter, QRect(at, QSize(16, 16)));
    icon.paint(&painter, QRect(at + QPoint(20, 0), QSize(22, 22)));
    icon.paint(&painter, QRect(at + QPoint(48, 0), QSize(16, 16)), Qt::AlignCenter,
               QIcon::Disabled);
    painter.drawText(at + QPoint(0, 34), names[i]);
  }
  views::Icon(QStringLiteral("send-inhibits"), QStringLiteral("unsent-badge"))
      .paint(&painter, QRect(picture.deviceIndependentSize().width() - 40,
                             picture.deviceIndependentSize().height() - 40, 32, 32));
  painter.end();
  Save(picture, QStringLiteral("icons"));
}

void Draw() {
  DrawIcons();
  DrawTip();
  DrawMaps();
}

}  // namespace

int main(int argc, char** argv) { test::RunGallery(argc, argv, Draw); }
