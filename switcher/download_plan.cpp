// SPDX-License-Identifier: MIT

#include "switcher/download_plan.h"

#include <utility>

#include "switcher/wire/messages/label_order.h"

namespace switcher {

namespace {

constexpr int kPauses = 4;
constexpr char kButtonProgramming[] = "Button Programming Sta ";

}  // namespace

std::vector<DownloadStage> PlanDownload(const model::SystemModel& model, TableSenders& tables) {
  std::vector<DownloadStage> stages;
  const auto add = [&stages](const char* name, Table content, Transmission table) {
    stages.push_back({.name = name, .table = std::move(table), .content = content});
  };
  if (model.DownloadMode == 0) {
    add("Optos", Table::Optos, tables.Optos());
    add("Output Alphas", Table::OutputLabels, tables.Labels(kOutputLabels));
    add("Input Alphas", Table::InputLabels, tables.Labels(kInputLabels));
    add("Inhibits", Table::Inhibits, tables.Inhibits(model::kAll));
    add("Relays", Table::Relays, tables.Relays(model::kAll));
    for (int i = 0; i < kPauses; ++i) stages.push_back({.name = "Pause", .pauses = true});
  }
  for (int station = 1; station <= model.StationCount; ++station) {
    stages.push_back({.name = kButtonProgramming + std::to_string(station),
                      .table = tables.Buttons(station),
                      .content = Table::Buttons,
                      .station = station,
                      .pauses = true});
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
    if (stage.content != Table::Buttons) continue;
    // The stations' button programming comes last and in their order.
    const int last = stages.back().station;
    if (last != stage.station) names += " to " + std::to_string(last);
    break;
  }
  return names;
}

}  // namespace switcher
