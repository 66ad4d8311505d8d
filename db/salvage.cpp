// SPDX-License-Identifier: MIT

#include "db/salvage.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "db/file_status.h"
#include "db/jet/database.h"
#include "db/jet/salvage.h"
#include "db/jet/text_codec.h"
#include "db/schema.h"
#include "files/file.h"
#include "files/whole_file.h"

namespace db {
namespace {

using jet::SalvagedRecord;
using jet::Value;

// Whether a text can have been stored by anybody.
bool IsPrintable(const std::string& text) {
  constexpr std::string_view kNoCharacter = "\xEF\xBF\xBD";  // what cannot be read
  return text.find(kNoCharacter) == std::string::npos &&
         std::none_of(text.begin(), text.end(), [](char c) {
           return c >= 0 && c < ' ' && c != '\t' && c != '\r' && c != '\n';
         });
}

bool AreFlags(const std::string& text) { return text.find_first_not_of("01") == std::string::npos; }

int FieldOf(const jet::TableSpec& table, std::string_view name) {
  const auto field = std::find_if(table.fields.begin(), table.fields.end(),
                                  [name](const jet::FieldSpec& spec) { return spec.name == name; });
  return static_cast<int>(field - table.fields.begin());
}

jet::SoughtTable SoughtDbInfo() {
  const auto accepts = [](int, const Value& value) {
    return value.GetKind() == Value::Kind::Text ? IsPrintable(value.Text()) : value.Int() >= 0;
  };
  return {.spec = DbInfoSpec(), .key = std::nullopt, .accepts = accepts, .expects = accepts};
}

// Whether the index of the labels can hold the text.
bool HasOrder(const std::string& text) {
  std::u16string units;
  return jet::AppendUnits(text, &units) &&
         std::all_of(units.begin(), units.end(),
                     [](char16_t unit) { return jet::ByteOfUnit(unit) >= 0; });
}

bool IsStationValue(int field, const Value& value) {
  constexpr int kStationNum = 0;
  constexpr int kLabel = 2;
  if (field == kStationNum) return value.Int() >= 1;
  if (field == kLabel && !HasOrder(value.Text())) return false;
  return value.GetKind() != Value::Kind::Text || IsPrintable(value.Text());
}

// All long values are flags.
bool IsLikelyStationValue(int, const Value& value) { return AreFlags(value.Text()); }

jet::SoughtTable SoughtStations() {
  return {
      .spec = StationsSpec(), .key = 0, .accepts = IsStationValue, .expects = IsLikelyStationValue};
}

// The records that a new database has.
class Defaults {
 public:
  model::Status Make() {
    if (jet::Status status = jet::Database::CreateInMemory(&database_); !status.ok()) {
      return status;
    }
    if (model::Status status = CreateTables(*database_); !status.ok()) return status;
    if (jet::Status status = database_->OpenTable(kDbInfoTable, &dbInfo); !status.ok()) {
      return status;
    }
    if (jet::Status status = database_->OpenTable(kStationsTable, &stations); !status.ok()) {
      return status;
    }
    return stations->SetIndex(kStationNumIndex);
  }

 private:
  std::unique_ptr<jet::Database> database_;

 public:
  std::unique_ptr<jet::RecordSet> dbInfo;
  std::unique_ptr<jet::RecordSet> stations;
};

// Adds a record, with what `defaults` stands on, if anything, for what was lost.
jet::Status AddRecord(jet::RecordSet& records, const SalvagedRecord& record,
                      const jet::RecordSet* defaults) {
  jet::Status status = records.AddNew();
  for (int field = 0; field < records.FieldCount() && status.ok(); ++field) {
    Value value = record.values[static_cast<std::size_t>(field)];
    const bool isLost = std::binary_search(record.lost.begin(), record.lost.end(), field);
    if (isLost && defaults != nullptr) status = defaults->Get(field, &value);
    if (status.ok()) status = records.Set(field, value);
  }
  return status.ok() ? records.Update() : status;
}

SalvagedRecord NothingOf(const jet::TableSpec& table) {
  SalvagedRecord record;
  record.values.resize(table.fields.size());
  for (std::size_t i = 0; i < table.fields.size(); ++i) record.lost.push_back(static_cast<int>(i));
  return record;
}

// The new file, and the report on what goes into it.
class NewDatabase {
 public:
  NewDatabase(jet::Database& database, Fill fill, SalvageReport* report)
      : database_(database), fill_(fill), report_(*report) {}

  model::Status Begin() {
    if (fill_ == Fill::Defaults) {
      if (model::Status status = defaults_.Make(); !status.ok()) return status;
    }
    return CreateEmptyTables(database_);
  }

  model::Status AddDbInfo(const std::vector<SalvagedRecord>& found) {
    report_.hasDbInfo = !found.empty();
    if (found.empty() && fill_ == Fill::Nothing) return {};
    std::unique_ptr<jet::RecordSet> records;
    if (jet::Status status = database_.OpenTable(kDbInfoTable, &records); !status.ok()) {
      return status;
    }
    return AddRecord(*records, found.empty() ? NothingOf(DbInfoSpec()) : found[0],
                     defaults_.dbInfo.get());
  }

  // `found` by rising number, none of them above the label count.
  model::Status AddStations(const std::vector<SalvagedRecord>& found) {
    if (jet::Status status = database_.OpenTable(kStationsTable, &stations_); !status.ok()) {
      return status;
    }
    auto next = found.begin();
    for (int station = 1; station <= report_.labelCount; ++station) {
      const bool isFound = next != found.end() && next->values[0].Int() == station;
      const jet::Status status = isFound ? AddFound(station, *next++) : FillIn(station);
      if (!status.ok()) return status;
    }
    return {};
  }

 private:
  jet::Status AddFound(int station, const SalvagedRecord& record) {
    ++report_.stations;
    Note(station, record.lost, &report_.incomplete);
    Note(station, Doubtful(record), &report_.doubtful);
    return AddRecord(*stations_, record, HasDefault(station) ? defaults_.stations.get() : nullptr);
  }

  std::vector<int> Doubtful(const SalvagedRecord& record) const {
    std::vector<int> fields;
    for (int field = 0; field < stations_->FieldCount(); ++field) {
      if (std::binary_search(record.lost.begin(), record.lost.end(), field)) continue;
      const bool isFlags = stations_->Field(field).type == jet::FieldType::Memo;
      const bool areFlags = AreFlags(record.values[static_cast<std::size_t>(field)].Text());
      if (!record.isSure || (isFlags && !areFlags)) fields.push_back(field);
    }
    return fields;
  }

  void Note(int station, const std::vector<int>& fields, std::vector<UnreadableStation>* list) {
    if (fields.empty()) return;
    UnreadableStation& noted = list->emplace_back();
    noted.station = station;
    for (const int field : fields) noted.fields.push_back(stations_->Field(field).name);
  }

  jet::Status FillIn(int station) {
    report_.missing.push_back(station);
    if (!HasDefault(station)) return {};
    return AddRecord(*stations_, NothingOf(StationsSpec()), defaults_.stations.get());
  }

  // Goes to the defaults of a station, if there are any and they are wanted.
  bool HasDefault(int station) {
    return fill_ == Fill::Defaults && defaults_.stations->Seek(station).ok() &&
           !defaults_.stations->NoMatch();
  }

  jet::Database& database_;
  const Fill fill_;
  SalvageReport& report_;
  Defaults defaults_;
  std::unique_ptr<jet::RecordSet> stations_;
};

// How many stations the file says that there are; nothing when it does not.
std::optional<int> StoredCount(const std::vector<SalvagedRecord>& dbInfo) {
  const int field = FieldOf(DbInfoSpec(), "LabelCount");
  if (dbInfo.empty() || std::binary_search(dbInfo[0].lost.begin(), dbInfo[0].lost.end(), field)) {
    return std::nullopt;
  }
  return dbInfo[0].values[static_cast<std::size_t>(field)].Int();
}

void SetLabelCount(int count, SalvagedRecord* dbInfo) {
  dbInfo->values[static_cast<std::size_t>(FieldOf(DbInfoSpec(), "LabelCount"))] = Value(count);
}

// How many stations there are: as many as are told, or as far beyond as they go that stand where
// records do.  One number by itself far above all others is a damaged number, so at least every
// second one up to the last must be there.
int CountOf(int told, const std::vector<SalvagedRecord>& stations) {
  int count = told;
  int above = 0;
  for (const SalvagedRecord& station : stations) {
    const int number = station.values[0].Int();
    if (number <= told || !station.hasSlot) continue;
    ++above;
    if (2 * above >= number - told) count = number;
  }
  return count;
}

}  // namespace

bool HasStations(const std::filesystem::path& file) {
  std::unique_ptr<jet::PageFile> pages;
  std::unique_ptr<jet::Salvage> salvage;
  return jet::OpenPageFile(file, false, &pages).ok() &&
         jet::Salvage::Open(std::move(pages), &salvage).ok() &&
         !salvage->Records(SoughtStations()).empty();
}

model::Status Salvage(std::unique_ptr<jet::PageFile> damaged,
                      std::unique_ptr<jet::PageFile> salvaged, Fill fill, SalvageReport* report) {
  *report = {};
  std::unique_ptr<jet::Salvage> salvage;
  if (jet::Status status = jet::Salvage::Open(std::move(damaged), &salvage); !status.ok()) {
    return status;
  }
  std::vector<SalvagedRecord> dbInfo = salvage->Records(SoughtDbInfo());
  std::vector<SalvagedRecord> stations = salvage->Records(SoughtStations());
  const std::optional<int> stored = StoredCount(dbInfo);
  report->labelCount = CountOf(stored.value_or(kDefaultLabels), stations);
  if (stored && *stored != report->labelCount) {
    report->isCountSound = false;
    SetLabelCount(report->labelCount, &dbInfo[0]);
  }
  std::erase_if(stations, [report](const SalvagedRecord& station) {
    const int number = station.values[0].Int();
    if (number <= report->labelCount) return false;
    report->leftOut.push_back(number);
    return true;
  });

  std::unique_ptr<jet::Database> database;
  if (jet::Status status = jet::Database::Create(std::move(salvaged), &database); !status.ok()) {
    return status;
  }
  jet::Database::Batch batch(*database);
  NewDatabase made(*database, fill, report);
  if (model::Status status = made.Begin(); !status.ok()) return status;
  if (model::Status status = made.AddDbInfo(dbInfo); !status.ok()) return status;
  if (model::Status status = made.AddStations(stations); !status.ok()) return status;
  return batch.Commit();
}

model::Status Salvage(const std::filesystem::path& damaged, const std::filesystem::path& salvaged,
                      Fill fill, SalvageReport* report) {
  std::unique_ptr<jet::PageFile> from;
  if (jet::Status status = jet::OpenPageFile(damaged, false, &from); !status.ok()) return status;
  const auto to = std::make_shared<files::File>();
  if (const std::error_code error =
          files::File::Create(salvaged, files::Rights::OfFolder, to.get())) {
    return StatusOf(files::Failure("make", salvaged, error));
  }
  model::Status status = Salvage(std::move(from), jet::MakePageFile(to), fill, report);
  if (status.ok()) {
    if (const std::error_code error = to->Sync()) {
      status = StatusOf(files::Failure("write", salvaged, error));
    }
  }
  if (!status.ok()) {
    to->Close();
    (void)files::Remove(salvaged);  // the failure is the one to be told of
  }
  return status;
}

}  // namespace db
