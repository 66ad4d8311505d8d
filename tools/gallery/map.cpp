// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QDialog>
#include <QPainter>
#include <QStatusBar>
#include <QTableView>
#include <QTest>
#include <QToolTip>

#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"
#include "tools/gallery/shown_console.h"
#include "views/widgets/icon.h"
#include "views/xmap/xmap_legend.h"
#include "views/xmap/xmap_view.h"

namespace gallery {
namespace {

const QString kGrid = QStringLiteral("msfgXmap");

// A map as it looks on a busy afternoon.
void Fill(ShownConsole& console) {
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
  console.SetField(6, "InLabel", "WÜRZBGÄ");
}

void DrawMaps() {
  for (const int channels : {8, 64, 256}) {
    ShownConsole console(channels);
    Fill(console);
    auto& view = *new views::XmapView(console.Services());
    console.Show(&view);
    auto* const legend = new views::XmapLegend;
    console.window->statusBar()->addPermanentWidget(legend);
    QObject::connect(&view, &views::XmapView::ReadoutChanged, console.window->statusBar(),
                     [&](const QString& text) { console.window->statusBar()->showMessage(text); });
    console.GoToCell(kGrid, 3, 6);
    const QString size = QStringLiteral("map%1").arg(channels);
    Save(*console.window, size + QStringLiteral("-default"));
    if (channels == 8) continue;

    console.subWindow->resize(1000, 760);
    auto& grid = console.Find<QTableView>(kGrid);
    QTest::mouseMove(grid.viewport(), grid.visualRect(grid.model()->index(6, 10)).center());
    Save(*console.window, size + QStringLiteral("-wide"));
    if (channels == 256) {
      console.GoToCell(kGrid, 248, 249);
      Save(*console.window, size + QStringLiteral("-scrolled"));
      continue;
    }
    console.Trigger("ID_Sum");
    Save(*console.subWindow, QStringLiteral("map-pending"));
    view.UpdateXmap(model::kAll, 0);
    console.unsentMessages.Begin({{{switcher::Table::Inhibits, 1}, {}}});
    console.Type("00");
    Save(*console.subWindow, QStringLiteral("map-find"));
    console.Press(Qt::Key_Return);
    console.Press(Qt::Key_Return);
    Save(*console.subWindow, QStringLiteral("map-find-step"));
    view.ShowGoTo();
    Save(*console.subWindow, QStringLiteral("map-go-to-empty"));
    console.Type("5 90");
    Save(*console.subWindow, QStringLiteral("map-go-to"));
    console.Press(Qt::Key_Escape);
    console.Press(Qt::Key_F10, Qt::ShiftModifier);
    SaveWithPopup(*console.window, QStringLiteral("map-menu"));
    console.GoToCell(kGrid, 4, 5);
    for (int i = 0; i < 5; ++i) {
      console.Press(Qt::Key_Right, Qt::ShiftModifier);
      console.Press(Qt::Key_Down, Qt::ShiftModifier);
    }
    Save(*console.subWindow, QStringLiteral("map-several"));
    console.Trigger("ID_ToggleInhibit");
    auto& question = *console.window->findChild<QDialog*>(QStringLiteral("aidInhibitQuestion"));
    Save(question, QStringLiteral("map-inhibit-question"));
    question.reject();
    console.GoToCell(kGrid, 3, 6);
    view.SetWarning(QStringLiteral("Not connected: map of 05:55:37"));
    Save(*console.subWindow, QStringLiteral("map-not-connected"));
    view.SetWarning({});
    console.locks.LockOutput(2, model::Locks::Against::Console);
    console.locks.LockOutput(5, model::Locks::Against::ConsoleAndPanels);
    Save(*console.subWindow, QStringLiteral("map-locked"));
    view.SetZoom(75);
    Save(*console.subWindow, QStringLiteral("map-zoom75"));
    view.SetZoom(150);
    Save(*console.subWindow, QStringLiteral("map-zoom150"));
    view.SetZoom(200);
    Save(*console.subWindow, QStringLiteral("map-zoom200"));
    view.SetZoom(100);
    view.SetCrosshair(false);
    Save(*console.subWindow, QStringLiteral("map-no-crosshair"));
    view.SetCrosshair(true);
    console.subWindow->resize(430, 380);
    Save(*console.subWindow, QStringLiteral("map-narrow"));
    console.subWindow->showMaximized();
    Save(*console.window, QStringLiteral("map-maximised"));
  }
  ShownConsole none(0);
  none.Show(new views::XmapView(none.Services()));
  Save(*none.window, QStringLiteral("map0"));
}

void DrawTip() {
  QToolTip::showText(QPoint(10, 10), views::XmapLegend::Tip(QToolTip::palette()));
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->inherits("QTipLabel")) Save(*window, QStringLiteral("map-legend-tip"));
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

}  // namespace

void DrawMap() {
  DrawIcons();
  DrawTip();
  DrawMaps();
}

}  // namespace gallery
