// SPDX-License-Identifier: MIT

#include "db/jet/record_order.h"

#include <algorithm>

#include "db/jet/index_page.h"
#include "db/jet/key_codec.h"
#include "db/jet/value_codec.h"

namespace jet {
namespace {

constexpr std::uint8_t kNullFirst = 0;
constexpr std::uint8_t kThenValues = 1;

}  // namespace

void AppendOrder(const Format& format, const Column& column, const ByteView* content, Bytes* key) {
  if (content == nullptr && !column.IsBoolean()) {
    key->push_back(kNullFirst);
    return;
  }
  key->push_back(kThenValues);
  if (column.IsText()) {
    AppendTextOrder(format, *content, key);
  } else if (!AppendKey(format, column, true, content, key)) {
    Append(key, *content);
  }
}

Status SortRows(Table& table, std::span<const int> columns, std::vector<RowPointer>* rows) {
  EntryList keys;
  Bytes key;
  Bytes scratch;
  RowPointer row;
  Status status = table.FirstRow(&row);
  for (; status.ok() && row; status = table.NextRow(row, &row)) {
    RowView view;
    status = table.ReadRow(row, &view);
    if (!status.ok()) return status;
    key.clear();
    for (const int column : columns) {
      bool present = false;
      ByteView content;
      status = table.ReadContent(view, column, &scratch, &present, &content);
      if (!status.ok()) {
        return Status(status.Error(), status.Text(),
                      status.Page() == kNoPage ? row.page : status.Page());
      }
      AppendOrder(table.GetFormat(), table.Def().columns[column], present ? &content : nullptr,
                  &key);
    }
    AppendRowPointer(&key, row);  // equal records stay in storage order
    keys.Add(key);
  }
  if (!status.ok()) return status;
  std::vector<std::size_t> order(keys.Count());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::sort(order.begin(), order.end(),
            [&keys](std::size_t a, std::size_t b) { return CompareBytes(keys[a], keys[b]) < 0; });
  rows->reserve(order.size());
  for (const std::size_t i : order) rows->push_back(EntryRow(keys[i]));
  return {};
}

SoughtValue::SoughtValue(const Format& format, const Column& column, const Value& value)
    : format_(format), column_(column) {
  if (value.IsNull()) {
    isNull_ = true;
    possible_ = !column.IsBoolean();
  } else {
    bool isTrue = true;
    possible_ = EncodeSought(format, column, value, &bytes_, &isTrue);
    isNull_ = !isTrue;
    content_ = bytes_;
  }
  if (possible_) AppendOrder(format, column, Content(), &order_);
}

bool SoughtValue::Equals(const ByteView* content) const {
  Bytes order;
  AppendOrder(format_, column_, content, &order);
  return order == order_;
}

}  // namespace jet
