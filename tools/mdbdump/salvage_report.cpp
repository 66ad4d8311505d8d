// SPDX-License-Identifier: MIT

#include "tools/mdbdump/salvage_report.h"

#include <vector>

namespace mdbdump {
namespace {

std::string Text(const std::string& text) { return text; }
std::string Text(int number) { return std::to_string(number); }

// "6, 7, 8"
template <typename T>
std::string List(const std::vector<T>& items) {
  std::string list;
  for (const T& item : items) list += (list.empty() ? "" : ", ") + Text(item);
  return list;
}

}  // namespace

std::string Describe(const db::SalvageReport& report, db::Fill fill) {
  const bool isFilled = fill == db::Fill::Defaults;
  const std::string noRecord = isFilled ? "; with the default record in the new file\n"
                                        : "; without a record in the new file\n";
  const std::string noValue =
      isFilled ? "; with the default in the new file\n" : "; empty in the new file\n";
  std::string text = std::string("DbInfo: ") + (report.hasDbInfo ? "1" : "0") + " of 1 records\n";
  text += "Stations: " + Text(report.stations) + " of " + Text(report.labelCount) + " records\n";
  if (!report.hasDbInfo) text += "missing: the counts" + noRecord;
  if (report.hasDbInfo && !report.isCountSound) {
    text += "wrong: the count of stations; put right in the new file\n";
  }
  if (!report.leftOut.empty()) {
    text += "doubtful: stations " + List(report.leftOut) +
            ", above the count; left out of the new file\n";
  }
  if (!report.missing.empty()) text += "missing: stations " + List(report.missing) + noRecord;
  for (const db::UnreadableStation& station : report.incomplete) {
    text += "missing: station " + Text(station.station) + ": " + List(station.fields) + noValue;
  }
  for (const db::UnreadableStation& station : report.doubtful) {
    text += "doubtful: station " + Text(station.station) + ": " + List(station.fields) +
            "; as found in the new file\n";
  }
  return text;
}

}  // namespace mdbdump
