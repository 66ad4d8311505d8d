// SPDX-License-Identifier: MIT

#include "app/run/damage_report.h"

#include <QStringList>
#include <algorithm>
#include <filesystem>
#include <vector>

#include "db/station_list.h"

namespace app {

namespace {

using Icon = model::ErrorReporter::Icon;

constexpr char kTitle[] = "Database Error";

// So many problems are told; the first ones say best what happened.
constexpr std::size_t kMostProblems = 6;

// Those of which anything is lost, rising.
std::vector<int> LostStations(const std::vector<int>& missing,
                              const std::vector<db::UnreadableStation>& unreadable) {
  std::vector<int> stations = missing;
  for (const db::UnreadableStation& each : unreadable) stations.push_back(each.station);
  std::ranges::sort(stations);
  return stations;
}

QString InWords(const std::vector<int>& stations) {
  return QString::fromStdString(db::StationList(stations));
}

}  // namespace

void DamageReport::Tell() {
  const db::Damage& damage = files_.DamageFound();
  if (damage.IsSound()) return;
  QStringList lines{tr("Database File Is Damaged"), QString()};
  for (const std::string& problem : damage.problems) {
    if (lines.size() == static_cast<qsizetype>(kMostProblems) + 2) {
      lines.append(tr("… and %1 more").arg(damage.problems.size() - kMostProblems));
      break;
    }
    lines.append(QString::fromStdString(problem));
  }
  lines.append(QString());
  if (!files_.IsOpen()) {
    lines.append(tr("It cannot be opened, and the console works without stations."));
  } else {
    const std::vector<int> lost = LostStations(damage.missing, damage.unreadable);
    if (!damage.isDbInfoReadable) lines.append(tr("The counts of the system cannot be read."));
    if (!lost.empty())
      lines.append(tr("Stations that cannot be read whole: %1").arg(InWords(lost)));
    lines.append(
        tr("The console works with what can be read. A table of which not every station can be "
           "read is not sent, and the damaged file is kept when it is replaced."));
  }
  lines.append(tr("What survives can be salvaged into a new file; Tesk.mdb stays as it is."));
  boxes_.ShowOffering(Icon::Critical, kTitle, lines.join(u'\r').toStdString(),
                      {{.name = QStringLiteral("aidSalvage"),
                        .caption = tr("Salvage"),
                        .action = [this] { Salvage(db::Fill::Nothing); }},
                       {.name = QStringLiteral("aidSalvageDefaults"),
                        .caption = tr("Salvage, Defaults For What Is Lost"),
                        .action = [this] { Salvage(db::Fill::Defaults); }}});
}

void DamageReport::Salvage(db::Fill fill) {
  std::filesystem::path salvaged;
  db::SalvageReport report;
  if (const model::Status status = files_.SalvageMainFile(fill, &salvaged, &report); !status.ok()) {
    boxes_.Show(Icon::Critical, kTitle, model::ErrorText("Error Salvaging Database File", status));
    return;
  }
  QStringList lines{tr("Database Salvaged"), QString(),
                    tr("New file: %1").arg(QString::fromStdU16String(salvaged.u16string())),
                    tr("Stations found: %1 of %2").arg(report.stations).arg(report.labelCount)};
  if (!report.missing.empty()) lines.append(tr("Not found: %1").arg(InWords(report.missing)));
  if (!report.incomplete.empty()) {
    lines.append(tr("Not whole: %1").arg(InWords(LostStations({}, report.incomplete))));
  }
  if (!report.doubtful.empty()) {
    lines.append(tr("Doubtful: %1").arg(InWords(LostStations({}, report.doubtful))));
  }
  if (!report.leftOut.empty()) lines.append(tr("Left out: %1").arg(InWords(report.leftOut)));
  if (!report.hasDbInfo) lines.append(tr("The counts of the system were not found."));
  if (report.hasDbInfo && !report.isCountSound) {
    lines.append(tr("The count of stations was wrong and is put right."));
  }
  if (!report.IsWhole()) {
    lines.append(fill == db::Fill::Defaults ? tr("What was not found is as in a new database.")
                                            : tr("What was not found is left out."));
  }
  lines.append({QString(), tr("To work on it, close the console, put the new file in the place of "
                              "Tesk.mdb and start again.")});
  boxes_.Show(Icon::Exclamation, "Orvo Intercom Control", lines.join(u'\r').toStdString());
}

}  // namespace app
