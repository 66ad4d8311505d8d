// SPDX-License-Identifier: MIT

#include "stations/channel_texts.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "db/station_fields.h"
#include "model/flag_string.h"
#include "stations/open_stations.h"
#include "stations/record.h"

namespace stations {

namespace {

const std::string kNoText;

const std::string& TextAt(const std::vector<std::optional<std::string>>& texts, std::size_t index) {
  return index < texts.size() && texts[index].has_value() ? *texts[index] : kNoText;
}

// The field of the stations 1 to `count`, each by its number, however many there are before it.  A
// station that is missing among the records has none; behind the last one they are empty: a small
// system is no damaged one.
model::Status ReadByNumber(jet::RecordSet& stations, std::string_view field, int count,
                           std::vector<std::optional<std::string>>* texts) {
  texts->resize(static_cast<std::size_t>(count));
  int last = 0;
  model::Status status;
  while (status.ok() && stations.HasRecord()) {
    Record record(stations);
    const int number = record.Number(db::kStationNumField);
    if (number >= 1 && number <= count) {
      (*texts)[static_cast<std::size_t>(number - 1)] = record.Text(field);
      last = number;
    }
    status = record.Outcome();
    if (status.ok()) status = stations.MoveNext();
  }
  if (status.ok()) std::fill(texts->begin() + last, texts->end(), std::string());
  return status;
}

}  // namespace

const char* ChannelTexts::FieldOf(Kind kind) {
  switch (kind) {
    case Kind::Label:
      return db::kLabelField;
    case Kind::InLabel:
      return db::kInLabelField;
    case Kind::Inhibits:
      return db::kInhibitsField;
  }
  return "";
}

// Who asks is no operator, so there is no report: he gets one when he uses them himself.
const ChannelTexts::Texts& ChannelTexts::Read(Kind kind) {
  Texts& texts = Of(kind);
  if (texts.isRead) return texts;
  texts.ofChannels.clear();
  jet::Database* const database = services_.database();
  if (database == nullptr) return texts;
  texts.isRead = true;
  std::unique_ptr<jet::RecordSet> records;
  if (!OpenStations(*database, &records).ok()) return texts;
  texts.isWhole =
      ReadByNumber(*records, FieldOf(kind), services_.model.ChannelCount, &texts.ofChannels).ok();
  if (kind != Kind::Inhibits) return texts;
  for (std::optional<std::string>& flags : texts.ofChannels) {
    if (flags.has_value()) flags = model::PlainFlags(*flags);
  }
  return texts;
}

const std::string& ChannelTexts::Text(Kind kind, int channel) {
  if (channel < 1) return kNoText;
  return TextAt(Read(kind).ofChannels, static_cast<std::size_t>(channel - 1));
}

bool ChannelTexts::ShowsInhibit(int output, int input) {
  return model::FlagIsSet(Text(Kind::Inhibits, output), input);
}

std::optional<bool> ChannelTexts::IsInhibited(int output, int input) {
  Texts& inhibits = Of(Kind::Inhibits);
  if (!inhibits.isWhole) inhibits.isRead = false;
  Read(Kind::Inhibits);
  if (!inhibits.isWhole || output < 1 ||
      static_cast<std::size_t>(output) > inhibits.ofChannels.size() ||
      !inhibits.ofChannels[static_cast<std::size_t>(output - 1)]) {
    return std::nullopt;
  }
  return ShowsInhibit(output, input);
}

bool ChannelTexts::Forget(std::span<const Change> changes) {
  bool isTouched = false;
  for (const Kind kind : kKinds) {
    if (!Touches(changes, FieldOf(kind))) continue;
    Forget(kind);
    isTouched = true;
  }
  return isTouched;
}

void ChannelTexts::Forget(Kind kind) {
  Texts& texts = Of(kind);
  if (!texts.isRead) return;
  texts.isRead = false;
  texts.isWhole = false;
  if (!texts.before) texts.before = std::move(texts.ofChannels);
}

std::vector<ChannelTexts::Difference> ChannelTexts::TakeDifferences(Kind kind) {
  if (!Of(kind).before || !Read(kind).isWhole) return {};
  const std::optional<List> before = std::exchange(Of(kind).before, std::nullopt);
  const List& now = Of(kind).ofChannels;
  std::vector<Difference> differences;
  for (std::size_t i = 0; i < std::max(before->size(), now.size()); ++i) {
    if (TextAt(*before, i) == TextAt(now, i)) continue;
    differences.push_back({static_cast<int>(i) + 1, TextAt(*before, i), TextAt(now, i)});
  }
  return differences;
}

}  // namespace stations
