// SPDX-License-Identifier: MIT

#include "tests/views/view_console.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMenuBar>
#include <QSettings>
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

ViewConsole::ViewConsole(int channels) {
  settings = std::make_unique<config::WindowSettings>(QString());
  QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
            QStringLiteral("Orvo Intercom Control"))
      .clear();
  model.StationCount = db::kFlags;
  model.LabelCount = kDefaultRecords;
  model.ApplyFixedValues();
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

ViewConsole::~ViewConsole() = default;

void ViewConsole::CreateStations(int channels) {
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

void ViewConsole::SetField(int stationNum, std::string_view field, const jet::Value& value) {
  const db::KeepPosition keep(*stations);
  Check(stations->Seek(stationNum));
  Check(stations->Edit());
  Check(stations->Set(field, value));
  Check(stations->Update());
}

std::string ViewConsole::Text(int stationNum, std::string_view field) {
  const db::KeepPosition keep(*stations);
  Check(stations->Seek(stationNum));
  jet::Value value;
  Check(stations->Get(field, &value));
  return value.Text();
}

int ViewConsole::Number(int stationNum, std::string_view field) {
  const db::KeepPosition keep(*stations);
  Check(stations->Seek(stationNum));
  jet::Value value;
  Check(stations->Get(field, &value));
  return value.Int();
}

int ViewConsole::CurrentStation() {
  jet::Value value;
  Check(stations->Get("StationNum", &value));
  return value.Int();
}

void ViewConsole::GoToStation(int stationNum) { Check(stations->Seek(stationNum)); }

views::Services ViewConsole::Services() {
  return {.model = model,
          .stations = [this] { return databaseIsOpen ? stations.get() : nullptr; },
          .changes = changes,
          .commands = commands,
          .tables = tables,
          .unsent = unsent,
          .poll = tables,
          .settings = *settings,
          .reporter = reporter};
}

void ViewConsole::Show(views::MainView* view) {
  subWindow = area->addSubWindow(view);
  subWindow->setAttribute(Qt::WA_DeleteOnClose);
  subWindow->show();
  area->setActiveSubWindow(subWindow);
  view->setFocus();
}

void ViewConsole::Close() { subWindow->close(); }

void ViewConsole::ClickTool(const char* id) {
  auto* const bar = subWindow->findChild<QToolBar*>();
  auto* const action = subWindow->findChild<QAction*>(QString::fromLatin1(id));
  ASSERT_NE(action, nullptr) << id;
  QWidget* const button = bar->widgetForAction(action);
  ASSERT_NE(button, nullptr) << id;
  ASSERT_TRUE(button->isVisible()) << id << " is behind the overflow button";
  QTest::mouseClick(button, Qt::LeftButton);
}

}  // namespace test
