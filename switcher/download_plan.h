// SPDX-License-Identifier: MIT

#ifndef SWITCHER_DOWNLOAD_PLAN_H_
#define SWITCHER_DOWNLOAD_PLAN_H_

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/system_model.h"
#include "switcher/table.h"
#include "switcher/table_senders.h"

namespace switcher {

// One stage of a download.
struct DownloadStage {
  // What the status line names it.
  std::string name;

  // The table that the stage sends; none for a pause.
  std::optional<Transmission> table = std::nullopt;

  // What of which table that is.
  TablePart part = {};

  // A pause follows.
  bool pauses = false;
};

// The stages of a download in sending order: every table, or with a DownloadMode other than 0
// the stations' button programming only.  Nothing is sent until they are run.  `tables` must
// outlive the plan.
std::vector<DownloadStage> PlanDownload(const model::SystemModel& model,
                                        const TableSenders& tables);

// The stages that send these messages, which rise, in the order of a download and with its pauses.
std::vector<DownloadStage> PlanSending(std::span<const TablePart> parts,
                                       const TableSenders& tables);

// The bytes of a download, as the window announces them.  An estimate: the tables that are sent
// have other lengths.
int EstimateDownloadBytes(const model::SystemModel& model);

// The tables of these stages in words, "Relays, Button Programming Sta 3 to 64"; empty when
// they send nothing.
std::string NameTables(std::span<const DownloadStage> stages);

}  // namespace switcher

#endif  // SWITCHER_DOWNLOAD_PLAN_H_
