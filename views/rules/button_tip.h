// SPDX-License-Identifier: MIT

#ifndef VIEWS_RULES_BUTTON_TIP_H_
#define VIEWS_RULES_BUTTON_TIP_H_

#include <string>

#include "stations/button_program.h"
#include "stations/target_labels.h"

namespace rules {

// What a button of a panel does, with all its targets among the first `targetCount`, as UTF-8:
// "TALK: STUDIO A, MIC ANCH".  Lines are broken between targets; of very many the last ones are
// only counted.  What cannot be read is not there.
std::string ButtonTip(const stations::ButtonProgram& button, const stations::TargetLabels& labels,
                      int targetCount);

}  // namespace rules

#endif  // VIEWS_RULES_BUTTON_TIP_H_
