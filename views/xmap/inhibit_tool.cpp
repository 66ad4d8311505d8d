// SPDX-License-Identifier: MIT

#include "views/xmap/inhibit_tool.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/flag_string.h"
#include "stations/batch.h"
#include "stations/inhibits.h"
#include "views/widgets/question.h"
#include "views/xmap/xmap_words.h"

namespace views {
namespace {

using rules::CellBlock;
using rules::InhibitDecision;
using rules::InhibitPlan;

constexpr std::string_view kReadFailure = "Error Reading Crosspoint Inhibits";
constexpr std::string_view kStoreFailure = "Error Storing Crosspoint Inhibit";
constexpr std::string_view kCrosspointPresent = "Inhibit Not Possible With Existing Crosspoint";

}  // namespace

InhibitTool::InhibitTool(const Services& services, rules::XmapGrid& grid, XmapModel& cells,
                         QWidget& view)
    : QObject(&view), services_(services), grid_(grid), cells_(cells), view_(view) {}

void InhibitTool::Toggle(const Crosspoint& current, const CellBlock& block) {
  if (block.Cells() > 1) {
    AskForBlock(current, block);
  } else {
    ToggleOne(current);
  }
}

void InhibitTool::ToggleOne(const Crosspoint& cell) {
  std::optional<InhibitDecision> decision;
  std::string_view failureLine = kReadFailure;
  const model::Status status =
      WithStations(services_, [&](jet::RecordSet& stations) -> model::Status {
        std::optional<std::string> flags;
        model::Status read = stations::FindInhibits(stations, cell.output, &flags);
        if (!read.ok() || !flags) return read;
        decision = grid_.DecideInhibit(*flags, cell.output + 1, cell.input + 1);
        if (decision->kind != InhibitDecision::Kind::Store) return {};
        failureLine = kStoreFailure;
        return stations::StoreInhibits(stations, decision->flags, services_.Operator());
      });
  if (!status.ok()) {
    ShowFailure(services_, failureLine, status);
  } else if (decision && decision->kind == InhibitDecision::Kind::CrosspointPresent) {
    ShowRefusal(services_, kCrosspointPresent);
  } else if (decision) {
    // Drawn when it is stored, so that the grid never shows an inhibit that is not there.
    grid_.SetMark(cell.output, cell.input, decision->mark);
    cells_.OutputsChanged(rules::ChannelSet().set(static_cast<std::size_t>(cell.output)));
  }
}

model::Status InhibitTool::ReadFlag(jet::RecordSet& stations, const Crosspoint& cell,
                                    bool* isInhibited) {
  std::optional<std::string> flags;
  model::Status read = stations::FindInhibits(stations, cell.output, &flags);
  *isInhibited = flags && model::FlagIsSet(model::PlainFlags(*flags), cell.input);
  return read;
}

model::Status InhibitTool::Plan(jet::RecordSet& stations, const CellBlock& block, bool inhibit,
                                InhibitPlan* plan) {
  std::vector<std::optional<std::string>> inhibits;
  for (int output = block.firstOutput; output <= block.lastOutput; ++output) {
    model::Status read = stations::FindInhibits(stations, output, &inhibits.emplace_back());
    if (!read.ok()) return read;
  }
  *plan = rules::PlanInhibits(grid_, block, inhibit, inhibits);
  return {};
}

void InhibitTool::AskForBlock(const Crosspoint& current, const CellBlock& block) {
  if (RefusedByLock(services_)) return;
  bool isInhibited = false;
  InhibitPlan plan;
  const model::Status status =
      WithStations(services_, [&](jet::RecordSet& stations) -> model::Status {
        model::Status read = ReadFlag(stations, current, &isInhibited);
        return read.ok() ? Plan(stations, block, !isInhibited, &plan) : read;
      });
  if (!status.ok()) return ShowFailure(services_, kReadFailure, status);
  const bool inhibit = !isInhibited;
  if (plan.changes > 0) {
    Ask(*view_.window(), *this,
        {.name = QStringLiteral("aidInhibitQuestion"),
         .text = InhibitQuestion(plan, inhibit),
         .answers = {
             {.name = inhibit ? QStringLiteral("aidInhibitAll") : QStringLiteral("aidRemoveAll"),
              .caption = inhibit ? tr("&Inhibit") : tr("&Remove"),
              .run = [this, block, inhibit] { StoreBlock(block, inhibit); }}}});
  } else if (plan.leftOut > 0) {
    ShowRefusal(services_, kCrosspointPresent);
  }
}

// What was asked about may have changed meanwhile: what is stored follows what is there now.
void InhibitTool::StoreBlock(const CellBlock& block, bool inhibit) {
  InhibitPlan plan;
  std::string_view failureLine = kReadFailure;
  const model::Status status =
      WithStations(services_, [&](jet::RecordSet& stations) -> model::Status {
        model::Status read = Plan(stations, block, inhibit, &plan);
        if (!read.ok()) return read;
        failureLine = kStoreFailure;
        stations::Batch batch(stations, services_.changes);
        for (const InhibitPlan::Row& row : plan.rows) {
          std::optional<std::string> flags;
          model::Status stored = stations::FindInhibits(stations, row.output, &flags);
          if (stored.ok()) {
            stored = stations::StoreInhibits(stations, row.flags, services_.Operator());
          }
          if (!stored.ok()) return stored;
        }
        return batch.Commit();
      });
  if (!status.ok()) return ShowFailure(services_, failureLine, status);
  rules::ChannelSet changed;
  for (const InhibitPlan::Row& row : plan.rows) {
    for (const int input : row.inputs) {
      if (inhibit) {
        grid_.SetMark(row.output, input, rules::Mark::Inhibit);
      } else if (grid_.MarkAt(row.output + 1, input + 1) == rules::Mark::Inhibit) {
        grid_.SetMark(row.output, input, rules::Mark::None);
      }
    }
    changed.set(static_cast<std::size_t>(row.output));
  }
  cells_.OutputsChanged(changed);
  Q_EMIT NoteRequested(InhibitedWords(plan, inhibit));
}

}  // namespace views
