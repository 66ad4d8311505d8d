// SPDX-License-Identifier: MIT

#include "tests/views/xmap_console.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QSettings>
#include <QTableView>
#include <QTest>
#include <QToolBar>

#include "db/keep_position.h"
#include "db/schema.h"

namespace test {
namespace {

constexpr int kDefaultRecords = 128;

// A failure of the database in a test's own preparation ends the test.
void Check(const jet::Status& status) {
  if (!status.ok()) throw std::runtime_error(status.Description());
}

std::string ThreeDigits(int number) {
  const std::string digits = std::to_string(number);
  return std::string(3 - digits.size(), '0') + digits;
}

}  // namespace

XmapConsole::XmapConsole(int channels) {
  settings = std::make_unique<config::WindowSettings>();
  QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
            QStringLiteral("Orvo Intercom Control"))
      .clear();
  model.ChannelCount = static_cast<std::int16_t>(channels);
  model.AllocateMap();
  if (!port.Open(1).ok()) throw std::runtime_error("the fake port does not open");
  CreateStations(channels);
  window = std::make_unique<QMainWindow>();
  window->resize(1300, 900);
  area = new QMdiArea;
  window->setCentralWidget(area);
  window->menuBar()->addMenu(QStringLiteral("&File"));
  window->show();
  window->activateWindow();
  if (!QTest::qWaitForWindowActive(window.get())) throw std::runtime_error("no active window");
}

XmapConsole::~XmapConsole() = default;

void XmapConsole::CreateStations(int channels) {
  Check(jet::Database::CreateInMemory(&database));
  if (!db::CreateTables(*database).ok()) throw std::runtime_error("no tables");
  Check(database->OpenTable(db::kStationsTable, &stations));
  Check(stations->SetIndex(db::kStationNumIndex));
  for (int channel = kDefaultRecords + 1; channel <= channels; ++channel) {
    Check(stations->AddNew());
    Check(stations->Set("StationNum", channel));
    Check(stations->Set("Label", "Sta. " + ThreeDigits(channel)));
    Check(stations->Set("InLabel", "Inpt " + ThreeDigits(channel)));
    Check(stations->Update());
  }
  for (int channel = 1; channel <= std::max(channels, kDefaultRecords); ++channel) {
    SetField(channel, "Inhibits", std::string(static_cast<std::size_t>(channels), '0'));
  }
  Check(stations->MoveFirst());
}

void XmapConsole::SetField(int stationNum, std::string_view field, const jet::Value& value) {
  const db::KeepPosition keep(*stations);
  Check(stations->Seek(stationNum));
  Check(stations->Edit());
  Check(stations->Set(field, value));
  Check(stations->Update());
}

std::string XmapConsole::Text(int stationNum, std::string_view field) {
  const db::KeepPosition keep(*stations);
  Check(stations->Seek(stationNum));
  jet::Value value;
  Check(stations->Get(field, &value));
  return value.Text();
}

views::XmapView& XmapConsole::Open() {
  view =
      new views::XmapView({.model = model,
                           .stations = [this] { return databaseIsOpen ? stations.get() : nullptr; },
                           .commands = commands,
                           .inhibits = *this,
                           .poll = *this,
                           .settings = *settings,
                           .reporter = reporter});
  subWindow = area->addSubWindow(view);
  subWindow->setAttribute(Qt::WA_DeleteOnClose);
  subWindow->show();
  area->setActiveSubWindow(subWindow);
  view->setFocus();
  return *view;
}

void XmapConsole::Close() { subWindow->close(); }

void XmapConsole::ClickTool(const char* id) {
  auto* const bar = view->findChild<QToolBar*>(QStringLiteral("XptmapButtons"));
  auto* const action = view->findChild<QAction*>(QString::fromLatin1(id));
  ASSERT_NE(action, nullptr) << id;
  QWidget* const button = bar->widgetForAction(action);
  ASSERT_NE(button, nullptr) << id;
  ASSERT_TRUE(button->isVisible()) << id << " is behind the overflow button";
  QTest::mouseClick(button, Qt::LeftButton);
}

void XmapConsole::PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(&Grid(), key, modifiers);
}

void XmapConsole::ClickCell(int row, int column, Qt::MouseButton button) {
  auto& table = static_cast<QTableView&>(Grid());
  QTest::mouseClick(table.viewport(), button, Qt::NoModifier, CellCentre(row, column));
}

QWidget& XmapConsole::Grid() { return *view->findChild<QWidget*>(QStringLiteral("msfgXmap")); }

QPoint XmapConsole::CellCentre(int row, int column) {
  auto& table = static_cast<QTableView&>(Grid());
  return table.visualRect(table.model()->index(row - 2, column - 2)).center();
}

int XmapConsole::Mark(int row, int column) {
  int mark = -1;
  QMetaObject::invokeMethod(&Grid(), "cellMark", Q_RETURN_ARG(int, mark), Q_ARG(int, row),
                            Q_ARG(int, column));
  return mark;
}

QString XmapConsole::CellText(int row, int column) {
  QString text;
  QMetaObject::invokeMethod(&Grid(), "cellText", Q_RETURN_ARG(QString, text), Q_ARG(int, row),
                            Q_ARG(int, column));
  return text;
}

QColor XmapConsole::Colour(int row, int column) {
  QColor colour;
  QMetaObject::invokeMethod(&Grid(), "cellColor", Q_RETURN_ARG(QColor, colour), Q_ARG(int, row),
                            Q_ARG(int, column));
  return colour;
}

void XmapConsole::SelectCell(int row, int column) {
  QMetaObject::invokeMethod(&Grid(), "selectCell", Q_ARG(int, row), Q_ARG(int, column));
}

QPoint XmapConsole::SelectedCell() {
  QPoint cell;
  QMetaObject::invokeMethod(&Grid(), "selectedCell", Q_RETURN_ARG(QPoint, cell));
  return cell;
}

std::string XmapConsole::Row(int row) {
  std::string marks;
  for (int column = 2; column <= model.ChannelCount + 1; ++column) {
    marks += ".1234"[Mark(row, column)];
  }
  return marks;
}

bool XmapConsole::SendInhibits(int output) {
  traffic.push_back("inhibits " + std::to_string(output));
  return inhibitsGoOut;
}

void XmapConsole::SetPolling(bool on) { traffic.emplace_back(on ? "poll on" : "poll off"); }

QList<QAction*> BandActions(const views::XmapView& view) {
  return view.findChild<QToolBar*>(QStringLiteral("XptmapButtons"))->actions();
}

QColor PixelOf(QWidget& widget, const QPoint& point) {
  const QImage image = widget.grab().toImage();
  return image.pixelColor((QPointF(point) * image.devicePixelRatio()).toPoint());
}

QWidget& Viewport(XmapConsole& console) {
  return *static_cast<QTableView&>(console.Grid()).viewport();
}

}  // namespace test
