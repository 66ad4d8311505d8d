// SPDX-License-Identifier: MIT

#include "stations/journal/act.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

namespace stations {
namespace {

// In the order in which it is written.
using Json = nlohmann::ordered_json;

constexpr Origin kOrigins[] = {Origin::Operator,   Origin::Navigation, Origin::Switcher,
                               Origin::Undo,       Origin::Redo,       Origin::Restore,
                               Origin::Comparison, Origin::Backup,     Origin::File};

bool CanBeWritten(const jet::Value& value) {
  using Kind = jet::Value::Kind;
  const Kind kind = value.GetKind();
  return kind == Kind::Null || kind == Kind::Int || kind == Kind::Text;
}

Json JsonOf(const jet::Value& value) {
  if (value.IsNull()) return nullptr;
  return value.GetKind() == jet::Value::Kind::Int ? Json(value.Int()) : Json(value.Text());
}

bool ReadValue(const Json& json, jet::Value* value) {
  if (json.is_string()) {
    *value = jet::Value(json.get_ref<const std::string&>());
  } else if (json.is_number_integer()) {
    using Limits = std::numeric_limits<std::int32_t>;
    const bool isUnsigned = json.is_number_unsigned();
    if (isUnsigned && json.get<std::uint64_t>() > Limits::max()) return false;
    if (!isUnsigned && json.get<std::int64_t>() < Limits::min()) return false;
    *value = jet::Value(json.get<std::int32_t>());
  } else {
    *value = jet::Value();
    return json.is_null();
  }
  return true;
}

bool ReadChange(const Json& json, Origin origin, Change* change) {
  const auto station = json.find("station");
  const auto fields = json.find("fields");
  jet::Value number;
  if (station == json.end() || !ReadValue(*station, &number) || number.Int() < 1 ||
      fields == json.end() || !fields->is_object() || fields->empty()) {
    return false;
  }
  change->origin = origin;
  change->station = number.Int();
  for (const auto& [name, values] : fields->items()) {
    FieldChange field{.field = name, .before = {}, .after = {}};
    if (!values.is_array() || values.size() != 2 || !ReadValue(values[0], &field.before) ||
        !ReadValue(values[1], &field.after)) {
      return false;
    }
    change->fields.push_back(std::move(field));
  }
  return true;
}

std::string TextOf(const Json& json, const char* member) {
  const auto found = json.find(member);
  return found != json.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace

std::string_view WordOf(Origin origin) {
  switch (origin) {
    case Origin::Operator:
      return "operator";
    case Origin::Navigation:
      return "navigation";
    case Origin::Switcher:
      return "switcher";
    case Origin::Undo:
      return "undo";
    case Origin::Redo:
      return "redo";
    case Origin::Restore:
      return "restore";
    case Origin::Comparison:
      return "comparison";
    case Origin::Backup:
      return "backup";
    case Origin::File:
      return "file";
  }
  return {};
}

std::string WriteAct(const Act& act) {
  Json json;
  json["title"] = act.title;
  json["time"] = act.time;
  json["origin"] = WordOf(act.origin);
  if (act.group != 0) json["group"] = act.group;
  Json& changes = json["changes"] = Json::array();
  for (const Change& change : act.changes) {
    Json fields = Json::object();
    for (const FieldChange& field : change.fields) {
      if (!CanBeWritten(field.before) || !CanBeWritten(field.after)) continue;
      fields[field.field] = {JsonOf(field.before), JsonOf(field.after)};
    }
    if (change.station < 1 || fields.empty()) continue;
    changes.push_back({{"station", change.station}, {"fields", std::move(fields)}});
  }
  // What is no UTF-8 must not keep the rest from being written.
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

bool ReadAct(std::string_view text, Act* act) {
  const Json json = Json::parse(text, nullptr, false);
  if (!json.is_object()) return false;
  const auto* const origin = std::ranges::find(kOrigins, TextOf(json, "origin"), WordOf);
  const auto changes = json.find("changes");
  if (origin == std::end(kOrigins) || changes == json.end() || !changes->is_array()) return false;
  *act = {};
  act->title = TextOf(json, "title");
  act->time = TextOf(json, "time");
  act->origin = *origin;
  if (const auto group = json.find("group"); group != json.end()) {
    if (!group->is_number_unsigned()) return false;
    act->group = group->get<std::int64_t>();
  }
  for (const Json& one : *changes) {
    Change change;
    if (!ReadChange(one, act->origin, &change)) return false;
    act->changes.push_back(std::move(change));
  }
  return true;
}

}  // namespace stations
