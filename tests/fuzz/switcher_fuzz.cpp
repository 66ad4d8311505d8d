// SPDX-License-Identifier: MIT
//
// Takes arbitrary bytes for what the switcher sends.  The first byte chooses the size of the
// system, the rest is the stream; without any, every message comes as it should be.  Whatever
// comes:
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
#include <type_traits>
#include <utility>
#include <vector>

#include "db/jet/page_file.h"
#include "db/schema.h"
#include "model/system_model.h"
#include "switcher/decoder.h"
#include "switcher/load_tables.h"
#include "switcher/wire/frame.h"
#include "tests/fuzz/fuzzed_system.h"
#include "tests/support/message_codecs.h"

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

class Console : public SwitcherEvents, public MessageHistory, public model::ErrorReporter {
 public:
  explicit Console(const test::MessageCounts& counts) : counts_(counts) {
    model_.ChannelCount = static_cast<std::int16_t>(counts.channels);
    model_.StationCount = static_cast<std::int16_t>(counts.stations);
    model_.LabelCount = static_cast<std::int16_t>(counts.labels);
    model_.ButtonCount = static_cast<std::int16_t>(counts.buttons);
    model_.OptoCount = static_cast<std::int16_t>(counts.optos);
    model_.RelayCount = static_cast<std::int16_t>(counts.relays);
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
  void TableAccepted(const TablePart& part) override;

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

  const test::MessageCounts counts_;
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

// The message that the console sends of what a message says.
template <typename Codec>
Bytes SentOf(Codec codec, typename Codec::Value value, const test::MessageCounts& counts) {
  if constexpr (std::is_same_v<typename Codec::Value, ButtonData>) {
    // Stored target flags are filled up, and what is stored is sent.
    for (auto& button : value.buttons) {
      button.targets.resize(std::max(button.targets.size(), std::size_t{64}));
    }
  }
  return codec.Encode(value, counts);
}

void Console::TableAccepted(const TablePart& part) {
  if (part.table == Table::OutputLabels || part.table == Table::InputLabels) return;  // see above
  std::vector<Bytes> sent;
  Require(LoadMessages(*OpenDatabase(), model_, part, &sent).ok());
  const Bytes expected =
      test::WithCodec(static_cast<MessageCode>(message_.front()), [&](auto codec) {
        typename decltype(codec)::Value value{};
        Require(codec.Parse(message_, counts_, &value) == DecodeStatus::Ok);
        return SentOf(codec, std::move(value), counts_);
      });
  Require(sent == std::vector<Bytes>{expected});
}

// What is accepted is the same after it was encoded and parsed once more.
template <typename Codec>
void RoundTrip(Codec codec, Message message, const test::MessageCounts& counts) {
  typename Codec::Value value{};
  if (codec.Parse(message, counts, &value) != DecodeStatus::Ok || !codec.CanBeSent(value)) return;
  const Bytes again = codec.Encode(value, counts);
  Require(again.size() == message.size());
  typename Codec::Value back{};
  Require(codec.Parse(again, counts, &back) == DecodeStatus::Ok);
  Require(back == value);
}

void Console::RoundTrips(Message message) const {
  for (const MessageKind& kind : kMessages) {
    // The parsers of what comes from the switcher leave the code to their caller.
    if (kind.FromSwitcher() && kind.code != message.front()) continue;
    test::WithCodec(kind.code, [&](auto codec) { RoundTrip(codec, message, counts_); });
  }
}

// What a stream brings the console.
void Run(Console& console, ReceiveBuffer received) {
  Bytes message;
  for (;;) {
    const std::size_t before = received.bytes.size();
    const Cut cut = CutMessage(received, &message);
    if (cut == Cut::Empty || cut == Cut::NeedMore) return;
    if (cut == Cut::Blocked) return console.RoundTrips(received.bytes);
    Require(received.bytes.size() < before);
    if (cut == Cut::Message) console.Decode(message);
  }
}

void RunEveryMessage() {
  const test::MessageCounts counts = fuzz::SystemOf(kRecords);
  for (const MessageKind& kind : kMessages) {
    Console console(counts);
    Run(console, {.bytes = test::ExampleMessage(kind.code, counts)});
  }
}

}  // namespace
}  // namespace switcher

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    switcher::RunEveryMessage();
    return 0;
  }
  switcher::Console console(fuzz::SystemOf(data[0]));
  switcher::Run(console, {.bytes = {data + 1, data + size}});
  return 0;
}
