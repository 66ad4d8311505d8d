// SPDX-License-Identifier: MIT

#ifndef APP_SHELL_BLOCKED_LINE_H_
#define APP_SHELL_BLOCKED_LINE_H_

#include <QAction>
#include <QObject>
#include <cstdint>
#include <optional>

#include "app/shell/hint_strip.h"
#include "app/shell/status_bar.h"

namespace app {

// Says that an unknown code holds up everything that the switcher sends, and offers to discard
// it.  Nothing is discarded by itself.
class BlockedLine : public QObject {
  Q_OBJECT

 public:
  struct Services {
    QWidget& window;  // owns the object and its command
    StatusBar& status;
    HintStrip& hints;
  };
  // The status bar and the hints must outlive it.
  explicit BlockedLine(const Services& services);

  // The code that blocks; nothing when the way is free.
  void Show(std::optional<std::uint8_t> code);

  // aidDiscardByte: the command that discards the byte.  It can be seen and used while one blocks.
  QAction& DiscardCommand() { return *discard_; }

 private:
  const Services services_;
  QAction* discard_;
};

}  // namespace app

#endif  // APP_SHELL_BLOCKED_LINE_H_
