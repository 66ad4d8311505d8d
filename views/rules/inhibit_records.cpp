// SPDX-License-Identifier: MIT

#include "views/rules/inhibit_records.h"

namespace rules {
namespace {

constexpr std::string_view kInhibits = "Inhibits";

}  // namespace

model::Status FindInhibits(jet::RecordSet& stations, int output,
                           std::optional<std::string>* flags) {
  flags->reset();
  if (const jet::Status found = stations.FindFirst("StationNum", output); !found.ok()) return found;
  if (stations.NoMatch()) return {};
  jet::Value value;
  if (const jet::Status read = stations.Get(kInhibits, &value); !read.ok()) return read;
  *flags = value.Text();
  return {};
}

model::Status StoreInhibits(jet::RecordSet& stations, std::string_view flags) {
  if (const jet::Status begun = stations.Edit(); !begun.ok()) return begun;
  jet::Status stored = stations.Set(kInhibits, flags);
  if (stored.ok()) stored = stations.Update();
  if (!stored.ok()) stations.CancelUpdate();
  return stored;
}

}  // namespace rules
