// SPDX-License-Identifier: MIT

#include "tools/mdbdump/json_dump.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <memory>
#include <string_view>

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

constexpr char kDigits[] = "0123456789abcdef";

void AppendNumber(std::int64_t number, std::string* json) {
  char buffer[24];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
  json->append(buffer, end);
}

void AppendHexNumber(std::uint64_t number, std::string* json) {
  char buffer[24];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, number, 16).ptr;
  json->append(buffer, end);
}

void AppendString(std::string_view text, std::string* json) {
  json->push_back('"');
  std::size_t plain = 0;  // begin of what needs no escape
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<std::uint8_t>(text[i]);
    if (c >= 0x20 && c != '"' && c != '\\') continue;
    json->append(text, plain, i - plain);
    plain = i + 1;
    if (c < 0x20) {
      json->append("\\u00").append({kDigits[c >> 4], kDigits[c & 15]});
    } else {
      json->append({'\\', static_cast<char>(c)});
    }
  }
  json->append(text, plain);
  json->push_back('"');
}

void AppendPlace(RowPointer row, std::string* json) {
  json->push_back('"');
  AppendNumber(row.page, json);
  json->push_back(':');
  AppendNumber(row.slot, json);
  json->push_back('"');
}

void AppendHex(jet::ByteView bytes, std::string* json) {
  for (const std::uint8_t byte : bytes) json->append({kDigits[byte >> 4], kDigits[byte & 15]});
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

void AppendReal(const char* name, std::uint64_t bits, std::string* json) {
  json->append("{\"").append(name).append("\":\"");
  AppendHexNumber(bits, json);
  json->append("\"}");
}

void AppendValue(const Value& value, std::string* json) {
  switch (value.GetKind()) {
    case Value::Kind::Null:
      json->append("null");
      break;
    case Value::Kind::Bool:
      json->append(value.Bool() ? "true" : "false");
      break;
    case Value::Kind::Int:
      AppendNumber(value.Int(), json);
      break;
    case Value::Kind::Currency: {
      const bool negative = value.Currency() < 0;
      const auto amount = static_cast<std::uint64_t>(value.Currency());
      json->append("{\"dec\":\"");
      jet::AppendDecimal(0, negative ? 0 - amount : amount, negative, 4, json);
      json->append("\"}");
      break;
    }
    case Value::Kind::Single:
      AppendReal("float", std::bit_cast<std::uint32_t>(static_cast<float>(value.Real())), json);
      break;
    case Value::Kind::Double:
      AppendReal("double", std::bit_cast<std::uint64_t>(value.Real()), json);
      break;
    case Value::Kind::DateTime:
      AppendReal("date", std::bit_cast<std::uint64_t>(value.Real()), json);
      break;
    case Value::Kind::Text:
      AppendString(value.Text(), json);
      break;
    case Value::Kind::Binary:
      json->append("{\"hex\":\"");
      AppendHex(value.Bytes(), json);
      json->append("\"}");
      break;
    case Value::Kind::Guid:
      AppendString(GuidText(value.Bytes()), json);
      break;
    case Value::Kind::Decimal:
      json->append("{\"dec\":\"").append(value.Text()).append("\"}");
      break;
  }
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
  std::string name = "UNKNOWN_";
  AppendHexNumber(static_cast<std::uint8_t>(type), &name);
  return name;
}

void AppendFlag(const char* name, bool value, std::string* json) {
  json->append("\"").append(name).append("\": ").append(value ? "true" : "false");
}

class TableDump {
 public:
  TableDump(jet::Table& table, std::string* json, std::vector<std::string>* problems)
      : table_(table), json_(*json), problems_(*problems) {}

  void Run() {
    json_ += "  ";
    AppendString(table_.Name(), &json_);
    json_ += ": {\n   \"columns\": [";
    const char* separator = "\n";
    for (const Column& column : table_.Def().columns) {
      json_ += separator;
      AppendColumn(column);
      separator = ",\n";
    }
    json_ += "\n   ],\n";
    AppendRows();
    json_ += "   \"indexes\": {";
    separator = "\n";
    for (const jet::LogicalIndex& index : table_.Def().logicalIndexes) {
      json_ += separator;
      AppendIndex(index);
      separator = ",\n";
    }
    json_ += "\n   }\n  }";
  }

 private:
  void Report(const Status& status) {
    problems_.push_back("table \"" + table_.Name() + "\": " + status.Description());
  }

  void AppendColumn(const Column& column) {
    json_ += "    {\"name\": ";
    AppendString(column.name, &json_);
    json_ += ", \"type\": \"" + TypeName(column.type) + "\", \"bytes\": ";
    AppendNumber(column.length, &json_);
    json_ += ", ";
    AppendFlag("var", !column.IsFixed(), &json_);
    json_ += ", ";
    const bool isAutoGuid =
        column.type == FieldType::Guid && (column.flags & jet::kColumnAutoGuid) != 0;
    AppendFlag("auto", column.IsAutoNumber() || isAutoGuid, &json_);
    if (column.hasAllowZeroLength) {
      json_ += ", ";
      AppendFlag("allowZeroLength", column.allowZeroLength, &json_);
    }
    json_ += "}";
  }

  void AppendRows() {
    std::string rows;
    std::int64_t count = 0;
    RowPointer row;
    Status status = table_.FirstRow(&row);
    while (true) {
      if (!status.ok()) {
        // The rest of the page is lost; the walk goes on behind it.
        Report(status);
        if (status.Page() == jet::kNoPage || status.Page() <= row.page) break;
        row = {status.Page(), 0xFF};
      } else if (!row) {
        break;
      } else {
        rows += count++ == 0 ? "\n" : ",\n";
        AppendRow(row, &rows);
      }
      status = table_.NextRow(row, &row);
    }
    json_ += "   \"rowCount\": ";
    AppendNumber(count, &json_);
    json_ += ",\n   \"rows\": [" + rows + "\n   ],\n";
  }

  void AppendRow(RowPointer row, std::string* json) {
    *json += "    [";
    AppendPlace(row, json);
    jet::RowView view;
    const Status found = table_.ReadRow(row, &view);
    if (!found.ok()) Report(found);
    for (std::size_t i = 0; i < table_.Def().columns.size(); ++i) {
      *json += ", ";
      Status status = found;
      if (status.ok()) {
        status = table_.ReadValue(view, static_cast<int>(i), &value_);
        if (!status.ok()) Report(status);
      }
      if (status.ok()) {
        AppendValue(value_, json);
      } else {
        *json += "\"?\"";
      }
    }
    *json += "]";
  }

  void AppendIndex(const jet::LogicalIndex& index) {
    const jet::RealIndex& real = table_.Def().realIndexes[index.real];
    json_ += "    ";
    AppendString(index.name, &json_);
    json_ += ": {";
    AppendFlag("primary", index.kind == jet::LogicalIndex::kPrimary, &json_);
    json_ += ", ";
    AppendFlag("unique", real.IsUnique(), &json_);
    json_ += ", ";
    AppendFlag("ignoreNulls", real.IgnoresNulls(), &json_);
    json_ += ", ";
    AppendFlag("foreignKey", index.kind == jet::LogicalIndex::kForeignKey, &json_);
    json_ += ", \"columns\": [";
    const char* separator = "";
    for (const jet::IndexColumn& column : real.columns) {
      json_ += separator;
      json_ += "[";
      AppendString(table_.Def().columns[column.column].name, &json_);
      json_ += column.ascending ? ", true]" : ", false]";
      separator = ", ";
    }
    json_ += "], \"entries\": [";
    separator = "";
    jet::IndexCursor cursor(table_.GetStore().GetPager(), table_.Def().page, real.root);
    Status status = cursor.SeekFirst();
    while (status.ok() && !cursor.AtEnd()) {
      json_ += separator;
      AppendPlace(cursor.Row(), &json_);
      separator = ", ";
      status = cursor.Next();
    }
    if (!status.ok()) Report(status);
    json_ += "]}";
  }

  jet::Table& table_;
  std::string& json_;
  std::vector<std::string>& problems_;
  Value value_;
};

// The software that made the file, told by a property of the database object.
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
  *json += "{\n \"format\": ";
  AppendString(FormatName(store), json);
  *json += ",\n \"tables\": {";
  const char* separator = "\n";
  for (const std::string& name : database.TableNames()) {
    std::shared_ptr<jet::Table> table;
    const Status status = store.OpenTable(name, &table);
    if (!status.ok()) {
      problems->push_back("table \"" + name + "\": " + status.Description());
      continue;
    }
    *json += separator;
    TableDump(*table, json, problems).Run();
    separator = ",\n";
  }
  *json += "\n }\n}\n";
  return {};
}

}  // namespace mdbdump
