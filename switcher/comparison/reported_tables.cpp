// SPDX-License-Identifier: MIT

#include "switcher/comparison/reported_tables.h"

#include <algorithm>
#include <utility>

#include "stations/fold.h"
#include "switcher/comparison/carried.h"
#include "switcher/unsent/edited_parts.h"

namespace switcher {
namespace {

// What the changes come to in the messages.
std::vector<stations::Change> CarriedDifferences(std::span<const stations::Change> changes) {
  std::vector<stations::Change> differences = stations::Fold(changes);
  for (stations::Change& change : differences) {
    std::erase_if(change.fields, [](const stations::FieldChange& field) {
      return IsSameInMessage(field.field, field.before, field.after);
    });
  }
  std::erase_if(differences, [](const stations::Change& change) { return change.fields.empty(); });
  return differences;
}

}  // namespace

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
    : model_(model),
      database_(std::move(database)),
      copied_(LoadPrints(*database_, model)),
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
  witness_.changes.clear();
  decoder_.Decode(message);
  std::vector<stations::Change>& stored = stored_[part];
  stored.insert(stored.end(), witness_.changes.begin(), witness_.changes.end());
  if (std::ranges::find(accepted_, part) != accepted_.end()) return;
  // Of several refusals the last one counts.
  std::erase_if(refused_, [&](const RefusedPart& refused) { return refused.part == part; });
  if (witness_.status == DecodeStatus::Ok) {
    accepted_.push_back(part);
  } else {
    refused_.push_back({.part = part, .status = witness_.status});
  }
}

std::vector<stations::Change> ReportedTables::Differences() const {
  std::vector<stations::Change> all;
  for (const auto& [part, stored] : stored_) all.insert(all.end(), stored.begin(), stored.end());
  return CarriedDifferences(all);
}

// Who is hidden comes with the station labels and is a mark in the input labels, too.
bool ReportedTables::Differs(const TablePart& part) const {
  const auto isChanged = [&](const TablePart& message) {
    const auto stored = stored_.find(message);
    if (stored == stored_.end()) return false;
    return std::ranges::any_of(
        CarriedDifferences(stored->second), [&](const stations::Change& change) {
          return std::ranges::any_of(EditedParts(change), [&](const TablePart& edited) {
            return MessageOf(edited) == part;
          });
        });
  };
  return isChanged(part) ||
         (part.table == Table::InputLabels && isChanged({.table = Table::OutputLabels}));
}

std::optional<Digest> ReportedTables::HeldDigest(const TablePart& part) const {
  const auto copied = copied_.find(part);
  if (copied != copied_.end() && !Differs(part)) return copied->second.digest;
  std::optional<MessagePrint> reported;
  (void)LoadPrint(*database_, model_, part, &reported);  // what cannot be read has none
  return reported ? std::optional(reported->digest) : std::nullopt;
}

}  // namespace switcher
