// SPDX-License-Identifier: MIT

#include "tools/mdbdump/json_dump.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <utility>

#include "db/jet/index_cursor.h"
#include "db/jet/property_blob.h"
#include "db/jet/store.h"
#include "db/jet/table.h"
#include "db/jet/value_codec.h"

namespace mdbdump {
namespace {

using jet::Column;
using jet::FieldType;
using jet::RowPointer;
using jet::Status;
using jet::Value;

// Its members stay in the order in which they were added.
using Json = nlohmann::ordered_json;

// On one line; bytes that are not UTF-8 are replaced.
std::string Line(const Json& json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

// A list of items, each on a line of its own behind the indent.
class Lines {
 public:
  explicit Lines(const char* indent) : indent_(indent) {}

  void Add(const std::string& line) { text_ += (text_.empty() ? "\n" : ",\n") + indent_ + line; }
  const std::string& Text() const { return text_; }

 private:
  const std::string indent_;
  std::string text_;
};

std::string Hex(std::uint64_t number) {
  char buffer[24];
  return {buffer, std::to_chars(buffer, buffer + sizeof buffer, number, 16).ptr};
}

std::string Place(RowPointer row) {
  return std::to_string(row.page) + ":" + std::to_string(row.slot);
}

std::string HexText(jet::ByteView bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : bytes) text.append({kDigits[byte >> 4], kDigits[byte & 15]});
  return text;
}

// "{3F2504E0-4F89-11D3-9A0C-0305E82C3301}": three little-endian numbers, then eight bytes.
std::string GuidText(jet::ByteView bytes) {
  constexpr int kOrder[] = {3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15};
  std::string text = "{";
  for (const int index : kOrder) {
    if (index < 0) {
      text += '-';
      continue;
    }
    for (const int half : {bytes[index] >> 4, bytes[index] & 15}) {
      text += static_cast<char>(half < 10 ? '0' + half : 'A' + half - 10);
    }
  }
  return text + "}";
}

Json ValueToJson(const Value& value) {
  switch (value.GetKind()) {
    case Value::Kind::Null:
      break;
    case Value::Kind::Bool:
      return value.Bool();
    case Value::Kind::Int:
      return value.Int();
    case Value::Kind::Currency: {
      const bool negative = value.Currency() < 0;
      const auto amount = static_cast<std::uint64_t>(value.Currency());
      std::string text;
      jet::AppendDecimal(0, negative ? 0 - amount : amount, negative, 4, &text);
      return {{"dec", text}};
    }
    case Value::Kind::Single:
      return {{"float", Hex(std::bit_cast<std::uint32_t>(static_cast<float>(value.Real())))}};
    case Value::Kind::Double:
      return {{"double", Hex(std::bit_cast<std::uint64_t>(value.Real()))}};
    case Value::Kind::DateTime:
      return {{"date", Hex(std::bit_cast<std::uint64_t>(value.Real()))}};
    case Value::Kind::Text:
      return value.Text();
    case Value::Kind::Binary:
      return {{"hex", HexText(value.Bytes())}};
    case Value::Kind::Guid:
      return GuidText(value.Bytes());
    case Value::Kind::Decimal:
      return {{"dec", value.Text()}};
  }
  return nullptr;
}

std::string TypeName(FieldType type) {
  switch (type) {
    case FieldType::Boolean:
      return "BOOLEAN";
    case FieldType::Byte:
      return "BYTE";
    case FieldType::Integer:
      return "INT";
    case FieldType::Long:
      return "LONG";
    case FieldType::Currency:
      return "MONEY";
    case FieldType::Single:
      return "FLOAT";
    case FieldType::Double:
      return "DOUBLE";
    case FieldType::DateTime:
      return "SHORT_DATE_TIME";
    case FieldType::Binary:
      return "BINARY";
    case FieldType::Text:
      return "TEXT";
    case FieldType::Ole:
      return "OLE";
    case FieldType::Memo:
      return "MEMO";
    case FieldType::Guid:
      return "GUID";
    case FieldType::Numeric:
      return "NUMERIC";
  }
  return "UNKNOWN_" + Hex(static_cast<std::uint8_t>(type));
}

class TableDump {
 public:
  TableDump(jet::Table& table, std::vector<std::string>* problems)
      : table_(table), problems_(*problems) {}

  // The table as a member of an object.
  std::string Run() {
    Lines columns("    ");
    for (const Column& column : table_.Def().columns) columns.Add(Line(ToJson(column)));
    std::string json =
        Line(table_.Name()) + ": {\n   \"columns\": [" + columns.Text() + "\n   ],\n";
    AppendRows(&json);
    Lines indexes("    ");
    for (const jet::LogicalIndex& index : table_.Def().logicalIndexes) {
      indexes.Add(Line(index.name) + ": " + Line(ToJson(index)));
    }
    return json + "   \"indexes\": {" + indexes.Text() + "\n   }\n  }";
  }

 private:
  void Report(const Status& status) {
    problems_.push_back("table \"" + table_.Name() + "\": " + status.Description());
  }

  static Json ToJson(const Column& column) {
    const bool isAutoGuid =
        column.type == FieldType::Guid && (column.flags & jet::kColumnAutoGuid) != 0;
    Json json = {{"name", column.name},
                 {"type", TypeName(column.type)},
                 {"bytes", column.length},
                 {"var", !column.IsFixed()},
                 {"auto", column.IsAutoNumber() || isAutoGuid}};
    if (column.hasAllowZeroLength) json["allowZeroLength"] = column.allowZeroLength;
    return json;
  }

  void AppendRows(std::string* json) {
    Lines rows("    ");
    std::int64_t count = 0;
    RowPointer row;
    Status status = table_.FirstRow(&row);
    while (true) {
      if (!status.ok()) {
        // The rest of the page is lost; the next page follows.
        Report(status);
        if (status.Page() == jet::kNoPage || status.Page() <= row.page) break;
        row = {status.Page(), 0xFF};
      } else if (!row) {
        break;
      } else {
        ++count;
        rows.Add(Line(ToJson(row)));
      }
      status = table_.NextRow(row, &row);
    }
    *json += "   \"rowCount\": " + std::to_string(count) + ",\n   \"rows\": [" + rows.Text() +
             "\n   ],\n";
  }

  Json ToJson(RowPointer row) {
    Json json = Json::array({Place(row)});
    jet::RowView view;
    const Status found = table_.ReadRow(row, &view);
    if (!found.ok()) Report(found);
    for (std::size_t i = 0; i < table_.Def().columns.size(); ++i) {
      Status status = found;
      if (status.ok()) {
        status = table_.ReadValue(view, static_cast<int>(i), &value_);
        if (!status.ok()) Report(status);
      }
      json.push_back(status.ok() ? ValueToJson(value_) : Json("?"));
    }
    return json;
  }

  Json ToJson(const jet::LogicalIndex& index) {
    const jet::RealIndex& real = table_.Def().realIndexes[index.real];
    Json columns = Json::array();
    for (const jet::IndexColumn& column : real.columns) {
      columns.push_back({table_.Def().columns[column.column].name, column.ascending});
    }
    Json entries = Json::array();
    jet::IndexCursor cursor(table_.GetStore().GetPager(), table_.Def().page, real.root);
    Status status = cursor.SeekFirst();
    while (status.ok() && !cursor.AtEnd()) {
      entries.push_back(Place(cursor.Row()));
      status = cursor.Next();
    }
    if (!status.ok()) Report(status);
    return {{"primary", index.kind == jet::LogicalIndex::kPrimary},
            {"unique", real.IsUnique()},
            {"ignoreNulls", real.IgnoresNulls()},
            {"foreignKey", index.kind == jet::LogicalIndex::kForeignKey},
            {"columns", std::move(columns)},
            {"entries", std::move(entries)}};
  }

  jet::Table& table_;
  std::vector<std::string>& problems_;
  Value value_;
};

// The version of the software that made the file, from a property of the database object.
std::string FormatName(jet::Store& store) {
  if (!store.GetFormat().IsJet4()) return "V1997 [VERSION_3]";
  std::string version;
  const std::vector<jet::CatalogEntry>* entries = nullptr;
  if (store.Catalog(&entries).ok()) {
    for (const jet::CatalogEntry& entry : *entries) {
      std::vector<jet::Property> properties;
      if (entry.name != "MSysDb" || !store.ReadProperties(entry, &properties).ok()) continue;
      for (const jet::Property& property : properties) {
        if (property.name != jet::kAccessVersion) continue;
        for (std::size_t i = 0; i < property.value.size(); i += 2) {
          version += static_cast<char>(property.value[i]);
        }
      }
    }
  }
  if (version.rfind("08", 0) == 0) return "V2000 [VERSION_4]";
  if (version.rfind("09", 0) == 0) return "V2003 [VERSION_4]";
  return "GENERIC_JET4 [VERSION_4]";
}

}  // namespace

Status AppendJson(const jet::Database& database, std::string* json,
                  std::vector<std::string>* problems) {
  jet::Store& store = database.GetStore();
  Lines tables("  ");
  for (const std::string& name : database.TableNames()) {
    std::shared_ptr<jet::Table> table;
    const Status status = store.OpenTable(name, &table);
    if (!status.ok()) {
      problems->push_back("table \"" + name + "\": " + status.Description());
      continue;
    }
    tables.Add(TableDump(*table, problems).Run());
  }
  *json += "{\n \"format\": " + Line(FormatName(store)) + ",\n \"tables\": {" + tables.Text() +
           "\n }\n}\n";
  return {};
}

}  // namespace mdbdump
