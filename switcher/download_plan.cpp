// SPDX-License-Identifier: MIT

#include "switcher/download_plan.h"

#include <utility>

namespace switcher {

namespace {

constexpr int kPauses = 4;
constexpr char kButtonProgramming[] = "Button Programming Sta ";

}  // namespace

std::vector<DownloadStage> PlanDownload(const model::SystemModel& model,
                                        const TableSenders& tables) {
  std::vector<DownloadStage> stages;
  const auto add = [&](std::string name, const TablePart& part, bool pauses = false) {
    stages.push_back(
        {.name = std::move(name), .table = tables.Make(part), .part = part, .pauses = pauses});
  };
  if (model.DownloadMode == 0) {
    add("Optos", {.table = Table::Optos});
    add("Output Alphas", {.table = Table::OutputLabels});
    add("Input Alphas", {.table = Table::InputLabels});
    add("Inhibits", {.table = Table::Inhibits});
    add("Relays", {.table = Table::Relays});
    for (int i = 0; i < kPauses; ++i) stages.push_back({.name = "Pause", .pauses = true});
  }
  for (int station = 1; station <= model.StationCount; ++station) {
    add(kButtonProgramming + std::to_string(station), {.table = Table::Buttons, .station = station},
        true);
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
