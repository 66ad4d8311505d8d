// SPDX-License-Identifier: MIT

#include "db/schema.h"

#include <array>
#include <memory>
#include <system_error>
#include <utility>

#include "db/station_fields.h"
#include "model/padded.h"

namespace db {

namespace {

using jet::FieldType;

constexpr int kStations = kDefaultLabels / 2;  // and as many further channels
constexpr int kTalk = 0;                       // button type
constexpr int kInactive = 254;                 // opto type: does nothing
constexpr int kInputsPerUnit = 8;              // inputs of one HRJ unit
constexpr int kOutputsPerUnit = 2;             // outputs of one QDV unit

jet::FieldSpec IntegerField(std::string name) {
  return {.name = std::move(name), .type = FieldType::Integer};
}

jet::FieldSpec TextField(std::string name, int size) {
  return {.name = std::move(name), .type = FieldType::Text, .size = size, .allowZeroLength = true};
}

jet::FieldSpec MemoField(std::string name) {
  return {.name = std::move(name), .type = FieldType::Memo, .allowZeroLength = true};
}

// Sets fields one after the other and keeps the first failure.
class RecordWriter {
 public:
  explicit RecordWriter(jet::RecordSet& records) : records_(records), status_(records.AddNew()) {}

  void Set(std::string_view field, const jet::Value& value) {
    if (status_.ok()) status_ = records_.Set(field, value);
  }
  void Set(int field, const jet::Value& value) {
    if (status_.ok()) status_ = records_.Set(field, value);
  }

  jet::Status Update() { return status_.ok() ? records_.Update() : status_; }

 private:
  jet::RecordSet& records_;
  jet::Status status_;
};

// All flags clear but one (from 1).
std::string OnlyFlag(int member) {
  std::string flags(kFlags, '0');
  flags[static_cast<std::size_t>(member) - 1] = '1';
  return flags;
}

jet::Status AddDbInfo(jet::Database& database) {
  std::unique_ptr<jet::RecordSet> records;
  if (jet::Status status = database.OpenTable(kDbInfoTable, &records); !status.ok()) return status;
  RecordWriter record(*records);
  record.Set("DbaseVer", "Version 2.12 - 04/17/2002");
  record.Set("StationCount", kStations);
  record.Set("ChannelCount", kStations);
  record.Set("LabelCount", kDefaultLabels);
  record.Set("ButtonCount", kButtons);
  record.Set("ChkBoxCount", 64);
  record.Set("InCount", 64);
  record.Set("OutCount", 64);
  record.Set("RelayCount", 64);
  record.Set("OptoCount", 64);
  return record.Update();
}

// Texts of a station's own position (number 1..64).
void SetStationTexts(RecordWriter& record, int number) {
  const std::string digits = model::Padded(number, 3);
  const int unit = (number - 1) / kInputsPerUnit + 1;
  const int channel = (number - 1) % kInputsPerUnit + 1;
  const int outputUnit = (number + 1) / kOutputsPerUnit;
  record.Set(kHiddenField, 0);
  record.Set(kLabelField, "Sta. " + digits);
  record.Set(kNotesField, "Notes for Station " + digits);
  record.Set(kSysOutputField, "QDV(" + std::to_string(outputUnit) + ") - " +
                                  (number % kOutputsPerUnit == 1 ? "Ch A" : "Ch B"));
  record.Set(kSysInputField, "HRJ(" + std::to_string(unit) + ") - Ch " + std::to_string(channel));
}

// Texts of a further channel (number 1..64, stored as record 65..128).
void SetChannelTexts(RecordWriter& record, int number) {
  const std::string digits = model::Padded(number, 3);
  record.Set(kHiddenField, 1);
  record.Set(kLabelField, "Ext. " + digits);
  record.Set(kNotesField, "Notes for Channel " + digits);
  record.Set(kSysOutputField, "Virtual Output " + digits);
  record.Set(kSysInputField, "Virtual Input " + digits);
}

// What every station has for a button: its fields by index, and the flags.
struct DefaultButton {
  int type = 0;
  int first = 0;
  int prog = 0;
  jet::Value flags;
};
using DefaultButtons = std::array<DefaultButton, kButtons>;

jet::Status AddStation(jet::RecordSet& records, int stationNum, const DefaultButtons& buttons) {
  const bool extension = stationNum > kStations;
  const int number = extension ? stationNum - kStations : stationNum;
  const std::string ownFlag = OnlyFlag(number);

  RecordWriter record(records);
  record.Set(kStationNumField, stationNum);
  if (extension) {
    SetChannelTexts(record, number);
  } else {
    SetStationTexts(record, number);
  }
  record.Set(kInLabelField, "Inpt " + model::Padded(number, 3));
  record.Set(kInhibitsField, ownFlag);  // nobody hears himself
  record.Set(kRelaysField, std::string(kFlags, '0'));
  record.Set(kOptoTypeField, kInactive);
  record.Set(kOptoChannelField, number);
  record.Set(kOptoFirstField, number);
  record.Set(kOptoStationsField, ownFlag);
  for (int button = 1; button <= kButtons; ++button) {
    const DefaultButton& fields = buttons[static_cast<std::size_t>(button - 1)];
    record.Set(fields.type, kTalk);
    record.Set(fields.first, button);
    record.Set(fields.prog, fields.flags);
  }
  return record.Update();
}

jet::Status AddStations(jet::Database& database) {
  std::unique_ptr<jet::RecordSet> records;
  if (jet::Status status = database.OpenTable(kStationsTable, &records); !status.ok()) {
    return status;
  }
  DefaultButtons buttons;
  for (int button = 1; button <= kButtons; ++button) {
    buttons[static_cast<std::size_t>(button - 1)] = {
        .type = records->FieldIndex(ButtonField(button, kButtonType)),
        .first = records->FieldIndex(ButtonField(button, kButtonFirst)),
        .prog = records->FieldIndex(ButtonField(button, kButtonTargets)),
        .flags = OnlyFlag(button)};
  }
  for (int stationNum = 1; stationNum <= kDefaultLabels; ++stationNum) {
    if (jet::Status status = AddStation(*records, stationNum, buttons); !status.ok()) {
      return status;
    }
  }
  return {};
}

}  // namespace

jet::TableSpec DbInfoSpec() {
  jet::TableSpec table{.name = kDbInfoTable, .fields = {TextField("DbaseVer", 64)}};
  for (const char* count : {"StationCount", "ChannelCount", "LabelCount", "ButtonCount",
                            "ChkBoxCount", "InCount", "OutCount", "RelayCount", "OptoCount"}) {
    table.fields.push_back(IntegerField(count));
  }
  return table;
}

jet::TableSpec StationsSpec() {
  jet::TableSpec table{.name = kStationsTable,
                       .fields = {
                           IntegerField(kStationNumField),
                           IntegerField(kHiddenField),
                           TextField(kLabelField, 8),
                           TextField(kNotesField, 128),
                           TextField(kInLabelField, 8),
                           TextField(kSysOutputField, 20),
                           TextField(kSysInputField, 20),
                           MemoField(kInhibitsField),
                           MemoField(kRelaysField),
                           IntegerField(kOptoTypeField),
                           IntegerField(kOptoChannelField),
                           IntegerField(kOptoFirstField),
                           MemoField(kOptoStationsField),
                       }};
  for (int button = 1; button <= kButtons; ++button) {
    table.fields.push_back(IntegerField(ButtonField(button, kButtonType)));
    table.fields.push_back(IntegerField(ButtonField(button, kButtonFirst)));
    table.fields.push_back(MemoField(ButtonField(button, kButtonTargets)));
  }
  return table;
}

model::Status CreateEmptyTables(jet::Database& database) {
  if (jet::Status status = database.CreateTable(DbInfoSpec()); !status.ok()) return status;
  const std::array<jet::IndexSpec, 2> indexes{
      jet::IndexSpec{
          .name = kStationNumIndex, .fields = {kStationNumField}, .primary = true, .unique = true},
      jet::IndexSpec{.name = kLabelField, .fields = {kLabelField}},
  };
  return database.CreateTable(StationsSpec(), indexes);
}

model::Status CreateTables(jet::Database& database) {
  // One write of the whole file instead of thousands of single pages.
  jet::Database::Batch batch(database);
  if (model::Status status = CreateEmptyTables(database); !status.ok()) return status;
  if (jet::Status status = AddDbInfo(database); !status.ok()) return status;
  if (jet::Status status = AddStations(database); !status.ok()) return status;
  return batch.Commit();
}

model::Status CreateDatabase(const std::filesystem::path& path) {
  std::unique_ptr<jet::PageFile> file;
  if (jet::Status status = jet::CreatePageFile(path, &file); !status.ok()) return status;
  return CreateDatabase(std::move(file));
}

model::Status CreateDatabase(std::unique_ptr<jet::PageFile> file) {
  std::unique_ptr<jet::Database> database;
  if (jet::Status status = jet::Database::Create(std::move(file), &database); !status.ok()) {
    return status;
  }
  return CreateTables(*database);
}

}  // namespace db
