// SPDX-License-Identifier: MIT
//
// The messages of the switcher's line: how long each takes to build and to parse, and how long
// the line takes for it at 5760 bytes a second.
//
//   Build/…    the values to the bytes
//   Parse/…    the bytes, checked, to the values
//   Read/…     a record of the database to the bytes that the console sends
//   Store/…    the bytes, as received, into the database
//
// The table of figures has, of each, the message that takes the greatest part of the time that the
// line takes for it.

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "bench/suite.h"
#include "db/jet/database.h"
#include "db/schema.h"
#include "switcher/decoder.h"
#include "switcher/load_tables.h"
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

constexpr double kLineBytesPerSecond = 5760;
constexpr int kButtons = 32;
constexpr int kOptos = 64;
constexpr int kRelays = 64;

void Require(bool holds) {
  if (!holds) throw std::logic_error("a message was refused");
}

// `count` members, every third on.
std::vector<std::uint8_t> Members(int count) {
  std::vector<std::uint8_t> members;
  for (int i = 0; i < count; ++i) members.push_back(i % 3 == 0 ? 1 : 0);
  return members;
}

std::string FlagText(int count) {
  std::string text;
  for (const std::uint8_t member : Members(count)) text += member != 0 ? '1' : '0';
  return text;
}

// The values of every message, for a system of so many channels.
struct Values {
  explicit Values(int channels)
      : row{.output = channels, .status = 0, .sources = Members(channels)},
        steps(static_cast<std::size_t>(channels), 100),
        flags(FlagText(channels)),
        relays(FlagText(kRelays)) {
    for (int label = channels; label >= 1; --label) {
      order.stations.push_back(label);
      texts.labels.push_back("Sta. " + std::to_string(1000 + label).substr(1));
    }
    buttons.station = channels;
    for (int button = 1; button <= kButtons; ++button) {
      buttons.buttons.push_back({.type = 254, .first = button, .targets = Members(channels)});
    }
    for (int opto = 1; opto <= kOptos; ++opto) {
      optos.optos.push_back(
          {.type = 254, .channel = opto, .first = opto, .stations = Members(kOptos)});
    }
  }

  CrosspointRow row;
  std::vector<std::int16_t> steps;
  TallyValues tally{};
  LabelOrder order{.selector = kOutputLabels, .stations = {}};
  LabelTexts texts{.selector = kOutputLabels, .labels = {}};
  std::string flags;
  std::string relays;
  ButtonData buttons;
  OptoData optos;
};

// One kind of message.
struct Kind {
  MessageCode code;
  Bytes (*build)(const Values& values, int channels);
  void (*parse)(const Bytes& message, int channels);

  const MessageKind& Message() const { return *FindMessage(code); }
};

template <typename Value, typename Parse>
void Accept(Parse parse) {
  Value value{};
  Require(parse(&value) == DecodeStatus::Ok);
  benchmark::DoNotOptimize(value);
}

template <typename Value>
void AcceptOptional(const std::optional<Value>& value) {
  Require(value.has_value());
  benchmark::DoNotOptimize(*value);
}

const Kind kKinds[] = {
    {kTakeCode,
     [](const Values&, int channels) {
       return EncodeTake({channels, channels, 3});
     },
     [](const Bytes& message, int) { AcceptOptional(ParseTake(message)); }},
    {kGainCode, [](const Values&, int) { return EncodeGain({.input = 5, .step = 100}); },
     [](const Bytes& message, int) { AcceptOptional(ParseGain(message)); }},
    {kCrosspointRowCode, [](const Values& values, int) { return EncodeCrosspointRow(values.row); },
     [](const Bytes& message, int channels) {
       Accept<CrosspointRow>([&](auto* row) { return ParseCrosspointRow(message, channels, row); });
     }},
    {kGainReportCode, [](const Values& values, int) { return EncodeGainReport(values.steps); },
     [](const Bytes& message, int channels) {
       Accept<std::vector<std::int16_t>>(
           [&](auto* steps) { return ParseGainReport(message, channels, steps); });
     }},
    {kTallyCode, [](const Values& values, int) { return EncodeTally(values.tally); },
     [](const Bytes& message, int) {
       Accept<TallyValues>([&](auto* tally) { return ParseTally(message, tally); });
     }},
    {kLabelOrderCode, [](const Values& values, int) { return EncodeLabelOrder(values.order); },
     [](const Bytes& message, int channels) {
       AcceptOptional(ParseLabelOrder(message, channels));
     }},
    {kAlphaLabelsCode, [](const Values& values, int) { return EncodeLabelTexts(values.texts); },
     [](const Bytes& message, int channels) {
       Accept<LabelTexts>([&](auto* texts) { return ParseLabelTexts(message, channels, texts); });
     }},
    {kInhibitRowCode,
     [](const Values& values, int channels) {
       return EncodeInhibitRow(channels, values.flags, channels);
     },
     [](const Bytes& message, int channels) {
       Accept<FlagRow>([&](auto* row) { return ParseInhibitRow(message, channels, row); });
     }},
    {kRelayRowCode,
     [](const Values& values, int channels) {
       return EncodeRelayRow(channels, values.relays, kRelays);
     },
     [](const Bytes& message, int channels) {
       Accept<FlagRow>([&](auto* row) { return ParseRelayRow(message, channels, kRelays, row); });
     }},
    {kButtonDataCode, [](const Values& values, int) { return EncodeButtonData(values.buttons); },
     [](const Bytes& message, int channels) {
       Accept<ButtonData>([&](auto* data) {
         return ParseButtonData(message, channels, kButtons, channels / 8, data);
       });
     }},
    {kOptoDataCode, [](const Values& values, int) { return EncodeOptoData(values.optos); },
     [](const Bytes& message, int) {
       Accept<OptoData>([&](auto* data) { return ParseOptoData(message, kOptos, data); });
     }},
};

static_assert(std::size(kKinds) == std::size(kMessages), "a message is not measured");

// Notes the size of the message that each turn handled.
void Report(benchmark::State& state, std::size_t bytes) {
  state.counters["bytes"] = static_cast<double>(bytes);
}

void Build(benchmark::State& state, const Kind& kind) {
  const int channels = static_cast<int>(state.range(0));
  const Values values(channels);
  for (auto _ : state) benchmark::DoNotOptimize(kind.build(values, channels));
  Report(state, kind.build(values, channels).size());
}

void Parse(benchmark::State& state, const Kind& kind) {
  const int channels = static_cast<int>(state.range(0));
  const Bytes message = kind.build(Values(channels), channels);
  for (auto _ : state) kind.parse(message, channels);
  Report(state, message.size());
}

// A database in memory whose records have everything, and a decoder that writes into it.
class StoredSystem : public SwitcherEvents, private model::ErrorReporter {
 public:
  explicit StoredSystem(int channels) {
    model.ApplyFixedValues();
    model.ChannelCount = static_cast<std::int16_t>(channels);
    model.StationCount = model.ChannelCount;
    model.LabelCount = model.ChannelCount;
    Require(jet::Database::CreateInMemory(&database).ok());
    Require(db::CreateTables(*database).ok());
    std::unique_ptr<jet::RecordSet> stations;
    Require(database->OpenTable(db::kStationsTable, &stations).ok());
    for (int station = stations->RecordCount() + 1; station <= channels; ++station) {
      Require(stations->AddNew().ok() && stations->Set("StationNum", station).ok() &&
              stations->Update().ok());
    }
  }

  void Decode(const Bytes& message) { decoder.Decode(message); }
  bool Changed() const { return changed; }

  model::SystemModel model;
  std::unique_ptr<jet::Database> database;

 private:
  void LabelsChanged(int /*selector*/) override { changed = true; }
  void InhibitsChanged(int /*output*/) override { changed = true; }
  void RelaysChanged(int /*output*/) override { changed = true; }
  void ButtonsChanged(int /*station*/) override { changed = true; }
  void OptosChanged() override { changed = true; }
  void Show(Icon /*icon*/, std::string_view /*title*/, std::string_view text) override {
    throw std::logic_error(std::string(text));
  }

  bool changed = false;
  stations::Changes changes;
  Decoder decoder{{.model = model,
                   .database = [this] { return database.get(); },
                   .reporter = *this,
                   .changes = changes,
                   .observers = {*this}}};
};

// The messages that the console sends of what this one holds.
std::vector<Bytes> ReadTable(StoredSystem& system, const Bytes& message) {
  std::vector<Bytes> messages;
  Require(LoadMessages(*system.database, system.model, *PartOf(message), &messages).ok());
  Require(!messages.empty());
  return messages;
}

void Read(benchmark::State& state, const Kind& kind) {
  const int channels = static_cast<int>(state.range(0));
  StoredSystem system(channels);
  const Bytes message = kind.build(Values(channels), channels);
  system.Decode(message);
  for (auto _ : state) benchmark::DoNotOptimize(ReadTable(system, message));
  Report(state, ReadTable(system, message).back().size());
}

void Store(benchmark::State& state, const Kind& kind) {
  const int channels = static_cast<int>(state.range(0));
  StoredSystem system(channels);
  const Bytes message = kind.build(Values(channels), channels);
  for (auto _ : state) system.Decode(message);
  if (!system.Changed()) state.SkipWithError("nothing was stored");
  Report(state, message.size());
}

// Whether it is read from the database and stored there.
bool IsStored(const Kind& kind) {
  return kind.Message().use == MessageUse::Table && kind.Message().FromSwitcher();
}

// What is done with a message: a function of the message's kind.
struct Work {
  const char* name;
  void (*run)(benchmark::State& state, const Kind& kind);
  bool tablesOnly;
};

constexpr Work kWork[] = {
    {"build", Build, false},
    {"parse", Parse, false},
    {"read from the database", Read, true},
    {"store in the database", Store, true},
};

std::string NameOf(const Work& work, const Kind& kind, int channels) {
  return std::string(work.name) + ": " + std::string(kind.Message().name) + ", " +
         std::to_string(channels) + " channels";
}

bool AppliesTo(const Work& work, const Kind& kind) { return !work.tablesOnly || IsStored(kind); }

// The message that takes the greatest part of its time on the line.
void AddCostliest(bench::Suite& suite, const Work& work, int channels) {
  bench::Figure costliest;
  for (const Kind& kind : kKinds) {
    if (!AppliesTo(work, kind)) continue;
    const std::optional<double> time = suite.TimeOf(NameOf(work, kind, channels));
    if (!time) continue;
    const auto bytes = static_cast<double>(kind.build(Values(channels), channels).size());
    const double line = bytes / kLineBytesPerSecond * 1e6;
    if (costliest.other && *time / line <= costliest.value / costliest.other->value) continue;
    costliest = {.what = std::string("messages: the costliest to ") + work.name + ", " +
                         std::to_string(channels) + " channels (" +
                         std::string(kind.Message().name) + ")",
                 .value = *time,
                 .unit = "µs",
                 .other = bench::Other{.name = "the line", .value = line},
                 .ratioLimit = 0.01};
  }
  if (costliest.other) suite.AllFigures().Add(costliest);
}

}  // namespace
}  // namespace switcher

int main(int argc, char** argv) {
  bench::Suite suite(&argc, argv);
  constexpr int kSizes[] = {64, 256};
  for (const switcher::Work& work : switcher::kWork) {
    for (const switcher::Kind& kind : switcher::kKinds) {
      if (!switcher::AppliesTo(work, kind)) continue;
      for (const int channels : kSizes) {
        suite.MeasureOnly(
            {.what = switcher::NameOf(work, kind, channels),
             .run = [&work, &kind](benchmark::State& state) { work.run(state, kind); },
             .size = channels,
             .unit = benchmark::kMicrosecond});
      }
    }
  }
  suite.Run();
  for (const switcher::Work& work : switcher::kWork) {
    for (const int channels : kSizes) switcher::AddCostliest(suite, work, channels);
  }
  return suite.Finish();
}
