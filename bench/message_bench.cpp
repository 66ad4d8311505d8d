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
#include "tests/support/message_codecs.h"

namespace switcher {
namespace {

constexpr double kLineBytesPerSecond = 5760;
void Require(bool holds) {
  if (!holds) throw std::logic_error("a message was refused");
}

test::MessageCounts CountsOf(int channels) {
  return {.channels = channels,
          .stations = channels,
          .labels = channels,
          .buttons = 32,
          .optos = 64,
          .relays = 64,
          .targets = channels};
}

Bytes MessageOf(const MessageKind& kind, int channels) {
  return test::ExampleMessage(kind.code, CountsOf(channels));
}

// Notes the size of the message that each turn handled.
void Report(benchmark::State& state, std::size_t bytes) {
  state.counters["bytes"] = static_cast<double>(bytes);
}

void Build(benchmark::State& state, const MessageKind& kind) {
  const test::MessageCounts counts = CountsOf(static_cast<int>(state.range(0)));
  test::WithCodec(kind.code, [&](auto codec) {
    const auto value = codec.Example(counts);
    for (auto _ : state) benchmark::DoNotOptimize(codec.Encode(value, counts));
    Report(state, codec.Encode(value, counts).size());
  });
}

void Parse(benchmark::State& state, const MessageKind& kind) {
  const test::MessageCounts counts = CountsOf(static_cast<int>(state.range(0)));
  const Bytes message = test::ExampleMessage(kind.code, counts);
  test::WithCodec(kind.code, [&](auto codec) {
    for (auto _ : state) {
      typename decltype(codec)::Value value{};
      Require(codec.Parse(message, counts, &value) == DecodeStatus::Ok);
      benchmark::DoNotOptimize(value);
    }
  });
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
  void TableAccepted(const TablePart& /*part*/) override { changed = true; }
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

void Read(benchmark::State& state, const MessageKind& kind) {
  const int channels = static_cast<int>(state.range(0));
  StoredSystem system(channels);
  const Bytes message = MessageOf(kind, channels);
  system.Decode(message);
  for (auto _ : state) benchmark::DoNotOptimize(ReadTable(system, message));
  Report(state, ReadTable(system, message).back().size());
}

void Store(benchmark::State& state, const MessageKind& kind) {
  const int channels = static_cast<int>(state.range(0));
  StoredSystem system(channels);
  const Bytes message = MessageOf(kind, channels);
  for (auto _ : state) system.Decode(message);
  if (!system.Changed()) state.SkipWithError("nothing was stored");
  Report(state, message.size());
}

// Whether it is read from the database and stored there.
bool IsStored(const MessageKind& kind) {
  return kind.use == MessageUse::Table && kind.FromSwitcher();
}

// What is done with a message: a function of the message's kind.
struct Work {
  const char* name;
  void (*run)(benchmark::State& state, const MessageKind& kind);
  bool tablesOnly;
};

constexpr Work kWork[] = {
    {"build", Build, false},
    {"parse", Parse, false},
    {"read from the database", Read, true},
    {"store in the database", Store, true},
};

std::string NameOf(const Work& work, const MessageKind& kind, int channels) {
  return std::string(work.name) + ": " + std::string(kind.name) + ", " + std::to_string(channels) +
         " channels";
}

bool AppliesTo(const Work& work, const MessageKind& kind) {
  return !work.tablesOnly || IsStored(kind);
}

// The message that takes the greatest part of its time on the line.
void AddCostliest(bench::Suite& suite, const Work& work, int channels) {
  bench::Figure costliest;
  for (const MessageKind& kind : kMessages) {
    if (!AppliesTo(work, kind)) continue;
    const std::optional<double> time = suite.TimeOf(NameOf(work, kind, channels));
    if (!time) continue;
    const auto bytes = static_cast<double>(MessageOf(kind, channels).size());
    const double line = bytes / kLineBytesPerSecond * 1e6;
    if (costliest.other && *time / line <= costliest.value / costliest.other->value) continue;
    costliest = {.what = std::string("messages: the costliest to ") + work.name + ", " +
                         std::to_string(channels) + " channels (" + std::string(kind.name) + ")",
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
    for (const switcher::MessageKind& kind : switcher::kMessages) {
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
