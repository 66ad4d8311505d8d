// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_RECORDING_CHANGES_H_
#define TESTS_SUPPORT_RECORDING_CHANGES_H_

#include <string>
#include <utility>
#include <vector>

#include "stations/change.h"

namespace test {

// Writes down what is announced: "operator 5: Label MIC > CAM, Hidden 0 > 1".
class RecordingChanges : public stations::ChangeObserver {
 public:
  using ChangeObserver::ChangeObserver;

  void Changed(const stations::Change& change) override {
    std::string line = change.origin == stations::Origin::Operator ? "operator " : "switcher ";
    line += std::to_string(change.station);
    const char* separator = ": ";
    for (const stations::FieldChange& field : change.fields) {
      line += separator + field.field + " " + InWords(field.before) + " > " + InWords(field.after);
      separator = ", ";
    }
    seen.push_back(line);
  }

  // What was announced since the last question.
  std::vector<std::string> Take() { return std::exchange(seen, {}); }

  std::vector<std::string> seen;

 private:
  static std::string InWords(const jet::Value& value) {
    if (value.IsNull()) return "null";
    return value.GetKind() == jet::Value::Kind::Int ? std::to_string(value.Int()) : value.Text();
  }
};

}  // namespace test

#endif  // TESTS_SUPPORT_RECORDING_CHANGES_H_
