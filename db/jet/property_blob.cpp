// SPDX-License-Identifier: MIT

#include "db/jet/property_blob.h"

#include <cstring>

#include "db/jet/text_codec.h"

namespace jet {
namespace {

constexpr std::uint16_t kNamePool = 0x80;
constexpr std::uint16_t kTableBlock = 0;
constexpr std::uint16_t kColumnBlock = 1;
constexpr std::uint32_t kBlockHead = 6;
constexpr std::uint32_t kValueHead = 8;
constexpr std::uint8_t kPartOfDefinition = 1;
constexpr std::uint8_t kBooleanType = 1;

const char* Mark(const Format& format) { return format.IsJet4() ? "MR2" : "KKD"; }

// Reads a text with its length; false when it does not fit.
bool ReadText(const Format& format, ByteView* rest, std::string* text) {
  if (rest->size() < 2) return false;
  const std::size_t length = GetU16(rest->data());
  if (rest->size() - 2 < length) return false;
  text->clear();
  DecodeText(format, rest->subspan(2, length), text);
  *rest = rest->subspan(2 + length);
  return true;
}

bool ReadValues(const Format& format, ByteView block, const std::vector<std::string>& names,
                std::vector<Property>* properties) {
  if (block.size() < 4) return false;
  const std::uint32_t ownerLength = GetU32(block.data());
  if (ownerLength < 6 || ownerLength > block.size()) return false;
  ByteView ownerPart = block.subspan(4, ownerLength - 4);
  std::string owner;
  if (!ReadText(format, &ownerPart, &owner)) return false;
  for (block = block.subspan(ownerLength); !block.empty();) {
    if (block.size() < kValueHead) return false;
    const std::uint32_t length = GetU16(block.data());
    const std::uint32_t nameNumber = GetU16(&block[4]);
    const std::uint32_t valueLength = GetU16(&block[6]);
    if (length < kValueHead + valueLength || length > block.size() || nameNumber >= names.size()) {
      return false;
    }
    const ByteView value = block.subspan(kValueHead, valueLength);
    properties->push_back({owner, names[nameNumber], block[3], Bytes(value.begin(), value.end())});
    block = block.subspan(length);
  }
  return true;
}

bool Parse(const Format& format, ByteView blob, std::vector<Property>* properties) {
  if (blob.size() < 4 || std::memcmp(blob.data(), Mark(format), 4) != 0) return false;
  std::vector<std::string> names;
  for (blob = blob.subspan(4); !blob.empty();) {
    if (blob.size() < kBlockHead) return false;
    const std::uint32_t length = GetU32(blob.data());
    const std::uint16_t kind = GetU16(&blob[4]);
    if (length < kBlockHead || length > blob.size()) return false;
    ByteView body = blob.subspan(kBlockHead, length - kBlockHead);
    if (kind == kNamePool) {
      while (!body.empty()) {
        names.emplace_back();
        if (!ReadText(format, &body, &names.back())) return false;
      }
    } else if (kind == kTableBlock || kind == kColumnBlock) {
      if (!ReadValues(format, body, names, properties)) return false;
    }
    blob = blob.subspan(length);
  }
  return true;
}

void AppendText(const Format& format, std::string_view text, Bytes* out) {
  Bytes stored;
  std::size_t characters = 0;
  (void)EncodeText(format, text, false, &stored, &characters);  // names were checked before
  AppendU16(out, static_cast<std::uint32_t>(stored.size()));
  Append(out, stored);
}

void AppendBlock(std::uint16_t kind, ByteView body, Bytes* blob) {
  AppendU32(blob, static_cast<std::uint32_t>(kBlockHead + body.size()));
  AppendU16(blob, kind);
  Append(blob, body);
}

}  // namespace

bool ParseProperties(const Format& format, ByteView blob, std::vector<Property>* properties) {
  properties->clear();
  if (Parse(format, blob, properties)) return true;
  properties->clear();
  return false;
}

Bytes BuildAllowZeroLength(const Format& format, std::span<const std::string> columns) {
  const auto* mark = reinterpret_cast<const std::uint8_t*>(Mark(format));
  Bytes blob(mark, mark + 4);
  Bytes body;
  AppendText(format, kAllowZeroLength, &body);
  AppendBlock(kNamePool, body, &blob);
  for (const std::string& column : columns) {
    Bytes name;
    AppendText(format, column, &name);
    body.clear();
    AppendU32(&body, static_cast<std::uint32_t>(4 + name.size()));
    Append(&body, name);
    AppendU16(&body, kValueHead + 1);
    body.push_back(kPartOfDefinition);
    body.push_back(kBooleanType);
    AppendU16(&body, 0);  // the only name of the pool
    AppendU16(&body, 1);
    body.push_back(1);
    AppendBlock(kColumnBlock, body, &blob);
  }
  return blob;
}

}  // namespace jet
