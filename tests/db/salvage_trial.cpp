// SPDX-License-Identifier: MIT

#include "tests/db/salvage_trial.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "db/damage.h"
#include "db/jet/store.h"
#include "db/salvage.h"
#include "db/schema.h"
#include "tests/jet/jet_support.h"
#include "tests/support/temporary_folder.h"

namespace test {
namespace {

using jet::Value;

constexpr int kManyStations = 600;

// A failure here is one of the trial's own, or of the salvage, which never fails: it ends the
// trial.
void Must(const model::Status& status) {
  if (!status.ok()) throw std::runtime_error(status.Description());
}

std::string AsString(const std::vector<std::uint8_t>& bytes) {
  return {bytes.begin(), bytes.end()};
}

// A record's bytes in a sound file.
struct Needles {
  std::string row;
  std::map<int, std::string> values;  // long values, by field
};

// A sound file and everything that is known of it.
struct Original {
  std::string name;
  std::vector<std::uint8_t> content;
  std::size_t pageSize = 0;
  std::size_t countsAt = 0;  // where the counts stand, one after the other
  std::map<int, std::vector<Value>> stations;
  std::map<int, Needles> needles;
};

std::string RandomFlags(std::mt19937& random) {
  std::string flags(db::kFlags, '0');
  for (char& flag : flags) flag = static_cast<char>('0' + random() % 2);
  return flags;
}

// Every long value is like no other, and the notes of some records have made their rows move.
void FillByChance(jet::Database& database, std::mt19937& random) {
  jet::Database::Batch batch(database);
  const auto stations = OpenTable(database, db::kStationsTable);
  for (Must(stations->MoveFirst()); !stations->Eof(); Must(stations->MoveNext())) {
    Must(stations->Edit());
    for (int field = 0; field < stations->FieldCount(); ++field) {
      if (stations->Field(field).type != jet::FieldType::Memo) continue;
      Must(stations->Set(field, RandomFlags(random)));
    }
    if (random() % 4 == 0) Must(stations->Set("Notes", std::string(random() % 128, 'n')));
    Must(stations->Set("OptoFirst", static_cast<int>(random() % 64)));
    Must(stations->Update());
  }
  Must(batch.Commit());
}

void AddStations(jet::Database& database, int upTo) {
  jet::Database::Batch batch(database);
  const auto dbInfo = OpenTable(database, db::kDbInfoTable);
  Must(dbInfo->Edit());
  Must(dbInfo->Set("LabelCount", upTo));
  Must(dbInfo->Update());
  const auto stations = OpenTable(database, db::kStationsTable);
  std::vector<Value> values;
  for (int field = 0; field < stations->FieldCount(); ++field) {
    Must(stations->Get(field, &values.emplace_back()));
  }
  for (int station = db::kDefaultLabels + 1; station <= upTo; ++station) {
    Must(stations->AddNew());
    for (int field = 1; field < stations->FieldCount(); ++field) {
      Must(stations->Set(field, values[static_cast<std::size_t>(field)]));
    }
    Must(stations->Set("StationNum", station));
    Must(stations->Set("Label", std::to_string(station)));
    Must(stations->Update());
  }
  Must(batch.Commit());
}

std::map<int, std::vector<Value>> ReadStations(jet::Database& database) {
  std::map<int, std::vector<Value>> all;
  const auto stations = OpenTable(database, db::kStationsTable);
  for (; !stations->Eof(); Must(stations->MoveNext())) {
    std::vector<Value> values(static_cast<std::size_t>(stations->FieldCount()));
    for (int field = 0; field < stations->FieldCount(); ++field) {
      Must(stations->Get(field, &values[static_cast<std::size_t>(field)]));
    }
    const int station = values[0].Int();
    all[station] = std::move(values);
  }
  return all;
}

// Flags as they stand in a file: a byte a character in Jet 3, two in Jet 4.
std::string StoredFlags(const std::string& flags, int version) {
  if (version == 3) return flags;
  std::string stored;
  for (const char flag : flags) stored += {flag, '\0'};
  return stored;
}

void FindNeedles(jet::Database& database, Original* original) {
  std::shared_ptr<jet::Table> table;
  Must(database.GetStore().OpenTable(db::kStationsTable, &table));
  jet::RowPointer row;
  for (Must(table->FirstRow(&row)); row; Must(table->NextRow(row, &row))) {
    jet::RowView view;
    Value number;
    Must(table->ReadRow(row, &view));
    Must(table->ReadValue(view, 0, &number));
    Needles& needles = original->needles[number.Int()];
    needles.row.assign(view.Bytes().begin(), view.Bytes().end());
    const std::vector<Value>& values = original->stations[number.Int()];
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (!table->Def().columns[i].IsLongValue()) continue;
      needles.values[static_cast<int>(i)] = StoredFlags(values[i].Text(), database.Version());
    }
  }
}

// The counts are the numbers of the one record of their table, which begin behind its head.
std::size_t PlaceOfCounts(jet::Database& database, const std::vector<std::uint8_t>& content) {
  std::shared_ptr<jet::Table> table;
  Must(database.GetStore().OpenTable(db::kDbInfoTable, &table));
  jet::RowPointer row;
  jet::RowView view;
  Must(table->FirstRow(&row));
  Must(table->ReadRow(row, &view));
  const std::size_t at = AsString(content).find({view.Bytes().begin(), view.Bytes().end()});
  if (at == std::string::npos) throw std::runtime_error("the counts are not in the file");
  return at + (database.Version() == 3 ? 1 : 2);
}

Original MakeOriginal(const std::string& name, std::mt19937& random) {
  Original original;
  original.name = name;
  MemoryDisk disk;
  if (name == "jet3") {
    disk.content = SampleBytes("tesk_jet3");
  } else {
    Must(db::CreateDatabase(disk.NewFile()));
  }
  const auto database = Open(disk);
  if (name == "large") AddStations(*database, kManyStations);
  FillByChance(*database, random);
  if (!Problems(*database).empty()) throw std::runtime_error(name + " is not sound");
  original.stations = ReadStations(*database);
  FindNeedles(*database, &original);
  original.pageSize = database->Version() == 3 ? 2048 : 4096;
  original.content = disk.content;
  original.countsAt = PlaceOfCounts(*database, original.content);
  return original;
}

using Bytes = std::vector<std::uint8_t>;

class Damager {
 public:
  Damager(const Original& original, std::mt19937& random)
      : content_(original.content),
        pageSize_(original.pageSize),
        countsAt_(original.countsAt),
        random_(random) {}

  void ZeroPage() { std::fill_n(Page(AnyPage()), pageSize_, 0); }
  void RandomPage() { Scramble(AnyPage() * pageSize_, pageSize_); }
  void SwapPages() {
    const auto one = Page(AnyPage());
    std::swap_ranges(one, one + Signed(pageSize_), Page(AnyPage()));
  }
  void CopyPage() { std::copy_n(Page(AnyPage()), pageSize_, Page(AnyPage())); }
  void Truncate() { content_.resize(content_.size() / 2 + Below(content_.size() / 2)); }
  void FlipBits() {
    for (std::size_t i = 1 + Below(8); i > 0; --i) {
      content_[Below(content_.size())] ^= static_cast<std::uint8_t>(1U << Below(8));
    }
  }
  void FlipBytes() {
    for (std::size_t i = 1 + Below(32); i > 0; --i) Scramble(Below(content_.size()), 1);
  }
  void ZeroHead() { std::fill_n(Page(0), pageSize_ * (1 + Below(3)), 0); }
  void ZeroSectors() {
    for (std::size_t i = 1 + Below(4); i > 0; --i) {
      const std::size_t sector = Below(content_.size() / kSector);
      std::fill_n(content_.begin() + Signed(sector * kSector), kSector, 0);
    }
  }
  // The heads of pages and their tables of rows.
  void ScrambleTablesOfRows() {
    for (std::size_t i = 1 + Below(4); i > 0; --i) Scramble(AnyPage() * pageSize_, 1 + Below(40));
  }
  void FlipBitOfATableOfRows() {
    content_[AnyPage() * pageSize_ + Below(32)] ^= static_cast<std::uint8_t>(1U << Below(8));
  }
  void ZeroDefinitions() {
    for (std::size_t page = 0; page < PageCount(); ++page) {
      if (*Page(page) == 2) std::fill_n(Page(page), pageSize_, 0);
    }
  }
  // A few of them, or all.
  void ScrambleCounts() {
    const std::size_t first = Below(kCounts);
    Scramble(countsAt_ + 2 * first, 2 * (1 + Below(kCounts - first)));
  }

  Bytes Result() { return std::move(content_); }

 private:
  static constexpr std::size_t kSector = 512;
  static constexpr std::size_t kCounts = 9;

  static std::ptrdiff_t Signed(std::size_t number) { return static_cast<std::ptrdiff_t>(number); }
  std::size_t Below(std::size_t limit) { return random_() % limit; }
  std::size_t PageCount() const { return content_.size() / pageSize_; }
  std::size_t AnyPage() { return Below(PageCount()); }
  Bytes::iterator Page(std::size_t page) { return content_.begin() + Signed(page * pageSize_); }
  void Scramble(std::size_t begin, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
      content_[begin + i] = static_cast<std::uint8_t>(random_());
    }
  }

  Bytes content_;
  const std::size_t pageSize_;
  const std::size_t countsAt_;
  std::mt19937& random_;
};

struct Way {
  const char* name;
  void (Damager::*damage)();
};

constexpr std::array kWays = {
    Way{"a page of zeros", &Damager::ZeroPage},
    Way{"a page by chance", &Damager::RandomPage},
    Way{"two pages swapped", &Damager::SwapPages},
    Way{"a page over another", &Damager::CopyPage},
    Way{"a tail cut off", &Damager::Truncate},
    Way{"1 to 8 bits", &Damager::FlipBits},
    Way{"1 to 32 bytes", &Damager::FlipBytes},
    Way{"the first pages of zeros", &Damager::ZeroHead},
    Way{"1 to 4 sectors of zeros", &Damager::ZeroSectors},
    Way{"heads of pages by chance", &Damager::ScrambleTablesOfRows},
    Way{"a bit of a page's head", &Damager::FlipBitOfATableOfRows},
    Way{"no table definition", &Damager::ZeroDefinitions},
};

// Tried behind the others, as often as each of them.
constexpr Way kWayOfCounts{"counts by chance", &Damager::ScrambleCounts};

// Which of the needles, all of one length, are somewhere in the content.  It is gone over once,
// with a sum that is carried on from byte to byte.
std::set<std::string_view> FindAll(std::string_view content,
                                   const std::vector<std::string_view>& needles) {
  std::set<std::string_view> found;
  if (needles.empty() || content.size() < needles[0].size()) return found;
  constexpr std::uint64_t kBase = 1099511628211U;
  const std::size_t length = needles[0].size();
  std::uint64_t leaving = 1;  // what a byte weighs that leaves the window
  for (std::size_t i = 1; i < length; ++i) leaving *= kBase;
  const auto add = [](std::uint64_t sum, char c) {
    return sum * kBase + static_cast<std::uint8_t>(c) + 1;
  };
  std::unordered_multimap<std::uint64_t, std::string_view> bySum;
  for (const std::string_view needle : needles) {
    std::uint64_t sum = 0;
    for (const char c : needle) sum = add(sum, c);
    bySum.emplace(sum, needle);
  }
  std::uint64_t sum = 0;
  for (std::size_t end = 0; end < content.size(); ++end) {
    if (end >= length) {
      sum -= leaving * (static_cast<std::uint8_t>(content[end - length]) + std::uint64_t{1});
    }
    sum = add(sum, content[end]);
    if (end + 1 < length) continue;
    const auto [first, last] = bySum.equal_range(sum);
    for (auto needle = first; needle != last; ++needle) {
      if (content.substr(end + 1 - length, length) == needle->second) found.insert(needle->second);
    }
  }
  return found;
}

// What the report names of a station.
std::set<std::string> Named(const std::vector<db::UnreadableStation>& list, int station) {
  for (const db::UnreadableStation& named : list) {
    if (named.station == station) return {named.fields.begin(), named.fields.end()};
  }
  return {};
}

// One damaged file.
class Case {
 public:
  Case(const Original& original, Bytes damaged, TrialFigures* figures)
      : original_(original), damaged_(std::move(damaged)), figures_(*figures) {}

  void Run() {
    ++figures_.files;
    LookForDamage();
    Must(db::Salvage(std::make_unique<jet::MemoryPageFile>(damaged_), salvaged_.NewFile(),
                     db::Fill::Nothing, &report_));
    const auto database = Open(salvaged_, jet::Access::ReadOnly);
    if (!Problems(*database).empty()) ++figures_.unsound;
    found_ = ReadStations(*database);
    for (const auto& [station, values] : found_) {
      if (!original_.stations.contains(station)) ++figures_.invented;
    }
    CountWrong();
    CountSalvaged();
  }

 private:
  // Whether the damage is noticed that keeps somebody from reading.
  void LookForDamage() {
    std::unique_ptr<jet::Database> database;
    db::Damage damage;
    if (!jet::Database::Open(std::make_unique<jet::MemoryPageFile>(damaged_), jet::Access::ReadOnly,
                             &database)
             .ok() ||
        !db::FindDamage(*database, &damage).ok() || !damage.IsSound()) {
      return;
    }
    const auto stations = OpenTable(*database, db::kStationsTable);
    const bool areThere = stations->RecordCount() == static_cast<int>(original_.stations.size());
    if (!areThere || !damage.unreadable.empty() || !damage.isDbInfoReadable) ++figures_.silent;
  }

  void CountWrong() {
    const jet::TableSpec spec = db::StationsSpec();
    for (const auto& [station, values] : found_) {
      const auto original = original_.stations.find(station);
      if (original == original_.stations.end()) continue;
      std::set<std::string> named = Named(report_.incomplete, station);
      named.merge(Named(report_.doubtful, station));
      for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i] == original->second[i] || named.contains(spec.fields[i].name)) continue;
        figures_.wrong.push_back(Line(station, spec.fields[i].name));
      }
    }
  }

  void CountSalvaged() {
    const std::string content = AsString(damaged_);
    std::vector<std::string_view> sought;
    std::set<int> rows;
    for (const auto& [station, needles] : original_.needles) {
      if (content.find(needles.row) == std::string::npos) continue;
      rows.insert(station);
      for (const auto& [field, value] : needles.values) sought.push_back(value);
    }
    const std::set<std::string_view> there = FindAll(content, sought);
    for (const int station : rows) Compare(station, there);
  }

  void Compare(int station, const std::set<std::string_view>& there) {
    const Needles& needles = original_.needles.at(station);
    const std::vector<Value>& original = original_.stations.at(station);
    const auto found = found_.find(station);
    const auto isSalvaged = [&](std::size_t field) {
      return found != found_.end() && found->second[field] == original[field];
    };
    ++figures_.rowsThere;
    bool isWhole = true;
    for (std::size_t i = 0; i < original.size(); ++i) {
      const auto value = needles.values.find(static_cast<int>(i));
      if (value == needles.values.end()) {
        isWhole = isWhole && isSalvaged(i);
      } else if (there.contains(value->second)) {
        ++figures_.valuesThere;
        if (isSalvaged(i)) {
          ++figures_.valuesSalvaged;
        } else {
          figures_.overlooked.push_back(Line(station, db::StationsSpec().fields[i].name));
        }
      }
    }
    if (isWhole) {
      ++figures_.rowsSalvaged;
    } else {
      figures_.overlooked.push_back(Line(station, "its row"));
    }
  }

  std::string Line(int station, const std::string& what) const {
    return original_.name + " " + std::to_string(figures_.files) + ": station " +
           std::to_string(station) + " " + what;
  }

  const Original& original_;
  const Bytes damaged_;
  TrialFigures& figures_;
  MemoryDisk salvaged_;
  db::SalvageReport report_;
  std::map<int, std::vector<Value>> found_;
};

}  // namespace

std::vector<TrialFigures> RunSalvageTrial(int files, std::uint32_t seed,
                                          const std::filesystem::path& kept) {
  constexpr std::array kNames = {"product", "jet3", "large"};
  std::mt19937 random(seed);
  std::vector<Original> originals;
  std::vector<TrialFigures> all(kWays.size() + 1);
  const auto damage = [&](const Original& original, const Way& way, int file,
                          TrialFigures* figures) {
    Damager damager(original, random);
    (damager.*way.damage)();
    const Bytes damaged = damager.Result();
    figures->damage = way.name;
    const std::size_t before = figures->overlooked.size();
    Case(original, damaged, figures).Run();
    if (kept.empty() || figures->overlooked.size() == before) return;
    const std::string name = original.name + "-" + std::to_string(file);
    WriteFile(kept / (name + ".mdb"), AsString(damaged));
    WriteFile(kept / (name + ".sound"), AsString(original.content));
  };
  for (int i = 0; i < files; ++i) {
    const std::size_t way = static_cast<std::size_t>(i) % kWays.size();
    const std::size_t name = static_cast<std::size_t>(i) / kWays.size() % kNames.size();
    if (name == originals.size()) originals.push_back(MakeOriginal(kNames[name], random));
    damage(originals[name], kWays[way], i, &all[way]);
  }
  const std::size_t ofEachWay = (static_cast<std::size_t>(files) + kWays.size() - 1) / kWays.size();
  for (std::size_t i = 0; i < ofEachWay; ++i) {
    damage(originals[i % originals.size()], kWayOfCounts, files + static_cast<int>(i), &all.back());
  }
  return all;
}

}  // namespace test
