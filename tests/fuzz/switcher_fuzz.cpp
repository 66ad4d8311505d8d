// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for what the switcher sends.  The first byte chooses the size of the
// system, the rest is the stream.  Whatever comes:
//
//   - every step shortens the buffer or says why it cannot;
//   - what a codec accepts is the same after it was encoded and parsed once more;
//   - a table that is announced as stored is what the console would send of it.
//
// The database has records for 16 stations.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "db/jet/page_file.h"
#include "db/schema.h"
#include "model/system_model.h"
#include "switcher/decoder.h"
#include "switcher/load_tables.h"
#include "switcher/wire/frame.h"
#include "switcher/wire/messages/button_data.h"
#include "switcher/wire/messages/crosspoint_row.h"
#include "switcher/wire/messages/flag_row.h"
#include "switcher/wire/messages/gain.h"
#include "switcher/wire/messages/gain_report.h"
#include "switcher/wire/messages/label_order.h"
#include "switcher/wire/messages/label_texts.h"
#include "switcher/wire/messages/opto_data.h"
#include "switcher/wire/messages/take.h"
#include "switcher/wire/messages/tally.h"

namespace switcher {
namespace {

using Message = std::span<const std::uint8_t>;

constexpr int kRecords = 16;

void Require(bool holds) {
  if (!holds) std::abort();
}

// The bytes of a database file with kRecords stations that have nothing but their numbers.
std::vector<std::uint8_t> MakeDatabase() {
  auto file = std::make_unique<jet::MemoryPageFile>();
  const jet::MemoryPageFile& content = *file;
  std::unique_ptr<jet::Database> database;
  Require(jet::Database::Create(std::move(file), &database).ok());
  const std::array<jet::IndexSpec, 1> indexes{
      jet::IndexSpec{.name = db::kStationNumIndex, .fields = {"StationNum"}, .primary = true}};
  Require(database->CreateTable(db::StationsSpec(), indexes).ok());
  std::unique_ptr<jet::RecordSet> stations;
  Require(database->OpenTable(db::kStationsTable, &stations).ok());
  for (int station = 1; station <= kRecords; ++station) {
    Require(stations->AddNew().ok());
    Require(stations->Set("StationNum", station).ok());
    Require(stations->Update().ok());
  }
  return content.Content();
}

// The flags of a row as the text of a field.
std::string FlagText(const std::vector<std::uint8_t>& flags) {
  std::string text;
  for (const std::uint8_t flag : flags) text += flag != 0 ? '1' : '0';
  return text;
}

class Console : public SwitcherEvents, public MessageHistory, public model::ErrorReporter {
 public:
  explicit Console(int channels) {
    model_.ChannelCount = static_cast<std::int16_t>(channels);
    model_.StationCount = model_.ChannelCount;
    model_.LabelCount = model_.ChannelCount;
    model_.ButtonCount = 4;
    model_.OptoCount = 2;
    model_.RelayCount = 16;
    model_.AllocateMap();
    model_.RetrieveActive = true;
    decoder_.SetHistory(this);
  }

  void Decode(Message message) {
    message_ = message;
    decoder_.Decode(message);
    RoundTrips(message);
  }

  // Every codec on the same bytes, also those of the other direction.
  void RoundTrips(Message message) const;

  void CrosspointRowChanged(int output, int mode) override {
    Require(output >= 1 && output <= model_.ChannelCount && mode >= 0 && mode <= 255);
  }
  void GainsChanged() override {
    for (const int gain : model_.InputGains) Require(gain >= 0 && gain <= 127);
  }
  void TallyChanged() override { Require(model_.TallySeen); }
  void LabelsChanged(int selector) override;
  void InhibitsChanged(int output) override {
    FlagRow row;
    Require(ParseInhibitRow(message_, model_.ChannelCount, &row) == DecodeStatus::Ok);
    std::optional<Bytes> sent;
    Require(LoadInhibits(*OpenDatabase(), model_, output, &sent).ok());
    Require(sent == EncodeInhibitRow(output, FlagText(row.members), model_.ChannelCount));
  }
  void RelaysChanged(int output) override {
    FlagRow row;
    Require(ParseRelayRow(message_, model_.ChannelCount, model_.RelayCount, &row) ==
            DecodeStatus::Ok);
    std::optional<Bytes> sent;
    Require(LoadRelays(*OpenDatabase(), model_, output, &sent).ok());
    Require(sent == EncodeRelayRow(output, FlagText(row.members), model_.RelayCount));
  }
  void ButtonsChanged(int station) override {
    ButtonData data;
    Require(ParseButtons(message_, &data) == DecodeStatus::Ok);
    std::optional<Bytes> sent;
    Require(LoadButtons(*OpenDatabase(), model_, station, &sent).ok());
    // Stored target flags are filled up, and what is stored is sent.
    for (auto& button : data.buttons) {
      button.targets.resize(std::max(button.targets.size(), std::size_t{64}));
    }
    Require(sent == EncodeButtonData(data));
  }
  void OptosChanged() override {
    OptoData data;
    Require(ParseOptoData(message_, model_.OptoCount, &data) == DecodeStatus::Ok);
    Bytes sent;
    Require(LoadOptos(*OpenDatabase(), model_, &sent).ok());
    Require(sent == EncodeOptoData(data));
  }

  void MessageRefused(std::string_view description, DecodeStatus status) override {
    Require(!description.empty() && status != DecodeStatus::Ok);
  }

  void UpdateStatus(std::string_view description, int byteCount, DecodeStatus status) override {
    Require(!description.empty() && byteCount >= 2 && !StatusWord(status).empty());
  }

  // Nothing but labels for a station without a record can fail here.
  void Show(Icon /*icon*/, std::string_view /*title*/, std::string_view text) override {
    Require(text.find("(Channel Not Found)") != std::string_view::npos);
    Require(model_.LabelCount > kRecords);
  }

 private:
  DecodeStatus ParseButtons(Message message, ButtonData* data) const {
    return ParseButtonData(message, model_.StationCount, model_.ButtonCount,
                           model_.StationCount / 8, data);
  }

  // A fresh database when the first table asks for it: most inputs never do.
  jet::Database* OpenDatabase() {
    static const std::vector<std::uint8_t> content = MakeDatabase();
    if (database_ == nullptr) {
      Require(jet::Database::Open(std::make_unique<jet::MemoryPageFile>(content),
                                  jet::Access::ReadWrite, &database_)
                  .ok());
    }
    return database_.get();
  }

  model::SystemModel model_;
  std::unique_ptr<jet::Database> database_;
  stations::Changes changes_;
  Decoder decoder_{{.model = model_,
                    .database = [this] { return OpenDatabase(); },
                    .reporter = *this,
                    .changes = changes_,
                    .observers = {*this}}};
  Message message_;
};

// The labels go back in the order of the stations, except for the first character of one that
// another table has hidden.
void Console::LabelsChanged(int selector) {
  LabelTexts received;
  Require(ParseLabelTexts(message_, model_.LabelCount, &received) == DecodeStatus::Ok);
  if (model_.LabelCount > kRecords) return;
  LabelMessages sent;
  Require(LoadLabels(*OpenDatabase(), model_, selector, &sent).ok());
  const auto order = ParseLabelOrder(sent.order, model_.LabelCount);
  LabelTexts texts;
  Require(order.has_value());
  Require(ParseLabelTexts(sent.texts, model_.LabelCount, &texts) == DecodeStatus::Ok);
  if (model_.LabelCount < kRecords) return;  // only the first of the order travel
  for (std::size_t i = 0; i < texts.labels.size(); ++i) {
    const std::string& label = received.labels[static_cast<std::size_t>(order->stations[i] - 1)];
    Require(texts.labels[i].substr(1) == label.substr(1));
    Require(texts.labels[i][0] == label[0] || selector != kOutputLabels);
  }
}

// Parses, and if the message was accepted, encodes and parses once more.
template <typename Value, typename Parse, typename Encode>
void RoundTrip(Message message, Parse parse, Encode encode) {
  Value value{};
  if (parse(message, &value) != DecodeStatus::Ok) return;
  const Bytes again = encode(value);
  Require(again.size() == message.size());
  Value back{};
  Require(parse(again, &back) == DecodeStatus::Ok);
  Require(back == value);
}

void Console::RoundTrips(Message message) const {
  const int channels = model_.ChannelCount;
  if (const auto take = ParseTake(message)) {
    Require(take->destination >= 1 && take->source >= 1);
    if (take->destination <= 256 && take->source <= 256) {
      Require(ParseTake(EncodeTake(*take)) == take);
    }
  }
  if (const auto gain = ParseGain(message); gain && gain->input < 64 && gain->step < 128) {
    Require(ParseGain(EncodeGain(*gain)) == gain);
  }
  if (const auto order = ParseLabelOrder(message, model_.LabelCount)) {
    Require(ParseLabelOrder(EncodeLabelOrder(*order), model_.LabelCount) == order);
  }
  // The other parsers leave the code to their caller, and are only asked about their own.
  switch (static_cast<MessageCode>(message.front())) {
    case kCrosspointRowCode:
      RoundTrip<CrosspointRow>(
          message, [&](Message m, auto* row) { return ParseCrosspointRow(m, channels, row); },
          EncodeCrosspointRow);
      break;
    case kGainReportCode:
      RoundTrip<std::vector<std::int16_t>>(
          message, [&](Message m, auto* steps) { return ParseGainReport(m, channels, steps); },
          EncodeGainReport);
      break;
    case kTallyCode:
      RoundTrip<TallyValues>(message, ParseTally, EncodeTally);
      break;
    case kInhibitRowCode:
      RoundTrip<FlagRow>(
          message, [&](Message m, auto* row) { return ParseInhibitRow(m, channels, row); },
          [&](const FlagRow& row) {
            return EncodeInhibitRow(row.output, FlagText(row.members), channels);
          });
      break;
    case kRelayRowCode:
      RoundTrip<FlagRow>(
          message,
          [&](Message m, auto* row) { return ParseRelayRow(m, channels, model_.RelayCount, row); },
          [&](const FlagRow& row) {
            return EncodeRelayRow(row.output, FlagText(row.members), model_.RelayCount);
          });
      break;
    case kAlphaLabelsCode:
      RoundTrip<LabelTexts>(
          message,
          [&](Message m, auto* texts) { return ParseLabelTexts(m, model_.LabelCount, texts); },
          EncodeLabelTexts);
      break;
    case kButtonDataCode:
      RoundTrip<ButtonData>(
          message, [&](Message m, auto* data) { return ParseButtons(m, data); }, EncodeButtonData);
      break;
    case kOptoDataCode:
      RoundTrip<OptoData>(
          message, [&](Message m, auto* data) { return ParseOptoData(m, model_.OptoCount, data); },
          EncodeOptoData);
      break;
    case kTakeCode:
    case kGainCode:
    case kLabelOrderCode:
      break;
  }
}

}  // namespace
}  // namespace switcher

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  switcher::Console console(data[0] < 128 ? data[0] : 2 * data[0] - 254);
  switcher::ReceiveBuffer received{.bytes = {data + 1, data + size}};
  switcher::Bytes message;
  for (;;) {
    const std::size_t before = received.bytes.size();
    const switcher::Cut cut = switcher::CutMessage(received, &message);
    if (cut == switcher::Cut::Empty || cut == switcher::Cut::NeedMore) return 0;
    if (cut == switcher::Cut::Blocked) {
      console.RoundTrips(received.bytes);
      return 0;
    }
    switcher::Require(received.bytes.size() < before);
    if (cut == switcher::Cut::Message) console.Decode(message);
  }
}
