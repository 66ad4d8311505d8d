// SPDX-License-Identifier: MIT

#include "views/rules/button_tip.h"

#include <vector>

#include "model/flag_string.h"
#include "stations/operations.h"

namespace rules {
namespace {

constexpr int kTipTargets = 32;
constexpr int kTipTargetsPerLine = 8;

}  // namespace

std::string ButtonTip(const stations::ButtonProgram& button, const stations::TargetLabels& labels,
                      int targetCount) {
  const std::vector<std::string>& captions = labels.Captions(button.type.value, targetCount).value;
  std::string tip = stations::OperationOf(button.type.value).label;
  int count = 0;
  for (std::size_t i = 0; i < captions.size(); ++i) {
    if (!model::FlagIsSet(button.targets.value, static_cast<int>(i) + 1)) continue;
    if (++count > kTipTargets) continue;
    if (count == 1) {
      tip += ": ";
    } else {
      tip += count % kTipTargetsPerLine == 1 ? ",\n" : ", ";
    }
    tip += captions[i];
  }
  if (count > kTipTargets) tip += " … (" + std::to_string(count) + ")";
  return tip;
}

}  // namespace rules
