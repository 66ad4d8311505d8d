// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_RECORDING_CHANGES_H_
#define TESTS_SUPPORT_RECORDING_CHANGES_H_

#include <span>
#include <string>
#include <utility>
#include <vector>

#include "stations/change.h"
#include "stations/journal/act.h"

namespace test {

// Writes down what is announced: "operator 5: Label MIC > CAM, Hidden 0 > 1".
class RecordingChanges : public stations::ChangeObserver {
 public:
  using ChangeObserver::ChangeObserver;

  void Changed(std::span<const stations::Change> changes) override {
    ++times;
    for (const stations::Change& change : changes) seen.push_back(InWords(change));
  }

  // What was announced since the last question.
  std::vector<std::string> Take() { return std::exchange(seen, {}); }

  std::vector<std::string> seen;
  int times = 0;  // what is stored at once is announced at once

 private:
  static std::string InWords(const stations::Change& change) {
    std::string line(stations::WordOf(change.origin));
    line += " " + std::to_string(change.station);
    const char* separator = ": ";
    for (const stations::FieldChange& field : change.fields) {
      line += separator + field.field + " " + InWords(field.before) + " > " + InWords(field.after);
      separator = ", ";
    }
    return line;
  }

  static std::string InWords(const jet::Value& value) {
    if (value.IsNull()) return "null";
    return value.GetKind() == jet::Value::Kind::Int ? std::to_string(value.Int()) : value.Text();
  }
};

}  // namespace test

#endif  // TESTS_SUPPORT_RECORDING_CHANGES_H_
