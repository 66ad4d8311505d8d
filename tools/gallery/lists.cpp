// SPDX-License-Identifier: MIT

#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <filesystem>

#include "app/journal/changes_window.h"
#include "app/log/event_log.h"
#include "app/log/event_log_window.h"
#include "stations/journal/act.h"
#include "stations/journal/journal.h"
#include "stations/journal/unsaved_run.h"
#include "tools/gallery/drawings.h"
#include "tools/gallery/pictures.h"

namespace gallery {
namespace {

using stations::Change;
using stations::Origin;

// Each an act of its own, a minute after the other.
const std::vector<Change> kChanges = {
    {Origin::Operator, 17, {{"Label", "Sta. 017", "CAM 4"}}},
    {Origin::Operator, 17, {{"InLabel", "Inpt 017", "MIC ANCH"}}},
    {Origin::Operator,
     12,
     {{"B3 Type", 0, 1}, {"B3 First", 5, 7}, {"B3 Prog", "00001", "0000001"}}},
    {Origin::Operator, 12, {{"B4 Prog", "00001", "011111001"}}},
    {Origin::Undo, 12, {{"B4 Prog", "011111001", "00001"}}},
    {Origin::Switcher, 3, {{"Inhibits", "0010000000", "0010011101"}}},
    {Origin::Comparison, 21, {{"Relays", "0", "1"}}},
    {Origin::Operator, 21, {{"Notes", "", "Moved to the second floor, by the lift"}}},
};

void DrawChanges() {
  const QTemporaryDir folder;
  const std::filesystem::path path = folder.filePath(QStringLiteral("Tesk.journal")).toStdString();
  const auto draw = [](app::ChangesWindow& window, const char* name) {
    window.setAttribute(Qt::WA_DeleteOnClose, false);
    window.show();
    Save(window, QLatin1String(name));
  };
  app::ChangesWindow none(path);
  none.ShowAll({});
  draw(none, "changes-none");

  stations::Journal journal(path);
  if (!journal.Read().ok()) qFatal("no journal");
  journal.SetBeginning(stations::WriteBeginning("0"));
  for (int minute = 0; const Change& change : kChanges) {
    const stations::Act act{.title = "An act",
                            .time = QStringLiteral("2026-11-21T18:%1:12Z")
                                        .arg(minute++, 2, 10, QLatin1Char('0'))
                                        .toStdString(),
                            .origin = change.origin,
                            .changes = {change}};
    if (!journal.AddAct(stations::WriteAct(act)).ok()) qFatal("no act");
  }
  app::ChangesWindow window(path);
  window.ShowAll({});
  window.findChild<QTableView*>(QStringLiteral("lstChanges"))->selectRow(2);
  draw(window, "changes");
  auto* const filter = window.findChild<QLineEdit*>(QStringLiteral("txtFilterChg"));
  filter->setText(QStringLiteral("12"));
  draw(window, "changes-station");
  filter->setText(QStringLiteral("talk nowhere"));
  draw(window, "changes-no-hit");
}

void DrawEventLog() {
  app::EventLog log;
  for (int output = 1; output <= 30; ++output) {
    log.Add(app::EventLog::Kind::Map, QStringLiteral("CAM %1: + MIC ANCH, − VISION").arg(output));
  }
  app::EventLogWindow window(log);
  window.setAttribute(Qt::WA_DeleteOnClose, false);
  window.show();
  Save(window, QStringLiteral("event-log"));
}

}  // namespace

void DrawLists() {
  DrawChanges();
  DrawEventLog();
}

}  // namespace gallery
