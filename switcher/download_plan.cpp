// SPDX-License-Identifier: MIT

#include "switcher/download_plan.h"

#include <iterator>
#include <utility>

namespace switcher {

namespace {

constexpr int kPauses = 4;

// They are sent behind the pauses, and named together.
static_assert(std::rbegin(db::kTables)->table == Table::Buttons);

void AddPauses(std::vector<DownloadStage>* stages) {
  for (int i = 0; i < kPauses; ++i) stages->push_back({.name = "Pause", .pauses = true});
}

// The stage that sends `part`; a pause follows the buttons of each station.
DownloadStage StageOf(const TablePart& part, const TableSenders& tables) {
  Transmission table = tables.Make(part);
  return {.name = table.Name(),
          .table = std::move(table),
          .part = part,
          .pauses = part.table == Table::Buttons};
}

}  // namespace

std::vector<DownloadStage> PlanDownload(const model::SystemModel& model,
                                        const TableSenders& tables) {
  std::vector<DownloadStage> stages;
  if (model.DownloadMode == 0) {
    for (const db::TableKind& kind : db::kTables) {
      if (kind.table != Table::Buttons) stages.push_back(StageOf({.table = kind.table}, tables));
    }
    AddPauses(&stages);
  }
  for (int station = 1; station <= model.StationCount; ++station) {
    stages.push_back(StageOf({.table = Table::Buttons, .station = station}, tables));
  }
  return stages;
}

std::vector<DownloadStage> PlanSending(std::span<const TablePart> parts,
                                       const TableSenders& tables) {
  std::vector<DownloadStage> stages;
  for (const TablePart& part : parts) {
    const bool isButtons = part.table == Table::Buttons;
    const bool isFirstButtons =
        isButtons && !stages.empty() && stages.back().part.table != Table::Buttons;
    if (isFirstButtons) AddPauses(&stages);
    stages.push_back(StageOf(part, tables));
  }
  return stages;
}

int EstimateDownloadBytes(const model::SystemModel& model) {
  const int channels = model.ChannelCount;
  const int buttons =
      model.StationCount * (channels / 8 * model.ButtonCount + 2 * model.ButtonCount + 4);
  if (model.DownloadMode != 0) return buttons;
  const int inhibits = channels / 8 * channels + 1;
  const int labels = 16 * channels + 1;
  const int relays = model.RelayCount / 8 * channels + 1;
  return buttons + inhibits + labels + relays;
}

std::string NameTables(std::span<const DownloadStage> stages) {
  std::string names;
  for (std::size_t i = 0; i < stages.size(); ++i) {
    const DownloadStage& first = stages[i];
    if (!first.table) continue;
    if (!names.empty()) names += ", ";
    names += first.name;
    if (first.part.table != Table::Buttons) continue;
    // The stations' button programming comes last and in their order.
    while (i + 1 < stages.size() && stages[i + 1].part.station == stages[i].part.station + 1) ++i;
    const int last = stages[i].part.station;
    if (last != first.part.station) names += " to " + std::to_string(last);
  }
  return names;
}

}  // namespace switcher
