// SPDX-License-Identifier: MIT

#ifndef TESTS_SUPPORT_SILENT_LINK_DISPLAY_H_
#define TESTS_SUPPORT_SILENT_LINK_DISPLAY_H_

#include "switcher/link.h"

namespace test {

// Shows nothing of the link, for tests that are not about it.
class SilentLinkDisplay : public switcher::LinkDisplay {
 public:
  void ShowLinkText(std::string_view /*text*/) override {}
  void StartDecodeTimer() override {}
  void ShowBlockedCode(std::optional<std::uint8_t> /*code*/) override {}
};

}  // namespace test

#endif  // TESTS_SUPPORT_SILENT_LINK_DISPLAY_H_
