// SPDX-License-Identifier: MIT

#include "db/jet/row_codec.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace jet {
namespace {

// An overflow pointer must fit where a row was.
constexpr std::uint32_t kLeastRowSize = 4;
constexpr std::uint8_t kNoJump = 0xFF;

}  // namespace

bool RowView::Parse(const Format& format, const TableDef& def, ByteView row) {
  row_ = row;
  isJet4_ = format.IsJet4();
  const std::uint32_t unit = format.CharSize();  // counts and offsets take as many bytes
  const auto size = static_cast<std::uint32_t>(row.size());
  if (size < unit + 1) return false;
  columnCount_ = isJet4_ ? GetU16(row.data()) : row[0];
  const std::uint32_t maskSize = (columnCount_ + 7) / 8;
  if (columnCount_ > kMaxColumns || size < unit + maskSize) return false;
  maskAt_ = size - maskSize;
  variableCount_ = 0;
  jumpCount_ = 0;
  dataEnd_ = maskAt_;
  if (def.variableEver == 0) return true;

  if (maskAt_ < 2 * unit) return false;
  const std::uint32_t countAt = maskAt_ - unit;
  variableCount_ = isJet4_ ? GetU16(&row[countAt]) : row[countAt];
  if (!isJet4_) jumpCount_ = (size - 1) / 256;
  const std::uint32_t tables = unit * (variableCount_ + 1) + jumpCount_;
  if (variableCount_ > kMaxColumns || countAt < unit + tables) return false;
  offsetsAt_ = countAt - jumpCount_ - unit;
  dataEnd_ = countAt - tables;
  // The table of jumps may have one entry that the data turned out not to need.
  jumpCount_ = std::min(jumpCount_, dataEnd_ / 256);
  return true;
}

std::uint32_t RowView::VariableOffset(std::uint32_t index) const {
  if (isJet4_) return GetU16(&row_[offsetsAt_ - 2 * index]);
  std::uint32_t offset = row_[offsetsAt_ - index];
  // Jump j names the first variable column that begins in the j+1st 256 bytes.
  const std::uint32_t lastJumpAt = maskAt_ - 1;
  for (std::uint32_t j = 0; j < jumpCount_; ++j) {
    if (row_[lastJumpAt - 1 - j] <= index) offset += 256;
  }
  return offset;
}

RowView::Field RowView::Get(const Column& column, ByteView* bytes) const {
  const std::uint32_t number = column.number;
  if (number >= columnCount_) return Field::Null;
  if ((row_[maskAt_ + number / 8] >> (number % 8) & 1) == 0) return Field::Null;
  if (column.IsBoolean()) {
    *bytes = {};
    return Field::Present;
  }
  if (column.IsFixed()) {
    const std::uint32_t begin = (isJet4_ ? 2 : 1) + column.fixedOffset;
    if (begin + column.FixedSize() > dataEnd_) return Field::Null;
    *bytes = row_.subspan(begin, column.FixedSize());
    return Field::Present;
  }
  if (column.variableIndex >= variableCount_) return Field::Null;
  const std::uint32_t begin = VariableOffset(column.variableIndex);
  const std::uint32_t end = VariableOffset(column.variableIndex + 1U);
  if (begin > end || end > dataEnd_) return Field::Bad;
  *bytes = row_.subspan(begin, end - begin);
  return Field::Present;
}

bool RowView::AgreesWithItself(const TableDef& def) const {
  if (columnCount_ > def.columnsEver || variableCount_ > def.variableEver) return false;
  for (std::uint32_t bit = columnCount_; bit % 8 != 0; ++bit) {
    if ((row_[maskAt_ + bit / 8] >> (bit % 8) & 1) != 0) return false;
  }
  std::uint32_t end = isJet4_ ? 2 : 1;
  for (const Column& column : def.columns) {
    if (!column.IsFixed() || column.IsBoolean() || column.number >= columnCount_) continue;
    end = std::max(end, (isJet4_ ? 2 : 1) + column.fixedOffset + column.FixedSize());
  }
  if (end > dataEnd_) return false;
  if (def.variableEver == 0) return true;
  for (std::uint32_t i = 0; i <= variableCount_; ++i) {
    const std::uint32_t offset = VariableOffset(i);
    if (offset < end) return false;
    end = offset;
  }
  if (end != dataEnd_) return false;
  return std::none_of(def.columns.begin(), def.columns.end(), [this](const Column& column) {
    ByteView ignored;
    return !column.IsFixed() && column.variableIndex < variableCount_ &&
           Get(column, &ignored) == Field::Null &&
           VariableOffset(column.variableIndex) != VariableOffset(column.variableIndex + 1U);
  });
}

bool RowView::IsOfToday(const TableDef& def) const {
  return columnCount_ == def.columnsEver && variableCount_ == def.variableEver;
}

bool BuildRow(const Format& format, const TableDef& def, std::span<const RawField> fields,
              Bytes* row) {
  const bool isJet4 = format.IsJet4();
  const std::uint32_t unit = format.CharSize();
  const auto put = [&](std::uint32_t value) {
    row->push_back(static_cast<std::uint8_t>(value));
    if (isJet4) row->push_back(static_cast<std::uint8_t>(value >> 8));
  };

  std::array<const RawField*, kMaxColumns> variables{};
  std::array<std::uint8_t, (kMaxColumns + 7) / 8> mask{};
  std::uint32_t fixedEnd = 0;
  std::size_t size = 0;
  for (std::size_t i = 0; i < def.columns.size(); ++i) {
    const Column& column = def.columns[i];
    if (fields[i].present) {
      mask[column.number / 8] |= static_cast<std::uint8_t>(1U << (column.number % 8));
    }
    if (column.IsBoolean()) continue;
    if (column.IsFixed()) {
      fixedEnd = std::max(fixedEnd, column.fixedOffset + column.FixedSize());
    } else {
      variables[column.variableIndex] = &fields[i];
      if (fields[i].present) size += fields[i].bytes.size();
    }
  }
  if (size > format.maxRowSize) return false;

  const std::uint32_t variableCount = def.variableEver;
  const std::uint32_t maskSize = (def.columnsEver + 7U) / 8;
  if (variableCount == 0 && unit + fixedEnd + maskSize < kLeastRowSize) {
    fixedEnd = kLeastRowSize - unit - maskSize;
  }
  row->clear();
  put(def.columnsEver);
  row->resize(unit + fixedEnd);
  for (std::size_t i = 0; i < def.columns.size(); ++i) {
    const Column& column = def.columns[i];
    if (!column.IsFixed() || column.IsBoolean() || !fields[i].present) continue;
    const std::size_t length = std::min<std::size_t>(fields[i].bytes.size(), column.FixedSize());
    if (length != 0) {
      std::memcpy(row->data() + unit + column.fixedOffset, fields[i].bytes.data(), length);
    }
  }

  if (variableCount > 0) {
    std::array<std::uint32_t, kMaxColumns + 1> offsets;
    for (std::uint32_t i = 0; i < variableCount; ++i) {
      offsets[i] = static_cast<std::uint32_t>(row->size());
      if (variables[i] != nullptr && variables[i]->present) Append(row, variables[i]->bytes);
    }
    offsets[variableCount] = static_cast<std::uint32_t>(row->size());
    for (std::uint32_t i = variableCount + 1; i-- > 0;) put(offsets[i]);
    if (!isJet4) {
      const std::size_t rest = 1 + maskSize;
      std::size_t jumps = 0;
      while (jumps != (row->size() + jumps + rest - 1) / 256) ++jumps;
      for (std::size_t j = jumps; j-- > 0;) {
        const std::uint32_t least = static_cast<std::uint32_t>(256 * (j + 1));
        std::uint32_t first = 0;
        while (first <= variableCount && offsets[first] < least) ++first;
        row->push_back(first <= variableCount ? static_cast<std::uint8_t>(first) : kNoJump);
      }
    }
    put(variableCount);
  }
  row->insert(row->end(), mask.begin(), mask.begin() + maskSize);
  return row->size() <= format.maxRowSize;
}

}  // namespace jet
