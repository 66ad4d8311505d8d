// SPDX-License-Identifier: MIT

#ifndef TESTS_GATEWAY_EMBER_COMMANDS_H_
#define TESTS_GATEWAY_EMBER_COMMANDS_H_

#include <vector>

#include "gateway/ember/ber.h"
#include "gateway/ember/glow.h"
#include "gateway/ember/s101.h"

namespace test {

// The element at a path with a command: 30 is Subscribe, 31 Unsubscribe, 32 GetDirectory.  `type`
// is the number of the qualified element: 9 a parameter, 10 a node.
inline ember::Bytes Commanded(unsigned type, const ember::Path& path, int command) {
  using ember::Application;
  using ember::BerValue;
  using ember::Context;
  const ember::Bytes asked =
      BerValue(Application(2), BerValue(Context(0), ember::BerInteger(command)));
  const ember::Bytes children =
      BerValue(Context(2), BerValue(Application(4), BerValue(Context(0), asked)));
  return BerValue(Application(type), {BerValue(Context(0), ember::BerOid(path)), children});
}

// The frames with which a consumer asks for the directory of the element at a path.
inline ember::Bytes Asked(const ember::Path& path) {
  const std::vector<ember::Bytes> elements{Commanded(10, path, 32)};
  return ember::Packets(ember::GlowMessage(elements));
}

}  // namespace test

#endif  // TESTS_GATEWAY_EMBER_COMMANDS_H_
