// SPDX-License-Identifier: MIT

#include "switcher/comparison/reported_tables.h"

#include <algorithm>
#include <utility>

#include "stations/fold.h"
#include "switcher/comparison/carried.h"

namespace switcher {

void ReportedTables::Witness::MessageRefused(std::string_view /*description*/,
                                             DecodeStatus refusal) {
  status = refusal;
}

void ReportedTables::Witness::Changed(std::span<const stations::Change> stored) {
  changes.insert(changes.end(), stored.begin(), stored.end());
}

// What it reports is why it refused a message.
void ReportedTables::Witness::Show(Icon /*icon*/, std::string_view /*title*/,
                                   std::string_view /*text*/) {}

ReportedTables::ReportedTables(std::unique_ptr<jet::Database> database, model::SystemModel& model)
    : database_(std::move(database)),
      decoder_({.model = model,
                .database = [this] { return database_.get(); },
                .reporter = witness_,
                .changes = changes_,
                .observers = {witness_}}) {}

model::Status ReportedTables::Copy(const jet::Database& database, model::SystemModel& model,
                                   std::unique_ptr<ReportedTables>* tables) {
  std::unique_ptr<jet::Database> copy;
  if (jet::Status status = jet::Database::CopyInMemory(database, &copy); !status.ok()) {
    return status;
  }
  tables->reset(new ReportedTables(std::move(copy), model));
  return {};
}

// Labels of another selector than the inputs' are the stations'.
TablePart ReportedTables::PartOf(std::span<const std::uint8_t> message) {
  return switcher::PartOf(message).value_or(TablePart{.table = Table::OutputLabels});
}

void ReportedTables::Take(std::span<const std::uint8_t> message) {
  const TablePart part = PartOf(message);
  witness_.status = DecodeStatus::Ok;
  decoder_.Decode(message);
  const bool isKnown = std::ranges::find(accepted_, part) != accepted_.end();
  if (witness_.status != DecodeStatus::Ok) {
    if (!isKnown) refused_.push_back({.part = part, .status = witness_.status});
    return;
  }
  std::erase_if(refused_, [&](const RefusedPart& refused) { return refused.part == part; });
  if (!isKnown) accepted_.push_back(part);
}

std::vector<stations::Change> ReportedTables::Differences() const {
  std::vector<stations::Change> differences = stations::Fold(witness_.changes);
  for (stations::Change& change : differences) {
    std::erase_if(change.fields, [](const stations::FieldChange& field) {
      return IsSameInMessage(field.field, field.before, field.after);
    });
  }
  std::erase_if(differences, [](const stations::Change& change) { return change.fields.empty(); });
  return differences;
}

}  // namespace switcher
