// SPDX-License-Identifier: MIT

#include "tools/stage/stage.h"

#include <QMenuBar>
#include <QSettings>
#include <QTest>

#include <algorithm>
#include <stdexcept>

#include "db/keep_position.h"
#include "db/schema.h"
#include "model/padded.h"

namespace stage {
namespace {

constexpr int kDefaultRecords = 128;

// A failure of the preparations ends the program.
void Check(const jet::Status& status) {
  if (!status.ok()) throw std::runtime_error(status.Description());
}

}  // namespace

Stage::Stage(int channels) {
  settings = std::make_unique<config::WindowSettings>(QString());
  QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Orvo"),
            QStringLiteral("Orvo Intercom Control"))
      .clear();
  model.StationCount = db::kFlags;
  model.LabelCount = kDefaultRecords;
  model.ApplyFixedValues();
  model.ChannelCount = static_cast<std::int16_t>(channels);
  model.AllocateMap();
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

Stage::~Stage() = default;

void Stage::CreateStations(int channels) {
  Check(jet::Database::CreateInMemory(&database));
  if (!db::CreateTables(*database).ok()) throw std::runtime_error("no tables");
  Check(database->OpenTable(db::kStationsTable, &stations));
  Check(stations->SetIndex(db::kStationNumIndex));
  for (int channel = kDefaultRecords + 1; channel <= channels; ++channel) {
    Check(stations->AddNew());
    Check(stations->Set("StationNum", channel));
    Check(stations->Set("Label", "Sta. " + model::Padded(channel, 3)));
    Check(stations->Set("InLabel", "Inpt " + model::Padded(channel, 3)));
    Check(stations->Update());
  }
  for (int channel = 1; channel <= std::max(channels, kDefaultRecords); ++channel) {
    SetField(channel, "Inhibits", std::string(static_cast<std::size_t>(channels), '0'));
  }
  Check(stations->MoveFirst());
}

void Stage::SetField(int stationNum, std::string_view field, const jet::Value& value) {
  const db::KeepPosition keep(*stations);
  Check(stations->Seek(stationNum));
  Check(stations->Edit());
  Check(stations->Set(field, value));
  Check(stations->Update());
}

std::string Stage::Text(int stationNum, std::string_view field) {
  const db::KeepPosition keep(*stations);
  Check(stations->Seek(stationNum));
  jet::Value value;
  Check(stations->Get(field, &value));
  return value.Text();
}

int Stage::Number(int stationNum, std::string_view field) {
  const db::KeepPosition keep(*stations);
  Check(stations->Seek(stationNum));
  jet::Value value;
  Check(stations->Get(field, &value));
  return value.Int();
}

int Stage::CurrentStation() {
  jet::Value value;
  Check(stations->Get("StationNum", &value));
  return value.Int();
}

void Stage::GoToStation(int stationNum) { Check(stations->Seek(stationNum)); }

void Stage::Show(views::MainView* view) {
  subWindow = area->addSubWindow(view);
  subWindow->setAttribute(Qt::WA_DeleteOnClose);
  subWindow->show();
  area->setActiveSubWindow(subWindow);
  view->setFocus();
}

void Stage::Close() { subWindow->close(); }

}  // namespace stage
