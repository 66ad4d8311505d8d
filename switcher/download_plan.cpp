// SPDX-License-Identifier: MIT

#include "switcher/download_plan.h"

#include <utility>

namespace switcher {

namespace {

constexpr int kPauses = 4;

}  // namespace

std::vector<DownloadStage> PlanDownload(const model::SystemModel& model,
                                        const TableSenders& tables) {
  std::vector<DownloadStage> stages;
  const auto add = [&](const TablePart& part, bool pauses) {
    Transmission table = tables.Make(part);
    stages.push_back(
        {.name = table.Name(), .table = std::move(table), .part = part, .pauses = pauses});
  };
  if (model.DownloadMode == 0) {
    for (const Table table : db::kTables) {
      if (table != Table::Buttons) add({.table = table}, false);
    }
    for (int i = 0; i < kPauses; ++i) stages.push_back({.name = "Pause", .pauses = true});
  }
  for (int station = 1; station <= model.StationCount; ++station) {
    add({.table = Table::Buttons, .station = station}, true);
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
  for (const DownloadStage& stage : stages) {
    if (!stage.table) continue;
    if (!names.empty()) names += ", ";
    names += stage.name;
    if (stage.part.table != Table::Buttons) continue;
    // The stations' button programming comes last and in their order.
    const int last = stages.back().part.station;
    if (last != stage.part.station) names += " to " + std::to_string(last);
    break;
  }
  return names;
}

}  // namespace switcher
