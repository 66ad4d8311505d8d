// SPDX-License-Identifier: MIT

#ifndef SWITCHER_WIRE_LABEL_SELECTOR_H_
#define SWITCHER_WIRE_LABEL_SELECTOR_H_

namespace switcher {

// Which labels a label message is about, to the switcher and from it; panels are sent them as the
// kind of a label table.
inline constexpr int kOutputLabels = 20;
inline constexpr int kInputLabels = 10;

}  // namespace switcher

#endif  // SWITCHER_WIRE_LABEL_SELECTOR_H_
