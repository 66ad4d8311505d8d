// SPDX-License-Identifier: MIT

#include "app/log/channel_labels.h"

#include <QCoreApplication>
#include <memory>

#include "db/station_fields.h"
#include "stations/open_stations.h"
#include "stations/texts.h"

namespace app {

QString ChannelLabels::Output(int output) {
  Read();
  const QString label = Label(outputs_, output);
  if (!label.isEmpty()) return label;
  return QCoreApplication::translate("ChannelLabels", "Out %1").arg(output);
}

QString ChannelLabels::Input(int input) {
  Read();
  const QString label = Label(inputs_, input);
  if (!label.isEmpty()) return label;
  return QCoreApplication::translate("ChannelLabels", "In %1").arg(input);
}

void ChannelLabels::Changed(std::span<const stations::Change> changes) {
  if (Touches(changes, db::kLabelField) || Touches(changes, db::kInLabelField)) read_ = false;
}

// Words are not worth a report: what cannot be read has its number.
void ChannelLabels::Read() {
  if (read_) return;
  outputs_.clear();
  inputs_.clear();
  jet::Database* const database = services_.database();
  if (database == nullptr) return;
  read_ = true;
  std::unique_ptr<jet::RecordSet> stations;
  if (!stations::OpenStations(*database, &stations).ok()) return;
  const int count = services_.model.ChannelCount;
  (void)stations::ReadAvailableTexts(*stations, db::kLabelField, count, &outputs_);
  (void)stations::ReadAvailableTexts(*stations, db::kInLabelField, count, &inputs_);
}

QString ChannelLabels::Label(const Labels& labels, int channel) {
  if (channel < 1 || static_cast<std::size_t>(channel) > labels.size()) return {};
  const std::optional<std::string>& label = labels[static_cast<std::size_t>(channel - 1)];
  return label ? QString::fromStdString(*label).trimmed() : QString();
}

}  // namespace app
