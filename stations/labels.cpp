// SPDX-License-Identifier: MIT

#include "stations/labels.h"

#include "stations/batch.h"
#include "stations/navigation.h"
#include "stations/record.h"

namespace stations {
namespace {

jet::Status ReadRecord(const jet::RecordSet& stations, LabelRecord* record) {
  jet::Status first;
  for (std::size_t i = 0; i < kLabelColumns.size(); ++i) {
    LabelRecord::Field& field = record->fields[i];
    jet::Status read = stations.Get(kLabelColumns[i].field, &field.value);
    if (read.ok()) read = stations.OrderKey(kLabelColumns[i].field, &field.orderKey);
    field.isReadable = read.ok();
    if (!read.ok()) field.value.SetNull();
    if (first.ok()) first = read;
  }
  return first;
}

model::Status Store(jet::RecordSet& stations, const LabelEdit& change, const Author& author) {
  if (model::Status found = FindStation(stations, change.station); !found.ok()) return found;
  Record record(stations);
  for (const LabelChange& each : change.changes) record.Set(Spec(each.column).field, each.value);
  return record.Commit(author);
}

}  // namespace

std::string CellText(LabelColumn column, const jet::Value& value) {
  if (column == LabelColumn::Hidden) return HiddenText(value);
  return value.GetKind() == jet::Value::Kind::Int ? std::to_string(value.Int()) : value.Text();
}

model::Status ReadLabelRecords(jet::RecordSet& stations, std::vector<LabelRecord>* records) {
  records->clear();
  jet::Status first = stations.MoveFirst();
  jet::Status moved = first;
  while (moved.ok() && stations.HasRecord()) {
    const jet::Status read = ReadRecord(stations, &records->emplace_back());
    if (first.ok()) first = read;
    moved = stations.MoveNext();
  }
  return first.ok() ? moved : first;
}

model::Status StoreLabelRecord(jet::RecordSet& stations, const LabelEdit& change,
                               const Author& author, LabelRecord* stored) {
  model::Status status = Store(stations, change, author);
  // A field that cannot be read was reported when the grid read it.
  if (status.ok()) (void)ReadRecord(stations, stored);
  return status;
}

model::Status StoreLabelRecords(jet::RecordSet& stations, std::span<const LabelEdit> changes,
                                const Author& author, std::vector<LabelRecord>* stored) {
  stored->clear();
  Batch batch(stations, author.changes);
  for (const LabelEdit& change : changes) {
    model::Status status = Store(stations, change, author);
    if (!status.ok()) return status;
    (void)ReadRecord(stations, &stored->emplace_back());
  }
  return batch.Commit();
}

}  // namespace stations
